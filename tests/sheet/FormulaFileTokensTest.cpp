// Tokens as a file stores them: absolute 16-bit coordinates with relative
// bits, raised cell codes, names one-based.
#include "FormulaTestBook.h"

#include "sheet/Tokens.h"

namespace zorfa::sheet::test {
namespace {

class FormulaFileTokensTest : public FormulaTest {
protected:
    std::string fileTokens(const std::string& formula, const std::string& cell) {
        const CompileResult r = book.formulas().compileText(formula, 0, at(cell));
        EXPECT_TRUE(r.ok()) << formula;
        return token::toFileTokens(r.tokens, at(cell).column, at(cell).row);
    }
    static std::string words(std::initializer_list<std::uint16_t> values) {
        std::string out;
        for (auto v : values) token::append(out, v);
        return out;
    }
};

TEST_F(FormulaFileTokensTest, CellsBecomeAbsoluteWithRelativeBits) {
    // A1 from C3 is stored as offsets (-2, -2) and written as row 0, column 0.
    EXPECT_EQ(fileTokens("=A1", "C3"), "\x44" + words({0, 0xC000}));
    EXPECT_EQ(fileTokens("=$A$1", "C3"), "\x44" + words({0, 0}));
    EXPECT_EQ(fileTokens("=$B7", "C3"), "\x44" + words({6, 0x8001}));
    EXPECT_EQ(fileTokens("=B$7", "C3"), "\x44" + words({6, 0x4001}));
}

TEST_F(FormulaFileTokensTest, AreasSheetsAndNames) {
    EXPECT_EQ(fileTokens("=SUM(B2:$C$4)", "A1"),
              "\x25" + words({1, 3, 0xC001, 2}) + std::string("\x42\x01", 2) + words({4}));
    EXPECT_EQ(fileTokens("=Sheet2!B2", "D9"), "\x5A" + words({1, 1, 0xC001}));
    EXPECT_EQ(fileTokens("=Sheet2!A1:B2", "D9"), "\x3B" + words({1, 0, 1, 0xC000, 0xC001}));
    book.formulas().addName({"Total", 0, {0, 0, 0, 0}});
    EXPECT_EQ(fileTokens("=Total", "A1"), "\x43" + words({1, 0}));
}

TEST_F(FormulaFileTokensTest, OtherTokensAreCopied) {
    const CompileResult r = book.formulas().compileText("=1+\"a\"&TRUE", 0, {});
    ASSERT_TRUE(r.ok());
    EXPECT_EQ(token::toFileTokens(r.tokens, 0, 0), r.tokens);
}

}  // namespace
}  // namespace zorfa::sheet::test
