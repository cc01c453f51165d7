// Sorting rows: the order of mixed values, several keys, and what moves.

#include <gtest/gtest.h>

#include <array>

#include "sheet/DataStorage.h"
#include "sheet/StorageTestSupport.h"

namespace zorfa::sheet {
namespace {

using testing::FakeCompiler;
using testing::FakeFormula;
using testing::RecordingHistory;

class SortTest : public ::testing::Test {
protected:
    SortTest() : storage(styles) {
        storage.setHistory(&history);
        storage.setFormulaCompiler(&compiler);
    }

    void column(std::int32_t c, std::initializer_list<const char*> texts) {
        std::int32_t r = 0;
        for (const char* t : texts) storage.setText(c, r++, t);
    }
    std::vector<std::string> columnTexts(std::int32_t c, std::int32_t rows) {
        std::vector<std::string> out;
        for (std::int32_t r = 0; r < rows; ++r) out.push_back(storage.cell(c, r).text);
        return out;
    }

    TcxSSStyleCache styles;
    TcxSSDataStorage storage;
    RecordingHistory history;
    FakeCompiler compiler;
};

TEST_F(SortTest, CompareOrdersEmptyNumbersBooleansAndText) {
    auto cmp = [&](const char* a, const char* b) {
        storage.setText(0, 0, a);
        storage.setText(1, 0, b);
        return storage.compareCells(storage.cell(0, 0), storage.cell(1, 0));
    };
    EXPECT_EQ(cmp("", ""), 0);
    EXPECT_EQ(cmp("", "0"), -1);
    EXPECT_EQ(cmp("a", ""), 1);
    EXPECT_EQ(cmp("9", "10"), -1);     // numbers by value, not text
    EXPECT_EQ(cmp("1e1", "10"), 0);
    EXPECT_EQ(cmp("-2", "1.5"), -1);
    EXPECT_EQ(cmp("TRUE", "false"), 1);
    EXPECT_EQ(cmp("abc", "ABD"), -1);  // text without regard to case
    EXPECT_EQ(cmp("Abc", "aBC"), 0);
    EXPECT_EQ(cmp("10", "9x"), -1);    // a number beside text compares as text
    EXPECT_EQ(cmp("b", "10"), 1);
}

TEST_F(SortTest, NumbersAndFormulaResultsCompareByValue) {
    storage.setNumber(0, 0, 100);
    storage.setText(1, 0, "=C1");
    static_cast<FakeFormula*>(storage.cell(1, 0).formula.get())
        ->setResult(CellValue{CellValueKind::Number, 20, ""});
    EXPECT_EQ(storage.compareCells(storage.cell(0, 0), storage.cell(1, 0)), 1);
}

TEST_F(SortTest, AscendingAndDescendingOnOneKey) {
    column(0, {"pear", "10", "", "9", "Apple", "TRUE"});
    column(1, {"r0", "r1", "r2", "r3", "r4", "r5"});
    storage.sortCells({0, 0, 1, 5}, false);
    EXPECT_EQ(columnTexts(0, 6), (std::vector<std::string>{"", "9", "10", "Apple", "pear", "TRUE"}));
    EXPECT_EQ(columnTexts(1, 6), (std::vector<std::string>{"r2", "r3", "r1", "r4", "r0", "r5"}));
    storage.sortCells({0, 0, 1, 5}, true);
    EXPECT_EQ(columnTexts(0, 6), (std::vector<std::string>{"TRUE", "pear", "Apple", "10", "9", ""}));
    EXPECT_EQ(columnTexts(1, 6), (std::vector<std::string>{"r5", "r0", "r4", "r1", "r3", "r2"}));
}

TEST_F(SortTest, LaterKeysOrderRunsThatEarlierKeysLeaveEqual) {
    column(0, {"b", "a", "b", "a", "c", "a"});
    column(1, {"1", "x", "1", "3", "0", "2"});
    column(2, {"z", "y", "a", "w", "v", "u"});
    storage.sortCells({0, 0, 2, 5}, false);
    EXPECT_EQ(columnTexts(0, 6), (std::vector<std::string>{"a", "a", "a", "b", "b", "c"}));
    EXPECT_EQ(columnTexts(1, 6), (std::vector<std::string>{"2", "3", "x", "1", "1", "0"}));
    EXPECT_EQ(columnTexts(2, 6), (std::vector<std::string>{"u", "w", "y", "a", "z", "v"}));
}

TEST_F(SortTest, ARunOfALaterKeyIsDecidedByTheKeyJustBeforeIt) {
    // The second key is equal across the boundary of two first-key groups, so
    // the third key sorts all four rows as one run and regroups the first key.
    column(0, {"1", "2", "1", "2"});
    column(1, {"same", "same", "same", "same"});
    column(2, {"d", "a", "c", "b"});
    storage.sortCells({0, 0, 2, 3}, false);
    EXPECT_EQ(columnTexts(2, 4), (std::vector<std::string>{"a", "b", "c", "d"}));
    EXPECT_EQ(columnTexts(0, 4), (std::vector<std::string>{"2", "2", "1", "1"}));
}

TEST_F(SortTest, EachKeyMayHaveItsOwnDirection) {
    column(0, {"1", "2", "1", "2"});
    column(1, {"a", "b", "c", "d"});
    const std::array<bool, 1> directions{true};  // first key descending, then the default
    storage.sortCells({0, 0, 1, 3}, directions, false);
    EXPECT_EQ(columnTexts(0, 4), (std::vector<std::string>{"2", "2", "1", "1"}));
    EXPECT_EQ(columnTexts(1, 4), (std::vector<std::string>{"b", "d", "a", "c"}));
}

TEST_F(SortTest, OnlyTheRectangleMoves) {
    column(0, {"left0", "left1", "left2"});
    column(1, {"3", "1", "2"});
    column(2, {"c", "a", "b"});
    column(3, {"right0", "right1", "right2"});
    storage.sortCells({1, 0, 2, 2}, false);
    EXPECT_EQ(columnTexts(0, 3), (std::vector<std::string>{"left0", "left1", "left2"}));
    EXPECT_EQ(columnTexts(2, 3), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(columnTexts(3, 3), (std::vector<std::string>{"right0", "right1", "right2"}));
    EXPECT_EQ(history.actions, (std::vector<StorageAction::Kind>{StorageAction::Kind::SortCells}));
}

TEST_F(SortTest, EmptyCellsOfTheRectangleSortFirst) {
    column(0, {"b", "a"});
    storage.setText(1, 3, "tail");  // row 4 exists, column A is empty there
    storage.sortCells({0, 0, 0, 9}, false);
    EXPECT_EQ(columnTexts(0, 4), (std::vector<std::string>{"", "", "a", "b"}));
    EXPECT_EQ(storage.rowsUsed(0), 4);
}

TEST_F(SortTest, MovedFormulasLearnTheirCell) {
    column(0, {"2", "1"});
    storage.setText(1, 0, "=D9");
    storage.sortCells({0, 0, 1, 1}, false);
    ASSERT_NE(storage.cell(1, 1).formula, nullptr);
    EXPECT_EQ(storage.cell(1, 1).formula->cell(), (CellPoint{1, 1}));
}

}  // namespace
}  // namespace zorfa::sheet
