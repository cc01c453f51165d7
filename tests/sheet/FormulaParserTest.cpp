// Formula text to tokens and back: normalising, the reduction's precedence,
// numbers, strings, references in both styles, names, sheets, separators and
// every message of the compiler.
#include "FormulaTestBook.h"

#include "sheet/Tokens.h"

namespace zorfa::sheet::test {
namespace {

class FormulaParserTest : public FormulaTest {};

TEST_F(FormulaParserTest, TextIsNormalisedFromTheTokens) {
    EXPECT_EQ(compile("=  sum(a1:a3)"), "=SUM(A1:A3)");
    EXPECT_EQ(compile("  == = 1 + 2  "), "=1+2");
    EXPECT_EQ(compile("=Sum( A1 , b$2 , $C$3 )"), "=SUM(A1,B$2,$C$3)");
    EXPECT_EQ(compile("=true"), "=TRUE");
    EXPECT_EQ(compile("=1.50"), "=1.5");
    EXPECT_EQ(compile("=pi()"), "=PI()");
}

TEST_F(FormulaParserTest, TokensAreThePostfixByteForm) {
    // =1+A1 in B2: number, cell with offsets (-1, -1), plus.
    const CompileResult r = book.formulas().compileText("=1+A1", 0, at("B2"));
    ASSERT_TRUE(r.ok());
    std::string expected;
    token::appendNumber(expected, 1.0);
    expected += '\x24';
    expected += std::string("\0\0", 2);
    token::append(expected, std::int32_t{-1});
    token::append(expected, std::int32_t{-1});
    expected += '\x03';
    EXPECT_EQ(r.tokens, expected);

    const CompileResult call = book.formulas().compileText("=SUM(1,2)", 0, {});
    ASSERT_TRUE(call.ok());
    ASSERT_EQ(call.tokens.size(), 9u + 9u + 4u);
    EXPECT_EQ(static_cast<unsigned char>(call.tokens[18]), 0x42);
    EXPECT_EQ(call.tokens[19], 2);  // argument count
    EXPECT_EQ(token::read<std::uint16_t>(call.tokens.data() + 20), 4);  // SUM
}

TEST_F(FormulaParserTest, PlusAndComparisonsTakeTheRightSideFirstTimesAndMinusGoLeftToRight) {
    EXPECT_EQ(eval("=2-3*4"), "-4");    // (2-3)*4
    EXPECT_EQ(eval("=2*3-4*5"), "10");  // ((2*3)-4)*5
    EXPECT_EQ(eval("=2+3*4"), "14");
    EXPECT_EQ(eval("=1-2-3"), "-4");
    EXPECT_EQ(eval("=2+3-4*5"), "-3");  // 2+((3-4)*5)
    EXPECT_EQ(eval("=8/2/2"), "2");
    EXPECT_EQ(eval("=2^3^2"), "64");    // (2^3)^2
    EXPECT_EQ(eval("=(2+3)*4"), "20");
    EXPECT_EQ(eval("=1+1=2"), "1");     // 1+(1=2)
    EXPECT_EQ(eval("=2=1+1"), "TRUE");
    EXPECT_EQ(eval("=0.1+0.2=0.3"), "0.1");
}

TEST_F(FormulaParserTest, UnaryMinusFollowsTheReduction) {
    EXPECT_EQ(eval("=-2^2"), "-4");  // -(2^2): the power binds first
    EXPECT_EQ(eval("=2^-1"), "0.5");
    EXPECT_EQ(eval("=2*-3"), "-6");
    EXPECT_EQ(eval("=6/-3"), "-2");
    EXPECT_EQ(eval("=2+-3"), "-1");
    EXPECT_EQ(eval("=-2*3"), "-6");
    EXPECT_EQ(eval("=+5"), "5");
    EXPECT_EQ(eval("=1<-1"), "FALSE");
    EXPECT_EQ(compile("=-(1+2)"), "=-(1+2)");
    EXPECT_EQ(compile("=+5"), "=5");
    // A minus after a minus has no operand on its left.
    EXPECT_EQ(compile("=2--3"), "!Error syntax in string expression");
    EXPECT_EQ(compile("=&\"a\""), "!Error syntax in string expression");
}

TEST_F(FormulaParserTest, NumbersWithExponents) {
    EXPECT_EQ(compile("=1E+3"), "=1000");
    EXPECT_EQ(compile("=1.5e-3"), "=0.0015");
    EXPECT_EQ(compile("=2E3*2"), "=2000*2");
    EXPECT_EQ(compile("=1E20"), "=1E20");
    EXPECT_EQ(compile("=A1E+3"), "!A1E - Unknown string expression | Error syntax in string expression");
}

TEST_F(FormulaParserTest, PercentMergesIntoItsOperand) {
    EXPECT_EQ(compile("=SUM(A1:A3)%"), "=SUM(A1:A3)%");
    EXPECT_EQ(eval("=50%"), "0.5");
    EXPECT_EQ(eval("=200%*3"), "6");
    EXPECT_EQ(compile("=%"), "!Error syntax in string expression");
}

TEST_F(FormulaParserTest, StringsKeepDoubledQuotes) {
    EXPECT_EQ(compile("=\"a\"\"b\"&\"c\""), "=\"a\"\"b\"&\"c\"");
    EXPECT_EQ(eval("=\"a\"\"b\"&\"c\""), "a\"bc");
    EXPECT_EQ(eval("=\"\"\"\""), "\"");
    EXPECT_EQ(eval("=\"x\"&1&TRUE"), "x1TRUE");
}

TEST_F(FormulaParserTest, ALiteralOfMoreThan255CharactersOverflowsItsCount) {
    const std::string body(300, 'a');
    EXPECT_EQ(eval("=\"" + body + "\""), std::string(300 - 256, 'a'));
    EXPECT_EQ(eval("=LEN(\"" + std::string(255, 'b') + "\")"), "255");
}

TEST_F(FormulaParserTest, MessagesOfTheCompiler) {
    EXPECT_EQ(compile("=(1"), "!Error - symbol ')' expected!");
    EXPECT_EQ(compile("=1)"), "!Error - symbol ')' expected!");
    EXPECT_EQ(compile("=\"abc"), "!Error - unterminated string!");
    EXPECT_EQ(compile("=FOO(1)"), "!Error syntax in string expression");
    EXPECT_EQ(compile("=1+"), "!Error syntax in string expression");
    EXPECT_EQ(compile("=1,2"), "!Error syntax in string expression");
    EXPECT_EQ(compile("=(1,2)"), "!Error syntax in string expression");
    EXPECT_EQ(compile("=()"), "!Error syntax in string expression");
    EXPECT_EQ(compile("=A1 : B1"), "!Error syntax in string expression");
    EXPECT_EQ(compile("=abc"), "!abc - Unknown string expression | Error syntax in string expression");
    EXPECT_EQ(compile("="), "!Error syntax in string expression");
    // The argument cut counts parentheses plainly, so a ")" in a string
    // argument ends it early.
    EXPECT_EQ(compile("=LEN(\")\")"), "!Error - unterminated string!");
}

TEST_F(FormulaParserTest, BrokenTokensCannotBePrinted) {
    auto message = [&](const std::string& tokens) {
        try {
            book.formulas().tokensText(tokens, {});
        } catch (const ECalculationError& e) {
            return std::string(e.what());
        }
        return std::string("printed");
    };
    std::string one;
    token::appendNumber(one, 1);
    EXPECT_EQ(message(one + '\x03'), "Missing tokens");
    EXPECT_EQ(message(one + '\x13' + '\x13'), "printed");
    EXPECT_EQ(message('\x13' + one), "Missing tokens");
    EXPECT_EQ(message(one + one), "Error constructing formula. Parsed expression error offset at");
    EXPECT_EQ(message(std::string(1, '\x24')), "Error constructing formula. Parsed expression error offset at");
    EXPECT_EQ(message(one + std::string("\x42\x02\x04\x00", 4)), "Missing tokens");

    TcxTokensStack stack;
    try {
        stack.pop();
        ADD_FAILURE() << "pop on an empty stack";
    } catch (const ECalculationError& e) {
        EXPECT_STREQ(e.what(), "Error syntax in string expression");
    }
}

TEST_F(FormulaParserTest, FailedTextStaysPlainTextButUnknownNamesShowNameError) {
    set("A1", "=(1");
    EXPECT_FALSE(isFormula("A1"));
    EXPECT_EQ(text("A1"), "=(1");
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0], "Error - symbol ')' expected!");

