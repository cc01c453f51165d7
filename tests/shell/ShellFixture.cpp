#include "ShellFixture.h"

#include <QTabWidget>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "shell/DocumentTabContainer.h"

namespace zorfa::shell::testing {

void ShellTest::SetUp() {
    ASSERT_TRUE(folder.isValid());
    settings = std::make_unique<platform::SettingsStore>(PathOf("settings/registry.ini"));
    LayoutRestored = false;
}

void ShellTest::TearDown() {
    main.reset();
    EXPECT_TRUE(Script().unexpected().empty()) << Script().unexpected().front();
}

TMain& ShellTest::NewMain(bool show) {
    main.reset();
    calls.clear();
    main = std::make_unique<TMain>(TMainServices{dialogs, cursor, catchAll, *settings, folder.path().toStdString(),
                                                 std::make_unique<RecordingHooks>(calls)});
    if (show) main->show();
    return *main;
}

std::string ShellTest::PathOf(const std::string& name) const { return folder.path().toStdString() + "/" + name; }

std::string ShellTest::WriteFile(const std::string& name, const std::string& bytes) const {
    const std::string path = PathOf(name);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

std::string ShellTest::ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

bool ShellTest::FileExists(const std::string& path) const { return std::filesystem::exists(path); }

int ShellTest::DocumentCount() const { return main->TabContainer()->DocumentCount(); }

std::vector<QString> ShellTest::TabCaptions() const {
    std::vector<QString> captions;
    const TDocumentTabContainer* tabs = main->TabContainer();
    for (int i = 1; i < tabs->count(); ++i) captions.push_back(tabs->tabText(i));
    return captions;
}

std::vector<std::string> ShellTest::Errors() const {
    std::vector<std::string> texts;
    for (const auto& asked : dialogs.script.asked())
        if (asked.kind == platform::BoxKind::ErrorHelp || asked.kind == platform::BoxKind::ErrorOk)
            texts.push_back(asked.text);
    return texts;
}

}  // namespace zorfa::shell::testing
