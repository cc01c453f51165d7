// The function table: every built-in function with the behaviour it keeps,
// quirks included.
#include "FormulaTestBook.h"

#include <cstring>
#include <set>

#include "sheet/FunctionTable.h"

namespace zorfa::sheet::test {
namespace {

class FunctionTest : public FormulaTest {
protected:
    void expectAll(std::initializer_list<std::pair<const char*, const char*>> cases) {
        for (const auto& [formula, expected] : cases) EXPECT_EQ(eval(formula), expected) << formula;
    }
};

TEST_F(FunctionTest, TheTableHas81NamedFunctionsWithUniqueIds) {
    FunctionTable table;
    std::set<std::uint16_t> ids;
    std::set<std::string> names;
    for (size_t i = 0; i < FunctionTable::kBuiltInCount; ++i) {
        const FunctionInfo& f = FunctionTable::builtIn()[i];
        ids.insert(f.id);
        names.insert(f.name);
        EXPECT_NE(f.handler, nullptr) << f.name;
        EXPECT_EQ(table.find(f.id), &f);
        EXPECT_EQ(table.find(LocaleSettings::lowerCase(f.name)), &f);
    }
    EXPECT_EQ(ids.size(), 81u);
    EXPECT_EQ(names.size(), 81u);
    EXPECT_EQ(table.find(std::uint16_t{4})->name, std::string("SUM"));
    EXPECT_EQ(table.find("nosuch"), nullptr);
}

TEST_F(FunctionTest, PlainMathematics) {
    expectAll({{"=ABS(-2.5)", "2.5"}, {"=ACOS(1)", "0"}, {"=ASIN(0)", "0"}, {"=ATAN(0)", "0"},
               {"=ATAN2(1,1)", "0.785398163397448"}, {"=COS(0)", "1"}, {"=COSH(0)", "1"}, {"=SIN(0)", "0"},
               {"=SINH(0)", "0"}, {"=TAN(0)", "0"}, {"=TANH(0)", "0"}, {"=ACOSH(1)", "0"}, {"=ASINH(0)", "0"},
               {"=ATANH(0)", "0"}, {"=EXP(0)", "1"}, {"=LOG10(1000)", "3"}, {"=DEGREES(PI())", "180"},
               {"=RADIANS(180)", "3.14159265358979"}, {"=PI()", "3.14159265358979"}, {"=SQRT(16)", "4"},
               {"=SQRT(-1)", "#NUM!"}, {"=LN(1)", "0"}, {"=LN(-1)", "NAN"}, {"=ACOS(2)", "NAN"},
               {"=POWER(2,10)", "1024"}, {"=POWER(0,0)", "1"}, {"=SIGN(-3)", "-1"}, {"=SIGN(0)", "0"},
               {"=INT(-1.5)", "-2"}, {"=INT(1.9)", "1"}});
}

TEST_F(FunctionTest, LogarithmsCheckValueAndBase) {
    expectAll({{"=LOG(100)", "2"}, {"=LOG(8,2)", "3"}, {"=LOG(0)", "#NUM!"}, {"=LOG(8,-2)", "#NUM!"},
               {"=LOG(-1,10)", "#NUM!"}});
}

TEST_F(FunctionTest, RoundingFamilies) {
    expectAll({{"=ROUND(-1.5,0)", "-1"}, {"=ROUND(1.5,0)", "2"}, {"=ROUND(2.345,2)", "2.35"},
               {"=ROUND(-2.345,2)", "-2.34"}, {"=ROUND(1234,-2)", "1200"},
               {"=ROUNDDOWN(-1.5,0)", "-2"}, {"=ROUNDUP(-1.5,0)", "-1"}, {"=ROUNDUP(1.21,1)", "1.3"},
               {"=ROUNDDOWN(1.29,1)", "1.2"}, {"=ROUNDUP(1.2,1E9)", "INF"},
               {"=TRUNC(-1.7)", "-1"}, {"=TRUNC(1.789,2)", "1.78"},
               {"=EVEN(1.5)", "2"}, {"=EVEN(3)", "4"}, {"=EVEN(-1)", "-2"}, {"=EVEN(0)", "0"},
               {"=ODD(2)", "3"}, {"=ODD(1.5)", "3"}, {"=ODD(-2)", "-3"}, {"=ODD(0)", "0"},
               {"=CEILING(2.5,1)", "3"}, {"=CEILING(0.25,0.1)", "0.3"}, {"=CEILING(-2.5,-1)", "-3"},
               {"=CEILING(2,-1)", "#NUM!"}, {"=CEILING(2,0)", "#NUM!"}, {"=FLOOR(2.5,1)", "2"},
               {"=FLOOR(0.25,0.1)", "0.2"}, {"=FLOOR(7,2)", "6"}, {"=FLOOR(-2,1)", "#NUM!"},
               {"=FIXED(1234.567,-2)", "1200"}, {"=FIXED(1.5,1)", "1.5"}, {"=FIXED(1.5)", "1.5"}});
}

TEST_F(FunctionTest, FactAndModTerminateOnHugeArguments) {
    expectAll({{"=FACT(5)", "120"}, {"=FACT(5.9)", "120"}, {"=FACT(0)", "1"}, {"=FACT(-3)", "1"},
               {"=FACT(170)", "7.25741561530799E306"}, {"=FACT(171)", "INF"}, {"=FACT(1E15)", "INF"},
               {"=FACT(1E300)", "#NUM!"}, {"=FACT(1E300*1E300)", "#NUM!"},
               {"=MOD(10,3)", "1"}, {"=MOD(5.5,2)", "1"}, {"=MOD(2,3)", "2"}, {"=MOD(-1,3)", "-1"},
               {"=MOD(1,0)", "#DIV/0!"}, {"=MOD(-5,-3)", "-5"}, {"=MOD(-1,-3)", "#NUM!"},
               {"=MOD(10,-3)", "#NUM!"}, {"=MOD(1E300,1)", "#NUM!"}, {"=MOD(1E10+0.5,1)", "0"}});
}

TEST_F(FunctionTest, Aggregates) {
    set("A1", "1");
    set("A2", "2");
    set("A3", "x");
    set("A4", "TRUE");
    set("B1", "-4");
    expectAll({{"=SUM(A1:A4,10)", "13"}, {"=SUM()", "0"}, {"=SUM(\"2\",TRUE)", "3"}, {"=SUM(\"x\")", "#VALUE!"},
               {"=SUMSQ(A1:A2,3)", "14"}, {"=MAX(A1:B4)", "2"}, {"=MIN(A1:B4)", "-4"}, {"=MAX(C1:C3)", "0"},
               {"=COUNT(A1:B4)", "3"}, {"=COUNTA(A1:B4)", "5"}, {"=COUNTBLANK(A1:B4)", "3"},
               {"=COUNTBLANK(C1:D1000)", "2000"}, {"=COUNTA(C1:D1000)", "0"},
               {"=AVERAGE(A1:A4)", "1.5"}, {"=AVERAGE(C1:C3)", "#DIV/0!"}, {"=AVERAGEA(A1:A4)", "0.75"}});
}

TEST_F(FunctionTest, CountIfComparesAsText) {
    set("A1", "10");
    set("A2", "5");
    set("A3", "apple");
    set("A4", "Apple");
    expectAll({{"=COUNTIF(A1:A3,\">5\")", "1"},  // "10" is not above "5", "apple" is
               {"=COUNTIF(A1:A4,\"apple\")", "2"}, {"=COUNTIF(A1:A4,\"<=5\")", "2"},
               {"=COUNTIF(A1:A4,10)", "1"}, {"=COUNTIF(A1:A5,\"\")", "1"}, {"=COUNTIF(A1:A5,\">=b\")", "0"}});
}

TEST_F(FunctionTest, LogicKeepsItsStackQuirks) {
    set("A1", "0");
    expectAll({{"=IF(1,\"yes\",\"no\")", "yes"}, {"=IF(0,\"yes\",\"no\")", "no"}, {"=IF(\"TRUE\",1,2)", "1"},
               {"=IF(A1,1)", "#VALUE!"}, {"=IF(\"x\",1,2)", "#VALUE!"}, {"=IF(1>2,1/0,7)", "7"},
               {"=AND(1,1)", "TRUE"}, {"=AND(1,0,1)", "FALSE"}, {"=AND()", "TRUE"},
               {"=OR(0,1)", "TRUE"}, {"=OR(0,0)", "FALSE"}, {"=OR(1,0,0)", "FALSE"},  // pops only two
               {"=NOT(0)", "TRUE"}, {"=NOT(\"TRUE\")", "FALSE"}, {"=NOT(\"x\")", "#VALUE!"},
               {"=TRUE()", "TRUE"}, {"=FALSE()", "FALSE"}});
}

TEST_F(FunctionTest, DatesUseTheStandardDaySerial) {
    expectAll({{"=DATE(2024,1,1)", "45292"}, {"=DATE(1899,12,30)", "0"}, {"=DATE(1900,3,1)", "61"},
               {"=DATE(2024,2,30)", "#VALUE!"}, {"=DATE(2024,13,1)", "#VALUE!"}, {"=DATE(2023.6,1,1)", "45292"},
               {"=DAY(45292)", "1"}, {"=MONTH(45322)", "1"}, {"=MONTH(45323)", "2"}, {"=YEAR(DATE(1999,12,31))", "1999"},
               {"=DAY(\"x\")", "#VALUE!"}, {"=YEAR(-700000)", "0"},
               {"=TIME(12,30,0)", "0.520833333333333"}, {"=TIME(24,0,0)", "#VALUE!"},
               {"=HOUR(0.75)", "18"}, {"=MINUTE(TIME(1,2,3))", "2"}, {"=SECOND(TIME(1,2,3))", "3"},
               {"=HOUR(\"\")", "0"}, {"=HOUR(\"x\")", "#VALUE!"},
               {"=WEEKDAY(45292)", "2"}, {"=WEEKDAY(45292,2)", "1"}, {"=WEEKDAY(45292,3)", "0"},
               {"=WEEKDAY(45291,2)", "7"}, {"=WEEKDAY(45292,9)", "2"}, {"=WEEKDAY(0)", "7"}});
}

TEST_F(FunctionTest, ClockAndRandomAreInjected) {
    expectAll({{"=NOW()", "45292.75"}, {"=TODAY()", "45292"}, {"=RAND()", "0.25"}});
    clock.serial = 100.5;
    random.value = 0.5;
    expectAll({{"=TODAY()", "100"}, {"=RAND()*2", "1"}});
}

TEST_F(FunctionTest, TextFunctions) {
    expectAll({{"=LEN(\"abc\")", "3"}, {"=LEN(12.5)", "4"}, {"=LEFT(\"abc\")", "abc"}, {"=LEFT(\"abc\",2)", "ab"},
               {"=LEFT(\"abc\",9)", "abc"}, {"=LEFT(\"abc\",-1)", "#VALUE!"}, {"=RIGHT(\"abc\",2)", "bc"},
               {"=RIGHT(\"abc\")", "abc"}, {"=RIGHT(\"abc\",-1)", "#VALUE!"},
               {"=MID(\"abcdef\",2,3)", "bcd"}, {"=MID(\"abc\",3,9)", "c"}, {"=MID(\"abc\",4,1)", "#VALUE!"},
               {"=MID(\"abc\",0,1)", "#VALUE!"}, {"=MID(\"abc\",1,0)", "#VALUE!"}, {"=MID(\"abc\",1)", "#VALUE!"},
               {"=LOWER(\"AbC\")", "abc"}, {"=UPPER(\"abc\")", "ABC"}, {"=TRIM(\" a b \")", "ab"},
               {"=CONCATENATE(\"a\",1,\"b\",TRUE)", "a1bTRUE"}, {"=CONCATENATE()", ""},
               {"=DOLLAR(1234.567,2)", "$1,234.57"}, {"=DOLLAR(-5,0)", "($5)"}, {"=DOLLAR(5)", "#VALUE!"}});
    EXPECT_EQ(eval("=UPPER(\"\xE9t\xE9\")"), "\xC9T\xC9");  // Windows-1252 letters
}

TEST_F(FunctionTest, InformationFunctionsAndTheirErrorClearing) {
    set("A1", "  ");
    set("A2", "12");
    set("A3", "text");
    set("A4", "=1/0");
    set("A5", "#NULL!");
    set("A6", "#N/A");
    expectAll({{"=ISBLANK(A1)", "TRUE"}, {"=ISBLANK(A9)", "TRUE"}, {"=ISBLANK(A2)", "FALSE"},
               {"=ISNUMBER(A2)", "TRUE"}, {"=ISNUMBER(A3)", "FALSE"}, {"=ISTEXT(A3)", "TRUE"},
               {"=ISTEXT(A2)", "FALSE"}, {"=ISTEXT(\"TRUE\")", "FALSE"}, {"=ISNONTEXT(A2)", "TRUE"},
               {"=ISNONTEXT(A3)", "FALSE"}, {"=ISLOGICAL(\"false\")", "TRUE"}, {"=ISLOGICAL(1)", "FALSE"},
               {"=ISERROR(1/0)", "TRUE"}, {"=ISERR(A4)", "TRUE"}, {"=ISERROR(1)", "FALSE"},
               {"=ISNA(A5)", "TRUE"}, {"=ISNA(A6)", "FALSE"}, {"=ISNONTEXT(1/0)", "#DIV/0!"}});
}

}  // namespace
}  // namespace zorfa::sheet::test
