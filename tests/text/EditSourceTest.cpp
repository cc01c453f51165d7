#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "EditSourceTestSupport.h"

namespace zorfa::text {
namespace {

using testing::CommentParser;
using testing::Load;
using testing::RawLines;
using testing::RecordingView;
using testing::Type;
using Lines = std::vector<std::string>;

TEST(EditSource, OptionsKeepTheirStoredOrderAndDefaults) {
    EXPECT_EQ(static_cast<int>(srAutoIndent), 0);
    EXPECT_EQ(static_cast<int>(srAllowUndo), 7);
    EXPECT_EQ(static_cast<int>(srHighlightUrls), 16);
    EXPECT_EQ(static_cast<int>(srAutoCorrect), 18);
    TEasyEditSource s;
    EXPECT_EQ(s.Options().Bits(), (1u << 0) | (1u << 1) | (1u << 7) | (1u << 8) | (1u << 10) | (1u << 16));
}

TEST(EditSource, UseTabAndSmartTabExcludeEachOtherTheNewcomerWins) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srSmartTab);
    s.SetOptions(s.Options() + srUseTab);
    EXPECT_TRUE(s.Has(srUseTab));
    EXPECT_FALSE(s.Has(srSmartTab));
    s.SetOptions(s.Options() + srSmartTab);
    EXPECT_TRUE(s.Has(srSmartTab));
    EXPECT_FALSE(s.Has(srUseTab));
    TEasyEditSource both;
    both.SetOptions(both.Options() + srSmartTab + srUseTab);
    EXPECT_TRUE(both.Has(srUseTab));
    EXPECT_FALSE(both.Has(srSmartTab));
}

TEST(EditSource, AutoIndentAfterEnterFollowsTheLineAbove) {
    TEasyEditSource s;
    Load(s, "    foo");
    s.MoveCaretTo(7, 0);
    s.NewLine();
    EXPECT_EQ(RawLines(s), (Lines{"    foo", "    "}));
    EXPECT_EQ(s.Caret(), (TPoint{4, 1}));
    Type(s, "bar");
    s.NewLine();
    s.NewLine();  // an empty indented line is trimmed when left
    EXPECT_EQ(RawLines(s), (Lines{"    foo", "    bar", "", "    "}));
    EXPECT_EQ(s.Caret(), (TPoint{4, 3}));
    // Enter in the middle of a line carries the rest over, indented.
    s.MoveCaretTo(5, 1);
    s.NewLine();
    EXPECT_EQ(RawLines(s)[1], "    b");
    EXPECT_EQ(RawLines(s)[2], "    ar");
    EXPECT_EQ(s.Caret(), (TPoint{4, 2}));
}

TEST(EditSource, EnterWithoutAutoIndentGoesToColumnZero) {
    TEasyEditSource s;
    s.SetOptions(s.Options() - srAutoIndent);
    Load(s, "    foo");
    s.MoveCaretTo(7, 0);
    s.NewLine();
    EXPECT_EQ(RawLines(s), (Lines{"    foo", ""}));
    EXPECT_EQ(s.Caret(), (TPoint{0, 1}));
}

TEST(EditSource, SmartTabGoesToTheNextWordOfTheLineAbove) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srSmartTab);
    Load(s, "foo    bar  baz\n\n\n");
    s.MoveCaretTo(0, 2);
    s.InsertTab();
    EXPECT_EQ(s.Caret(), (TPoint{7, 2}));
    EXPECT_EQ(RawLines(s)[2], "       ");
    s.InsertTab();
    EXPECT_EQ(s.Caret(), (TPoint{12, 2}));
    // Past the last word the ordinary stop applies.
    s.InsertTab();
    EXPECT_EQ(s.Caret(), (TPoint{16, 2}));
    // Without smart tab: blanks up to the next stop.
    TEasyEditSource plain;
    Load(plain, "foo    bar\nab");
    plain.MoveCaretTo(2, 1);
    plain.InsertTab();
    EXPECT_EQ(RawLines(plain)[1], "ab      ");
    EXPECT_EQ(plain.Caret(), (TPoint{8, 1}));
}

TEST(EditSource, TabWithUseTabInsertsATabAndStepsOverIt) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srUseTab);
    Load(s, "ab");
    s.MoveCaretTo(1, 0);
    s.InsertTab();
    EXPECT_EQ(RawLines(s)[0], "a\tb");
    EXPECT_EQ(s.Caret(), (TPoint{8, 0}));
    s.CaretLeft();  // jumps the tab whole
    EXPECT_EQ(s.Caret(), (TPoint{1, 0}));
    s.CaretRight();
    EXPECT_EQ(s.Caret(), (TPoint{8, 0}));
}

