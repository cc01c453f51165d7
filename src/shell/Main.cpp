#include "shell/Main.h"

#include "base/IniFile.h"
#include "platform/Cursor.h"
#include "platform/QtText.h"
#include "platform/SettingsStore.h"
#include "shell/DocumentPanel.h"
#include "shell/DocumentTabContainer.h"
#include "shell/ShellHooks.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScopeGuard>
#include <QStatusBar>
#include <QToolBar>

namespace zorfa::shell {

bool LayoutRestored = false;
Qt::KeyboardModifiers MenuKeyModifiers = Qt::NoModifier;
Qt::KeyboardModifiers QuickTypeModifiers = Qt::NoModifier;

TMain::TMain(TMainServices services, QWidget* parent)
    : QMainWindow(parent),
      dialogs_(services.dialogs),
      cursor_(services.cursor),
      catchAll_(services.catchAll),
      settings_(services.settings),
      appPath_(std::move(services.appPath)),
      hooks_(services.hooks ? std::move(services.hooks) : std::make_unique<ShellHooks>()) {
    setObjectName("Main");
    setWindowTitle("Zorfa Editor");
    resize(900, 650);
    ZFStringHolder.SetStrings("StoredValues", {"DefaultUncollapsed=False", "MenuKey=0", "QuickTypeKey=1",
                                               "BackgroundImage=", "DBPartSize=300"});
    ZFStringHolder.SetStrings("SQLQuickType", {});

    tabs_ = new TDocumentTabContainer(this);
    setCentralWidget(tabs_);
    CreateActions();
    CreateStatusBar();
    CreateToolPanels();
    CreateMenus();

    auto* textBar = addToolBar("Syntax Parser");
    textBar->setObjectName("dxBarGroupTEXTEdit");
    textBar->addWidget(new QLabel("Syntax Parser ", textBar));
    syntaxParsers_ = new QComboBox(textBar);
    syntaxParsers_->setObjectName("dxBarComboSyntaxParsers");
    syntaxParsers_->setEditable(false);
    syntaxParsers_->setMinimumContentsLength(16);
    textBar->addWidget(syntaxParsers_);
    connect(syntaxParsers_, &QComboBox::currentIndexChanged, this,
            [this] { RunCommand([this] { hooks_->SyntaxParsersChange(*this); }); });

    FormCreate();

    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive) RunCommand([this] { ApplicationEventsActivate(); });
    });
}

TMain::~TMain() {
    // A window that was shown and never closed still keeps what it restored.
    if (placementRestored_ && !placementSaved_) RunCommand([this] { hooks_->SaveFormPlacement(*this); });
    tabs_->blockSignals(true);
    RunCommand([this] { hooks_->WindowHandlesGone(*this); });
    // FormDestroy: SyntaxParserList goes with the object.
}

// ---------------------------------------------------------------- the frame

QAction* TMain::MakeAction(const char* name, const QString& caption, const QKeySequence& shortcut,
                           void (TMain::*handler)()) {
    auto* action = new QAction(caption, this);
    action->setObjectName(name);
    if (!shortcut.isEmpty()) action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, [this, handler] { RunCommand([this, handler] { (this->*handler)(); }); });
    return action;
}

void TMain::CreateActions() {
    NewFile = MakeAction("NewFile", "&New", QKeySequence("Ctrl+N"), &TMain::NewFileExecute);
    NewRTFFile = MakeAction("NewRTFFile", "New &RTF", QKeySequence("Ctrl+Shift+N"), &TMain::NewRTFFileExecute);
    NewXLSFile = MakeAction("NewXLSFile", "New &XLS", QKeySequence("Ctrl+Shift+X"), &TMain::NewXLSFileExecute);
    Open = MakeAction("Open", "&Open...", QKeySequence("Ctrl+O"), &TMain::OpenExecute);
    Save = MakeAction("Save", "&Save", QKeySequence("Ctrl+S"), &TMain::SaveExecute);
    SaveAs = MakeAction("SaveAs", "Save &As...", QKeySequence(), &TMain::SaveAsExecute);
    SaveAll = MakeAction("SaveAll", "Save A&ll", QKeySequence(), &TMain::SaveAllExecute);
    FileClose = MakeAction("FileClose", "&Close", QKeySequence("Ctrl+F4"), &TMain::FileCloseExecute);
    ImportFromHtml =
        MakeAction("ImportFromHtml", "&Import from HTML...", QKeySequence(), &TMain::ImportFromHtmlExecute);
    ExitApplication = MakeAction("ExitApplication", "E&xit", QKeySequence("Alt+X"), &TMain::ExitApplicationExecute);

    const auto option = [this](const char* name, const QString& caption) {
        auto* action = new QAction(caption, this);
        action->setObjectName(name);
        action->setCheckable(true);
        return action;
    };
    dxBarButtonStartWithNew = option("dxBarButtonStartWithNew", "Start with new &text document");
    dxBarButtonStartWithNewRTF = option("dxBarButtonStartWithNewRTF", "Start with new &RTF document");
    dxBarButtonStartWithNewXLS = option("dxBarButtonStartWithNewXLS", "Start with new &XLS document");
    dxBarButtonViewClipText = option("dxBarButtonViewClipText", "&Clip Text");
    dxBarButtonViewFileExplorer = option("dxBarButtonViewFileExplorer", "&File Explorer");
    dxBarButtonViewFormDB = option("dxBarButtonViewFormDB", "&Database");
}

