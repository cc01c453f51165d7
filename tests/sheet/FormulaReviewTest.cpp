// Review findings of the formula engine: each case failed before its fix.
#include "FormulaTestBook.h"

#include <pthread.h>

#include <functional>

namespace zorfa::sheet::test {
namespace {

class FormulaReviewTest : public FormulaTest {};

// Shifting cells (not whole rows or columns) adjusts no reference: a moved
// formula points at the same cells as before, and a formula pointing into the
// moved strip keeps its text.
TEST_F(FormulaReviewTest, ShiftingCellsLeavesReferencesWhereTheyPoint) {
    set("A1", "1");
    set("B1", "20");
    set("C1", "=B1");
    set("E1", "=D1+C1");
    set("A3", "=$B$1+B1");
    book.sheet(0).deleteCells({0, 0, 0, 0}, ShiftMode::Horizontal);  // A1 deleted, row 1 moves left
    EXPECT_EQ(text("B1"), "=B1");
    EXPECT_EQ(text("D1"), "=D1+C1");
    EXPECT_EQ(text("A3"), "=$B$1+B1");
    EXPECT_TRUE(isFormula("B1"));

    set("G2", "=F1*2");
    book.sheet(0).insertCells({6, 1, 6, 1}, ShiftMode::Vertical);  // G2 moves down to G3
    EXPECT_EQ(text("G3"), "=F1*2");
    book.sheet(0).insertCells({0, 1, 0, 1}, ShiftMode::Horizontal);  // row 2 unaffected, row 3 neither
    EXPECT_EQ(text("G3"), "=F1*2");
    book.sheet(0).insertCells({0, 2, 0, 2}, ShiftMode::Horizontal);  // G3 moves right to H3
    EXPECT_EQ(text("H3"), "=F1*2");
    set("F1", "4");
    book.formulas().recalc();
    EXPECT_EQ(value("H3"), "8");
}

// Moving a formula up never makes a nonsense text of a reference: it stays
// where it pointed, and the formula still calculates.
TEST_F(FormulaReviewTest, ShiftingUpKeepsAReferenceOnTheSheet) {
    set("A1", "7");
    set("A5", "=A1");
    book.sheet(0).deleteCells({0, 3, 0, 3}, ShiftMode::Vertical);  // A4 deleted, A5 moves up to A4
    EXPECT_TRUE(isFormula("A4"));
    EXPECT_EQ(text("A4"), "=A1");
    book.formulas().recalc();
    EXPECT_EQ(value("A4"), "7");
}

// A moved block keeps its offsets, so a reference can end up above row 1 or
// left of column A: its text says "#REF!" instead of a cell name cut short,
// and the formula calculates to the reference error.
TEST_F(FormulaReviewTest, AReferenceMovedOffTheSheetReadsAsRefError) {
    set("A5", "=A1+1");
    book.sheet(0).moveCells(1, 0, true, 1, 0, 4);  // A5 to B1: its offset points above row 1
    ASSERT_TRUE(isFormula("B1"));
    EXPECT_EQ(text("B1"), "=#REF!+1");
    book.formulas().recalc();
    EXPECT_EQ(value("B1"), "#REF!");
}

// A formula whose reference is already off the sheet (a moved block of cells
// keeps offsets) is broken by the next shift like by a row deletion.
TEST_F(FormulaReviewTest, AShiftBreaksAFormulaWithAReferenceOffTheSheet) {
    set("A5", "=A1+1");
    book.sheet(0).moveCells(1, 0, true, 1, 0, 4);  // A5 to B1: its offset points above row 1
    book.sheet(0).deleteCells({0, 0, 0, 0}, ShiftMode::Horizontal);  // B1 moves to A1
    EXPECT_FALSE(isFormula("A1"));
    EXPECT_EQ(text("A1"), "#REF!");
}

// ISBLANK trims as the runtime's Trim does: every control character and blank
// at either end, not only the blank.
TEST_F(FormulaReviewTest, IsBlankTrimsControlCharactersToo) {
    set("A1", "\t \r");
    set("A2", "\x01");
    set("A3", "\ta\t");
    EXPECT_EQ(eval("=ISBLANK(A1)"), "TRUE");
    EXPECT_EQ(eval("=ISBLANK(A2)"), "TRUE");
    EXPECT_EQ(eval("=ISBLANK(A3)"), "FALSE");
    EXPECT_EQ(eval("=ISBLANK(\"\xA0\")"), "FALSE");  // a no-break space is a character
}

// The time of a serial is that of its distance from day 0: -0.25 and -1.25
// are both 6:00, and a fraction a hair below a whole day rounds to midnight.
// A serial too large for a count of milliseconds fails like a text that is no
// number.
TEST_F(FormulaReviewTest, TimePartsOfNegativeAndNearlyWholeSerials) {
    EXPECT_EQ(eval("=HOUR(-0.25)"), "6");
    EXPECT_EQ(eval("=HOUR(-1.25)"), "6");
    EXPECT_EQ(eval("=MINUTE(-0.5+1/1440)"), "59");
    EXPECT_EQ(eval("=HOUR(0.9999999999)"), "0");
    EXPECT_EQ(eval("=SECOND(0.99999999)"), "59");
    EXPECT_EQ(eval("=HOUR(1E300)"), "#VALUE!");  // no whole count of milliseconds: no time
    EXPECT_EQ(eval("=HOUR(0.75)"), "18");
}

// DOLLAR rounds as the runtime's currency format does: the value is taken at
// 15 significant digits and a half rounds away from zero.
TEST_F(FormulaReviewTest, DollarRoundsHalvesAwayFromZero) {
    EXPECT_EQ(eval("=DOLLAR(2.5,0)"), "$3");
    EXPECT_EQ(eval("=DOLLAR(0.5,0)"), "$1");
    EXPECT_EQ(eval("=DOLLAR(-2.5,0)"), "($3)");
    EXPECT_EQ(eval("=DOLLAR(0.125,2)"), "$0.13");
    EXPECT_EQ(eval("=DOLLAR(1.005,2)"), "$1.01");
    EXPECT_EQ(eval("=DOLLAR(999.995,2)"), "$1,000.00");
    EXPECT_EQ(eval("=DOLLAR(0.0005,3)"), "$0.001");
    EXPECT_EQ(eval("=DOLLAR(0.004,2)"), "$0.00");
    EXPECT_EQ(eval("=DOLLAR(1234.567,2)"), "$1,234.57");
    EXPECT_EQ(eval("=DOLLAR(0,2)"), "$0.00");
    EXPECT_EQ(eval("=DOLLAR(1E20,0)"), "$100,000,000,000,000,000,000");
}

// Runs `work` on a thread with a small stack, as a check that it does not
// recurse once per operator or per level of nesting.
void onSmallStack(const std::function<void()>& work) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 512 * 1024);
    pthread_t thread;
    auto run = [](void* p) -> void* {
        (*static_cast<const std::function<void()>*>(p))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work)), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

