#pragma once
// The fixed character classes of the scanner and the one upper-casing used
// by schemes, keyword lists and masks alike (it changes only "a".."z").
// None of them depends on a scheme. Table-driven: the scanner asks them for
// every character of every line.

#include <array>

namespace zorfa::syntaxchars {

namespace detail {
enum : unsigned char { kWord = 1, kWhite = 2 };
constexpr std::array<unsigned char, 256> makeClasses() {
    std::array<unsigned char, 256> t{};
    for (int c = 0; c < 256; ++c) {
        if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || c == '_' || (c >= 'a' && c <= 'z')) t[c] = kWord;
        if (c >= 1 && c <= 32) t[c] = kWhite;
    }
    return t;
}
inline constexpr std::array<unsigned char, 256> kClasses = makeClasses();
}  // namespace detail

constexpr unsigned char upper(unsigned char c) { return (c >= 'a' && c <= 'z') ? c - 32 : c; }

// 0-9, A-Z, underscore, a-z. Bytes above 127 are not word characters.
constexpr bool isWord(unsigned char c) { return detail::kClasses[c] & detail::kWord; }

// Codes 1 to 32.
constexpr bool isWhite(unsigned char c) { return detail::kClasses[c] & detail::kWhite; }

}  // namespace zorfa::syntaxchars
