// The document manager: the part of TMain that creates, opens, saves and
// closes documents and knows which one is active.

#include "shell/Main.h"

#include "base/Errors.h"
#include "platform/Cursor.h"
#include "platform/Dialogs.h"
#include "platform/FileFacts.h"
#include "platform/QtText.h"
#include "shell/DocumentPanel.h"
#include "shell/DocumentTabContainer.h"
#include "shell/EditorForm.h"
#include "shell/RichEditorForm.h"
#include "shell/TextLinesView.h"
#include "shell/ShellHooks.h"
#include "shell/XLSEditorForm.h"

#include <QAction>
#include <QMenu>


namespace zorfa::shell {

namespace {

constexpr std::int64_t kLargeFileSize = 52428800;

constexpr const char* kOpenDialogFilter =
    "All files (*.*)|*.*|TEXT files (*.txt)|*.txt|RTF files (*.rtf)|*.rtf|XLS files (*.xls)|*.xls|"
    "PASCAL files (*.pas)|*.pas|C files (*.c)|*.c|Java files (*.java)|*.java|"
    "HTML files (*.html,*.htm)|*.html;*.htm|SQL files (*.sql)|*.sql";
constexpr int kOpenDialogHtmlRow = 8;

std::string lowerExtension(const std::string& path) {
    std::string ext = platform::extractFileExt(path);
    for (char& c : ext)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return ext;
}

// The caption of an opened file: its name part, as code-page text.
std::string captionOf(const std::string& path) {
    return platform::displayFileName(platform::extractFileName(path));
}

// The open dialog keeps its file name and filter row from one run to the next.
std::optional<platform::FileChoice> runOpenDialog(platform::Dialogs& dialogs, std::string& fileName,
                                                  int& filterIndex) {
    platform::OpenFileRequest request;
    request.filter = kOpenDialogFilter;
    request.filterIndex = filterIndex;
    request.fileName = fileName;
    auto choice = dialogs.openFile(request);
    if (choice) {
        fileName = choice->fileName;
        filterIndex = choice->filterIndex;
    }
    return choice;
}

}  // namespace

// ---------------------------------------------------------------- open and create

void TMain::OpenDocumentFile(const std::string& path) {
    if (platform::fileSize(path) > kLargeFileSize &&
        !dialogs_.askYesNo("File size is greater than 50 MB, file operations may be very slow, open anyway ?"))
        return;
    const std::string ext = lowerExtension(path);
    if (ext == ".rtf")
        CreateDocument(false, path, false, true);
    else if (ext == ".xls")
        CreateDocument(false, path, true, false);
    else
        CreateDocument(false, path, false, false);
}

TDocumentForm* TMain::CreateDocument(bool isNew, const std::string& path, bool asSpreadsheet, bool asRich) {
    auto* panel = new TDocumentPanel;
    tabs_->AddPanel(panel, QString());
    QPointer<TDocumentPanel> panelAlive(panel);

    TDocumentForm* form;
    if (asSpreadsheet)
        form = new TXLSEditorForm(*this, panel);
    else if (asRich)
        form = new TRichEditorForm(*this, panel);
    else
        form = new TEditorForm(*this, panel);
    panel->OnCloseQuery = [this](TDocumentPanel& p) { return PanelCloseQuery(p); };
    panel->OnClose = [this](TDocumentPanel& p) { PanelClose(p); };
    panel->OnActivate = [this](TDocumentPanel& p, bool active) { PanelActivate(p, active); };
    panel->SetForm(form);

    const std::string ext = lowerExtension(path);
    const bool htmlImport = !asSpreadsheet && asRich && (ext == ".htm" || ext == ".html");
    bool loadFailed = false;
    // The load and what follows it on success; an exception goes to the
    // catch-all and the document is closed again further down.
    const auto guarded = [&](auto&& load) {
        try {
            load();
        } catch (...) {
            loadFailed = true;
            catchAll_.handle(std::current_exception());
        }
    };
    // The read-only attribute of an opened file; an import does not look at it.
    const bool readOnly = !isNew && !htmlImport && platform::isReadOnly(path);
    const auto showAccess = [&] { SetStatusPanelText(4, readOnly ? "Read only" : "Writable"); };

    if (isNew) {
        ++newDocumentCounter_;
        const char* prefix = asSpreadsheet ? "New XLS file " : asRich ? "New RTF file " : "New file ";
        form->SetCaption(prefix + std::to_string(newDocumentCounter_));
    } else if (htmlImport) {
        // An imported page is a new document: its first Save asks for a name.
        ++newDocumentCounter_;
        form->SetCaption("New RTF file " + std::to_string(newDocumentCounter_));
        guarded([&] { hooks_->ImportHtml(*this, static_cast<TRichEditorForm&>(*form), path); });
    } else if (asSpreadsheet) {
        form->SetCaption(captionOf(path));
        form->SaveDialog().FileName = path;
        cursor_.set(platform::CursorShape::Hourglass);
        guarded([&] {
            form->LoadFromFile(path);
            if (readOnly) form->SetReadOnly(true);
            showAccess();
        });
        form->update();
    } else {
        form->SetCaption(captionOf(path));
        form->SaveDialog().FileName = path;
        if (readOnly) form->SetReadOnly(true);
        form->update();
        cursor_.set(platform::CursorShape::Hourglass);
        guarded([&] {
            form->LoadFromFile(path);
            showAccess();
        });
    }

    cursor_.set(platform::CursorShape::Default);
    form->SetModified(false);

    const QString caption = platform::toQString(form->Caption());
    tabs_->SetPanelCaption(panel, caption);
    windowsList_.append({caption, panel});
    UpdateWindowsListMenu();

    // Even a file that failed to load stays in the recent files.
    if (!isNew) AddRecentFile(path);

    const bool text = form->Kind() == TDocumentKind::Text;
    if (text) {
        if (!isNew) hooks_->ChooseSyntaxParser(*this);
        hooks_->UpdateCollapseRegions(*this, !StoredValueIsTrue("DefaultUncollapsed"), false);
    }
    if (QWidget* control = form->MainControl()) control->setFocus();
    // The change handler runs even when the selection did not change, so the
    // new form takes the language the selector shows.
    if (text) hooks_->SyntaxParsersChange(*this);

    if (loadFailed && panelAlive) tabs_->CloseTab(tabs_->IndexOfPanel(panel));
    if (!panelAlive) return nullptr;
    PanelActivate(*panel, true);
    return form;
}

bool TMain::StoredValueIsTrue(const QString& name) const {
    const QString value = ZFStringHolder.Value("StoredValues", name).trimmed();
    bool isNumber = false;
    const int number = value.toInt(&isNumber);
    return isNumber ? number != 0 : value.compare("True", Qt::CaseInsensitive) == 0;
}

// ---------------------------------------------------------------- panel events

bool TMain::PanelCloseQuery(TDocumentPanel& panel) {
    return panel.Form() ? panel.Form()->FormCloseQuery() : true;
}

void TMain::PanelClose(TDocumentPanel& panel) {
    windowsList_.removeIf([&](const WindowsListItem& item) { return item.Panel == &panel; });
    UpdateWindowsListMenu();
}

void TMain::PanelActivate(TDocumentPanel& panel, bool active) {
    if (!active || !panel.Form()) return;
    TDocumentForm* form = panel.Form();
    form->FormActivate();
    if (QWidget* control = form->MainControl()) control->setFocus();
}

// ---------------------------------------------------------------- active document

QWidget* TMain::ActiveDocumentForm(bool ignoreConsole) {
    if (!ignoreConsole)
        if (QWidget* console = hooks_->ConsoleFormWithFocus(*this)) return console;
    return ActiveDocument();
}

TDocumentForm* TMain::ActiveDocument() const {
    const TDocumentPanel* panel = tabs_->PanelAt(tabs_->currentIndex());
    return panel ? panel->Form() : nullptr;
}

QWidget* TMain::ActiveEditor(bool ignoreConsole) {
    if (!ignoreConsole)
        if (QWidget* pane = hooks_->ConsoleSqlPaneWithFocus(*this)) return pane;
    QWidget* form = ActiveDocumentForm(ignoreConsole);
    if (auto* textForm = qobject_cast<TEditorForm*>(form)) return textForm->EasyEdit();
    if (auto* richForm = qobject_cast<TRichEditorForm*>(form)) return richForm->EasyRichEdit();
    throw EAbort();
}

void TMain::ActivateDocument(TDocumentForm& form) {
    for (int i = 0; i < tabs_->count(); ++i) {
        TDocumentPanel* panel = tabs_->PanelAt(i);
        if (panel && panel->Form() == &form) {
            tabs_->setCurrentIndex(i);
            return;
        }
    }
}

// ---------------------------------------------------------------- commands

void TMain::NewFileExecute() { CreateDocument(true, {}, false, false); }

void TMain::NewRTFFileExecute() { CreateDocument(true, {}, false, true); }

void TMain::NewXLSFileExecute() { CreateDocument(true, {}, true, false); }

void TMain::OpenExecute() {
    if (const auto choice = runOpenDialog(dialogs_, openDialogFileName_, openDialogFilterIndex_))
        OpenDocumentFile(choice->fileName);
}

void TMain::ImportFromHtmlExecute() {
    openDialogFilterIndex_ = kOpenDialogHtmlRow;
    if (const auto choice = runOpenDialog(dialogs_, openDialogFileName_, openDialogFilterIndex_))
        CreateDocument(false, choice->fileName, false, true);
    openDialogFilterIndex_ = 1;
}

void TMain::SaveExecute() {
    saveTag_ = 100;
    auto* form = qobject_cast<TDocumentForm*>(ActiveDocumentForm());
    if (!form) return;
    if (form->FileName().empty()) {
        SaveAsExecute();
        saveTag_ = saveAsTag_;
        return;
    }
    cursor_.set(platform::CursorShape::Hourglass);
    platform::requireWritable(form->FileName());
    form->SaveToFile(form->FileName());
    cursor_.set(platform::CursorShape::Default);
    form->SetModified(false);
    saveTag_ = 0;
}

void TMain::SaveAsExecute() {
    saveAsTag_ = 100;
    auto* form = qobject_cast<TDocumentForm*>(ActiveDocumentForm());
    if (!form) return;
    TSaveDialog& saveDialog = form->SaveDialog();
    platform::SaveFileRequest request;
    request.filter = saveDialog.Filter;
    request.filterIndex = saveDialog.FilterIndex;
    request.fileName = saveDialog.FileName;
    request.defaultExtension = saveDialog.DefaultExt;
    const auto choice = dialogs_.saveFile(request);
    if (!choice) return;
    saveDialog.FileName = choice->fileName;
    saveDialog.FilterIndex = choice->filterIndex;
    const std::string fileName = choice->fileName;

    cursor_.set(platform::CursorShape::Hourglass);
    platform::requireWritable(fileName);
    // The format follows the kind and the filter row; some rows convert the
    // document, which is then closed and opened again as its new kind.
    bool reopen = false;
    bool reopenAsRich = false;
    const int row = saveDialog.FilterIndex;
    const TDocumentKind kind = form->Kind();
    if (kind != TDocumentKind::Spreadsheet && row == 2) {
        hooks_->ExportHtml(*this, *form, fileName);
        reopen = true;
    } else if (kind == TDocumentKind::Text && row == 3) {
        hooks_->ExportRtf(*this, static_cast<TEditorForm&>(*form), fileName);
        reopen = reopenAsRich = true;
    } else if (kind == TDocumentKind::Rich && row == 3) {
        static_cast<TRichEditorForm&>(*form).SavePlainText(fileName);
        reopen = true;
    } else {
        form->SaveToFile(fileName);
    }

    AddRecentFile(fileName);
    // The panel and the windows list show the new name; the form's own
    // caption keeps the old one (the close question prefers the file name).
    auto* panel = qobject_cast<TDocumentPanel*>(form->parentWidget());
    const QString caption = platform::toQString(captionOf(fileName));
    tabs_->SetPanelCaption(panel, caption);
    for (WindowsListItem& item : windowsList_)
        if (item.Panel == panel) item.Text = caption;
    UpdateWindowsListMenu();
    cursor_.set(platform::CursorShape::Default);
    form->SetModified(false);

    if (reopen) {
        FileCloseExecute();
        CreateDocument(false, fileName, false, reopenAsRich);
    }
    saveAsTag_ = 0;
}

void TMain::SaveAllExecute() {
    QPointer<QWidget> remembered = tabs_->currentWidget();
    // The tabs as they stand now: a save that converts a document reopens it
    // at the end and shifts the tabs behind it, which must still be saved.
    for (const QPointer<TDocumentPanel>& panel : tabs_->DocumentPanels()) {
        if (!panel) continue;
        tabs_->ActivatePanel(panel);
        SaveExecute();
    }
    if (remembered) tabs_->setCurrentWidget(remembered);
}

void TMain::FileCloseExecute() {
    if (tabs_->count() > 0) tabs_->CloseTab(tabs_->currentIndex());
}

// ---------------------------------------------------------------- recent files and windows list

void TMain::AddRecentFile(const std::string& path) {
    recentFiles_.Add(path);
    UpdateRecentFilesMenu();
}

void TMain::SetRecentFiles(std::vector<std::string> items) {
    recentFiles_.SetItems(std::move(items));
    UpdateRecentFilesMenu();
}

void TMain::RecentFileClick(int index) {
    const auto& items = recentFiles_.Items();
    if (index < 0 || index >= static_cast<int>(items.size())) return;
    const std::string name = items[static_cast<size_t>(index)];
    if (platform::fileExists(name))
        OpenDocumentFile(name);
    else
        dialogs_.showErrorOk("File not found !\r\n(" + platform::displayFileName(name) + ")");
}

void TMain::UpdateRecentFilesMenu() {
    qDeleteAll(recentFileActions_);
    recentFileActions_.clear();
    const auto& items = recentFiles_.Items();
    for (int i = 0; i < static_cast<int>(items.size()); ++i) {
        auto* action = new QAction(QString("&%1 %2").arg(i + 1).arg(platform::pathToQString(items[i])), FileMenu);
        action->setObjectName(QString("dxBarMRUFilesItem%1").arg(i));
        connect(action, &QAction::triggered, this, [this, i] { RunCommand([this, i] { RecentFileClick(i); }); });
        FileMenu->insertAction(recentFilesSeparator_, action);
        recentFileActions_.append(action);
    }
}

void TMain::WindowsListClick(int index) {
    if (index < 0 || index >= windowsList_.size()) return;
    if (TDocumentPanel* panel = windowsList_[index].Panel) tabs_->ActivatePanel(panel);
}

void TMain::UpdateWindowsListMenu() {
    dxBarListWindows->clear();
    for (int i = 0; i < windowsList_.size(); ++i) {
        QAction* action = dxBarListWindows->addAction(windowsList_[i].Text);
        connect(action, &QAction::triggered, this, [this, i] { RunCommand([this, i] { WindowsListClick(i); }); });
    }
}

}  // namespace zorfa::shell
