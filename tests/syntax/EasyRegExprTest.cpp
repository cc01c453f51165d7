// The mask dialect: what it matches, where it fails to compile, and that
// pathological masks stay fast.
#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>

#include "base/Errors.h"
#include "syntax/EasyRegExpr.h"

namespace {

using zorfa::TEasyRegExpr;
using zorfa::TEasyRegItemKind;

// Length matched at the first character, or nothing.
std::optional<int> matchAt(const std::string& mask, const std::string& text, bool caseSensitive = true,
                           bool atLineStart = true) {
    TEasyRegExpr e(mask, caseSensitive);
    int length = -1;
    if (!e.MatchAt(text.data(), text.data() + text.size(), atLineStart, length)) return std::nullopt;
    return length;
}

struct Found {
    int Position;
    int Length;
    bool operator==(const Found&) const = default;
};

std::optional<Found> search(const std::string& mask, const std::string& text, int start = 1, bool forward = true,
                            bool caseSensitive = true) {
    TEasyRegExpr e(mask, caseSensitive);
    int position = start;
    int length = -1;
    if (!e.Search(text, forward, position, length)) {
        EXPECT_EQ(position, 0);
        EXPECT_EQ(length, 0);
        return std::nullopt;
    }
    return Found{position, length};
}

std::string compileError(const std::string& mask) {
    try {
        TEasyRegExpr e(mask, true);
    } catch (const zorfa::Exception& ex) {
        return ex.what();
    }
    return "compiled";
}

TEST(EasyRegExpr, PostfixBarMeansOptionalNotAlternation) {
    EXPECT_EQ(matchAt("a|b", "ab"), 2);
    EXPECT_EQ(matchAt("a|b", "b"), 1);
    EXPECT_EQ(matchAt("a|b", "a"), std::nullopt);
    EXPECT_EQ(matchAt("a|b", "ac"), std::nullopt);
    // One pass only: the second "a" is left for what follows.
    EXPECT_EQ(matchAt("a|a", "aa"), 2);
    EXPECT_EQ(matchAt("a|", "aaa"), 1);
}

TEST(EasyRegExpr, GroupsRepeatAndBacktrack) {
    EXPECT_EQ(matchAt("{ab}+", "ababx"), 4);
    EXPECT_EQ(matchAt("{ab}+", "xab"), std::nullopt);
    EXPECT_EQ(matchAt("{ab}*c", "ababc"), 5);
    EXPECT_EQ(matchAt("{ab}*c", "c"), 1);
    // Greedy, then giving back: the star must leave an "a" for the literal.
    EXPECT_EQ(matchAt("a*ab", "aaab"), 4);
    EXPECT_EQ(matchAt("[a-z]*z", "abczdz!"), 6);
    EXPECT_EQ(matchAt("{a|b}+c", "abbbc"), 5);
    EXPECT_EQ(matchAt("a+", "aaa"), 3);
    EXPECT_EQ(matchAt("a+", "b"), std::nullopt);
    EXPECT_EQ(matchAt("x{ab}|y", "xaby"), 4);
    EXPECT_EQ(matchAt("x{ab}|y", "xy"), 2);
}

TEST(EasyRegExpr, ParenthesesAndQuestionMarkAreLiterals) {
    EXPECT_EQ(matchAt("(\\*", "(*x"), 2);
    EXPECT_EQ(matchAt("(a)?", "(a)?"), 4);
    EXPECT_EQ(matchAt("(a)?", "a"), std::nullopt);
    EXPECT_EQ(matchAt("\\*[^)]", "*x"), 2);
    EXPECT_EQ(matchAt("\\*[^)]", "*)"), std::nullopt);
    EXPECT_EQ(matchAt("[\\*]*)", "**)"), 3);
    EXPECT_EQ(matchAt("[\\*]*)", ")"), 1);
}

TEST(EasyRegExpr, SetsRangesCodesAndEscapes) {
    EXPECT_EQ(matchAt("[^\\}]*", "abc def"), 7);
    EXPECT_EQ(matchAt("[^\\}]*", "ab}c"), 2);
    EXPECT_EQ(matchAt("[#1-#255]*", "any thing\tat all"), 16);
    EXPECT_EQ(matchAt("[a-c-e]+", "abcdef"), 5);  // the low end stays: a to e
    EXPECT_EQ(matchAt("[z-ab]", "b"), 1) << "z is only the low end of an empty range";
    EXPECT_EQ(matchAt("[z-ab]", "z"), std::nullopt);
    EXPECT_EQ(matchAt("[^a]", "a"), std::nullopt);
    EXPECT_EQ(matchAt("[^a]", "b"), 1);
    // "\" escapes only the listed characters; before others it is a member.
    EXPECT_EQ(matchAt("[\\n]+", "\\nn"), 3);
    EXPECT_EQ(matchAt("[\\]]", "]"), 1);
    EXPECT_EQ(matchAt("[#65-#67]+", "ABCD"), 3);
    EXPECT_EQ(matchAt("#65#66", "AB"), 2);
    EXPECT_EQ(matchAt("#32+x", "   x"), 4);
    // "^" after the first place is a member.
    EXPECT_EQ(matchAt("[^\\>^\\']*", "ab^'"), 2);
    EXPECT_EQ(matchAt("[a^]+", "a^a"), 3);
    EXPECT_EQ(matchAt("[a-z_A-Z0-9;,@-.]*", "mov ax"), 3) << "the inverted range @-. adds nothing";
    EXPECT_EQ(compileError("[@-.]"), "[@-.] is invalid mask at (5)");
}

TEST(EasyRegExpr, TerminatorLetsOneConsumingItemSucceedInPlace) {
    EXPECT_EQ(matchAt("a.", "a"), 1);
    EXPECT_EQ(matchAt("a..", "a"), std::nullopt);
    EXPECT_EQ(matchAt("a[^x]", "a"), 1);
    EXPECT_EQ(matchAt("a$", "a"), 1);
    EXPECT_EQ(matchAt("a$", "ab"), std::nullopt);
    // A NUL byte ends what the mask sees.
    EXPECT_EQ(matchAt("ab$", std::string("ab\0cd", 5)), 2);
    EXPECT_EQ(matchAt(".*", std::string("ab\0cd", 5)), 2);
}

TEST(EasyRegExpr, CaseInsensitiveFoldsAtCompileAndMatchTime) {
    EXPECT_EQ(matchAt("[a-z]+", "abcXYZ1", false), 6);
    EXPECT_EQ(matchAt("begin", "BeGiN", false), 5);
    EXPECT_EQ(matchAt("begin", "BeGiN", true), std::nullopt);
    TEasyRegExpr set("[a-c]", false);
    const auto& item = set.Items()[0];
    EXPECT_EQ(item.Kind, TEasyRegItemKind::Set);
    EXPECT_TRUE(item.InSet('B'));
    EXPECT_FALSE(item.InSet('b')) << "a case-insensitive set holds upper case only";
    // The range's high end is folded too, so [A-z] holds A..Z only.
    EXPECT_EQ(matchAt("[A-z]", "_", false), std::nullopt);
    EXPECT_EQ(matchAt("[A-z]", "_", true), 1);
}

TEST(EasyRegExpr, NegationTakesOneCharacterOrFails) {
    EXPECT_EQ(matchAt("!a", "b"), 1);
    EXPECT_EQ(matchAt("!a", "a"), std::nullopt);
    EXPECT_EQ(matchAt("x!a", "xb"), 2);
    EXPECT_EQ(matchAt("x!ay", "xay"), std::nullopt) << "a negated item that matched fails the sequence";
    EXPECT_EQ(matchAt("!{ab}", "ab"), std::nullopt);
    EXPECT_EQ(matchAt("!{ab}", "xb"), 1);
    // "!" marks exactly the next item: here only "a".
    TEasyRegExpr e("!ab", true);
    EXPECT_TRUE(e.Items()[0].Negated);
    EXPECT_FALSE(e.Items()[1].Negated);
    // In !{ab}c the mark reaches the item behind the closing brace.
    TEasyRegExpr g("!{ab}c", true);
    ASSERT_EQ(g.Items().size(), 6u);
    for (int i = 0; i < 5; ++i) EXPECT_TRUE(g.Items()[i].Negated) << i;
    EXPECT_FALSE(g.Items()[5].Negated);
}

TEST(EasyRegExpr, AnchorsAndFirstItem) {
    EXPECT_EQ(matchAt("^abc", "abc", true, true), 3);
    EXPECT_EQ(matchAt("^abc", "abc", true, false), std::nullopt);
    TEasyRegExpr e("^{[\\*]}*)", true);
    ASSERT_NE(e.FirstItem(), nullptr);
    EXPECT_EQ(e.FirstItem()->Kind, TEasyRegItemKind::Set);
    TEasyRegExpr anchors("^$", true);
    EXPECT_EQ(anchors.FirstItem(), nullptr);
    TEasyRegExpr escaped("\\{", true);
    EXPECT_EQ(escaped.FirstItem()->Kind, TEasyRegItemKind::EscapeMark);
    EXPECT_EQ(escaped.FirstItem()->Ch, '{');
}

TEST(EasyRegExpr, CompileErrorsNameMaskAndPosition) {
    EXPECT_EQ(compileError("a{"), "a{ is invalid mask at (3)");
    EXPECT_EQ(compileError("ab}"), "ab} is invalid mask at (4)");
    EXPECT_EQ(compileError("ab\\"), "ab\\ is invalid mask at (3)");
    EXPECT_EQ(compileError("a!"), "a! is invalid mask at (2)");
    EXPECT_EQ(compileError("#x"), "#x is invalid mask at (2)");
        EXPECT_EQ(compileError("[-a]"), "[-a] is invalid mask at (2)");
    EXPECT_EQ(compileError("[abc"), "[abc is invalid mask at (5)");
    EXPECT_EQ(compileError("x[]"), "x[] is invalid mask at (3)");
    EXPECT_EQ(compileError("[z-a]"), "[z-a] is invalid mask at (5)");
    EXPECT_EQ(compileError("*a"), "*a is invalid mask at (1)");
    EXPECT_EQ(compileError("a**"), "a** is invalid mask at (3)");
    EXPECT_EQ(compileError("^+"), "^+ is invalid mask at (2)");
    EXPECT_EQ(compileError("a$|"), "a$| is invalid mask at (3)");
    EXPECT_EQ(compileError("}{"), "compiled") << "balanced in the end";
    EXPECT_EQ(compileError("{}*"), "compiled");
}

TEST(EasyRegExpr, SearchForwardAndBackward) {
    EXPECT_EQ(search("b+", "aabbbc"), (Found{3, 3}));
    EXPECT_EQ(search("b+", "aabbbc", 5), (Found{5, 1}));
    EXPECT_EQ(search("x", "aabbbc"), std::nullopt);
    EXPECT_EQ(search("ab", "ab ab ab", 8, false), (Found{7, 2}));
    EXPECT_EQ(search("ab", "ab ab ab", 6, false), (Found{4, 2}));
    EXPECT_EQ(search("ab", "ab ab ab", 3, false), (Found{1, 2}));
    EXPECT_EQ(search("ab", "xxxx", 4, false), std::nullopt);
    // "^" fires only at the first character of the text.
    EXPECT_EQ(search("^a", "aa"), (Found{1, 1}));
    EXPECT_EQ(search("^a", "ba"), std::nullopt);
    // "$" alone is answered without matching.
    EXPECT_EQ(search("$", "abc"), (Found{4, 0}));
    EXPECT_EQ(search("$", "abc", 4, false), (Found{4, 0}));
    EXPECT_EQ(search("b$", "abab"), (Found{4, 1}));
    EXPECT_EQ(search("^", ""), (Found{1, 0}));
    EXPECT_EQ(search("a", ""), std::nullopt);
    EXPECT_EQ(search("B", "abc", 1, true, false), (Found{2, 1}));
}

TEST(EasyRegExpr, PathologicalMasksStayFast) {
    const auto start = std::chrono::steady_clock::now();
    const std::string as(400, 'a');
    EXPECT_EQ(matchAt("a*a*a*a*a*a*a*a*a*a*a*a*b", as), std::nullopt);
    EXPECT_EQ(matchAt("{a*}*b", as), std::nullopt);
    EXPECT_EQ(matchAt("{{a|}*}*b", as), std::nullopt);
    EXPECT_EQ(matchAt("{a|a|a|a|a|a|a|a|a|a|a|a|a|a|a|a|}*b", as), std::nullopt);
    EXPECT_EQ(matchAt("a*a*a*a*a*a*a*a*a*a*a*a*", as), 400);
    EXPECT_EQ(search("{a*a*a*a*a*a*}*b", as + "ab"), (Found{1, 402}));
    EXPECT_EQ(search("a*a*a*a*a*a*a*a*c", as), std::nullopt);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    EXPECT_LT(seconds, 5.0);
}

TEST(EasyRegExpr, SimpleRepeatAgreesWithTheGeneralLoop) {
    // "{[ab]}*" runs the fast single-test loop; "{[ab]x|}*" with an optional
    // x the general one. On texts without x both must give the same lengths,
    // including the backtracking into the repeat.
    for (const std::string text : {"", "a", "ab", "abab", "abba!", "ba", "bbbbbbbb"}) {
        for (const std::string tail : {"", "b", "ab", "bb", "$", "."}) {
            auto fast = matchAt("{[ab]}*" + tail, text);
            auto general = matchAt("{[ab]x|}*" + tail, text);
            EXPECT_EQ(fast, general) << text << " / " << tail;
        }
    }
}

}  // namespace
