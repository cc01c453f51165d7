// References through row and column insertion and deletion: relative parts
// follow, absolute parts stay where they stand, references that fall off the
// sheet turn the cell into the plain text "#REF!".
#include "FormulaTestBook.h"

namespace zorfa::sheet::test {
namespace {

class FormulaReferencesTest : public FormulaTest {
protected:
    void insertRows(std::int32_t row, std::int32_t count, std::int32_t sheet = 0) {
        book.sheet(sheet).insertCells({0, row, 0, row + count - 1}, ShiftMode::Rows);
    }
    void deleteRows(std::int32_t row, std::int32_t count, std::int32_t sheet = 0) {
        book.sheet(sheet).deleteCells({0, row, 0, row + count - 1}, ShiftMode::Rows);
    }
    void insertColumns(std::int32_t column, std::int32_t count) {
        book.sheet(0).insertCells({column, 0, column + count - 1, 0}, ShiftMode::Columns);
    }
    void deleteColumns(std::int32_t column, std::int32_t count) {
        book.sheet(0).deleteCells({column, 0, column + count - 1, 0}, ShiftMode::Columns);
    }
};

TEST_F(FormulaReferencesTest, DeletingARowAboveMovesRelativeButNotAbsoluteParts) {
    set("B5", "=A5+$A$5+A$5+$A5");
    deleteRows(0, 1);
    EXPECT_EQ(text("B4"), "=A4+$A$5+A$5+$A4");
    EXPECT_TRUE(isFormula("B4"));
}

TEST_F(FormulaReferencesTest, InsertingRowsAtTheTop) {
    set("A1", "2");
    set("C3", "=A1*10+$B$2");
    insertRows(0, 2);
    EXPECT_EQ(text("C5"), "=A3*10+$B$2");
    book.formulas().recalc();
    EXPECT_EQ(value("C5"), "20");
}

TEST_F(FormulaReferencesTest, ReferencesBelowTheFormulaMoveToo) {
    set("A1", "=A10+SUM(A3:A12)");
    insertRows(4, 3);  // rows 5 to 7
    EXPECT_EQ(text("A1"), "=A13+SUM(A3:A15)");
    deleteRows(1, 1);
    EXPECT_EQ(text("A1"), "=A12+SUM(A2:A14)");
}

TEST_F(FormulaReferencesTest, AReferenceThatTurnsNegativeBreaksTheFormula) {
    set("A2", "=A1+1");
    deleteRows(0, 1);
    EXPECT_FALSE(isFormula("A1"));
    EXPECT_EQ(text("A1"), "#REF!");
    EXPECT_EQ(value("A1"), "#REF!");
}

TEST_F(FormulaReferencesTest, ADeletedRowOnlyBreaksWhenTheRowGoesBelowZero) {
    set("A5", "=A4");
    deleteRows(1, 3);  // rows 2 to 4: row 4 moves to row 1
    EXPECT_EQ(text("A2"), "=A1");
    set("A9", "=A3");
    deleteRows(1, 3);  // row 3 would be row 0
    EXPECT_EQ(text("A6"), "#REF!");
}

TEST_F(FormulaReferencesTest, AnAreaWhoseCornersCrossBreaks) {
    set("C5", "=SUM(A3:$A$4)");
    insertRows(0, 2);  // A3 moves to A5, past $A$4
    EXPECT_EQ(text("C7"), "#REF!");
}

TEST_F(FormulaReferencesTest, ColumnsInsertAndDelete) {
    set("A5", "=C1+$C$1");
    set("C2", "=A1");
    insertColumns(1, 1);  // at column B
    EXPECT_EQ(text("A5"), "=D1+$C$1");
    EXPECT_EQ(text("D2"), "=A1");
    deleteColumns(0, 1);
    EXPECT_EQ(text("C2"), "#REF!");  // A1 would be left of column A
}

TEST_F(FormulaReferencesTest, SheetReferencesFollowTheirSheet) {
    set("A1", "=Sheet1!A5+A5", 1);
    set("A5", "3");
    set("A5", "4", 1);
    deleteRows(0, 2);
    EXPECT_EQ(text("A1", 1), "=Sheet1!A3+A5");
    book.formulas().recalc();
    EXPECT_EQ(value("A1", 1), "7");
    insertRows(0, 1, 1);  // on Sheet2: its own local reference moves
    EXPECT_EQ(text("A2", 1), "=Sheet1!A3+A6");
}

TEST_F(FormulaReferencesTest, R1C1TextFollowsTheTokens) {
    set("B5", "=A1+B4");
    insertRows(0, 1);
    book.formulas().setR1C1(true);
    const auto* f = book.sheet(0).cell(1, 5).formula.get();
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(f->text(), "=R[-4]C[-1]+R[-1]C");
}

TEST_F(FormulaReferencesTest, DefinedNamesMoveAndGrow) {
    book.formulas().addName({"Block", 0, {0, 2, 0, 5}});
    book.formulas().addName({"Below", 0, {1, 8, 1, 8}});
    insertRows(3, 2);
    EXPECT_EQ(book.formulas().names()[0].rect, (CellRect{0, 2, 0, 7}));
    EXPECT_EQ(book.formulas().names()[1].rect, (CellRect{1, 10, 1, 10}));
    deleteRows(0, 1);
    EXPECT_EQ(book.formulas().names()[0].rect, (CellRect{0, 1, 0, 6}));
}

TEST_F(FormulaReferencesTest, ShiftedCellsKeepWhereTheirReferencesPoint) {
    set("B2", "=A1");
    book.sheet(0).insertCells({1, 1, 1, 1}, ShiftMode::Vertical);  // B2 moves down to B3
    EXPECT_EQ(text("B3"), "=A1");
}

}  // namespace
}  // namespace zorfa::sheet::test
