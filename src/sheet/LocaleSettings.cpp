#include "sheet/LocaleSettings.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace zorfa::sheet {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

// Digits and decimal exponent of a finite, non-zero |value| at 15 significant
// digits: value = 0.d1d2...dn x 10^exponent, trailing zeros removed.
int decimalDigits(double value, char (&digits)[24]) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.14e", value);
    // buffer: d.dddddddddddddde[+-]xx
    int n = 0;
    const char* p = buffer;
    for (; *p && *p != 'e'; ++p)
        if (*p >= '0' && *p <= '9') digits[n++] = *p;
    while (n > 1 && digits[n - 1] == '0') --n;
    digits[n] = 0;
    return std::atoi(p + 1) + 1;
}

// |value| with `decimals` places as the runtime's formats make it: the value
// at 15 significant digits, then rounded half away from zero in decimal (so
// 2.5 gives 3 and 1.005 gives 1.01). "." as the separator.
std::string roundedDecimalText(double value, int decimals) {
    std::string kept;  // the digits before the cut: 0.kept x 10^exponent
    int exponent = 0;
    if (value != 0) {
        char digits[24];
        exponent = decimalDigits(value, digits);
        const int count = static_cast<int>(std::strlen(digits));
        const int keep = exponent + decimals;
        if (keep >= count) {
            kept.assign(digits, static_cast<size_t>(count));
            kept.append(static_cast<size_t>(keep - count), '0');
        } else if (keep >= 0) {
            kept.assign(digits, static_cast<size_t>(keep));
            if (digits[keep] >= '5') {
                int at = keep - 1;
                while (at >= 0 && kept[static_cast<size_t>(at)] == '9') kept[static_cast<size_t>(at--)] = '0';
                if (at >= 0) {
                    ++kept[static_cast<size_t>(at)];
                } else {
                    kept.insert(kept.begin(), '1');
                    ++exponent;
                }
            }
        }
        if (kept.empty()) exponent = 0;  // rounded away to nothing
    }
    std::string text = exponent > 0 ? kept.substr(0, static_cast<size_t>(exponent)) : "0";
    if (decimals > 0) {
        std::string fraction = exponent >= 0 ? kept.substr(static_cast<size_t>(exponent))
                                             : std::string(static_cast<size_t>(-exponent), '0') + kept;
        fraction.resize(static_cast<size_t>(decimals), '0');
        text += '.';
        text += fraction;
    }
    return text;
}

}  // namespace

std::string LocaleSettings::floatText(double value) const {
    std::string text;
    appendFloatText(value, text);
    return text;
}

void LocaleSettings::appendFloatText(double value, char decimalSeparator, std::string& out) {
    if (std::isnan(value)) {
        out += "NAN";
        return;
    }
    if (std::isinf(value)) {
        out += value < 0 ? "-INF" : "INF";
        return;
    }
    if (value == 0) {
        out += '0';
        return;
    }
    if (value < 0) {
        out += '-';
        value = -value;
    }
    char digits[24];
    const int exponent = decimalDigits(value, digits);
    const int count = static_cast<int>(std::strlen(digits));
    if (exponent > 15 || exponent < -3) {
        out += digits[0];
        if (count > 1) {
            out += decimalSeparator;
            out.append(digits + 1, count - 1);
        }
        out += 'E';
        char e[12];
        auto r = std::to_chars(e, e + sizeof e, exponent - 1);
        out.append(e, r.ptr);
        return;
    }
    if (exponent <= 0) {
        out += '0';
        out += decimalSeparator;
        out.append(static_cast<size_t>(-exponent), '0');
        out.append(digits, count);
        return;
    }
    if (count <= exponent) {
        out.append(digits, count);
        out.append(static_cast<size_t>(exponent - count), '0');
        return;
    }
    out.append(digits, exponent);
    out += decimalSeparator;
    out.append(digits + exponent, count - exponent);
}

