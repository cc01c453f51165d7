#pragma once
// The system's one wording for a file that can't be opened, read, created or
// written: WHAT "NAME". REASON, REASON being the operating system's text for
// the error number ("Cannot open file "a.txt". No such file or directory").
// Every subsystem that touches files raises it through here, so the user
// always reads the same sentence.

#include <string>
#include <string_view>

namespace zorfa {

std::string fileErrorText(std::string_view what, const std::string& path, int error);
[[noreturn]] void throwFileError(std::string_view what, const std::string& path, int error);

// The whole content of a file, read as bytes. Throws zorfa::Exception with
// "Cannot open file …" or "Cannot read file …".
std::string readWholeFile(const std::string& path);

}  // namespace zorfa
