// TEasyStrings: the string-list operations, bad indexes, records, styles,
// notifications, the changed range, the growth rule and the conversion hook.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "text/EasyStrings.h"

using namespace zorfa::text;

namespace {

void Fill(TEasyStrings& s, int n) {
    for (int i = 0; i < n; ++i) s.Add("line " + std::to_string(i));
}

}  // namespace

TEST(EasyStrings, BadIndexesYieldEmptyValuesAndChangeNothing) {
    TEasyStrings s;
    Fill(s, 3);
    EXPECT_EQ(s.Get(-1), "");
    EXPECT_EQ(s.Get(3), "");
    EXPECT_EQ(s.GetRawLine(-1), "");
    EXPECT_EQ(s.GetRawLine(3), "");
    EXPECT_EQ(s.GetObject(3), nullptr);
    EXPECT_EQ(s.GetLineState(7), 0);
    EXPECT_EQ(s.GetCharStyle(9, 1), kNoStyle);
    EXPECT_TRUE(s.GetStyleString(-4).empty());
    EXPECT_EQ(s.Record(3), nullptr);
    EXPECT_EQ(s.Record(-1), nullptr);
    s.Delete(3);
    s.Delete(-1);
    s.Put(3, "x");
    s.PutObject(-2, &s);
    s.Exchange(0, 3);
    s.SetLineStyle(5, 1, 7, 3);
    s.SetExpanded(3, true);
    s.SetCollapsed(-1, true);
    s.SetFoldChild(3, false);
    s.ExpandParents(17);
    EXPECT_EQ(s.Count(), 3);
    EXPECT_EQ(s.Get(0), "line 0");
    EXPECT_EQ(s.Get(2), "line 2");
}

TEST(EasyStrings, InsertIsValidFromZeroToCount) {
    TEasyStrings s;
    Fill(s, 2);
    s.Insert(2, "appended");  // Insert(Count) appends
    ASSERT_EQ(s.Count(), 3);
    EXPECT_EQ(s.Get(2), "appended");
    s.Insert(4, "ignored");  // Insert(Count+1) is ignored
    s.Insert(-1, "ignored");
    EXPECT_EQ(s.Count(), 3);
    s.Insert(0, "first");
    EXPECT_EQ(s.Get(0), "first");
    EXPECT_EQ(s.Get(1), "line 0");
    EXPECT_EQ(s.Add("last"), 4);
    EXPECT_EQ(s.Get(4), "last");
}

TEST(EasyStrings, DeleteClearPutAndObjects) {
    TEasyStrings s;
    Fill(s, 4);
    s.Delete(1);
    ASSERT_EQ(s.Count(), 3);
    EXPECT_EQ(s.Get(1), "line 2");
    s.Put(1, "changed");
    EXPECT_EQ(s.Get(1), "changed");
    int object = 0;
    s.PutObject(2, &object);
    EXPECT_EQ(s.GetObject(2), &object);
    s.Clear();
    EXPECT_EQ(s.Count(), 0);
    EXPECT_EQ(s.GetCapacity(), 0);
    s.Clear();  // nothing to clear: no notification either
    EXPECT_EQ(s.Count(), 0);
}

TEST(EasyStrings, NewRecordsHaveTheirInitialValues) {
    TEasyStrings s;
    s.Add("abc");
    const TEasyStringRec* r = s.Record(0);
    ASSERT_NE(r, nullptr);
    EXPECT_EQ(r->Text.View(), "abc");
    EXPECT_TRUE(r->Styles.Empty());
    EXPECT_EQ(r->EndState, 0);
    EXPECT_EQ(r->BeginState, 0);
    EXPECT_EQ(r->Flags, 0);
    EXPECT_EQ(r->LineObject, nullptr);
    EXPECT_EQ(r->Paragraph, 65535);
    EXPECT_EQ(r->StartStyle, 65535);
    EXPECT_FALSE(r->Hidden);
    EXPECT_EQ(r->FoldLevel, 0);
}

