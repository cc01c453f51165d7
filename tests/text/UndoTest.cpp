#include <gtest/gtest.h>

#include <random>

#include "EditSourceTestSupport.h"
#include "base/Errors.h"

namespace zorfa::text {
namespace {

using testing::Load;
using testing::RawLines;
using testing::Type;
using Lines = std::vector<std::string>;

TEST(Undo, RecordsAreEightBytesAndPayloadsAreReused) {
    EXPECT_EQ(sizeof(TEasyUndoRecord), 8u);
    TEasyUndoList list;
    const std::uint32_t a = list.NewPayload();
    list.AddRecord({ukDelete, 2, false, true, a});
    const std::uint32_t b = list.NewPayload();
    list.AddRecord({ukDelete, 2, false, false, b});
    list.AddRecord({ukInsert, 1, false, false, 5});
    EXPECT_EQ(list.PayloadsInUse(), 2);
    list.Delete(1);
    EXPECT_EQ(list.PayloadsInUse(), 1);
    EXPECT_EQ(list.NewPayload(), b);  // the freed slot comes back
    list.Clear();
    EXPECT_EQ(list.PayloadsInUse(), 0);
    // Small caret moves live in the record itself; large ones in a payload.
    for (auto [dx, dy] : {std::pair{1, 0}, {-1, 0}, {0, -16383}, {16383, 16383}, {-7, 12}}) {
        std::uint32_t data;
        ASSERT_TRUE(TEasyUndoList::PackMove(dx, dy, data));
        int x, y;
        TEasyUndoList::UnpackMove(data, x, y);
        EXPECT_EQ(x, dx);
        EXPECT_EQ(y, dy);
        EXPECT_FALSE(list.HasPayload({ukCaretMove, 0, false, false, data}));
    }
    std::uint32_t data;
    EXPECT_FALSE(TEasyUndoList::PackMove(0, 1000000, data));
    TEasyEditSource s;
    Load(s, "");
    Type(s, "typing costs no payload");
    EXPECT_EQ(s.UndoList().PayloadsInUse(), 0);
    s.MoveCaretTo(0, 999999);
    s.SetOptions(s.Options() + srBeyondEof);
    s.MoveCaretTo(0, 999999);
    EXPECT_EQ(s.UndoList().PayloadsInUse(), 1);
    s.Undo();
    EXPECT_EQ(s.Caret(), (TPoint{23, 0}));
    try {
        list.Delete(3);
        ADD_FAILURE();
    } catch (const Exception& e) {
        EXPECT_STREQ(e.what(), "List Index out of bounds Index: 3");
    }
}

TEST(Undo, GroupUndoTakesBackRunsOfTheSameReason) {
    TEasyEditSource s;
    Load(s, "");
    Type(s, "abc");
    s.MoveCaretBy(-1, 0);
    Type(s, "d");
    EXPECT_EQ(RawLines(s)[0], "abdc");
    s.Undo();
    EXPECT_EQ(RawLines(s)[0], "abc");
    EXPECT_EQ(s.Caret(), (TPoint{2, 0}));
    s.Undo();
    EXPECT_EQ(RawLines(s)[0], "abc");
    EXPECT_EQ(s.Caret(), (TPoint{3, 0}));
    s.Undo();
    EXPECT_EQ(RawLines(s)[0], "");
    EXPECT_EQ(s.Caret(), (TPoint{0, 0}));
    EXPECT_FALSE(s.CanUndo());
}

TEST(Undo, WithoutGroupUndoEachTypedCharacterIsOneStep) {
    TEasyEditSource s;
    s.SetOptions(s.Options() - srGroupUndo);
    Load(s, "");
    Type(s, "abc");
    s.Undo();
    EXPECT_EQ(RawLines(s)[0], "ab");
    s.Undo();
    EXPECT_EQ(RawLines(s)[0], "a");
    s.Redo();
    EXPECT_EQ(RawLines(s)[0], "ab");
}

TEST(Undo, TypingOrMovingAfterUndoClearsRedoButTheReplayDoesNot) {
    TEasyEditSource s;
    Load(s, "xy");
    Type(s, "abc");
    s.Undo();
    EXPECT_TRUE(s.CanRedo());
    Type(s, "z");
    EXPECT_FALSE(s.CanRedo());
    s.Undo();
    EXPECT_TRUE(s.CanRedo());
    s.MoveCaretBy(1, 0);
    EXPECT_FALSE(s.CanRedo());
}

TEST(Undo, RedoRestoresExactly) {
    TEasyEditSource s;
    Load(s, "first\nsecond line\nthird");
    s.MoveCaretTo(3, 1);
    Type(s, "XY");
    s.BreakLine();
    s.MoveCaretTo(0, 2);
    s.DeleteChars(3);
    s.MoveCaretTo(5, 0);
    s.JoinLines();
    const Lines edited = RawLines(s);
    const TPoint caret = s.Caret();
    while (s.CanUndo()) s.Undo();
    EXPECT_EQ(RawLines(s), (Lines{"first", "second line", "third"}));
    while (s.CanRedo()) s.Redo();
    EXPECT_EQ(RawLines(s), edited);
    EXPECT_EQ(s.Caret(), caret);
}

TEST(Undo, UndoOnlyChangesRestoresTheCaretOfEachChange) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srUndoOnlyChanges);
    Load(s, "hello\nworld");
    s.MoveCaretTo(5, 1);
    const int before = s.UndoList().Count();
    s.MoveCaretTo(0, 0);  // plain moves are no steps
    EXPECT_EQ(s.UndoList().Count(), before);
    s.DeleteChars(2);
    s.MoveCaretTo(3, 1);
    s.InsertText("--");
    s.Undo();
    EXPECT_EQ(RawLines(s), (Lines{"llo", "world"}));
    EXPECT_EQ(s.Caret(), (TPoint{3, 1}));
    s.Undo();
    EXPECT_EQ(RawLines(s), (Lines{"hello", "world"}));
    EXPECT_EQ(s.Caret(), (TPoint{0, 0}));
    // Switching the option clears both lists: their records change form.
    s.Redo();
    s.SetOptions(s.Options() - srUndoOnlyChanges);
    EXPECT_FALSE(s.CanUndo());
    EXPECT_FALSE(s.CanRedo());
}

