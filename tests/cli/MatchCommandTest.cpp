// zorfa-cli match: anchored match and search of a mask, the case flag, and
// the mask error on stderr with exit code 1.
#include <gtest/gtest.h>

#include "CliRunner.h"

using zorfa::test::runCli;

namespace {

std::string out(const std::vector<std::string>& args) {
    auto r = runCli(args);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    return r.out;
}

TEST(MatchCommand, AnchoredMatchPrintsLength) {
    EXPECT_EQ(out({"match", "a|b", "ab"}), "2\n");
    EXPECT_EQ(out({"match", "a|b", "b"}), "1\n");
    EXPECT_EQ(out({"match", "a|b", "a"}), "no match\n");
    EXPECT_EQ(out({"match", "{ab}+", "ababx"}), "4\n");
    EXPECT_EQ(out({"match", "a.", "a"}), "1\n");
    EXPECT_EQ(out({"match", "(\\*", "(*"}), "2\n");
    EXPECT_EQ(out({"match", "^abc", "abc"}), "3\n");
}

TEST(MatchCommand, CaseFlagAndSearch) {
    EXPECT_EQ(out({"match", "[a-z]+", "ABc"}), "no match\n");
    EXPECT_EQ(out({"match", "--ci", "[a-z]+", "ABc"}), "3\n");
    EXPECT_EQ(out({"match", "--search", "b+", "aabbbc"}), "3 3\n");
    EXPECT_EQ(out({"match", "--search", "--ci", "B", "abc"}), "2 1\n");
    EXPECT_EQ(out({"match", "--search", "x", "abc"}), "no match\n");
    EXPECT_EQ(out({"match", "--search", "$", "abc"}), "4 0\n");
}

TEST(MatchCommand, BadMaskIsAnInputFailure) {
    auto r = runCli({"match", "a{", "abc"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, "a{ is invalid mask at (3)\n");
    EXPECT_EQ(r.out, "");
    r = runCli({"match", "--search", "[abc", "abc"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, "[abc is invalid mask at (5)\n");
    EXPECT_EQ(runCli({"match", "onlymask"}).exitCode, 2);
}

}  // namespace
