#include "shell/XLSEditorForm.h"

#include "base/Errors.h"

#include <QLabel>
#include <QVBoxLayout>

namespace zorfa::shell {

TXLSEditorForm::TXLSEditorForm(TMain& main, QWidget* parent)
    : TDocumentForm(main, TDocumentKind::Spreadsheet, parent) {
    setObjectName("XLSEditorForm");
    SaveDialog().DefaultExt = "xls";
    SaveDialog().Filter = "XLS files (*.xls)|*.xls|All files (*.*)|*.*";
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* placeholder = new QLabel("Spreadsheets cannot be edited yet.", this);
    placeholder->setObjectName("SpreadSheetBook");
    placeholder->setAlignment(Qt::AlignCenter);
    placeholder->setFocusPolicy(Qt::StrongFocus);
    book_ = placeholder;
    layout->addWidget(book_);
}

void TXLSEditorForm::LoadFromFile(const std::string&) {
    throw Exception("XLS documents cannot be opened yet");
}

void TXLSEditorForm::SaveToFile(const std::string&) {
    throw Exception("XLS documents cannot be saved yet");
}

QWidget* TXLSEditorForm::MainControl() { return book_; }

}  // namespace zorfa::shell
