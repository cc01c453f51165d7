#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <sys/stat.h>
#include <unistd.h>

#include "base/Errors.h"
#include "platform/FileFacts.h"
#include "TempDir.h"

namespace zorfa::platform {
namespace {

namespace fs = std::filesystem;

TEST(FileFacts, SizeByLookUp) {
    test::TempDir dir;
    const std::string empty = dir.file("empty.txt"), five = dir.file("five.txt");
    std::ofstream(empty).flush();
    std::ofstream(five) << "12345";
    EXPECT_EQ(fileSize(empty), 0);
    EXPECT_EQ(fileSize(five), 5);
    EXPECT_EQ(fileSize(dir.path()), -1);                 // a folder
    EXPECT_EQ(fileSize(dir.file("missing")), -1);        // nothing
    EXPECT_EQ(fileSize(""), -1);
    // Beyond 32 bits, without writing the bytes.
    const std::string big = dir.file("big");
    std::ofstream(big).flush();
    fs::resize_file(big, 52428801LL * 100);
    EXPECT_EQ(fileSize(big), 5242880100LL);
    // A file that can't be opened still has its size.
    ::chmod(five.c_str(), 0);
    EXPECT_EQ(fileSize(five), 5);
}

TEST(FileFacts, ExistsIsForFilesOnly) {
    test::TempDir dir;
    const std::string f = dir.file("a");
    std::ofstream(f) << "x";
    EXPECT_TRUE(fileExists(f));
    EXPECT_FALSE(fileExists(dir.path()));
    EXPECT_FALSE(fileExists(dir.file("b")));
    EXPECT_TRUE(directoryExists(dir.path()));
    EXPECT_FALSE(directoryExists(f));
}

TEST(FileFacts, ReadOnlyFollowsTheWritePermission) {
    test::TempDir dir;
    const std::string f = dir.file("r.txt");
    std::ofstream(f) << "x";
    EXPECT_FALSE(isReadOnly(f));
    ASSERT_EQ(::chmod(f.c_str(), 0444), 0);
    EXPECT_TRUE(isReadOnly(f));  // also when the tests run as root
    ASSERT_EQ(::chmod(f.c_str(), 0644), 0);
    EXPECT_FALSE(isReadOnly(f));
    EXPECT_FALSE(isReadOnly(dir.file("missing")));
}

TEST(FileFacts, RequireWritableRefusesAReadOnlyFileWithTheSystemsReason) {
    test::TempDir dir;
    const std::string f = dir.file("f.txt");
    std::ofstream(f) << "x";
    EXPECT_NO_THROW(requireWritable(f));
    EXPECT_NO_THROW(requireWritable(dir.file("missing")));  // a new file may be made
    ::chmod(f.c_str(), 0444);
    try {
        requireWritable(f);
        FAIL() << "a file without write permission must be refused, for root too";
    } catch (const Exception& e) {
        EXPECT_STREQ(e.what(), ("Cannot create file \"" + f + "\". Permission denied").c_str());
    }
}

TEST(FileFacts, ReadOnlyForAnotherOwnersFile) {
    // A file of another user that only its owner may write: read-only to us,
    // unless we are root (who may write it anyway).
    if (::geteuid() == 0) GTEST_SKIP() << "root may write every file with a write bit";
    EXPECT_TRUE(isReadOnly("/etc/passwd"));
}

TEST(FileFacts, FullPathIsAbsoluteAndFolded) {
    const std::string cwd = fs::current_path().string();
    EXPECT_EQ(fullPath("x.pas"), cwd + "/x.pas");
    EXPECT_EQ(fullPath("/a/b/../c/./d.txt"), "/a/c/d.txt");
    EXPECT_EQ(fullPath("/a/b/.."), "/a");
    EXPECT_EQ(fullPath("/a/b/"), "/a/b/");
    EXPECT_EQ(fullPath("."), cwd);
    EXPECT_EQ(fullPath("/"), "/");
    EXPECT_EQ(fullPath(""), "");
}

TEST(FileFacts, FileNameParts) {
    EXPECT_EQ(extractFileName("/a/b.txt"), "b.txt");
    EXPECT_EQ(extractFileName("b.txt"), "b.txt");
    EXPECT_EQ(extractFileName("/a/"), "");
    EXPECT_EQ(extractFileExt("/a/b.TXT"), ".TXT");
    EXPECT_EQ(extractFileExt("/a/b.tar.gz"), ".gz");
    EXPECT_EQ(extractFileExt("/a.d/b"), "");
    EXPECT_EQ(extractFileExt("/a/b."), ".");
    EXPECT_EQ(extractFileExt("/a/.profile"), ".profile");
    EXPECT_EQ(extractFilePath("/a/b.txt"), "/a/");
    EXPECT_EQ(extractFilePath("b.txt"), "");
    EXPECT_EQ(extractFileDir("/a/b.txt"), "/a");
    EXPECT_EQ(extractFileDir("/b.txt"), "/");
    EXPECT_EQ(extractFileDir("b.txt"), "");
    EXPECT_EQ(changeFileExt("/a/b.txt", ".rtf"), "/a/b.rtf");
    EXPECT_EQ(changeFileExt("/a.d/b", ".rtf"), "/a.d/b.rtf");
    EXPECT_EQ(changeFileExt("/a/b.txt", ""), "/a/b");
    EXPECT_EQ(includeTrailingSlash("/a"), "/a/");
    EXPECT_EQ(includeTrailingSlash("/a/"), "/a/");
    EXPECT_EQ(includeTrailingSlash(""), "");
    // A backslash is part of a Linux name.
    EXPECT_EQ(extractFileName("/a/b\\c.txt"), "b\\c.txt");
}

}  // namespace
}  // namespace zorfa::platform
