#include "shell/DocumentPanel.h"

#include "shell/DocumentForm.h"

#include <QVBoxLayout>

namespace zorfa::shell {

TDocumentPanel::TDocumentPanel(QWidget* parent) : QWidget(parent) {
    setObjectName("PanelDocument");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

void TDocumentPanel::SetForm(TDocumentForm* form) {
    form_ = form;
    form->setParent(this);
    layout()->addWidget(form);
    form->setVisible(true);
}

bool TDocumentPanel::CloseQuery() {
    if (!OnCloseQuery) return true;
    // The question may end in this panel being freed (a save that reopens
    // the document as another kind); the handler must outlive its own call.
    const auto handler = OnCloseQuery;
    return handler(*this);
}

void TDocumentPanel::Close() {
    if (OnClose) OnClose(*this);
}

void TDocumentPanel::Activate(bool active) {
    if (OnActivate) OnActivate(*this, active);
}

}  // namespace zorfa::shell
