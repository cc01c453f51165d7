// The locale object formulas and cells share: float text, number reading,
// currency text, letter case, and the date serials of the date functions.
#include <gtest/gtest.h>

#include <cmath>

#include "sheet/FormulaEnvironment.h"
#include "sheet/LocaleSettings.h"

namespace zorfa::sheet {
namespace {

TEST(FormulaLocaleTest, FloatTextHasFifteenDigitsAndTheRuntimeExponentForm) {
    LocaleSettings l;
    EXPECT_EQ(l.floatText(0.1 + 0.2), "0.3");
    EXPECT_EQ(l.floatText(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(l.floatText(999999999999999.0), "999999999999999");
    EXPECT_EQ(l.floatText(1e15), "1E15");
    EXPECT_EQ(l.floatText(1.5e20), "1.5E20");
    EXPECT_EQ(l.floatText(0.0001), "0.0001");
    EXPECT_EQ(l.floatText(0.00001), "1E-5");
    EXPECT_EQ(l.floatText(-2.5e-7), "-2.5E-7");
    EXPECT_EQ(l.floatText(0), "0");
    EXPECT_EQ(l.floatText(-0.0), "0");
    EXPECT_EQ(l.floatText(120), "120");
    EXPECT_EQ(l.floatText(HUGE_VAL), "INF");
    EXPECT_EQ(l.floatText(-HUGE_VAL), "-INF");
    EXPECT_EQ(l.floatText(std::nan("")), "NAN");
    l.decimalSeparator = ',';
    EXPECT_EQ(l.floatText(-1.25), "-1,25");
    EXPECT_EQ(l.floatText(1.5e-9), "1,5E-9");
}

TEST(FormulaLocaleTest, NumberReading) {
    LocaleSettings l;
    double v = 0;
    EXPECT_TRUE(l.parseNumber(" 12.5 ", v));
    EXPECT_EQ(v, 12.5);
    EXPECT_TRUE(l.parseNumber("-1E+3", v));
    EXPECT_EQ(v, -1000);
    EXPECT_TRUE(l.parseNumber(".5", v));
    EXPECT_TRUE(l.parseNumber("5.", v));
    EXPECT_TRUE(l.parseNumber("1e999", v));
    EXPECT_TRUE(std::isinf(v));
    for (const char* bad : {"", " ", "1,000", "1.2.3", "E5", "1E", "1E+", "INF", "NAN", "0x10", "--1", "1 2", "."})
        EXPECT_FALSE(l.parseNumber(bad, v)) << bad;
    l.decimalSeparator = ',';
    EXPECT_TRUE(l.parseNumber("1,5", v));
    EXPECT_EQ(v, 1.5);
    EXPECT_FALSE(l.parseNumber("1.5", v));
}

TEST(FormulaLocaleTest, CurrencyTextAndLayouts) {
    LocaleSettings l;
    EXPECT_EQ(l.currencyText(1234567.891, 2), "$1,234,567.89");
    EXPECT_EQ(l.currencyText(-0.5, 1), "($0.5)");
    EXPECT_EQ(l.currencyText(12, 0), "$12");
    l.currencyString = "EUR";
    l.currencyFormat = 3;
    l.negativeCurrencyFormat = 5;
    l.thousandSeparator = '.';
    l.decimalSeparator = ',';
    EXPECT_EQ(l.currencyText(1234.5, 2), "1.234,50 EUR");
    EXPECT_EQ(l.currencyText(-3, 0), "-3EUR");
}

TEST(FormulaLocaleTest, LetterCaseOfTheCodePage) {
    EXPECT_EQ(LocaleSettings::upperCase("abc\xE9\xFF\x9A"), "ABC\xC9\x9F\x8A");
    EXPECT_EQ(LocaleSettings::lowerCase("ABC\xC9\x9F\x8A\xD7"), "abc\xE9\xFF\x9A\xD7");
    EXPECT_TRUE(LocaleSettings::sameText("Sheet1", "SHEET1"));
    EXPECT_LT(LocaleSettings::compareText("abc", "ABD"), 0);
    EXPECT_GT(LocaleSettings::compareText("b", "ABC"), 0);
    EXPECT_LT(LocaleSettings::compareText("", "a"), 0);
    bool b = false;
    EXPECT_TRUE(parseBooleanText("tRuE", b));
    EXPECT_TRUE(b);
    EXPECT_FALSE(parseBooleanText("yes", b));
}

TEST(FormulaLocaleTest, DateSerialsFromDayZeroOn30December1899) {
    double serial = -1;
    ASSERT_TRUE(encodeDate(1899, 12, 30, serial));
    EXPECT_EQ(serial, 0);
    ASSERT_TRUE(encodeDate(2024, 1, 1, serial));
    EXPECT_EQ(serial, 45292);
    ASSERT_TRUE(encodeDate(2000, 2, 29, serial));
    EXPECT_FALSE(encodeDate(1900, 2, 29, serial));
    EXPECT_FALSE(encodeDate(0, 1, 1, serial));
    EXPECT_FALSE(encodeDate(2024, 4, 31, serial));
    ASSERT_TRUE(encodeDate(1, 1, 1, serial));
    EXPECT_EQ(serial, -693593);
    const CivilDate d = decodeDate(45351.9);
    EXPECT_EQ(d.year, 2024);
    EXPECT_EQ(d.month, 2);
    EXPECT_EQ(d.day, 29);
    EXPECT_EQ(decodeDate(-693593).year, 1);
    EXPECT_EQ(decodeDate(-693594).year, 0);
}

}  // namespace
}  // namespace zorfa::sheet