// A long chain of "+" or comparisons compiles without one level of recursion
// per operator; nesting beyond 1024 parentheses or function calls is refused
// with the syntax message instead of running out of stack.
TEST_F(FormulaReviewTest, LongChainsAndDeepNestingDoNotExhaustTheStack) {
    std::string plus = "=1", equal = "=1", deep = "=", deepCalls = "=", nested = "=";
    for (int i = 0; i < 20000; ++i) plus += "+1";
    for (int i = 0; i < 20000; ++i) equal += "=1";
    deep += std::string(5000, '(') + "1" + std::string(5000, ')');
    for (int i = 0; i < 5000; ++i) deepCalls += "ABS(";
    deepCalls += "1" + std::string(5000, ')');
    nested += std::string(1024, '(') + "2" + std::string(1024, ')');
    CompileResult rPlus, rEqual, rDeep, rCalls, rNested;
    onSmallStack([&] {
        rPlus = book.formulas().compileText(plus, 0, {0, 0});
        rEqual = book.formulas().compileText(equal, 0, {0, 0});
        rDeep = book.formulas().compileText(deep, 0, {0, 0});
        rCalls = book.formulas().compileText(deepCalls, 0, {0, 0});
        rNested = book.formulas().compileText(nested, 0, {0, 0});
    });
    EXPECT_TRUE(rPlus.ok());
    EXPECT_TRUE(rEqual.ok());
    EXPECT_EQ(rDeep.messages, std::vector<std::string>{"Error syntax in string expression"});
    EXPECT_EQ(rCalls.messages, std::vector<std::string>{"Error syntax in string expression"});
    EXPECT_TRUE(rNested.ok());
    // The chain still reduces as before: everything right of "+" first.
    EXPECT_EQ(eval("=1+2*3-4+5"), "8");
    EXPECT_EQ(eval("=2*3+4*5-6=14"), "7");
    set("A1", plus);
    book.formulas().recalc();
    EXPECT_EQ(value("A1"), "20001");
}

// The date of a serial is taken from the same whole milliseconds as its time,
// so a moment that rounds to midnight is midnight of the next day everywhere.
TEST_F(FormulaReviewTest, DateAndTimeOfASerialAgreeAtMidnight) {
    EXPECT_EQ(eval("=HOUR(45657.999999999)"), "0");
    EXPECT_EQ(eval("=DAY(45657.999999999)"), "1");
    EXPECT_EQ(eval("=MONTH(45657.999999999)"), "1");
    EXPECT_EQ(eval("=YEAR(45657.999999999)"), "2025");
    EXPECT_EQ(eval("=WEEKDAY(45657.999999999)"), "4");  // Wednesday 1 January 2025
    EXPECT_EQ(eval("=DAY(45657.9999)"), "31");
    EXPECT_EQ(eval("=WEEKDAY(45657.9999)"), "3");
    EXPECT_EQ(eval("=DAY(-0.5)"), "30");
    EXPECT_EQ(eval("=YEAR(45292.5)"), "2024");
}

}  // namespace
}  // namespace zorfa::sheet::test
