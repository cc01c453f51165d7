// Logic, date and time, text and information functions of the function table.
#include <algorithm>
#include <cmath>
#include <vector>

#include "sheet/FormulaEnvironment.h"
#include "sheet/FunctionHandlers.h"

namespace zorfa::sheet::functions {

namespace {

// The truth of a text: a number is true unless 0, TRUE/FALSE as written,
// empty is false; anything else is error 3.
bool textTruth(FormulaEvaluator& e, const std::string& text) {
    double number;
    bool value;
    if (text.empty()) return false;
    if (e.textToNumber(text, number)) return number != 0;
    if (parseBooleanText(text, value)) return value;
    e.setError(3);
    return false;
}

void pushNumberUnlessError(FormulaEvaluator& e, double value) {
    if (!e.errorCode()) e.pushNumber(value);
}

// Time of day of a serial, the runtime's way: the serial is rounded to whole
// milliseconds (half to even) and the time is that count's distance from day
// 0 modulo a day, so a negative serial counts forward from midnight too
// (-0.25 and -1.25 are 6:00). False when the count does not fit 64 bits.
bool decodeTime(double serial, int& hour, int& minute, int& second) {
    const double ms = std::nearbyint(serial * 86400000.0);
    if (!(std::fabs(ms) < 9223372036854775808.0)) return false;
    const auto time = static_cast<std::int64_t>(std::fabs(std::fmod(ms, 86400000.0)));
    hour = static_cast<int>(time / 3600000);
    minute = static_cast<int>(time / 60000 % 60);
    second = static_cast<int>(time / 1000 % 60);
    return true;
}

// The runtime's Trim: blanks and control characters at both ends.
bool isTrimmedAway(char c) { return static_cast<unsigned char>(c) <= ' '; }

}  // namespace

// --- logic ---

void And(FormulaEvaluator& e, int count) {
    bool result = true;
    // The first false stops; the arguments below it stay and are dropped
    // with the rest of the stack.
    for (int i = 0; i < count && result; ++i) result = e.popBoolean();
    if (!e.errorCode()) e.pushBoolean(result);
}

void Or(FormulaEvaluator& e, int) {
    bool result = e.popBoolean();
    if (!result) result = e.popBoolean();
    if (!e.errorCode()) e.pushBoolean(result);
}

void Not(FormulaEvaluator& e, int) {
    const bool value = e.popBoolean();
    if (!e.errorCode()) e.pushBoolean(!value);
}

void If(FormulaEvaluator& e, int) {
    const std::uint8_t before = e.errorCode();
    std::string otherwise = e.popText();
    std::string then = e.popText();
    const std::string condition = e.popText();
    if (before == 0 && e.errorCode()) return;  // the stack ran out
    const bool truth = textTruth(e, condition);
    if (before == 0 && e.errorCode()) return;
    if (!truth) {
        e.clearError();
        e.pushString(std::move(otherwise));
    } else if (!e.errorCode()) {
        e.pushString(std::move(then));
    }
}

void True(FormulaEvaluator& e, int) { e.pushBoolean(true); }
void False(FormulaEvaluator& e, int) { e.pushBoolean(false); }

// --- date and time ---

void Date(FormulaEvaluator& e, int) {
    const double d = std::nearbyint(e.popNumber());
    const double m = std::nearbyint(e.popNumber());
    const double y = std::nearbyint(e.popNumber());
    if (e.errorCode()) return;
    double serial = 0;
    if (std::fabs(y) > 1e6 || std::fabs(m) > 1e6 || std::fabs(d) > 1e6 ||
        !encodeDate(static_cast<int>(y), static_cast<int>(m), static_cast<int>(d), serial)) {
        e.setError(3);
        return;
    }
    e.pushNumber(serial);
}

void Day(FormulaEvaluator& e, int) {
    const std::string text = e.popText();
    double serial = 0;
    if (!e.textToNumber(text, serial)) e.setError(3);
    pushNumberUnlessError(e, decodeDate(serial).day);
}

void Month(FormulaEvaluator& e, int) {
    const double serial = e.popNumber();
    pushNumberUnlessError(e, decodeDate(serial).month);
}

void Year(FormulaEvaluator& e, int) {
    const double serial = e.popNumber();
    pushNumberUnlessError(e, decodeDate(serial).year);
}

void Time(FormulaEvaluator& e, int) {
    const double s = std::nearbyint(e.popNumber());
    const double m = std::nearbyint(e.popNumber());
    const double h = std::nearbyint(e.popNumber());
    if (e.errorCode()) return;
    if (!(h >= 0 && h < 24 && m >= 0 && m < 60 && s >= 0 && s < 60)) {
        e.setError(3);
        return;
    }
    e.pushNumber((h * 3600 + m * 60 + s) / 86400);
}

void Weekday(FormulaEvaluator& e, int count) {
    double type = count >= 2 ? e.popNumber() : 1;
    const double serial = e.popNumber();
    if (e.errorCode()) return;
    if (!(type >= 1 && type <= 3)) type = 1;
    std::int64_t days = 0;
    if (!serialDay(serial, days)) {
        e.setError(3);
        return;
    }
    // 30 December 1899, day 0, was a Saturday: 1 is Sunday.
    auto day = (days + 693594) % 7;
    if (day < 0) day += 7;
    int result = static_cast<int>(day) + 1;
    const int kind = static_cast<int>(type);
    if (kind >= 2) {
        result -= 1;
        if (result == 0) result = 7;
    }
    if (kind == 3) result -= 1;
    e.pushNumber(result);
}

namespace {
void timePart(FormulaEvaluator& e, int part) {
    const std::string text = e.popText();
    double serial = 0;
    if (!text.empty() && !e.textToNumber(text, serial)) e.setError(3);
    if (e.errorCode()) return;
    int h, m, s;
    if (!decodeTime(serial, h, m, s)) {
        e.setError(3);
        return;
    }
    e.pushNumber(part == 0 ? h : part == 1 ? m : s);
}
}  // namespace

void Hour(FormulaEvaluator& e, int) { timePart(e, 0); }
void Minute(FormulaEvaluator& e, int) { timePart(e, 1); }
void Second(FormulaEvaluator& e, int) { timePart(e, 2); }
void Today(FormulaEvaluator& e, int) { e.pushNumber(std::floor(e.clock().now())); }
void Now(FormulaEvaluator& e, int) { e.pushNumber(e.clock().now()); }

// --- text ---

void Dollar(FormulaEvaluator& e, int) {
    const double n = std::trunc(e.popNumber());
    const double x = e.popNumber();
    if (e.errorCode()) return;
    e.pushString(e.locale().currencyText(x, n > 18 ? 18 : static_cast<int>(n)));
}

void Len(FormulaEvaluator& e, int) {
    const std::string text = e.popText();
    pushNumberUnlessError(e, static_cast<double>(text.size()));
}

namespace {
void side(FormulaEvaluator& e, int count, bool left) {
    const double n = count >= 2 ? std::trunc(e.popNumber()) : -1;
    std::string text = e.popText();
    if (count >= 2 && n < 0) e.setError(3);
    if (e.errorCode()) return;
    if (count >= 2 && n < static_cast<double>(text.size())) {
        const auto keep = static_cast<size_t>(n);
        text = left ? text.substr(0, keep) : text.substr(text.size() - keep);
    }
    e.pushString(std::move(text));
}
}  // namespace

void Left(FormulaEvaluator& e, int count) { side(e, count, true); }
void Right(FormulaEvaluator& e, int count) { side(e, count, false); }

void Mid(FormulaEvaluator& e, int count) {
    if (count != 3) {
        e.setError(3);
        return;
    }
    const double n = std::trunc(e.popNumber());
    const double s = std::trunc(e.popNumber());
    const std::string text = e.popText();
    if (!(s > 0 && n > 0 && s <= static_cast<double>(text.size()))) e.setError(3);
    if (e.errorCode()) return;
    e.pushString(text.substr(static_cast<size_t>(s) - 1, n > 1e9 ? std::string::npos : static_cast<size_t>(n)));
}

void Lower(FormulaEvaluator& e, int) {
    const std::string text = e.popText();
    if (!e.errorCode()) e.pushString(LocaleSettings::lowerCase(text));
}

void Upper(FormulaEvaluator& e, int) {
    const std::string text = e.popText();
    if (!e.errorCode()) e.pushString(LocaleSettings::upperCase(text));
}

void Trim(FormulaEvaluator& e, int) {
    std::string text = e.popText();
    if (e.errorCode()) return;
    std::erase(text, ' ');  // every blank, not only the outer ones
    e.pushString(std::move(text));
}

void Concatenate(FormulaEvaluator& e, int count) {
    std::vector<std::string> parts;
    for (int i = 0; i < count; ++i) parts.push_back(e.popText());
    if (e.errorCode()) return;
    std::string joined;
    for (auto it = parts.rbegin(); it != parts.rend(); ++it) joined += *it;
    e.pushString(std::move(joined));
}

// --- information: all but ISNONTEXT clear the error ---

namespace {
bool isTextValue(FormulaEvaluator& e, const std::string& text) {
    double number;
    bool boolean;
    return !text.empty() && !e.textToNumber(text, number) && !parseBooleanText(text, boolean);
}
}  // namespace

void IsLogical(FormulaEvaluator& e, int) {
    const std::string text = e.popText();
    bool value;
    e.clearError();
    e.pushBoolean(parseBooleanText(text, value));
}

void IsErr(FormulaEvaluator& e, int) {
    const std::string text = e.popText();
    const bool result = e.errorCode() != 0 || text == "#VALUE!";
    e.clearError();
    e.pushBoolean(result);
}

void IsError(FormulaEvaluator& e, int count) { IsErr(e, count); }

void IsNonText(FormulaEvaluator& e, int) {
    const std::string text = e.popText();
    if (!e.errorCode()) e.pushBoolean(!isTextValue(e, text));
}

void IsBlank(FormulaEvaluator& e, int) {
    const std::string text = e.popText();
    e.clearError();
    e.pushBoolean(std::all_of(text.begin(), text.end(), isTrimmedAway));
}

void IsNa(FormulaEvaluator& e, int) {
    const std::string text = e.popText();
    e.clearError();
    e.pushBoolean(text == "#NULL!");
}

void IsNumber(FormulaEvaluator& e, int) {
    const std::string text = e.popText();
    double number;
    e.clearError();
    e.pushBoolean(e.textToNumber(text, number));
}

void IsText(FormulaEvaluator& e, int) {
    const std::string text = e.popText();
    e.clearError();
    e.pushBoolean(isTextValue(e, text));
}

}  // namespace zorfa::sheet::functions
