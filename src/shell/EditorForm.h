#pragma once
// The plain-text document form (TEditorForm): a line store shown through a
// read-only view. It holds the document's text for load and save; the view
// is replaced by the text engine's editor panes when they land, and the
// parser's Tag (the language index of the form) waits here for the language
// selection.

#include "shell/DocumentForm.h"
#include "shell/StringHolder.h"

#include <memory>

namespace zorfa::text {
class TEasyStrings;
}

namespace zorfa::shell {

class TTextLinesView;

class TEditorForm : public TDocumentForm {
    Q_OBJECT
public:
    explicit TEditorForm(TMain& main, QWidget* parent = nullptr);
    ~TEditorForm() override;

    text::TEasyStrings& Lines() { return *lines_; }
    TTextLinesView* EasyEdit() const { return easyEdit_; }

    // The language index last applied to this form (EasyEditorParser.Tag).
    int ParserTag = 0;
    // The form's own named lists: "QuickType".
    TZFStringHolder StringHolderEditorForm;

    void LoadFromFile(const std::string& path) override;
    void SaveToFile(const std::string& path) override;
    QWidget* MainControl() override;

private:
    std::unique_ptr<text::TEasyStrings> lines_;
    TTextLinesView* easyEdit_;
};

}  // namespace zorfa::shell
