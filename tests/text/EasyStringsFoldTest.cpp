// TEasyStrings: fold flags, applying a head to its region, SetFoldChild,
// ExpandParents, the visible-lines list under insert and delete, and the
// real / on-screen conversions, against a brute-force model.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "text/EasyStrings.h"

using namespace zorfa::text;

namespace {

TEasyStrings* MakeStore(TEasyStrings& s, int lines, bool useVisibleLines = true) {
    s.SetUseVisibleLines(useVisibleLines);
    for (int i = 0; i < lines; ++i) s.Add("line " + std::to_string(i));
    return &s;
}

// Marks lines first..last as children of a region at `level`, the way the
// fold scan does (level first, then SetFoldChild(i, false)).
void MarkRegion(TEasyStrings& s, int first, int last, int level) {
    for (int i = first; i <= last; ++i) {
        if (s.Record(i)->FoldLevel == 0) s.Record(i)->FoldLevel = static_cast<std::uint8_t>(level);
        s.SetFoldChild(i, false);
    }
}

std::vector<int> Hidden(TEasyStrings& s) {
    std::vector<int> hidden;
    for (int i = 0; i < s.VisibleLines().Count(); ++i) hidden.push_back(static_cast<int>(s.VisibleLines().Get(i)));
    return hidden;
}

// The list must be exactly the lines with Hidden set.
void ExpectListMatchesRecords(TEasyStrings& s) {
    std::vector<int> fromRecords;
    for (int i = 0; i < s.Count(); ++i)
        if (s.Record(i)->Hidden) fromRecords.push_back(i);
    EXPECT_EQ(Hidden(s), fromRecords);
}

}  // namespace

TEST(EasyStringsFold, FlagsExcludeEachOtherAndFalseClearsBoth) {
    TEasyStrings s;
    MakeStore(s, 3);
    s.SetExpanded(0, true);
    EXPECT_TRUE(s.IsExpanded(0));
    EXPECT_FALSE(s.IsCollapsed(0));
    s.SetCollapsed(0, true);
    EXPECT_TRUE(s.IsCollapsed(0));
    EXPECT_FALSE(s.IsExpanded(0));
    s.SetExpanded(0, false);
    EXPECT_FALSE(s.IsCollapsed(0));
    EXPECT_FALSE(s.IsExpanded(0));
    s.SetCollapsed(1, true);
    s.SetCollapsed(1, false);
    EXPECT_EQ(s.Record(1)->Flags, 0);
}

TEST(EasyStringsFold, CollapsingAndExpandingARegion) {
    TEasyStrings s;
    MakeStore(s, 10);
    s.SetExpanded(2, true);
    MarkRegion(s, 3, 6, 1);
    EXPECT_EQ(s.HiddenCount(), 0);
    s.SetCollapsed(2, true);
    EXPECT_EQ(Hidden(s), (std::vector<int>{3, 4, 5, 6}));
    EXPECT_FALSE(s.IsLineVisible(3));
    EXPECT_TRUE(s.IsLineVisible(2));
    EXPECT_TRUE(s.IsLineVisible(7));
    ExpectListMatchesRecords(s);
    s.SetExpanded(2, true);
    EXPECT_EQ(s.HiddenCount(), 0);
    ExpectListMatchesRecords(s);
}

TEST(EasyStringsFold, CollapsingAHeadWithoutFoldChildNextHidesNothing) {
    TEasyStrings s;
    MakeStore(s, 6);
    MarkRegion(s, 3, 4, 1);  // a region, but not after line 1
    s.SetCollapsed(1, true);
    EXPECT_EQ(s.HiddenCount(), 0);
    s.SetCollapsed(5, true);  // the last line: nothing follows
    EXPECT_EQ(s.HiddenCount(), 0);
}

