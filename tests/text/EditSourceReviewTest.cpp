// Cases found in review: editing commands at the edges of tabs, lines and
// the document.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <ostream>

#include "base/Errors.h"

#include "EditSourceTestSupport.h"

namespace zorfa::text {
namespace {

using testing::CommentParser;
using testing::Load;
using testing::RawLines;
using Lines = std::vector<std::string>;

// The previous indent level lies inside a tab of the caret's line. With
// srAlwaysOnTabs the caret cannot stand there, so the unindent must not go
// through a snapped caret; the tab's columns left of the level stay as
// blanks, and the caret ends on the level.
TEST(EditSourceReview, BackspaceUnindentIntoATabNeverDeletesText) {
    for (const int level : {6, 5}) {  // snaps right of the tab, left of the tab
        TEasyEditSource s;
        s.SetOptions(s.Options() + srUseTab + srAlwaysOnTabs);
        Load(s, std::string(static_cast<size_t>(level), ' ') + "bar\n  \tfoo");
        s.MoveCaretTo(8, 1);  // on "foo", behind the tab
        s.Backspace();
        EXPECT_EQ(RawLines(s)[1], std::string(static_cast<size_t>(level), ' ') + "foo") << level;
        EXPECT_EQ(s.Caret(), (TPoint{level, 1})) << level;
        s.Undo();
        EXPECT_EQ(RawLines(s)[1], "  \tfoo") << level;
        EXPECT_EQ(s.Caret(), (TPoint{8, 1})) << level;
    }
}

TEST(EditSourceReview, BackspaceUnindentThroughATabKeepsTheColumns) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srUseTab + srCursorThroughTabs);
    Load(s, "     bar\n  \tfoo");
    s.MoveCaretTo(8, 1);
    s.Backspace();
    EXPECT_EQ(RawLines(s)[1], "     foo");
    EXPECT_EQ(s.Caret(), (TPoint{5, 1}));
}

TEST(EditSourceReview, BackspaceAtTheStartOfTheDocumentDeletesNothing) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srMoveUpAtLineBegin);
    Load(s, "abc\ndef");
    s.Backspace();
    EXPECT_EQ(RawLines(s), (Lines{"abc", "def"}));
    EXPECT_EQ(s.Caret(), (TPoint{0, 0}));
    EXPECT_FALSE(s.CanUndo());
    // Lower down, column 0 goes to the end of the line above and joins nothing.
    s.MoveCaretTo(0, 1);
    s.Backspace();
    EXPECT_EQ(RawLines(s), (Lines{"abc", "def"}));
    EXPECT_EQ(s.Caret(), (TPoint{3, 0}));
}

TEST(EditSourceReview, RightAtTheEndOfTheLastLineStaysWithoutBeyondEof) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srMoveDownAtLineEnd);
    Load(s, "ab\ncd");
    s.MoveCaretTo(2, 0);
    s.CaretRight();
    EXPECT_EQ(s.Caret(), (TPoint{0, 1}));
    s.MoveCaretTo(2, 1);
    s.CaretRight();
    EXPECT_EQ(s.Caret(), (TPoint{2, 1}));
    // With srBeyondEof the caret may go below the last line.
    s.SetOptions(s.Options() + srBeyondEof);
    s.CaretRight();
    EXPECT_EQ(s.Caret(), (TPoint{0, 2}));
}

// A view parses what it shows as soon as it is told of an update; a parser
// that changes its token numbers must reach it with the new URL code.
TEST(EditSourceReview, AViewParsingOnNotificationSeesTheParsersNewUrlStyle) {
    class MovingUrlParser : public CommentParser {
    public:
        int Url = 2;
        int IndexOfToken(std::string_view name) const override { return name == "turl" ? Url : -1; }
    } parser;
    class ParsingView : public IEasySourceListener {
    public:
        void SourceChanged(TCustomEasyEditSource& source, TEasySourceNotify* notify) override {
            if (!notify) source.ParseTo(100);
        }
    } view;
    TEasyEditSource s;
    s.Attach(&view);
    s.SetParser(&parser);
    Load(s, "see www.example.com now");
    EXPECT_EQ(s.Lines().GetCharStyle(0, 5), 2);
    parser.Url = 1;
    parser.Changed();
    EXPECT_EQ(s.UrlStyle(), 1);
    EXPECT_EQ(s.Lines().GetCharStyle(0, 5), 1);
    s.Detach(&view);
    s.SetParser(nullptr);
}

