#include "platform/FileFacts.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

#include "base/FileErrors.h"

namespace zorfa::platform {

std::int64_t fileSize(const std::string& path) {
    struct stat st {};
    if (path.empty() || ::stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return -1;
    return static_cast<std::int64_t>(st.st_size);
}

bool fileExists(const std::string& path) {
    struct stat st {};
    return !path.empty() && ::stat(path.c_str(), &st) == 0 && !S_ISDIR(st.st_mode);
}

bool directoryExists(const std::string& path) {
    struct stat st {};
    return !path.empty() && ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

namespace {
// Why the file can't be written (an errno value), or 0 when it can or names
// nothing. access() alone would call every file writable for root; the
// permission bits are what "chmod a-w" (the nearest to the read-only
// attribute) sets.
int writeRefusal(const std::string& path) {
    struct stat st {};
    if (path.empty() || ::stat(path.c_str(), &st) != 0) return 0;
    if ((st.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) return EACCES;
    return ::access(path.c_str(), W_OK) != 0 ? errno : 0;
}
}  // namespace

bool isReadOnly(const std::string& path) { return writeRefusal(path) != 0; }

void requireWritable(const std::string& path) {
    if (const int reason = writeRefusal(path))
        throwFileError("Cannot create file", path, reason);
}

std::string fullPath(const std::string& path) {
    if (path.empty()) return {};
    std::error_code error;
    std::filesystem::path absolute = std::filesystem::absolute(path, error);
    if (error) absolute = path;
    std::string result = absolute.lexically_normal().string();
    // Folding "." or ".." leaves a "/" behind that the name did not end with.
    if (path.back() != '/' && result.size() > 1 && result.back() == '/') result.pop_back();
    return result;
}

namespace {

size_t nameStart(std::string_view path) {
    const size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? 0 : slash + 1;
}

// The position of the extension's dot, or npos.
size_t extensionDot(std::string_view path) {
    const size_t dot = path.rfind('.');
    return dot == std::string_view::npos || dot < nameStart(path) ? std::string_view::npos : dot;
}

}  // namespace

std::string extractFileName(std::string_view path) { return std::string(path.substr(nameStart(path))); }

std::string extractFileExt(std::string_view path) {
    const size_t dot = extensionDot(path);
    return dot == std::string_view::npos ? std::string() : std::string(path.substr(dot));
}

std::string extractFilePath(std::string_view path) { return std::string(path.substr(0, nameStart(path))); }

std::string extractFileDir(std::string_view path) {
    const size_t start = nameStart(path);
    if (start == 0) return {};
    if (start == 1) return "/";
    return std::string(path.substr(0, start - 1));
}

std::string changeFileExt(std::string_view path, std::string_view ext) {
    const size_t dot = extensionDot(path);
    std::string out(path.substr(0, dot == std::string_view::npos ? path.size() : dot));
    out += ext;
    return out;
}

std::string includeTrailingSlash(std::string_view path) {
    std::string out(path);
    if (!out.empty() && out.back() != '/') out += '/';
    return out;
}

}  // namespace zorfa::platform
