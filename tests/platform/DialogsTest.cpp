#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

#include <fstream>

#include "platform/QtDialogs.h"
#include "platform/QtText.h"
#include "platform/ScriptedDialogs.h"
#include "TempDir.h"

namespace zorfa::platform {
namespace {

constexpr const char* kOpenFilter =
    "All files (*.*)|*.*|TEXT files (*.txt)|*.txt|RTF files (*.rtf)|*.rtf|XLS files (*.xls)|*.xls|"
    "PASCAL files (*.pas)|*.pas|C files (*.c)|*.c|Java files (*.java)|*.java|"
    "HTML files (*.html,*.htm)|*.html;*.htm|SQL files (*.sql)|*.sql";

// ---- the Windows filter syntax ----

TEST(FileFilter, ParsesRowsAndPatterns) {
    const auto rows = parseFileFilter(kOpenFilter);
    ASSERT_EQ(rows.size(), 9u);
    EXPECT_EQ(rows[0].name, "All files (*.*)");
    EXPECT_EQ(rows[0].patterns, std::vector<std::string>{"*.*"});
    EXPECT_EQ(rows[7].name, "HTML files (*.html,*.htm)");
    EXPECT_EQ(rows[7].patterns, (std::vector<std::string>{"*.html", "*.htm"}));
    EXPECT_TRUE(parseFileFilter("").empty());
    const auto odd = parseFileFilter("Only a name");
    ASSERT_EQ(odd.size(), 1u);
    EXPECT_EQ(odd[0].patterns, std::vector<std::string>{"*"});
    EXPECT_EQ(parseFileFilter("X|*.a; ;*.b")[0].patterns, (std::vector<std::string>{"*.a", "*.b"}));
}

TEST(FileFilter, ConvertsToQtFilters) {
    const QStringList filters = toQtFilters("Text files (*.*)|*.*|HTML files (*.html,*.htm)|*.html;*.htm|RTF files (*.rtf)|*.rtf");
    ASSERT_EQ(filters.size(), 3);
    EXPECT_EQ(filters[0], QStringLiteral("Text files (*.*) (*.*)"));
    EXPECT_EQ(filters[1], QStringLiteral("HTML files (*.html,*.htm) (*.html *.htm)"));
    EXPECT_EQ(filters[2], QStringLiteral("RTF files (*.rtf) (*.rtf)"));
    // Qt reads the patterns from the last parentheses.
    QFileDialog dialog;
    dialog.setNameFilters(filters);
    dialog.selectNameFilter(filters[1]);
    EXPECT_EQ(dialog.selectedNameFilter(), filters[1]);
}

TEST(FileFilter, DefaultExtensionIsAddedOnlyWhenNoneWasTyped) {
    const auto rows = parseFileFilter("Text files (*.*)|*.*|HTML files (*.html,*.htm)|*.html;*.htm");
    EXPECT_EQ(withDefaultExtension("/d/a", &rows[0], "txt"), "/d/a.txt");       // "*.*" names no extension
    EXPECT_EQ(withDefaultExtension("/d/a", &rows[1], "txt"), "/d/a.html");      // the chosen row's does
    EXPECT_EQ(withDefaultExtension("/d/a.c", &rows[1], "txt"), "/d/a.c");       // typed: kept
    EXPECT_EQ(withDefaultExtension("/d.x/a", nullptr, "rtf"), "/d.x/a.rtf");    // a dot in the folder is no extension
    EXPECT_EQ(withDefaultExtension("/d/a", nullptr, ""), "/d/a");
    EXPECT_EQ(withDefaultExtension("", nullptr, "txt"), "");
}

// ---- the scripted double ----

TEST(ScriptedDialogs, RecordsTheExactQuestionAndAnswersInOrder) {
    ScriptedDialogs dialogs;
    dialogs.answerCancel();
    dialogs.answerYes();
    EXPECT_EQ(dialogs.askYesNoCancel("Save changes to \"a.txt\""), Answer::Cancel);
    EXPECT_TRUE(dialogs.askYesNo("Are you sure to reset all toolbars ?"));
    ASSERT_EQ(dialogs.asked().size(), 2u);
    EXPECT_EQ(dialogs.asked()[0].kind, BoxKind::YesNoCancel);
    EXPECT_EQ(dialogs.asked()[0].text, "Save changes to \"a.txt\"");
    EXPECT_EQ(dialogs.asked()[0].buttons, (std::vector<std::string>{"Yes", "No", "Cancel"}));
    EXPECT_EQ(dialogs.last().kind, BoxKind::YesNo);
    EXPECT_EQ(dialogs.last().text, "Are you sure to reset all toolbars ?");
    EXPECT_EQ(dialogs.last().buttons, (std::vector<std::string>{"Yes", "No"}));
    EXPECT_EQ(dialogs.pendingAnswers(), 0u);
    EXPECT_TRUE(dialogs.unexpected().empty());
}

TEST(ScriptedDialogs, AQuestionWithoutAnAnswerFailsLoudly) {
    ScriptedDialogs dialogs;
    try {
        dialogs.askYesNo("File size is greater than 50 MB, file operations may be very slow, open anyway ?");
        FAIL() << "no exception";
    } catch (const UnexpectedDialog& e) {
        EXPECT_NE(std::string(e.what()).find("no answer was scripted"), std::string::npos);
        EXPECT_NE(std::string(e.what()).find("open anyway ?"), std::string::npos);
    }
    ASSERT_EQ(dialogs.unexpected().size(), 1u);
    EXPECT_EQ(dialogs.asked().size(), 1u);  // the question is on record all the same
}

TEST(ScriptedDialogs, AnAnswerThatDoesNotFitFails) {
    ScriptedDialogs dialogs;
    dialogs.answerCancel();
    EXPECT_THROW(dialogs.askYesNo("Delete selected item ?"), UnexpectedDialog);  // no Cancel button
    EXPECT_EQ(dialogs.pendingAnswers(), 1u);
    dialogs.clear();
    dialogs.chooseFile("/x.txt");
    EXPECT_THROW(dialogs.askYesNoCancel("q"), UnexpectedDialog);
    dialogs.clear();
    dialogs.answerYes();
    EXPECT_THROW(dialogs.openFile({}), UnexpectedDialog);
    EXPECT_EQ(dialogs.unexpected().size(), 1u);
}

TEST(ScriptedDialogs, MessageBoxesAreRecordedWithoutAScript) {
    ScriptedDialogs dialogs;
    dialogs.showError("Cannot open file", 42);
    dialogs.showErrorOk("File not found !\r\n(/a.txt)");
    dialogs.showInformation("Done");
    ASSERT_EQ(dialogs.asked().size(), 3u);
    EXPECT_EQ(dialogs.asked()[0].kind, BoxKind::ErrorHelp);
    EXPECT_EQ(dialogs.asked()[0].helpContext, 42);
    EXPECT_EQ(dialogs.asked()[0].buttons, (std::vector<std::string>{"OK", "Help"}));
    EXPECT_EQ(dialogs.asked()[1].kind, BoxKind::ErrorOk);
    EXPECT_EQ(dialogs.asked()[1].text, "File not found !\r\n(/a.txt)");
    EXPECT_EQ(dialogs.asked()[2].kind, BoxKind::Information);
}

TEST(ScriptedDialogs, FileDialogsTakeAChoiceOrCancel) {
    ScriptedDialogs dialogs;
    dialogs.chooseFile("/w/page.htm", 8);
    dialogs.answerCancel();
    dialogs.chooseFile("/w/notes", 1);
    dialogs.chooseFile("/w/page", 2);
    OpenFileRequest open;
    open.filter = kOpenFilter;
    open.filterIndex = 8;
    const auto chosen = dialogs.openFile(open);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->fileName, "/w/page.htm");
    EXPECT_EQ(chosen->filterIndex, 8);
    EXPECT_EQ(dialogs.last().kind, BoxKind::OpenFile);
    EXPECT_EQ(dialogs.last().open.filterIndex, 8);
    EXPECT_TRUE(dialogs.last().open.fileMustExist);

