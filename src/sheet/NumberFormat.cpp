#include "sheet/NumberFormat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace zorfa::sheet {

namespace {

constexpr std::string_view kLongTimeFormat = "h:nn:ss";

constexpr std::array<std::string_view, 50> kBuiltIn = {
    "Default", "0", "0.00", "#,##0", "#,##0.00", "_($#,##0_);($#,##0)", "_($#,##0_);[Red]($#,##0)",
    "_($#,##0.00_);($#,##0.00)", "_($#,##0.00_);[Red]($#,##0.00)", "0%", "0.00%", "0.00E+00", "# ?/?",
    "# ?\?/??", "m/d/yy", "d-mmm-y", "d-mmm", "mmmm-yy", "h:mm AM/PM", "h:mm:ss AM/PM", "h:mm", "h:mm:SS",
    "m/d/yy h:mm", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "(#,##0_);(#,##0)",
    "(#,##0_);[Red](#,##0)", "(#,##0.00_);(#,##0.00)", "(#,##0.00_);[Red](#,##0.00)",
    "_(* #,##0_);_(* (#,##0);_(* \"-\"_);_(@_)", "_($* #,##0_);_($* (#,##0);_($* \"-\"_);_(@_)",
    "_(* #,##0.00_);_(* (#,##0.00);_(* \"-\"??_);_(@_)", "_($* #,##0.00_);_($* (#,##0.00);_($* \"-\"??_);_(@_)",
    "mm:ss", "[h]:mm:ss", "mm:ss.0", "# #0.0E+0", "@",
};

// The display forms, in the number dialect; "$" is the locale's currency.
std::string_view displayPattern(std::uint16_t code) noexcept {
    switch (code) {
        case 1: return "0";
        case 2: return "0.00";
        case 3: return "#,##0";
        case 4: return "#,##0.00";
        case 5: case 6: return "$#,##0;($#,##0)";
        case 7: case 8: return "$#,##0.00;($#,##0.00)";
        case 9: return "0%";
        case 10: return "0.00%";
        case 11: return "0.00E+00";
        case 37: case 38: return " #,##0 ;(#,##0)";
        case 39: case 40: return " #,##0.00 ;(#,##0.00)";
        case 41: return " #,##0 ;(#,##0); - ";
        case 42: return " $ #,##0 ; $ (#,##0); $ - ";
        case 43: return " #,##0.00 ;(#,##0.00); - ";
        case 44: return " $ #,##0.00 ; $ (#,##0.00); $ - ";
        case 48: return "##0.0E+0";
        default: return {};
    }
}

std::string withCurrency(std::string_view pattern, const LocaleSettings& locale) {
    std::string out;
    for (char c : pattern) {
        if (c == '$') {
            out += '"';
            out += locale.currencyString;
            out += '"';
        } else {
            out += c;
        }
    }
    return out;
}

std::string trimFraction(std::string text, char decimal) {
    if (text.find(decimal) == std::string::npos) return text;
    while (!text.empty() && text.back() == '0') text.pop_back();
    if (!text.empty() && text.back() == decimal) text.pop_back();
    return text;
}

// Fixed notation with `decimals` digits, halves rounded away from zero as the
// number dialect does (printf would round them to even).
std::string fixedText(double value, int decimals, char decimal) {
    char buffer[400];
    const double scale = std::pow(10.0, decimals);
    const double scaled = std::round(std::fabs(value) * scale);
    if (decimals <= 18 && scaled < 1e17) {
        std::snprintf(buffer, sizeof buffer, "%.0f", scaled);
        std::string digits(buffer);
        if (static_cast<int>(digits.size()) <= decimals)
            digits.insert(0, static_cast<std::size_t>(decimals) + 1 - digits.size(), '0');
        std::string text = value < 0 && scaled != 0 ? "-" : "";
        text.append(digits, 0, digits.size() - static_cast<std::size_t>(decimals));
        if (decimals > 0) {
            text += decimal;
            text.append(digits, digits.size() - static_cast<std::size_t>(decimals));
        }
        return text;
    }
    std::snprintf(buffer, sizeof buffer, "%.*f", decimals, value);
    std::string text(buffer);
    if (decimal != '.') {
        if (auto dot = text.find('.'); dot != std::string::npos) text[dot] = decimal;
    }
    if (text.find_first_not_of("-0.,") == std::string::npos && text[0] == '-') text.erase(0, 1);
    return text;
}

std::string generalText(double value, int precision, const LocaleSettings& locale) {
    if (!std::isfinite(value)) return locale.floatText(value);
    if (value == 0) return "0";
    if (value > 0 && value < 1) {
        // Fifteen significant digits, with as many as eighteen decimals.
        int exponent = static_cast<int>(std::floor(std::log10(value)));
        int decimals = std::min(18, 14 - exponent);
        return trimFraction(fixedText(value, decimals, locale.decimalSeparator), locale.decimalSeparator);
    }
    precision = std::clamp(precision, 0, 8);
    return trimFraction(fixedText(value, precision, locale.decimalSeparator), locale.decimalSeparator);
}

// Day numbers from 1 January of year 1 (-693593) to 31 December 9999
// (2958465, with its time of day).
constexpr double kFirstCalendarDay = -693593.0;
constexpr double kPastLastCalendarDay = 2958466.0;

bool isCalendarDay(double serial) noexcept {
    return std::isfinite(serial) && serial >= kFirstCalendarDay && serial < kPastLastCalendarDay;
}

// Days since 30 December 1899 to a civil date.
void civilFromSerial(double serial, int& year, int& month, int& day, int& weekday) {
    // 30 December 1899 is day -25569 of 1 January 1970; count from 1 March of year 0.
    long long z = static_cast<long long>(std::trunc(serial)) - 25569 + 719468;
    long long era = (z >= 0 ? z : z - 146096) / 146097;
    long long doe = z - era * 146097;
    long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    long long y = yoe + era * 400;
    long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    long long mp = (5 * doy + 2) / 153;
    day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    year = static_cast<int>(y + (month <= 2 ? 1 : 0));
    long long unixDays = static_cast<long long>(std::trunc(serial)) - 25569;
    weekday = static_cast<int>(((unixDays % 7) + 7 + 4) % 7);  // 0 Sunday
}

constexpr std::array<std::string_view, 12> kMonthNames = {"January", "February", "March", "April", "May", "June",
                                                           "July", "August", "September", "October", "November",
                                                           "December"};
constexpr std::array<std::string_view, 7> kDayNames = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday",
                                                       "Friday", "Saturday"};