TEST(EasyStringsFold, RegionEndsAtALowerLevelOrALineOutside) {
    TEasyStrings s;
    MakeStore(s, 12);
    // Outer region under head 1: lines 2..9 level 1; inner under head 3:
    // lines 4..6 level 2. Line 10 is outside.
    s.SetExpanded(1, true);
    s.SetExpanded(3, true);
    MarkRegion(s, 4, 6, 2);
    MarkRegion(s, 2, 9, 1);
    s.SetCollapsed(3, true);
    EXPECT_EQ(Hidden(s), (std::vector<int>{4, 5, 6}));  // stops at line 7, level 1
    s.SetCollapsed(1, true);
    EXPECT_EQ(Hidden(s), (std::vector<int>{2, 3, 4, 5, 6, 7, 8, 9}));
    // Closing leaves the nested head as it was.
    EXPECT_TRUE(s.IsCollapsed(3));
    ExpectListMatchesRecords(s);
}

TEST(EasyStringsFold, OpeningAnOuterRegionOpensEveryNestedOne) {
    TEasyStrings s;
    MakeStore(s, 14);
    s.SetExpanded(0, true);
    s.SetExpanded(2, true);
    s.SetExpanded(6, true);
    MarkRegion(s, 3, 4, 2);
    MarkRegion(s, 7, 9, 2);
    MarkRegion(s, 1, 11, 1);
    s.SetCollapsed(2, true);  // one nested region closed before, one open
    s.SetCollapsed(0, true);
    EXPECT_EQ(s.HiddenCount(), 11);
    s.SetExpanded(0, true);
    EXPECT_EQ(s.HiddenCount(), 0);
    EXPECT_TRUE(s.IsExpanded(2));
    EXPECT_TRUE(s.IsExpanded(6));
    EXPECT_FALSE(s.IsCollapsed(2));
    ExpectListMatchesRecords(s);
}

TEST(EasyStringsFold, SetFoldChildHidesOnlyUnderAHiddenOrCollapsedLine) {
    TEasyStrings s;
    MakeStore(s, 6);
    int changes = 0;
    s.OnChange = [&](TEasyStrings&) { ++changes; };
    s.SetFoldChild(2, false);  // previous line plain and visible: flag only
    EXPECT_TRUE(s.Record(2)->Flags & lfFoldChild);
    EXPECT_TRUE(s.IsLineVisible(2));
    EXPECT_EQ(changes, 0);
    s.Record(3)->Flags = lfCollapsed;  // set without applying
    s.SetFoldChild(4, false);          // under a collapsed head: hidden
    EXPECT_FALSE(s.IsLineVisible(4));
    EXPECT_EQ(changes, 1);
    s.SetFoldChild(5, false);  // under a hidden line: hidden
    EXPECT_FALSE(s.IsLineVisible(5));
    s.SetFoldChild(0, false);  // line 0: hidden
    EXPECT_FALSE(s.IsLineVisible(0));
    s.SetFoldChild(4, true);  // shown again, flag cleared
    EXPECT_TRUE(s.IsLineVisible(4));
    EXPECT_FALSE(s.Record(4)->Flags & lfFoldChild);
    ExpectListMatchesRecords(s);
}

TEST(EasyStringsFold, ExpandParentsOpensTheFirstCollapsedHeadAbove) {
    TEasyStrings s;
    MakeStore(s, 10);
    s.SetExpanded(1, true);
    s.SetExpanded(3, true);
    MarkRegion(s, 4, 5, 2);
    MarkRegion(s, 2, 7, 1);
    s.SetCollapsed(3, true);
    s.SetCollapsed(1, true);
    s.ExpandParents(5);  // the first collapsed line above 5 is 3
    EXPECT_TRUE(s.IsExpanded(3));
    EXPECT_TRUE(s.IsCollapsed(1));  // not visited
    s.ExpandParents(3);
    EXPECT_TRUE(s.IsExpanded(1));
    EXPECT_EQ(s.HiddenCount(), 0);
}

TEST(EasyStringsFold, UseVisibleLinesOffShowsEverything) {
    TEasyStrings s;
    MakeStore(s, 8, false);
    s.SetHidden(2, true);
    s.SetHidden(3, true);
    s.Record(4)->Hidden = true;
    for (int i = -1; i <= 9; ++i) EXPECT_TRUE(s.IsLineVisible(i)) << i;
    EXPECT_EQ(s.HiddenCount(), 0);
    EXPECT_EQ(s.RealToVisible(6), 6);
    EXPECT_EQ(s.VisibleToReal(6), 6);
    // Turning it on rebuilds the list from the records, and off clears it.
    s.SetUseVisibleLines(true);
    EXPECT_EQ(Hidden(s), (std::vector<int>{2, 3, 4}));
    s.SetUseVisibleLines(false);
    EXPECT_EQ(s.VisibleLines().Count(), 0);
}