bool parseNumberText(std::string_view text, char decimalSeparator, double& value) {
    size_t b = 0, e = text.size();
    while (b < e && isBlank(text[b])) ++b;
    while (e > b && isBlank(text[e - 1])) --e;
    if (b == e) return false;
    // Copy into a C-form buffer: sign, digits, '.', exponent.
    char buffer[128];
    size_t n = 0;
    size_t i = b;
    bool negative = false;
    if (text[i] == '+' || text[i] == '-') {
        negative = text[i] == '-';
        ++i;
    }
    int mantissaDigits = 0;
    bool seenSeparator = false;
    for (; i < e; ++i) {
        char c = text[i];
        if (c >= '0' && c <= '9') {
            ++mantissaDigits;
        } else if (c == decimalSeparator && !seenSeparator) {
            seenSeparator = true;
            c = '.';
        } else {
            break;
        }
        if (n + 1 >= sizeof buffer) return false;
        buffer[n++] = c;
    }
    if (mantissaDigits == 0) return false;
    if (i < e) {
        if (text[i] != 'E' && text[i] != 'e') return false;
        buffer[n++] = 'e';
        ++i;
        if (i < e && (text[i] == '+' || text[i] == '-')) buffer[n++] = text[i++];
        int exponentDigits = 0;
        for (; i < e && text[i] >= '0' && text[i] <= '9'; ++i) {
            if (n + 1 >= sizeof buffer) return false;
            buffer[n++] = text[i];
            ++exponentDigits;
        }
        if (exponentDigits == 0 || i != e) return false;
    }
    double parsed = 0;
    auto r = std::from_chars(buffer, buffer + n, parsed);
    if (r.ec == std::errc::result_out_of_range) {
        // Overflow reads as infinity, underflow as 0, as the runtime does.
        bool big = false;
        for (size_t k = 0; k < n; ++k)
            if (buffer[k] == 'e') big = k + 1 < n && buffer[k + 1] != '-';
        parsed = big ? HUGE_VAL : 0.0;
    } else if (r.ec != std::errc() || r.ptr != buffer + n) {
        return false;
    }
    value = negative ? -parsed : parsed;
    return true;
}

std::string LocaleSettings::currencyText(double value, int decimals) const {
    if (decimals < 0) decimals = 0;
    if (decimals > 18) decimals = 18;
    if (!std::isfinite(value)) return floatText(value);
    const bool negative = value < 0;
    const std::string plain = roundedDecimalText(std::fabs(value), decimals);
    size_t dot = plain.find('.');
    std::string whole = plain.substr(0, dot);
    std::string number;
    for (size_t k = 0; k < whole.size(); ++k) {
        if (k > 0 && (whole.size() - k) % 3 == 0) number += thousandSeparator;
        number += whole[k];
    }
    if (dot != std::string::npos) {
        number += decimalSeparator;
        number += plain.substr(dot + 1);
    }
    const std::string& c = currencyString;
    if (!negative) {
        switch (currencyFormat) {
        case 1: return number + c;
        case 2: return c + " " + number;
        case 3: return number + " " + c;
        default: return c + number;
        }
    }
    switch (negativeCurrencyFormat) {
    case 1: return "-" + c + number;
    case 2: return c + "-" + number;
    case 3: return c + number + "-";
    case 4: return "(" + number + c + ")";
    case 5: return "-" + number + c;
    default: return "(" + c + number + ")";
    }
}

char LocaleSettings::toUpper(char c) noexcept {
    unsigned char u = static_cast<unsigned char>(c);
    if (u >= 'a' && u <= 'z') return static_cast<char>(u - 32);
    // Windows-1252: accented small letters 0xE0-0xFE (not 0xF7), and the
    // pairs š/Š, œ/Œ, ž/Ž, ÿ/Ÿ.
    if (u >= 0xE0 && u <= 0xFE && u != 0xF7) return static_cast<char>(u - 32);
    switch (u) {
    case 0x9A: return static_cast<char>(0x8A);
    case 0x9C: return static_cast<char>(0x8C);
    case 0x9E: return static_cast<char>(0x8E);
    case 0xFF: return static_cast<char>(0x9F);
    default: return c;
    }
}

char LocaleSettings::toLower(char c) noexcept {
    unsigned char u = static_cast<unsigned char>(c);
    if (u >= 'A' && u <= 'Z') return static_cast<char>(u + 32);
    if (u >= 0xC0 && u <= 0xDE && u != 0xD7) return static_cast<char>(u + 32);
    switch (u) {
    case 0x8A: return static_cast<char>(0x9A);
    case 0x8C: return static_cast<char>(0x9C);
    case 0x8E: return static_cast<char>(0x9E);
    case 0x9F: return static_cast<char>(0xFF);
    default: return c;
    }
}

std::string LocaleSettings::upperCase(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = toUpper(c);
    return result;
}

std::string LocaleSettings::lowerCase(std::string_view text) {
    std::string result(text);
    for (char& c : result) c = toLower(c);
    return result;
}

int LocaleSettings::compareText(std::string_view a, std::string_view b) noexcept {
    const size_t n = a.size() < b.size() ? a.size() : b.size();
    for (size_t i = 0; i < n; ++i) {
        unsigned char x = static_cast<unsigned char>(toUpper(a[i]));
        unsigned char y = static_cast<unsigned char>(toUpper(b[i]));
        if (x != y) return x < y ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

bool LocaleSettings::sameText(std::string_view a, std::string_view b) noexcept {
    return a.size() == b.size() && compareText(a, b) == 0;
}

bool parseBooleanText(std::string_view text, bool& value) noexcept {
    if (LocaleSettings::sameText(text, "TRUE")) {
        value = true;
        return true;
    }
    if (LocaleSettings::sameText(text, "FALSE")) {
        value = false;
        return true;
    }
    return false;
}

}  // namespace zorfa::sheet
