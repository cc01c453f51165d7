#include "shell/DocumentTabContainer.h"

#include "shell/DocumentPanel.h"


namespace zorfa::shell {

TDocumentTabContainer::TDocumentTabContainer(QWidget* parent) : QTabWidget(parent) {
    setObjectName("dxTabContainerDocuments");
    setTabsClosable(true);
    setMovable(false);
    setDocumentMode(true);
    basePanel_ = new QWidget(this);
    basePanel_->setObjectName("dxDockPanelFiles");
    addTab(basePanel_, "dxDockPanelFiles");
    setTabVisible(0, false);
    connect(this, &QTabWidget::tabCloseRequested, this, [this](int index) { CloseTab(index); });
    connect(this, &QTabWidget::currentChanged, this, &TDocumentTabContainer::CurrentChanged);
}

void TDocumentTabContainer::AddPanel(TDocumentPanel* panel, const QString& caption) {
    const int index = addTab(panel, caption);
    setCurrentIndex(index);
}

TDocumentPanel* TDocumentTabContainer::PanelAt(int index) const {
    return qobject_cast<TDocumentPanel*>(widget(index));
}

int TDocumentTabContainer::IndexOfPanel(const TDocumentPanel* panel) const {
    for (int i = 0; i < count(); ++i)
        if (widget(i) == panel) return i;
    return -1;
}

QList<QPointer<TDocumentPanel>> TDocumentTabContainer::DocumentPanels() const {
    QList<QPointer<TDocumentPanel>> panels;
    for (int i = 0; i < count(); ++i)
        if (TDocumentPanel* panel = PanelAt(i)) panels.append(panel);
    return panels;
}

void TDocumentTabContainer::SetPanelCaption(TDocumentPanel* panel, const QString& caption) {
    const int index = IndexOfPanel(panel);
    if (index >= 0) setTabText(index, caption);
}

void TDocumentTabContainer::ActivatePanel(TDocumentPanel* panel) {
    const int index = IndexOfPanel(panel);
    if (index >= 0) setCurrentIndex(index);
}

bool TDocumentTabContainer::CloseTab(int index) {
    QPointer<TDocumentPanel> panel = PanelAt(index);
    if (!panel) return false;
    if (!panel->CloseQuery() || !panel) return false;
    panel->Close();
    if (activePanel_ == panel) activePanel_ = nullptr;
    const int now = IndexOfPanel(panel);
    if (now >= 0) removeTab(now);
    delete panel.data();
    return true;
}

void TDocumentTabContainer::CurrentChanged(int index) {
    // The docking manager tells a panel when it stops and starts being the active one.
    TDocumentPanel* next = PanelAt(index);
    if (next == activePanel_) return;
    QPointer<TDocumentPanel> previous = activePanel_;
    activePanel_ = next;
    if (previous) previous->Activate(false);
    if (next) next->Activate(true);
}

}  // namespace zorfa::shell
