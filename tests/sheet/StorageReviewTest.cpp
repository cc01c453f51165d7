// Cases found by reading the storage, styles and number formats against their
// rules: bad indexes, values no date can show, sorting with an order that is
// not transitive, and what the history hears of an insertion.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "sheet/DataStorage.h"
#include "sheet/MergedCellsStorage.h"
#include "sheet/NumberFormat.h"
#include "sheet/StorageTestSupport.h"

namespace zorfa::sheet {
namespace {

using testing::StorageFixture;

TEST(StorageReviewMergedTest, RemovingARangeThatIsNotThereChangesNothing) {
    TcxSSMergedCellsStorage merged;
    merged.add({0, 0, 1, 1});
    merged.removeAt(1);
    merged.removeAt(-1);
    merged.removeAt(1000);
    ASSERT_EQ(merged.count(), 1);
    EXPECT_EQ(merged.item(0), (CellRect{0, 0, 1, 1}));
    merged.removeAt(0);
    EXPECT_EQ(merged.count(), 0);
}

// A day number no calendar holds (past year 9999, before year 1, or not a
// number at all) shows in the general form instead of a date.
TEST(StorageReviewFormatTest, DayNumbersNoDateCanShowUseTheGeneralForm) {
    const LocaleSettings locale;
    const double huge[] = {1e300, -1e300, 1e20, 2958466.0, -693594.0};
    for (double value : huge) {
        for (std::uint16_t code : {14, 15, 16, 17, 18, 19, 20, 21, 22, 45, 46, 47, 164, 165}) {
            SCOPED_TRACE(std::to_string(code) + " " + std::to_string(value));
            EXPECT_EQ(formatNumber(value, code, 2, locale).text, formatNumber(value, 0, 2, locale).text);
        }
    }
    // The last day of year 9999 and the first of year 1 still show as dates.
    EXPECT_EQ(formatNumber(2958465.0, 164, 2, locale).text, "31/12/99");
    EXPECT_EQ(formatNumber(-693593.0, 14, 2, locale).text, "1/1/1");
    EXPECT_EQ(formatNumber(std::numeric_limits<double>::quiet_NaN(), 14, 2, locale).text,
              formatNumber(std::numeric_limits<double>::quiet_NaN(), 0, 2, locale).text);
}

// Infinities and NaN, which a formula can leave in a cell, show as the float
// text does in every format instead of a broken number form.
TEST(StorageReviewFormatTest, NumbersThatAreNotFiniteShowTheirFloatText) {
    const LocaleSettings locale;
    const double inf = std::numeric_limits<double>::infinity();
    for (std::uint16_t code : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 37, 38, 39, 40, 41, 42, 43, 44, 48, 49}) {
        SCOPED_TRACE(code);
        EXPECT_EQ(formatNumber(inf, code, 2, locale).text, "INF");
        EXPECT_EQ(formatNumber(-inf, code, 2, locale).text, "-INF");
        EXPECT_EQ(formatNumber(std::numeric_limits<double>::quiet_NaN(), code, 2, locale).text, "NAN");
    }
    // A percentage too large to multiply by 100.
    EXPECT_EQ(formatNumber(1e307, 9, 2, locale).text, "INF");
    EXPECT_TRUE(formatNumber(-inf, 6, 2, locale).red);
}

class StorageReviewTest : public StorageFixture {};

// "10", "9" and "1a" compare in a circle (numbers by value, a number and a
// text as text); sorting them must still only permute the rows of the
// rectangle.
TEST_F(StorageReviewTest, SortingValuesThatCompareInACircleStaysInsideTheRectangle) {
    const char* values[] = {"10", "9", "1a", "TRUE", "", "a", "FALSE", "2"};
    storage.setText(0, 0, "above");
    std::vector<std::string> inside;
    unsigned seed = 7;
    for (std::int32_t r = 1; r <= 60; ++r) {
        seed = seed * 1103515245u + 12345u;
        const std::string v = values[(seed >> 16) % 8];
        storage.setText(0, r, v);
        storage.setText(1, r, std::to_string(r));
        inside.push_back(v);
    }
    storage.setText(0, 61, "below");
    storage.setText(1, 61, "below too");
    storage.sortCells({0, 1, 1, 60}, false);
    EXPECT_EQ(text(0, 0), "above");
    EXPECT_EQ(text(0, 61), "below");
    EXPECT_EQ(text(1, 61), "below too");
    std::vector<std::string> after, keys;
    for (std::int32_t r = 1; r <= 60; ++r) {
        after.push_back(text(0, r));
        keys.push_back(text(1, r));
    }
    std::sort(inside.begin(), inside.end());
    std::sort(after.begin(), after.end());
    EXPECT_EQ(after, inside);
    std::sort(keys.begin(), keys.end());
    EXPECT_EQ(std::unique(keys.begin(), keys.end()), keys.end());
}

// Insertion is framed like deletion: its action holds the merged list as it
// was, so that undo can put the ranges back.
TEST_F(StorageReviewTest, AnInsertionTellsTheHistoryTheMergedListBefore) {
    storage.setText(0, 0, "x");
    storage.mergeCells({0, 3, 1, 4}, true);
    history.mergedLists.clear();
    history.actions.clear();
    storage.insertCells({0, 4, 0, 4}, ShiftMode::Rows);
    ASSERT_EQ(history.actions.size(), 1u);
    EXPECT_EQ(history.actions[0], StorageAction::Kind::InsertCells);
    ASSERT_EQ(history.mergedLists.size(), 1u);
    EXPECT_EQ(history.mergedLists[0], (std::vector<CellRect>{{0, 3, 1, 4}}));
    EXPECT_EQ(storage.merged().item(0), (CellRect{0, 3, 1, 5}));
}

// Clearing is one undo step with the caption "Delete cells".
TEST_F(StorageReviewTest, ClearingIsOneActionCalledDeleteCells) {
    struct TitleHistory : testing::RecordingHistory {
        std::vector<std::string> titles;
        void beginAction(TcxSSDataStorage& storage, const StorageAction& action) override {
            titles.emplace_back(action.title);
            RecordingHistory::beginAction(storage, action);
        }
    } titled;
    storage.setHistory(&titled);
    storage.setText(0, 0, "a");
    storage.setText(1, 1, "b");
    titled.cells.clear();
    storage.clearCells(TcxSSUtils::kWholeSheet, false);
    ASSERT_EQ(titled.titles.size(), 1u);
    EXPECT_EQ(titled.titles[0], "Delete cells");
    EXPECT_EQ(titled.cells.size(), 2u);
}

}  // namespace
}  // namespace zorfa::sheet
