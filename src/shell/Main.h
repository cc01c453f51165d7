#pragma once
// TMain: the one main window. It owns the tab container of the documents,
// the status bar, the file commands, the windows list, the recent files and
// the (still empty) tool panels, and it runs the program's life: FormCreate,
// the restore of stored properties, the first activation, and the shutdown
// with its close-query walk over the documents.
//
// The document manager is the part of TMain that creates, opens, saves and
// closes documents (DocumentManager.cpp). Everything that belongs to a later
// subsystem is reached through ShellHooks at its place in the order.
//
// Command handlers (the *Execute methods) throw; the actions run them under
// the catch-all, so a failed command ends in the error box.

#include <QMainWindow>
#include <QPointer>

#include <memory>
#include <string>
#include <vector>

#include "platform/AppPaths.h"
#include "platform/CatchAll.h"
#include "shell/RecentFiles.h"
#include "shell/ShellHooks.h"
#include "shell/StringHolder.h"

class QAction;
class QComboBox;
class QDockWidget;
class QLabel;
class QMenu;

namespace zorfa::platform {
class CursorControl;
class Dialogs;
class SettingsStore;
}  // namespace zorfa::platform

namespace zorfa::shell {

class TDocumentForm;
class TDocumentPanel;
class TDocumentTabContainer;

// Process-wide values beside TMain. LayoutRestored latches the main window's
// first activation; the two modifier sets come from "MenuKey" and
// "QuickTypeKey" of the stored values.
extern bool LayoutRestored;
extern Qt::KeyboardModifiers MenuKeyModifiers;
extern Qt::KeyboardModifiers QuickTypeModifiers;

// What the main window is given: the platform's services and the folder its
// files lie beside.
struct TMainServices {
    platform::Dialogs& dialogs;
    platform::CursorControl& cursor;
    platform::CatchAll& catchAll;
    platform::SettingsStore& settings;
    std::string appPath;
    std::unique_ptr<ShellHooks> hooks;  // null: the defaults
};

class TMain : public QMainWindow {
    Q_OBJECT
public:
    // Builds the window and runs FormCreate.
    explicit TMain(TMainServices services, QWidget* parent = nullptr);
    ~TMain() override;

    platform::Dialogs& Dialogs() { return dialogs_; }
    platform::CursorControl& Cursor() { return cursor_; }
    platform::CatchAll& CatchAll() { return catchAll_; }
    platform::SettingsStore& Settings() { return settings_; }
    ShellHooks& Hooks() { return *hooks_; }
    // AppPath, RegistryRoot and the paths derived from them; set in FormCreate.
    const platform::AppPaths& Paths() const { return paths_; }

    // ---- Status bar: 0 general, 1 connection, 2 position, 3 modified, 4 access, 5 keys
    static constexpr int kStatusPanelCount = 6;
    QString StatusPanelText(int index) const;
    void SetStatusPanelText(int index, const QString& text);

    // ---- Language selection state (filled through the hooks)
    struct SyntaxParserEntry {
        std::string Name;      // the language name
        std::string FileName;  // the scheme file, without a path
    };
    std::vector<SyntaxParserEntry> SyntaxParserList;
    std::string CurrentSyntaxParserName;
    QComboBox* dxBarComboSyntaxParsers() const { return syntaxParsers_; }

    // The defaults of the program's named settings: "StoredValues", "SQLQuickType".
    TZFStringHolder ZFStringHolder;

    // ---- Document manager
    // The size question, the dispatch by extension, then CreateDocument.
    void OpenDocumentFile(const std::string& path);
    // The new document's form; null when its load failed and it was closed again.
    TDocumentForm* CreateDocument(bool isNew, const std::string& path, bool asSpreadsheet, bool asRich);
    // The form commands go to: the console (when its SQL pane has the focus)
    // or the active document form; null for none.
    QWidget* ActiveDocumentForm(bool ignoreConsole = false);
    // The active tab's document form, the console left out.
    TDocumentForm* ActiveDocument() const;
    // The editor pane commands go to; throws zorfa::EAbort when there is none.
    QWidget* ActiveEditor(bool ignoreConsole = false);
    // Makes the form's tab the active tab.
    void ActivateDocument(TDocumentForm& form);