void TMain::CreateMenus() {
    FileMenu = menuBar()->addMenu("&File");
    FileMenu->setObjectName("FileMenu");
    FileMenu->addActions({NewFile, NewRTFFile, NewXLSFile, Open, ImportFromHtml});
    FileMenu->addSeparator();
    FileMenu->addActions({Save, SaveAs, SaveAll, FileClose});
    FileMenu->addSeparator();
    recentFilesSeparator_ = FileMenu->addSeparator();
    FileMenu->addAction(ExitApplication);

    QMenu* view = menuBar()->addMenu("&View");
    view->addActions({dxBarButtonViewFileExplorer, dxBarButtonViewClipText, dxBarButtonViewFormDB});

    QMenu* options = menuBar()->addMenu("&Options");
    options->addActions({dxBarButtonStartWithNew, dxBarButtonStartWithNewRTF, dxBarButtonStartWithNewXLS});

    dxBarListWindows = menuBar()->addMenu("&Window");
    dxBarListWindows->setObjectName("dxBarListWindows");

    QToolBar* fileBar = addToolBar("File");
    fileBar->setObjectName("File");
    fileBar->addActions({NewFile, Open, Save, SaveAll});
    UpdateRecentFilesMenu();
    UpdateWindowsListMenu();
}

void TMain::CreateStatusBar() {
    static constexpr int kWidths[kStatusPanelCount] = {100, 250, 80, 70, 70, 120};
    for (int i = 0; i < kStatusPanelCount; ++i) {
        auto* panel = new QLabel(this);
        panel->setObjectName(QString("dxStatusBarPanel%1").arg(i));
        panel->setMinimumWidth(kWidths[i]);
        if (i == 2) panel->setAlignment(Qt::AlignCenter);
        statusBar()->addPermanentWidget(panel, i == 0 ? 1 : 0);
        statusPanels_[i] = panel;
    }
    statusPanels_[0]->setText("Ready");
}

void TMain::CreateToolPanels() {
    // The tool panels are placeholders until Clip Text, the file explorer
    // and the console land; they start hidden.
    const auto panel = [this](const char* name, const QString& caption, Qt::DockWidgetArea area,
                              QAction* viewButton) {
        auto* dock = new QDockWidget(caption, this);
        dock->setObjectName(name);
        dock->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
        auto* placeholder = new QLabel(caption + " is not available yet.", dock);
        placeholder->setAlignment(Qt::AlignCenter);
        dock->setWidget(placeholder);
        addDockWidget(area, dock);
        dock->hide();
        connect(viewButton, &QAction::toggled, dock, &QDockWidget::setVisible);
        connect(dock, &QDockWidget::visibilityChanged, viewButton, [dock, viewButton] {
            viewButton->setChecked(dock->isVisible());
        });
        return dock;
    };
    dxDockPanelFileExplorer =
        panel("dxDockPanelFileExplorer", "File Explorer", Qt::LeftDockWidgetArea, dxBarButtonViewFileExplorer);
    dxDockPanelClipText = panel("dxDockPanelClipText", "Clip Text", Qt::LeftDockWidgetArea, dxBarButtonViewClipText);
    dxDockPanelDatabase = panel("dxDockPanelDatabase", "Database", Qt::BottomDockWidgetArea, dxBarButtonViewFormDB);
}

QString TMain::StatusPanelText(int index) const {
    return index >= 0 && index < kStatusPanelCount ? statusPanels_[index]->text() : QString();
}

void TMain::SetStatusPanelText(int index, const QString& text) {
    if (index >= 0 && index < kStatusPanelCount) statusPanels_[index]->setText(text);
}

QWidget* TMain::dxDockPanelFiles() const { return tabs_->BasePanel(); }

// ---------------------------------------------------------------- start-up

void TMain::FormCreate() {
    QCoreApplication::processEvents();
    dxDockPanelFiles()->hide();
    paths_ = platform::derivePaths(appPath_);
    SyntaxParserList.clear();
    hooks_->GetSyntaxParsers(*this);
    hooks_->SetSyntaxParsers(*this);
    hooks_->LoadClipText(*this);
    hooks_->CreateConsole(*this);
    hooks_->LoadConnectionList(*this);
    hooks_->LoadConsoleFiles(*this);
    SetStatusPanelText(1, "Not connected");
    hooks_->LoadUserTools(*this);
    QCoreApplication::processEvents();
}

void TMain::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    // The stored properties come back with every show the program makes.
    if (!event->spontaneous()) RunCommand([this] { RestoreFormPlacement(); });
}