TEST(EasyStrings, RecordsAreReusedCleanAfterDelete) {
    TEasyStrings s;
    s.Add("a");
    TEasyStringRec* r = s.Record(0);
    r->Flags = lfParsed | lfCollapsed;
    r->EndState = 9;
    r->Styles.Resize(1, 3);
    r->FoldLevel = 2;
    r->Paragraph = 4;
    s.Delete(0);
    s.Add("b");
    const TEasyStringRec* again = s.Record(0);
    EXPECT_EQ(again->Text.View(), "b");
    EXPECT_EQ(again->Flags, 0);
    EXPECT_EQ(again->EndState, 0);
    EXPECT_TRUE(again->Styles.Empty());
    EXPECT_EQ(again->FoldLevel, 0);
    EXPECT_EQ(again->Paragraph, 65535);
}

TEST(EasyStrings, ExchangeSwapsTextStylesAndObjectOnly) {
    TEasyStrings s;
    Fill(s, 3);
    int object = 0;
    s.PutObject(0, &object);
    s.Record(0)->Styles.Resize(6, 1);
    s.Record(0)->Flags = lfExpanded;
    s.Record(0)->EndState = 5;
    s.Record(0)->FoldLevel = 1;
    s.Record(2)->Flags = lfFoldChild;
    s.Exchange(0, 2);
    EXPECT_EQ(s.Get(0), "line 2");
    EXPECT_EQ(s.Get(2), "line 0");
    EXPECT_EQ(s.GetObject(2), &object);
    EXPECT_EQ(s.GetObject(0), nullptr);
    EXPECT_EQ(s.GetStyleString(2).size(), 6u);
    EXPECT_TRUE(s.GetStyleString(0).empty());
    // Fold flags, states and level stay on the line numbers.
    EXPECT_TRUE(s.IsExpanded(0));
    EXPECT_EQ(s.Record(0)->Flags, lfExpanded);
    EXPECT_EQ(s.Record(0)->EndState, 5);
    EXPECT_EQ(s.Record(0)->FoldLevel, 1);
    EXPECT_EQ(s.Record(2)->Flags, lfFoldChild);
}

TEST(EasyStrings, StylesAndStates) {
    TEasyStrings s;
    s.Add("hello");
    TEasyStringRec* r = s.Record(0);
    r->Styles.Resize(5, 2);
    r->EndState = 77;
    EXPECT_EQ(s.GetLineState(0), 77);
    s.SetLineStyle(0, 2, 9, 3);  // 1-based position 2, three codes
    EXPECT_EQ(s.GetCharStyle(0, 1), 2);
    EXPECT_EQ(s.GetCharStyle(0, 2), 9);
    EXPECT_EQ(s.GetCharStyle(0, 4), 9);
    EXPECT_EQ(s.GetCharStyle(0, 5), 2);
    EXPECT_EQ(s.GetCharStyle(0, 6), kNoStyle);  // beyond the stored codes
    EXPECT_EQ(s.GetCharStyle(0, 0), kNoStyle);
    s.SetLineStyle(0, 4, 1, 100);  // clipped to the stored codes
    EXPECT_EQ(s.GetCharStyle(0, 5), 1);
    EXPECT_EQ(s.GetStyleString(0).size(), 5u);
    std::vector<std::uint16_t> expect{2, 9, 9, 1, 1};
    EXPECT_EQ(std::vector<std::uint16_t>(s.GetStyleString(0).begin(), s.GetStyleString(0).end()), expect);
}

TEST(EasyStrings, SetRawLineSkipsTheHook) {
    TEasyStrings s;
    s.OnConvertLine = [](TEasyStrings&, std::string& text, bool) {
        for (char& c : text)
            if (c == '\t') c = ' ';
    };
    s.Add("a\tb");
    EXPECT_EQ(s.GetRawLine(0), "a b");
    s.SetRawLine(0, "c\td");
    EXPECT_EQ(s.GetRawLine(0), "c\td");
    EXPECT_EQ(s.Get(0), "c d");
}

