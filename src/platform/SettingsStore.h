#pragma once
// The settings store: what the registry under the current user is for the
// program. A tree of keys named by paths such as
// "Software\Zorfa Software\Zorfa Editor\Stored Properties\Main"; each key
// holds named values (text, integer or binary) and subkeys.
//
// Key paths use the backslash as separator and are kept as written, with
// spaces; a leading or trailing backslash and empty steps are dropped
// ("\Software\X\" is "Software\X", as the registry reads a path from the
// root). Key paths and value names are compared ignoring ASCII case and keep
// the spelling first written. A key exists once it was created or a value or
// subkey was written beneath it; the keys above it exist with it.
//
// The whole tree lives in ONE file (by default
// $XDG_CONFIG_HOME/Zorfa Software/registry.ini, ~/.config when the variable
// is unset); the location is a constructor argument. Every write goes
// straight to the file, replaced in one step (temporary file and rename), as
// a registry write is; inside an UpdateBatch the writes are collected and the
// file is written once when the outermost batch ends. Every read first looks
// whether the file changed on disk (another instance or process) and re-reads
// it if so; a write re-reads before it applies, so two processes lose nothing
// but what they write at the same moment: the last writer wins.
//
// A missing or unreadable file reads as an empty tree. A file that can't be
// written throws zorfa::Exception.
//
// File format (docs/arch/platform.md): sections "[key path]" in the order the
// keys were created, values as "name"=type:data lines, strings in UTF-8 with
// escapes, so any byte survives.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/IniFile.h"

namespace zorfa::platform {

// Key paths the program uses, relative to the root of the current user.
namespace keys {
inline constexpr std::string_view kRegistryRoot = "Software\\Zorfa Software\\Zorfa Editor";
inline constexpr std::string_view kStoredPropertiesMain =
    "Software\\Zorfa Software\\Zorfa Editor\\Stored Properties\\Main";
inline constexpr std::string_view kStoredProperties =
    "Software\\Zorfa Software\\Zorfa Editor\\Stored Properties";
inline constexpr std::string_view kLayout = "Software\\Zorfa Software\\Zorfa Editor\\Layout";
inline constexpr std::string_view kToolBars = "Software\\Zorfa Software\\Zorfa Editor\\ToolBars";
inline constexpr std::string_view kUserTools = "Software\\Zorfa Software\\Zorfa Editor\\User Tools";
inline constexpr std::string_view kCommon = "Software\\Zorfa Software\\Common";
}  // namespace keys

enum class ValueKind { String, Integer, Binary };

class SettingsStore {
public:
    // $XDG_CONFIG_HOME/Zorfa Software/registry.ini, or ~/.config/... when
    // XDG_CONFIG_HOME is unset or empty.
    static std::string defaultFileName();

    // Nothing is read or created until the first call.
    explicit SettingsStore(std::string fileName);
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;
    ~SettingsStore();

    const std::string& fileName() const noexcept { return fileName_; }

    // The normal form of a key path: no leading, trailing or doubled backslash.
    static std::string normalizeKey(std::string_view keyPath);

    bool keyExists(std::string_view keyPath) const;
    void createKey(std::string_view keyPath);
    // Deletes the key with all its values and subkeys. False if it did not exist.
    bool deleteKey(std::string_view keyPath);
    // The names (last step only) of the key's direct subkeys, in order of creation.
    std::vector<std::string> subkeys(std::string_view keyPath) const;
    // The names of the key's values, in order of creation.
    std::vector<std::string> valueNames(std::string_view keyPath) const;

    bool valueExists(std::string_view keyPath, std::string_view name) const;
    std::optional<ValueKind> valueKind(std::string_view keyPath, std::string_view name) const;

    // Reads convert where it makes sense: an integer reads as its decimal text,
    // a text that holds a number reads as the integer; else the default.
    std::string readString(std::string_view keyPath, std::string_view name,
                           std::string_view defaultValue = {}) const;
    std::int64_t readInteger(std::string_view keyPath, std::string_view name,
                             std::int64_t defaultValue = 0) const;
    // Integer not 0, or the text "1"/"true" (any case) is true.
    bool readBool(std::string_view keyPath, std::string_view name, bool defaultValue = false) const;
    std::string readBinary(std::string_view keyPath, std::string_view name,
                           std::string_view defaultValue = {}) const;