bool startsWithNoCase(std::string_view text, std::size_t at, std::string_view prefix) {
    if (text.size() - at < prefix.size()) return false;
    for (std::size_t i = 0; i < prefix.size(); ++i) {
        char a = text[at + i], b = prefix[i];
        if (a >= 'A' && a <= 'Z') a = static_cast<char>(a - 'A' + 'a');
        if (a != b) return false;
    }
    return true;
}

std::string twoDigits(long long n) {
    char buffer[24];
    std::snprintf(buffer, sizeof buffer, "%02lld", n);
    return buffer;
}

// One section of a number pattern, split into its parts.
struct NumberPattern {
    std::string prefix, suffix;
    int integerZeros = 0;
    int minDecimals = 0, maxDecimals = 0;
    bool grouping = false;
    bool scientific = false;
    bool exponentPlus = false;
    int exponentDigits = 0;
    bool hasDigits = false;
};

NumberPattern analysePattern(std::string_view section) {
    NumberPattern p;
    bool inFraction = false;
    bool seenDigits = false;
    std::string literal;
    for (std::size_t i = 0; i < section.size(); ++i) {
        char c = section[i];
        if (c == '"' || c == '\'') {
            std::size_t end = section.find(c, i + 1);
            if (end == std::string_view::npos) end = section.size();
            literal.append(section.substr(i + 1, end - i - 1));
            i = end;
            continue;
        }
        bool exponent = (c == 'E' || c == 'e') && i + 1 < section.size() &&
                        (section[i + 1] == '+' || section[i + 1] == '-') && seenDigits && !p.scientific;
        if (exponent) {
            p.scientific = true;
            p.exponentPlus = section[i + 1] == '+';
            i += 2;
            while (i < section.size() && section[i] == '0') {
                ++p.exponentDigits;
                ++i;
            }
            --i;
            continue;
        }
        if ((c == '0' || c == '#' || c == ',' || c == '.') && !p.scientific) {
            if (!seenDigits) {
                p.prefix = literal;
                literal.clear();
            } else if (!literal.empty()) {
                literal.clear();  // text between digits is dropped
            }
            seenDigits = true;
            if (c == ',') p.grouping = true;
            else if (c == '.') inFraction = true;
            else if (inFraction) {
                ++p.maxDecimals;
                if (c == '0') p.minDecimals = p.maxDecimals;
            } else if (c == '0') {
                ++p.integerZeros;
            }
            continue;
        }
        literal += c;
    }
    p.hasDigits = seenDigits;
    if (seenDigits) p.suffix = literal;
    else p.prefix = literal;
    return p;
}

