// Column and row headers: defaults, flags, hidden items and shifting.

#include <gtest/gtest.h>

#include "sheet/SSHeader.h"

namespace zorfa::sheet {
namespace {

TEST(DataStorageHeaderTest, DefaultsOfColumnsAndRows) {
    TcxSSHeader columns(TcxSSHeader::Columns);
    TcxSSHeader rows(TcxSSHeader::Rows);
    EXPECT_EQ(columns.size(0), 85);
    EXPECT_EQ(rows.size(70000), 20);
    EXPECT_EQ(columns.count(), 0);
    EXPECT_TRUE(columns.flags(5) & kHeaderDefaultSize);
    EXPECT_FALSE(columns.isHidden(5));
}

TEST(DataStorageHeaderTest, SettingPastTheEndFillsWithDefaults) {
    TcxSSHeader rows(TcxSSHeader::Rows);
    rows.setSize(4, 31);
    EXPECT_EQ(rows.count(), 5);
    EXPECT_EQ(rows.size(4), 31);
    EXPECT_FALSE(rows.flags(4) & kHeaderDefaultSize);
    EXPECT_EQ(rows.item(2), rows.defaultItem());
    EXPECT_EQ(rows.item(-1), rows.defaultItem());
}

TEST(DataStorageHeaderTest, HiddenReadsZeroAndShowingAZeroSizeGivesTheDefault) {
    TcxSSHeader columns(TcxSSHeader::Columns);
    columns.setSize(1, 40);
    columns.setVisible(1, false);
    EXPECT_TRUE(columns.isHidden(1));
    EXPECT_EQ(columns.size(1), 0);
    columns.setVisible(1, true);
    EXPECT_EQ(columns.size(1), 40);
    columns.setSize(2, 0);
    columns.setVisible(2, true);
    EXPECT_EQ(columns.size(2), 85);
    columns.setFlags(3, kHeaderSizeLocked | kHeaderAutoFit);
    EXPECT_EQ(columns.flags(3), kHeaderSizeLocked | kHeaderAutoFit);
}

TEST(DataStorageHeaderTest, DefaultSizeRewritesOnlyDefaultItems) {
    TcxSSHeader rows(TcxSSHeader::Rows);
    rows.setSize(0, 30);
    rows.setFlags(1, kHeaderDefaultSize);
    rows.setDefaultSize(25);
    EXPECT_EQ(rows.size(0), 30);
    EXPECT_EQ(rows.size(1), 25);
    EXPECT_EQ(rows.size(99), 25);
}

TEST(DataStorageHeaderTest, InsertAndRemoveShiftStoredItems) {
    TcxSSHeader columns(TcxSSHeader::Columns);
    columns.setSize(0, 10);
    columns.setSize(1, 11);
    columns.setSize(2, 12);
    columns.insert(1, 2);
    EXPECT_EQ(columns.count(), 5);
    EXPECT_EQ(columns.size(0), 10);
    EXPECT_EQ(columns.size(1), 85);
    EXPECT_TRUE(columns.flags(2) & kHeaderDefaultSize);
    EXPECT_EQ(columns.size(3), 11);
    columns.remove(0, 3);
    EXPECT_EQ(columns.size(0), 11);
    EXPECT_EQ(columns.size(1), 12);
    EXPECT_EQ(columns.count(), 2);
    columns.remove(1, 100);
    EXPECT_EQ(columns.count(), 1);
    columns.insert(7, 3);  // past the stored items nothing is stored
    EXPECT_EQ(columns.count(), 1);
}

TEST(DataStorageHeaderTest, SpanSumsShownSizes) {
    TcxSSHeader rows(TcxSSHeader::Rows);
    rows.setSize(1, 30);
    rows.setVisible(2, false);
    EXPECT_EQ(rows.span(0, 5), 20 + 30 + 0 + 20 + 20);
    EXPECT_EQ(rows.span(2, 2), 0);
}

}  // namespace
}  // namespace zorfa::sheet

#include "sheet/DataStorage.h"

namespace zorfa::sheet {
namespace {

TEST(DataStorageGeometryTest, CellRectanglesSumHeaderSizes) {
    TcxSSStyleCache styles;
    TcxSSDataStorage storage(styles);
    storage.header(0).setSize(1, 50);
    storage.header(1).setVisible(0, false);  // row 1 hidden: row 2 starts at the top
    EXPECT_EQ(storage.getCellRect(1, 2, false, 0, 0), (CellRect{85 + 50, 0, 85 + 50 + 85, 20}));
    EXPECT_EQ(storage.getCellRect(1, 0, false, 1, 1), (CellRect{-85, 0, 0, 20}));
    storage.mergeCells({1, 1, 2, 2}, true);
    EXPECT_EQ(storage.getCellRect(2, 2, true, 0, 0), (CellRect{85, 0, 85 + 50 + 85, 40}));
}

TEST(DataStorageGeometryTest, SelectionKind) {
    TcxSSStyleCache styles;
    TcxSSDataStorage storage(styles);
    storage.mergeCells({1, 1, 2, 2}, true);
    storage.setSelection({3, 3, 3, 3});
    EXPECT_EQ(storage.selectionKind(), 0);
    storage.setSelection({2, 2, 1, 1});
    EXPECT_EQ(storage.selection(), (CellRect{1, 1, 2, 2}));
    EXPECT_EQ(storage.selectionKind(), 2);
    storage.setSelection({1, 1, 3, 2});
    EXPECT_EQ(storage.selectionKind(), 1);
    storage.setActiveColumn(-4);
    storage.setActiveRow(7);
    EXPECT_EQ(storage.activeCell(), (CellPoint{0, 7}));
}

}  // namespace
}  // namespace zorfa::sheet
