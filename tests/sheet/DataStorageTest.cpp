#include "sheet/DataStorage.h"

#include <gtest/gtest.h>

#include "sheet/CellStyle.h"
#include "sheet/NumberFormat.h"
#include "sheet/StorageTestSupport.h"

namespace zorfa::sheet {
namespace {

using testing::FakeFormula;

class DataStorageTest : public testing::StorageFixture {
protected:
    void setFormat(std::int32_t column, std::int32_t row, std::uint16_t code) {
        TcxSSCellStyle(storage, column, row).setFormatCode(code);
    }
};

TEST_F(DataStorageTest, WritingA1OfAnEmptySheetGrowsByTheSteps) {
    EXPECT_EQ(storage.capacityColumns(), 0);
    storage.setText(0, 0, "x");
    EXPECT_EQ(storage.capacityColumns(), 10);
    EXPECT_EQ(storage.capacityRows(), 1000);
    EXPECT_EQ(storage.columnCount(), 1);
    EXPECT_EQ(storage.rowCount(), 1);
    storage.setText(10, 1000, "y");
    EXPECT_EQ(storage.capacityColumns(), 20);
    EXPECT_EQ(storage.capacityRows(), 2000);
    EXPECT_EQ(storage.columnCount(), 11);
    EXPECT_EQ(storage.rowCount(), 1001);
    EXPECT_EQ(storage.recordCount(), 2u);
    EXPECT_EQ(listener.counts.back(), (std::pair<int, std::int32_t>{1, 1001}));
}

TEST_F(DataStorageTest, MissingAndNegativeCellsReadAsTheEmptyTemplate) {
    storage.setText(-1, 0, "x");
    storage.setText(0, -1, "x");
    EXPECT_EQ(storage.recordCount(), 0u);
    EXPECT_EQ(listener.modified, 0);
    for (auto [c, r] : {std::pair{-1, 0}, {0, -5}, {3, 3}, {100000, 5}}) {
        const CellRecord& cell = storage.cell(c, r);
        EXPECT_EQ(cell.text, "");
        EXPECT_EQ(cell.kind, CellKind::Text);
        EXPECT_EQ(cell.style.get(), &styles.defaultRecord());
        EXPECT_EQ(storage.readCell(c, r).kind, CellContent::Kind::Empty);
    }
}

TEST_F(DataStorageTest, WritingAnIdenticalCellRecordsNothingAndTellsNobody) {
    storage.setText(1, 1, "same");
    const auto recorded = history.cells.size();
    const auto events = listener.changedCells.size();
    const int modified = listener.modified;
    storage.setText(1, 1, "same");
    EXPECT_EQ(history.cells.size(), recorded);
    EXPECT_EQ(listener.changedCells.size(), events);
    EXPECT_EQ(listener.modified, modified);
    storage.setText(1, 1, "other");
    ASSERT_EQ(history.cells.size(), recorded + 1);
    EXPECT_EQ(history.cells.back().text, "same");
}

TEST_F(DataStorageTest, HistoryOffRecordsNothing) {
    history.recording = false;
    storage.setText(0, 0, "a");
    EXPECT_TRUE(history.cells.empty());
}

TEST_F(DataStorageTest, TextEntryTellsFormulasFromText) {
    storage.setText(0, 0, "=");
    EXPECT_EQ(storage.cell(0, 0).kind, CellKind::Text);
    storage.setText(0, 1, "=A1#");
    EXPECT_EQ(storage.cell(0, 1).kind, CellKind::Text);
    EXPECT_EQ(compiler.calls, 0);

    storage.setText(0, 2, "  =b7 ");
    EXPECT_EQ(storage.cell(0, 2).kind, CellKind::Formula);
    EXPECT_EQ(storage.cell(0, 2).text, "=B7");  // the compiler's normalised text
    EXPECT_EQ(storage.readCell(0, 2).kind, CellContent::Kind::Formula);
    EXPECT_EQ(storage.readCell(0, 2).formula, storage.cell(0, 2).formula.get());

    storage.setText(0, 3, "=A1", /*analyse=*/false);
    EXPECT_EQ(storage.cell(0, 3).kind, CellKind::Text);
    storage.setText(0, 4, "A1", /*analyse=*/false, /*forceFormula=*/true);
    EXPECT_EQ(storage.cell(0, 4).kind, CellKind::Formula);
}

TEST_F(DataStorageTest, FormulaLikeTextInATextFormattedCellStaysText) {
    setFormat(2, 2, kFormatText);
    storage.setText(2, 2, "=1+1");
    EXPECT_EQ(storage.cell(2, 2).kind, CellKind::Text);
    EXPECT_EQ(storage.cell(2, 2).text, "=1+1");
    EXPECT_EQ(compiler.calls, 0);
}

TEST_F(DataStorageTest, AFormulaThatDoesNotCompileStaysAsTyped) {
    storage.setText(0, 0, "=1+");
    EXPECT_EQ(compiler.calls, 1);
    EXPECT_EQ(storage.cell(0, 0).kind, CellKind::Text);
    EXPECT_EQ(storage.cell(0, 0).text, "=1+");
}

TEST_F(DataStorageTest, PercentInPercentFormatsStoresTheFraction) {
    setFormat(0, 0, 9);
    storage.setText(0, 0, "50%");
    EXPECT_EQ(storage.cell(0, 0).text, "0.5");
    EXPECT_EQ(storage.cell(0, 0).kind, CellKind::Text);
    EXPECT_EQ(storage.numericValue(0, 0), 0.5);
    EXPECT_EQ(storage.displayText(0, 0), "50%");

    setFormat(1, 0, 10);
    storage.setText(1, 0, "12.5%");
    EXPECT_EQ(storage.cell(1, 0).text, "0.125");
    EXPECT_EQ(storage.displayText(1, 0), "12.50%");

    storage.setText(2, 0, "50%");  // general format: as typed
    EXPECT_EQ(storage.cell(2, 0).text, "50%");
    EXPECT_FALSE(storage.numericValue(2, 0));
}

TEST_F(DataStorageTest, TypedNumbersStayTextButReadAsNumbers) {
    storage.setText(0, 0, "1234.5");
    EXPECT_EQ(storage.cell(0, 0).kind, CellKind::Text);
    EXPECT_EQ(storage.numericValue(0, 0), 1234.5);
    setFormat(0, 0, 4);
    EXPECT_EQ(storage.displayText(0, 0), "1,234.50");
    storage.setText(0, 1, "hello");
    EXPECT_FALSE(storage.numericValue(0, 1));
    EXPECT_EQ(storage.displayText(0, 1), "hello");
}

TEST_F(DataStorageTest, NumericWriteReplacesAFormula) {
    storage.setText(0, 0, "=B2");
    EXPECT_EQ(alive, 1);
    storage.setNumber(0, 0, 1234.5);
    EXPECT_EQ(alive, 0);
    const CellRecord& cell = storage.cell(0, 0);
    EXPECT_EQ(cell.kind, CellKind::Number);
    EXPECT_EQ(cell.number, 1234.5);
    EXPECT_EQ(cell.text, "1234.5");
    EXPECT_EQ(storage.readCell(0, 0).kind, CellContent::Kind::Number);
    storage.setText(0, 0, "plain");
    EXPECT_EQ(storage.cell(0, 0).kind, CellKind::Text);
    EXPECT_EQ(storage.cell(0, 0).number, 0.0);
}

TEST_F(DataStorageTest, DisplayTextOfAFormulaIsItsResult) {
    storage.setText(0, 0, "=B2");
    EXPECT_EQ(storage.displayText(0, 0), "=B2");  // not calculated yet
    formulaAt(0, 0)->setResult(CellValue{CellValueKind::Number, -1234.5, ""});
    setFormat(0, 0, 8);
    bool red = false;
    EXPECT_EQ(storage.displayText(0, 0, 2, &red), "($1,234.50)");
    EXPECT_TRUE(red);
    formulaAt(0, 0)->setResult(CellValue{CellValueKind::Boolean, 1, ""});
    EXPECT_EQ(storage.displayText(0, 0), "TRUE");
    formulaAt(0, 0)->setResult(CellValue{CellValueKind::Error, 2, ""});
    EXPECT_EQ(storage.displayText(0, 0), "#DIV/0!");
}

TEST_F(DataStorageTest, ClearCellsKeepsStylesUnlessAsked) {
    storage.setText(0, 0, "a");
    storage.setText(1, 1, "=A1");
    TcxSSCellStyle(storage, 1, 1).setFontSize(12);
    storage.clearCells({0, 0, 1, 1}, false);
    EXPECT_EQ(storage.cell(0, 0).text, "");
    EXPECT_EQ(storage.cell(1, 1).kind, CellKind::Text);
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(storage.cell(1, 1).style.fields().font->size, 12);
    EXPECT_EQ(storage.recordCount(), 2u);
    storage.clearCells({0, 0, 1, 1}, true);
    EXPECT_EQ(storage.recordCount(), 0u);
    EXPECT_EQ(styles.styleCount(), 1u);  // the size-12 style went with its only cell
    ASSERT_EQ(listener.cleared.size(), 2u);
    EXPECT_EQ(listener.cleared.back(), (CellRect{0, 0, 1, 1}));
}

TEST_F(DataStorageTest, ClearCellsRecordsEachCellInOneAction) {
    storage.setText(0, 0, "a");
    storage.setText(0, 1, "b");
    history.cells.clear();
    storage.clearCells(TcxSSUtils::kWholeSheet, false);
    ASSERT_EQ(history.actions.size(), 1u);
    EXPECT_EQ(history.actions[0], StorageAction::Kind::ClearCells);
    EXPECT_EQ(history.depth, 0);
    ASSERT_EQ(history.cells.size(), 2u);
    EXPECT_EQ(history.cells[0].text, "a");
    EXPECT_EQ(history.cells[1].text, "b");
}

TEST_F(DataStorageTest, AListenerVetoStopsClearCells) {
    storage.setText(0, 0, "keep");
    listener.allowClear = false;
    EXPECT_FALSE(storage.clearCells({0, 0, 5, 5}, true));
    EXPECT_EQ(storage.cell(0, 0).text, "keep");
    listener.lock();  // a locked listener asks nothing
    EXPECT_TRUE(storage.clearCells({0, 0, 5, 5}, true));
    listener.unlock();
    EXPECT_EQ(storage.cell(0, 0).text, "");
}

TEST_F(DataStorageTest, LockedListenerSwallowsEventsUntilUnlocked) {
    listener.lock();
    listener.lock();
    storage.setText(0, 0, "a");
    listener.unlock();
    storage.setText(0, 1, "b");
    EXPECT_TRUE(listener.changedCells.empty());
    listener.unlock();
    listener.unlock();  // never below zero
    EXPECT_FALSE(listener.isLocked());
    storage.setText(0, 2, "c");
    ASSERT_EQ(listener.changedCells.size(), 1u);
    EXPECT_EQ(listener.changedCells[0], (CellPoint{0, 2}));
    EXPECT_EQ(listener.modified, 3);  // modification is marked even while locked
}

TEST_F(DataStorageTest, LastUsedIgnoresCellsWithOnlyAStyle) {
    storage.setText(2, 4, "x");
    TcxSSCellStyle(storage, 7, 9).setWordBreak(true);
    EXPECT_EQ(storage.columnCount(), 8);
    EXPECT_EQ(storage.lastUsedColumn(), 3);
    EXPECT_EQ(storage.lastUsedRow(), 5);
}

TEST_F(DataStorageTest, AssignCopiesCellsFormulasAndStyles) {
    storage.setText(0, 0, "=C3");
    storage.setText(1, 0, "text");
    TcxSSCellStyle(storage, 1, 0).setFontStyle(kFontBold);
    storage.mergeCells({2, 2, 3, 3}, true);
    storage.header(0).setSize(1, 40);
    TcxSSDataStorage copy(styles, 4);
    copy.assign(storage);
    EXPECT_EQ(alive, 2);
    EXPECT_NE(copy.cell(0, 0).formula.get(), storage.cell(0, 0).formula.get());
    EXPECT_EQ(copy.cell(0, 0).formula->sheet(), 4);
    EXPECT_EQ(copy.cell(1, 0).style, storage.cell(1, 0).style);
    EXPECT_EQ(copy.merged().count(), 1);
    EXPECT_EQ(copy.header(0).size(1), 40);
    EXPECT_EQ(copy.rowCount(), storage.rowCount());
}

TEST_F(DataStorageTest, ClearAllEmptiesEverything) {
    storage.setText(3, 3, "=A1");
    storage.mergeCells({0, 0, 1, 1}, true);
    storage.clearAll();
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(storage.capacityColumns(), 0);
    EXPECT_EQ(storage.capacityRows(), 0);
    EXPECT_EQ(storage.columnCount(), 0);
    EXPECT_EQ(storage.merged().count(), 0);
    EXPECT_EQ(styles.styleCount(), 1u);
}

TEST_F(DataStorageTest, ForEachFormulaVisitsEveryFormula) {
    storage.setText(0, 0, "=A2");
    storage.setText(3, 7, "=A3");
    storage.setText(2, 2, "text");
    int seen = 0;
    storage.forEachFormula([&](CellFormula&) { ++seen; });
    EXPECT_EQ(seen, 2);
}

}  // namespace
}  // namespace zorfa::sheet

