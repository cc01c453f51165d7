#include "ShellFixture.h"

#include <QAction>
#include <QComboBox>
#include <QDockWidget>
#include <QProgressBar>
#include <QTimer>

#include <algorithm>

#include "base/IniFile.h"
#include "shell/DocumentForm.h"
#include "shell/DocumentTabContainer.h"
#include "shell/FormAppLoading.h"

namespace zorfa::shell::testing {
namespace {

constexpr const char* kMainSection = "Software\\Zorfa Software\\Zorfa Editor\\Stored Properties\\Main\\Main";
constexpr const char* kLayout = "Software\\Zorfa Software\\Zorfa Editor\\Layout";

class LifeCycle : public ShellTest {};

TEST_F(LifeCycle, FormCreateRunsItsStepsInOrderAndShowRestores) {
    TMain& m = NewMain(false);
    EXPECT_EQ(calls, (std::vector<std::string>{"GetSyntaxParsers", "SetSyntaxParsers", "LoadClipText",
                                                "CreateConsole", "LoadConnectionList", "LoadConsoleFiles",
                                                "LoadUserTools"}));
    EXPECT_EQ(m.StatusPanelText(0), "Ready");
    EXPECT_EQ(m.StatusPanelText(1), "Not connected");
    EXPECT_EQ(m.Paths().appPath, folder.path().toStdString() + "/");
    EXPECT_EQ(m.Paths().editorIniFile, folder.path().toStdString() + "/ZorfaEditor.ini");
    EXPECT_TRUE(m.dxDockPanelFiles()->isHidden());
    EXPECT_EQ(m.ZFStringHolder.Strings("StoredValues"),
              (QStringList{"DefaultUncollapsed=False", "MenuKey=0", "QuickTypeKey=1", "BackgroundImage=",
                           "DBPartSize=300"}));
    EXPECT_FALSE(m.dxDockPanelClipText->isVisible());
    EXPECT_FALSE(m.dxDockPanelFileExplorer->isVisible());
    EXPECT_FALSE(m.dxDockPanelDatabase->isVisible());

    calls.clear();
    MenuKeyModifiers = Qt::NoModifier;
    QuickTypeModifiers = Qt::NoModifier;
    m.show();
    EXPECT_EQ(std::vector<std::string>(calls.begin(), calls.begin() + 3),
              (std::vector<std::string>{"RestoreFormPlacement", "SetMenuAccessModifier", "ApplyAllSettings"}));
    EXPECT_EQ(MenuKeyModifiers, Qt::AltModifier);
    EXPECT_EQ(QuickTypeModifiers, Qt::ShiftModifier | Qt::AltModifier);
}

TEST_F(LifeCycle, MenuAndQuickTypeKeysFollowTheStoredValues) {
    TMain& m = NewMain(false);
    m.ZFStringHolder.SetStrings("StoredValues", {"MenuKey=1", "QuickTypeKey=2"});
    m.show();
    EXPECT_EQ(MenuKeyModifiers, Qt::ShiftModifier | Qt::AltModifier);
    EXPECT_EQ(QuickTypeModifiers, Qt::ShiftModifier | Qt::ControlModifier);

    // Any other value leaves the set as it was.
    TMain& other = NewMain(false);
    other.ZFStringHolder.SetStrings("StoredValues", {"MenuKey=7", "QuickTypeKey=x"});
    other.show();
    EXPECT_EQ(MenuKeyModifiers, Qt::ShiftModifier | Qt::AltModifier);
    EXPECT_EQ(QuickTypeModifiers, Qt::ShiftModifier | Qt::ControlModifier);
}

TEST_F(LifeCycle, LastLanguageIsReadFromTheEditorIniAndSelected) {
    WriteFile("ZorfaEditor.ini", "[EditorOptions]\nSyntaxParser=Java\n");
    // A hook standing in for the scheme scan puts three languages in the list.
    struct Languages : RecordingHooks {
        using RecordingHooks::RecordingHooks;
        void GetSyntaxParsers(TMain& main) override {
            RecordingHooks::GetSyntaxParsers(main);
            for (const char* name : {"None", "Java", "C"}) main.SyntaxParserList.push_back({name, name + std::string(".xs")});
        }
    };
    main = std::make_unique<TMain>(TMainServices{dialogs, cursor, catchAll, *settings, folder.path().toStdString(),
                                                 std::make_unique<Languages>(calls)});
    EXPECT_EQ(main->CurrentSyntaxParserName, "Java");
    QComboBox* selector = main->dxBarComboSyntaxParsers();
    ASSERT_EQ(selector->count(), 3);
    EXPECT_EQ(selector->itemText(0), "C");  // sorted
    EXPECT_EQ(selector->currentText(), "Java");
    EXPECT_EQ(selector->currentData().toString(), "Java.xs");

    // The first activation scans again: the list grows, the selector does not.
    main->FormActivate();
    EXPECT_EQ(main->SyntaxParserList.size(), 6u);
    EXPECT_EQ(selector->count(), 3);
    EXPECT_TRUE(LayoutRestored);
}

TEST_F(LifeCycle, FirstActivationRunsOnceBehindTheLatch) {
    TMain& m = NewMain();
    LayoutRestored = false;
    calls.clear();
    m.FormActivate();
    EXPECT_EQ(calls, (std::vector<std::string>{"ShowToolPanelToolbars", "GetSyntaxParsers"}));  // no layout key yet
    calls.clear();
    m.FormActivate();
    EXPECT_TRUE(calls.empty());

    settings->writeString(kLayout, "x", "y");
    LayoutRestored = false;
    m.FormActivate();
    EXPECT_EQ(calls.front(), "LoadDockLayout");
}

TEST_F(LifeCycle, StartWithOptionsOpenDocumentsBesideTheCommandLineFiles) {
    TMain& first = NewMain();
    EXPECT_FALSE(first.dxBarButtonStartWithNew->isChecked());  // off by default
    first.dxBarButtonStartWithNew->setChecked(true);
    first.dxBarButtonStartWithNewXLS->setChecked(true);
    ASSERT_TRUE(first.close());
    EXPECT_EQ(settings->readString(kMainSection, "dxBarButtonStartWithNew_Down"), "True");
    EXPECT_EQ(settings->readString(kMainSection, "dxBarButtonStartWithNewRTF_Down"), "False");

    TMain& m = NewMain();
    EXPECT_TRUE(m.dxBarButtonStartWithNew->isChecked());
    EXPECT_FALSE(m.dxBarButtonStartWithNewRTF->isChecked());
    EXPECT_TRUE(m.dxBarButtonStartWithNewXLS->isChecked());
    m.FirstActivationDone = false;  // the platform may have activated the window already
    while (DocumentCount() > 0) m.FileClose->trigger();
    const int counterBefore = m.NewDocumentCounter();

    m.OpenDocumentFile(WriteFile("x.pas", "program x;"));
    m.ApplicationEventsActivate();
    m.ApplicationEventsActivate();  // only the first activation opens anything
    const auto captions = TabCaptions();
    ASSERT_EQ(captions.size(), 3u);
    EXPECT_EQ(captions[0], "x.pas");
    EXPECT_EQ(captions[1], QString("New file %1").arg(counterBefore + 1));
    EXPECT_EQ(captions[2], QString("New XLS file %1").arg(counterBefore + 2));
}

TEST_F(LifeCycle, CloseWalkAsksInTabOrderWithTheAskedTabActive) {
    TMain& m = NewMain();
    const std::string a = WriteFile("a.txt", "a\n");
    const std::string b = WriteFile("b.txt", "b\n");
    m.OpenDocumentFile(a);
    m.ActiveDocument()->SetModified(true);
    m.OpenDocumentFile(b);
    m.ActiveDocument()->SetModified(true);
    m.NewFile->trigger();  // unmodified: never asked
    m.dxBarComboSyntaxParsers()->addItem("Test Language");
    m.dxBarComboSyntaxParsers()->setCurrentIndex(0);

    std::vector<std::string> activeWhenAsked;
    dialogs.onQuestion = [&](const std::string&) { activeWhenAsked.push_back(m.ActiveDocument()->FileName()); };
    Script().answerYes();  // a: saved
    Script().answerNo();   // b: left as it is
    calls.clear();
    EXPECT_TRUE(m.close());

    ASSERT_EQ(Script().asked().size(), 2u);
    EXPECT_EQ(Script().asked()[0].text, "Save changes to \"" + a + "\"");
    EXPECT_EQ(Script().asked()[1].text, "Save changes to \"" + b + "\"");
    EXPECT_EQ(activeWhenAsked, (std::vector<std::string>{a, b}));
    EXPECT_EQ(ReadFile(a), "a\r\n");
    EXPECT_EQ(ReadFile(b), "b\n");

    // Then the language, the placement, the panels and the layout.
    EXPECT_EQ(IniFile(PathOf("ZorfaEditor.ini")).readString("EditorOptions", "SyntaxParser"), "Test Language");
    EXPECT_EQ(calls, (std::vector<std::string>{"DisconnectConsole", "SaveFormPlacement", "SaveDockLayout"}));
    EXPECT_EQ(DocumentCount(), 0);
    EXPECT_TRUE(settings->keyExists(kLayout));
    EXPECT_EQ(cursor.current(), platform::CursorShape::Hourglass);  // nothing resets it at the end
}

TEST_F(LifeCycle, CloseWalkSurvivesASaveThatReopensTheDocument) {
    TMain& m = NewMain();
    m.NewRTFFile->trigger();
    m.ActiveDocument()->SetModified(true);
    m.NewFile->trigger();
    Script().answerYes();
    Script().chooseFile(PathOf("plain.txt"), 3);  // plain text: closed and opened again as text
    EXPECT_TRUE(m.close());
    EXPECT_TRUE(FileExists(PathOf("plain.txt")));
    EXPECT_TRUE(Errors().empty());
    EXPECT_EQ(DocumentCount(), 0);
}

TEST_F(LifeCycle, RefusedCloseStopsTheWalkAndWritesNothing) {
    TMain& m = NewMain();
    m.NewFile->trigger();
    m.ActiveDocument()->SetModified(true);
    m.NewFile->trigger();
    m.ActiveDocument()->SetModified(true);
    m.NewFile->trigger();
    m.ActiveDocument()->SetModified(true);
    m.dxBarComboSyntaxParsers()->addItem("Test Language");
    const std::string ini = WriteFile("ZorfaEditor.ini", "[EditorOptions]\r\nSyntaxParser=Old\r\n");
    m.OpenDocumentFile(WriteFile("r.txt", "r"));  // a recent file that must not reach the store

    Script().answerNo();      // "New file 1" may close unsaved
    Script().answerCancel();  // "New file 2" refuses
    calls.clear();
    EXPECT_FALSE(m.close());
    EXPECT_EQ(Script().asked().size(), 2u);  // "New file 3" is never asked
    EXPECT_EQ(ReadFile(ini), "[EditorOptions]\r\nSyntaxParser=Old\r\n");
    EXPECT_TRUE(calls.empty());
    EXPECT_FALSE(settings->keyExists(kLayout));
    EXPECT_FALSE(settings->valueExists(kMainSection, "dxBarMRUFiles_Items.Count"));
    EXPECT_EQ(DocumentCount(), 4);  // every document stays open
    EXPECT_TRUE(m.isVisible());
}

TEST_F(LifeCycle, CloseWithoutASelectedLanguageLeavesTheIniAlone) {
    TMain& m = NewMain();
    ASSERT_EQ(m.dxBarComboSyntaxParsers()->currentIndex(), -1);
    EXPECT_TRUE(m.close());
    EXPECT_FALSE(FileExists(PathOf("ZorfaEditor.ini")));
}

TEST_F(LifeCycle, DestroyingAShownWindowThatNeverClosedStillSavesItsProperties) {
    TMain& m = NewMain();
    m.OpenDocumentFile(WriteFile("r.txt", "r"));
    main.reset();
    EXPECT_EQ(calls.back(), "WindowHandlesGone");
    EXPECT_EQ(settings->readString(kMainSection, "dxBarMRUFiles_Items.Item0"), PathOf("r.txt"));
}

TEST_F(LifeCycle, LoadingFormCyclesItsBar) {
    TFormAppLoading loading;
    EXPECT_EQ(loading.windowTitle(), "Zorfa Editor loading ...");
    EXPECT_EQ(loading.size(), QSize(350, 200));
    EXPECT_TRUE(loading.windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_EQ(loading.timer()->interval(), 10);
    loading.timer()->stop();
    QProgressBar* bar = loading.progressBar();
    EXPECT_EQ(bar->value(), 0);
    loading.TimerTimer();
    EXPECT_EQ(bar->value(), 10);
    bar->setValue(90);
    loading.TimerTimer();
    EXPECT_EQ(bar->value(), 100);
    loading.TimerTimer();
    EXPECT_EQ(bar->value(), 10);
}

TEST_F(LifeCycle, ActionsCarryTheirShortcuts) {
    TMain& m = NewMain(false);
    EXPECT_EQ(m.NewFile->shortcut(), QKeySequence("Ctrl+N"));
    EXPECT_EQ(m.NewRTFFile->shortcut(), QKeySequence("Ctrl+Shift+N"));
    EXPECT_EQ(m.NewXLSFile->shortcut(), QKeySequence("Ctrl+Shift+X"));
    EXPECT_EQ(m.Open->shortcut(), QKeySequence("Ctrl+O"));
    EXPECT_EQ(m.Save->shortcut(), QKeySequence("Ctrl+S"));
    EXPECT_EQ(m.FileClose->shortcut(), QKeySequence("Ctrl+F4"));
    EXPECT_EQ(m.ExitApplication->shortcut(), QKeySequence("Alt+X"));
}

}  // namespace
}  // namespace zorfa::shell::testing
