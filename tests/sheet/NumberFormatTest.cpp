// Number to text for every format code: a typical, a negative, a zero and a
// large value; the code classes and the compact Format index.

#include "sheet/NumberFormat.h"

#include <gtest/gtest.h>

namespace zorfa::sheet {
namespace {

struct FormatCase {
    std::uint16_t code;
    const char* typical;   // 1234.5
    const char* negative;  // -1234.5
    const char* zero;
    const char* large;     // 123456789.125
};

const FormatCase kCases[] = {
    {0, "1234.5", "-1234.5", "0", "123456789.13"},
    {1, "1235", "-1235", "0", "123456789"},
    {2, "1234.50", "-1234.50", "0.00", "123456789.13"},
    {3, "1,235", "-1,235", "0", "123,456,789"},
    {4, "1,234.50", "-1,234.50", "0.00", "123,456,789.13"},
    {5, "$1,235", "($1,235)", "$0", "$123,456,789"},
    {6, "$1,235", "($1,235)", "$0", "$123,456,789"},
    {7, "$1,234.50", "($1,234.50)", "$0.00", "$123,456,789.13"},
    {8, "$1,234.50", "($1,234.50)", "$0.00", "$123,456,789.13"},
    {9, "123450%", "-123450%", "0%", "12345678913%"},
    {10, "123450.00%", "-123450.00%", "0.00%", "12345678912.50%"},
    {11, "1.23E+03", "-1.23E+03", "0.00E+00", "1.23E+08"},
    {37, " 1,235 ", "(1,235)", " 0 ", " 123,456,789 "},
    {38, " 1,235 ", "(1,235)", " 0 ", " 123,456,789 "},
    {39, " 1,234.50 ", "(1,234.50)", " 0.00 ", " 123,456,789.13 "},
    {40, " 1,234.50 ", "(1,234.50)", " 0.00 ", " 123,456,789.13 "},
    {41, " 1,235 ", "(1,235)", " - ", " 123,456,789 "},
    {42, " $ 1,235 ", " $ (1,235)", " $ - ", " $ 123,456,789 "},
    {43, " 1,234.50 ", "(1,234.50)", " - ", " 123,456,789.13 "},
    {44, " $ 1,234.50 ", " $ (1,234.50)", " $ - ", " $ 123,456,789.13 "},
    {48, "1.2E+3", "-1.2E+3", "0.0E+0", "1.2E+8"},
    {49, "1234.5", "-1234.5", "0", "123456789.125"},
};

TEST(NumberFormatTest, EveryNumberCodeForTypicalNegativeZeroAndLargeValues) {
    const LocaleSettings locale;
    for (const FormatCase& c : kCases) {
        SCOPED_TRACE(c.code);
        EXPECT_EQ(formatNumber(1234.5, c.code, 2, locale).text, c.typical);
        EXPECT_EQ(formatNumber(-1234.5, c.code, 2, locale).text, c.negative);
        EXPECT_EQ(formatNumber(0, c.code, 2, locale).text, c.zero);
        EXPECT_EQ(formatNumber(123456789.125, c.code, 2, locale).text, c.large);
    }
}

TEST(NumberFormatTest, RedOnlyForNegativesOfTheRedFormats) {
    const LocaleSettings locale;
    for (std::uint16_t code = 0; code <= 49; ++code) {
        const bool red = code == 6 || code == 8 || code == 38 || code == 40;
        EXPECT_EQ(formatNumber(-1, code, 2, locale).red, red) << code;
        EXPECT_FALSE(formatNumber(1, code, 2, locale).red) << code;
    }
}

TEST(NumberFormatTest, GeneralUsesTheBookPrecisionCappedAtEight) {
    const LocaleSettings locale;
    EXPECT_EQ(formatNumber(2.0 / 3 + 5, 0, 2, locale).text, "5.67");
    EXPECT_EQ(formatNumber(2.0 / 3 + 5, 0, 5, locale).text, "5.66667");
    EXPECT_EQ(formatNumber(2.0 / 3 + 5, 0, 12, locale).text, "5.66666667");
    EXPECT_EQ(formatNumber(-0.004, 0, 2, locale).text, "0");
    EXPECT_EQ(formatNumber(1e20, 0, 2, locale).text, "100000000000000000000");
    // Below one the fraction shows in full, up to eighteen decimals.
    EXPECT_EQ(formatNumber(1.0 / 3, 0, 2, locale).text, "0.333333333333333");
    EXPECT_EQ(formatNumber(0.0000001, 0, 2, locale).text, "0.0000001");
    EXPECT_EQ(formatNumber(0.25, 0, 0, locale).text, "0.25");
}

TEST(NumberFormatTest, DatesAndTimes) {
    const LocaleSettings locale;  // short date M/d/yyyy
    const double serial = 45000.75;  // 15 March 2023, 18:00
    EXPECT_EQ(formatNumber(serial, 14, 2, locale).text, "3/15/2023");
    EXPECT_EQ(formatNumber(serial, 15, 2, locale).text, "15-March-23");
    EXPECT_EQ(formatNumber(serial, 16, 2, locale).text, "15-March");
    EXPECT_EQ(formatNumber(serial, 17, 2, locale).text, "March-23");
    EXPECT_EQ(formatNumber(serial, 18, 2, locale).text, "6:00 pm");
    EXPECT_EQ(formatNumber(serial + 0.5 / 1440, 19, 2, locale).text, "6:00:30 pm");
    EXPECT_EQ(formatNumber(serial, 20, 2, locale).text, "18:00");
    EXPECT_EQ(formatNumber(serial, 21, 2, locale).text, "18:00:00");
    EXPECT_EQ(formatNumber(serial, 22, 2, locale).text, "3/15/2023 18:00:00");
    EXPECT_EQ(formatNumber(serial, 164, 2, locale).text, "15/03/23");
    EXPECT_EQ(formatNumber(serial, 165, 2, locale).text, "15.March.23");
    EXPECT_EQ(formatNumber(0, 14, 2, locale).text, "12/30/1899");
    EXPECT_EQ(formatNumber(0, 18, 2, locale).text, "12:00 am");
    EXPECT_EQ(formatNumber(60, 14, 2, locale).text, "2/28/1900");
    EXPECT_EQ(formatNumber(-1.25, 22, 2, locale).text, "12/29/1899 6:00:00");
}

TEST(NumberFormatTest, MinutesSecondsAndWholeHours) {
    const LocaleSettings locale;
    const double t = (3 * 3600 + 25 * 60 + 7.25) / 86400.0;  // 03:25:07.250
    EXPECT_EQ(formatNumber(t, 45, 2, locale).text, "25:07");
    EXPECT_EQ(formatNumber(t, 47, 2, locale).text, "25:07.250");
    EXPECT_EQ(formatNumber(2 + t, 46, 2, locale).text, "51:25:07");
    EXPECT_EQ(formatNumber(0, 46, 2, locale).text, "0:00:00");
}

TEST(NumberFormatTest, TheLocaleSuppliesSeparatorsAndCurrency) {
    LocaleSettings locale;
    locale.decimalSeparator = ',';
    locale.thousandSeparator = '.';
    locale.currencyString = "EUR";
    EXPECT_EQ(formatNumber(1234.5, 4, 2, locale).text, "1.234,50");
    EXPECT_EQ(formatNumber(-1234.5, 7, 2, locale).text, "(EUR1.234,50)");
    EXPECT_EQ(formatNumber(0.5, 0, 2, locale).text, "0,5");
    EXPECT_EQ(formatNumber(12.5, 2, 2, locale).text, "12,50");
}

TEST(NumberFormatTest, BuiltInStrings) {
    EXPECT_EQ(builtInFormatString(0), "Default");
    EXPECT_EQ(builtInFormatString(4), "#,##0.00");
    EXPECT_EQ(builtInFormatString(13), "# ?\?/??");
    EXPECT_EQ(builtInFormatString(23), "");
    EXPECT_EQ(builtInFormatString(36), "");
    EXPECT_EQ(builtInFormatString(41), "_(* #,##0_);_(* (#,##0);_(* \"-\"_);_(@_)");
    EXPECT_EQ(builtInFormatString(49), "@");
    EXPECT_EQ(builtInFormatString(50), "");
    EXPECT_EQ(builtInFormatString(164), "dd/mm/yy");
    EXPECT_EQ(builtInFormatString(165), "dd\\.mmmm\\.yy");
}

TEST(NumberFormatTest, CodeClasses) {
    for (std::uint16_t code : {14, 18, 22, 45, 47, 164, 165}) EXPECT_TRUE(isDateTimeFormat(code)) << code;
    for (std::uint16_t code : {0, 13, 23, 44, 48, 49, 166}) EXPECT_FALSE(isDateTimeFormat(code)) << code;
    for (std::uint16_t code : {5, 8, 42, 44}) EXPECT_TRUE(isCurrencyFormat(code)) << code;
    for (std::uint16_t code : {4, 9, 41, 45}) EXPECT_FALSE(isCurrencyFormat(code)) << code;
    for (std::uint16_t code : {1, 4, 9, 13, 37, 41, 48}) EXPECT_TRUE(isNumberFormat(code)) << code;
    for (std::uint16_t code : {0, 5, 14, 42, 49}) EXPECT_FALSE(isNumberFormat(code)) << code;
}

TEST(NumberFormatTest, CompactIndexRoundTrips) {
    EXPECT_EQ(formatCodeFromIndex(35), 164);
    EXPECT_EQ(formatCodeFromIndex(36), 165);
    EXPECT_EQ(formatCodeFromIndex(52), 0);
    for (std::uint16_t index = 0; index <= 36; ++index)
        EXPECT_EQ(formatIndexFromCode(formatCodeFromIndex(index)), index) << index;
}

}  // namespace
}  // namespace zorfa::sheet
