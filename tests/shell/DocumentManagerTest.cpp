#include "ShellFixture.h"

#include <QAction>
#include <QMenu>

#include <algorithm>
#include <filesystem>

#include "base/Errors.h"
#include "shell/DocumentForm.h"
#include "shell/DocumentPanel.h"
#include "shell/DocumentTabContainer.h"
#include "shell/EditorForm.h"
#include "shell/RichEditorForm.h"
#include "shell/TextLinesView.h"
#include "text/EasyStrings.h"

namespace zorfa::shell::testing {
namespace {

using platform::BoxKind;

constexpr const char* kLargeQuestion =
    "File size is greater than 50 MB, file operations may be very slow, open anyway ?";

class DocumentManager : public ShellTest {};

TEST_F(DocumentManager, NewDocumentsShareOneCounterThatNeverGoesBack) {
    TMain& m = NewMain();
    m.NewFile->trigger();
    m.NewRTFFile->trigger();
    m.NewXLSFile->trigger();
    EXPECT_EQ(TabCaptions(), (std::vector<QString>{"New file 1", "New RTF file 2", "New XLS file 3"}));
    EXPECT_EQ(m.ActiveDocument()->Kind(), TDocumentKind::Spreadsheet);

    m.FileClose->trigger();
    m.NewFile->trigger();
    EXPECT_EQ(TabCaptions(), (std::vector<QString>{"New file 1", "New RTF file 2", "New file 4"}));
    ASSERT_EQ(m.WindowsList().size(), 3);
    EXPECT_EQ(m.WindowsList()[2].Text, "New file 4");
    EXPECT_EQ(m.dxBarListWindows->actions().size(), 3);
    EXPECT_EQ(m.NewDocumentCounter(), 4);
    EXPECT_TRUE(Errors().empty());
    EXPECT_TRUE(m.RecentFiles().Items().empty());  // new documents are never recent files
}

TEST_F(DocumentManager, ClosingTheOnlyDocumentThenNewGivesTheNextNumber) {
    TMain& m = NewMain();
    m.NewFile->trigger();
    m.FileClose->trigger();
    EXPECT_EQ(DocumentCount(), 0);
    m.FileClose->trigger();  // nothing left to close: the hidden base panel stays
    m.NewFile->trigger();
    EXPECT_EQ(TabCaptions(), (std::vector<QString>{"New file 2"}));
}

TEST_F(DocumentManager, ExactlyFiftyMegabytesOpensWithoutTheQuestion) {
    TMain& m = NewMain();
    const std::string path = WriteFile("exact.txt", "");
    std::filesystem::resize_file(path, 52428800);
    m.OpenDocumentFile(path);
    EXPECT_TRUE(Script().asked().empty());
    EXPECT_EQ(DocumentCount(), 1);
}

TEST_F(DocumentManager, OneByteMoreAsksAndNoStops) {
    TMain& m = NewMain();
    const std::string path = WriteFile("large.txt", "");
    std::filesystem::resize_file(path, 52428801);
    Script().answerNo();
    m.OpenDocumentFile(path);
    ASSERT_EQ(Script().asked().size(), 1u);
    EXPECT_EQ(Script().last().kind, BoxKind::YesNo);
    EXPECT_EQ(Script().last().text, kLargeQuestion);
    EXPECT_EQ(DocumentCount(), 0);
    EXPECT_TRUE(m.RecentFiles().Items().empty());

    Script().answerYes();
    m.OpenDocumentFile(path);
    EXPECT_EQ(DocumentCount(), 1);
    EXPECT_EQ(m.RecentFiles().Items().front(), path);
}

TEST_F(DocumentManager, ExtensionDecidesTheKindWhateverItsCase) {
    TMain& m = NewMain();
    // Until the rich and spreadsheet engines land, their forms refuse to load,
    // and the message names the kind the document was given.
    const std::pair<const char*, const char*> rich[] = {{"a.rtf", "RTF"}, {"b.RTF", "RTF"}, {"c.Rtf", "RTF"}};
    const std::pair<const char*, const char*> sheets[] = {{"d.xls", "XLS"}, {"e.XLS", "XLS"}};
    for (const auto& [name, kind] : rich) {
        Script().clear();
        m.OpenDocumentFile(WriteFile(name, "x"));
        EXPECT_EQ(Errors(), std::vector<std::string>{"RTF documents cannot be opened yet"}) << name;
    }
    for (const auto& [name, kind] : sheets) {
        Script().clear();
        m.OpenDocumentFile(WriteFile(name, "x"));
        EXPECT_EQ(Errors(), std::vector<std::string>{"XLS documents cannot be opened yet"}) << name;
    }
    EXPECT_EQ(DocumentCount(), 0);

    for (const char* name : {"noextension", "page.html", "data.xml", "x.rtf.txt", "dir.rtf/plain"}) {
        Script().clear();
        m.OpenDocumentFile(WriteFile(name, "text"));
        EXPECT_TRUE(Errors().empty()) << name;
        ASSERT_NE(m.ActiveDocument(), nullptr) << name;
        EXPECT_EQ(m.ActiveDocument()->Kind(), TDocumentKind::Text) << name;
    }
    EXPECT_EQ(DocumentCount(), 5);
}

TEST_F(DocumentManager, OpenedTextDocumentShowsItsLinesAndName) {
    TMain& m = NewMain();
    const std::string path = WriteFile("notes.txt", "one\ntwo\r\nthree");
    m.OpenDocumentFile(path);
    auto* form = qobject_cast<TEditorForm*>(m.ActiveDocument());
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->Lines().Count(), 3);
    EXPECT_EQ(form->Caption(), "notes.txt");
    EXPECT_EQ(form->FileName(), path);
    EXPECT_FALSE(form->Modified());
    EXPECT_EQ(TabCaptions(), (std::vector<QString>{"notes.txt"}));
    EXPECT_EQ(m.StatusPanelText(4), "Writable");
    EXPECT_EQ(m.StatusPanelText(3), "Not modified");
    EXPECT_EQ(m.StatusPanelText(0), "Ready");
    EXPECT_EQ(cursor.current(), platform::CursorShape::Default);
}

TEST_F(DocumentManager, RecentFilesKeepNineMostRecentFirstIgnoringCase) {
    TMain& m = NewMain();
    std::vector<std::string> paths;
    for (int i = 0; i < 10; ++i) {
        paths.push_back(WriteFile("file" + std::to_string(i) + ".txt", "x"));
        m.OpenDocumentFile(paths.back());
    }
    auto items = m.RecentFiles().Items();
    ASSERT_EQ(items.size(), 9u);
    EXPECT_EQ(items.front(), paths[9]);
    EXPECT_EQ(items.back(), paths[1]);

    // The same name in other letters case is the same entry: it moves to the
    // front as it was listed (the load fails on a case-sensitive file system,
    // and the entry is moved all the same).
    std::string shouted = paths[3];
    shouted.replace(shouted.size() - 9, 5, "FILE3");
    m.OpenDocumentFile(shouted);
    items = m.RecentFiles().Items();
    ASSERT_EQ(items.size(), 9u);
    EXPECT_EQ(items.front(), paths[3]);
    EXPECT_EQ(std::count_if(items.begin(), items.end(),
                            [&](const std::string& s) { return sameNameIgnoringCase(s, paths[3]); }),
              1);
    EXPECT_EQ(items[1], paths[9]);

    // The list lives in the settings store with the stored properties.
    ASSERT_TRUE(m.close());
    TMain& again = NewMain();
    EXPECT_EQ(again.RecentFiles().Items(), items);
    EXPECT_EQ(settings->readInteger(
                  "Software\\Zorfa Software\\Zorfa Editor\\Stored Properties\\Main\\Main", "dxBarMRUFiles_Items.Count"),
              9);
}

TEST_F(DocumentManager, RecentEntryOfADeletedFileShowsTheErrorAndStays) {
    TMain& m = NewMain();
    const std::string kept = WriteFile("kept.txt", "k");
    const std::string gone = WriteFile("gone.txt", "g");
    m.OpenDocumentFile(kept);
    m.OpenDocumentFile(gone);
    std::filesystem::remove(gone);
    Script().clear();

    m.RecentFileClick(0);
    ASSERT_EQ(Script().asked().size(), 1u);
    EXPECT_EQ(Script().last().kind, BoxKind::ErrorOk);
    EXPECT_EQ(Script().last().text, "File not found !\r\n(" + gone + ")");
    EXPECT_EQ(m.RecentFiles().Items(), (std::vector<std::string>{gone, kept}));
    EXPECT_EQ(DocumentCount(), 2);

    m.RecentFileClick(1);  // an existing file opens again: two independent documents
    EXPECT_EQ(DocumentCount(), 3);
    EXPECT_EQ(m.RecentFiles().Items(), (std::vector<std::string>{kept, gone}));
}

TEST_F(DocumentManager, LoadFailureClosesTheTabAndKeepsTheRecentEntry) {
    TMain& m = NewMain();
    calls.clear();
    const std::string missing = PathOf("missing.txt");
    m.OpenDocumentFile(missing);
    ASSERT_EQ(Errors().size(), 1u);
    EXPECT_NE(Errors().front().find("missing.txt"), std::string::npos);
    EXPECT_EQ(DocumentCount(), 0);
    EXPECT_TRUE(m.WindowsList().isEmpty());
    EXPECT_EQ(m.RecentFiles().Items(), std::vector<std::string>{missing});
    EXPECT_EQ(m.NewDocumentCounter(), 0);
    EXPECT_EQ(cursor.current(), platform::CursorShape::Default);
    // The steps after the guarded load still ran before the tab closed.
    EXPECT_EQ(calls, (std::vector<std::string>{"ChooseSyntaxParser", "UpdateCollapseRegions(true,false)",
                                                "SyntaxParsersChange"}));
}

TEST_F(DocumentManager, SaveOfANeverSavedDocumentIsSaveAsAndCancelKeepsItModified) {
    TMain& m = NewMain();
    m.NewFile->trigger();
    TDocumentForm* form = m.ActiveDocument();
    form->SetModified(true);
    EXPECT_EQ(m.StatusPanelText(3), "Modified");

    Script().answerCancel();  // the save dialog
    m.Save->trigger();
    ASSERT_EQ(Script().last().kind, BoxKind::SaveFile);
    EXPECT_EQ(Script().last().save.defaultExtension, "txt");
    EXPECT_EQ(Script().last().save.filter,
              "Text files (*.*)|*.*|HTML files (*.html,*.htm)|*.html;*.htm|RTF files (*.rtf)|*.rtf");
    EXPECT_TRUE(Script().last().save.overwritePrompt);
    EXPECT_TRUE(form->Modified());
    EXPECT_EQ(m.SaveTag(), 100);
    EXPECT_EQ(m.SaveAsTag(), 100);

    // The close question names the caption; Yes runs Save, whose dialog is
    // cancelled again, so the close is refused.
    Script().answerYes();
    Script().answerCancel();
    m.FileClose->trigger();
    EXPECT_EQ(Script().asked()[Script().asked().size() - 2].text, "Save changes to \"New file 1\"");
    EXPECT_EQ(Script().asked()[Script().asked().size() - 2].kind, BoxKind::YesNoCancel);
    EXPECT_EQ(DocumentCount(), 1);

    Script().answerCancel();
    m.FileClose->trigger();
    EXPECT_EQ(DocumentCount(), 1);

    Script().answerNo();
    m.FileClose->trigger();
    EXPECT_EQ(DocumentCount(), 0);
}

TEST_F(DocumentManager, SaveAsWritesTheFileAndRenamesTheTabButNotTheCaption) {
    TMain& m = NewMain();
    m.NewFile->trigger();
    auto* form = qobject_cast<TEditorForm*>(m.ActiveDocument());
    form->Lines().Add("hello");
    form->SetModified(true);
    const std::string target = PathOf("saved");
    Script().chooseFile(target, 1);
    m.Save->trigger();
    EXPECT_EQ(ReadFile(target + ".txt"), "hello\r\n");  // the default extension was added
    EXPECT_EQ(form->FileName(), target + ".txt");
    EXPECT_FALSE(form->Modified());
    EXPECT_EQ(m.SaveTag(), 0);
    EXPECT_EQ(m.SaveAsTag(), 0);
    EXPECT_EQ(TabCaptions(), (std::vector<QString>{"saved.txt"}));
    EXPECT_EQ(m.WindowsList()[0].Text, "saved.txt");
    EXPECT_EQ(form->Caption(), "New file 1");
    EXPECT_EQ(m.RecentFiles().Items().front(), target + ".txt");

    // With a name, the close question shows the file name, not the caption.
    form->SetModified(true);
    Script().answerCancel();
    m.FileClose->trigger();
    EXPECT_EQ(Script().last().text, "Save changes to \"" + target + ".txt\"");
}

TEST_F(DocumentManager, MixedLineEndsComeBackUniformAfterSave) {
    TMain& m = NewMain();
    const std::string path = WriteFile("mixed.txt", "a\r\nb\nc\rd\n\re");
    m.OpenDocumentFile(path);
    m.Save->trigger();
    EXPECT_EQ(ReadFile(path), "a\r\nb\r\nc\r\nd\r\n\r\ne\r\n");
    EXPECT_EQ(m.SaveTag(), 0);
    EXPECT_TRUE(Errors().empty());
}

TEST_F(DocumentManager, ReadOnlyFileShowsReadOnlyAndSaveFailsThroughTheCatchAll) {
    TMain& m = NewMain();
    const std::string path = WriteFile("locked.txt", "keep\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_read | std::filesystem::perms::group_read |
                                           std::filesystem::perms::others_read);
    m.OpenDocumentFile(path);
    TDocumentForm* form = m.ActiveDocument();
    ASSERT_NE(form, nullptr);
    EXPECT_TRUE(form->ReadOnly());
    EXPECT_EQ(m.StatusPanelText(4), "Read only");

    // A read-only document can't become modified; it says so with a capital M.
    form->SetModified(true);
    EXPECT_FALSE(form->Modified());
    EXPECT_EQ(m.StatusPanelText(3), "Not Modified");

    cursor.clear();
    m.Save->trigger();
    ASSERT_EQ(Errors().size(), 1u);
    EXPECT_EQ(Script().last().kind, BoxKind::ErrorHelp);
    EXPECT_NE(Errors().front().find("locked.txt"), std::string::npos);
    EXPECT_EQ(m.SaveTag(), 100);
    EXPECT_EQ(cursor.current(), platform::CursorShape::Default);  // the catch-all reset it
    EXPECT_EQ(ReadFile(path), "keep\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
}

TEST_F(DocumentManager, SaveAsHtmlWaitsForTheExporter) {
    TMain& m = NewMain();
    m.NewFile->trigger();
    Script().chooseFile(PathOf("page.html"), 2);
    m.SaveAs->trigger();
    EXPECT_EQ(Errors(), std::vector<std::string>{"HTML export is not available yet"});
    EXPECT_EQ(m.SaveAsTag(), 100);
    EXPECT_EQ(DocumentCount(), 1);
    EXPECT_FALSE(FileExists(PathOf("page.html")));
}

TEST_F(DocumentManager, RichDocumentSavedAsPlainTextComesBackAsText) {
    TMain& m = NewMain();
    m.NewFile->trigger();
    m.NewRTFFile->trigger();
    Script().chooseFile(PathOf("plain.txt"), 3);
    m.SaveAs->trigger();
    EXPECT_TRUE(Errors().empty());
    EXPECT_EQ(m.SaveAsTag(), 0);
    EXPECT_TRUE(FileExists(PathOf("plain.txt")));
    EXPECT_EQ(TabCaptions(), (std::vector<QString>{"New file 1", "plain.txt"}));
    ASSERT_NE(m.ActiveDocument(), nullptr);
    EXPECT_EQ(m.ActiveDocument()->Kind(), TDocumentKind::Text);
    EXPECT_EQ(m.ActiveDocument()->FileName(), PathOf("plain.txt"));
    EXPECT_EQ(Script().asked().front().save.filter,
              "RTF files (*.rtf)|*.rtf|HTML files (*.html,*.htm)|*.html;*.htm|Text files (*.*)|*.*");
    EXPECT_EQ(Script().asked().front().save.defaultExtension, "rtf");
}

TEST_F(DocumentManager, SpreadsheetSaveDialogHasItsOwnFilters) {
    TMain& m = NewMain();
    m.NewXLSFile->trigger();
    Script().answerCancel();
    m.Save->trigger();
    EXPECT_EQ(Script().last().save.filter, "XLS files (*.xls)|*.xls|All files (*.*)|*.*");
    EXPECT_EQ(Script().last().save.defaultExtension, "xls");
    EXPECT_EQ(m.SaveTag(), 100);
}

TEST_F(DocumentManager, SaveAllSavesEveryDocumentAndACancelDoesNotStopIt) {
    TMain& m = NewMain();
    const std::string a = WriteFile("a.txt", "a\n");
    const std::string b = WriteFile("b.txt", "b\n");
    m.OpenDocumentFile(a);
    m.NewFile->trigger();
    m.OpenDocumentFile(b);
    m.ActivateDocument(*m.TabContainer()->PanelAt(1)->Form());
    std::filesystem::remove(a);
    std::filesystem::remove(b);
    Script().answerCancel();  // the unnamed document's dialog
    m.SaveAll->trigger();
    EXPECT_EQ(ReadFile(a), "a\r\n");
    EXPECT_EQ(ReadFile(b), "b\r\n");
    EXPECT_EQ(Script().asked().size(), 1u);
    EXPECT_EQ(m.ActiveDocument()->FileName(), a);  // the remembered tab is active again
}

TEST_F(DocumentManager, OpenUsesTheFilterListAndImportFromHtmlItsHtmlRow) {
    TMain& m = NewMain();
    const std::string path = WriteFile("x.pas", "begin end.");
    Script().chooseFile(path, 5);
    m.Open->trigger();
    const auto& open = Script().last().open;
    EXPECT_EQ(open.filter,
              "All files (*.*)|*.*|TEXT files (*.txt)|*.txt|RTF files (*.rtf)|*.rtf|XLS files (*.xls)|*.xls|"
              "PASCAL files (*.pas)|*.pas|C files (*.c)|*.c|Java files (*.java)|*.java|"
              "HTML files (*.html,*.htm)|*.html;*.htm|SQL files (*.sql)|*.sql");
    EXPECT_EQ(open.filterIndex, 1);
    EXPECT_TRUE(open.fileMustExist);
    EXPECT_TRUE(open.pathMustExist);
    EXPECT_EQ(DocumentCount(), 1);
    Script().answerCancel();
    m.Open->trigger();
    EXPECT_EQ(Script().last().open.filterIndex, 5);  // the dialog keeps the row last chosen

    // The HTML importer is still to come: the import counts as a new rich
    // document, fails in its guarded load and closes again.
    Script().chooseFile(WriteFile("page.htm", "<p>x</p>"), 8);
    m.ImportFromHtml->trigger();
    EXPECT_EQ(Script().asked()[Script().asked().size() - 2].open.filterIndex, 8);
    EXPECT_EQ(Errors(), std::vector<std::string>{"HTML import is not available yet"});
    EXPECT_EQ(m.NewDocumentCounter(), 1);
    EXPECT_EQ(DocumentCount(), 1);

    Script().answerCancel();
    m.Open->trigger();
    EXPECT_EQ(Script().last().open.filterIndex, 1);  // the import put the row back
}

TEST_F(DocumentManager, ActiveEditorAbortsSilentlyWithoutATextOrRichDocument) {
    TMain& m = NewMain();
    EXPECT_THROW(m.ActiveEditor(), EAbort);
    EXPECT_EQ(m.ActiveDocumentForm(), nullptr);
    m.NewXLSFile->trigger();
    EXPECT_THROW(m.ActiveEditor(), EAbort);
    EXPECT_NE(m.ActiveDocumentForm(), nullptr);
    m.NewRTFFile->trigger();
    EXPECT_EQ(m.ActiveEditor(), qobject_cast<TRichEditorForm*>(m.ActiveDocument())->EasyRichEdit());
    m.NewFile->trigger();
    EXPECT_EQ(m.ActiveEditor(), qobject_cast<TEditorForm*>(m.ActiveDocument())->EasyEdit());
}

TEST_F(DocumentManager, TextDocumentsRunTheLanguageHooksInOrder) {
    TMain& m = NewMain();
    calls.clear();
    m.NewFile->trigger();
    EXPECT_EQ(calls, (std::vector<std::string>{"UpdateCollapseRegions(true,false)", "SyntaxParsersChange"}));
    calls.clear();
    m.ZFStringHolder.SetStrings("StoredValues", {"DefaultUncollapsed=True"});
    m.OpenDocumentFile(WriteFile("x.pas", "x"));
    EXPECT_EQ(calls, (std::vector<std::string>{"ChooseSyntaxParser", "UpdateCollapseRegions(false,false)",
                                                "SyntaxParsersChange"}));
    calls.clear();
    m.NewRTFFile->trigger();
    m.NewXLSFile->trigger();
    EXPECT_TRUE(calls.empty());
}

TEST_F(DocumentManager, WindowsListFollowsOpenAndCloseAndActivatesOnClick) {
    TMain& m = NewMain();
    m.NewFile->trigger();
    m.NewRTFFile->trigger();
    m.NewFile->trigger();
    m.WindowsListClick(0);
    EXPECT_EQ(m.ActiveDocument()->Caption(), "New file 1");
    m.FileClose->trigger();
    ASSERT_EQ(m.WindowsList().size(), 2);
    EXPECT_EQ(m.WindowsList()[0].Text, "New RTF file 2");
    EXPECT_EQ(m.WindowsList()[1].Text, "New file 3");
    m.dxBarListWindows->actions()[1]->trigger();
    EXPECT_EQ(m.ActiveDocument()->Caption(), "New file 3");
}

TEST_F(DocumentManager, TabCloseButtonOnABackgroundTabAsksAndSavesThatDocument) {
    TMain& m = NewMain();
    const std::string a = WriteFile("a.txt", "a\n");
    m.OpenDocumentFile(a);
    m.ActiveDocument()->SetModified(true);
    m.NewFile->trigger();
    Script().answerYes();
    emit m.TabContainer()->tabCloseRequested(1);
    EXPECT_EQ(ReadFile(a), "a\r\n");
    EXPECT_EQ(TabCaptions(), (std::vector<QString>{"New file 1"}));
    EXPECT_TRUE(Errors().empty());
}

}  // namespace
}  // namespace zorfa::shell::testing
