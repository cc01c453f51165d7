// Inserting and deleting cells, rows and columns, and what the formulas hear.

#include <gtest/gtest.h>

#include "sheet/DataStorage.h"
#include "sheet/SheetErrors.h"
#include "sheet/StorageTestSupport.h"

namespace zorfa::sheet {
namespace {

using testing::FakeFormula;

class DataStorageShiftTest : public testing::StorageFixture {
protected:
    DataStorageShiftTest() : StorageFixture(2) {}

    // Fills columns A..D, rows 1..5 with their own names: "A1", "B1", ...
    void fillGrid() {
        for (std::int32_t c = 0; c < 4; ++c)
            for (std::int32_t r = 0; r < 5; ++r) storage.setText(c, r, TcxSSUtils::cellName(c, r));
    }
};

TEST_F(DataStorageShiftTest, DeleteRowsMovesEverythingBelowUp) {
    fillGrid();
    storage.header(1).setSize(4, 33);
    storage.deleteCells({1, 1, 1, 2}, ShiftMode::Rows);  // rows 2 and 3, any columns
    EXPECT_EQ(text(0, 0), "A1");
    EXPECT_EQ(text(0, 1), "A4");
    EXPECT_EQ(text(3, 2), "D5");
    EXPECT_EQ(text(3, 3), "");
    EXPECT_EQ(storage.rowCount(), 3);
    EXPECT_EQ(storage.rowsUsed(0), 3);
    EXPECT_EQ(storage.header(1).size(2), 33);  // row 5's height went with it
    EXPECT_EQ(storage.recordCount(), 12u);
    EXPECT_GE(listener.layouts, 1);
}

TEST_F(DataStorageShiftTest, InsertRowsOpensDefaultRows) {
    fillGrid();
    storage.header(1).setSize(1, 44);
    storage.insertCells({2, 1, 2, 2}, ShiftMode::Rows);
    EXPECT_EQ(text(0, 0), "A1");
    EXPECT_EQ(text(0, 1), "");
    EXPECT_EQ(text(3, 2), "");
    EXPECT_EQ(text(0, 3), "A2");
    EXPECT_EQ(text(3, 6), "D5");
    EXPECT_EQ(storage.rowCount(), 7);
    EXPECT_EQ(storage.header(1).size(1), kDefaultRowHeight);
    EXPECT_EQ(storage.header(1).size(3), 44);
}

TEST_F(DataStorageShiftTest, DeleteAndInsertColumns) {
    fillGrid();
    storage.header(0).setSize(3, 12);
    storage.deleteCells({1, 3, 1, 3}, ShiftMode::Columns);
    EXPECT_EQ(text(0, 4), "A5");
    EXPECT_EQ(text(1, 4), "C5");
    EXPECT_EQ(text(2, 0), "D1");
    EXPECT_EQ(text(3, 0), "");
    EXPECT_EQ(storage.columnCount(), 3);
    EXPECT_EQ(storage.header(0).size(2), 12);
    EXPECT_EQ(storage.capacityColumns(), 10);

    storage.insertCells({0, 0, 1, 0}, ShiftMode::Columns);
    EXPECT_EQ(text(0, 0), "");
    EXPECT_EQ(text(2, 0), "A1");
    EXPECT_EQ(text(4, 4), "D5");
    EXPECT_EQ(storage.columnCount(), 5);
    EXPECT_EQ(storage.header(0).size(4), 12);
}

TEST_F(DataStorageShiftTest, ShiftLeftMovesOnlyTheRowsOfTheRectangle) {
    fillGrid();
    storage.deleteCells({1, 1, 2, 2}, ShiftMode::Horizontal);
    EXPECT_EQ(text(1, 1), "D2");
    EXPECT_EQ(text(2, 1), "");
    EXPECT_EQ(text(3, 1), "");
    EXPECT_EQ(text(1, 2), "D3");
    EXPECT_EQ(text(1, 0), "B1");  // rows outside untouched
    EXPECT_EQ(text(3, 3), "D4");
}

TEST_F(DataStorageShiftTest, ShiftRightGrowsColumnsAsNeeded) {
    fillGrid();
    storage.insertCells({1, 0, 7, 0}, ShiftMode::Horizontal);  // seven cells at B1
    EXPECT_EQ(text(0, 0), "A1");
    EXPECT_EQ(text(1, 0), "");
    EXPECT_EQ(text(8, 0), "B1");
    EXPECT_EQ(text(10, 0), "D1");
    EXPECT_EQ(text(1, 1), "B2");
    EXPECT_GE(storage.capacityColumns(), 11);
    EXPECT_EQ(storage.columnCount(), 11);
}

TEST_F(DataStorageShiftTest, ShiftUpAndDownMoveOnlyTheColumnsOfTheRectangle) {
    fillGrid();
    storage.deleteCells({1, 0, 1, 1}, ShiftMode::Vertical);
    EXPECT_EQ(text(1, 0), "B3");
    EXPECT_EQ(text(1, 2), "B5");
    EXPECT_EQ(text(1, 3), "");
    EXPECT_EQ(text(0, 0), "A1");
    storage.insertCells({2, 4, 3, 4}, ShiftMode::Vertical);
    EXPECT_EQ(text(2, 4), "");
    EXPECT_EQ(text(2, 5), "C5");
    EXPECT_EQ(text(3, 5), "D5");
    EXPECT_EQ(storage.rowCount(), 6);
}

TEST_F(DataStorageShiftTest, InsertingPastTheRowCapacityGrowsIt) {
    storage.setText(0, 999, "last");
    EXPECT_EQ(storage.capacityRows(), 1999);
    storage.insertCells({0, 0, 0, 1499}, ShiftMode::Rows);
    EXPECT_EQ(text(0, 2499), "last");
    EXPECT_GE(storage.capacityRows(), 2500);
    EXPECT_EQ(storage.rowCount(), 2500);
}

TEST_F(DataStorageShiftTest, NegativeCoordinatesCountFromZero) {
    fillGrid();
    storage.deleteCells({-3, -2, -1, 0}, ShiftMode::Rows);
    EXPECT_EQ(text(0, 0), "A2");
}

TEST_F(DataStorageShiftTest, DeletingARowAboveMovesRelativeReferences) {
    storage.setText(2, 9, "=A5");
    storage.setText(3, 9, "=$A$5");
    storage.deleteCells({0, 0, 0, 0}, ShiftMode::Rows);
    EXPECT_EQ(text(2, 8), "=A4");
    EXPECT_EQ(text(3, 8), "=$A$5");
    EXPECT_EQ(formulaAt(2, 8)->cell(), (CellPoint{2, 8}));
    EXPECT_EQ(formulaAt(3, 8)->updates, 1);
    EXPECT_EQ(formulaAt(2, 8)->lastChange.kind, StructureChange::Kind::Delete);
    EXPECT_EQ(formulaAt(2, 8)->lastChange.sheet, 2);
    EXPECT_EQ(formulaAt(2, 8)->lastChange.count, 1);
    EXPECT_EQ(formulaAt(2, 8)->lastChange.rect, (CellRect{0, 0, 3, 0}));
}

TEST_F(DataStorageShiftTest, AReferenceIntoDeletedRowsBecomesRefText) {
    storage.setText(1, 5, "=A3");
    storage.deleteCells({0, 2, 0, 3}, ShiftMode::Rows);
    const CellRecord& cell = storage.cell(1, 3);
    EXPECT_EQ(cell.kind, CellKind::Text);
    EXPECT_EQ(cell.text, "#REF!");
    EXPECT_EQ(cell.formula, nullptr);
    EXPECT_EQ(alive, 0);
}

TEST_F(DataStorageShiftTest, InsertingColumnsTellsEveryFormulaOfTheSheet) {
    storage.setText(0, 0, "=C1");   // left of the edge, points past it
    storage.setText(5, 3, "=B2");   // moves, points before the edge
    storage.insertCells({2, 0, 3, 0}, ShiftMode::Columns);
    EXPECT_EQ(text(0, 0), "=E1");
    EXPECT_EQ(formulaAt(0, 0)->updates, 1);
    EXPECT_EQ(text(7, 3), "=B2");
    EXPECT_EQ(formulaAt(7, 3)->cell(), (CellPoint{7, 3}));
    EXPECT_TRUE(formulaAt(7, 3)->lastChange.isColumnChange());
    EXPECT_EQ(formulaAt(7, 3)->lastChange.count, 2);
}

TEST_F(DataStorageShiftTest, ShiftedCellsTellFormulasWhereTheyAre) {
    storage.setText(3, 1, "=A1");
    storage.deleteCells({1, 1, 1, 1}, ShiftMode::Horizontal);
    ASSERT_NE(formulaAt(2, 1), nullptr);
    EXPECT_EQ(formulaAt(2, 1)->cell(), (CellPoint{2, 1}));
    EXPECT_EQ(formulaAt(2, 1)->lastChange.mode, ShiftMode::Horizontal);
    EXPECT_EQ(text(2, 1), "=A1");
}

TEST_F(DataStorageShiftTest, TheStructureHookReachesOtherSheets) {
    TcxSSDataStorage other(styles, 5);
    int otherAlive = 0;
    other.setCell(0, 0, [&] {
        CellRecord record;
        record.kind = CellKind::Formula;
        record.formula =
            std::make_unique<FakeFormula>(5, CellPoint{0, 0}, 2, CellName{0, 7, false, false}, &otherAlive);
        record.text = record.formula->text();
        return record;
    }());
    storage.setStructureHook([&](const StructureChange& change) { other.updateForeignReferences(change); });
    storage.insertCells({0, 3, 0, 3}, ShiftMode::Rows);
    EXPECT_EQ(other.cell(0, 0).text, "=A9");
    EXPECT_EQ(other.cell(0, 0).formula->cell(), (CellPoint{0, 0}));
    // A change of the sheet itself is not foreign.
    StructureChange own{StructureChange::Kind::Insert, ShiftMode::Rows, 5, {0, 0, 0, 0}, 1};
    other.updateForeignReferences(own);
    EXPECT_EQ(other.cell(0, 0).text, "=A9");
}

TEST_F(DataStorageShiftTest, HistoryGetsOneActionWithTheMergedList) {
    fillGrid();
    storage.mergeCells({0, 3, 1, 4}, true);
    history.actions.clear();
    history.mergedLists.clear();
    history.cells.clear();
    storage.deleteCells({0, 0, 0, 0}, ShiftMode::Rows);
    ASSERT_EQ(history.actions.size(), 1u);
    EXPECT_EQ(history.actions[0], StorageAction::Kind::DeleteCells);
    ASSERT_EQ(history.mergedLists.size(), 1u);
    EXPECT_EQ(history.mergedLists[0], (std::vector<CellRect>{{0, 3, 1, 4}}));
    EXPECT_TRUE(history.cells.empty());  // the action snapshots; cells are not recorded one by one
    EXPECT_EQ(history.depth, 0);
}

TEST_F(DataStorageShiftTest, ManyRowsShiftInOnePass) {
    constexpr std::int32_t kRows = 65536;
    for (std::int32_t r = 0; r < kRows; ++r) storage.setText(0, r, "=B" + std::to_string(r + 1));
    EXPECT_EQ(alive, kRows);
    storage.insertCells({0, 0, 0, 0}, ShiftMode::Rows);
    EXPECT_EQ(text(0, 0), "");
    EXPECT_EQ(text(0, 1), "=B2");
    EXPECT_EQ(text(0, kRows), "=B" + std::to_string(kRows + 1));
    EXPECT_EQ(formulaAt(0, kRows)->cell(), (CellPoint{0, kRows}));
    EXPECT_EQ(storage.rowCount(), kRows + 1);
}

}  // namespace
}  // namespace zorfa::sheet