namespace zorfa::sheet {
namespace {

class DataStorageMoveTest : public DataStorageTest {};

TEST_F(DataStorageMoveTest, MoveCellsCopiesOrMovesAColumnBlock) {
    storage.setText(0, 0, "a");
    storage.setText(0, 1, "=C9");
    TcxSSCellStyle(storage, 0, 0).setFontStyle(kFontBold);
    storage.moveCells(2, 0, false, 2, 5, 0);
    EXPECT_EQ(storage.cell(2, 5).text, "a");
    EXPECT_EQ(storage.cell(2, 5).style, storage.cell(0, 0).style);
    EXPECT_EQ(storage.cell(0, 0).text, "a");
    ASSERT_NE(storage.cell(2, 6).formula, nullptr);
    EXPECT_EQ(storage.cell(2, 6).formula->cell(), (CellPoint{2, 6}));
    EXPECT_EQ(alive, 2);

    storage.moveCells(0, 0, true, 2, 1, 0);  // down by one, overlapping itself
    EXPECT_EQ(storage.cell(0, 0).text, "");
    EXPECT_EQ(storage.cell(0, 0).style.get(), &styles.defaultRecord());
    EXPECT_EQ(storage.cell(0, 1).text, "a");
    EXPECT_EQ(storage.cell(0, 2).kind, CellKind::Formula);
    EXPECT_EQ(storage.cell(0, 2).formula->cell(), (CellPoint{0, 2}));
    EXPECT_EQ(alive, 2);
}

}  // namespace
}  // namespace zorfa::sheet
