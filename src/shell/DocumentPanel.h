#pragma once
// A document panel (PanelDocument): one tab of the document container,
// holding exactly one document form. It raises three events that the
// document manager binds: close query (may the panel close?), close (it is
// about to be freed) and activate (it became, or stopped being, the active tab).

#include <QWidget>

#include <functional>

namespace zorfa::shell {

class TDocumentForm;

class TDocumentPanel : public QWidget {
    Q_OBJECT
public:
    explicit TDocumentPanel(QWidget* parent = nullptr);

    // The panel's first child: its form, or null while the panel is still empty.
    TDocumentForm* Form() const { return form_; }
    void SetForm(TDocumentForm* form);

    std::function<bool(TDocumentPanel&)> OnCloseQuery;
    std::function<void(TDocumentPanel&)> OnClose;
    std::function<void(TDocumentPanel&, bool active)> OnActivate;

    // A panel without a close query handler may always close.
    bool CloseQuery();
    void Close();
    void Activate(bool active);

private:
    TDocumentForm* form_ = nullptr;
};

}  // namespace zorfa::shell
