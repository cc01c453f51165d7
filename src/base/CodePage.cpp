#include "base/CodePage.h"

#include <array>

namespace zorfa::codepage {

namespace {

// 0x80..0x9F are the only bytes that differ from Latin-1.
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

void appendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

}  // namespace

char16_t toUnicode(unsigned char byte) noexcept {
    if (byte >= 0x80 && byte <= 0x9F) return kHighControls[byte - 0x80];
    return byte;
}

std::optional<unsigned char> fromUnicode(char32_t c) noexcept {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<unsigned char>(c);
    for (size_t i = 0; i < kHighControls.size(); ++i)
        if (kHighControls[i] == c) return static_cast<unsigned char>(0x80 + i);
    return std::nullopt;
}

std::string toUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    for (unsigned char b : bytes) appendUtf8(out, toUnicode(b));
    return out;
}

std::string fromUtf8(std::string_view s, char replacement) {
    std::string out;
    out.reserve(s.size());
    size_t i = 0;
    while (i < s.size()) {
        const unsigned char lead = static_cast<unsigned char>(s[i]);
        int extra;
        char32_t c;
        if (lead < 0x80) { extra = 0; c = lead; }
        else if ((lead & 0xE0) == 0xC0) { extra = 1; c = lead & 0x1F; }
        else if ((lead & 0xF0) == 0xE0) { extra = 2; c = lead & 0x0F; }
        else if ((lead & 0xF8) == 0xF0) { extra = 3; c = lead & 0x07; }
        else { out += replacement; ++i; continue; }
        bool ok = i + extra < s.size();
        for (int k = 1; ok && k <= extra; ++k) {
            const unsigned char cont = static_cast<unsigned char>(s[i + k]);
            ok = (cont & 0xC0) == 0x80;
            c = (c << 6) | (cont & 0x3F);
        }
        if (!ok) { out += replacement; ++i; continue; }
        const auto b = fromUnicode(c);
        out += b ? static_cast<char>(*b) : replacement;
        i += extra + 1;
    }
    return out;
}

}  // namespace zorfa::codepage
