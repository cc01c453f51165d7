// The shipped schemes: every keyword rule fires, and code with strings,
// comments over several lines, numbers and directives scans as intended.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "syntax/EasyParser.h"

namespace {

using zorfa::TEasyParser;
using zorfa::TEasyTokenPiece;

std::string readScheme(const std::string& name) {
    const char* source = std::getenv("ZORFA_SOURCE_DIR");
    const std::string path = std::string(source ? source : ".") + "/data/Syntax Schemes/" + name;
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in.good()) << path;
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// "text:token" for every piece of the lines, scanned with the state carried.
std::vector<std::string> scan(TEasyParser& parser, const std::vector<std::string>& lines) {
    std::vector<std::string> pieces;
    int state = 0;
    for (const std::string& line : lines) {
        state = parser.ScanLine(state, line, [&](const TEasyTokenPiece& p) {
            pieces.push_back(line.substr(p.Start - 1, p.Length) + ":" +
                             (p.Token >= 0 ? parser.Tokens()[p.Token] : std::string("-1")));
        });
        pieces.push_back("|" + parser.States()[state].Name);
    }
    return pieces;
}

// Each keyword rule "snormal 'word' snormal token" scans as one piece of
// that token, also when followed by a blank and a word.
void expectEveryKeywordFires(TEasyParser& parser) {
    int checked = 0;
    for (const std::string& rule : parser.Rules()) {
        if (rule.rfind("snormal '", 0) != 0) continue;
        const size_t close = rule.find('\'', 9);
        const std::string word = rule.substr(9, close - 9);
        const std::string token = rule.substr(rule.rfind(' ') + 1);
        auto pieces = scan(parser, {word + " x"});
        ASSERT_GE(pieces.size(), 1u);
        EXPECT_EQ(pieces[0], word + ":" + token) << rule;
        ++checked;
    }
    EXPECT_GT(checked, 100);
}

TEST(SchemeFiles, CppScheme) {
    TEasyParser parser;
    parser.SetRulesText(readScheme("C++.xs"));
    EXPECT_EQ(parser.Rules()[0], "// Language: C++ (Builder)");
    EXPECT_EQ(parser.RuleValue("CollapseStartAtPriorLine"), "{");
    EXPECT_EQ(parser.RuleValue("CollapseEnd"), "}");
    expectEveryKeywordFires(parser);
    EXPECT_EQ(scan(parser, {"#include <a.h> // x", "int n = 0x1F + 2.5e-3f; /* one", "two */ x\t'\\''"}),
              (std::vector<std::string>{"#include:tdirective", " <a.h> :tdirective", "//:tcomment", " x:tcomment",
                                        "|snormal", "int:tresword", " :tnone", "n:tident", " :tnone", "=:tnone",
                                        " :tnone", "0x1F:tinteger", " :tnone", "+:tnone", " :tnone",
                                        "2.5e-3f:tfloat", ";:tnone", " :tnone", "/*:tcomment", " one:tcomment",
                                        "|scomment", "two :tcomment", "*/:tcomment", " :tnone", "x:tident",
                                        "\t:tnone", "':tstring", "\\':tstring", "':tstring", "|snormal"}));
    EXPECT_EQ(scan(parser, {"  s = \"a\\\"b", "{", "}"}),
              (std::vector<std::string>{"  :tnone", "s:tident", " :tnone", "=:tnone", " :tnone", "\":tstring",
                                        "a:tstring", "\\\":tstring", "b:tstring", "|snormal", "{:tnone", "|snormal",
                                        "}:tnone", "|snormal"}));
    // A directive continued by a backslash at the end of its line.
    EXPECT_EQ(scan(parser, {"#define X \\", "  y", "z"}),
              (std::vector<std::string>{"#define:tdirective", " X :tdirective", "\\:tdirective", "|sdircontinued",
                                        "  y:tdirective", "|snormal", "z:tident", "|snormal"}));
}

TEST(SchemeFiles, SqlScheme) {
    TEasyParser parser;
    parser.SetRulesText(readScheme("SQL.xs"));
    EXPECT_EQ(parser.Rules()[0], "// Language: SQL");
    EXPECT_EQ(parser.RuleValue("CollapseStartAtCurrentLine"), "begin,case");
    EXPECT_EQ(parser.RuleValue("CollapseEnd"), "end");
    expectEveryKeywordFires(parser);
    EXPECT_EQ(scan(parser, {"SELECT name, COUNT(*) FROM [my table] -- all", "GROUP BY x", "WHERE a IS NOT NULL ORDER BY 1.5",
                            "AND b = 'it''s", "still' /* c", "*/ END"}),
              (std::vector<std::string>{
                  "SELECT:tresword", " :tnone", "name:tident", ",:tnone", " :tnone", "COUNT:tresword1", "(:tnone",
                  "*:tnone", "):tnone", " :tnone", "FROM:tresword", " :tnone", "[my table]:tident", " :tnone",
                  "--:tcomment", " all:tcomment", "|snormal", "GROUP BY:tresword", " :tnone", "x:tident", "|snormal", "WHERE:tresword", " :tnone", "a:tident", " :tnone",
                  "IS:tresword", " :tnone", "NOT:tresword", " :tnone", "NULL:tresword", " :tnone", "ORDER:tresword", " :tnone", "BY:tresword", " :tnone",
                  "1.5:tfloat", "|snormal", "AND:tresword", " :tnone", "b:tident", " :tnone", "=:tnone", " :tnone",
                  "':tstring", "it:tstring", "'':tstring", "s:tstring", "|sstring", "still:tstring", "':tstring",
                  " :tnone", "/*:tcomment", " c:tcomment", "|scomment", "*/:tcomment", " :tnone", "END:tresword",
                  "|snormal"}));
}

}  // namespace
