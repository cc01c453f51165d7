#include "shell/RichEditorForm.h"

#include "base/Errors.h"
#include "shell/TextLinesView.h"
#include "text/EasyStrings.h"

#include <QVBoxLayout>

namespace zorfa::shell {

TRichEditorForm::TRichEditorForm(TMain& main, QWidget* parent)
    : TDocumentForm(main, TDocumentKind::Rich, parent), lines_(std::make_unique<text::TEasyStrings>()) {
    setObjectName("RichEditorForm");
    SaveDialog().DefaultExt = "rtf";
    SaveDialog().Filter =
        "RTF files (*.rtf)|*.rtf|HTML files (*.html,*.htm)|*.html;*.htm|Text files (*.*)|*.*";
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    easyRichEdit_ = new TTextLinesView(*lines_, this);
    easyRichEdit_->setObjectName("EasyRichEdit");
    layout->addWidget(easyRichEdit_);
}

TRichEditorForm::~TRichEditorForm() = default;

void TRichEditorForm::LoadFromFile(const std::string&) {
    throw Exception("RTF documents cannot be opened yet");
}

void TRichEditorForm::SaveToFile(const std::string&) {
    throw Exception("RTF documents cannot be saved yet");
}

void TRichEditorForm::SavePlainText(const std::string& path) { lines_->SaveToFile(path); }

QWidget* TRichEditorForm::MainControl() { return easyRichEdit_; }

}  // namespace zorfa::shell
