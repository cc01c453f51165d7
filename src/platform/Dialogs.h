#pragma once
// The message boxes and file dialogs the program asks. A plain interface:
// QtDialogs shows them, ScriptedDialogs answers them in tests.
//
// All texts are bytes in the system's code page (the words of the program are
// fixed, trailing blanks before punctuation included, as in
// "Delete selected item ?"). File names are byte strings as the operating
// system takes them (see QtText.h).
//
// Filters are given in the Windows syntax: pairs of display text and
// patterns, all separated by "|", patterns separated by ";":
//   "Text files (*.txt)|*.txt|HTML files (*.html,*.htm)|*.html;*.htm"
// Filter indexes count from 1.

#include <optional>
#include <string>
#include <vector>

namespace zorfa::platform {

enum class Answer { Yes, No, Cancel };

enum class BoxKind {
    YesNo,        // question, buttons Yes and No
    YesNoCancel,  // question, buttons Yes, No and Cancel
    ErrorHelp,    // error icon, buttons OK and Help, with a help context
    ErrorOk,      // error icon, button OK
    Information,  // information icon, button OK
    OpenFile,     // the open dialog
    SaveFile,     // the save dialog
};

struct OpenFileRequest {
    std::string title;             // empty: the toolkit's own ("Open")
    std::string filter;            // Windows syntax, see above
    int filterIndex = 1;           // from 1
    std::string fileName;          // initial file name (may hold a folder)
    std::string initialDir;        // empty: the current folder
    bool fileMustExist = true;
    bool pathMustExist = true;
};

struct SaveFileRequest {
    std::string title;             // empty: the toolkit's own ("Save As")
    std::string filter;
    int filterIndex = 1;
    std::string fileName;          // initial file name
    std::string initialDir;
    std::string defaultExtension;  // without dot, e.g. "txt"; appended when the user typed none
    bool overwritePrompt = true;
    bool pathMustExist = true;
};

struct FileChoice {
    std::string fileName;  // the chosen file, absolute
    int filterIndex = 1;   // the filter the user had chosen, from 1
};

class Dialogs {
public:
    virtual ~Dialogs() = default;

    // Yes/No question: true for Yes.
    virtual bool askYesNo(const std::string& text) = 0;
    // Yes/No/Cancel question. Closing the box counts as Cancel.
    virtual Answer askYesNoCancel(const std::string& text) = 0;

    // The error box of the catch-all: error icon, OK and Help; Help opens the
    // help at helpContext.
    virtual void showError(const std::string& text, int helpContext) = 0;
    // An error with an OK button only ("File not found !").
    virtual void showErrorOk(const std::string& text) = 0;
    // A plain message with an OK button.
    virtual void showInformation(const std::string& text) = 0;

    // Nothing when cancelled.
    virtual std::optional<FileChoice> openFile(const OpenFileRequest& request) = 0;
    virtual std::optional<FileChoice> saveFile(const SaveFileRequest& request) = 0;
};

// One filter row of the Windows syntax.
struct FileFilter {
    std::string name;                   // "HTML files (*.html,*.htm)"
    std::vector<std::string> patterns;  // "*.html", "*.htm"
};

// Splits a filter list of the Windows syntax into its rows. An odd last part
// (a name without patterns) gets the pattern "*"; empty patterns are dropped.
std::vector<FileFilter> parseFileFilter(const std::string& filter);

// The save dialog's completion of a typed name: when the name part has no
// extension, the extension of the chosen filter row is appended if its first
// pattern names one ("*.html" gives ".html"), else defaultExtension (without
// dot) if not empty, as the Windows dialog does. chosenFilter may be null.
std::string withDefaultExtension(const std::string& fileName, const FileFilter* chosenFilter,
                                 const std::string& defaultExtension);

}  // namespace zorfa::platform
