#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <sys/stat.h>
#include <unistd.h>

#include "base/Errors.h"
#include "base/IniFile.h"

namespace fs = std::filesystem;
using zorfa::IniFile;

namespace {

class IniFileTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "inifile-XXXXXX").string();
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        dir_ = pattern;
        file_ = (dir_ / "ZorfaEDB.ini").string();
    }
    void TearDown() override { fs::remove_all(dir_); }

    void write(const std::string& text) { std::ofstream(file_, std::ios::binary) << text; }
    std::string read() const {
        std::ifstream in(file_, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }

    fs::path dir_;
    std::string file_;
};

TEST_F(IniFileTest, MissingFileReadsAsEmptyWithDefaults) {
    IniFile ini(file_);
    EXPECT_TRUE(ini.sections().empty());
    EXPECT_EQ(ini.readString("EditorOptions", "SyntaxParser"), "");
    EXPECT_EQ(ini.readString("EditorOptions", "SyntaxParser", "Delphi"), "Delphi");
    EXPECT_EQ(ini.readInteger("A", "B", 7), 7);
    EXPECT_TRUE(ini.readBool("A", "B", true));
    EXPECT_FALSE(ini.modified());
    EXPECT_FALSE(fs::exists(file_));
}

TEST_F(IniFileTest, UnreadableFileReadsAsEmpty) {
    fs::create_directory(file_);  // a folder by the file's name can't be read as a file
    IniFile ini(file_);
    EXPECT_TRUE(ini.sections().empty());
    ini.writeString("S", "K", "V");
    EXPECT_THROW(ini.updateFile(), zorfa::Exception);
}

TEST_F(IniFileTest, SectionAndKeyOrderIsTheFilesAndSurvivesWriting) {
    write("[Zeta]\nb=2\na=1\n\n[alpha]\nx=9\n[Mid]\n");
    IniFile ini(file_);
    EXPECT_EQ(ini.sections(), (std::vector<std::string>{"Zeta", "alpha", "Mid"}));
    EXPECT_EQ(ini.keys("Zeta"), (std::vector<std::string>{"b", "a"}));
    ini.writeString("Beta", "k", "v");   // new section goes last
    ini.writeString("Zeta", "c", "3");   // new key goes last in its section
    ini.writeString("zeta", "B", "22");  // existing key keeps its place and spelling
    ini.updateFile();
    EXPECT_EQ(read(), "[Zeta]\nb=22\na=1\nc=3\n\n[alpha]\nx=9\n\n[Mid]\n\n[Beta]\nk=v\n");
    IniFile again(file_);
    EXPECT_EQ(again.sections(), (std::vector<std::string>{"Zeta", "alpha", "Mid", "Beta"}));
}

TEST_F(IniFileTest, LookupIgnoresCaseAndKeepsTheSpelling) {
    write("[EditorOptions]\nSyntaxParser=Delphi\n");
    IniFile ini(file_);
    EXPECT_EQ(ini.readString("editoroptions", "SYNTAXPARSER"), "Delphi");
    EXPECT_TRUE(ini.sectionExists("EDITOROPTIONS"));
    EXPECT_TRUE(ini.valueExists("EditorOptions", "syntaxparser"));
    ini.writeString("EDITOROPTIONS", "syntaxparser", "SQL");
    EXPECT_EQ(ini.sections(), std::vector<std::string>{"EditorOptions"});
    EXPECT_EQ(ini.keys("editorOptions"), std::vector<std::string>{"SyntaxParser"});
    EXPECT_EQ(ini.readString("EditorOptions", "SyntaxParser"), "SQL");
}

TEST_F(IniFileTest, BlanksAroundNamesAndValuesAreTrimmed) {
    write("  [ Conn 1 ]  \r\n  Provider =  SQLOLEDB.1  \r\n");
    IniFile ini(file_);
    EXPECT_EQ(ini.sections(), std::vector<std::string>{"Conn 1"});
    EXPECT_EQ(ini.readString("Conn 1", "Provider"), "SQLOLEDB.1");
}

TEST_F(IniFileTest, ValueSplitsAtTheFirstEqualsSign) {
    write("[C]\nConnectionString=Provider=X;Data Source=a=b\n");
    IniFile ini(file_);
    EXPECT_EQ(ini.readString("C", "ConnectionString"), "Provider=X;Data Source=a=b");
}

TEST_F(IniFileTest, CommentsAndPrologueStayInPlace) {
    write("; made by hand\n[A]\n; about k\nk=1\nnot an assignment\n=no name\n");
    IniFile ini(file_);
    EXPECT_EQ(ini.keys("A"), std::vector<std::string>{"k"});
    ini.writeString("A", "j", "2");
    ini.writeString("A", " ", "ignored");  // a key without a name
    ini.updateFile();
    EXPECT_EQ(read(), "; made by hand\n[A]\n; about k\nk=1\nnot an assignment\n=no name\nj=2\n");
}