    // Each write creates the key (and the keys above it) if needed.
    void writeString(std::string_view keyPath, std::string_view name, std::string_view value);
    void writeInteger(std::string_view keyPath, std::string_view name, std::int64_t value);
    void writeBool(std::string_view keyPath, std::string_view name, bool value);  // integer 1/0
    void writeBinary(std::string_view keyPath, std::string_view name, std::string_view bytes);
    bool deleteValue(std::string_view keyPath, std::string_view name);

    // Collects writes; the file is written once when the outermost batch ends.
    class UpdateBatch {
    public:
        explicit UpdateBatch(SettingsStore& store);
        UpdateBatch(const UpdateBatch&) = delete;
        UpdateBatch& operator=(const UpdateBatch&) = delete;
        // Writes the file. Errors are swallowed here (a destructor must not
        // throw); call commit() first to see them.
        ~UpdateBatch();
        // Writes now what was collected so far; throws on failure.
        void commit();

    private:
        SettingsStore& store_;
    };

private:
    struct Value {
        std::string name;
        ValueKind kind = ValueKind::String;
        std::string text;  // string or binary bytes
        std::int64_t number = 0;
    };
    struct Key {
        std::string path;
        std::vector<Value> values;
    };
    struct FileStamp {
        bool exists = false;
        std::uint64_t device = 0, inode = 0;
        std::int64_t size = 0, modifiedNs = 0;
        bool operator==(const FileStamp&) const = default;
    };

    void refresh() const;           // re-read if the file changed on disk
    void loadFromDisk() const;
    void changed();                 // write now, or mark for the batch
    void writeToDisk();
    std::string serialize() const;
    void parse(std::string_view text) const;
    FileStamp currentStamp() const;

    Key* findKey(std::string_view normalized) const;  // keys_ is the cache, hence mutable
    bool holdsKey(std::string_view normalized) const;  // keyExists without the look at the disk
    Key& obtainKey(std::string_view normalized);
    const Value* findValue(std::string_view keyPath, std::string_view name) const;
    Value& obtainValue(std::string_view keyPath, std::string_view name);

    std::string fileName_;
    mutable std::vector<Key> keys_;
    mutable FileStamp stamp_;
    mutable bool loaded_ = false;
    int batchDepth_ = 0;
    bool pendingWrite_ = false;
};

// A key of the settings store seen as an ini file: sections are its subkeys,
// and the values of a section are the values of that subkey. This is how the
// stored properties of a form reach the store: the key
// "Software\Zorfa Software\Zorfa Editor\Stored Properties\Main" with the
// section "Main" holds the values of key "...\Stored Properties\Main\Main".
// Writes go to the store at once (or at the end of its UpdateBatch);
// updateFile() does nothing more. Integers are written as integers.
class RegistryIniFile final : public zorfa::CustomIniFile {
public:
    RegistryIniFile(SettingsStore& store, std::string keyPath);

    const std::string& keyPath() const noexcept { return keyPath_; }

    std::string readString(std::string_view section, std::string_view key,
                           std::string_view defaultValue = {}) const override;
    void writeString(std::string_view section, std::string_view key,
                     std::string_view value) override;
    std::int64_t readInteger(std::string_view section, std::string_view key,
                             std::int64_t defaultValue) const override;
    void writeInteger(std::string_view section, std::string_view key, std::int64_t value) override;
    bool readBool(std::string_view section, std::string_view key, bool defaultValue) const override;
    void writeBool(std::string_view section, std::string_view key, bool value) override;

    std::vector<std::string> sections() const override;
    std::vector<std::string> keys(std::string_view section) const override;
    bool sectionExists(std::string_view section) const override;
    bool valueExists(std::string_view section, std::string_view key) const override;
    void eraseSection(std::string_view section) override;
    void deleteKey(std::string_view section, std::string_view key) override;
    void updateFile() override {}

private:
    std::string sectionKey(std::string_view section) const;

    SettingsStore& store_;
    std::string keyPath_;
};

}  // namespace zorfa::platform