std::string groupDigits(std::string_view digits, char separator) {
    std::string out;
    int lead = static_cast<int>(digits.size() % 3);
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (static_cast<int>(i) - lead) % 3 == 0) out += separator;
        out += digits[i];
    }
    return out;
}

std::string formatWithPattern(const NumberPattern& p, double magnitude, const LocaleSettings& locale) {
    std::string body;
    if (!p.hasDigits) return p.prefix;
    if (p.scientific) {
        int exponent = magnitude == 0 ? 0 : static_cast<int>(std::floor(std::log10(magnitude)));
        double mantissa = magnitude == 0 ? 0 : magnitude / std::pow(10.0, exponent);
        std::string m = fixedText(mantissa, p.maxDecimals, '.');
        if (m.size() >= 2 && m.compare(0, 2, "10") == 0) {  // rounding carried into a new digit
            ++exponent;
            m = fixedText(mantissa / 10, p.maxDecimals, '.');
        }
        if (m.find('.') != std::string::npos && p.maxDecimals > p.minDecimals) {
            while (m.back() == '0' && static_cast<int>(m.size() - m.find('.') - 1) > p.minDecimals) m.pop_back();
            if (m.back() == '.') m.pop_back();
        }
        if (auto dot = m.find('.'); dot != std::string::npos) m[dot] = locale.decimalSeparator;
        std::string e = std::to_string(std::abs(exponent));
        while (static_cast<int>(e.size()) < p.exponentDigits) e.insert(e.begin(), '0');
        body = m + "E" + (exponent < 0 ? "-" : (p.exponentPlus ? "+" : "")) + e;
    } else {
        std::string fixed = fixedText(magnitude, p.maxDecimals, '.');
        std::size_t dot = fixed.find('.');
        std::string integer = fixed.substr(0, dot);
        std::string fraction = dot == std::string::npos ? "" : fixed.substr(dot + 1);
        while (static_cast<int>(fraction.size()) > p.minDecimals && fraction.back() == '0') fraction.pop_back();
        integer.erase(0, integer.find_first_not_of('0'));
        while (static_cast<int>(integer.size()) < p.integerZeros) integer.insert(integer.begin(), '0');
        body = p.grouping ? groupDigits(integer, locale.thousandSeparator) : integer;
        if (!fraction.empty()) body += locale.decimalSeparator + fraction;
    }
    return p.prefix + body + p.suffix;
}

std::vector<std::string_view> splitSections(std::string_view format) {
    std::vector<std::string_view> sections;
    std::size_t start = 0;
    char quote = 0;
    for (std::size_t i = 0; i < format.size(); ++i) {
        char c = format[i];
        if (quote) {
            if (c == quote) quote = 0;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == ';') {
            sections.push_back(format.substr(start, i - start));
            start = i + 1;
        }
    }
    sections.push_back(format.substr(start));
    return sections;
}

}  // namespace

std::string_view builtInFormatString(std::uint16_t code) noexcept {
    if (code < kBuiltIn.size()) return kBuiltIn[code];
    if (code == kFormatCustomDate1) return "dd/mm/yy";
    if (code == kFormatCustomDate2) return "dd\\.mmmm\\.yy";
    return {};
}

