#include "shell/ShellHooks.h"

#include "base/Errors.h"
#include "base/IniFile.h"
#include "platform/QtText.h"
#include "platform/SettingsStore.h"
#include "shell/Main.h"

#include <QAction>
#include <QComboBox>

#include <algorithm>

namespace zorfa::shell {

namespace {

// The main window's stored properties: key RegistryRoot\Stored Properties\Main,
// section "Main", names as component + "_" + property.
constexpr const char* kMainSection = "Main";
constexpr const char* kRecentFilesProperty = "dxBarMRUFiles_Items";

std::string storedPropertiesKey(TMain& main) { return main.Paths().registryRoot + "\\Stored Properties\\Main"; }
std::string layoutKey(TMain& main) { return main.Paths().registryRoot + "\\Layout"; }

std::vector<QAction*> startWithOptions(TMain& main) {
    return {main.dxBarButtonStartWithNew, main.dxBarButtonStartWithNewRTF, main.dxBarButtonStartWithNewXLS};
}

std::string downProperty(const QAction* button) { return button->objectName().toStdString() + "_Down"; }

}  // namespace

ShellHooks::~ShellHooks() = default;

void ShellHooks::GetSyntaxParsers(TMain& main) {
    IniFile editorIni(main.Paths().editorIniFile);
    main.CurrentSyntaxParserName = editorIni.readString("EditorOptions", "SyntaxParser", "");
}

void ShellHooks::SetSyntaxParsers(TMain& main) {
    QComboBox* selector = main.dxBarComboSyntaxParsers();
    // The selector is sorted; filling it raises no change, selecting does.
    std::vector<TMain::SyntaxParserEntry> items = main.SyntaxParserList;
    std::stable_sort(items.begin(), items.end(), [](const auto& a, const auto& b) {
        return platform::toQString(a.Name).compare(platform::toQString(b.Name), Qt::CaseInsensitive) < 0;
    });
    {
        const QSignalBlocker filling(selector);
        selector->clear();
        for (const auto& item : items)
            selector->addItem(platform::toQString(item.Name), platform::toQString(item.FileName));
        selector->setCurrentIndex(-1);
    }
    const auto find = [&](const std::string& name) {
        return selector->findText(platform::toQString(name), Qt::MatchFixedString);
    };
    int start = find(main.CurrentSyntaxParserName);
    if (start < 0) start = find("None");
    if (start < 0 && selector->count() > 0) start = 0;
    if (start >= 0) selector->setCurrentIndex(start);
}

void ShellHooks::LoadClipText(TMain&) {}
void ShellHooks::CreateConsole(TMain&) {}
void ShellHooks::LoadConnectionList(TMain&) {}
void ShellHooks::LoadConsoleFiles(TMain&) {}
void ShellHooks::LoadUserTools(TMain&) {}

void ShellHooks::RestoreFormPlacement(TMain& main) {
    platform::RegistryIniFile store(main.Settings(), storedPropertiesKey(main));
    // A value never stored leaves the property as it is.
    const std::string countName = std::string(kRecentFilesProperty) + ".Count";
    if (store.valueExists(kMainSection, countName)) {
        std::vector<std::string> items;
        const std::int64_t count = store.readInteger(kMainSection, countName, 0);
        for (std::int64_t i = 0; i < count; ++i) {
            std::string item =
                store.readString(kMainSection, std::string(kRecentFilesProperty) + ".Item" + std::to_string(i));
            if (!item.empty()) items.push_back(std::move(item));
        }
        main.SetRecentFiles(std::move(items));
    }
    for (QAction* button : startWithOptions(main)) {
        const std::string value = store.readString(kMainSection, downProperty(button));
        if (sameNameIgnoringCase(value, "True")) button->setChecked(true);
        if (sameNameIgnoringCase(value, "False")) button->setChecked(false);
    }
}

void ShellHooks::SaveFormPlacement(TMain& main) {
    platform::SettingsStore::UpdateBatch batch(main.Settings());
    platform::RegistryIniFile store(main.Settings(), storedPropertiesKey(main));
    const auto& items = main.RecentFiles().Items();
    const std::string countName = std::string(kRecentFilesProperty) + ".Count";
    // A shorter list must not leave the old tail behind.
    const std::int64_t oldCount = store.readInteger(kMainSection, countName, 0);
    for (std::int64_t i = static_cast<std::int64_t>(items.size()); i < oldCount; ++i)
        store.deleteKey(kMainSection, std::string(kRecentFilesProperty) + ".Item" + std::to_string(i));
    store.writeInteger(kMainSection, countName, static_cast<std::int64_t>(items.size()));
    for (size_t i = 0; i < items.size(); ++i)
        store.writeString(kMainSection, std::string(kRecentFilesProperty) + ".Item" + std::to_string(i), items[i]);
    for (QAction* button : startWithOptions(main))
        store.writeString(kMainSection, downProperty(button), button->isChecked() ? "True" : "False");
    batch.commit();
}

void ShellHooks::SetMenuAccessModifier(TMain&, Qt::KeyboardModifiers) {}
void ShellHooks::ApplyAllSettings(TMain&) {}

void ShellHooks::LoadDockLayout(TMain& main) {
    const std::string state = main.Settings().readBinary(layoutKey(main), "MainWindowState");
    if (!state.empty()) main.restoreState(QByteArray(state.data(), static_cast<qsizetype>(state.size())));
}

void ShellHooks::ShowToolPanelToolbars(TMain&) {}
void ShellHooks::ChooseSyntaxParser(TMain&) {}
void ShellHooks::UpdateCollapseRegions(TMain&, bool, bool) {}
void ShellHooks::SyntaxParsersChange(TMain&) {}

void ShellHooks::ImportHtml(TMain&, TRichEditorForm&, const std::string&) {
    throw Exception("HTML import is not available yet");
}

void ShellHooks::DocumentActivated(TMain&, TDocumentForm&) {}

void ShellHooks::ExportHtml(TMain&, TDocumentForm&, const std::string&) {
    throw Exception("HTML export is not available yet");
}

void ShellHooks::ExportRtf(TMain&, TEditorForm&, const std::string&) {
    throw Exception("RTF export is not available yet");
}

QWidget* ShellHooks::ConsoleFormWithFocus(TMain&) { return nullptr; }
QWidget* ShellHooks::ConsoleSqlPaneWithFocus(TMain&) { return nullptr; }
void ShellHooks::DisconnectConsole(TMain&) {}

void ShellHooks::SaveDockLayout(TMain& main) {
    const QByteArray state = main.saveState();
    main.Settings().writeBinary(layoutKey(main), "MainWindowState",
                                std::string_view(state.constData(), static_cast<size_t>(state.size())));
}

void ShellHooks::WindowHandlesGone(TMain&) {}

}  // namespace zorfa::shell
