// The contract every command shares: help lists them, --help answers for
// each, unknown commands and options are usage errors.
#include <gtest/gtest.h>

#include "CliRunner.h"

using zorfa::test::runCli;

namespace {

std::vector<std::string> listedCommands() {
    auto r = runCli({"help"});
    std::vector<std::string> names;
    size_t pos = r.out.find("commands:");
    std::string rest = pos == std::string::npos ? "" : r.out.substr(pos);
    size_t start = 0;
    while ((start = rest.find("\n  ", start)) != std::string::npos) {
        start += 3;
        size_t end = rest.find(' ', start);
        names.push_back(rest.substr(start, end - start));
    }
    return names;
}

}  // namespace

TEST(CliDriver, HelpListsCommandsAndEachAnswersHelp) {
    auto r = runCli({"help"});
    EXPECT_EQ(r.exitCode, 0);
    auto names = listedCommands();
    ASSERT_FALSE(names.empty());
    EXPECT_EQ(names.front(), "help");
    for (const std::string& name : names) {
        if (name == "help") continue;
        auto h = runCli({name, "--help"});
        EXPECT_EQ(h.exitCode, 0) << name;
        EXPECT_NE(h.out.find(name), std::string::npos) << name << " --help should name itself";
    }
}

TEST(CliDriver, UsageErrorsExitWithTwo) {
    EXPECT_EQ(runCli({}).exitCode, 2);
    EXPECT_EQ(runCli({"no-such-command"}).exitCode, 2);
    for (const std::string& name : listedCommands()) {
        if (name == "help") continue;
        auto r = runCli({name, "--no-such-option", "x"});
        EXPECT_EQ(r.exitCode, 2) << name;
        EXPECT_FALSE(r.err.empty()) << name;
    }
}