std::uint16_t formatCodeFromIndex(std::uint16_t index) noexcept {
    if (index > 51) return 0;
    std::uint16_t code = index > 22 ? static_cast<std::uint16_t>(index + 15) : index;
    if (code == 50) return kFormatCustomDate1;
    if (code == 51) return kFormatCustomDate2;
    return code;
}

std::uint16_t formatIndexFromCode(std::uint16_t code) noexcept {
    if (code == kFormatCustomDate1) return 35;
    if (code == kFormatCustomDate2) return 36;
    return code >= 23 ? static_cast<std::uint16_t>(code - 15) : code;
}

bool isDateTimeFormat(std::uint16_t code) noexcept {
    return (code >= 14 && code <= 22) || (code >= 45 && code <= 47) || code == kFormatCustomDate1 ||
           code == kFormatCustomDate2;
}

bool isCurrencyFormat(std::uint16_t code) noexcept { return (code >= 5 && code <= 8) || (code >= 42 && code <= 44); }

bool isNumberFormat(std::uint16_t code) noexcept {
    return (code >= 1 && code <= 4) || (code >= 9 && code <= 13) || (code >= 37 && code <= 41) || code == 48;
}

bool isPercentFormat(std::uint16_t code) noexcept { return code == kFormatPercent || code == kFormatPercentDecimals; }

std::string formatDateTime(std::string_view format, double serial, const LocaleSettings& locale) {
    if (!isCalendarDay(serial)) return locale.floatText(serial);
    int year, month, day, weekday;
    civilFromSerial(serial, year, month, day, weekday);
    // Before 30 December 1899 the day counts back and the time still runs forward.
    double fraction = std::fabs(serial - std::trunc(serial));
    long long ms = std::llround(fraction * 86400000.0);
    if (ms >= 86400000) ms = 86399999;
    long long hour = ms / 3600000, minute = ms / 60000 % 60, second = ms / 1000 % 60, milli = ms % 1000;
    bool twelveHour = false;
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (startsWithNoCase(format, i, "am/pm") || startsWithNoCase(format, i, "a/p") ||
            startsWithNoCase(format, i, "ampm"))
            twelveHour = true;
    }
    std::string out;
    bool afterHour = false;  // "m" right after an hour means minutes
    for (std::size_t i = 0; i < format.size();) {
        char c = format[i];
        char lower = (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
        std::size_t run = 1;
        while (i + run < format.size() && (format[i + run] | 0x20) == lower && lower >= 'a' && lower <= 'z') ++run;
        if (c == '"' || c == '\'') {
            std::size_t end = format.find(c, i + 1);
            if (end == std::string_view::npos) end = format.size();
            out.append(format.substr(i + 1, end - i - 1));
            i = end + 1;
            continue;
        }
        if (c == '\\' && i + 1 < format.size()) {
            out += format[i + 1];
            i += 2;
            continue;
        }
        if (startsWithNoCase(format, i, "am/pm")) {
            out += hour < 12 ? "am" : "pm";
            if (c == 'A') out = out.substr(0, out.size() - 2) + (hour < 12 ? "AM" : "PM");
            i += 5;
            continue;
        }
        if (startsWithNoCase(format, i, "a/p")) {
            out += hour < 12 ? (c == 'A' ? "A" : "a") : (c == 'A' ? "P" : "p");
            i += 3;
            continue;
        }
        if (startsWithNoCase(format, i, "ampm")) {
            out += hour < 12 ? "AM" : "PM";
            i += 4;
            continue;
        }
        long long shownHour = twelveHour ? (hour % 12 == 0 ? 12 : hour % 12) : hour;
        switch (lower) {
            case 'y': out += run <= 2 ? twoDigits(year % 100) : std::to_string(year); afterHour = false; break;
            case 'd':
                if (run == 1) out += std::to_string(day);
                else if (run == 2) out += twoDigits(day);
                else if (run == 3) out += kDayNames[weekday].substr(0, 3);
                else out += kDayNames[weekday];
                afterHour = false;
                break;
            case 'm':
                if (afterHour && run <= 2) {
                    out += run == 1 ? std::to_string(minute) : twoDigits(minute);
                } else if (run == 1) out += std::to_string(month);
                else if (run == 2) out += twoDigits(month);
                else if (run == 3) out += kMonthNames[month - 1].substr(0, 3);
                else out += kMonthNames[month - 1];
                afterHour = false;
                break;
            case 'h': out += run == 1 ? std::to_string(shownHour) : twoDigits(shownHour); afterHour = true; break;
            case 'n': out += run == 1 ? std::to_string(minute) : twoDigits(minute); afterHour = false; break;
            case 's': out += run == 1 ? std::to_string(second) : twoDigits(second); afterHour = false; break;
            case 'z': {
                char buffer[8];
                std::snprintf(buffer, sizeof buffer, run >= 3 ? "%03lld" : "%lld", milli);
                out += buffer;
                break;
            }
            default:
                if (c == '/') out += '/';
                else if (c == ':') out += ':';
                else out.append(format.substr(i, run));
                break;
        }
        i += run;
    }
    return out;
}