TEST(Undo, LockedStepsTravelTogether) {
    TEasyEditSource s;
    s.SetOptions(s.Options() - srGroupUndo);
    Load(s, "abc");
    s.LockUndo();
    s.BeginUpdate(crInsert);
    s.InsertText("1");
    s.EndUpdate();
    s.BeginUpdate(crDelete);
    s.MoveCaretTo(2, 0);
    s.DeleteChars(1);
    s.EndUpdate();
    s.UnlockUndo();
    EXPECT_EQ(RawLines(s)[0], "1ac");
    s.Undo();
    EXPECT_EQ(RawLines(s)[0], "abc");
    EXPECT_FALSE(s.CanUndo());
}

TEST(Undo, AllowUndoOffRecordsNothingAndKeepsWhatWasThere) {
    TEasyEditSource s;
    Load(s, "");
    Type(s, "a");
    const int records = s.UndoList().Count();
    s.SetOptions(s.Options() - srAllowUndo);
    Type(s, "b");
    EXPECT_EQ(s.UndoList().Count(), records);
    EXPECT_FALSE(s.CanUndo());
    s.Undo();
    EXPECT_EQ(RawLines(s)[0], "ab");
    s.SetOptions(s.Options() + srAllowUndo);
    EXPECT_TRUE(s.CanUndo());
}

TEST(Undo, BlockDeleteAndInsertUndoInOneStepAndRedo) {
    TEasyEditSource s;
    std::string text;
    for (int i = 0; i < 100; ++i) text += "line " + std::to_string(i) + "\n";
    Load(s, text);
    const Lines original = RawLines(s);
    s.DeleteBlock({2, 10}, {3, 80});
    EXPECT_EQ(s.LineCount(), 30);
    EXPECT_EQ(RawLines(s)[10], "lie 80");
    EXPECT_EQ(RawLines(s)[11], "line 81");
    EXPECT_EQ(s.Caret(), (TPoint{2, 10}));
    const Lines deleted = RawLines(s);
    s.Undo();
    EXPECT_EQ(RawLines(s), original);
    s.Redo();
    EXPECT_EQ(RawLines(s), deleted);
    s.Undo();

    s.MoveCaretTo(4, 1);
    s.InsertBlock("A\r\nB\nC\rD");
    EXPECT_EQ(s.LineCount(), 103);
    EXPECT_EQ(RawLines(s)[1], "lineA");
    EXPECT_EQ(RawLines(s)[2], "B");
    EXPECT_EQ(RawLines(s)[4], "D 1");
    EXPECT_EQ(s.Caret(), (TPoint{4, 1}));  // the caret does not move
    const Lines pasted = RawLines(s);
    s.Undo();
    EXPECT_EQ(RawLines(s), original);
    s.Redo();
    EXPECT_EQ(RawLines(s), pasted);

    // Many lines into the middle, and a block starting past a line's end.
    std::string many;
    for (int i = 0; i < 500; ++i) many += "p" + std::to_string(i) + "\n";
    s.MoveCaretTo(1, 50);
    s.InsertBlock(many);
    EXPECT_EQ(RawLines(s)[50], "lp0");
    EXPECT_EQ(RawLines(s)[550], "ine 47");
    s.DeleteBlock({20, 3}, {0, 400});
    s.Undo();
    s.Undo();
    EXPECT_EQ(RawLines(s), pasted);
}

TEST(Undo, BlockUndoKeepsTheParseCacheOfWholeLines) {
    TEasyEditSource s;
    testing::CommentParser parser;
    std::string text;
    for (int i = 0; i < 200; ++i) text += "l" + std::to_string(i) + "\n";
    Load(s, text);
    s.SetParser(&parser);
    s.ParseTo(199);
    s.DeleteBlock({0, 0}, {4, 199});
    parser.LinesScanned.clear();
    s.Undo();
    s.ParseTo(199);
    // The first line (rebuilt, scanned at once) and the last (its tail
    // rejoined) are new text; the 198 lines between come back parsed.
    EXPECT_EQ(parser.LinesScanned, (std::vector<int>{0, 199}));
    s.SetParser(nullptr);
}