TEST(EditSource, TypingInsideATabKeepsTheTextInItsColumnsAndUndoesInOneStep) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srUseTab + srCursorThroughTabs);
    Load(s, "a\tb");
    s.MoveCaretTo(3, 0);  // two columns into the tab (1..7)
    Type(s, "x");
    EXPECT_EQ(s.Lines().Get(0), "a  x    b");
    s.Undo();
    EXPECT_EQ(RawLines(s)[0], "a\tb");
}

TEST(EditSource, BackspaceOnTheIndentJumpsToThePreviousIndentLevel) {
    TEasyEditSource s;
    Load(s, "  foo\n    bar");
    s.MoveCaretTo(4, 1);
    s.Backspace();
    EXPECT_EQ(RawLines(s)[1], "  bar");
    EXPECT_EQ(s.Caret(), (TPoint{2, 1}));
    s.Backspace();
    EXPECT_EQ(RawLines(s)[1], "bar");
    EXPECT_EQ(s.Caret(), (TPoint{0, 1}));
    // Elsewhere it deletes one character to the left.
    s.MoveCaretTo(2, 1);
    s.Backspace();
    EXPECT_EQ(RawLines(s)[1], "br");
    // Without the option: one character.
    TEasyEditSource plain;
    plain.SetOptions(plain.Options() - srBackUnindents);
    Load(plain, "  foo\n    bar");
    plain.MoveCaretTo(4, 1);
    plain.Backspace();
    EXPECT_EQ(RawLines(plain)[1], "   bar");
}

TEST(EditSource, BackspaceAtColumnZeroDoesNothingWithoutMoveUp) {
    TEasyEditSource s;
    Load(s, "ab\ncd");
    s.MoveCaretTo(0, 1);
    const int records = s.UndoList().Count();
    s.Backspace();
    EXPECT_EQ(RawLines(s), (Lines{"ab", "cd"}));
    EXPECT_EQ(s.Caret(), (TPoint{0, 1}));
    EXPECT_EQ(s.UndoList().Count(), records);
    s.SetOptions(s.Options() + srMoveUpAtLineBegin);
    s.Backspace();
    EXPECT_EQ(RawLines(s), (Lines{"ab", "cd"}));  // moved up, nothing joined
    EXPECT_EQ(s.Caret(), (TPoint{2, 0}));
}

TEST(EditSource, TrailingBlanksGoWhenTheCaretLeavesTheLineWithoutAnUndoRecord) {
    TEasyEditSource s;
    Load(s, "\nx");
    Type(s, "abc  ");
    const int records = s.UndoList().Count();
    s.MoveCaretBy(0, 1);
    EXPECT_EQ(RawLines(s)[0], "abc");
    // The move is one record; the trim none.
    EXPECT_EQ(s.UndoList().Count(), records + 1);
    s.Undo();
    s.Undo();
    EXPECT_EQ(RawLines(s)[0], "");

    TEasyEditSource keep;
    keep.SetOptions(keep.Options() + srLeaveTrailSpaces);
    Load(keep, "\nx");
    Type(keep, "abc  ");
    keep.MoveCaretBy(0, 1);
    EXPECT_EQ(RawLines(keep)[0], "abc  ");
}

TEST(EditSource, TypingBeyondTheEndPadsAndBeyondTheLastLineAddsLines) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srBeyondEof);
    Load(s, "ab");
    s.MoveCaretTo(5, 2);
    EXPECT_EQ(s.LineCount(), 1);  // a move alone stores nothing
    Type(s, "x");
    EXPECT_EQ(RawLines(s), (Lines{"ab", "", "     x"}));
}

TEST(EditSource, CaretIsHeldAtTheEndOfLineAndDocumentWithoutBeyondOptions) {
    TEasyEditSource s;
    s.SetOptions(s.Options() - srBeyondEol);
    Load(s, "abc\nde");
    s.MoveCaretTo(10, 5);
    EXPECT_EQ(s.Caret(), (TPoint{2, 1}));
    s.MoveCaretTo(3, 0);
    s.MoveCaretBy(0, 1);
    EXPECT_EQ(s.Caret(), (TPoint{2, 1}));
    s.SetOptions(s.Options() + srMoveDownAtLineEnd);
    s.MoveCaretTo(3, 0);
    s.CaretRight();
    EXPECT_EQ(s.Caret(), (TPoint{0, 1}));
}