std::string formatFloat(std::string_view format, double value, const LocaleSettings& locale) {
    auto sections = splitSections(format);
    if (value == 0 && sections.size() >= 3 && !sections[2].empty())
        return formatWithPattern(analysePattern(sections[2]), 0, locale);
    if (value < 0 && sections.size() >= 2 && !sections[1].empty())
        return formatWithPattern(analysePattern(sections[1]), -value, locale);
    std::string text = formatWithPattern(analysePattern(sections[0]), std::fabs(value), locale);
    if (value < 0 && text.find_first_of("123456789") != std::string::npos) text.insert(text.begin(), '-');
    return text;
}

FormattedNumber formatNumber(double value, std::uint16_t code, int precision, const LocaleSettings& locale) {
    FormattedNumber result;
    result.red = value < 0 && (code == 6 || code == 8 || code == 38 || code == 40);
    if (std::string_view pattern = displayPattern(code); !pattern.empty()) {
        double shown = isPercentFormat(code) ? value * 100 : value;
        // The number forms have no digits for an infinity or NaN.
        if (!std::isfinite(shown)) {
            result.text = locale.floatText(shown);
            return result;
        }
        result.text = formatFloat(withCurrency(pattern, locale), shown, locale);
        return result;
    }
    // A day number no calendar holds shows as a plain number, as no date can.
    if (isDateTimeFormat(code) && !isCalendarDay(value)) {
        result.text = generalText(value, precision, locale);
        return result;
    }
    const std::string dateTime = locale.shortDateFormat + " " + std::string(kLongTimeFormat);
    switch (code) {
        case 14: result.text = formatDateTime(locale.shortDateFormat, value, locale); break;
        case 15: result.text = formatDateTime("d\"-\"mmmm\"-\"yy", value, locale); break;
        case 16: result.text = formatDateTime("d\"-\"mmmm", value, locale); break;
        case 17: result.text = formatDateTime("mmmm\"-\"yy", value, locale); break;
        case 18: result.text = formatDateTime("h:nn am/pm", value, locale); break;
        case 19: result.text = formatDateTime("h:nn\":\"ss am/pm", value, locale); break;
        case 20: result.text = formatDateTime("h:nn", value, locale); break;
        case 21: result.text = formatDateTime(kLongTimeFormat, value, locale); break;
        case 22: result.text = formatDateTime(dateTime, value, locale); break;
        case 45: result.text = formatDateTime("nn:ss", value, locale); break;
        case 46: {
            const double whole = std::trunc(value);
            const long long ms = std::llround(std::fabs(value - whole) * 86400000.0);
            const long long hours = static_cast<long long>(std::fabs(whole)) * 24 + ms / 3600000;
            result.text = (value < 0 ? "-" : "") + std::to_string(hours) + formatDateTime(":nn:ss", value, locale);
            break;
        }
        case 47: result.text = formatDateTime("nn:ss.z", value, locale); break;
        case kFormatCustomDate1: result.text = formatDateTime("dd/mm/yy", value, locale); break;
        case kFormatCustomDate2: result.text = formatDateTime("dd.mmmm.yy", value, locale); break;
        case kFormatText: result.text = locale.floatText(value); break;
        default: result.text = generalText(value, precision, locale); break;
    }
    return result;
}

}  // namespace zorfa::sheet