    set("A2", "=FOO(1)");
    EXPECT_TRUE(isFormula("A2"));
    EXPECT_EQ(text("A2"), "=FOO(1)");
    EXPECT_EQ(value("A2"), "#NAME!");

    // File reading is silent: nothing is shown and everything stays text.
    messages.clear();
    book.formulas().setSilent(true);
    set("A3", "=FOO(1)");
    EXPECT_FALSE(isFormula("A3"));
    EXPECT_TRUE(messages.empty());
}

TEST_F(FormulaParserTest, EnteredFormulasTakeTheRebuiltText) {
    set("A1", "=  sum(b1:b3)");
    EXPECT_TRUE(isFormula("A1"));
    EXPECT_EQ(text("A1"), "=SUM(B1:B3)");
}

TEST_F(FormulaParserTest, R1C1ReferencesOnlyInR1C1Style) {
    EXPECT_EQ(compile("=R[-1]C", "B5"), "!R[-1]C - Unknown string expression | Error syntax in string expression");
    book.formulas().setR1C1(true);
    EXPECT_EQ(compile("=R[-1]C", "B5"), "=R[-1]C");
    EXPECT_EQ(compile("=r1c1+RC[2]+R[-1]C[-1]+R3C", "B5"), "=R1C1+RC[2]+R[-1]C[-1]+R3C");
    EXPECT_EQ(compile("=SUM(R1C1:R[2]C[1])", "B5"), "=SUM(R1C1:R[2]C[1])");
    EXPECT_EQ(compile("=A1", "B5"), "!A1 - Unknown string expression | Error syntax in string expression");
    const CompileResult r = book.formulas().compileText("=R[-1]C+R1C1", 0, at("B5"));
    ASSERT_TRUE(r.ok());
    book.formulas().setR1C1(false);
    EXPECT_EQ(book.formulas().tokensText(r.tokens, at("B5")), "=B4+$A$1");
    // And back: A1 text compiles to the same tokens as its R1C1 text.
    EXPECT_EQ(book.formulas().compileText("=B4+$A$1", 0, at("B5")).tokens, r.tokens);
}