TEST(EasyStrings, ConversionHookAppliesToGetAndNotToGetRawLine) {
    TEasyStrings s;
    std::vector<bool> storing;
    s.Add("x\ty");  // no hook yet: stored as is
    s.OnConvertLine = [&](TEasyStrings& sender, std::string& text, bool isStoring) {
        EXPECT_EQ(&sender, &s);
        storing.push_back(isStoring);
        std::string out;
        for (char c : text) out += c == '\t' ? std::string("    ") : std::string(1, c);
        text = out;
    };
    EXPECT_EQ(s.Get(0), "x    y");
    EXPECT_EQ(s.GetRawLine(0), "x\ty");
    ASSERT_EQ(storing.size(), 1u);
    EXPECT_FALSE(storing[0]);
    s.Put(0, "\tz");
    EXPECT_EQ(storing.back(), true);
    EXPECT_EQ(s.GetRawLine(0), "    z");
    s.Insert(0, "a\tb");
    EXPECT_EQ(storing.back(), true);
    EXPECT_EQ(s.GetRawLine(0), "a    b");
}

TEST(EasyStrings, LoadPassesEveryLineThroughTheHookWithStoringTrue) {
    TEasyStrings s;
    int calls = 0;
    s.OnConvertLine = [&](TEasyStrings&, std::string& text, bool storing) {
        EXPECT_TRUE(storing);
        ++calls;
        if (text == "b\t") text = "b ";
    };
    s.LoadFromBuffer("a\nb\t\nc");
    EXPECT_EQ(calls, 3);
    EXPECT_EQ(s.GetRawLine(1), "b ");
    EXPECT_EQ(s.GetRawLine(2), "c");
}

TEST(EasyStrings, GrowthRule) {
    TEasyStrings s;
    std::vector<int> capacities;
    for (int i = 0; i < 200; ++i) {
        const int before = s.GetCapacity();
        s.Add("x");
        if (s.GetCapacity() != before) capacities.push_back(s.GetCapacity());
    }
    // By 4 up to 8 slots, by 16 above 8, by a quarter above 64.
    std::vector<int> expect{4, 8, 12, 28, 44, 60, 76, 95, 118, 147, 183, 228};
    EXPECT_EQ(capacities, expect);
}

TEST(EasyStrings, SetCapacityNeverBelowCount) {
    TEasyStrings s;
    Fill(s, 10);
    s.SetCapacity(5);
    EXPECT_GE(s.GetCapacity(), 10);
    s.SetCapacity(100);
    EXPECT_EQ(s.GetCapacity(), 100);
    EXPECT_EQ(s.Get(9), "line 9");
}

TEST(EasyStrings, GetTextJoinsConvertedLinesWithCrLf) {
    TEasyStrings s;
    s.SetText("a\nb");
    EXPECT_EQ(s.GetText(), "a\r\nb\r\n");
}

TEST(EasyStrings, RandomEditsMatchAVectorModel) {
    TEasyStrings s;
    std::vector<std::string> model;
    unsigned seed = 12345;
    auto next = [&seed](unsigned n) {
        seed = seed * 1103515245u + 12345u;
        return (seed >> 8) % n;
    };
    for (int step = 0; step < 5000; ++step) {
        const int count = static_cast<int>(model.size());
        switch (next(5)) {
            case 0:
            case 1: {
                const int at = static_cast<int>(next(static_cast<unsigned>(count) + 1));
                std::string text(next(40), static_cast<char>('a' + next(26)));
                if (next(50) == 0) text.assign(100000, 'L');
                s.Insert(at, text);
                model.insert(model.begin() + at, text);
                break;
            }
            case 2:
                if (count) {
                    const int at = static_cast<int>(next(static_cast<unsigned>(count)));
                    s.Delete(at);
                    model.erase(model.begin() + at);
                }
                break;
            case 3:
                if (count) {
                    const int at = static_cast<int>(next(static_cast<unsigned>(count)));
                    s.Put(at, std::to_string(step));
                    model[static_cast<size_t>(at)] = std::to_string(step);
                }
                break;
            default:
                if (count) {
                    const int a = static_cast<int>(next(static_cast<unsigned>(count)));
                    const int b = static_cast<int>(next(static_cast<unsigned>(count)));
                    s.Exchange(a, b);
                    std::swap(model[static_cast<size_t>(a)], model[static_cast<size_t>(b)]);
                }
        }
        ASSERT_EQ(s.Count(), static_cast<int>(model.size()));
    }
    for (int i = 0; i < s.Count(); ++i) ASSERT_EQ(s.GetRawLine(i), model[static_cast<size_t>(i)]) << i;
}