TEST(EditSource, OutsideWriterLeavesACleanUndoFreeDocument) {
    TEasyEditSource s;
    Load(s, "abc");
    Type(s, "x");
    EXPECT_TRUE(s.Modified);
    EXPECT_TRUE(s.CanUndo());
    s.Lines().SetText("new\ntext");
    EXPECT_FALSE(s.Modified);
    EXPECT_FALSE(s.CanUndo());
    EXPECT_EQ(s.Caret(), (TPoint{0, 0}));
    std::istringstream in("one\r\ntwo\r\n");
    s.LoadFromStream(in);
    EXPECT_EQ(RawLines(s), (Lines{"one", "two"}));
    EXPECT_FALSE(s.Modified);
}

TEST(EditSource, ReadOnlySourceIgnoresPrimitivesAndUndo) {
    TEasyEditSource s;
    Load(s, "abc");
    Type(s, "x");
    s.SetReadOnly(true);
    s.InsertText("zz");
    s.DeleteChars(1);
    s.BreakLine();
    s.Undo();
    EXPECT_EQ(RawLines(s), (Lines{"xabc"}));
}

TEST(EditSource, ViewsAreToldOnceAtTheOutermostEndUpdateInAttachOrder) {
    TEasyEditSource s;
    Load(s, "abc\ndef");
    std::vector<std::string> log;
    RecordingView a(&log, "a"), b(&log, "b");
    s.Attach(&a);
    s.Attach(&b);
    s.Attach(&a);  // attaching twice changes nothing
    s.OnSourceChanged = [&](TCustomEasyEditSource&, std::uint16_t flags) {
        log.push_back("form:" + std::to_string(flags));
    };
    s.BeginUpdate(crCompound);
    s.InsertText("x");
    s.MoveCaretTo(1, 1);
    s.BreakLine();
    s.DeleteChars(1);
    EXPECT_TRUE(log.empty());
    s.EndUpdate();
    const std::uint16_t flags = cfCaret | cfText | cfLineCount;
    EXPECT_EQ(log, (std::vector<std::string>{"a", "b", "form:" + std::to_string(flags)}));
    EXPECT_EQ(a.LastFlags, flags);
    // Position records went out while the update was open.
    // (The deletion found nothing right of the caret on the broken line.)
    EXPECT_EQ(a.Kinds, (std::vector<int>{snLinesChanged, snPositions, snLinesChanged, snLinesChanged,
                                         snLinesChanged, snPositions}));
    s.Detach(&a);
    log.clear();
    s.MoveCaretTo(0, 0);
    EXPECT_EQ(log, (std::vector<std::string>{"b", "form:" + std::to_string(cfCaret)}));
    // An update that changes nothing tells nobody.
    log.clear();
    s.BeginUpdate(crCompound);
    s.EndUpdate();
    EXPECT_TRUE(log.empty());
}

TEST(EditSource, ParsedToFallsToTheFirstChangedLineAndParseToStopsAtAnUnchangedState) {
    TEasyEditSource s;
    CommentParser parser;
    std::string text;
    for (int i = 0; i < 1000; ++i) text += "line " + std::to_string(i) + "\n";
    Load(s, text);
    s.SetParser(&parser);
    EXPECT_EQ(s.ParsedTo(), 0);
    s.ParseTo(999);
    EXPECT_EQ(s.ParsedTo(), 1000);
    EXPECT_EQ(parser.LinesScanned.size(), 1000u);

    // An edit that leaves the end state alone: only that line is scanned.
    s.MoveCaretTo(0, 500);
    parser.LinesScanned.clear();
    Type(s, "x");
    EXPECT_EQ(s.ParsedTo(), 500);
    EXPECT_EQ(parser.LinesScanned, std::vector<int>{500});
    parser.LinesScanned.clear();
    s.ParseTo(999);
    EXPECT_TRUE(parser.LinesScanned.empty());
    EXPECT_EQ(s.ParsedTo(), 1000);

    // A comment opener changes the state flowing into what follows: the
    // re-parse goes exactly as far as the comment reaches and stops at the
    // first line whose entering state is the old one again.
    s.MoveCaretTo(0, 600);
    Type(s, "}");
    s.MoveCaretTo(0, 510);
    parser.LinesScanned.clear();
    Type(s, "{");
    EXPECT_EQ(s.ParsedTo(), 510);
    parser.LinesScanned.clear();
    s.ParseTo(999);
    std::vector<int> expected;
    for (int y = 511; y <= 600; ++y) expected.push_back(y);
    EXPECT_EQ(parser.LinesScanned, expected);
    EXPECT_EQ(s.Lines().GetCharStyle(550, 1), 1);  // inside the comment
    EXPECT_EQ(s.Lines().GetCharStyle(602, 1), 0);

    // Inserting a line does not touch the parse data of the lines after it.
    parser.LinesScanned.clear();
    s.InsertLine(0, "new");
    EXPECT_EQ(s.ParsedTo(), 0);
    EXPECT_TRUE(s.Lines().Record(900)->Flags & lfParsed);
    s.ParseTo(1000);
    // Line 0 is new and the old line 0 came back as a new record; nothing after.
    EXPECT_EQ(parser.LinesScanned, (std::vector<int>{0, 1}));

    // A new parser throws every cache away.
    CommentParser other;
    s.SetParser(&other);
    s.ParseTo(10);
    EXPECT_EQ(other.LinesScanned.size(), 11u);
    s.SetParser(nullptr);
}

