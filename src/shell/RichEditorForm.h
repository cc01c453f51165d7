#pragma once
// The rich document form (TRichEditorForm). Until the rich edit source and
// the RTF reader and writer land it is an empty document: it can be created,
// asked, closed and saved as plain text (its line store, empty), while
// opening or saving an RTF file throws a zorfa::Exception saying so, which
// runs the manager's load-failure path.

#include "shell/DocumentForm.h"

#include <memory>

namespace zorfa::text {
class TEasyStrings;
}

namespace zorfa::shell {

class TTextLinesView;

class TRichEditorForm : public TDocumentForm {
    Q_OBJECT
public:
    explicit TRichEditorForm(TMain& main, QWidget* parent = nullptr);
    ~TRichEditorForm() override;

    // The plain text of the document (the rich source's line store).
    text::TEasyStrings& Lines() { return *lines_; }
    TTextLinesView* EasyRichEdit() const { return easyRichEdit_; }

    // "RTF documents cannot be opened yet" / "... saved yet".
    void LoadFromFile(const std::string& path) override;
    void SaveToFile(const std::string& path) override;
    // Writes the line store as plain text (the plain-text flag's save).
    void SavePlainText(const std::string& path);
    QWidget* MainControl() override;

private:
    std::unique_ptr<text::TEasyStrings> lines_;
    TTextLinesView* easyRichEdit_;
};

}  // namespace zorfa::shell
