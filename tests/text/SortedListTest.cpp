// TEasySortedList: sorted adds, the duplicates modes, the plain bisection with
// LastFound, derived comparisons; TEasyVisibleLinesList's helpers.
#include <gtest/gtest.h>

#include <vector>

#include "base/Errors.h"
#include "text/EasySortedList.h"
#include "text/EasyVisibleLinesList.h"

using namespace zorfa::text;

namespace {

std::vector<TEasySortedList::Item> Items(const TEasySortedList& list) {
    return std::vector<TEasySortedList::Item>(list.Data(), list.Data() + list.Count());
}

using V = std::vector<TEasySortedList::Item>;

}  // namespace

TEST(SortedList, InitialState) {
    TEasySortedList list;
    EXPECT_TRUE(list.Sorted);
    EXPECT_EQ(list.Duplicates, dupIgnore);
    EXPECT_EQ(list.LastFound, -1);
    EXPECT_EQ(list.Count(), 0);
}

TEST(SortedList, SortedAddKeepsOrderAndIgnoresDuplicates) {
    TEasySortedList list;
    for (int v : {5, 1, 9, 5, 3, 1}) list.Add(v);
    EXPECT_EQ(Items(list), (V{1, 3, 5, 9}));
    EXPECT_EQ(list.Add(5), 2);  // ignored: index of the one there
    EXPECT_EQ(list.Count(), 4);
}

TEST(SortedList, AcceptedDuplicatesAndTheErrorMode) {
    TEasySortedList accept;
    accept.Duplicates = dupAccept;
    for (int v : {2, 2, 1, 2}) accept.Add(v);
    EXPECT_EQ(Items(accept), (V{1, 2, 2, 2}));
    int index = -1;
    EXPECT_TRUE(accept.Find(2, index));
    EXPECT_EQ(index, 1);  // the first equal item

    TEasySortedList strict;
    strict.Duplicates = dupError;
    strict.Add(4);
    try {
        strict.Add(4);
        FAIL() << "no exception";
    } catch (const zorfa::Exception& e) {
        EXPECT_STREQ(e.what(), "Duplicates not allowed");
    }
    EXPECT_EQ(strict.Count(), 1);
}

TEST(SortedList, FindGivesTheLowBoundAndRemembersTheHit) {
    TEasySortedList list;
    for (int v : {10, 20, 30, 40}) list.Add(v);
    int index = -1;
    EXPECT_FALSE(list.Find(25, index));
    EXPECT_EQ(index, 2);
    EXPECT_FALSE(list.Find(5, index));
    EXPECT_EQ(index, 0);
    EXPECT_FALSE(list.Find(45, index));
    EXPECT_EQ(index, 4);
    EXPECT_TRUE(list.Find(30, index));
    EXPECT_EQ(index, 2);
    EXPECT_EQ(list.LastFound, 2);
    EXPECT_TRUE(list.Find(30, index));  // the remembered item first
    EXPECT_EQ(index, 2);
    list.Delete(0);  // LastFound now points at 40: verified, not trusted
    EXPECT_TRUE(list.Find(30, index));
    EXPECT_EQ(index, 1);
}

TEST(SortedList, UnsortedListAppendsAndBadIndexesAreIgnored) {
    TEasySortedList list;
    list.Sorted = false;
    for (int v : {3, 1, 2}) list.Add(v);
    EXPECT_EQ(Items(list), (V{3, 1, 2}));
    EXPECT_EQ(list.IndexOf(1), 1);
    list.Delete(7);
    list.Insert(9, 4);
    list.Put(-1, 8);
    EXPECT_EQ(list.Get(5), 0);
    EXPECT_EQ(list.Count(), 3);
    list.Sort();
    EXPECT_EQ(Items(list), (V{1, 2, 3}));
    EXPECT_EQ(list.Remove(2), 1);
    EXPECT_EQ(list.Remove(2), -1);
    list.Exchange(0, 1);
    EXPECT_EQ(Items(list), (V{3, 1}));
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
}

namespace {

struct Mark {
    int X, Y;
};

// A list of pointers to records, ordered by Y then X, searched by Y only:
// the shape of the bookmark list.
class MarkList : public TEasySortedList {
public:
    int CompareKey(Item item, Item key) override {
        return reinterpret_cast<const Mark*>(item)->Y - static_cast<int>(key);
    }
    int CompareItems(Item a, Item b) override {
        const Mark* m1 = reinterpret_cast<const Mark*>(a);
        const Mark* m2 = reinterpret_cast<const Mark*>(b);
        return m1->Y != m2->Y ? m1->Y - m2->Y : m1->X - m2->X;
    }
};

}  // namespace

TEST(SortedList, DerivedComparisonsOrderAndSearchRecords) {
    Mark a{5, 2}, b{1, 2}, c{0, 7}, d{9, 0};
    MarkList list;
    list.Duplicates = dupAccept;
    for (Mark* m : {&a, &b, &c, &d}) list.Add(reinterpret_cast<TEasySortedList::Item>(m));
    EXPECT_EQ(list.Get(0), reinterpret_cast<TEasySortedList::Item>(&d));
    EXPECT_EQ(list.Get(1), reinterpret_cast<TEasySortedList::Item>(&b));
    EXPECT_EQ(list.Get(2), reinterpret_cast<TEasySortedList::Item>(&a));
    EXPECT_EQ(list.Get(3), reinterpret_cast<TEasySortedList::Item>(&c));
    int index = -1;
    EXPECT_TRUE(list.Find(2, index));  // by Y
    EXPECT_EQ(index, 1);
    EXPECT_FALSE(list.Find(3, index));
    EXPECT_EQ(index, 3);
}

TEST(VisibleLinesList, AddRemoveShift) {
    TEasyVisibleLinesList list;
    for (int v : {7, 3, 9, 3}) list.AddLine(v);
    EXPECT_EQ(Items(list), (V{3, 7, 9}));
    EXPECT_TRUE(list.Contains(7));
    EXPECT_EQ(list.IndexOfLine(9), 2);
    EXPECT_EQ(list.IndexOfLine(8), -1);
    list.ShiftAbove(3, 2);  // strictly above 3
    EXPECT_EQ(Items(list), (V{3, 9, 11}));
    list.RemoveLine(9);
    list.RemoveLine(4);
    EXPECT_EQ(Items(list), (V{3, 11}));
}

TEST(VisibleLinesList, ByVisibleComparesOnScreenPositionsAndRunsGoToTheirEnd) {
    TEasyVisibleLinesList list;
    for (int v : {2, 5, 6, 7, 10}) list.AddLine(v);
    // On-screen positions: 2, 4, 4, 4, 6.
    EXPECT_EQ(list.FindHidden(4, true, false), 3);  // the last of the run
    EXPECT_EQ(list.FindHidden(4, true, true), 0);
    EXPECT_EQ(list.FindHidden(1, true, false), -1);
    EXPECT_EQ(list.FindHidden(6, false, false), 2);
    EXPECT_EQ(list.FindHidden(100, false, false), 4);
    EXPECT_FALSE(list.ByVisible);  // cleared again
    list.ByVisible = true;
    list.LastMid = 1;
    EXPECT_EQ(list.CompareKey(5, 4), -1);  // tie inside a run: go on
    list.LastMid = 3;
    EXPECT_EQ(list.CompareKey(7, 4), 0);  // the run's last entry
    list.ByVisible = false;
}
