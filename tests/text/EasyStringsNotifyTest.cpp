// TEasyStrings: OnChanging / OnChange, BeginUpdate / EndUpdate and the
// accumulated changed range.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "text/EasyStrings.h"

using namespace zorfa::text;

namespace {

struct Recorder {
    std::vector<std::string> events;
    void Attach(TEasyStrings& s) {
        s.OnChanging = [this](TEasyStrings&) { events.push_back("changing"); };
        s.OnChange = [this](TEasyStrings& sender) {
            events.push_back("change " + std::to_string(sender.ChangedFrom) + ".." + std::to_string(sender.ChangedTo));
        };
    }
};

}  // namespace

TEST(EasyStringsNotify, EachChangeOutsideAnUpdateNotifiesAroundIt) {
    TEasyStrings s;
    Recorder r;
    r.Attach(s);
    s.Add("a");
    s.Add("b");
    EXPECT_EQ(r.events, (std::vector<std::string>{"changing", "change 0..2147483647", "changing",
                                                  "change 0..2147483647"}));
}

TEST(EasyStringsNotify, UpdatesBatchToOneChangingAndOneChange) {
    TEasyStrings s;
    s.Add("a");
    s.Add("b");
    s.Add("c");
    Recorder r;
    r.Attach(s);
    s.BeginUpdate();
    EXPECT_TRUE(s.Updating());
    EXPECT_EQ(s.ChangedFrom, -1);  // SetUpdateState(true) resets the range
    EXPECT_EQ(s.ChangedTo, -1);
    s.BeginUpdate();  // nested: no second SetUpdateState
    s.Put(2, "x");
    s.Put(1, "y");
    EXPECT_EQ(s.ChangedFrom, 1);
    EXPECT_EQ(s.ChangedTo, 2);
    s.EndUpdate();
    EXPECT_EQ(r.events, std::vector<std::string>{"changing"});
    s.EndUpdate();
    EXPECT_FALSE(s.Updating());
    EXPECT_EQ(r.events, (std::vector<std::string>{"changing", "change 1..2"}));
    s.EndUpdate();  // unbalanced: nothing
    EXPECT_EQ(r.events.size(), 2u);
}

TEST(EasyStringsNotify, ChangedRangeAccumulates) {
    TEasyStrings s;
    for (int i = 0; i < 10; ++i) s.Add(std::to_string(i));
    s.BeginUpdate();
    s.Put(5, "p");
    EXPECT_EQ(s.ChangedFrom, 5);
    EXPECT_EQ(s.ChangedTo, 5);
    s.Exchange(8, 3);
    EXPECT_EQ(s.ChangedFrom, 3);
    EXPECT_EQ(s.ChangedTo, 8);
    s.MarkChanged(4, 6);  // inside: nothing moves
    EXPECT_EQ(s.ChangedFrom, 3);
    EXPECT_EQ(s.ChangedTo, 8);
    s.Delete(7);
    EXPECT_EQ(s.ChangedFrom, 3);
    EXPECT_EQ(s.ChangedTo, MaxInt);
    s.Insert(1, "i");
    EXPECT_EQ(s.ChangedFrom, 1);
    s.EndUpdate();
    s.BeginUpdate();
    EXPECT_EQ(s.ChangedFrom, -1);
    s.Clear();
    EXPECT_EQ(s.ChangedFrom, 0);
    EXPECT_EQ(s.ChangedTo, MaxInt);
    s.EndUpdate();
}

TEST(EasyStringsNotify, SetUpdateStateDirectly) {
    TEasyStrings s;
    Recorder r;
    r.Attach(s);
    s.SetUpdateState(true);
    s.Add("a");  // no event while updating
    s.SetUpdateState(false);
    EXPECT_EQ(r.events, (std::vector<std::string>{"changing", "change 0..2147483647"}));
}

TEST(EasyStringsNotify, LoadNotifiesOnceNotPerLine) {
    TEasyStrings s;
    Recorder r;
    r.Attach(s);
    s.LoadFromBuffer("a\nb\nc\nd\n");
    EXPECT_EQ(s.Count(), 4);
    EXPECT_EQ(r.events, (std::vector<std::string>{"changing", "change 0..2147483647"}));
}

TEST(EasyStringsNotify, FoldChangesRunWithFoldChangingSet) {
    TEasyStrings s;
    s.SetUseVisibleLines(true);
    for (int i = 0; i < 4; ++i) s.Add("x");
    std::vector<bool> seen;
    s.OnChanging = [&](TEasyStrings& sender) { seen.push_back(sender.FoldChanging); };
    s.OnChange = [&](TEasyStrings& sender) { seen.push_back(sender.FoldChanging); };
    s.SetCollapsed(0, true);
    EXPECT_EQ(seen, (std::vector<bool>{true, true}));
    EXPECT_FALSE(s.FoldChanging);
    seen.clear();
    s.Put(1, "y");
    EXPECT_EQ(seen, (std::vector<bool>{false, false}));
}

TEST(EasyStringsNotify, DestructionFiresNothing) {
    int events = 0;
    {
        TEasyStrings s;
        s.Add("a");
        s.OnChange = [&](TEasyStrings&) { ++events; };
        s.OnChanging = [&](TEasyStrings&) { ++events; };
    }
    EXPECT_EQ(events, 0);
}
