#pragma once
// Facts about files and the parts of a file name, as the program asks them of
// the operating system. No Qt.
//
// A path is a byte string exactly as the operating system takes it (on Linux
// normally UTF-8); see QtText.h for the decision on file names. The separator
// is "/" only: a backslash is an ordinary character of a Linux file name.

#include <cstdint>
#include <string>
#include <string_view>

namespace zorfa::platform {

// The size of a file by a directory look-up, without opening it (stat, links
// followed). -1 for a folder, for anything that is not a regular file, and
// for a path that names nothing.
std::int64_t fileSize(const std::string& path);

// True for an existing file or link to one; false for a folder or nothing.
bool fileExists(const std::string& path);
bool directoryExists(const std::string& path);

// The read-only attribute. On Linux: the file exists and can't be written by
// this process: no write permission bit is set at all (so a chmod a-w file is
// read-only even to root), or access(W_OK) refuses (permissions, read-only
// file system). False for a path that names nothing.
bool isReadOnly(const std::string& path);

// Throws zorfa::Exception "Cannot create file "NAME". REASON" when isReadOnly
// says the file can't be written; REASON is the system's text for why (no
// write permission bit: "Permission denied"; a read-only mount: "Read-only
// file system"). Writers call it first so the read-only attribute holds for
// root too, as it does for every user of the system's files.
void requireWritable(const std::string& path);

// Absolute against the current folder and normalised by text alone ("." and
// ".." steps folded, links not resolved), as the OS full-path function does.
// A trailing "/" stays. An empty path gives an empty result.
std::string fullPath(const std::string& path);

// The parts of a file name, by text alone:
// "/a/b.txt": name "b.txt", extension ".txt", path "/a/", dir "/a".
// The extension begins at the last "." of the name part, with the dot, and is
// empty when the name has none ("/a.d/b" has none).
std::string extractFileName(std::string_view path);
std::string extractFileExt(std::string_view path);
std::string extractFilePath(std::string_view path);  // up to and with the last "/"
std::string extractFileDir(std::string_view path);   // without the last "/" (but "/" stays "/")
// The path with its extension replaced by ext (which brings its own dot, or is empty).
std::string changeFileExt(std::string_view path, std::string_view ext);
// The path with a "/" at the end, added if missing (an empty path stays empty).
std::string includeTrailingSlash(std::string_view path);

}  // namespace zorfa::platform
