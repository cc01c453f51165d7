#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "platform/ProcessRunner.h"
#include "TempDir.h"

namespace zorfa::platform {
namespace {

TEST(ProcessRunner, CommandLinesSplitLikeAShell) {
    using V = std::vector<std::string>;
    EXPECT_EQ(splitCommandLine("notepad a.txt"), (V{"notepad", "a.txt"}));
    EXPECT_EQ(splitCommandLine("  \"/opt/my tool/run\"  \"a b.txt\"\tc "), (V{"/opt/my tool/run", "a b.txt", "c"}));
    EXPECT_EQ(splitCommandLine("echo \"say \"\"hi\"\"\""), (V{"echo", "say \"hi\""}));
    EXPECT_EQ(splitCommandLine("x \"\""), (V{"x", ""}));
    EXPECT_EQ(splitCommandLine("pre\"fix part\"post"), (V{"prefix partpost"}));
    EXPECT_TRUE(splitCommandLine("   ").empty());
}

TEST(ProcessRunner, RecordingDoubleRecords) {
    RecordingProcessRunner runner;
    EXPECT_TRUE(runner.startDetached("make all", "/src"));
    runner.setResult(false);
    EXPECT_FALSE(runner.openWithDesktop("/opt/zorfa/Help/Zorfa Editor.chm"));
    ASSERT_EQ(runner.started().size(), 1u);
    EXPECT_EQ(runner.started()[0].commandLine, "make all");
    EXPECT_EQ(runner.started()[0].workingDir, "/src");
    EXPECT_EQ(runner.opened(), std::vector<std::string>{"/opt/zorfa/Help/Zorfa Editor.chm"});
}

TEST(QtProcessRunner, StartsDetachedInTheWorkingFolder) {
    test::TempDir dir;
    QtProcessRunner runner;
    ASSERT_TRUE(runner.startDetached("/bin/sh -c \"echo done > 'out file'\"", dir.path()));
    const std::string out = dir.file("out file");
    std::error_code error;
    for (int i = 0; i < 300 && std::filesystem::file_size(out, error) != 5; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_EQ(std::filesystem::file_size(out, error), 5u);  // "done\n"
    EXPECT_FALSE(runner.startDetached("/no/such/program"));
    EXPECT_FALSE(runner.startDetached(""));
}

}  // namespace
}  // namespace zorfa::platform