// What ParseTo built from the caches equals a forced scan of every line.
void ExpectCacheMatchesAFullScan(TEasyEditSource& s, unsigned seed) {
    const int last = s.LineCount() - 1;
    s.ParseTo(last);
    std::vector<std::vector<std::uint16_t>> cached;
    std::vector<int> ends;
    for (int y = 0; y <= last; ++y) {
        auto codes = s.Lines().GetStyleString(y);
        cached.emplace_back(codes.begin(), codes.end());
        ends.push_back(s.Lines().GetLineState(y));
    }
    s.ParseLines(0, last, true);
    for (int y = 0; y <= last; ++y) {
        auto codes = s.Lines().GetStyleString(y);
        ASSERT_EQ(cached[static_cast<size_t>(y)], std::vector<std::uint16_t>(codes.begin(), codes.end()))
            << "line " << y << " seed " << seed;
        ASSERT_EQ(ends[static_cast<size_t>(y)], s.Lines().GetLineState(y)) << "line " << y << " seed " << seed;
    }
}

// Random primitives, then undo all and compare with the original, then redo
// all and compare with the edited text.
void RandomRoundTrip(TEasySourceOptions options, unsigned seed, bool blanks, bool tabs = false) {
    std::mt19937 random(seed);
    auto pick = [&](int n) { return n <= 0 ? 0 : static_cast<int>(random() % static_cast<unsigned>(n)); };
    const std::string alphabet = tabs ? "ab\tc x\t{}" : blanks ? "abc xyz{}" : "abcxyz{}";
    auto word = [&] {
        std::string w;
        for (int i = pick(6) + 1; i > 0; --i) w += alphabet[static_cast<size_t>(pick(static_cast<int>(alphabet.size())))];
        return w;
    };
    TEasyEditSource s;
    testing::CommentParser parser;
    s.SetParser(&parser);
    s.SetOptions(options);
    std::string text;
    for (int i = 0; i < 40; ++i) text += word() + "\n";
    Load(s, text);
    const Lines original = RawLines(s);
    for (int step = 0; step < 400; ++step) {
        const int y = pick(s.LineCount());
        const int length = static_cast<int>(s.Lines().Get(y).size());
        s.MoveCaretTo(pick(length + 1), y);
        switch (pick(8)) {
            case 0: Type(s, word()); break;
            case 1: s.DeleteChars(pick(4) + 1); break;
            case 2: s.BreakLine(); break;
            case 3:
                s.MoveCaretTo(length, y);
                s.JoinLines();
                break;
            case 4: s.InsertLine(pick(s.LineCount() + 1), word()); break;
            case 5: {
                const int y2 = std::min(s.LineCount() - 1, y + pick(30));
                s.DeleteBlock(s.Caret(), {pick(static_cast<int>(s.Lines().Get(y2).size()) + 1), y2});
                break;
            }
            case 6: s.InsertBlock(word() + "\n" + word() + (pick(2) ? "\n" + word() : std::string())); break;
            default: s.Backspace(); break;
        }
        s.ParseTo(pick(s.LineCount()));
    }
    const Lines edited = RawLines(s);
    ExpectCacheMatchesAFullScan(s, seed);
    while (s.CanUndo()) {
        s.Undo();
        s.ParseTo(pick(s.LineCount()));
    }
    ASSERT_EQ(RawLines(s), original) << "seed " << seed;
    ExpectCacheMatchesAFullScan(s, seed);
    while (s.CanRedo()) s.Redo();
    ASSERT_EQ(RawLines(s), edited) << "seed " << seed;
    ExpectCacheMatchesAFullScan(s, seed);
    s.SetParser(nullptr);
}

TEST(Undo, RandomEditsUndoToTheOriginalAndRedoToTheEditedText) {
    // The caret is held inside the text (no padding blanks), and blanks are
    // kept where the editing would otherwise trim them unrecorded.
    const TEasySourceOptions base = kDefaultSourceOptions - srBeyondEol;
    for (unsigned seed = 1; seed <= 12; ++seed) {
        RandomRoundTrip(base + srLeaveTrailSpaces, seed, true);
        RandomRoundTrip(base - srGroupUndo, seed + 100, false);
        RandomRoundTrip(base + srUndoOnlyChanges + srLeaveTrailSpaces, seed + 200, true);
    }
}

TEST(Undo, RandomEditsWithStoredTabsRoundTrip) {
    const TEasySourceOptions base = kDefaultSourceOptions - srBeyondEol + srLeaveTrailSpaces + srUseTab;
    for (unsigned seed = 1; seed <= 12; ++seed) {
        RandomRoundTrip(base, seed + 300, true, true);
        RandomRoundTrip(base + srCursorThroughTabs, seed + 400, true, true);
        RandomRoundTrip(base + srAlwaysOnTabs, seed + 500, true, true);
    }
}

}  // namespace
}  // namespace zorfa::text
