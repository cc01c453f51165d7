#include "shell/DocumentForm.h"

#include <QPointer>

#include "platform/CatchAll.h"
#include "platform/Dialogs.h"
#include "platform/QtText.h"
#include "shell/Main.h"
#include "shell/ShellHooks.h"

namespace zorfa::shell {

TDocumentForm::TDocumentForm(TMain& main, TDocumentKind kind, QWidget* parent)
    : QWidget(parent), main_(main), kind_(kind) {}

void TDocumentForm::SetCaption(const std::string& caption) {
    caption_ = caption;
    setWindowTitle(platform::toQString(caption));
}

void TDocumentForm::SetModified(bool value) {
    if (main_.StatusPanelText(0) != "Ready") main_.SetStatusPanelText(0, "Ready");
    if (value == modified_) return;
    if (!readOnly_) {
        modified_ = value;
        main_.SetStatusPanelText(3, value ? "Modified" : "Not modified");
    } else {
        main_.SetStatusPanelText(3, "Not Modified");
    }
}

void TDocumentForm::SetReadOnly(bool value) { readOnly_ = value; }

bool TDocumentForm::FormCloseQuery() {
    if (!modified_) return true;
    // Save works on the active document, so the one asked about is made
    // active first: "Yes" then saves this document and no other.
    main_.ActivateDocument(*this);
    const std::string name = FileName().empty() ? caption_ : platform::displayFileName(FileName());
    switch (main_.Dialogs().askYesNoCancel("Save changes to \"" + name + "\"")) {
        case platform::Answer::Cancel:
            return false;
        case platform::Answer::No:
            return true;
        case platform::Answer::Yes:
            break;
    }
    // A failed save shows its message and leaves the flag on, which refuses
    // the close. A save that converts the document closes this form and opens
    // the file again as its new kind: then this one is gone and agrees.
    QPointer<TDocumentForm> alive(this);
    TMain& main = main_;
    main.CatchAll().run([&main] { main.SaveExecute(); });
    return !alive || !modified_;
}

void TDocumentForm::FormActivate() {
    main_.SetStatusPanelText(3, modified_ ? "Modified" : "Not modified");
    main_.SetStatusPanelText(4, readOnly_ ? "Read only" : "Writable");
    main_.SetStatusPanelText(0, "Ready");
    main_.Hooks().DocumentActivated(main_, *this);
}

}  // namespace zorfa::shell
