#include <gtest/gtest.h>

#include "EditSourceTestSupport.h"

namespace zorfa::text {
namespace {

using testing::CommentParser;
using testing::Load;
using testing::RawLines;
using testing::Type;

TEST(EditSourceParse, OnlyAChangedEndStateWidensTheRepaint) {
    TEasyEditSource s;
    CommentParser parser;
    Load(s, "a\nb\nc\nd");
    s.SetParser(&parser);
    s.ParseTo(3);
    s.MoveCaretTo(1, 1);
    Type(s, "x");
    EXPECT_EQ(s.ChangedFirstLine(), 1);
    EXPECT_EQ(s.ChangedLastLine(), 1);
    Type(s, "{");
    EXPECT_EQ(s.ChangedFirstLine(), 1);
    EXPECT_EQ(s.ChangedLastLine(), MaxInt);
    s.SetParser(nullptr);
}

TEST(EditSourceParse, ParserNotificationDropsTheCachesAndADestroyedParserIsLetGo) {
    TEasyEditSource s;
    Load(s, "{a\nb}\nc");
    {
        CommentParser parser;
        s.SetParser(&parser);
        s.ParseTo(2);
        EXPECT_EQ(s.ParsedTo(), 3);
        EXPECT_EQ(s.Lines().GetCharStyle(1, 1), 1);
        parser.Changed();  // a new scheme
        EXPECT_EQ(s.ParsedTo(), 0);
        EXPECT_FALSE(s.Lines().Record(1)->Flags & lfParsed);
    }
    s.ParseTo(2);  // must not touch the destroyed parser
    EXPECT_EQ(s.Parser(), nullptr);
    EXPECT_EQ(s.Lines().GetCharStyle(1, 1), kNoStyle);
}

TEST(EditSourceParse, ADestroyedParserLeavesTheTextUnstyled) {
    TEasyEditSource s;
    Load(s, "{a\nb}\nc");
    {
        CommentParser parser;
        s.SetParser(&parser);
        s.ParseTo(2);
        EXPECT_EQ(s.Lines().GetCharStyle(1, 1), 1);
    }  // gone without a word beforehand
    EXPECT_EQ(s.Parser(), nullptr);
    EXPECT_EQ(s.ParsedTo(), 0);
    s.ParseTo(2);
    EXPECT_EQ(s.Lines().GetCharStyle(1, 1), kNoStyle);
}

TEST(EditSourceParse, DelimitersTakeTheParsersExtraCharacters) {
    class DashParser : public CommentParser {
    public:
        DashParser() { FDelimiters = "-"; }
    } parser;
    TEasyEditSource s;
    Load(s, "ab-cd");
    EXPECT_EQ(s.WordAt({0, 0}, false), "ab-cd");
    s.SetParser(&parser);
    EXPECT_EQ(s.WordAt({0, 0}, false), "ab");
    s.SetParser(nullptr);
    EXPECT_EQ(s.WordAt({0, 0}, false), "ab-cd");
}

TEST(EditSourceParse, LiveSpellMarksWordsThatFailExceptTheOneBeingTyped) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srLiveSpell);
    s.OnWordSpell = [](TCustomEasyEditSource&, std::string_view word) { return word != "teh"; };
    Load(s, "fix teh typo, (teh)\n\n");
    s.ParseTo(0);
    EXPECT_EQ(s.Lines().GetCharStyle(0, 1), kNoStyle);
    EXPECT_EQ(s.Lines().GetCharStyle(0, 5), 65534);
    EXPECT_EQ(s.Lines().GetCharStyle(0, 8), kNoStyle);
    EXPECT_EQ(s.Lines().GetCharStyle(0, 17), 65534);  // punctuation trimmed for the check
    s.MoveCaretTo(0, 1);
    s.InsertText("teh");
    s.MoveCaretTo(3, 1);
    s.InsertText(" ");
    // The caret stands at the end of the word just typed: left alone.
    EXPECT_EQ(s.Lines().GetCharStyle(1, 1), kNoStyle);
    s.MoveCaretTo(0, 0);
    s.ParseLines(1, 1, true);
    EXPECT_EQ(s.Lines().GetCharStyle(1, 1), 65534);

