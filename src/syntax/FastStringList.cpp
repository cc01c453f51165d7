#include "syntax/FastStringList.h"

#include <algorithm>
#include <cstring>

#include "syntax/SyntaxChars.h"

namespace zorfa {

TFastStringList::TFastStringList(bool caseSensitive) : FCaseSensitive(caseSensitive) {}

int TFastStringList::Compare(const std::string& entry, const char* text, int length) const {
    const int entryLength = static_cast<int>(entry.size());
    const int common = std::min(entryLength, length);
    const auto* e = reinterpret_cast<const unsigned char*>(entry.data());
    const auto* t = reinterpret_cast<const unsigned char*>(text);
    if (FCaseSensitive) {
        if (const int c = std::memcmp(e, t, static_cast<size_t>(common))) return c;
    } else {
        for (int i = 0; i < common; ++i) {
            const unsigned char a = syntaxchars::upper(e[i]);
            const unsigned char b = syntaxchars::upper(t[i]);
            if (a != b) return static_cast<int>(a) - static_cast<int>(b);
        }
    }
    return entryLength - length;
}

int TFastStringList::IndexOf(std::string_view text) const {
    return Find(text.data(), static_cast<int>(text.size()));
}

int TFastStringList::Add(std::string_view text, std::unique_ptr<TEasyRule> rule) {
    const int length = static_cast<int>(text.size());
    auto place = std::lower_bound(FEntries.begin(), FEntries.end(), text, [&](const Entry& e, std::string_view t) {
        return Compare(e.Text, t.data(), static_cast<int>(t.size())) < 0;
    });
    const int index = static_cast<int>(place - FEntries.begin());
    FEntries.insert(place, Entry{std::string(text), std::move(rule)});
    if (text.find(' ') != std::string_view::npos) FHasBlanks = true;
    FLongest = std::max(FLongest, length);
    return index;
}

int TFastStringList::Find(const char* text, int length) const {
    int low = 0;
    int high = static_cast<int>(FEntries.size()) - 1;
    int found = -1;
    while (low <= high) {
        const int middle = (low + high) / 2;
        const int c = Compare(FEntries[middle].Text, text, length);
        if (c < 0) {
            low = middle + 1;
        } else {
            high = middle - 1;
            if (c == 0) found = middle;  // go on downward for the lowest equal
        }
    }
    return found;
}

// Entry E against the text T: N is the larger of the match length so far
// and the shorter of E and the rest of the line; one more character is taken
// in when it is a word character and at least two characters remain behind
// N, so an entry ending inside a word compares unequal (but not when only
// one character of the line is left). Equality makes N the match length.
int TFastStringList::CompareWithBlanks(const std::string& entry, const char* text, int rest,
                                       int& matchLength) const {
    int n = std::max(matchLength, std::min(rest, static_cast<int>(entry.size())));
    if (n < rest - 1 && syntaxchars::isWord(static_cast<unsigned char>(text[n]))) ++n;
    const int c = Compare(entry, text, n);
    if (c == 0) matchLength = n;
    return c;
}

int TFastStringList::FindWithBlanks(const char* text, int rest, int& matchLength) const {
    // Only the first longest-entry + word + 2 characters can take part in a
    // comparison (callers may pass a rest capped there).
    rest = std::min(rest, FLongest + matchLength + 2);
    int low = 0;
    int high = static_cast<int>(FEntries.size()) - 1;
    int found = -1;
    while (low <= high) {
        const int middle = (low + high) / 2;
        const int c = CompareWithBlanks(FEntries[middle].Text, text, rest, matchLength);
        if (c < 0) {
            low = middle + 1;
        } else {
            high = middle - 1;
            if (c == 0) found = middle;
        }
    }
    if (found < 0) return found;
    for (int next = found + 1; next < static_cast<int>(FEntries.size()); ++next) {
        int length = matchLength;
        if (CompareWithBlanks(FEntries[next].Text, text, rest, length) != 0) break;
        found = next;
        matchLength = length;
    }
    return found;
}

}  // namespace zorfa
