#include "platform/Dialogs.h"

#include "platform/FileFacts.h"

namespace zorfa::platform {

namespace {

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    size_t pos = 0;
    while (true) {
        const size_t end = text.find(separator, pos);
        parts.push_back(text.substr(pos, end == std::string::npos ? std::string::npos : end - pos));
        if (end == std::string::npos) return parts;
        pos = end + 1;
    }
}

std::string trimmed(const std::string& s) {
    const size_t first = s.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

}  // namespace

std::vector<FileFilter> parseFileFilter(const std::string& filter) {
    std::vector<FileFilter> rows;
    if (filter.empty()) return rows;
    const std::vector<std::string> parts = split(filter, '|');
    for (size_t i = 0; i < parts.size(); i += 2) {
        FileFilter row;
        row.name = parts[i];
        if (i + 1 < parts.size())
            for (const std::string& p : split(parts[i + 1], ';'))
                if (std::string pattern = trimmed(p); !pattern.empty()) row.patterns.push_back(pattern);
        if (row.patterns.empty()) row.patterns.push_back("*");
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string withDefaultExtension(const std::string& fileName, const FileFilter* chosenFilter,
                                 const std::string& defaultExtension) {
    if (fileName.empty() || fileName.back() == '/' || !extractFileExt(fileName).empty()) return fileName;
    if (chosenFilter && !chosenFilter->patterns.empty()) {
        const std::string& first = chosenFilter->patterns.front();
        if (first.size() > 2 && first.starts_with("*.") &&
            first.find_first_of("*?", 2) == std::string::npos)
            return fileName + first.substr(1);
    }
    if (defaultExtension.empty()) return fileName;
    return fileName + "." + defaultExtension;
}

}  // namespace zorfa::platform
