#pragma once
// TFastStringList: the sorted keyword list of one scheme table entry.
//
// Entries are kept sorted under one comparison chosen at construction: raw
// bytes for a case-sensitive list, bytes with "a".."z" folded to upper case
// otherwise; bytes up to the shorter length, then the difference in length.
// Lookups take a pointer and a length and never build a string. Each entry
// owns its TEasyRule.
//
// HasBlanks is raised (never lowered) when an entry holding a blank is added;
// such lists are searched with the comparison that lets an entry run over
// blanks into the following text (FindWithBlanks).

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zorfa {

// The outcome of a rule: the state to go on in and the token of the match.
struct TEasyRule {
    int NextState = 0;
    int Token = 0;
};

class TFastStringList {
public:
    explicit TFastStringList(bool caseSensitive);

    bool CaseSensitive() const { return FCaseSensitive; }
    bool HasBlanks() const { return FHasBlanks; }
    int Count() const { return static_cast<int>(FEntries.size()); }
    bool Empty() const { return FEntries.empty(); }
    int Longest() const { return FLongest; }
    const std::string& Text(int index) const { return FEntries[index].Text; }
    TEasyRule* Rule(int index) const { return FEntries[index].Rule.get(); }

    // Index of an entry equal to `text`, or -1.
    int IndexOf(std::string_view text) const;
    // Inserts in sorted place; raises HasBlanks for an entry with a blank.
    int Add(std::string_view text, std::unique_ptr<TEasyRule> rule);

    // Lowest index of an entry equal to the `length` characters at `text`,
    // or -1.
    int Find(const char* text, int length) const;

    // The search of a list with blanks: `text` is the rest of the line
    // (`rest` characters up to its terminator), `matchLength` the word run
    // on entry and the matched length on exit. Extends to the longest entry
    // that follows the one found. Returns the index or -1.
    int FindWithBlanks(const char* text, int rest, int& matchLength) const;

private:
    struct Entry {
        std::string Text;
        std::unique_ptr<TEasyRule> Rule;
    };

    int Compare(const std::string& entry, const char* text, int length) const;
    int CompareWithBlanks(const std::string& entry, const char* text, int rest, int& matchLength) const;

    std::vector<Entry> FEntries;
    bool FCaseSensitive;
    bool FHasBlanks = false;
    int FLongest = 0;
};

}  // namespace zorfa