TEST(EditSource, UrlsAndMailAddressesGetTheUrlStyle) {
    TEasyEditSource s;
    Load(s, "see www.x.org and Mail bob@host.com, or ftp://a.b x@y z@.q");
    s.ParseTo(0);
    const std::string line = s.Lines().Get(0);
    auto codeAt = [&](std::string_view what) { return s.Lines().GetCharStyle(0, static_cast<int>(line.find(what)) + 1); };
    EXPECT_EQ(codeAt("www"), 8);  // no parser: code 8
    EXPECT_EQ(codeAt("org"), 8);
    EXPECT_EQ(codeAt("see"), kNoStyle);
    EXPECT_EQ(codeAt("bob"), 8);
    EXPECT_EQ(codeAt("com"), 8);
    EXPECT_EQ(codeAt("ftp"), 8);
    EXPECT_EQ(codeAt("x@y"), kNoStyle);  // no dot after the "@"
    EXPECT_EQ(codeAt("z@.q"), kNoStyle);  // no word character after the "@"
    EXPECT_EQ(s.Lines().GetCharStyle(0, static_cast<int>(line.find(',')) + 1), kNoStyle);

    CommentParser parser;
    s.SetParser(&parser);
    EXPECT_EQ(s.UrlStyle(), 2);
    s.ParseTo(0);
    EXPECT_EQ(codeAt("www"), 2);
    s.SetParser(nullptr);
    EXPECT_TRUE(IsUrlOrMail("MAILTO:x"));
    EXPECT_TRUE(IsUrlOrMail("http://"));
    EXPECT_FALSE(IsUrlOrMail("a@b@c.d"));
}

TEST(EditSource, WordBoundsAndWordAt) {
    TEasyEditSource s;
    Load(s, "  alpha beta,  gamma");
    int start, end;
    s.WordBounds({4, 0}, 0, start, end);
    EXPECT_EQ(start, 2);
    EXPECT_EQ(end, 7);
    s.WordBounds({7, 0}, 0, start, end);  // on the blank after a word: that word
    EXPECT_EQ(start, 2);
    s.WordBounds({8, 0}, 1, start, end);
    EXPECT_EQ(start, 8);
    EXPECT_EQ(end, 14);  // "beta," (a comma is no delimiter) and one blank
    s.WordBounds({2, 0}, 2, start, end);
    EXPECT_EQ(end, 8);
    EXPECT_EQ(s.WordAt({9, 0}, false), "beta,");
    EXPECT_EQ(s.WordAt({7, 0}, true), "");
    EXPECT_EQ(s.WordAt({30, 0}, true), "");
    EXPECT_EQ(s.WordAt({16, 0}, true), "gamma");
    // An embedded object stops a word.
    Load(s, "ab\x01" "cd");
    EXPECT_EQ(s.WordAt({0, 0}, false), "ab");
    EXPECT_EQ(s.WordAt({4, 0}, false), "cd");
}

