#include "base/IniFile.h"

#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include "base/Errors.h"

namespace zorfa {

namespace {

char lowerAscii(char c) noexcept { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c + 32) : c; }

std::string_view trim(std::string_view s) {
    // Blanks and control characters, as the ini reader of Windows trims.
    while (!s.empty() && static_cast<unsigned char>(s.front()) <= ' ') s.remove_prefix(1);
    while (!s.empty() && static_cast<unsigned char>(s.back()) <= ' ') s.remove_suffix(1);
    return s;
}

}  // namespace

bool sameNameIgnoringCase(std::string_view a, std::string_view b) noexcept {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (lowerAscii(a[i]) != lowerAscii(b[i])) return false;
    return true;
}

std::optional<std::int64_t> parseIniInteger(std::string_view text) {
    text = trim(text);
    bool negative = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    int base = 10;
    if (text.size() > 1 && text[0] == '$') {
        base = 16;
        text.remove_prefix(1);
    } else if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        base = 16;
        text.remove_prefix(2);
    }
    if (text.empty()) return std::nullopt;
    std::uint64_t magnitude = 0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), magnitude, base);
    if (ec != std::errc() || end != text.data() + text.size()) return std::nullopt;
    if (negative) {
        if (magnitude > static_cast<std::uint64_t>(INT64_MAX) + 1) return std::nullopt;
        return static_cast<std::int64_t>(0 - magnitude);
    }
    if (magnitude > static_cast<std::uint64_t>(INT64_MAX)) return std::nullopt;
    return static_cast<std::int64_t>(magnitude);
}

bool readFileContents(const std::string& fileName, std::string& out) {
    out.clear();
    const int fd = ::open(fileName.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    char buffer[65536];
    while (true) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n == 0) break;
        if (n < 0) {
            if (errno == EINTR) continue;
            ::close(fd);
            out.clear();
            return false;
        }
        out.append(buffer, static_cast<size_t>(n));
    }
    ::close(fd);
    return true;
}

void replaceFileContents(const std::string& fileName, std::string_view contents) {
    static std::atomic<unsigned> counter{0};
    const std::string temp = fileName + ".tmp" + std::to_string(::getpid()) + "." +
                             std::to_string(counter.fetch_add(1));
    auto failure = [&](int error) {
        return Exception("Cannot create file \"" + fileName + "\". " + std::strerror(error));
    };
    const int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0) throw failure(errno);
    const char* data = contents.data();
    size_t left = contents.size();
    while (left > 0) {
        const ssize_t n = ::write(fd, data, left);
        if (n < 0) {
            if (errno == EINTR) continue;
            const int error = errno;
            ::close(fd);
            ::unlink(temp.c_str());
            throw failure(error);
        }
        data += n;
        left -= static_cast<size_t>(n);
    }
    if (::close(fd) != 0 || std::rename(temp.c_str(), fileName.c_str()) != 0) {
        const int error = errno;
        ::unlink(temp.c_str());
        throw failure(error);
    }
}

// ---- CustomIniFile: the typed reads and writes over the text ones ----------

std::int64_t CustomIniFile::readInteger(std::string_view section, std::string_view key,
                                        std::int64_t defaultValue) const {
    return parseIniInteger(readString(section, key)).value_or(defaultValue);
}

void CustomIniFile::writeInteger(std::string_view section, std::string_view key, std::int64_t value) {
    writeString(section, key, std::to_string(value));
}

bool CustomIniFile::readBool(std::string_view section, std::string_view key, bool defaultValue) const {
    const std::string text = readString(section, key);
    if (const auto value = parseIniInteger(text)) return *value != 0;
    if (sameNameIgnoringCase(trim(text), "true")) return true;
    if (sameNameIgnoringCase(trim(text), "false")) return false;
    return defaultValue;
}

void CustomIniFile::writeBool(std::string_view section, std::string_view key, bool value) {
    writeString(section, key, value ? "1" : "0");
}

// ---- IniFile -----------------------------------------------------------------

IniFile::IniFile(std::string fileName) : fileName_(std::move(fileName)) { reload(); }

void IniFile::reload() {
    prologue_.clear();
    sections_.clear();
    lineBreak_ = "\n";
    modified_ = false;
    std::string text;
    if (readFileContents(fileName_, text)) parse(text);
}

