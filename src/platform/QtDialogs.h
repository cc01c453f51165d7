#pragma once
// Dialogs shown with QMessageBox and QFileDialog. Needs a QApplication.

#include <functional>

#include <QString>

#include "platform/Dialogs.h"

class QWidget;

namespace zorfa::platform {

class QtDialogs final : public Dialogs {
public:
    // parent: the window the boxes are modal to (may be null). title: the
    // caption of the message boxes.
    explicit QtDialogs(QWidget* parent = nullptr, QString title = QStringLiteral("Zorfa Editor"));

    void setParent(QWidget* parent) { parent_ = parent; }
    // Called with the help context when Help is pressed in an error box; the
    // box closes as with OK.
    void setHelpHandler(std::function<void(int helpContext)> handler) { help_ = std::move(handler); }

    bool askYesNo(const std::string& text) override;
    Answer askYesNoCancel(const std::string& text) override;
    void showError(const std::string& text, int helpContext) override;
    void showErrorOk(const std::string& text) override;
    void showInformation(const std::string& text) override;
    std::optional<FileChoice> openFile(const OpenFileRequest& request) override;
    std::optional<FileChoice> saveFile(const SaveFileRequest& request) override;

private:
    QWidget* parent_;
    QString title_;
    std::function<void(int)> help_;
};

// The Windows filter syntax in Qt's: "Text files (*.txt)|*.txt|All (*.*)|*.*"
// gives {"Text files (*.txt) (*.txt)", ...}: each row is its name followed by
// its patterns in parentheses, which is what QFileDialog matches on. Qt
// reads the last parenthesised group of a row as its patterns, so the name's
// own "(*.html,*.htm)" stays visible and harmless.
QStringList toQtFilters(const std::string& windowsFilter);

}  // namespace zorfa::platform
