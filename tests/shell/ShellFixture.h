#pragma once
// A main window on the offscreen platform with scripted dialogs, a recording
// cursor, a temporary program folder and a private settings store; hooks
// that record the order in which the shell calls them.

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/CatchAll.h"
#include "platform/Cursor.h"
#include "platform/ScriptedDialogs.h"
#include "platform/SettingsStore.h"
#include "shell/Main.h"
#include "shell/ShellHooks.h"

namespace zorfa::shell::testing {

// The scripted dialogs, with a look at the moment each question is asked.
class ObservedDialogs final : public platform::Dialogs {
public:
    platform::ScriptedDialogs script;
    std::function<void(const std::string& question)> onQuestion;

    bool askYesNo(const std::string& text) override {
        if (onQuestion) onQuestion(text);
        return script.askYesNo(text);
    }
    platform::Answer askYesNoCancel(const std::string& text) override {
        if (onQuestion) onQuestion(text);
        return script.askYesNoCancel(text);
    }
    void showError(const std::string& text, int helpContext) override { script.showError(text, helpContext); }
    void showErrorOk(const std::string& text) override { script.showErrorOk(text); }
    void showInformation(const std::string& text) override { script.showInformation(text); }
    std::optional<platform::FileChoice> openFile(const platform::OpenFileRequest& request) override {
        return script.openFile(request);
    }
    std::optional<platform::FileChoice> saveFile(const platform::SaveFileRequest& request) override {
        return script.saveFile(request);
    }
};

class RecordingHooks : public ShellHooks {
public:
    explicit RecordingHooks(std::vector<std::string>& calls) : calls_(calls) {}

    void GetSyntaxParsers(TMain& main) override { note("GetSyntaxParsers"); ShellHooks::GetSyntaxParsers(main); }
    void SetSyntaxParsers(TMain& main) override { note("SetSyntaxParsers"); ShellHooks::SetSyntaxParsers(main); }
    void LoadClipText(TMain&) override { note("LoadClipText"); }
    void CreateConsole(TMain&) override { note("CreateConsole"); }
    void LoadConnectionList(TMain&) override { note("LoadConnectionList"); }
    void LoadConsoleFiles(TMain&) override { note("LoadConsoleFiles"); }
    void LoadUserTools(TMain&) override { note("LoadUserTools"); }
    void RestoreFormPlacement(TMain& main) override {
        note("RestoreFormPlacement");
        ShellHooks::RestoreFormPlacement(main);
    }
    void SaveFormPlacement(TMain& main) override {
        note("SaveFormPlacement");
        ShellHooks::SaveFormPlacement(main);
    }
    void SetMenuAccessModifier(TMain&, Qt::KeyboardModifiers) override { note("SetMenuAccessModifier"); }
    void ApplyAllSettings(TMain&) override { note("ApplyAllSettings"); }
    void LoadDockLayout(TMain& main) override { note("LoadDockLayout"); ShellHooks::LoadDockLayout(main); }
    void ShowToolPanelToolbars(TMain&) override { note("ShowToolPanelToolbars"); }
    void ChooseSyntaxParser(TMain&) override { note("ChooseSyntaxParser"); }
    void UpdateCollapseRegions(TMain&, bool collapsed, bool reset) override {
        note(std::string("UpdateCollapseRegions(") + (collapsed ? "true" : "false") + "," +
             (reset ? "true" : "false") + ")");
    }
    void SyntaxParsersChange(TMain&) override { note("SyntaxParsersChange"); }
    void DisconnectConsole(TMain&) override { note("DisconnectConsole"); }
    void SaveDockLayout(TMain& main) override { note("SaveDockLayout"); ShellHooks::SaveDockLayout(main); }
    void WindowHandlesGone(TMain&) override { note("WindowHandlesGone"); }

private:
    void note(std::string call) { calls_.push_back(std::move(call)); }
    std::vector<std::string>& calls_;
};

class ShellTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // A new main window over the same folder and store, shown (so its stored
    // properties are restored). The previous one is destroyed first.
    TMain& NewMain(bool show = true);

    std::string PathOf(const std::string& name) const;
    std::string WriteFile(const std::string& name, const std::string& bytes) const;
    static std::string ReadFile(const std::string& path);
    bool FileExists(const std::string& path) const;

    int DocumentCount() const;
    std::vector<QString> TabCaptions() const;
    // The texts of every error box shown so far.
    std::vector<std::string> Errors() const;
    platform::ScriptedDialogs& Script() { return dialogs.script; }

    QTemporaryDir folder;
    ObservedDialogs dialogs;
    platform::RecordingCursor cursor;
    platform::CatchAll catchAll{dialogs, cursor};
    std::unique_ptr<platform::SettingsStore> settings;
    std::vector<std::string> calls;
    std::unique_ptr<TMain> main;
};

}  // namespace zorfa::shell::testing
