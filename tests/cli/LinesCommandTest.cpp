// zorfa-cli lines: black-box tests of loading and saving through the line
// store: line counts, the written bytes for each break, NUL truncation, empty
// files, and the failures.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "CliRunner.h"

using zorfa::test::runCli;

namespace {

std::string TempPath(const std::string& name) {
    const char* dir = std::getenv("TMPDIR");
    return std::string(dir && *dir ? dir : "/tmp") + "/zorfa-lines-" + std::to_string(::getpid()) + "-" + name;
}

std::string WriteFile(const std::string& name, const std::string& bytes) {
    const std::string path = TempPath(name);
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

// Loads `bytes`, saves with `linebreak` (empty: the default) and returns the
// saved bytes.
std::string RoundTrip(const std::string& bytes, const std::string& linebreak = "") {
    const std::string in = WriteFile("in", bytes), out = TempPath("out");
    std::vector<std::string> args{"lines", in, "--out", out};
    if (!linebreak.empty()) {
        args.push_back("--linebreak");
        args.push_back(linebreak);
    }
    auto r = runCli(args);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "");
    std::string saved = ReadFile(out);
    std::remove(in.c_str());
    std::remove(out.c_str());
    return saved;
}

std::string Count(const std::string& bytes) {
    const std::string in = WriteFile("count", bytes);
    auto r = runCli({"lines", in, "--count"});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    std::remove(in.c_str());
    return r.out;
}

}  // namespace

TEST(LinesCommand, MixedBreaksCountAndSaveWithCrLf) {
    const std::string bytes("a\r\nb\rc\n\rd\n");
    EXPECT_EQ(Count(bytes), "5\n");
    EXPECT_EQ(RoundTrip(bytes), "a\r\nb\r\nc\r\n\r\nd\r\n");
}

TEST(LinesCommand, EachLineBreakOnSave) {
    const std::string bytes("one\ntwo\r\nthree");
    EXPECT_EQ(RoundTrip(bytes, "crlf"), "one\r\ntwo\r\nthree\r\n");
    EXPECT_EQ(RoundTrip(bytes, "cr"), "one\rtwo\rthree\r");
    EXPECT_EQ(RoundTrip(bytes, "lf"), "one\ntwo\nthree\n");
}

TEST(LinesCommand, TextEndsAtTheFirstNul) {
    EXPECT_EQ(RoundTrip(std::string("ab\0cd", 5)), "ab\r\n");
    EXPECT_EQ(Count(std::string("ab\0c\nd\n", 7)), "1\n");
}

TEST(LinesCommand, EmptyFileHasNoLinesAndSavesNoBytes) {
    EXPECT_EQ(Count(""), "0\n");
    EXPECT_EQ(RoundTrip(""), "");
}

TEST(LinesCommand, OneEmptyLineAndTrailingBreaks) {
    EXPECT_EQ(Count("\n"), "1\n");
    EXPECT_EQ(RoundTrip("\n", "lf"), "\n");
    EXPECT_EQ(Count("x\n\r"), "2\n");  // LF CR: two breaks
    EXPECT_EQ(Count("x\r\n"), "1\n");  // a break at the end adds no line
}

TEST(LinesCommand, CountAndOutTogether) {
    const std::string in = WriteFile("both", "p\nq"), out = TempPath("both-out");
    auto r = runCli({"lines", in, "--count", "--out", out, "--linebreak=lf"});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "2\n");
    EXPECT_EQ(ReadFile(out), "p\nq\n");
    std::remove(in.c_str());
    std::remove(out.c_str());
}

TEST(LinesCommand, LargeFileRoundTripsByteForByte) {
    std::string bytes;
    for (int i = 0; i < 20000; ++i) bytes += "    int value_" + std::to_string(i) + " = " + std::to_string(i * 7) + ";\r\n";
    EXPECT_EQ(Count(bytes), "20000\n");
    EXPECT_EQ(RoundTrip(bytes), bytes);
}

TEST(LinesCommand, MissingInputFailsWithAMessage) {
    const std::string missing = TempPath("does-not-exist");
    auto r = runCli({"lines", missing, "--count"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, "Cannot open file \"" + missing + "\". No such file or directory\n");
}

TEST(LinesCommand, UnwritableOutputFailsWithAMessage) {
    const std::string in = WriteFile("ok", "x\n");
    auto r = runCli({"lines", in, "--out", "/no/such/dir/out.txt"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_NE(r.err.find("/no/such/dir/out.txt"), std::string::npos) << r.err;
    std::remove(in.c_str());
}

TEST(LinesCommand, UsageErrors) {
    EXPECT_EQ(runCli({"lines"}).exitCode, 2);
    EXPECT_EQ(runCli({"lines", "a", "b", "--count"}).exitCode, 2);
    EXPECT_EQ(runCli({"lines", "a"}).exitCode, 2);  // nothing to do
    auto r = runCli({"lines", "a", "--count", "--linebreak", "crcr"});
    EXPECT_EQ(r.exitCode, 2);
    EXPECT_NE(r.err.find("--linebreak"), std::string::npos);
    auto h = runCli({"lines", "--help"});
    EXPECT_EQ(h.exitCode, 0);
    EXPECT_NE(h.out.find("zorfa-cli lines IN"), std::string::npos);
}