// A join keeps the line the caret stands on: marks at its end stay there, and
// the marks of the joined line come up behind them.
TEST(EditSourceReview, AJoinLeavesTheMarksOfTheRemainingLineInPlace) {
    TEasyEditSource s;
    Load(s, "abc\ndef\n\nghi");
    s.SetBookmark(1, {3, 0});  // at the end of line 0, where the caret joins
    s.SetBookmark(2, {1, 1});
    s.MoveCaretTo(3, 0);
    s.JoinLines();
    TPoint p;
    ASSERT_TRUE(s.GetBookmark(1, p));
    EXPECT_EQ(p, (TPoint{3, 0}));
    ASSERT_TRUE(s.GetBookmark(2, p));
    EXPECT_EQ(p, (TPoint{4, 0}));
    // An empty line joined with the next: its marks stay on it.
    s.SetBookmark(3, {0, 1});
    s.LineMarks().AddMark({0, 1}, 5);
    s.MoveCaretTo(0, 1);
    s.JoinLines();
    ASSERT_TRUE(s.GetBookmark(3, p));
    EXPECT_EQ(p, (TPoint{0, 1}));
    EXPECT_EQ(s.LineMarks()[0].Y, 1);
    // Undo breaks the lines again and the marks go back with the text.
    for (int i = 0; i < 3; ++i) s.Undo();  // join, caret move, join
    EXPECT_EQ(RawLines(s), (Lines{"abc", "def", "", "ghi"}));
    ASSERT_TRUE(s.GetBookmark(2, p));
    EXPECT_EQ(p, (TPoint{1, 1}));
}

// Bad positions are ignored: a column left of the line reads as its start.
TEST(EditSourceReview, WordsAtANegativeColumn) {
    TEasyEditSource s;
    Load(s, "alpha beta");
    int start = -7, end = -7;
    s.WordBounds({-5, 0}, 0, start, end);
    EXPECT_EQ(start, 0);
    EXPECT_EQ(end, 5);
    EXPECT_EQ(s.WordAt({-1, 0}, false), "alpha");
    EXPECT_EQ(s.WordAt({-1, 0}, true), "");
    EXPECT_EQ(s.WordAt({0, -1}, false), "");
}

// A source that writes its own form (as the rich source does) is saved in
// that form by SaveToFile.
TEST(EditSourceReview, SaveToFileWritesWhatSaveToStreamWrites) {
    class OwnFormSource : public TEasyEditSource {
    public:
        void SaveToStream(std::ostream& stream) override { stream << "{own form}"; }
    } s;
    Load(s, "plain");
    const std::filesystem::path dir = std::filesystem::temp_directory_path() / "edit-source-review-save";
    std::filesystem::create_directories(dir);
    const std::string path = (dir / "own.txt").string();
    s.SaveToFile(path);
    EXPECT_EQ(s.FileName, path);
    std::ifstream in(path, std::ios::binary);
    EXPECT_EQ(std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>()), "{own form}");
    in.close();
    // A file that cannot be created raises, naming it.
    const std::string bad = (dir / "no-such-folder" / "x.txt").string();
    try {
        s.SaveToFile(bad);
        ADD_FAILURE() << "no exception";
    } catch (const Exception& e) {
        EXPECT_EQ(std::string(e.what()).rfind("Cannot create file \"" + bad + "\".", 0), 0u) << e.what();
    }
    std::filesystem::remove_all(dir);
}

// A style record (as the rich source writes before restyling a run) holds
// the run's old codes from its column on; undo writes them back there and
// redo restores the new ones.
TEST(EditSourceReview, StyleRecordsWriteTheirRunBackAndRedo) {
    TEasyEditSource s;
    Load(s, "abcdef");
    TEasyStringRec* r = s.Lines().Record(0);
    auto codes = [r] {
        std::vector<int> v;
        for (int i = 0; i < r->Styles.Size(); ++i) v.push_back(r->Styles.At(i));
        return v;
    };
    r->Styles.Resize(6, 7);
    s.BeginUpdate(crCompound);
    TEasyUndoList& list = s.UndoRecordList();
    const std::uint32_t index = list.NewPayload();
    list.Payload(index).X = 2;
    list.Payload(index).Y = 0;
    list.Payload(index).Styles = {7, 7};
    s.AddUndoRecord(ukStyles, index);
    r->Styles[2] = r->Styles[3] = 9;
    s.MarkChanged(2, 4, true, 0, 0);
    s.EndUpdate();
    s.Undo();
    EXPECT_EQ(codes(), (std::vector<int>{7, 7, 7, 7, 7, 7}));
    ASSERT_TRUE(s.CanRedo());
    s.Redo();
    EXPECT_EQ(codes(), (std::vector<int>{7, 7, 9, 9, 7, 7}));
    s.Undo();
    EXPECT_EQ(codes(), (std::vector<int>{7, 7, 7, 7, 7, 7}));
}

}  // namespace
}  // namespace zorfa::text
