#include "base/FileErrors.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "base/Errors.h"

namespace zorfa {

std::string fileErrorText(std::string_view what, const std::string& path, int error) {
    std::string text(what);
    text += " \"";
    text += path;
    text += "\". ";
    text += std::strerror(error);
    return text;
}

void throwFileError(std::string_view what, const std::string& path, int error) {
    throw Exception(fileErrorText(what, path, error));
}

std::string readWholeFile(const std::string& path) {
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file) throwFileError("Cannot open file", path, errno);
    std::string content;
    char buffer[65536];
    std::size_t n;
    while ((n = std::fread(buffer, 1, sizeof buffer, file.get())) > 0) content.append(buffer, n);
    if (std::ferror(file.get())) throwFileError("Cannot read file", path, errno ? errno : EIO);
    return content;
}

}  // namespace zorfa
