// The scheme compiler's quirks that decide which rule fires, and the
// scanner's precedence, on small schemes written here.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "base/Errors.h"
#include "syntax/EasyParser.h"

namespace {

using zorfa::TEasyParser;
using zorfa::TEasyTokenPiece;

struct Piece {
    std::string Text;
    std::string Token;
    bool operator==(const Piece&) const = default;
};

std::ostream& operator<<(std::ostream& os, const Piece& p) { return os << "{" << p.Text << "|" << p.Token << "}"; }

// Scans one line from `state`; returns the pieces by text and token name.
std::vector<Piece> scan(TEasyParser& parser, const std::string& line, int& state) {
    std::vector<Piece> pieces;
    state = parser.ScanLine(state, line, [&](const TEasyTokenPiece& p) {
        const int length = std::min<int>(p.Length, static_cast<int>(line.size()) - p.Start + 1);
        const std::string name = p.Token >= 0 && p.Token < static_cast<int>(parser.Tokens().size())
                                     ? parser.Tokens()[p.Token]
                                     : std::to_string(p.Token);
        pieces.push_back({line.substr(p.Start - 1, length), name});
    });
    return pieces;
}

std::vector<Piece> scan(TEasyParser& parser, const std::string& line) {
    int state = 0;
    return scan(parser, line, state);
}

const char* kHeader =
    "State=snormal\n"
    "Token=tnone\n"
    "Token=tident\n"
    "Token=tresword\n"
    "Token=tnumber\n";

TEST(SchemeCompiler, LineKindsAndDirectives) {
    TEasyParser parser;
    parser.SetRulesText(
        "  state  =  snormal  \n"        // a directive: the word compares trimmed and without case
        "STATE=s1,casesensitive\n"
        "State=s2, other\n"
        "token = tnone\n"
        "Token=tequal\n"
        "Delimiters = $%&  \n"
        "  //x snormal snormal tnone\n"  // not a comment, and no state named //x
        "snormal = snormal tequal\n"     // a rule whose pattern is "="
        "// snormal 'x' snormal tequal\n");
    ASSERT_EQ(parser.States().size(), 3u);
    EXPECT_EQ(parser.States()[0].Name, "snormal");
    EXPECT_FALSE(parser.States()[0].CaseSensitive);
    EXPECT_TRUE(parser.States()[1].CaseSensitive);
    EXPECT_FALSE(parser.States()[2].CaseSensitive);
    EXPECT_EQ(parser.States()[2].Name, "s2");
    EXPECT_EQ(parser.Tokens(), (std::vector<std::string>{"tnone", "tequal"}));
    EXPECT_EQ(parser.Delimiters(), "$%&");
    EXPECT_EQ(parser.IndexOfToken("TEQUAL"), 1);
    EXPECT_EQ(parser.IndexOfToken("nope"), -1);
    EXPECT_EQ(scan(parser, "a=x"), (std::vector<Piece>{{"a", "tnone"}, {"=", "tequal"}, {"x", "tnone"}}));
}

TEST(SchemeCompiler, FieldSplittingQuotesAndTrailingWords) {
    TEasyParser parser;
    parser.SetRulesText(std::string(kHeader) +
                                    "snormal   'end if'   snormal   tresword   trailing words\n"
                                    "snormal 'x'y snormal tresword\n"  // the character behind the quote goes too
                                    "snormal '' snormal tresword\n"
                                    "snormal ' snormal tresword\n"
                                    "snormal [0-9]+ snormal\n");  // three fields: dropped
    EXPECT_EQ(scan(parser, "end if x 12"),
              (std::vector<Piece>{{"end if", "tresword"}, {" ", "tnone"}, {"x", "tresword"}, {" ", "tnone"},
                                  {"12", "tnone"}}));
}

TEST(SchemeCompiler, LastKeywordDefinitionWins) {
    TEasyParser parser;
    parser.SetRulesText(std::string(kHeader) +
                                    "snormal 'begin' snormal tresword\n"
                                    "snormal 'BEGIN' snormal tident\n");
    EXPECT_EQ(scan(parser, "Begin"), (std::vector<Piece>{{"Begin", "tident"}}));
}

TEST(SchemeCompiler, RulesNamingLaterDeclarationsAreDropped) {
    const std::string rule = "slate 'x' snormal tresword\n";
    TEasyParser late;
    late.SetRulesText(std::string(kHeader) + "snormal 'go' slate tresword\n" + rule + "State=slate\n");
    int state = 0;
    scan(late, "go", state);
    EXPECT_EQ(state, 0) << "the rule into slate was dropped too";

    TEasyParser early;
    early.SetRulesText(std::string(kHeader) + "State=slate\nsnormal 'go' slate tresword\n" + rule);
    state = 0;
    EXPECT_EQ(scan(early, "go", state), (std::vector<Piece>{{"go", "tresword"}}));
    EXPECT_EQ(state, 1);
    EXPECT_EQ(scan(early, "x", state), (std::vector<Piece>{{"x", "tresword"}}));
    EXPECT_EQ(state, 0);
}

TEST(SchemeCompiler, StateObjectsTakeTheCaseFlagOfTheStateAskedFor) {
    const std::string head =
        "State=sfirst\nState=ssecond,CaseSensitive\nToken=tnone\nToken=tkey\n";
    // The first rule concerns state 1, so state 0 is made case sensitive too.
    TEasyParser quirk;
    quirk.SetRulesText(head + "ssecond 'x' ssecond tkey\nsfirst 'key' sfirst tkey\n");
    EXPECT_EQ(scan(quirk, "KEY"), (std::vector<Piece>{{"KEY", "tnone"}}));
    EXPECT_EQ(scan(quirk, "key"), (std::vector<Piece>{{"key", "tkey"}}));
    // Writing the rule for state 0 first keeps its own flag.
    TEasyParser plain;
    plain.SetRulesText(head + "sfirst 'key' sfirst tkey\nssecond 'x' ssecond tkey\n");
    EXPECT_EQ(scan(plain, "KEY"), (std::vector<Piece>{{"KEY", "tkey"}}));
}

TEST(SchemeCompiler, ExpressionsAreFiledUnderTheirFirstSignificantItem) {
    TEasyParser parser;
    parser.SetRulesText(std::string(kHeader) +
                                    "snormal [\\*]*) snormal tresword\n"
                                    "snormal ^{\\#}x snormal tnumber\n");
    // Filed under "*" only, so a bare ")" is never tried.
    EXPECT_EQ(scan(parser, "**)"), (std::vector<Piece>{{"**)", "tresword"}}));
    EXPECT_EQ(scan(parser, ")"), (std::vector<Piece>{{")", "tnone"}}));
    // The anchor and group marks are passed over: filed under "#".
    EXPECT_EQ(scan(parser, "#x#x"), (std::vector<Piece>{{"#x", "tnumber"}, {"#", "tnone"}, {"x", "tnone"}}));
}

TEST(SchemeCompiler, TablesOfACaseInsensitiveStateUseUpperCase) {
    TEasyParser parser;
    parser.SetRulesText(std::string(kHeader) +
                        "snormal . snormal tnumber\n"
                        "snormal [a-c]+ snormal tident\n"
                        "snormal $ snormal tresword\n");
    const auto& state = *parser.StateList()[0];
    ASSERT_TRUE(state.CharRules['B']);
    EXPECT_EQ(state.CharRules['B']->Expressions.size(), 2u);
    EXPECT_EQ(state.CharRules['b']->Expressions.size(), 1u) << "only the any-character rule";
    EXPECT_EQ(state.CharRules[0]->Expressions.size(), 1u);
    EXPECT_EQ(state.EolRules.size(), 1u);
    EXPECT_EQ(state.AllExpressions.size(), 2u) << "the end-of-line rule is owned apart";
    // Lower-case input is upper-cased before the table load, so [a-c] fires.
    EXPECT_EQ(scan(parser, "abcd"), (std::vector<Piece>{{"abc", "tident"}, {"d", "tresword"}}));
}

TEST(SchemeCompiler, ChangingOneLineRecompilesTheWholeScheme) {
    TEasyParser parser;
    parser.SetRulesText(std::string(kHeader) + "snormal 'if' snormal tresword\n");
    int told = 0;
    parser.AddNotifier(&told, [&](zorfa::TCustomEasyParser&) { ++told; });
    EXPECT_EQ(scan(parser, "if"), (std::vector<Piece>{{"if", "tresword"}}));
    parser.SetRuleLine(static_cast<int>(parser.Rules().size()) - 1, "snormal 'if' snormal tnumber");
    EXPECT_EQ(scan(parser, "if"), (std::vector<Piece>{{"if", "tnumber"}}));
    EXPECT_EQ(told, 0) << "the plain parser does not notify on its own";
    EXPECT_EQ(parser.RuleValue("token"), "tnone");
    EXPECT_EQ(parser.RuleValue("nothing"), "");
}

TEST(SchemeCompiler, BadMaskRaisesAndKeepsTheLinesBefore) {
    TEasyParser parser;
    try {
        parser.SetRulesText(std::string(kHeader) + "snormal 'a' snormal tresword\nsnormal x{ snormal tresword\n"
                            "snormal 'b' snormal tresword\n");
        FAIL() << "no exception";
    } catch (const zorfa::Exception& e) {
        EXPECT_STREQ(e.what(), "x{ is invalid mask at (3)");
    }
    EXPECT_EQ(scan(parser, "a b"), (std::vector<Piece>{{"a", "tresword"}, {" ", "tnone"}, {"b", "tnone"}}));
}

TEST(SchemeCompiler, NoStatesOrTokensMeansNoTokens) {
    TEasyParser parser;
    parser.SetRulesText("Token=tnone\nsnormal 'a' snormal tnone\n");
    int state = 0;
    EXPECT_EQ(scan(parser, "a b", state), (std::vector<Piece>{{"a b", "-1"}}));
}

TEST(Scanner, KeywordBeatsExpressionAndLaterExpressionBeatsEarlier) {
    TEasyParser parser;
    parser.SetRulesText(std::string(kHeader) +
                                    "snormal 'begin' snormal tresword\n"
                                    "snormal [a-z_][a-z_0-9]* snormal tident\n"
                                    "snormal [0-9]+ snormal tnumber\n"
                                    "snormal [0-9] snormal tident\n");
    EXPECT_EQ(scan(parser, "begin beginx"),
              (std::vector<Piece>{{"begin", "tresword"}, {" ", "tnone"}, {"beginx", "tident"}}));
    // The later, shorter expression wins over the longer earlier one.
    EXPECT_EQ(scan(parser, "42"), (std::vector<Piece>{{"4", "tident"}, {"2", "tident"}}));
}

TEST(Scanner, NegatedFirstExpressionsComeLast) {
    TEasyParser parser;
    parser.SetRulesText(std::string(kHeader) +
                                    "snormal !x snormal tnumber\n"
                                    "snormal a snormal tident\n");
    EXPECT_EQ(scan(parser, "ab"), (std::vector<Piece>{{"a", "tident"}, {"b", "tnumber"}}));
    EXPECT_EQ(scan(parser, "x"), (std::vector<Piece>{{"x", "tnone"}}));
}

TEST(Scanner, UnclaimedTextIsAWordPlusBlanksOrOneCharacter) {
    TEasyParser parser;
    parser.SetRulesText(std::string(kHeader) + "snormal 'end' snormal tresword\n");
    EXPECT_EQ(scan(parser, "ending  end;;"),
              (std::vector<Piece>{{"ending  ", "tnone"}, {"end", "tresword"}, {";", "tnone"}, {";", "tnone"}}));
}

TEST(Scanner, CaseOfKeywordsFollowsTheState) {
    TEasyParser ci;
    ci.SetRulesText(std::string(kHeader) + "snormal 'begin' snormal tresword\n");
    EXPECT_EQ(scan(ci, "BEGIN"), (std::vector<Piece>{{"BEGIN", "tresword"}}));
    TEasyParser cs;
    cs.SetRulesText(
        "State=snormal,CaseSensitive\nToken=tnone\nToken=tresword\nsnormal 'begin' snormal tresword\n");
    EXPECT_EQ(scan(cs, "BEGIN"), (std::vector<Piece>{{"BEGIN", "tnone"}}));
    EXPECT_EQ(scan(cs, "begin"), (std::vector<Piece>{{"begin", "tresword"}}));
}

TEST(Scanner, KeywordsWithBlanks) {
    TEasyParser parser;
    parser.SetRulesText(std::string(kHeader) +
                                    "snormal 'end' snormal tident\n"
                                    "snormal 'end if' snormal tresword\n");
    EXPECT_EQ(scan(parser, "end if;"), (std::vector<Piece>{{"end if", "tresword"}, {";", "tnone"}}));
    EXPECT_EQ(scan(parser, "end iffy"), (std::vector<Piece>{{"end", "tident"}, {" ", "tnone"}, {"iffy", "tnone"}}));
    // With exactly one character left behind the entry it is not looked at.
    EXPECT_EQ(scan(parser, "end ifx"), (std::vector<Piece>{{"end if", "tresword"}, {"x", "tnone"}}));
    EXPECT_EQ(scan(parser, "end"), (std::vector<Piece>{{"end", "tident"}}));
}

TEST(Scanner, LongestEntryWalkStopsAtTheFirstMismatch) {
    TEasyParser parser;
    parser.SetRulesText(std::string(kHeader) +
                        "snormal 'go' snormal tident\n"
                        "snormal 'go to' snormal tresword\n"
                        "snormal 'go to end' snormal tnumber\n"
                        "snormal 'go tx' snormal tident\n");
    EXPECT_EQ(scan(parser, "go to end;"), (std::vector<Piece>{{"go to end", "tnumber"}, {";", "tnone"}}));
    EXPECT_EQ(scan(parser, "go to x"), (std::vector<Piece>{{"go to", "tresword"}, {" ", "tnone"}, {"x", "tnone"}}));
}

TEST(Scanner, AnEntryWithBlanksCanHideItsFirstWord) {
    // The comparison with blanks does not follow the list's order around a
    // prefix: "end if" against "end x" compares less, "end" equal. Whether
    // "end" is found depends on where the binary search looks first.
    TEasyParser parser;
    parser.SetRulesText(std::string(kHeader) +
                        "snormal 'end' snormal tresword\n"
                        "snormal 'end if' snormal tresword\n"
                        "snormal 'endzz' snormal tresword\n");
    EXPECT_EQ(scan(parser, "end x"), (std::vector<Piece>{{"end ", "tnone"}, {"x", "tnone"}}));
    EXPECT_EQ(scan(parser, "end a"), (std::vector<Piece>{{"end", "tresword"}, {" ", "tnone"}, {"a", "tnone"}}));
}

const char* kCommentScheme =
    "State=snormal\nState=sstring\nState=scomment1\nState=scomment2\nState=sdead\n"
    "Token=tnone\nToken=tstring\nToken=tcomment\n"
    "snormal \\' sstring tstring\n"
    "sstring [^\\']* sstring tstring\n"
    "sstring \\' snormal tstring\n"
    "sstring $ snormal tstring\n"
    "snormal // scomment1 tcomment\n"
    "scomment1 [#1-#255]* snormal tcomment\n"
    "scomment1 $ snormal tcomment\n"
    "snormal \\{ scomment2 tcomment\n"
    "scomment2 [^\\}]* scomment2 tcomment\n"
    "scomment2 \\} snormal tcomment\n"
    "snormal 'die' sdead tnone\n";

TEST(Scanner, EndOfLineRulesAndDeadStates) {
    TEasyParser parser;
    parser.SetRulesText(kCommentScheme);
    int state = 0;
    EXPECT_EQ(scan(parser, "x 'abc", state), (std::vector<Piece>{{"x ", "tnone"}, {"'", "tstring"}, {"abc", "tstring"}}));
    EXPECT_EQ(state, 0) << "the string's end-of-line rule returns to snormal";
    state = 0;
    EXPECT_EQ(scan(parser, "x //", state), (std::vector<Piece>{{"x ", "tnone"}, {"//", "tcomment"}}));
    EXPECT_EQ(state, 0);
    state = 0;
    EXPECT_EQ(scan(parser, "a {b", state), (std::vector<Piece>{{"a ", "tnone"}, {"{", "tcomment"}, {"b", "tcomment"}}));
    EXPECT_EQ(state, 3);
    EXPECT_EQ(scan(parser, "", state), std::vector<Piece>{});
    EXPECT_EQ(state, 3) << "an empty line carries the state";
    EXPECT_EQ(scan(parser, "c} d", state), (std::vector<Piece>{{"c", "tcomment"}, {"}", "tcomment"}, {" ", "tnone"}, {"d", "tnone"}}));
    EXPECT_EQ(state, 0);
    // A declared state without rules has no object: the rest of the line is -1.
    state = 0;
    EXPECT_EQ(scan(parser, "die now", state), (std::vector<Piece>{{"die", "tnone"}, {" now", "-1"}}));
    EXPECT_EQ(state, 4);
    int position = 1;
    int bad = -1;
    EXPECT_EQ(parser.NextToken(bad, "abc", position), -1);
    EXPECT_EQ(position, 4);
    EXPECT_EQ(parser.LastState(), -1);
}

TEST(Scanner, SameBeginStateGivesSameTokensAndEndState) {
    TEasyParser parser;
    parser.SetRulesText(std::string(kCommentScheme) +
                                    "snormal [a-z_A-Z][a-z_A-Z0-9]* snormal tnone\n"
                                    "snormal 'begin' snormal tstring\n");
    std::mt19937 rng(7);
    const std::string alphabet = "ab {}'/ begin\t#*x";
    std::vector<std::string> lines;
    for (int i = 0; i < 300; ++i) {
        std::string line(rng() % 20, ' ');
        for (char& c : line) c = alphabet[rng() % alphabet.size()];
        lines.push_back(line);
    }
    std::vector<int> begin;
    std::vector<std::vector<Piece>> first;
    int state = 0;
    for (const std::string& line : lines) {
        begin.push_back(state);
        first.push_back(scan(parser, line, state));
    }
    // Again in reverse order, each line from its recorded begin state, with
    // other scans in between: nothing may leak from one call to the next.
    for (int i = static_cast<int>(lines.size()) - 1; i >= 0; --i) {
        int s = begin[i];
        EXPECT_EQ(scan(parser, lines[i], s), first[i]) << lines[i];
        EXPECT_EQ(s, i + 1 < static_cast<int>(lines.size()) ? begin[i + 1] : s);
    }
}

}  // namespace
