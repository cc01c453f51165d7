// zorfa-cli tokens: one line per token and the end state of every line,
// with the state carried across lines (empty ones included).
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "CliRunner.h"

using zorfa::test::runCli;

namespace {

std::string WriteFile(const std::string& name, const std::string& bytes) {
    const char* dir = std::getenv("TMPDIR");
    const std::string path =
        std::string(dir && *dir ? dir : "/tmp") + "/zorfa-tokens-" + std::to_string(::getpid()) + "-" + name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

const char* kScheme =
    "// a small scheme\r\n"
    "State=snormal\r\nState=scomment\r\n"
    "Token=tnone\r\nToken=tident\r\nToken=tcomment\r\nToken=tresword\r\n"
    "snormal [a-z_A-Z][a-z_A-Z0-9]* snormal tident\r\n"
    "snormal 'begin' snormal tresword\r\n"
    "snormal \\{ scomment tcomment\r\n"
    "scomment [^\\}]* scomment tcomment\r\n"
    "scomment \\} snormal tcomment\r\n";

TEST(TokensCommand, ListsTokensAndCarriesTheState) {
    const std::string scheme = WriteFile("s.xs", kScheme);
    const std::string input = WriteFile("in.txt", "begin x {note\n\nmore} y;\n");
    auto r = runCli({"tokens", "--scheme", scheme, input});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out,
              "0 1 5 tresword\n"
              "0 6 1 tnone\n"
              "0 7 1 tident\n"
              "0 8 1 tnone\n"
              "0 9 1 tcomment\n"
              "0 10 4 tcomment\n"
              "0 state scomment\n"
              "1 state scomment\n"
              "2 1 4 tcomment\n"
              "2 5 1 tcomment\n"
              "2 6 1 tnone\n"
              "2 7 1 tident\n"
              "2 8 1 tnone\n"
              "2 state snormal\n");
}

TEST(TokensCommand, Failures) {
    const std::string input = WriteFile("in2.txt", "x\n");
    auto r = runCli({"tokens", "--scheme", WriteFile("bad.xs", "State=s\nToken=t\ns a{ s t\n"), input});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, "a{ is invalid mask at (3)\n");
    r = runCli({"tokens", "--scheme", "/nonexistent/x.xs", input});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.err.find("/nonexistent/x.xs"), std::string::npos);
    EXPECT_EQ(runCli({"tokens", input}).exitCode, 2);
}

}  // namespace
