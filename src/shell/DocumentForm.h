#pragma once
// The common part of the three document forms (text, rich, spreadsheet):
// what the document manager asks of any document. A form has a file name
// (its save dialog's), a caption, a modified flag and a read-only flag; it
// answers the close query, writes the status panels when its flag changes,
// and loads and saves by its kind. The modified state lives here, not in the
// engine behind the form.
//
// Load and save throw zorfa::Exception on failure; the manager runs a load
// inside its guard and a save under the catch-all.

#include <QWidget>

#include <string>

namespace zorfa::shell {

class TMain;

enum class TDocumentKind { Text, Rich, Spreadsheet };

// The document's save dialog: its file name is the document's file name
// (empty for a document never saved).
struct TSaveDialog {
    std::string FileName;
    std::string Filter;
    std::string DefaultExt;
    int FilterIndex = 1;
};

class TDocumentForm : public QWidget {
    Q_OBJECT
public:
    TDocumentForm(TMain& main, TDocumentKind kind, QWidget* parent = nullptr);

    TDocumentKind Kind() const { return kind_; }

    // The caption in the code page, "New file 1" or the file's name part.
    const std::string& Caption() const { return caption_; }
    void SetCaption(const std::string& caption);

    TSaveDialog& SaveDialog() { return saveDialog_; }
    const TSaveDialog& SaveDialog() const { return saveDialog_; }
    const std::string& FileName() const { return saveDialog_.FileName; }

    bool Modified() const { return modified_; }
    // Stores the flag and writes status panels 0 and 3; a read-only document
    // keeps its flag and shows "Not Modified".
    void SetModified(bool value);

    bool ReadOnly() const { return readOnly_; }
    virtual void SetReadOnly(bool value);

    // Asks about unsaved changes; true when the form may close.
    bool FormCloseQuery();
    // Brings the status panels and toolbars into line with this document.
    virtual void FormActivate();

    // Throw zorfa::Exception on failure.
    virtual void LoadFromFile(const std::string& path) = 0;
    virtual void SaveToFile(const std::string& path) = 0;

    // The control that takes the input focus.
    virtual QWidget* MainControl() = 0;

protected:
    TMain& main_;

private:
    TDocumentKind kind_;
    std::string caption_;
    TSaveDialog saveDialog_;
    bool modified_ = false;
    bool readOnly_ = false;
};

}  // namespace zorfa::shell
