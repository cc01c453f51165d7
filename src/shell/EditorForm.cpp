#include "shell/EditorForm.h"

#include "shell/TextLinesView.h"
#include "text/EasyStrings.h"

#include <QVBoxLayout>

namespace zorfa::shell {

TEditorForm::TEditorForm(TMain& main, QWidget* parent)
    : TDocumentForm(main, TDocumentKind::Text, parent), lines_(std::make_unique<text::TEasyStrings>()) {
    setObjectName("EditorForm");
    StringHolderEditorForm.SetStrings("QuickType", {});
    SaveDialog().DefaultExt = "txt";
    SaveDialog().Filter =
        "Text files (*.*)|*.*|HTML files (*.html,*.htm)|*.html;*.htm|RTF files (*.rtf)|*.rtf";
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    easyEdit_ = new TTextLinesView(*lines_, this);
    layout->addWidget(easyEdit_);
}

TEditorForm::~TEditorForm() = default;

void TEditorForm::LoadFromFile(const std::string& path) {
    lines_->LoadFromFile(path);
    easyEdit_->LinesChanged();
}

void TEditorForm::SaveToFile(const std::string& path) { lines_->SaveToFile(path); }

QWidget* TEditorForm::MainControl() { return easyEdit_; }

}  // namespace zorfa::shell
