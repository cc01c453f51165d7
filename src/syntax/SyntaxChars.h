#pragma once
// The fixed character classes of the scanner and the one upper-casing used
// by schemes, keyword lists and masks alike (it changes only "a".."z").
// None of them depends on a scheme.

namespace zorfa::syntaxchars {

constexpr unsigned char upper(unsigned char c) { return (c >= 'a' && c <= 'z') ? c - 32 : c; }

// 0-9, A-Z, underscore, a-z. Bytes above 127 are not word characters.
constexpr bool isWord(unsigned char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || c == '_' || (c >= 'a' && c <= 'z');
}

// Codes 1 to 32.
constexpr bool isWhite(unsigned char c) { return c >= 1 && c <= 32; }

}  // namespace zorfa::syntaxchars
