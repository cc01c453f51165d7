#pragma once
// Number formats of cells: the built-in format codes of the file format, the
// compact index the style's Format property uses, the classes of codes, and
// the rules that turn a number into the text a cell shows. Also the two plain
// conversions every part of the spreadsheet shares: a number's float text
// (fifteen significant digits, "1E20" for large exponents) and reading a
// number typed in the locale's form.

#include <cstdint>
#include <string>
#include <string_view>

#include "sheet/LocaleSettings.h"

namespace zorfa::sheet {

// Stored codes with a meaning of their own.
constexpr std::uint16_t kFormatGeneral = 0;
constexpr std::uint16_t kFormatPercent = 9;
constexpr std::uint16_t kFormatPercentDecimals = 10;
constexpr std::uint16_t kFormatText = 49;
constexpr std::uint16_t kFormatCustomDate1 = 164;  // "dd/mm/yy"
constexpr std::uint16_t kFormatCustomDate2 = 165;  // "dd\.mmmm\.yy"

// The file's format string of a built-in code; "" for codes without one.
std::string_view builtInFormatString(std::uint16_t code) noexcept;

// The style's Format property is a compact index (0 to 36) over the codes.
std::uint16_t formatCodeFromIndex(std::uint16_t index) noexcept;
std::uint16_t formatIndexFromCode(std::uint16_t code) noexcept;

bool isDateTimeFormat(std::uint16_t code) noexcept;
bool isCurrencyFormat(std::uint16_t code) noexcept;
bool isNumberFormat(std::uint16_t code) noexcept;
bool isPercentFormat(std::uint16_t code) noexcept;

// A number as a cell shows it. `red` is set for a negative value in the
// formats that show negatives in red (6, 8, 38, 40): font colour index 2.
struct FormattedNumber {
    std::string text;
    bool red = false;
};

// `precision` is the book's number of decimals of the general format; it is
// capped at 8. Format 49 (text) is not formatted: the float text comes back.
// A date or time format given a day number outside years 1 to 9999 shows the
// general form.
FormattedNumber formatNumber(double value, std::uint16_t code, int precision, const LocaleSettings& locale);

// Formats in the system's date and time dialect (d, dd, m, mm, mmm, mmmm, yy,
// yyyy, h, hh, n, nn, s, ss, z, zzz, am/pm, a/p, ampm, quoted text) a day
// number counted from 30 December 1899, the fraction being the time of day.
// A day number outside years 1 to 9999 comes back as its float text.
std::string formatDateTime(std::string_view format, double serial, const LocaleSettings& locale);

// Formats in the system's number dialect: up to three sections "positive;
// negative;zero", 0 and # digits, "," grouping, "." decimals, E+00 exponent,
// quoted text; other characters are copied.
std::string formatFloat(std::string_view format, double value, const LocaleSettings& locale);

}  // namespace zorfa::sheet
