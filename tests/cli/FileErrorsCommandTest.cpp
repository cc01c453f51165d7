// Every command that reads or writes a file reports a file it cannot use in
// the system's one wording, with exit code 1.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>

#include "CliRunner.h"

using zorfa::test::runCli;

namespace {

const std::string kMissing = "/no/such/folder/input.txt";
const std::string kReason = "\". No such file or directory\n";

TEST(CliFileErrors, AMissingInputNamesTheFileAndTheReason) {
    const std::vector<std::vector<std::string>> calls = {
        {"lines", kMissing, "--count"},
        {"calc", kMissing},
        {"tokens", "--scheme", kMissing, kMissing},
    };
    for (const auto& call : calls) {
        const auto r = runCli(call);
        EXPECT_EQ(r.exitCode, 1) << call[0];
        EXPECT_EQ(r.err, "Cannot open file \"" + kMissing + kReason) << call[0];
    }
}

TEST(CliFileErrors, AnOutputThatCannotBeCreatedNamesTheFile) {
    const auto input = std::filesystem::temp_directory_path() / "zorfa-file-errors.csv";
    { std::FILE* f = std::fopen(input.c_str(), "wb"); std::fputs("1,2\n", f); std::fclose(f); }
    const std::string out = "/no/such/folder/out.csv";
    const auto r = runCli({"calc", input.string(), "--out", out});
    std::filesystem::remove(input);
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, "Cannot create file \"" + out + kReason);
}

}  // namespace
