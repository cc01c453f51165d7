// TEasyStrings: loading (CR, LF, CR LF, LF CR, NUL, trailing break, empty)
// and saving (raw lines, a break after each, nothing for no lines), through
// buffers, streams and files.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <unistd.h>
#include <sstream>
#include <string>
#include <vector>

#include "base/Errors.h"
#include "text/EasyStrings.h"
#include "ReferenceLineSplit.h"

using namespace zorfa::text;

namespace {

std::vector<std::string> Lines(const TEasyStrings& s) {
    std::vector<std::string> lines;
    for (int i = 0; i < s.Count(); ++i) lines.emplace_back(s.GetRawLine(i));
    return lines;
}

std::vector<std::string> Load(std::string_view bytes) {
    TEasyStrings s;
    s.LoadFromBuffer(bytes);
    return Lines(s);
}

std::string TempPath(const char* name) {
    const char* dir = std::getenv("TMPDIR");
    return std::string(dir && *dir ? dir : "/tmp") + "/zorfa-linestore-" + std::to_string(::getpid()) + "-" + name;
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

using V = std::vector<std::string>;

}  // namespace

TEST(EasyStringsLoad, SplitsAtCrLfAndCrLfInAnyMixture) {
    EXPECT_EQ(Load("a\r\nb\rc\n\rd\n"), (V{"a", "b", "c", "", "d"}));
    EXPECT_EQ(Load("one\ntwo\nthree"), (V{"one", "two", "three"}));
    EXPECT_EQ(Load("one\rtwo\rthree\r"), (V{"one", "two", "three"}));
    EXPECT_EQ(Load("x\n\r"), (V{"x", ""}));  // LF CR is two breaks
    EXPECT_EQ(Load("\r\n\r\n"), (V{"", ""}));
    EXPECT_EQ(Load("\n"), (V{""}));
    EXPECT_EQ(Load("\r"), (V{""}));
    EXPECT_EQ(Load("\r\r\n\n"), (V{"", "", ""}));
}

TEST(EasyStringsLoad, ABreakAtTheVeryEndAddsNoLineAndEmptyHasNone) {
    EXPECT_EQ(Load("a\r\n"), (V{"a"}));
    EXPECT_EQ(Load("a"), (V{"a"}));
    EXPECT_EQ(Load(""), V{});
}

TEST(EasyStringsLoad, TheTextEndsAtTheFirstNul) {
    EXPECT_EQ(Load(std::string_view("ab\0cd\nef", 8)), (V{"ab"}));
    EXPECT_EQ(Load(std::string_view("\0abc", 4)), V{});
    EXPECT_EQ(Load(std::string_view("a\nb\n\0\nc", 7)), (V{"a", "b"}));
}

TEST(EasyStringsLoad, BreaksAcrossTheScannersSteps) {
    // CR LF pairs and lone CRs at every offset around the 16- and 64-byte
    // steps of the scans, against a byte-by-byte reference split.
    for (int length = 0; length < 200; ++length) {
        for (int variant = 0; variant < 4; ++variant) {
            std::string bytes;
            for (int i = 0; i < length; ++i) {
                const int r = (i * 7 + variant * 13 + length) % 11;
                bytes += r == 0 ? '\r' : r == 1 ? '\n' : static_cast<char>('a' + r);
            }
            const V expect = zorfa::test::referenceLineSplit(bytes);
            ASSERT_EQ(Load(bytes), expect) << length << "/" << variant;
        }
    }
}

TEST(EasyStringsLoad, KeepsTheLineBreakSettingAndReplacesTheText) {
    TEasyStrings s;
    s.LineBreak = lbLF;
    s.Add("old");
    s.LoadFromBuffer("a\r\nb\r\n");
    EXPECT_EQ(s.LineBreak, lbLF);  // no detection
    EXPECT_EQ(Lines(s), (V{"a", "b"}));
    EXPECT_EQ(s.SaveToBuffer(), "a\nb\n");
}

TEST(EasyStringsSave, EveryLineGetsTheBreakTheLastIncluded) {
    TEasyStrings s;
    s.LoadFromBuffer("a\r\nb\rc\n\rd\n");
    EXPECT_EQ(s.SaveToBuffer(), "a\r\nb\r\nc\r\n\r\nd\r\n");
    s.LineBreak = lbCR;
    EXPECT_EQ(s.SaveToBuffer(), "a\rb\rc\r\rd\r");
    s.LineBreak = lbLF;
    EXPECT_EQ(s.SaveToBuffer(), "a\nb\nc\n\nd\n");
}

TEST(EasyStringsSave, EmptyStoreWritesNothingAndOneEmptyLineJustTheBreak) {
    TEasyStrings s;
    EXPECT_EQ(s.SaveToBuffer(), "");
    std::ostringstream out;
    s.SaveToStream(out);
    EXPECT_EQ(out.str(), "");
    s.Add("");
    EXPECT_EQ(s.SaveToBuffer(), "\r\n");
}

TEST(EasyStringsSave, SavesRawLinesNotConvertedOnes) {
    TEasyStrings s;
    s.Add("a\tb");
    s.OnConvertLine = [](TEasyStrings&, std::string& text, bool) { text = "CONVERTED"; };
    EXPECT_EQ(s.SaveToBuffer(), "a\tb\r\n");
}

TEST(EasyStringsSave, EditedAndUntouchedLinesMixCorrectly) {
    // The save copies runs of neighbouring loaded lines at once; edits,
    // deletes, inserts and exchanges must break the runs in the right places.
    TEasyStrings s;
    s.LoadFromBuffer("l0\r\nl1\r\nl2\r\n\r\nl4\r\nl5\r\nl6");
    s.Put(1, "edited");
    s.Delete(4);
    s.Insert(2, "new");
    s.Exchange(5, 6);
    EXPECT_EQ(s.SaveToBuffer(), "l0\r\nedited\r\nnew\r\nl2\r\n\r\nl6\r\nl5\r\n");
    s.LineBreak = lbLF;
    EXPECT_EQ(s.SaveToBuffer(), "l0\nedited\nnew\nl2\n\nl6\nl5\n");
}

TEST(EasyStringsSave, LoadedWithOneBreakSavedWithAnother) {
    for (auto [brk, name] : {std::pair{lbCRLF, "\r\n"}, {lbCR, "\r"}, {lbLF, "\n"}}) {
        std::string text;
        for (int i = 0; i < 100; ++i) text += std::string(static_cast<size_t>(i % 9), 'x') + "\n";
        TEasyStrings s;
        s.LoadFromBuffer(text);
        s.LineBreak = brk;
        std::string expect;
        for (int i = 0; i < 100; ++i) expect += std::string(static_cast<size_t>(i % 9), 'x') + name;
        EXPECT_EQ(s.SaveToBuffer(), expect);
    }
}

TEST(EasyStringsStream, LoadsTheRemainderOfAStream) {
    std::istringstream in("skip\nx\r\ny\n");
    std::string first;
    std::getline(in, first);
    TEasyStrings s;
    s.LoadFromStream(in);
    EXPECT_EQ(Lines(s), (V{"x", "y"}));
    std::ostringstream out;
    s.SaveToStream(out);
    EXPECT_EQ(out.str(), "x\r\ny\r\n");
}

TEST(EasyStringsFile, RoundTripThroughFiles) {
    const std::string in = TempPath("in.txt"), out = TempPath("out.txt");
    {
        std::ofstream f(in, std::ios::binary);
        f << "int main()\n{\r\n\treturn 0;\r}";
    }
    TEasyStrings s;
    s.LoadFromFile(in);
    EXPECT_EQ(Lines(s), (V{"int main()", "{", "\treturn 0;", "}"}));
    s.SaveToFile(out);
    EXPECT_EQ(ReadFile(out), "int main()\r\n{\r\n\treturn 0;\r\n}\r\n");
    s.Clear();
    s.SaveToFile(out);  // an empty store writes an empty file
    EXPECT_EQ(ReadFile(out), "");
    std::remove(in.c_str());
    std::remove(out.c_str());
}

TEST(EasyStringsFile, EmptyFileHasNoLines) {
    const std::string in = TempPath("empty.txt");
    { std::ofstream f(in, std::ios::binary); }
    TEasyStrings s;
    s.Add("before");
    s.LoadFromFile(in);
    EXPECT_EQ(s.Count(), 0);
    std::remove(in.c_str());
}

TEST(EasyStringsFile, MissingFileThrowsAMessageNamingIt) {
    TEasyStrings s;
    s.Add("kept");
    try {
        s.LoadFromFile("/no/such/dir/file.txt");
        FAIL() << "no exception";
    } catch (const zorfa::Exception& e) {
        EXPECT_STREQ(e.what(), "Cannot open file \"/no/such/dir/file.txt\". No such file or directory");
    }
    EXPECT_EQ(s.Count(), 1);  // a failed load changes nothing
}

TEST(EasyStringsFile, DirectoryAndUnwritableTargetsThrow) {
    TEasyStrings s;
    EXPECT_THROW(s.LoadFromFile("/"), zorfa::Exception);
    s.Add("x");
    try {
        s.SaveToFile("/no/such/dir/out.txt");
        FAIL() << "no exception";
    } catch (const zorfa::Exception& e) {
        EXPECT_STREQ(e.what(), "Cannot create file \"/no/such/dir/out.txt\". No such file or directory");
    }
}
