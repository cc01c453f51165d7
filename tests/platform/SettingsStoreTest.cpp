#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include <sys/wait.h>
#include <unistd.h>

#include "base/Errors.h"
#include "platform/SettingsStore.h"
#include "TempDir.h"

namespace zorfa::platform {
namespace {

namespace fs = std::filesystem;

class SettingsStoreTest : public ::testing::Test {
protected:
    std::string fileName() const { return dir_.file("Zorfa Software/registry.ini"); }
    std::string fileText() const {
        std::ifstream in(fileName(), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    test::TempDir dir_;
};

constexpr std::string_view kMain = "Software\\Zorfa Software\\Zorfa Editor\\Stored Properties\\Main\\Main";

TEST(SettingsStoreLocation, DefaultFileFollowsXdgConfigHome) {
    const char* saved = std::getenv("XDG_CONFIG_HOME");
    const std::string before = saved ? saved : "";
    ::setenv("XDG_CONFIG_HOME", "/tmp/cfg", 1);
    EXPECT_EQ(SettingsStore::defaultFileName(), "/tmp/cfg/Zorfa Software/registry.ini");
    ::setenv("XDG_CONFIG_HOME", "", 1);  // empty counts as unset
    if (const char* home = std::getenv("HOME"); home && *home) {
        EXPECT_EQ(SettingsStore::defaultFileName(), std::string(home) + "/.config/Zorfa Software/registry.ini");
    }
    if (saved) ::setenv("XDG_CONFIG_HOME", before.c_str(), 1); else ::unsetenv("XDG_CONFIG_HOME");
}

TEST_F(SettingsStoreTest, NothingIsCreatedByReading) {
    SettingsStore store(fileName());
    EXPECT_FALSE(store.keyExists(keys::kLayout));
    EXPECT_EQ(store.readString(kMain, "NormPos", "none"), "none");
    EXPECT_EQ(store.readInteger(kMain, "FormVersion", 3), 3);
    EXPECT_TRUE(store.subkeys(keys::kRegistryRoot).empty());
    EXPECT_FALSE(fs::exists(fileName()));
}

TEST_F(SettingsStoreTest, ValuesRoundTripThroughTheFile) {
    {
        SettingsStore store(fileName());
        store.writeString(kMain, "NormPos(1024x768)", "10,20,810,620");
        store.writeInteger(kMain, "FormVersion", 0);
        store.writeInteger(kMain, "Big", -5000000000LL);
        store.writeBool(kMain, "Visible", true);
        store.writeBinary(keys::kLayout, "State", std::string("\0\x01\xFF" "ab", 5));
    }
    SettingsStore store(fileName());
    EXPECT_EQ(store.readString(kMain, "NormPos(1024x768)"), "10,20,810,620");
    EXPECT_EQ(store.readInteger(kMain, "FormVersion", 9), 0);
    EXPECT_EQ(store.readInteger(kMain, "Big"), -5000000000LL);
    EXPECT_TRUE(store.readBool(kMain, "Visible"));
    EXPECT_EQ(store.valueKind(kMain, "Visible"), ValueKind::Integer);
    EXPECT_EQ(store.readBinary(keys::kLayout, "State"), std::string("\0\x01\xFF" "ab", 5));
    EXPECT_EQ(store.valueKind(keys::kLayout, "State"), ValueKind::Binary);
    EXPECT_EQ(store.valueNames(kMain),
              (std::vector<std::string>{"NormPos(1024x768)", "FormVersion", "Big", "Visible"}));
}

TEST_F(SettingsStoreTest, KeyPathsKeepBackslashesSpacesAndSpelling) {
    SettingsStore store(fileName());
    store.writeString("Software\\Zorfa Software\\Zorfa Editor\\User Tools\\My Tool", "Command", "x");
    store.writeString(keys::kCommon, "dummy", "y");
    SettingsStore again(fileName());
    EXPECT_EQ(again.subkeys("Software\\Zorfa Software"), (std::vector<std::string>{"Zorfa Editor", "Common"}));
    EXPECT_EQ(again.subkeys(keys::kUserTools), std::vector<std::string>{"My Tool"});
    EXPECT_EQ(again.subkeys(""), std::vector<std::string>{"Software"});
    EXPECT_NE(fileText().find("[Software\\Zorfa Software\\Zorfa Editor\\User Tools\\My Tool]"), std::string::npos);
    // Lookup ignores case; a leading backslash means the same key (the toolbar manager writes it so).
    EXPECT_EQ(again.readString("software\\ZORFA SOFTWARE\\zorfa editor\\user tools\\my tool", "COMMAND"), "x");
    EXPECT_EQ(again.readString("\\Software\\Zorfa Software\\Zorfa Editor\\User Tools\\My Tool\\", "Command"), "x");
    EXPECT_EQ(SettingsStore::normalizeKey("\\\\A\\\\B C\\"), "A\\B C");
}

TEST_F(SettingsStoreTest, KeysExistWithTheirAncestorsAndCanBeEmpty) {
    SettingsStore store(fileName());
    store.createKey(keys::kLayout);
    EXPECT_TRUE(store.keyExists(keys::kLayout));
    EXPECT_TRUE(store.keyExists(keys::kRegistryRoot));
    EXPECT_TRUE(store.keyExists("Software"));
    EXPECT_FALSE(store.keyExists("Software\\Zorfa"));  // a prefix of a name is no key
    EXPECT_TRUE(store.valueNames(keys::kLayout).empty());
    SettingsStore again(fileName());
    EXPECT_TRUE(again.keyExists(keys::kLayout));
}

TEST_F(SettingsStoreTest, DeleteKeyTakesItsSubkeysAndNothingElse) {
    SettingsStore store(fileName());
    store.writeString(std::string(keys::kLayout) + "\\Panel 1", "a", "1");
    store.writeString(std::string(keys::kLayout) + "\\Panel 1\\Inner", "b", "2");
    store.writeString(keys::kLayout, "c", "3");
    store.writeString(std::string(keys::kLayout) + "Other", "d", "4");  // shares the text prefix only
    store.writeString(keys::kToolBars, "e", "5");
    EXPECT_TRUE(store.deleteKey("software\\zorfa software\\zorfa editor\\layout"));
    EXPECT_FALSE(store.deleteKey(keys::kLayout));
    EXPECT_FALSE(store.keyExists(keys::kLayout));
    EXPECT_FALSE(store.keyExists(std::string(keys::kLayout) + "\\Panel 1\\Inner"));
    EXPECT_EQ(store.readString(std::string(keys::kLayout) + "Other", "d"), "4");
    EXPECT_EQ(store.readString(keys::kToolBars, "e"), "5");
    SettingsStore again(fileName());
    EXPECT_FALSE(again.keyExists(keys::kLayout));
    EXPECT_EQ(again.subkeys(keys::kRegistryRoot), (std::vector<std::string>{"LayoutOther", "ToolBars"}));
}

TEST_F(SettingsStoreTest, ASecondInstanceSeesWritesAtOnce) {
    SettingsStore first(fileName());
    SettingsStore second(fileName());
    EXPECT_EQ(second.readString(kMain, "X"), "");
    first.writeString(kMain, "X", "1");
    EXPECT_EQ(second.readString(kMain, "X"), "1");
    second.writeString(kMain, "Y", "2");  // re-reads before writing: X survives
    EXPECT_EQ(first.readString(kMain, "X"), "1");
    EXPECT_EQ(first.readString(kMain, "Y"), "2");
    first.deleteKey(kMain);
    EXPECT_FALSE(second.keyExists(kMain));
}

TEST_F(SettingsStoreTest, BatchWritesOnceAtTheEnd) {
    SettingsStore store(fileName());
    SettingsStore other(fileName());
    {
        SettingsStore::UpdateBatch batch(store);
        store.writeString(kMain, "A", "1");
        {
            SettingsStore::UpdateBatch inner(store);
            store.writeString(kMain, "B", "2");
        }
        EXPECT_FALSE(fs::exists(fileName()));
        EXPECT_EQ(store.readString(kMain, "A"), "1");  // the writer sees its own values
        EXPECT_EQ(other.readString(kMain, "A"), "");
    }
    EXPECT_EQ(other.readString(kMain, "A"), "1");
    EXPECT_EQ(other.readString(kMain, "B"), "2");
}

TEST_F(SettingsStoreTest, EveryByteAndAwkwardNamesSurvive) {
    std::string all;
    for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
    SettingsStore store(fileName());
    store.writeString(kMain, "all", all);
    store.writeString(kMain, "name \"with\" = and \\ and \xE9", "v");
    store.writeString(kMain, "", "default value");
    store.writeString("Software\\Caf\xE9 [1]", "k", "v");
    SettingsStore again(fileName());
    EXPECT_EQ(again.readString(kMain, "all"), all);
    EXPECT_EQ(again.readString(kMain, "name \"with\" = and \\ and \xE9"), "v");
    EXPECT_EQ(again.readString(kMain, ""), "default value");
    EXPECT_EQ(again.readString("Software\\Caf\xC9 [1]", "k"), "");  // only ASCII letters fold
    EXPECT_EQ(again.readString("SOFTWARE\\Caf\xE9 [1]", "k"), "v");
    // The file is UTF-8 text, one value per line.
    const std::string text = fileText();
    EXPECT_NE(text.find("Caf\xC3\xA9 [1]"), std::string::npos);
}

TEST_F(SettingsStoreTest, ReadsConvertBetweenKinds) {
    SettingsStore store(fileName());
    store.writeString(kMain, "num", "42");
    store.writeString(kMain, "word", "abc");
    store.writeString(kMain, "t", "True");
    store.writeInteger(kMain, "int", 7);
    store.writeBinary(kMain, "bin", "zz");
    EXPECT_EQ(store.readInteger(kMain, "num"), 42);
    EXPECT_EQ(store.readInteger(kMain, "word", -1), -1);
    EXPECT_EQ(store.readString(kMain, "int"), "7");
    EXPECT_TRUE(store.readBool(kMain, "t"));
    EXPECT_TRUE(store.readBool(kMain, "int"));
    EXPECT_EQ(store.readString(kMain, "bin", "dflt"), "dflt");
    EXPECT_EQ(store.readBinary(kMain, "int", "dflt"), "dflt");
    store.writeInteger(kMain, "num", 5);  // a write replaces the kind too
    EXPECT_EQ(store.valueKind(kMain, "num"), ValueKind::Integer);
}

TEST_F(SettingsStoreTest, DeleteValue) {
    SettingsStore store(fileName());
    store.writeString(kMain, "A", "1");
    store.writeString(kMain, "B", "2");
    EXPECT_TRUE(store.deleteValue(kMain, "a"));
    EXPECT_FALSE(store.deleteValue(kMain, "a"));
    EXPECT_FALSE(store.deleteValue("Nowhere", "a"));
    EXPECT_EQ(SettingsStore(fileName()).valueNames(kMain), std::vector<std::string>{"B"});
    EXPECT_TRUE(store.keyExists(kMain));  // the key stays, empty or not
}

TEST_F(SettingsStoreTest, BrokenLinesAreSkippedNotFatal) {
    fs::create_directories(fs::path(fileName()).parent_path());
    std::ofstream(fileName()) << "garbage\n\"orphan\"=\"v\"\n[Software\\A]\n\"ok\"=\"1\"\n\"bad\"=int:x\n"
                                 "\"hex\"=hex:abc\n\"open\"=\"no end\n\"n\"=int:12\n";
    SettingsStore store(fileName());
    EXPECT_EQ(store.valueNames("Software\\A"), (std::vector<std::string>{"ok", "n"}));
    EXPECT_EQ(store.readInteger("Software\\A", "n"), 12);
}

TEST_F(SettingsStoreTest, AnUnwritableFileThrowsTheSystemMessage) {
    fs::create_directories(fileName());  // a folder where the file should be
    SettingsStore store(fileName());
    EXPECT_EQ(store.readString(kMain, "A", "d"), "d");
    EXPECT_THROW(store.writeString(kMain, "A", "1"), Exception);
}

TEST_F(SettingsStoreTest, TwoProcessesWritingDoNotCorruptTheFile) {
    // Each child writes its own key many times; the file must always parse,
    // and each child's last write of its own key must be there or lost whole.
    constexpr int kChildren = 4, kWrites = 60;
    std::vector<pid_t> children;
    for (int c = 0; c < kChildren; ++c) {
        const pid_t pid = ::fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            SettingsStore store(fileName());
            for (int i = 0; i < kWrites; ++i)
                store.writeString("Software\\Child " + std::to_string(c), "n", std::string(200, 'a' + c));
            ::_exit(0);
        }
        children.push_back(pid);
    }
    for (pid_t pid : children) {
        int status = 0;
        ::waitpid(pid, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    SettingsStore store(fileName());
    int found = 0;
    for (int c = 0; c < kChildren; ++c) {
        const std::string v = store.readString("Software\\Child " + std::to_string(c), "n");
        if (!v.empty()) {
            ++found;
            EXPECT_EQ(v, std::string(200, 'a' + c));
        }
    }
    EXPECT_GE(found, 1);
    int leftovers = 0;
    for (const auto& e : fs::directory_iterator(fs::path(fileName()).parent_path()))
        leftovers += e.path().filename() != "registry.ini";
    EXPECT_EQ(leftovers, 0);
}

TEST_F(SettingsStoreTest, RegistryIniFileMapsSectionsToSubkeys) {
    SettingsStore store(fileName());
    RegistryIniFile ini(store, std::string(keys::kStoredPropertiesMain));
    ini.writeString("Main", "EditorSettings_LineBreak", "lbCRLF");
    ini.writeInteger("Main", "FormVersion", 0);
    ini.writeBool("Main", "dxBarButtonStartWithNew_Down", true);
    EXPECT_EQ(store.readString(kMain, "EditorSettings_LineBreak"), "lbCRLF");
    EXPECT_EQ(store.valueKind(kMain, "FormVersion"), ValueKind::Integer);  // integers stay integers
    EXPECT_EQ(ini.readInteger("main", "formversion", 5), 0);
    EXPECT_TRUE(ini.readBool("Main", "dxBarButtonStartWithNew_Down", false));
    EXPECT_EQ(ini.sections(), std::vector<std::string>{"Main"});
    EXPECT_EQ(ini.keys("Main"),
              (std::vector<std::string>{"EditorSettings_LineBreak", "FormVersion", "dxBarButtonStartWithNew_Down"}));
    EXPECT_TRUE(ini.sectionExists("Main"));
    EXPECT_TRUE(ini.valueExists("Main", "FormVersion"));
    ini.deleteKey("Main", "FormVersion");
    EXPECT_FALSE(ini.valueExists("Main", "FormVersion"));
    ini.eraseSection("Main");
    EXPECT_FALSE(store.keyExists(kMain));
    EXPECT_TRUE(store.keyExists(keys::kStoredPropertiesMain));  // the key above stays

    RegistryIniFile common(store, std::string(keys::kCommon));
    common.writeString("DB Error", "NormPos", "1,2,3,4");
    EXPECT_EQ(store.readString("Software\\Zorfa Software\\Common\\DB Error", "NormPos"), "1,2,3,4");
    common.writeString("", "Direct", "x");  // no section: the key itself
    EXPECT_EQ(store.readString(keys::kCommon, "Direct"), "x");
}

}  // namespace
}  // namespace zorfa::platform