TEST(EasyStringsFold, LinesFiveSixSevenHidden) {
    TEasyStrings s;
    MakeStore(s, 12);
    for (int i : {5, 6, 7}) s.SetHidden(i, true);
    EXPECT_EQ(s.RealToVisible(8), 5);
    EXPECT_EQ(s.VisibleToReal(5), 8);
    EXPECT_EQ(s.RealToVisible(6), 5);
    EXPECT_EQ(s.RealToVisible(5), 5);
    EXPECT_EQ(s.RealToVisible(7), 5);
    EXPECT_EQ(s.RealToVisible(4), 4);
    EXPECT_EQ(s.VisibleToReal(4), 4);
    EXPECT_EQ(s.VisibleToReal(6), 9);
    EXPECT_EQ(s.RealToVisible(11), 8);
}

TEST(EasyStringsFold, ConversionGuards) {
    TEasyStrings empty;
    empty.SetUseVisibleLines(true);
    EXPECT_EQ(empty.RealToVisible(3), 3);
    EXPECT_EQ(empty.VisibleToReal(3), 3);
    TEasyStrings none;
    MakeStore(none, 5);
    EXPECT_EQ(none.RealToVisible(3), 3);
    EXPECT_EQ(none.VisibleToReal(3), 3);
}

TEST(EasyStringsFold, InsertingAtAHiddenLineKeepsTheEntry) {
    TEasyStrings s;
    MakeStore(s, 10);
    s.SetHidden(5, true);
    s.SetHidden(8, true);
    s.Insert(5, "new");
    // The entry 5 stays on 5 (the new line takes it over); 8 moves to 9.
    EXPECT_EQ(Hidden(s), (std::vector<int>{5, 9}));
    EXPECT_FALSE(s.IsLineVisible(5));
    s.Insert(0, "top");
    EXPECT_EQ(Hidden(s), (std::vector<int>{6, 10}));
}

TEST(EasyStringsFold, DeletingRemovesAndShiftsEntries) {
    TEasyStrings s;
    MakeStore(s, 10);
    for (int i : {2, 5, 6, 9}) s.SetHidden(i, true);
    s.Delete(5);
    EXPECT_EQ(Hidden(s), (std::vector<int>{2, 5, 8}));
    s.Delete(0);
    EXPECT_EQ(Hidden(s), (std::vector<int>{1, 4, 7}));
    ExpectListMatchesRecords(s);
    s.Clear();
    EXPECT_EQ(s.HiddenCount(), 0);
}

TEST(EasyStringsFold, ExchangeLeavesFoldStateOnTheLineNumbers) {
    TEasyStrings s;
    MakeStore(s, 6);
    s.SetExpanded(1, true);
    MarkRegion(s, 2, 3, 1);
    s.SetCollapsed(1, true);
    s.Exchange(1, 4);
    EXPECT_EQ(s.Get(1), "line 4");
    EXPECT_TRUE(s.IsCollapsed(1));
    EXPECT_FALSE(s.IsCollapsed(4));
    EXPECT_EQ(Hidden(s), (std::vector<int>{2, 3}));
}

TEST(EasyStringsFold, SetCapacityRebuildsTheList) {
    TEasyStrings s;
    MakeStore(s, 5);
    s.Record(3)->Hidden = true;  // behind the list's back
    s.SetCapacity(64);
    EXPECT_EQ(Hidden(s), (std::vector<int>{3}));
}

// ---- Randomized against a brute-force model ----------------------------------