TEST(EditSource, BracketsMatchAcrossLines) {
    TEasyEditSource s;
    Load(s, "f(a, (b)\n  [x] )\n{");
    TPoint p{1, 0};
    ASSERT_TRUE(s.MatchBracketForward('(', p));
    EXPECT_EQ(p, (TPoint{6, 1}));
    p = {6, 1};
    ASSERT_TRUE(s.MatchBracketBackward(')', p));
    EXPECT_EQ(p, (TPoint{1, 0}));
    p = {5, 0};
    ASSERT_TRUE(s.MatchBracketForward('(', p));
    EXPECT_EQ(p, (TPoint{7, 0}));
    p = {0, 2};
    EXPECT_FALSE(s.MatchBracketForward('{', p));
    EXPECT_FALSE(s.MatchBracketForward('x', p));
}

}  // namespace
}  // namespace zorfa::text

namespace zorfa::text {
namespace {

using testing::Load;
using testing::RawLines;

TEST(EditSourceTabs, OptimalFillIndentsWithTabsThenBlanks) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srUseTab + srOptimalFill);
    s.SetTabStops("4");
    Load(s, "\t\t  foo");
    EXPECT_EQ(s.Lines().Get(0), "          foo");
    s.MoveCaretTo(13, 0);
    s.NewLine();
    EXPECT_EQ(RawLines(s)[1], "\t\t  ");
    EXPECT_EQ(s.Caret(), (TPoint{10, 1}));
}

TEST(EditSourceTabs, AlwaysOnTabsSnapsToTheNearerEdgeOfATab) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srUseTab + srAlwaysOnTabs);
    Load(s, "a\tb");  // the tab covers columns 1..7
    s.MoveCaretTo(3, 0);
    EXPECT_EQ(s.Caret(), (TPoint{1, 0}));
    s.MoveCaretTo(6, 0);
    EXPECT_EQ(s.Caret(), (TPoint{8, 0}));
}

TEST(EditSourceTabs, UseTabReadsExpandedLinesAndKeepsTabsStored) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srUseTab);
    Load(s, "\tx");
    EXPECT_EQ(s.Lines().GetRawLine(0), "\tx");
    EXPECT_EQ(s.Lines().Get(0), "        x");
    s.MoveCaretTo(9, 0);
    s.InsertText("y");
    EXPECT_EQ(s.Lines().GetRawLine(0), "\txy");
    s.MoveCaretTo(8, 0);
    s.DeleteChars(1);
    EXPECT_EQ(s.Lines().GetRawLine(0), "\ty");
    s.MoveCaretTo(0, 0);
    s.DeleteChars(8);  // the whole tab by its columns
    EXPECT_EQ(s.Lines().GetRawLine(0), "y");
}

TEST(EditSourceFiles, SaveToFileKeepsTheNameAndWritesTheLineBreak) {
    TEasyEditSource s;
    Load(s, "one\ntwo");
    const std::string path = (std::filesystem::temp_directory_path() / "edit-source-save.txt").string();
    s.SaveToFile(path);
    EXPECT_EQ(s.FileName, path);
    std::ifstream in(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_EQ(bytes, "one\r\ntwo\r\n");
    std::filesystem::remove(path);
}

TEST(EditSourceViews, BlockEditsTellViewsTheRangeThatMoved) {
    class SelectionView : public IEasySourceListener {
    public:
        TPoint SelEnd{5, 3};
        int Ranges = 0;
        void SourceChanged(TCustomEasyEditSource&, TEasySourceNotify* n) override {
            if (n && n->Kind == snRange) {
                ++Ranges;
                SelEnd = static_cast<const TEasyRangeMove*>(n->Data)->Adjust(SelEnd);
            }
        }
    } view;
    TEasyEditSource s;
    Load(s, "0123456789\nabcdefgh\nABCDEFGH\nxyzxyzxyz");
    s.Attach(&view);
    s.DeleteBlock({4, 0}, {2, 2});
    EXPECT_EQ(view.Ranges, 1);
    EXPECT_EQ(view.SelEnd, (TPoint{5, 1}));
    EXPECT_EQ(testing::RawLines(s)[0], "0123CDEFGH");
    s.MoveCaretTo(0, 1);
    s.InsertBlock("new\nlines\n");
    EXPECT_EQ(view.Ranges, 2);
    EXPECT_EQ(view.SelEnd, (TPoint{5, 3}));
    s.Undo();
    EXPECT_EQ(view.Ranges, 3);
    EXPECT_EQ(view.SelEnd, (TPoint{5, 1}));
}

}  // namespace
}  // namespace zorfa::text