void IniFile::parse(std::string_view text) {
    const size_t firstBreak = text.find_first_of("\r\n");
    if (firstBreak != std::string_view::npos)
        lineBreak_ = text.compare(firstBreak, 2, "\r\n") == 0 ? "\r\n" : text.substr(firstBreak, 1);
    Section* current = nullptr;
    size_t pos = 0;
    while (pos < text.size()) {
        size_t end = text.find_first_of("\r\n", pos);
        if (end == std::string_view::npos) end = text.size();
        const std::string_view line = trim(text.substr(pos, end - pos));
        pos = end;
        if (pos < text.size() && text[pos] == '\r') ++pos;
        if (pos < text.size() && text[pos] == '\n') ++pos;
        if (line.empty()) continue;
        if (line.front() == '[') {
            const size_t close = line.find(']');
            const std::string_view name =
                trim(line.substr(1, close == std::string_view::npos ? std::string_view::npos : close - 1));
            current = findSection(name);
            if (!current) current = &sections_.emplace_back(Section{std::string(name), {}});
            continue;
        }
        const bool comment = line.front() == ';' || line.front() == '#';
        const size_t eq = comment ? std::string_view::npos : line.find('=');
        if (!current) {
            prologue_.emplace_back(line);
        } else if (comment || eq == std::string_view::npos || trim(line.substr(0, eq)).empty()) {
            // A comment, or a line that is no assignment: kept, never a key.
            current->entries.push_back({std::string(), std::string(line)});
        } else {
            current->entries.push_back(
                {std::string(trim(line.substr(0, eq))), std::string(trim(line.substr(eq + 1)))});
        }
    }
}

IniFile::Section* IniFile::findSection(std::string_view name) {
    for (auto& s : sections_)
        if (sameNameIgnoringCase(s.name, name)) return &s;
    return nullptr;
}

const IniFile::Section* IniFile::findSection(std::string_view name) const {
    return const_cast<IniFile*>(this)->findSection(name);
}

namespace {

template <class Entries>
auto findEntry(Entries& entries, std::string_view key) -> decltype(&entries.front()) {
    for (auto& e : entries)
        if (!e.key.empty() && sameNameIgnoringCase(e.key, key)) return &e;
    return nullptr;
}

}  // namespace

std::string IniFile::readString(std::string_view section, std::string_view key,
                                std::string_view defaultValue) const {
    if (const Section* s = findSection(trim(section)))
        if (const Entry* e = findEntry(s->entries, trim(key))) return e->value;
    return std::string(defaultValue);
}

void IniFile::writeString(std::string_view section, std::string_view key, std::string_view value) {
    section = trim(section);
    key = trim(key);
    if (key.empty()) return;  // an entry without a name could not be read back
    Section* s = findSection(section);
    if (!s) s = &sections_.emplace_back(Section{std::string(section), {}});
    if (Entry* e = findEntry(s->entries, key)) {
        e->value = value;
    } else {
        s->entries.push_back({std::string(key), std::string(value)});
    }
    modified_ = true;
}

std::vector<std::string> IniFile::sections() const {
    std::vector<std::string> names;
    names.reserve(sections_.size());
    for (const auto& s : sections_) names.push_back(s.name);
    return names;
}

std::vector<std::string> IniFile::keys(std::string_view section) const {
    std::vector<std::string> names;
    if (const Section* s = findSection(trim(section)))
        for (const auto& e : s->entries)
            if (!e.key.empty()) names.push_back(e.key);
    return names;
}

std::vector<std::pair<std::string, std::string>> IniFile::sectionValues(std::string_view section) const {
    std::vector<std::pair<std::string, std::string>> values;
    if (const Section* s = findSection(trim(section)))
        for (const auto& e : s->entries)
            if (!e.key.empty()) values.emplace_back(e.key, e.value);
    return values;
}

bool IniFile::sectionExists(std::string_view section) const { return findSection(trim(section)) != nullptr; }

bool IniFile::valueExists(std::string_view section, std::string_view key) const {
    const Section* s = findSection(trim(section));
    return s && findEntry(s->entries, trim(key));
}

void IniFile::eraseSection(std::string_view section) {
    section = trim(section);
    for (auto it = sections_.begin(); it != sections_.end(); ++it) {
        if (sameNameIgnoringCase(it->name, section)) {
            sections_.erase(it);
            modified_ = true;
            return;
        }
    }
}

void IniFile::deleteKey(std::string_view section, std::string_view key) {
    Section* s = findSection(trim(section));
    if (!s) return;
    key = trim(key);
    for (auto it = s->entries.begin(); it != s->entries.end(); ++it) {
        if (!it->key.empty() && sameNameIgnoringCase(it->key, key)) {
            s->entries.erase(it);
            modified_ = true;
            return;
        }
    }
}

std::string IniFile::text() const {
    std::string out;
    for (const auto& line : prologue_) out.append(line).append(lineBreak_);
    bool first = true;
    for (const auto& s : sections_) {
        if (!first) out += lineBreak_;  // a blank line between sections
        first = false;
        out.append("[").append(s.name).append("]").append(lineBreak_);
        for (const auto& e : s.entries) {
            if (e.key.empty()) {
                out.append(e.value);
            } else {
                out.append(e.key).append("=").append(e.value);
            }
            out += lineBreak_;
        }
    }
    return out;
}

void IniFile::updateFile() {
    replaceFileContents(fileName_, text());
    modified_ = false;
}

}  // namespace zorfa