namespace {

int ModelRealToVisible(const std::set<int>& hidden, int line) {
    int before = 0;
    for (int h : hidden)
        if (h < line) ++before;
    return line - before;
}

int ModelVisibleToReal(const std::set<int>& hidden, int visible) {
    int seen = 0;
    for (int r = 0;; ++r) {
        if (hidden.count(r)) continue;
        if (seen == visible) return r;
        ++seen;
    }
}

int ModelFindHidden(const std::set<int>& hidden, int key, bool byVisible, bool strict) {
    int last = -1, i = 0;
    for (int h : hidden) {
        const int v = byVisible ? h - i : h;
        if (strict ? v < key : v <= key) last = i;
        ++i;
    }
    return last;
}

}  // namespace

TEST(EasyStringsFold, ConversionsMatchABruteForceModel) {
    unsigned seed = 987654321;
    auto next = [&seed](unsigned n) {
        seed = seed * 1664525u + 1013904223u;
        return (seed >> 8) % n;
    };
    for (int round = 0; round < 400; ++round) {
        const int lines = 1 + static_cast<int>(next(300));
        TEasyStrings s;
        MakeStore(s, lines);
        std::set<int> hidden;
        // Mixtures of lone hidden lines and runs, sparse to nearly all.
        const unsigned density = 1 + next(10);
        for (int i = 0; i < lines; ++i) {
            if (next(10) < density) {
                const int run = 1 + static_cast<int>(next(round % 3 == 0 ? 12u : 3u));
                for (int k = i; k < std::min(lines, i + run); ++k) hidden.insert(k);
                i += run;
            }
        }
        if (round == 1)
            for (int i = 0; i < lines; ++i) hidden.insert(i);
        for (int h : hidden) s.SetHidden(h, true);
        ASSERT_EQ(s.HiddenCount(), static_cast<int>(hidden.size()));
        for (int line = 0; line < lines + 3; ++line) {
            ASSERT_EQ(s.RealToVisible(line), hidden.empty() ? line : ModelRealToVisible(hidden, line))
                << "round " << round << " line " << line;
            ASSERT_EQ(s.VisibleToReal(line), hidden.empty() ? line : ModelVisibleToReal(hidden, line))
                << "round " << round << " visible " << line;
            for (bool byVisible : {false, true})
                for (bool strict : {false, true})
                    ASSERT_EQ(s.FindHidden(line, byVisible, strict), ModelFindHidden(hidden, line, byVisible, strict))
                        << "round " << round << " key " << line << " " << byVisible << strict;
            if (!hidden.count(line) && line < lines) {
                ASSERT_EQ(s.VisibleToReal(s.RealToVisible(line)), line);
            }
        }
    }
}

TEST(EasyStringsFold, ListFollowsRandomEditsAndFolds) {
    unsigned seed = 4242;
    auto next = [&seed](unsigned n) {
        seed = seed * 1664525u + 1013904223u;
        return (seed >> 8) % n;
    };
    TEasyStrings s;
    MakeStore(s, 50);
    for (int step = 0; step < 3000; ++step) {
        const unsigned count = static_cast<unsigned>(s.Count());
        switch (next(6)) {
            case 0: {
                // Not at a hidden line's number: there the new line takes
                // over the entry and the old one keeps Hidden, on purpose
                // (tested above), and list and records part.
                const int at = static_cast<int>(next(count + 1));
                if (s.IsLineVisible(at)) s.Insert(at, "i");
                break;
            }
            case 1: if (count > 1) s.Delete(static_cast<int>(next(count))); break;
            case 2: s.SetHidden(static_cast<int>(next(count)), next(2) == 0); break;
            case 3: {
                const int head = static_cast<int>(next(count));
                if (s.Record(head + 1)) s.Record(head + 1)->FoldLevel = static_cast<std::uint8_t>(1 + next(3));
                s.SetFoldChild(head + 1, false);
                next(2) ? s.SetCollapsed(head, true) : s.SetExpanded(head, true);
                break;
            }
            case 4: s.SetFoldChild(static_cast<int>(next(count)), next(2) == 0); break;
            default: s.ExpandParents(static_cast<int>(next(count)));
        }
        std::vector<int> fromRecords;
        for (int i = 0; i < s.Count(); ++i)
            if (s.Record(i)->Hidden) fromRecords.push_back(i);
        ASSERT_EQ(Hidden(s), fromRecords) << "step " << step;
    }
}