    int NewDocumentCounter() const { return newDocumentCounter_; }
    TDocumentTabContainer* TabContainer() const { return tabs_; }
    QWidget* dxDockPanelFiles() const;
    const TRecentFiles& RecentFiles() const { return recentFiles_; }
    void AddRecentFile(const std::string& path);
    void SetRecentFiles(std::vector<std::string> items);

    struct WindowsListItem {
        QString Text;
        QPointer<TDocumentPanel> Panel;
    };
    const QList<WindowsListItem>& WindowsList() const { return windowsList_; }

    // Save.Tag and SaveAs.Tag: 100 while not finished, 0 when finished.
    int SaveTag() const { return saveTag_; }
    int SaveAsTag() const { return saveAsTag_; }

    // ---- Command handlers
    void NewFileExecute();
    void NewRTFFileExecute();
    void NewXLSFileExecute();
    void OpenExecute();
    void SaveExecute();
    void SaveAsExecute();
    void SaveAllExecute();
    void FileCloseExecute();
    void ImportFromHtmlExecute();
    void ExitApplicationExecute();
    void RecentFileClick(int index);
    void WindowsListClick(int index);
    // Runs a handler as an action does: under the catch-all.
    template <class F>
    bool RunCommand(F&& handler);

    // ---- Life cycle
    // The main window's activation; its work runs once per process.
    void FormActivate();
    // The application's activation: the start-with documents, once.
    void ApplicationEventsActivate();
    bool FirstActivationDone = false;

    // ---- Actions and panels
    QAction* NewFile;
    QAction* NewRTFFile;
    QAction* NewXLSFile;
    QAction* Open;
    QAction* Save;
    QAction* SaveAs;
    QAction* SaveAll;
    QAction* FileClose;
    QAction* ImportFromHtml;
    QAction* ExitApplication;
    QAction* dxBarButtonStartWithNew;
    QAction* dxBarButtonStartWithNewRTF;
    QAction* dxBarButtonStartWithNewXLS;
    QAction* dxBarButtonViewClipText;
    QAction* dxBarButtonViewFileExplorer;
    QAction* dxBarButtonViewFormDB;
    QDockWidget* dxDockPanelClipText;
    QDockWidget* dxDockPanelFileExplorer;
    QDockWidget* dxDockPanelDatabase;
    QMenu* dxBarListWindows;
    QMenu* FileMenu;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;

private:
    void CreateActions();
    void CreateMenus();
    void CreateStatusBar();
    void CreateToolPanels();
    QAction* MakeAction(const char* name, const QString& caption, const QKeySequence& shortcut,
                        void (TMain::*handler)());

    void FormCreate();
    void RestoreFormPlacement();
    void ZFSStorageRestorePlacement();
    bool FormCloseQuery();
    void SaveFormPlacement();
    void FormClose();

    // Document manager internals.
    bool PanelCloseQuery(TDocumentPanel& panel);
    void PanelClose(TDocumentPanel& panel);
    void PanelActivate(TDocumentPanel& panel, bool active);
    void UpdateRecentFilesMenu();
    void UpdateWindowsListMenu();
    bool StoredValueIsTrue(const QString& name) const;

    platform::Dialogs& dialogs_;
    platform::CursorControl& cursor_;
    platform::CatchAll& catchAll_;
    platform::SettingsStore& settings_;
    std::string appPath_;
    std::unique_ptr<ShellHooks> hooks_;
    platform::AppPaths paths_;

    TDocumentTabContainer* tabs_;
    QComboBox* syntaxParsers_;
    QLabel* statusPanels_[kStatusPanelCount];
    QList<QAction*> recentFileActions_;
    QAction* recentFilesSeparator_;

    int newDocumentCounter_ = 0;
    int saveTag_ = 0;
    int saveAsTag_ = 0;
    TRecentFiles recentFiles_;
    QList<WindowsListItem> windowsList_;
    // The open dialog's state between runs: its file name and filter index.
    std::string openDialogFileName_;
    int openDialogFilterIndex_ = 1;
    bool placementRestored_ = false;
    bool placementSaved_ = false;
    bool formActivateRunning_ = false;
};

template <class F>
bool TMain::RunCommand(F&& handler) {
    return catchAll_.run(std::forward<F>(handler));
}

}  // namespace zorfa::shell
