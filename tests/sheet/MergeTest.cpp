// Merged ranges: inclusive at the interface, grown over what they cut, moved
// and grown by row and column changes, and guarded against shifts that cut them.

#include <gtest/gtest.h>

#include "sheet/CellStyle.h"
#include "sheet/DataStorage.h"
#include "sheet/MergedCellsStorage.h"
#include "sheet/SheetErrors.h"
#include "sheet/StorageTestSupport.h"

namespace zorfa::sheet {
namespace {

using testing::RecordingHistory;

bool isMergedCell(const TcxSSDataStorage& storage, std::int32_t c, std::int32_t r) {
    return storage.cell(c, r).style.fields().flags & kStyleMerged;
}

TEST(MergedCellsStorageTest, RangesAreInclusiveAtTheInterface) {
    TcxSSMergedCellsStorage merged;
    merged.add({3, 4, 1, 2});  // normalised on the way in
    ASSERT_EQ(merged.count(), 1);
    EXPECT_EQ(merged.item(0), (CellRect{1, 2, 3, 4}));
    EXPECT_EQ(merged.rangeAt(3, 4), (CellRect{1, 2, 3, 4}));
    EXPECT_FALSE(merged.rangeAt(4, 4));
    EXPECT_FALSE(merged.rangeAt(3, 5));
    EXPECT_EQ(merged.cellRange(9, 9), (CellRect{9, 9, 9, 9}));
    merged.add({0, 0, 0, 0});
    EXPECT_EQ(merged.item(1), (CellRect{0, 0, 0, 0}));
    EXPECT_EQ(merged.rangeAt(0, 0), (CellRect{0, 0, 0, 0}));
}

TEST(MergedCellsStorageTest, TheFirstRangeInListOrderAnswers) {
    TcxSSMergedCellsStorage merged;
    merged.setList({{0, 0, 5, 5}, {2, 2, 3, 3}});
    EXPECT_EQ(merged.rangeAt(2, 2), (CellRect{0, 0, 5, 5}));
}

TEST(MergedCellsStorageTest, GrowRestartsUntilNothingIsCut) {
    TcxSSMergedCellsStorage merged;
    merged.setList({{4, 0, 5, 1}, {1, 1, 4, 2}});
    // C3 cuts only the second range; the union then cuts the first.
    EXPECT_EQ(merged.grow({2, 2, 2, 2}), (CellRect{1, 0, 5, 2}));
    EXPECT_EQ(merged.grow({1, 0, 5, 2}), (CellRect{1, 0, 5, 2}));
    EXPECT_EQ(merged.grow({7, 7, 8, 8}), (CellRect{7, 7, 8, 8}));
}

TEST(MergedCellsStorageTest, ShiftMovesGrowsShrinksAndDrops) {
    TcxSSMergedCellsStorage merged;
    merged.setList({{0, 5, 1, 6}, {0, 1, 1, 3}, {3, 0, 3, 1}});
    auto grown = merged.shift(false, 2, 2);  // two rows inserted at row 2
    EXPECT_EQ(merged.list(), (std::vector<CellRect>{{0, 7, 1, 8}, {0, 1, 1, 5}, {3, 0, 3, 1}}));
    EXPECT_EQ(grown, (std::vector<CellRect>{{0, 1, 1, 5}}));
    merged.shift(false, 1, -5);  // rows 1..5 deleted
    EXPECT_EQ(merged.list(), (std::vector<CellRect>{{0, 2, 1, 3}, {3, 0, 3, 0}}));
    merged.shift(true, 0, -2);  // columns A..B deleted
    EXPECT_EQ(merged.list(), (std::vector<CellRect>{{1, 0, 1, 0}}));
}

class MergeTest : public ::testing::Test {
protected:
    MergeTest() : storage(styles) { storage.setHistory(&history); }
    TcxSSStyleCache styles;
    TcxSSDataStorage storage;
    RecordingHistory history;
};

TEST_F(MergeTest, MergingFlagsEveryCellAndSplittingClearsThem) {
    storage.mergeCells({1, 1, 2, 3}, true);
    ASSERT_EQ(storage.merged().count(), 1);
    EXPECT_EQ(storage.merged().item(0), (CellRect{1, 1, 2, 3}));
    for (std::int32_t c = 1; c <= 2; ++c)
        for (std::int32_t r = 1; r <= 3; ++r) EXPECT_TRUE(isMergedCell(storage, c, r)) << c << "," << r;
    EXPECT_FALSE(isMergedCell(storage, 0, 1));
    EXPECT_EQ(styles.styleCount(), 2u);  // six cells, one merged style

    storage.mergeCells({2, 2, 2, 2}, false);  // splitting any cell splits the range
    EXPECT_EQ(storage.merged().count(), 0);
    EXPECT_FALSE(isMergedCell(storage, 1, 1));
    EXPECT_EQ(styles.styleCount(), 1u);
    EXPECT_EQ(history.actions, (std::vector<StorageAction::Kind>{StorageAction::Kind::MergeCells,
                                                                  StorageAction::Kind::SplitCells}));
    EXPECT_EQ(history.mergedLists[1], (std::vector<CellRect>{{1, 1, 2, 3}}));
}

TEST_F(MergeTest, MergingOverPartOfARangeMergesTheUnion) {
    storage.mergeCells({0, 0, 1, 1}, true);
    storage.mergeCells({1, 1, 3, 1}, true);
    ASSERT_EQ(storage.merged().count(), 1);
    EXPECT_EQ(storage.merged().item(0), (CellRect{0, 0, 3, 1}));
    EXPECT_TRUE(isMergedCell(storage, 3, 0));
}

TEST_F(MergeTest, InnerEdgesOfAMergedRangeShowNone) {
    TcxSSCellStyle(storage, 0, 0).setEdgeStyle(eRight, lsThin);
    storage.mergeCells({0, 0, 1, 0}, true);
    TcxSSCellStyle left(storage, 0, 0);
    EXPECT_EQ(left.edgeStyle(eRight), lsNone);
    EXPECT_EQ(left.storedEdge(eRight).line, lsThin);
    TcxSSCellStyle(storage, 1, 0).setEdgeStyle(eRight, lsThick);
    EXPECT_EQ(TcxSSCellStyle(storage, 1, 0).edgeStyle(eRight), lsThick);  // the range's outer edge
}

TEST_F(MergeTest, ShiftsThatCutAMergedRangeAreRefused) {
    storage.setText(0, 0, "a");
    storage.setText(4, 2, "keep");
    storage.mergeCells({3, 2, 4, 3}, true);
    testing::RecordingListener listener;
    storage.setListener(&listener);
    auto expectRefused = [&](auto operation) {
        try {
            operation();
            ADD_FAILURE() << "no error";
        } catch (const ESpreadSheetError& error) {
            EXPECT_STREQ(error.what(), "Some modify cells is merged");
        }
        EXPECT_EQ(storage.cell(4, 2).text, "keep");
        EXPECT_EQ(storage.merged().item(0), (CellRect{3, 2, 4, 3}));
        EXPECT_EQ(listener.modified, 0);  // refused before anything changed
    };
    expectRefused([&] { storage.deleteCells({0, 2, 0, 2}, ShiftMode::Horizontal); });
    expectRefused([&] { storage.insertCells({1, 3, 1, 3}, ShiftMode::Horizontal); });
    expectRefused([&] { storage.deleteCells({4, 0, 4, 0}, ShiftMode::Vertical); });
    expectRefused([&] { storage.insertCells({3, 3, 3, 3}, ShiftMode::Vertical); });
    expectRefused([&] { storage.deleteCells({4, 3, 4, 3}, ShiftMode::Horizontal); });  // cuts it from inside
    expectRefused([&] { storage.sortCells({0, 0, 4, 4}, false); });

    // Shifts beside the range, and a delete that takes the range whole, are fine.
    storage.deleteCells({0, 0, 0, 0}, ShiftMode::Horizontal);
    storage.insertCells({0, 4, 6, 4}, ShiftMode::Vertical);
    EXPECT_EQ(storage.merged().count(), 1);
    storage.deleteCells({3, 2, 4, 3}, ShiftMode::Vertical);
    EXPECT_EQ(storage.merged().count(), 0);
}

TEST_F(MergeTest, InsertedRowsAndColumnsMoveAndGrowRanges) {
    storage.mergeCells({1, 1, 2, 2}, true);  // B2:C3
    storage.mergeCells({0, 5, 0, 6}, true);  // A6:A7
    storage.insertCells({0, 2, 0, 2}, ShiftMode::Rows);  // a row inside the first range
    EXPECT_EQ(storage.merged().item(0), (CellRect{1, 1, 2, 3}));
    EXPECT_EQ(storage.merged().item(1), (CellRect{0, 6, 0, 7}));
    EXPECT_TRUE(isMergedCell(storage, 1, 2));  // the opened cells belong to it
    EXPECT_TRUE(isMergedCell(storage, 2, 2));
    EXPECT_FALSE(isMergedCell(storage, 0, 2));

    storage.insertCells({0, 0, 0, 0}, ShiftMode::Columns);
    EXPECT_EQ(storage.merged().item(0), (CellRect{2, 1, 3, 3}));
    EXPECT_EQ(storage.merged().item(1), (CellRect{1, 6, 1, 7}));

    storage.deleteCells({0, 1, 0, 2}, ShiftMode::Rows);  // two of the range's three rows
    EXPECT_EQ(storage.merged().item(0), (CellRect{2, 1, 3, 1}));
    EXPECT_EQ(storage.merged().item(1), (CellRect{1, 4, 1, 5}));
    storage.deleteCells({0, 0, 0, 1}, ShiftMode::Rows);
    ASSERT_EQ(storage.merged().count(), 1);
    EXPECT_EQ(storage.merged().item(0), (CellRect{1, 2, 1, 3}));
}

TEST_F(MergeTest, ClearWithStylesRemovesRangesWhollyInside) {
    storage.mergeCells({0, 0, 1, 1}, true);
    storage.mergeCells({3, 3, 5, 5}, true);
    storage.clearCells({0, 0, 4, 4}, true);
    ASSERT_EQ(storage.merged().count(), 1);
    EXPECT_EQ(storage.merged().item(0), (CellRect{3, 3, 5, 5}));
    storage.clearCells({0, 0, 9, 9}, false);
    EXPECT_EQ(storage.merged().count(), 1);
}

}  // namespace
}  // namespace zorfa::sheet
