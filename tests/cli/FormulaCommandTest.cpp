// zorfa-cli formula: the text a cell holds after compiling, and the
// compiler's messages with exit code 1.
#include <gtest/gtest.h>

#include "CliRunner.h"

using zorfa::test::runCli;

namespace {

TEST(FormulaCommand, PrintsTheTextRebuiltFromTheTokens) {
    auto r = runCli({"formula", "=  sum(a1:a3)"});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "=SUM(A1:A3)\n");
    EXPECT_EQ(runCli({"formula", "=1E+3*-2"}).out, "=1000*-2\n");
    EXPECT_EQ(runCli({"formula", "=\"a\"\"b\"&Sheet1!$B$2"}).out, "=\"a\"\"b\"&Sheet1!$B$2\n");
}

TEST(FormulaCommand, MessagesGoToStderrWithExitOne) {
    auto r = runCli({"formula", "=(1"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, "Error - symbol ')' expected!\n");
    EXPECT_EQ(runCli({"formula", "=\"abc"}).err, "Error - unterminated string!\n");
    EXPECT_EQ(runCli({"formula", "=FOO(1)"}).err, "Error syntax in string expression\n");
    EXPECT_EQ(runCli({"formula", "=A1E+3"}).err,
              "A1E - Unknown string expression\nError syntax in string expression\n");
}

TEST(FormulaCommand, R1C1AndTheOwnCell) {
    EXPECT_EQ(runCli({"formula", "--at", "B5", "=R[-1]C"}).exitCode, 1);
    EXPECT_EQ(runCli({"formula", "--r1c1", "--at", "B5", "=R[-1]C+R1C1"}).out, "=R[-1]C+R1C1\n");
    EXPECT_EQ(runCli({"formula", "--r1c1", "--at", "C3", "=A1+$B$2"}).exitCode, 1);
}

TEST(FormulaCommand, ListSeparator) {
    EXPECT_EQ(runCli({"formula", "--list-separator", ";", "=AVERAGE(A1;B1)"}).out, "=AVERAGE(A1;B1)\n");
    // The same as the decimal separator: the list separator becomes ";".
    EXPECT_EQ(runCli({"formula", "--list-separator", ".", "=SUM(1.5;2)"}).out, "=SUM(1.5;2)\n");
    EXPECT_EQ(runCli({"formula", "--list-separator", ";;", "=1"}).exitCode, 2);
    EXPECT_EQ(runCli({"formula", "--at", "1A", "=1"}).exitCode, 2);
    EXPECT_EQ(runCli({"formula"}).exitCode, 2);
}

}  // namespace
