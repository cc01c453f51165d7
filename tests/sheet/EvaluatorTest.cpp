// Evaluation: operators on mixed types, error codes and their texts, errors
// through references, calculation on demand, the two recalculation passes,
// cycles and their message, and the value text of a formula cell.
#include "FormulaTestBook.h"

#include "sheet/Evaluator.h"

namespace zorfa::sheet::test {
namespace {

class EvaluatorTest : public FormulaTest {};

TEST_F(EvaluatorTest, ErrorTextsAreSpelledAsTheSystemShowsThem) {
    EXPECT_EQ(errorText(1), "#NULL!");
    EXPECT_EQ(errorText(2), "#DIV/0!");
    EXPECT_EQ(errorText(3), "#VALUE!");
    EXPECT_EQ(errorText(4), "#REF!");
    EXPECT_EQ(errorText(5), "#NUM!");
    EXPECT_EQ(errorText(6), "#NAME!");
    EXPECT_EQ(errorText(42), "#N/A!");
    EXPECT_EQ(eval("=1/0"), "#DIV/0!");
    EXPECT_EQ(eval("=\"a\"+1"), "#VALUE!");
    EXPECT_EQ(eval("=A1 C3"), "#REF!");
    EXPECT_EQ(eval("=SQRT(-1)"), "#NUM!");
    EXPECT_EQ(eval("=FOO(1)"), "#NAME!");
    // The first error stays: nothing after it replaces it.
    EXPECT_EQ(eval("=1/0+\"a\""), "#DIV/0!");
}

TEST_F(EvaluatorTest, ArithmeticOnTextAndBooleans) {
    EXPECT_EQ(eval("=\"2\"*\"3\""), "6");
    EXPECT_EQ(eval("=-\"2\""), "-2");
    EXPECT_EQ(eval("=TRUE+1"), "2");
    EXPECT_EQ(eval("=\"\"+1"), "#VALUE!");
    EXPECT_EQ(eval("=2^0.5*2^0.5"), "2");
    EXPECT_EQ(eval("=1E300*1E300"), "INF");
    EXPECT_EQ(eval("=1/3"), "0.333333333333333");
}

TEST_F(EvaluatorTest, ComparisonOfMixedTypes) {
    EXPECT_EQ(eval("=1<\"a\""), "TRUE");       // text order "1" < "a"
    EXPECT_EQ(eval("=\"a\"<1"), "FALSE");
    EXPECT_EQ(eval("=\"abc\"=\"ABC\""), "TRUE");
    EXPECT_EQ(eval("=\"10\"<\"9\""), "FALSE");  // both numeric: numbers
    EXPECT_EQ(eval("=\"b\">\"abc\""), "TRUE");
    EXPECT_EQ(eval("=TRUE>FALSE"), "TRUE");
    EXPECT_EQ(eval("=TRUE=1"), "FALSE");        // "TRUE" against "1" as text
    EXPECT_EQ(eval("=0=A1"), "TRUE");           // an empty right side is 0
    EXPECT_EQ(eval("=A1=0"), "FALSE");          // an empty left side is text
    EXPECT_EQ(eval("=1<>2"), "TRUE");
    EXPECT_EQ(eval("=2<=2"), "TRUE");
    EXPECT_EQ(eval("=3>=4"), "FALSE");
}

TEST_F(EvaluatorTest, TypedCellsAreReadByTheirText) {
    set("A1", "10");
    set("A2", "20");
    set("A3", "abc");
    EXPECT_EQ(eval("=A1+A2"), "30");
    EXPECT_EQ(eval("=SUM(A1:A3)"), "30");
    EXPECT_EQ(eval("=A3+1"), "#VALUE!");
    EXPECT_EQ(eval("=A3&A1"), "abc10");
    EXPECT_EQ(eval("=A9+1"), "1");  // an empty cell is 0
    EXPECT_EQ(eval("=A9"), "0");
    EXPECT_EQ(eval("=A3"), "abc");
}

TEST_F(EvaluatorTest, ErrorsThroughReferencesReadAsValueError) {
    set("A1", "=1/0");
    set("B1", "=A1+1");
    set("B2", "=A1");
    set("B3", "=ISERROR(A1)");
    set("B4", "=A1&\"x\"");
    book.formulas().recalc();
    EXPECT_EQ(value("A1"), "#DIV/0!");
    EXPECT_EQ(value("B1"), "#VALUE!");
    EXPECT_EQ(value("B2"), "#VALUE!");
    EXPECT_EQ(value("B3"), "TRUE");
    EXPECT_EQ(value("B4"), "#VALUE!x");
}

TEST_F(EvaluatorTest, ReferencesCalculateOnDemandAndRecalcFollowsChanges) {
    set("A3", "=A2*2");  // made before the cells it reads
    set("A2", "=A1+1");
    set("A1", "5");
    EXPECT_EQ(value("A3"), "12");
    set("A1", "7");
    book.formulas().recalc();
    EXPECT_EQ(value("A2"), "8");
    EXPECT_EQ(value("A3"), "16");
}

TEST_F(EvaluatorTest, ManualCalculationWaitsForTheForcedRecalc) {
    set("A1", "1");
    set("B1", "=A1*10");
    book.formulas().recalc();
    book.formulas().setAutoRecalc(false);
    set("A1", "2");
    book.formulas().recalc();
    EXPECT_EQ(value("B1"), "10");
    book.formulas().recalc(true);
    EXPECT_EQ(value("B1"), "20");
    set("A1", "3");
    book.formulas().setAutoRecalc(true);
    EXPECT_EQ(value("B1"), "30");
}

TEST_F(EvaluatorTest, CyclesGiveTheMessageOnceUntilTheyAreGone) {
    set("A1", "=B1+1");
    set("B1", "=A1+1");
    book.formulas().recalc();
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0], "Calculation error. Formula cycled indexes present");
    EXPECT_TRUE(book.formulas().cycleInPass);
    book.formulas().recalc();
    EXPECT_EQ(messages.size(), 1u);
    set("B1", "1");
    book.formulas().recalc();
    EXPECT_FALSE(book.formulas().cycleInPass);
    EXPECT_EQ(value("A1"), "2");
    // Cached values hide a cycle made over calculated cells; new cells show it.
    set("C1", "=D1");
    set("D1", "=C1");
    book.formulas().recalc();
    EXPECT_EQ(messages.size(), 2u);
}

