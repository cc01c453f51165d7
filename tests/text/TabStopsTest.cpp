#include <gtest/gtest.h>

#include "base/Errors.h"
#include "text/EasyEditSource.h"
#include "text/TabStops.h"

namespace zorfa::text {
namespace {

TEST(TabStops, ExplicitStopsThenRepeatAtTheLastInterval) {
    TTabStopList tabs;
    tabs.SetTabStops("4,8,16");
    EXPECT_EQ(tabs.NextStop(0), 4);
    EXPECT_EQ(tabs.NextStop(3), 4);
    EXPECT_EQ(tabs.NextStop(4), 8);
    EXPECT_EQ(tabs.NextStop(8), 16);
    EXPECT_EQ(tabs.NextStop(15), 16);
    EXPECT_EQ(tabs.NextStop(16), 24);
    EXPECT_EQ(tabs.NextStop(24), 32);
    EXPECT_EQ(tabs.NextStop(31), 32);
    EXPECT_EQ(tabs.NextStop(1000001), 1000008);
    EXPECT_EQ(tabs.NextStop(MaxInt), MaxInt);
    EXPECT_EQ(tabs.NextStop(MaxInt - 1), MaxInt);  // no overflow past the end

    EXPECT_EQ(tabs.PrevStop(0), 0);
    EXPECT_EQ(tabs.PrevStop(4), 0);
    EXPECT_EQ(tabs.PrevStop(5), 4);
    EXPECT_EQ(tabs.PrevStop(10), 8);
    EXPECT_EQ(tabs.PrevStop(16), 8);
    EXPECT_EQ(tabs.PrevStop(17), 16);
    EXPECT_EQ(tabs.PrevStop(25), 24);
    EXPECT_EQ(tabs.PrevStop(24), 16);
}

TEST(TabStops, SingleStopRepeatsItselfAndEmptyTextMeansEight) {
    TTabStopList tabs;
    EXPECT_EQ(tabs.TabStops(), "8");
    EXPECT_EQ(tabs.NextStop(0), 8);
    EXPECT_EQ(tabs.NextStop(8), 16);
    tabs.SetTabStops(" 3 ");
    EXPECT_EQ(tabs.NextStop(0), 3);
    EXPECT_EQ(tabs.NextStop(3), 6);
    EXPECT_EQ(tabs.NextStop(7), 9);
    EXPECT_EQ(tabs.PrevStop(7), 6);
    tabs.SetTabStops("");
    EXPECT_EQ(tabs.Stops(), std::vector<int>{8});
}

TEST(TabStops, BadListsRaiseInvalidTabStopAndKeepTheStopsBeforeTheBadValue) {
    for (const char* bad : {"8,4", "4,4", "0", "-2", "4,x", "4,,8"}) {
        TTabStopList tabs;
        try {
            tabs.SetTabStops(bad);
            ADD_FAILURE() << bad;
        } catch (const Exception& e) {
            EXPECT_STREQ(e.what(), "Invalid Tab Stop") << bad;
        }
    }
    TTabStopList tabs;
    EXPECT_THROW(tabs.SetTabStops("4,12,10"), Exception);
    EXPECT_EQ(tabs.Stops(), (std::vector<int>{4, 12}));
    // A list left empty by a bad first value still answers.
    EXPECT_THROW(tabs.SetTabStops("0"), Exception);
    EXPECT_EQ(tabs.NextStop(0), 8);
}

TEST(TabStops, SourceMapsColumnsThroughTabs) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srUseTab);
    s.SetTabStops("4");
    s.Lines().SetText("a\tb\tc");
    // Expanded: "a   b   c": a 0, tab 1..3, b 4, tab 5..7, c 8.
    EXPECT_EQ(s.Lines().GetRawLine(0), "a\tb\tc");
    EXPECT_EQ(s.Lines().Get(0), "a   b   c");
    int inside, width;
    EXPECT_EQ(s.ExpandedToRaw(0, 0, inside, width), 0);
    EXPECT_EQ(s.ExpandedToRaw(0, 1, inside, width), 1);
    EXPECT_EQ(inside, 0);
    EXPECT_EQ(s.ExpandedToRaw(0, 2, inside, width), 1);
    EXPECT_EQ(inside, 1);
    EXPECT_EQ(width, 2);
    EXPECT_EQ(s.ExpandedToRaw(0, 4, inside, width), 2);
    EXPECT_EQ(inside, 0);
    EXPECT_EQ(s.ExpandedToRaw(0, 8, inside, width), 4);
    EXPECT_EQ(s.ExpandedToRaw(0, 12, inside, width), 8);
    EXPECT_EQ(s.RawToExpanded(0, 2), 4);
    EXPECT_EQ(s.RawToExpanded(0, 4), 8);

    EXPECT_THROW(s.SetTabStops("8,4"), Exception);
}

TEST(TabStops, TabsAreExpandedOnLoadWithoutUseTab) {
    TEasyEditSource s;
    s.SetTabStops("4,8,16");
    s.Lines().SetText("a\tb\tc\td\te\n\tx");
    EXPECT_EQ(s.Lines().GetRawLine(0), "a   b   c       d       e");
    EXPECT_EQ(s.Lines().GetRawLine(1), "    x");
}

}  // namespace
}  // namespace zorfa::text
