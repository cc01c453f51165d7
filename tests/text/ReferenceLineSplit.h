#pragma once
// A deliberately plain model of how a loaded file splits into lines: the text
// ends at the first NUL, CR, LF and CR LF are one break each, and a break at
// the very end adds no empty line. The line store's fast split is checked
// against it.

#include <string>
#include <string_view>
#include <vector>

namespace zorfa::test {

inline std::vector<std::string> referenceLineSplit(std::string_view bytes) {
    if (const size_t nul = bytes.find('\0'); nul != std::string_view::npos) bytes = bytes.substr(0, nul);
    std::vector<std::string> lines;
    std::string line;
    bool pending = false;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const char c = bytes[i];
        if (c == '\r' || c == '\n') {
            lines.push_back(line);
            line.clear();
            pending = false;
            if (c == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
        } else {
            line += c;
            pending = true;
        }
    }
    if (pending) lines.push_back(line);
    return lines;
}

}  // namespace zorfa::test