void TMain::RestoreFormPlacement() {
    placementSaved_ = false;
    hooks_->RestoreFormPlacement(*this);
    placementRestored_ = true;
    ZFSStorageRestorePlacement();
}

void TMain::ZFSStorageRestorePlacement() {
    bool ok = false;
    const int menuKey = ZFStringHolder.Value("StoredValues", "MenuKey").trimmed().toInt(&ok);
    if (ok && menuKey == 0) MenuKeyModifiers = Qt::AltModifier;
    if (ok && menuKey == 1) MenuKeyModifiers = Qt::ShiftModifier | Qt::AltModifier;
    const int quickTypeKey = ZFStringHolder.Value("StoredValues", "QuickTypeKey").trimmed().toInt(&ok);
    if (ok && quickTypeKey == 0) QuickTypeModifiers = Qt::AltModifier;
    if (ok && quickTypeKey == 1) QuickTypeModifiers = Qt::ShiftModifier | Qt::AltModifier;
    if (ok && quickTypeKey == 2) QuickTypeModifiers = Qt::ShiftModifier | Qt::ControlModifier;
    hooks_->SetMenuAccessModifier(*this, MenuKeyModifiers);
    hooks_->ApplyAllSettings(*this);
}

bool TMain::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate) RunCommand([this] { FormActivate(); });
    return QMainWindow::event(event);
}

void TMain::FormActivate() {
    // The pump below may deliver this activation again; it must not run twice.
    if (LayoutRestored || formActivateRunning_) return;
    formActivateRunning_ = true;
    const auto done = qScopeGuard([this] { formActivateRunning_ = false; });
    QCoreApplication::processEvents();
    if (settings_.keyExists(paths_.registryRoot + "\\Layout")) hooks_->LoadDockLayout(*this);
    hooks_->ShowToolPanelToolbars(*this);
    hooks_->GetSyntaxParsers(*this);
    const std::pair<QDockWidget*, QAction*> toolPanels[] = {
        {dxDockPanelClipText, dxBarButtonViewClipText},
        {dxDockPanelFileExplorer, dxBarButtonViewFileExplorer},
        {dxDockPanelDatabase, dxBarButtonViewFormDB},
    };
    for (const auto& [panel, viewButton] : toolPanels)
        if (panel->isVisible()) viewButton->setChecked(true);
    LayoutRestored = true;
}

void TMain::ApplicationEventsActivate() {
    if (FirstActivationDone) return;
    FirstActivationDone = true;
    if (dxBarButtonStartWithNew->isChecked()) CreateDocument(true, {}, false, false);
    if (dxBarButtonStartWithNewRTF->isChecked()) CreateDocument(true, {}, false, true);
    if (dxBarButtonStartWithNewXLS->isChecked()) CreateDocument(true, {}, true, false);
}

// ---------------------------------------------------------------- shutdown

void TMain::ExitApplicationExecute() { close(); }

void TMain::closeEvent(QCloseEvent* event) {
    bool canClose = false;
    RunCommand([&] { canClose = FormCloseQuery(); });
    if (!canClose) {
        event->ignore();
        return;
    }
    SaveFormPlacement();
    RunCommand([this] { FormClose(); });
    event->accept();
}

bool TMain::FormCloseQuery() {
    IniFile editorIni(paths_.editorIniFile);
    // The tabs as they stand before the first question: a save that converts
    // a document closes it and opens it again at the end, which shifts every
    // tab behind it down by one, and those must still be asked. The base
    // panel has no close query handler; every document panel has.
    for (const QPointer<TDocumentPanel>& panel : tabs_->DocumentPanels())
        if (panel && !panel->CloseQuery()) return false;
    if (syntaxParsers_->currentIndex() >= 0) {
        editorIni.writeString("EditorOptions", "SyntaxParser", platform::fromQString(syntaxParsers_->currentText()));
        editorIni.updateFile();
    }
    hooks_->DisconnectConsole(*this);
    return true;
}

void TMain::SaveFormPlacement() {
    // A window that never restored must not overwrite what it never read.
    if (!placementRestored_) return;
    RunCommand([this] { hooks_->SaveFormPlacement(*this); });
    placementSaved_ = true;
    // The program is ending: nothing resets the hourglass.
    cursor_.set(platform::CursorShape::Hourglass);
}

void TMain::FormClose() {
    // Document panels must never reach the saved layout.
    tabs_->blockSignals(true);
    for (int i = tabs_->count() - 1; i >= 1; --i) {
        if (TDocumentPanel* panel = tabs_->PanelAt(i)) {
            tabs_->removeTab(i);
            delete panel;
        }
    }
    tabs_->blockSignals(false);
    windowsList_.clear();
    UpdateWindowsListMenu();
    settings_.deleteKey(paths_.registryRoot + "\\Layout");
    hooks_->SaveDockLayout(*this);
}

}  // namespace zorfa::shell
