#pragma once
// The test double of Dialogs. A test queues the answers in order; every box
// and dialog asked is recorded with its kind, exact text, buttons and help
// context (file dialogs: their whole request).
//
// Questions (Yes/No, Yes/No/Cancel) and file dialogs take the next scripted
// answer; message boxes (errors, information) have one outcome, take none and
// are only recorded. A question with an empty script, or whose next answer
// does not fit (a file name for a Yes/No question, Cancel for Yes/No), throws
// UnexpectedDialog and is also noted in unexpected(): code that runs under the
// catch-all would otherwise turn the throw into an error box, so a test
// should also check that unexpected() stays empty.
//
// A file chosen for a save dialog is completed as the real dialog does it:
// without an extension it gets the chosen filter's or the default extension
// (withDefaultExtension).

#include <deque>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

#include "platform/Dialogs.h"

namespace zorfa::platform {

class UnexpectedDialog : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

struct AskedDialog {
    BoxKind kind;
    std::string text;                  // message text; for file dialogs the title
    std::vector<std::string> buttons;  // "Yes", "No", "Cancel", "OK", "Help"; empty for file dialogs
    int helpContext = 0;               // ErrorHelp only
    OpenFileRequest open;              // OpenFile only
    SaveFileRequest save;              // SaveFile only
};

class ScriptedDialogs final : public Dialogs {
public:
    // Queue answers. Cancel answers a Yes/No/Cancel question and cancels a
    // file dialog.
    void answer(Answer answer);
    void answerYes() { answer(Answer::Yes); }
    void answerNo() { answer(Answer::No); }
    void answerCancel() { answer(Answer::Cancel); }
    void chooseFile(std::string fileName, int filterIndex = 1);

    const std::vector<AskedDialog>& asked() const noexcept { return asked_; }
    const AskedDialog& last() const;  // throws std::logic_error when nothing was asked
    // The descriptions of the questions that found no fitting answer.
    const std::vector<std::string>& unexpected() const noexcept { return unexpected_; }
    std::size_t pendingAnswers() const noexcept { return script_.size(); }
    void clear();  // forgets the record, the script and the failures

    bool askYesNo(const std::string& text) override;
    Answer askYesNoCancel(const std::string& text) override;
    void showError(const std::string& text, int helpContext) override;
    void showErrorOk(const std::string& text) override;
    void showInformation(const std::string& text) override;
    std::optional<FileChoice> openFile(const OpenFileRequest& request) override;
    std::optional<FileChoice> saveFile(const SaveFileRequest& request) override;

private:
    using Scripted = std::variant<Answer, FileChoice>;
    Scripted take(const AskedDialog& asking);
    [[noreturn]] void fail(const AskedDialog& asking, const std::string& why);

    std::deque<Scripted> script_;
    std::vector<AskedDialog> asked_;
    std::vector<std::string> unexpected_;
};

}  // namespace zorfa::platform
