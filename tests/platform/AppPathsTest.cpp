#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "platform/AppPaths.h"

namespace zorfa::platform {
namespace {

// Sets or clears an environment variable for one test and puts it back.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const char* value) : name_(name) {
        if (const char* old = std::getenv(name)) old_ = old, hadOld_ = true;
        if (value) ::setenv(name, value, 1); else ::unsetenv(name);
    }
    ~ScopedEnv() {
        if (hadOld_) ::setenv(name_, old_.c_str(), 1); else ::unsetenv(name_);
    }

private:
    const char* name_;
    std::string old_;
    bool hadOld_ = false;
};

TEST(AppPaths, DerivedExactlyFromTheFolder) {
    const AppPaths p = derivePaths("/opt/Zorfa Editor/");
    EXPECT_EQ(p.appPath, "/opt/Zorfa Editor/");
    EXPECT_EQ(p.registryRoot, "Software\\Zorfa Software\\Zorfa Editor");
    EXPECT_EQ(p.syntaxSchemesPath, "/opt/Zorfa Editor/Syntax Schemes/");
    EXPECT_EQ(p.quickTypePath, "/opt/Zorfa Editor/Quick Type/");
    EXPECT_EQ(p.templatesPath, "/opt/Zorfa Editor/Templates/");
    EXPECT_EQ(p.editorIniFile, "/opt/Zorfa Editor/ZorfaEditor.ini");
    EXPECT_EQ(p.textMemoryFile, "/opt/Zorfa Editor/TextMemory.mem");
    EXPECT_EQ(p.databaseIniFile, "/opt/Zorfa Editor/ZorfaEDB.ini");
}

TEST(AppPaths, FolderGetsItsSlashAndBecomesAbsolute) {
    EXPECT_EQ(derivePaths("/opt/zorfa").appPath, "/opt/zorfa/");
    EXPECT_EQ(derivePaths("/opt/./x/../zorfa").appPath, "/opt/zorfa/");
    const std::string cwd = std::filesystem::current_path().string();
    EXPECT_EQ(derivePaths("rel").appPath, cwd + "/rel/");
}

TEST(AppPaths, EnvironmentOverridesTheProgramFolder) {
    {
        ScopedEnv env(kAppPathVariable, "/srv/zorfa");
        EXPECT_EQ(detectAppPath(), "/srv/zorfa/");
        EXPECT_EQ(pathsForThisProcess().editorIniFile, "/srv/zorfa/ZorfaEditor.ini");
    }
    {
        ScopedEnv env(kAppPathVariable, "/srv/zorfa/");
        EXPECT_EQ(detectAppPath(), "/srv/zorfa/");
    }
}

TEST(AppPaths, WithoutTheVariableItIsTheProgramsFolder) {
    ScopedEnv unset(kAppPathVariable, nullptr);
    ScopedEnv empty(kAppPathVariable, "");
    const std::string exe = std::filesystem::read_symlink("/proc/self/exe").string();
    const std::string folder = exe.substr(0, exe.rfind('/') + 1);
    EXPECT_EQ(programFolder(), folder);
    EXPECT_EQ(detectAppPath(), folder);
    EXPECT_EQ(pathsForThisProcess().syntaxSchemesPath, folder + "Syntax Schemes/");
}

}  // namespace
}  // namespace zorfa::platform
