// Cases found in review: editing commands at the edges of tabs, lines and
// the document.

#include <gtest/gtest.h>

#include "EditSourceTestSupport.h"

namespace zorfa::text {
namespace {

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

}  // namespace
}  // namespace zorfa::text
