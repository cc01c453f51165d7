#include "platform/SettingsStore.h"

#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>

#include "base/CodePage.h"
#include "base/Errors.h"

namespace zorfa::platform {

namespace {

constexpr std::string_view kHeader =
    "; Zorfa Editor settings: the keys of the current user, written by the program.\n";

bool isPathPrefix(std::string_view prefix, std::string_view path) {
    return path.size() > prefix.size() && path[prefix.size()] == '\\' &&
           sameNameIgnoringCase(path.substr(0, prefix.size()), prefix);
}

// ---- the file's text form ----
// A string is code-page bytes. In the file it is UTF-8 between double quotes;
// backslash, quote and control bytes are escaped, so lines stay lines.

void appendQuoted(std::string& out, std::string_view bytes) {
    static constexpr char kHex[] = "0123456789abcdef";
    out += '"';
    std::string plain;
    auto flush = [&] {
        out += codepage::toUtf8(plain);
        plain.clear();
    };
    for (unsigned char c : bytes) {
        if (c == '\\' || c == '"') {
            flush();
            out += '\\';
            out += static_cast<char>(c);
        } else if (c == '\n') {
            flush();
            out += "\\n";
        } else if (c == '\r') {
            flush();
            out += "\\r";
        } else if (c == '\t') {
            flush();
            out += "\\t";
        } else if (c < 0x20 || c == 0x7F) {
            flush();
            out += "\\x";
            out += kHex[c >> 4];
            out += kHex[c & 15];
        } else {
            plain += static_cast<char>(c);
        }
    }
    flush();
    out += '"';
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Reads a quoted string at the start of text; the rest of the text is left
// in text. False when it is not one.
bool readQuoted(std::string_view& text, std::string& bytes) {
    if (text.empty() || text.front() != '"') return false;
    std::string utf8;
    size_t i = 1;
    for (; i < text.size() && text[i] != '"'; ++i) {
        if (text[i] != '\\') {
            utf8 += text[i];
            continue;
        }
        if (++i >= text.size()) return false;
        switch (text[i]) {
            case 'n': utf8 += '\n'; break;
            case 'r': utf8 += '\r'; break;
            case 't': utf8 += '\t'; break;
            case 'x': {
                if (i + 2 >= text.size()) return false;
                const int hi = hexDigit(text[i + 1]), lo = hexDigit(text[i + 2]);
                if (hi < 0 || lo < 0) return false;
                utf8 += static_cast<char>(hi * 16 + lo);
                i += 2;
                break;
            }
            default: utf8 += text[i]; break;
        }
    }
    if (i >= text.size()) return false;
    text.remove_prefix(i + 1);
    bytes = codepage::fromUtf8(utf8);
    return true;
}

}  // namespace

// ---- SettingsStore -------------------------------------------------------------

std::string SettingsStore::defaultFileName() {
    std::string base;
    if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg && *xdg) {
        base = xdg;
    } else if (const char* home = std::getenv("HOME"); home && *home) {
        base = std::string(home) + "/.config";
    } else {
        base = ".config";
    }
    if (base.back() != '/') base += '/';
    return base + "Zorfa Software/registry.ini";
}

SettingsStore::SettingsStore(std::string fileName) : fileName_(std::move(fileName)) {}

SettingsStore::~SettingsStore() = default;

std::string SettingsStore::normalizeKey(std::string_view keyPath) {
    std::string out;
    size_t pos = 0;
    while (pos <= keyPath.size()) {
        size_t end = keyPath.find('\\', pos);
        if (end == std::string_view::npos) end = keyPath.size();
        if (end > pos) {
            if (!out.empty()) out += '\\';
            out.append(keyPath.substr(pos, end - pos));
        }
        pos = end + 1;
    }
    return out;
}

SettingsStore::FileStamp SettingsStore::currentStamp() const {
    struct stat st {};
    if (::stat(fileName_.c_str(), &st) != 0) return {};
    FileStamp stamp;
    stamp.exists = true;
    stamp.device = st.st_dev;
    stamp.inode = st.st_ino;
    stamp.size = st.st_size;
    stamp.modifiedNs = static_cast<std::int64_t>(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec;
    return stamp;
}

void SettingsStore::refresh() const {
    // Unwritten changes of a batch are ours and win: don't read over them.
    if (pendingWrite_) return;
    if (loaded_ && currentStamp() == stamp_) return;
    loadFromDisk();
}

void SettingsStore::loadFromDisk() const {
    keys_.clear();
    loaded_ = true;
    stamp_ = currentStamp();
    std::string text;
    if (readFileContents(fileName_, text)) parse(text);
}

void SettingsStore::parse(std::string_view text) const {
    Key* current = nullptr;
    size_t pos = 0;
    while (pos < text.size()) {
        size_t end = text.find('\n', pos);
        if (end == std::string_view::npos) end = text.size();
        std::string_view line = text.substr(pos, end - pos);
        pos = end + 1;
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        if (line.empty() || line.front() == ';') continue;
        if (line.front() == '[' && line.back() == ']') {
            const std::string path = normalizeKey(codepage::fromUtf8(line.substr(1, line.size() - 2)));
            current = findKey(path);
            if (!current) current = &keys_.emplace_back(Key{path, {}});
            continue;
        }
        Value value;
        if (!current || !readQuoted(line, value.name) || line.empty() || line.front() != '=') continue;
        line.remove_prefix(1);
        if (line.starts_with("int:")) {
            const auto number = parseIniInteger(line.substr(4));
            if (!number) continue;
            value.kind = ValueKind::Integer;
            value.number = *number;
        } else if (line.starts_with("hex:")) {
            line.remove_prefix(4);
            if (line.size() % 2 != 0) continue;
            value.kind = ValueKind::Binary;
            bool ok = true;
            for (size_t i = 0; ok && i < line.size(); i += 2) {
                const int hi = hexDigit(line[i]), lo = hexDigit(line[i + 1]);
                ok = hi >= 0 && lo >= 0;
                value.text += static_cast<char>(hi * 16 + lo);
            }
            if (!ok) continue;
        } else if (!readQuoted(line, value.text)) {
            continue;
        }
        // A value named twice: the later line counts, as it would have been written last.
        bool replaced = false;
        for (auto& v : current->values)
            if (sameNameIgnoringCase(v.name, value.name)) {
                v = std::move(value);
                replaced = true;
                break;
            }
        if (!replaced) current->values.push_back(std::move(value));
    }
}

std::string SettingsStore::serialize() const {
    static constexpr char kHex[] = "0123456789abcdef";
    std::string out(kHeader);
    for (const Key& key : keys_) {
        out += '\n';
        out += '[';
        out += codepage::toUtf8(key.path);
        out += "]\n";
        for (const Value& v : key.values) {
            appendQuoted(out, v.name);
            out += '=';
            switch (v.kind) {
                case ValueKind::String: appendQuoted(out, v.text); break;
                case ValueKind::Integer: out += "int:" + std::to_string(v.number); break;
                case ValueKind::Binary:
                    out += "hex:";
                    for (unsigned char c : v.text) {
                        out += kHex[c >> 4];
                        out += kHex[c & 15];
                    }
                    break;
            }
            out += '\n';
        }
    }
    return out;
}

void SettingsStore::changed() {
    if (batchDepth_ > 0) {
        pendingWrite_ = true;
        return;
    }
    writeToDisk();
}

void SettingsStore::writeToDisk() {
    const std::filesystem::path folder = std::filesystem::path(fileName_).parent_path();
    std::error_code ignored;
    if (!folder.empty()) std::filesystem::create_directories(folder, ignored);
    replaceFileContents(fileName_, serialize());
    pendingWrite_ = false;
    stamp_ = currentStamp();
}

SettingsStore::Key* SettingsStore::findKey(std::string_view normalized) const {
    for (Key& k : keys_)
        if (sameNameIgnoringCase(k.path, normalized)) return &k;
    return nullptr;
}

SettingsStore::Key& SettingsStore::obtainKey(std::string_view normalized) {
    if (normalized.empty()) throw Exception("A settings value needs a key");
    for (unsigned char c : normalized)
        if (c < 0x20 || c == 0x7F) throw Exception("Invalid settings key name");
    if (Key* k = findKey(normalized)) return *k;
    return keys_.emplace_back(Key{std::string(normalized), {}});
}

const SettingsStore::Value* SettingsStore::findValue(std::string_view keyPath, std::string_view name) const {
    refresh();
    const Key* key = findKey(normalizeKey(keyPath));
    if (!key) return nullptr;
    for (const Value& v : key->values)
        if (sameNameIgnoringCase(v.name, name)) return &v;
    return nullptr;
}

SettingsStore::Value& SettingsStore::obtainValue(std::string_view keyPath, std::string_view name) {
    refresh();
    Key& key = obtainKey(normalizeKey(keyPath));
    for (Value& v : key.values)
        if (sameNameIgnoringCase(v.name, name)) return v;
    Value& v = key.values.emplace_back();
    v.name = name;
    return v;
}

bool SettingsStore::holdsKey(std::string_view normalized) const {
    if (normalized.empty()) return true;
    for (const Key& k : keys_)
        if (sameNameIgnoringCase(k.path, normalized) || isPathPrefix(normalized, k.path)) return true;
    return false;
}

bool SettingsStore::keyExists(std::string_view keyPath) const {
    refresh();
    return holdsKey(normalizeKey(keyPath));
}

void SettingsStore::createKey(std::string_view keyPath) {
    if (keyExists(keyPath)) return;
    obtainKey(normalizeKey(keyPath));
    changed();
}

bool SettingsStore::deleteKey(std::string_view keyPath) {
    refresh();
    const std::string path = normalizeKey(keyPath);
    if (path.empty()) return false;
    const auto removed = std::erase_if(keys_, [&](const Key& k) {
        return sameNameIgnoringCase(k.path, path) || isPathPrefix(path, k.path);
    });
    if (removed == 0) return false;
    // As in the registry, the key above stays, even when nothing else holds it.
    if (const size_t slash = path.rfind('\\'); slash != std::string::npos && !holdsKey(path.substr(0, slash)))
        keys_.push_back(Key{path.substr(0, slash), {}});
    changed();
    return true;
}

std::vector<std::string> SettingsStore::subkeys(std::string_view keyPath) const {
    refresh();
    const std::string path = normalizeKey(keyPath);
    std::vector<std::string> names;
    for (const Key& k : keys_) {
        std::string_view rest;
        if (path.empty()) {
            rest = k.path;
        } else if (isPathPrefix(path, k.path)) {
            rest = std::string_view(k.path).substr(path.size() + 1);
        } else {
            continue;
        }
        const std::string_view name = rest.substr(0, rest.find('\\'));
        bool known = false;
        for (const auto& n : names) known = known || sameNameIgnoringCase(n, name);
        if (!known) names.emplace_back(name);
    }
    return names;
}

std::vector<std::string> SettingsStore::valueNames(std::string_view keyPath) const {
    refresh();
    std::vector<std::string> names;
    if (const Key* key = findKey(normalizeKey(keyPath)))
        for (const Value& v : key->values) names.push_back(v.name);
    return names;
}

bool SettingsStore::valueExists(std::string_view keyPath, std::string_view name) const {
    return findValue(keyPath, name) != nullptr;
}

std::optional<ValueKind> SettingsStore::valueKind(std::string_view keyPath, std::string_view name) const {
    if (const Value* v = findValue(keyPath, name)) return v->kind;
    return std::nullopt;
}

std::string SettingsStore::readString(std::string_view keyPath, std::string_view name,
                                      std::string_view defaultValue) const {
    const Value* v = findValue(keyPath, name);
    if (!v || v->kind == ValueKind::Binary) return std::string(defaultValue);
    return v->kind == ValueKind::Integer ? std::to_string(v->number) : v->text;
}

std::int64_t SettingsStore::readInteger(std::string_view keyPath, std::string_view name,
                                        std::int64_t defaultValue) const {
    const Value* v = findValue(keyPath, name);
    if (!v || v->kind == ValueKind::Binary) return defaultValue;
    if (v->kind == ValueKind::Integer) return v->number;
    return parseIniInteger(v->text).value_or(defaultValue);
}

bool SettingsStore::readBool(std::string_view keyPath, std::string_view name, bool defaultValue) const {
    const Value* v = findValue(keyPath, name);
    if (!v || v->kind == ValueKind::Binary) return defaultValue;
    if (v->kind == ValueKind::Integer) return v->number != 0;
    if (const auto number = parseIniInteger(v->text)) return *number != 0;
    if (sameNameIgnoringCase(v->text, "true")) return true;
    if (sameNameIgnoringCase(v->text, "false")) return false;
    return defaultValue;
}

std::string SettingsStore::readBinary(std::string_view keyPath, std::string_view name,
                                      std::string_view defaultValue) const {
    const Value* v = findValue(keyPath, name);
    if (!v || v->kind == ValueKind::Integer) return std::string(defaultValue);
    return v->text;
}

void SettingsStore::writeString(std::string_view keyPath, std::string_view name, std::string_view value) {
    Value& v = obtainValue(keyPath, name);
    v.kind = ValueKind::String;
    v.text = value;
    changed();
}

void SettingsStore::writeInteger(std::string_view keyPath, std::string_view name, std::int64_t value) {
    Value& v = obtainValue(keyPath, name);
    v.kind = ValueKind::Integer;
    v.text.clear();
    v.number = value;
    changed();
}

void SettingsStore::writeBool(std::string_view keyPath, std::string_view name, bool value) {
    writeInteger(keyPath, name, value ? 1 : 0);
}

void SettingsStore::writeBinary(std::string_view keyPath, std::string_view name, std::string_view bytes) {
    Value& v = obtainValue(keyPath, name);
    v.kind = ValueKind::Binary;
    v.text = bytes;
    changed();
}

bool SettingsStore::deleteValue(std::string_view keyPath, std::string_view name) {
    refresh();
    Key* key = findKey(normalizeKey(keyPath));
    if (!key) return false;
    const auto removed =
        std::erase_if(key->values, [&](const Value& v) { return sameNameIgnoringCase(v.name, name); });
    if (removed == 0) return false;
    changed();
    return true;
}

// ---- UpdateBatch ------------------------------------------------------------------

SettingsStore::UpdateBatch::UpdateBatch(SettingsStore& store) : store_(store) {
    store_.refresh();
    ++store_.batchDepth_;
}

SettingsStore::UpdateBatch::~UpdateBatch() {
    if (--store_.batchDepth_ > 0 || !store_.pendingWrite_) return;
    try {
        store_.writeToDisk();
    } catch (...) {
        // A destructor can't report it; the writes stay pending for the next one.
    }
}

void SettingsStore::UpdateBatch::commit() {
    if (store_.pendingWrite_) store_.writeToDisk();
}

// ---- RegistryIniFile ------------------------------------------------------------

RegistryIniFile::RegistryIniFile(SettingsStore& store, std::string keyPath)
    : store_(store), keyPath_(SettingsStore::normalizeKey(keyPath)) {}

std::string RegistryIniFile::sectionKey(std::string_view section) const {
    if (section.empty()) return keyPath_;
    return keyPath_ + "\\" + std::string(section);
}

std::string RegistryIniFile::readString(std::string_view section, std::string_view key,
                                        std::string_view defaultValue) const {
    return store_.readString(sectionKey(section), key, defaultValue);
}

void RegistryIniFile::writeString(std::string_view section, std::string_view key, std::string_view value) {
    store_.writeString(sectionKey(section), key, value);
}

std::int64_t RegistryIniFile::readInteger(std::string_view section, std::string_view key,
                                          std::int64_t defaultValue) const {
    return store_.readInteger(sectionKey(section), key, defaultValue);
}

void RegistryIniFile::writeInteger(std::string_view section, std::string_view key, std::int64_t value) {
    store_.writeInteger(sectionKey(section), key, value);
}

bool RegistryIniFile::readBool(std::string_view section, std::string_view key, bool defaultValue) const {
    return store_.readBool(sectionKey(section), key, defaultValue);
}

void RegistryIniFile::writeBool(std::string_view section, std::string_view key, bool value) {
    store_.writeBool(sectionKey(section), key, value);
}

std::vector<std::string> RegistryIniFile::sections() const { return store_.subkeys(keyPath_); }

std::vector<std::string> RegistryIniFile::keys(std::string_view section) const {
    return store_.valueNames(sectionKey(section));
}

bool RegistryIniFile::sectionExists(std::string_view section) const {
    return store_.keyExists(sectionKey(section));
}

bool RegistryIniFile::valueExists(std::string_view section, std::string_view key) const {
    return store_.valueExists(sectionKey(section), key);
}

void RegistryIniFile::eraseSection(std::string_view section) { store_.deleteKey(sectionKey(section)); }

void RegistryIniFile::deleteKey(std::string_view section, std::string_view key) {
    store_.deleteValue(sectionKey(section), key);
}

}  // namespace zorfa::platform
