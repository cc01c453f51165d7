#include "platform/ProcessRunner.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

#include "platform/QtText.h"

namespace zorfa::platform {

std::vector<std::string> splitCommandLine(const std::string& commandLine) {
    std::vector<std::string> parts;
    std::string current;
    bool inQuotes = false, inWord = false;
    for (size_t i = 0; i < commandLine.size(); ++i) {
        const char c = commandLine[i];
        if (c == '"') {
            inWord = true;
            if (inQuotes && i + 1 < commandLine.size() && commandLine[i + 1] == '"') {
                current += '"';  // "" inside quotes is a quote
                ++i;
            } else {
                inQuotes = !inQuotes;
            }
        } else if ((c == ' ' || c == '\t') && !inQuotes) {
            if (inWord) parts.push_back(std::move(current));
            current.clear();
            inWord = false;
        } else {
            current += c;
            inWord = true;
        }
    }
    if (inWord) parts.push_back(std::move(current));
    return parts;
}

bool QtProcessRunner::startDetached(const std::string& commandLine, const std::string& workingDir) {
    const std::vector<std::string> parts = splitCommandLine(commandLine);
    if (parts.empty()) return false;
    QStringList arguments;
    for (size_t i = 1; i < parts.size(); ++i) arguments << pathToQString(parts[i]);
    return QProcess::startDetached(pathToQString(parts[0]), arguments, pathToQString(workingDir));
}

bool QtProcessRunner::openWithDesktop(const std::string& fileOrUrl) {
    const QString target = pathToQString(fileOrUrl);
    const QUrl url = QFileInfo::exists(target) ? QUrl::fromLocalFile(QFileInfo(target).absoluteFilePath())
                                               : QUrl::fromUserInput(target);
    return url.isValid() && QDesktopServices::openUrl(url);
}

}  // namespace zorfa::platform