TEST_F(IniFileTest, CrLfFilesAreWrittenBackWithCrLf) {
    write("[A]\r\nk=1\r\n");
    IniFile ini(file_);
    ini.writeString("B", "x", "y");
    ini.updateFile();
    EXPECT_EQ(read(), "[A]\r\nk=1\r\n\r\n[B]\r\nx=y\r\n");
}

TEST_F(IniFileTest, DuplicateSectionsMergeAndTheFirstKeyCounts) {
    write("[A]\nk=1\n[B]\n[a]\nk=2\nm=3\n");
    IniFile ini(file_);
    EXPECT_EQ(ini.sections(), (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(ini.readString("A", "k"), "1");
    EXPECT_EQ(ini.readString("A", "m"), "3");
}

TEST_F(IniFileTest, IntegersAndBooleans) {
    write("[N]\ndec=-42\nhex=0x1F\ndollar=$ff\nbad=12abc\nt=True\nf=false\none=1\nzero=0\n");
    IniFile ini(file_);
    EXPECT_EQ(ini.readInteger("N", "dec", 0), -42);
    EXPECT_EQ(ini.readInteger("N", "hex", 0), 31);
    EXPECT_EQ(ini.readInteger("N", "dollar", 0), 255);
    EXPECT_EQ(ini.readInteger("N", "bad", 5), 5);
    EXPECT_TRUE(ini.readBool("N", "t", false));
    EXPECT_FALSE(ini.readBool("N", "f", true));
    EXPECT_TRUE(ini.readBool("N", "one", false));
    EXPECT_FALSE(ini.readBool("N", "zero", true));
    EXPECT_TRUE(ini.readBool("N", "bad", true));
    ini.writeInteger("N", "w", 300);
    ini.writeBool("N", "b", true);
    EXPECT_EQ(ini.readString("N", "w"), "300");
    EXPECT_EQ(ini.readString("N", "b"), "1");
}

TEST_F(IniFileTest, EraseSectionAndDeleteKey) {
    write("[A]\nk=1\nm=2\n[B]\nx=1\n");
    IniFile ini(file_);
    ini.deleteKey("a", "K");
    ini.eraseSection("b");
    ini.eraseSection("nothing");
    ini.deleteKey("nothing", "k");
    EXPECT_TRUE(ini.modified());
    ini.updateFile();
    EXPECT_FALSE(ini.modified());
    EXPECT_EQ(read(), "[A]\nm=2\n");
}

TEST_F(IniFileTest, NothingReachesTheDiskBeforeUpdateFile) {
    write("[A]\nk=1\n");
    IniFile ini(file_);
    ini.writeString("A", "k", "2");
    EXPECT_EQ(IniFile(file_).readString("A", "k"), "1");
    ini.reload();
    EXPECT_EQ(ini.readString("A", "k"), "1");
}

TEST_F(IniFileTest, BytesOfTheCodePagePassUnchanged) {
    IniFile ini(file_);
    const std::string bytes = "caf\xE9 \x80\xFF";
    ini.writeString("S\xE4", "k\xF6", bytes);
    ini.updateFile();
    IniFile again(file_);
    EXPECT_EQ(again.readString("S\xE4", "k\xF6"), bytes);
}

TEST_F(IniFileTest, SectionValuesInOrder) {
    write("[Conn]\nB=2\nA=1\n");
    IniFile ini(file_);
    const auto values = ini.sectionValues("conn");
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0], (std::pair<std::string, std::string>{"B", "2"}));
    EXPECT_EQ(values[1], (std::pair<std::string, std::string>{"A", "1"}));
}

TEST(ParseIniInteger, Forms) {
    EXPECT_EQ(zorfa::parseIniInteger(" 12 "), 12);
    EXPECT_EQ(zorfa::parseIniInteger("+7"), 7);
    EXPECT_EQ(zorfa::parseIniInteger("-0x10"), -16);
    EXPECT_EQ(zorfa::parseIniInteger("-9223372036854775808"), INT64_MIN);
    EXPECT_FALSE(zorfa::parseIniInteger("9223372036854775808"));
    EXPECT_FALSE(zorfa::parseIniInteger(""));
    EXPECT_FALSE(zorfa::parseIniInteger("$"));
    EXPECT_FALSE(zorfa::parseIniInteger("--1"));
    EXPECT_FALSE(zorfa::parseIniInteger("1 2"));
}

TEST_F(IniFileTest, ReplaceFileContentsLeavesNoTemporaryFiles) {
    zorfa::replaceFileContents(file_, "one");
    zorfa::replaceFileContents(file_, "two");
    EXPECT_EQ(read(), "two");
    int entries = 0;
    for ([[maybe_unused]] const auto& e : fs::directory_iterator(dir_)) ++entries;
    EXPECT_EQ(entries, 1);
    EXPECT_THROW(zorfa::replaceFileContents((dir_ / "no such folder" / "x.ini").string(), "x"),
                 zorfa::Exception);
}

}  // namespace
