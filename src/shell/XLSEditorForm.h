#pragma once
// The spreadsheet document form (TXLSEditorForm). Until the book and its XLS
// reader and writer land it is an empty document that can be created, asked
// and closed; opening or saving an XLS file throws a zorfa::Exception saying
// so, which runs the manager's load-failure path.

#include "shell/DocumentForm.h"

namespace zorfa::shell {

class TXLSEditorForm : public TDocumentForm {
    Q_OBJECT
public:
    explicit TXLSEditorForm(TMain& main, QWidget* parent = nullptr);

    // "XLS documents cannot be opened yet" / "... saved yet".
    void LoadFromFile(const std::string& path) override;
    void SaveToFile(const std::string& path) override;
    QWidget* MainControl() override;

private:
    QWidget* book_;
};

}  // namespace zorfa::shell