    // With a parser only the spell styles are checked, and a code becomes
    // its misspelled form.
    class StringParser : public CommentParser {
    public:
        int IndexOfToken(std::string_view name) const override { return name == "tcomment" ? 1 : -1; }
    } parser;
    s.SetParser(&parser);
    Load(s, "teh {teh}");
    s.ParseTo(0);
    EXPECT_EQ(s.Lines().GetCharStyle(0, 1), 0);          // plain text: not a spell style
    EXPECT_EQ(s.Lines().GetCharStyle(0, 6), 1 + 32767);  // in a comment
    s.SpellStyles = {{"tstring", -1}};
    s.SpellStylesChanged();
    s.ParseTo(0);
    EXPECT_EQ(s.Lines().GetCharStyle(0, 6), 1);  // comments are no longer checked
    s.SetParser(nullptr);
}

TEST(EditSourceParse, AbsoluteMovesOpenFoldsRelativeMovesDoNot) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srAllowHiddenLines);
    Load(s, "head\n a\n b\ntail");
    for (int i = 1; i <= 2; ++i) {
        s.Lines().Record(i)->FoldLevel = 1;
        s.Lines().SetFoldChild(i, false);
    }
    s.Lines().SetCollapsed(0, true);
    ASSERT_FALSE(s.Lines().IsLineVisible(1));
    s.MoveCaretBy(0, 1);
    EXPECT_FALSE(s.Lines().IsLineVisible(1));
    s.MoveCaretTo(0, 0);
    s.MoveCaretTo(1, 2);
    EXPECT_TRUE(s.Lines().IsLineVisible(2));
    EXPECT_TRUE(s.Lines().IsExpanded(0));
}

TEST(EditSourceParse, BlockOperationsCarryHiddenLinesWithTheirText) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srAllowHiddenLines);
    std::string text;
    for (int i = 0; i < 100; ++i) text += "l" + std::to_string(i) + "\n";
    Load(s, text);
    s.Lines().SetHidden(80, true);
    s.DeleteBlock({0, 10}, {0, 40});
    EXPECT_TRUE(s.Lines().Record(50)->Hidden);
    EXPECT_FALSE(s.Lines().IsLineVisible(50));
    EXPECT_EQ(s.Lines().HiddenCount(), 1);
    s.Undo();
    EXPECT_FALSE(s.Lines().IsLineVisible(80));
    EXPECT_EQ(s.Lines().HiddenCount(), 1);
}

TEST(EditSourceParse, TurningBeyondEofOffBringsTheCaretBack) {
    TEasyEditSource s;
    s.SetOptions(s.Options() + srBeyondEof);
    Load(s, "abc\nde");
    s.MoveCaretTo(0, 9);
    EXPECT_EQ(s.Caret(), (TPoint{0, 9}));
    s.SetOptions(s.Options() - srBeyondEof);
    EXPECT_EQ(s.Caret(), (TPoint{2, 1}));
}

TEST(EditSourceParse, AWrappedViewMayRewriteAMovePastTheLineEnd) {
    class WrapView : public IEasySourceListener {
    public:
        void SourceChanged(TCustomEasyEditSource&, TEasySourceNotify* n) override {
            if (n && n->Kind == snLineEnd) {
                n->X = -n->X;  // stands for "to the next row"
                n->Y = 1;
            }
        }
    } view;
    TEasyEditSource s;
    Load(s, "ab\ncd");
    s.Attach(&view);
    s.MoveCaretTo(2, 0);
    s.MoveCaretBy(1, 0);
    EXPECT_EQ(s.Caret(), (TPoint{1, 1}));
}

TEST(EditSourceParse, JoinNeedsTheCaretAtTheEndOfItsLine) {
    TEasyEditSource s;
    Load(s, "abc\ndef");
    s.MoveCaretTo(2, 0);
    s.JoinLines();
    EXPECT_EQ(RawLines(s).size(), 2u);
    s.MoveCaretTo(5, 0);
    s.JoinLines();
    EXPECT_EQ(RawLines(s), std::vector<std::string>{"abc  def"});
    s.Undo();
    // The fill stays as trailing blanks until the caret leaves the line.
    EXPECT_EQ(RawLines(s), (std::vector<std::string>{"abc  ", "def"}));
    s.MoveCaretBy(0, 1);
    EXPECT_EQ(RawLines(s), (std::vector<std::string>{"abc", "def"}));
}

}  // namespace
}  // namespace zorfa::text