    SaveFileRequest save;
    save.filter = "Text files (*.*)|*.*|HTML files (*.html,*.htm)|*.html;*.htm|RTF files (*.rtf)|*.rtf";
    save.defaultExtension = "txt";
    EXPECT_FALSE(dialogs.saveFile(save));
    EXPECT_EQ(dialogs.saveFile(save)->fileName, "/w/notes.txt");  // completed as the real dialog does
    const auto html = dialogs.saveFile(save);
    EXPECT_EQ(html->fileName, "/w/page.html");
    EXPECT_EQ(html->filterIndex, 2);
    EXPECT_EQ(dialogs.last().save.defaultExtension, "txt");
    EXPECT_TRUE(dialogs.last().save.overwritePrompt);
}

// ---- the Qt boxes, answered by a simulated click ----

// Clicks the button with the given role in the next modal message box.
void clickWhenShown(QMessageBox::StandardButton which, QString* seenText = nullptr) {
    QTimer::singleShot(0, [which, seenText] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        if (seenText) *seenText = box->text();
        box->button(which)->click();
    });
}

TEST(QtDialogs, QuestionsReturnTheButtonClicked) {
    QtDialogs dialogs;
    QString seen;
    clickWhenShown(QMessageBox::No, &seen);
    EXPECT_EQ(dialogs.askYesNoCancel("Save changes to \"caf\xE9.txt\""), Answer::No);
    EXPECT_EQ(seen, QString::fromUtf8("Save changes to \"caf\u00E9.txt\""));
    clickWhenShown(QMessageBox::Cancel);
    EXPECT_EQ(dialogs.askYesNoCancel("q"), Answer::Cancel);
    clickWhenShown(QMessageBox::Yes);
    EXPECT_TRUE(dialogs.askYesNo("q"));
    clickWhenShown(QMessageBox::No);
    EXPECT_FALSE(dialogs.askYesNo("q"));
}