TEST_F(FormulaParserTest, SheetReferencesAndQuotedCaptions) {
    book.addSheet("My Sheet");
    EXPECT_EQ(compile("=Sheet2!B2+$A$1"), "=Sheet2!B2+$A$1");
    EXPECT_EQ(compile("=sheet2!a1:b2"), "=Sheet2!A1:B2");
    EXPECT_EQ(compile("='My Sheet'!A1*2"), "='My Sheet'!A1*2");
    EXPECT_EQ(compile("=SUM('my sheet'!A1:A3)"), "=SUM('My Sheet'!A1:A3)");
    EXPECT_EQ(compile("=Sheet2!A1:Sheet2!B2"), "=Sheet2!A1:A1");
    EXPECT_EQ(compile("=Nope!A1"), "!Nope!A1 - Unknown string expression | Error syntax in string expression");
    set("B2", "7", 1);
    set("A1", "3", 2);
    EXPECT_EQ(eval("=Sheet2!B2+'My Sheet'!A1"), "10");
}

TEST_F(FormulaParserTest, IntersectionOfReferencesAndBlanksElsewhere) {
    EXPECT_EQ(compile("=A1:B2 B1:C3"), "=A1:B2 B1:C3");
    EXPECT_EQ(compile("=1 +  2"), "=1+2");
    set("B1", "5");
    EXPECT_EQ(eval("=SUM(A1:B2 B1:C3)"), "5");
    EXPECT_EQ(eval("=A1 C3"), "#REF!");
}

TEST_F(FormulaParserTest, DefinedNames) {
    book.formulas().addName({"Total", 0, {1, 0, 1, 0}});
    book.formulas().addName({"My Range", 0, {0, 0, 0, 2}});
    EXPECT_EQ(compile("=total*2"), "=Total*2");
    EXPECT_EQ(compile("=SUM(My Range)"), "=SUM(My Range)");
    set("B1", "21");
    set("A1", "1");
    set("A2", "2");
    EXPECT_EQ(eval("=Total*2"), "42");
    EXPECT_EQ(eval("=SUM(My Range)"), "3");
    EXPECT_EQ(eval("=My Range+1"), "#VALUE!");  // a range name is no one cell
}

TEST_F(FormulaParserTest, ListAndDecimalSeparatorsFromTheLocale) {
    LocaleSettings semicolon;
    semicolon.listSeparator = ';';
    book.formulas().setLocale(semicolon);
    EXPECT_EQ(compile("=AVERAGE(A1;B1)"), "=AVERAGE(A1;B1)");
    EXPECT_EQ(compile("=AVERAGE(A1,B1)"), "!A1,B1 - Unknown string expression | Error syntax in string expression");

    LocaleSettings comma;  // decimal "," and list ",": the list becomes ";"
    comma.decimalSeparator = ',';
    book.formulas().setLocale(comma);
    EXPECT_EQ(compile("=SUM(1,5;2)"), "=SUM(1,5;2)");
    EXPECT_EQ(eval("=1,5+1"), "2,5");

    LocaleSettings both;  // both ";": the decimal becomes "."
    both.decimalSeparator = ';';
    both.listSeparator = ';';
    book.formulas().setLocale(both);
    EXPECT_EQ(compile("=SUM(1.5;2)"), "=SUM(1.5;2)");
}

}  // namespace
}  // namespace zorfa::sheet::test
