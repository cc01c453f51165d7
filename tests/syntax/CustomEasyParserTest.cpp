// The parser contract on its own: ScanLine drives NextToken as the edit
// source does, the process-wide registry follows construction and
// destruction, and notifiers can be removed.
#include <gtest/gtest.h>

#include "syntax/CustomEasyParser.h"
#include "syntax/EasyRegExpr.h"

namespace {

using namespace zorfa;

class OneTokenParser : public TCustomEasyParser {
public:
    int NextToken(int& state, std::string_view line, int& position) override {
        FLastState = state;
        position = static_cast<int>(line.size()) + 1;
        return 7;
    }
    void GetTokenStyle(int, TColor& color, TFontStyles& style) override {
        color = -1;
        style = 0;
    }
    TColor GetTokenBackground(int) override { return -1; }
    TColor GetDefaultBackground() override { return -1; }
    int GetTokenCount() override { return 0; }
};

TEST(CustomEasyParser, ScanLineReportsPiecesAndRegistryTracksParsers) {
    size_t before = TCustomEasyParser::AllParsers().size();
    {
        OneTokenParser parser;
        EXPECT_EQ(TCustomEasyParser::AllParsers().size(), before + 1);
        std::vector<TEasyTokenPiece> pieces;
        int end = parser.ScanLine(3, "abc", [&](const TEasyTokenPiece& p) { pieces.push_back(p); });
        EXPECT_EQ(end, 3);
        ASSERT_EQ(pieces.size(), 1u);
        EXPECT_EQ(pieces[0].Token, 7);
        EXPECT_EQ(pieces[0].Start, 1);
        EXPECT_EQ(pieces[0].Length, 3);
        EXPECT_EQ(parser.ScanLine(2, "", [&](const TEasyTokenPiece&) { FAIL(); }), 2);

        int told = 0;
        parser.AddNotifier(&told, [&](TCustomEasyParser& sender) {
            EXPECT_EQ(&sender, &parser);
            ++told;
        });
        parser.Changed();
        parser.RemoveNotifier(&told);
        parser.Changed();
        EXPECT_EQ(told, 1);
    }
    EXPECT_EQ(TCustomEasyParser::AllParsers().size(), before);
}

}  // namespace
