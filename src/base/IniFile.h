#pragma once
// Ini files: ZorfaEditor.ini, ZorfaEDB.ini, and the common interface that the
// stored-properties mechanism writes through, whether the store is an ini file
// or a key of the settings store (see platform/SettingsStore.h).
//
// IniFile keeps the whole file in memory (the manner of a memory ini file):
// reads and writes work on that copy, and nothing reaches the disk until
// updateFile(). The order of sections and of keys is the file's order, new
// ones are appended, and writing back reproduces it, because the order of the
// sections is visible to the user (the console lists its connections so).
//
// Lookup of sections and keys ignores ASCII case, as Windows ini files do; the
// spelling first written or read is kept. Text is bytes, in the system's code
// page; nothing is converted. Lines are trimmed; "[name]" starts a section;
// "key=value" splits at the first "="; lines starting with ";" or "#" are
// comments and are written back where they stood; lines before the first
// section are kept as they are. A section that occurs twice is read as one,
// at the place of its first occurrence; of a key that occurs twice in one
// section the first counts.
//
// A missing or unreadable file reads as empty: every read yields its default.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorfa {

// What every ini-like store offers: an ini file, or a key of the settings
// store read as sections (subkeys) and values.
class CustomIniFile {
public:
    virtual ~CustomIniFile() = default;

    virtual std::string readString(std::string_view section, std::string_view key,
                                   std::string_view defaultValue = {}) const = 0;
    virtual void writeString(std::string_view section, std::string_view key,
                             std::string_view value) = 0;

    // Decimal, or hexadecimal with "0x" or "$"; anything else (or out of range)
    // yields the default.
    virtual std::int64_t readInteger(std::string_view section, std::string_view key,
                                     std::int64_t defaultValue) const;
    virtual void writeInteger(std::string_view section, std::string_view key, std::int64_t value);

    // An integer that is not 0 is true; "true"/"false" (any case) are read too.
    // Written as "1" or "0".
    virtual bool readBool(std::string_view section, std::string_view key, bool defaultValue) const;
    virtual void writeBool(std::string_view section, std::string_view key, bool value);

    virtual std::vector<std::string> sections() const = 0;                   // in order
    virtual std::vector<std::string> keys(std::string_view section) const = 0;  // in order
    virtual bool sectionExists(std::string_view section) const = 0;
    virtual bool valueExists(std::string_view section, std::string_view key) const = 0;
    virtual void eraseSection(std::string_view section) = 0;
    virtual void deleteKey(std::string_view section, std::string_view key) = 0;

    // Makes the writes durable. Throws zorfa::Exception when the file can't be
    // written.
    virtual void updateFile() = 0;
};

class IniFile final : public CustomIniFile {
public:
    // Reads the file at once; a missing or unreadable file gives an empty one.
    explicit IniFile(std::string fileName);

    const std::string& fileName() const noexcept { return fileName_; }

    std::string readString(std::string_view section, std::string_view key,
                           std::string_view defaultValue = {}) const override;
    void writeString(std::string_view section, std::string_view key,
                     std::string_view value) override;

    std::vector<std::string> sections() const override;
    std::vector<std::string> keys(std::string_view section) const override;
    // The section's keys and values in order.
    std::vector<std::pair<std::string, std::string>> sectionValues(std::string_view section) const;
    bool sectionExists(std::string_view section) const override;
    bool valueExists(std::string_view section, std::string_view key) const override;
    void eraseSection(std::string_view section) override;
    void deleteKey(std::string_view section, std::string_view key) override;

    // True when something was written since the load or the last updateFile.
    bool modified() const noexcept { return modified_; }

    // Writes the whole file, replacing it in one step (see replaceFileContents),
    // with the line break the file had when it was read ("\n" for a new file).
    void updateFile() override;

    // Re-reads the file, dropping what was not written.
    void reload();

    // The file's text as updateFile() writes it.
    std::string text() const;

private:
    struct Entry {
        std::string key;    // empty for a comment line
        std::string value;  // the whole line for a comment line
    };
    struct Section {
        std::string name;
        std::vector<Entry> entries;
    };

    Section* findSection(std::string_view name);
    const Section* findSection(std::string_view name) const;
    void parse(std::string_view text);

    std::string fileName_;
    std::vector<std::string> prologue_;  // lines before the first section
    std::vector<Section> sections_;
    std::string lineBreak_ = "\n";
    bool modified_ = false;
};

// ASCII case-insensitive equality, the comparison of section, key and value
// names in ini files and in the settings store.
bool sameNameIgnoringCase(std::string_view a, std::string_view b) noexcept;

// The integer reading of ini text: blanks around are ignored; decimal, or
// hexadecimal after "0x" or "$", with an optional sign. Nothing when the text
// is no such number or is out of range.
std::optional<std::int64_t> parseIniInteger(std::string_view text);

// Reads a whole file. False (and out empty) when it can't be read.
bool readFileContents(const std::string& fileName, std::string& out);

// Replaces the file's contents in one step: writes a temporary file beside it
// and renames it over the old one, so a reader (another process included)
// sees the old file or the new one, never a mixture. Two writers racing: the
// last rename wins. Needs write access to the folder. Throws zorfa::Exception
// ("Cannot create file ...") on failure.
void replaceFileContents(const std::string& fileName, std::string_view contents);

}  // namespace zorfa
