#include <gtest/gtest.h>

#include "EditSourceTestSupport.h"

namespace zorfa::text {
namespace {

using testing::Load;
using testing::Type;

TPoint MarkOf(TEasyEditSource& s, int index) {
    TPoint p{-1, -1};
    s.GetBookmark(index, p);
    return p;
}

TEST(Bookmark, FollowsTypingOnItsLine) {
    TEasyEditSource s;
    Load(s, "0123456789abcdef");
    s.SetBookmark(1, {10, 0});
    s.MoveCaretTo(5, 0);
    Type(s, "x");
    EXPECT_EQ(MarkOf(s, 1), (TPoint{11, 0}));
    s.MoveCaretTo(12, 0);
    Type(s, "y");
    EXPECT_EQ(MarkOf(s, 1), (TPoint{11, 0}));
    // A deletion left of it pulls it left; one right of it leaves it.
    s.MoveCaretTo(2, 0);
    s.DeleteChars(3);
    EXPECT_EQ(MarkOf(s, 1), (TPoint{8, 0}));
    s.MoveCaretTo(8, 0);
    s.DeleteChars(2);
    EXPECT_EQ(MarkOf(s, 1), (TPoint{8, 0}));
}

TEST(Bookmark, FollowsLineBreaksAndJoins) {
    TEasyEditSource s;
    Load(s, "a\nb\nc\nd\ne\nf\ng\nh\ni");
    s.SetBookmark(2, {0, 5});
    s.MoveCaretTo(1, 3);
    s.BreakLine();
    EXPECT_EQ(MarkOf(s, 2), (TPoint{0, 6}));
    s.MoveCaretTo(1, 7);
    s.BreakLine();
    EXPECT_EQ(MarkOf(s, 2), (TPoint{0, 6}));
    s.MoveCaretTo(1, 3);
    s.JoinLines();
    EXPECT_EQ(MarkOf(s, 2), (TPoint{0, 5}));
    // Breaking the mark's own line before the mark carries it to the new line.
    s.SetBookmark(3, {3, 0});
    s.MoveCaretTo(1, 0);
    s.InsertText("xyz");
    EXPECT_EQ(MarkOf(s, 3), (TPoint{6, 0}));
    s.MoveCaretTo(2, 0);
    s.BreakLine();
    EXPECT_EQ(MarkOf(s, 3), (TPoint{4, 1}));
    // Joining brings it back up, behind the join column.
    s.MoveCaretTo(2, 0);
    s.JoinLines();
    EXPECT_EQ(MarkOf(s, 3), (TPoint{6, 0}));
}

TEST(Bookmark, LineMarksKeepTheirColumn) {
    TEasyEditSource s;
    Load(s, "abcdef\nghi\njkl");
    s.LineMarks().AddMark({4, 1}, 7);
    s.MoveCaretTo(0, 1);
    s.InsertText("123");
    EXPECT_EQ(s.LineMarks()[0].X, 4);
    s.MoveCaretTo(0, 0);
    s.BreakLine();
    EXPECT_EQ(s.LineMarks()[0].Y, 2);
    EXPECT_EQ(s.LineMarks()[0].X, 4);
}

TEST(Bookmark, ToggleRemovesOnTheSameLineAndMovesFromAnother) {
    TEasyEditSource s;
    Load(s, "a\nb\nc");
    s.ToggleBookmark(3, {0, 1});
    EXPECT_EQ(s.GetBookmarkAtLine(1), 3);
    s.ToggleBookmark(3, {1, 1});
    EXPECT_EQ(s.GetBookmarkAtLine(1), -1);
    s.ToggleBookmark(3, {0, 1});
    s.ToggleBookmark(3, {0, 2});
    EXPECT_EQ(s.GetBookmarkAtLine(1), -1);
    EXPECT_EQ(s.GetBookmarkAtLine(2), 3);
    s.GotoBookmark(3);
    EXPECT_EQ(s.Caret(), (TPoint{0, 2}));
    s.DeleteBookmark(3);
    EXPECT_EQ(s.Bookmarks().Count(), 0);
    s.SetBookmark(42, {0, 0});  // any non-negative number
    EXPECT_EQ(s.GetBookmarkAtLine(0), 42);
}

TEST(Bookmark, ChangesReachTheViewsAsFlags) {
    TEasyEditSource s;
    Load(s, "a\nb\nc");
    testing::RecordingView view(nullptr, "v");
    s.Attach(&view);
    s.SetBookmark(0, {0, 2});
    EXPECT_TRUE(view.LastFlags & cfBookmarks);
    s.MoveCaretTo(0, 0);
    s.BreakLine();
    EXPECT_TRUE(view.LastFlags & cfBookmarks);
    s.LineMarks().AddMark({0, 2}, 1);
    s.MoveCaretTo(1, 2);
    s.InsertText("x");
    EXPECT_FALSE(view.LastFlags & cfLineMarks);  // a line mark moves only with lines
}

TEST(Bookmark, AdjustMarksVisitsOnlyTheEntriesFromTheEditedLine) {
    TEasyBookMarkList list;
    list.AddMark({5, 2}, 0);
    list.AddMark({1, 4}, 1);
    list.AddMark({3, 4}, 2);
    list.AddMark({0, 9}, 3);
    // A character typed at 2,4: only the entry right of the caret moves.
    EXPECT_TRUE(list.AdjustMarks(2, 4, 1, 0));
    EXPECT_EQ(list[1].X, 1);
    EXPECT_EQ(list[2].X, 4);
    EXPECT_EQ(list[3].X, 0);
    EXPECT_FALSE(list.AdjustMarks(9, 4, 1, 0));
    // A deletion at 3,4 of one character: an entry exactly at the caret stays.
    list.AddMark({3, 4}, 4);
    EXPECT_TRUE(list.AdjustMarks(3, 4, -1, 0));
    EXPECT_EQ(list[2].X, 3);  // index 4 at 3 stays, index 2 at 4 moves to 3
    // Lines inserted above move everything below.
    EXPECT_TRUE(list.AdjustMarks(0, 3, 0, 2));
    EXPECT_EQ(list[0].Y, 2);
    EXPECT_EQ(list[1].Y, 6);
    EXPECT_EQ(list[4].Y, 11);
}

TEST(Bookmark, RangeMoves) {
    const TEasyRangeMove removed{{2, 1}, {4, 3}, {2, 1}};
    EXPECT_EQ(removed.Adjust({9, 0}), (TPoint{9, 0}));
    EXPECT_EQ(removed.Adjust({1, 1}), (TPoint{1, 1}));
    EXPECT_EQ(removed.Adjust({5, 2}), (TPoint{2, 1}));
    EXPECT_EQ(removed.Adjust({6, 3}), (TPoint{4, 1}));
    EXPECT_EQ(removed.Adjust({6, 7}), (TPoint{6, 5}));
    EXPECT_EQ(removed.Adjust({5, 2}, true), (TPoint{5, 1}));
    const TEasyRangeMove inserted{{2, 1}, {2, 1}, {3, 4}};
    EXPECT_EQ(inserted.Adjust({1, 1}), (TPoint{1, 1}));
    EXPECT_EQ(inserted.Adjust({2, 1}), (TPoint{3, 4}));
    EXPECT_EQ(inserted.Adjust({7, 1}), (TPoint{8, 4}));
    EXPECT_EQ(inserted.Adjust({7, 2}), (TPoint{7, 5}));

    TEasyEditSource s;
    Load(s, "aaaa\nbbbb\ncccc\ndddd");
    s.SetBookmark(0, {3, 2});
    s.SetBookmark(1, {1, 3});
    s.DeleteBlock({2, 0}, {1, 2});
    EXPECT_EQ(MarkOf(s, 0), (TPoint{4, 0}));
    EXPECT_EQ(MarkOf(s, 1), (TPoint{1, 1}));
    s.MoveCaretTo(0, 1);
    s.InsertBlock("x\ny\n");
    EXPECT_EQ(MarkOf(s, 1), (TPoint{1, 3}));
}

}  // namespace
}  // namespace zorfa::text