TEST(QtDialogs, HelpInTheErrorBoxCallsTheHelpHandler) {
    QtDialogs dialogs;
    int asked = -1;
    dialogs.setHelpHandler([&](int context) { asked = context; });
    clickWhenShown(QMessageBox::Help);
    dialogs.showError("Broken", 1234);
    EXPECT_EQ(asked, 1234);
    asked = -1;
    clickWhenShown(QMessageBox::Ok);
    dialogs.showError("Broken", 99);
    EXPECT_EQ(asked, -1);
}

TEST(QtDialogs, SaveDialogReturnsTheCompletedNameAndFilterIndex) {
    test::TempDir dir;
    QtDialogs dialogs;
    SaveFileRequest save;
    save.filter = "Text files (*.*)|*.*|HTML files (*.html,*.htm)|*.html;*.htm";
    save.filterIndex = 2;
    save.defaultExtension = "txt";
    save.initialDir = dir.path();
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->findChild<QLineEdit*>()->setText(QStringLiteral("page"));
        static_cast<QDialog*>(dialog)->accept();  // QFileDialog::accept checks the name
    });
    const auto chosen = dialogs.saveFile(save);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->fileName, dir.file("page.html"));
    EXPECT_EQ(chosen->filterIndex, 2);
}

TEST(QtDialogs, OpenDialogCancelled) {
    QtDialogs dialogs;
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->reject();
    });
    OpenFileRequest open;
    open.filter = kOpenFilter;
    EXPECT_FALSE(dialogs.openFile(open));
}

}  // namespace
}  // namespace zorfa::platform