TEST_F(EvaluatorTest, ASelfReferenceIsACycle) {
    set("A1", "=A1+1");
    book.formulas().recalc();
    EXPECT_EQ(messages.size(), 1u);
    EXPECT_EQ(value("A1"), "2");  // the unfinished own value reads as empty
}

TEST_F(EvaluatorTest, AddedFunctionsAndAFunctionWithoutResult) {
    book.formulas().functions().add({500, "TWICE", [](FormulaEvaluator& e, int) { e.pushNumber(2 * e.popNumber()); }, 1});
    book.formulas().functions().add({501, "NOTHING", [](FormulaEvaluator&, int) {}, 0});
    EXPECT_EQ(eval("=twice(21)"), "42");
    EXPECT_EQ(compile("=twice(1)+NOTHING()"), "=TWICE(1)+NOTHING()");
    EXPECT_EQ(eval("=NOTHING()"), "#VALUE!");  // "Function need result" is caught
    EXPECT_EQ(eval("=SUM(1,2)"), "3");         // built-in rows come first
}

TEST_F(EvaluatorTest, ValueTextOfAFormulaCell) {
    set("A1", "=1+1");
    auto& cell = book.sheet(0).cell(0, 0);
    ASSERT_TRUE(cell.formula);
    EXPECT_EQ(book.formulas().valueText(*cell.formula), "2");
    EXPECT_EQ(book.formulas().valueText(*cell.formula, true), "=1+1");
    set("A2", "=\"x\"");
    set("A3", "=1>0");
    EXPECT_EQ(value("A2"), "x");
    EXPECT_EQ(value("A3"), "TRUE");
}

TEST_F(EvaluatorTest, LongChainsCalculateOnDemandWithoutOverflow) {
    // Made from the end: the first calculation walks the chain down.
    for (int r = 2000; r >= 2; --r) set("A" + std::to_string(r), "=A" + std::to_string(r - 1) + "+1");
    set("A1", "1");
    book.formulas().recalc();
    EXPECT_EQ(value("A2000"), "2000");
}

}  // namespace
}  // namespace zorfa::sheet::test
