#include "platform/QtDialogs.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

#include "platform/QtText.h"

namespace zorfa::platform {

namespace {

QString rowToQt(const FileFilter& row) {
    QStringList patterns;
    for (const auto& p : row.patterns) patterns << pathToQString(p);
    return toQString(row.name) + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')');
}

// The suffix Qt should add to a name typed without one: the chosen row's own
// extension, else the default.
QString suffixFor(const std::vector<FileFilter>& rows, int index, const std::string& defaultExtension) {
    const FileFilter* row = index >= 0 && index < static_cast<int>(rows.size()) ? &rows[index] : nullptr;
    const std::string completed = withDefaultExtension("x", row, defaultExtension);
    return completed.size() > 2 ? pathToQString(completed.substr(2)) : QString();
}

// The row of a filter text as QFileDialog reports it: the whole filter, or,
// with HideNameFilterDetails, only its name (Qt versions differ). -1 if none.
int rowOf(const QString& reported, const QStringList& filters, const std::vector<FileFilter>& rows) {
    for (int i = 0; i < static_cast<int>(rows.size()); ++i)
        if (reported == filters[i] || reported == toQString(rows[i].name)) return i;
    return -1;
}

template <class Request>
void prepare(QFileDialog& dialog, const Request& request, const QStringList& filters) {
    // The names show as written in the filter list; the appended patterns are
    // for matching. Set before the filters: setting it later drops the selection.
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    if (!filters.isEmpty()) {
        dialog.setNameFilters(filters);
        const int index = request.filterIndex >= 1 && request.filterIndex <= filters.size() ? request.filterIndex : 1;
        dialog.selectNameFilter(filters[index - 1]);
    }
    if (!request.initialDir.empty()) dialog.setDirectory(pathToQString(request.initialDir));
    if (!request.fileName.empty()) dialog.selectFile(pathToQString(request.fileName));
}

template <class Request>
std::optional<FileChoice> runFileDialog(QFileDialog& dialog, const Request& request, const QStringList& filters,
                                        const std::vector<FileFilter>& rows) {
    while (dialog.exec() == QDialog::Accepted) {
        const QStringList files = dialog.selectedFiles();
        if (files.isEmpty()) return std::nullopt;
        const QFileInfo chosen(files.first());
        if (request.pathMustExist && !chosen.absoluteDir().exists()) {
            QMessageBox::warning(&dialog, dialog.windowTitle(),
                                 QStringLiteral("The path does not exist:\n%1").arg(chosen.absolutePath()));
            continue;
        }
        const int index = rowOf(dialog.selectedNameFilter(), filters, rows);
        return FileChoice{qStringToPath(chosen.absoluteFilePath()), index >= 0 ? index + 1 : 1};
    }
    return std::nullopt;
}

}  // namespace

QStringList toQtFilters(const std::string& windowsFilter) {
    QStringList filters;
    for (const auto& row : parseFileFilter(windowsFilter)) filters << rowToQt(row);
    return filters;
}

QtDialogs::QtDialogs(QWidget* parent, QString title) : parent_(parent), title_(std::move(title)) {}

bool QtDialogs::askYesNo(const std::string& text) {
    QMessageBox box(QMessageBox::Question, title_, toQString(text), QMessageBox::Yes | QMessageBox::No, parent_);
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

Answer QtDialogs::askYesNoCancel(const std::string& text) {
    QMessageBox box(QMessageBox::Question, title_, toQString(text),
                    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, parent_);
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::Cancel);
    switch (box.exec()) {
        case QMessageBox::Yes: return Answer::Yes;
        case QMessageBox::No: return Answer::No;
        default: return Answer::Cancel;
    }
}

void QtDialogs::showError(const std::string& text, int helpContext) {
    QMessageBox box(QMessageBox::Critical, title_, toQString(text), QMessageBox::Ok | QMessageBox::Help, parent_);
    box.setDefaultButton(QMessageBox::Ok);
    box.setEscapeButton(QMessageBox::Ok);
    if (box.exec() == QMessageBox::Help && help_) help_(helpContext);
}

void QtDialogs::showErrorOk(const std::string& text) {
    QMessageBox box(QMessageBox::Critical, title_, toQString(text), QMessageBox::Ok, parent_);
    box.exec();
}

void QtDialogs::showInformation(const std::string& text) {
    QMessageBox box(QMessageBox::Information, title_, toQString(text), QMessageBox::Ok, parent_);
    box.exec();
}

std::optional<FileChoice> QtDialogs::openFile(const OpenFileRequest& request) {
    const auto rows = parseFileFilter(request.filter);
    const QStringList filters = toQtFilters(request.filter);
    QFileDialog dialog(parent_, toQString(request.title));
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(request.fileMustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    prepare(dialog, request, filters);
    return runFileDialog(dialog, request, filters, rows);
}

std::optional<FileChoice> QtDialogs::saveFile(const SaveFileRequest& request) {
    const auto rows = parseFileFilter(request.filter);
    const QStringList filters = toQtFilters(request.filter);
    QFileDialog dialog(parent_, toQString(request.title));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.overwritePrompt);
    prepare(dialog, request, filters);
    // Qt adds the suffix before it asks about overwriting, so the question
    // names the file that will really be written.
    const int initial = request.filterIndex >= 1 ? request.filterIndex - 1 : 0;
    dialog.setDefaultSuffix(suffixFor(rows, initial, request.defaultExtension));
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& filter) {
        dialog.setDefaultSuffix(suffixFor(rows, rowOf(filter, filters, rows), request.defaultExtension));
    });
    return runFileDialog(dialog, request, filters, rows);
}

}  // namespace zorfa::platform
