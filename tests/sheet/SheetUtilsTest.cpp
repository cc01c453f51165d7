#include "sheet/SheetUtils.h"

#include <gtest/gtest.h>

namespace zorfa::sheet {
namespace {

using U = TcxSSUtils;

TEST(SheetUtilsTest, ColumnTextInA1Form) {
    EXPECT_EQ(U::columnText(0), "A");
    EXPECT_EQ(U::columnText(25), "Z");
    EXPECT_EQ(U::columnText(26), "AA");
    EXPECT_EQ(U::columnText(51), "AZ");
    EXPECT_EQ(U::columnText(52), "BA");
    EXPECT_EQ(U::columnText(701), "ZZ");
    EXPECT_EQ(U::columnText(702), "AAA");
    EXPECT_EQ(U::columnText(U::kMaxFileColumn), "IV");
    EXPECT_EQ(U::columnText(-1), "");
}

TEST(SheetUtilsTest, ColumnTextInR1C1FormIsTheOneBasedNumber) {
    EXPECT_EQ(U::columnText(0, true), "1");
    EXPECT_EQ(U::columnText(255, true), "256");
}

TEST(SheetUtilsTest, RowTextIsOneBased) {
    EXPECT_EQ(U::rowText(0), "1");
    EXPECT_EQ(U::rowText(U::kMaxFileRow), "65536");
    EXPECT_EQ(U::rowText(-5), "");
}

TEST(SheetUtilsTest, CellNamesWithAndWithoutDollars) {
    EXPECT_EQ(U::cellName(1, 2), "B3");
    EXPECT_EQ(U::cellName(1, 2, true, true), "$B$3");
    EXPECT_EQ(U::cellName(1, 2, false, true), "B$3");
    EXPECT_EQ(U::cellName(CellName{255, 65535, true, false}), "$IV65536");
}

TEST(SheetUtilsTest, SelectionNameJoinsCornersWithX) {
    EXPECT_EQ(U::selectionName({2, 4, 2, 4}), "C5");
    EXPECT_EQ(U::selectionName({2, 4, 2, 4}, true), "35");
    EXPECT_EQ(U::selectionName({0, 0, 1, 9}), "A1 x B10");
    EXPECT_EQ(U::rangeName({0, 0, 1, 9}), "A1:B10");
    EXPECT_EQ(U::rangeName({3, 3, 3, 3}), "D4");
}

TEST(SheetUtilsTest, ColumnIndexIsTheInverseOfColumnText) {
    for (std::int32_t c : {0, 1, 25, 26, 27, 255, 701, 702, 18277, 100000}) {
        EXPECT_EQ(U::columnIndex(U::columnText(c)), c) << c;
    }
    EXPECT_EQ(U::columnIndex("iv"), 255);
    EXPECT_FALSE(U::columnIndex(""));
    EXPECT_FALSE(U::columnIndex("A1"));
    EXPECT_FALSE(U::columnIndex("ZZZZZZZZ"));
}

TEST(SheetUtilsTest, ParseCellName) {
    EXPECT_EQ(U::parseCellName("B3"), (CellName{1, 2, false, false}));
    EXPECT_EQ(U::parseCellName("$B$3"), (CellName{1, 2, true, true}));
    EXPECT_EQ(U::parseCellName("b$3"), (CellName{1, 2, false, true}));
    EXPECT_EQ(U::parseCellName("$iv65536"), (CellName{255, 65535, true, false}));
    for (const char* bad : {"", "B", "3", "B0", "$", "B$", "$$B3", "B3 ", " B3", "B-3", "B3C", "A99999999999"}) {
        EXPECT_FALSE(U::parseCellName(bad)) << bad;
    }
}

TEST(SheetUtilsTest, RangeTests) {
    CellRect r{1, 1, 3, 4};
    EXPECT_TRUE(U::contains(r, 1, 1));
    EXPECT_TRUE(U::contains(r, CellPoint{3, 4}));
    EXPECT_FALSE(U::contains(r, 4, 4));
    EXPECT_FALSE(U::contains(r, 0, 2));
    EXPECT_TRUE(U::contains(r, CellRect{2, 2, 3, 4}));
    EXPECT_FALSE(U::contains(r, CellRect{2, 2, 4, 4}));
    EXPECT_TRUE(U::intersects(r, CellRect{3, 4, 9, 9}));
    EXPECT_FALSE(U::intersects(r, CellRect{4, 0, 9, 9}));
    EXPECT_EQ(U::intersection(r, CellRect{2, 0, 9, 2}), (CellRect{2, 1, 3, 2}));
    EXPECT_FALSE(U::intersection(r, CellRect{0, 5, 9, 9}));
    EXPECT_EQ(U::unite(r, CellRect{0, 2, 2, 9}), (CellRect{0, 1, 3, 9}));
    EXPECT_EQ(U::normalized(CellRect{3, 4, 1, 1}), r);
    EXPECT_FALSE(U::isValid(CellRect{3, 4, 1, 1}));
    EXPECT_EQ(U::width(r), 3);
    EXPECT_EQ(U::height(r), 4);
    EXPECT_TRUE(U::isSingleCell(CellRect{5, 5, 5, 5}));
}

}  // namespace
}  // namespace zorfa::sheet
