#pragma once
// The single-byte code page of the whole system: Windows-1252. Text in the
// engines is bytes; this one table is used wherever bytes meet Unicode (the
// screen, the clipboard, file names, terminal output). Every byte 0..255 maps
// to exactly one code point and back; the five bytes Windows-1252 leaves
// undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) map to the code point of the same
// number, so no byte is ever lost.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zorfa::codepage {

// The code point of a byte.
char16_t toUnicode(unsigned char byte) noexcept;

// The byte of a code point, or nothing when the code page has none.
std::optional<unsigned char> fromUnicode(char32_t codePoint) noexcept;

// Bytes to UTF-8 and back. fromUtf8 writes `replacement` for code points the
// code page lacks and for malformed UTF-8.
std::string toUtf8(std::string_view bytes);
std::string fromUtf8(std::string_view utf8, char replacement = '?');

}  // namespace zorfa::codepage
