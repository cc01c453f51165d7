// Mathematics and aggregates of the function table.
#include <cmath>
#include <numbers>

#include "sheet/FormulaEnvironment.h"
#include "sheet/FunctionHandlers.h"

namespace zorfa::sheet::functions {

namespace {

template <double (*F)(double)>
void unary(FormulaEvaluator& e) {
    const double x = e.popNumber();
    if (!e.errorCode()) e.pushNumber(F(x));
}

void pushUnlessError(FormulaEvaluator& e, double value) {
    if (!e.errorCode()) e.pushNumber(value);
}

double radians(double x) { return x * std::numbers::pi / 180; }
double degrees(double x) { return x * 180 / std::numbers::pi; }
double sign(double x) { return x > 0 ? 1 : (x < 0 ? -1 : 0); }

// Multiplying by ten more than 700 times makes any non-zero finite number
// infinite and dividing infinity changes nothing, so longer loops end alike.
constexpr int kMaxDecimalSteps = 700;

}  // namespace

void Abs(FormulaEvaluator& e, int) { unary<std::fabs>(e); }
void Acos(FormulaEvaluator& e, int) { unary<std::acos>(e); }
void Acosh(FormulaEvaluator& e, int) { unary<std::acosh>(e); }
void Asin(FormulaEvaluator& e, int) { unary<std::asin>(e); }
void Asinh(FormulaEvaluator& e, int) { unary<std::asinh>(e); }
void Atan(FormulaEvaluator& e, int) { unary<std::atan>(e); }
void Atanh(FormulaEvaluator& e, int) { unary<std::atanh>(e); }
void Cos(FormulaEvaluator& e, int) { unary<std::cos>(e); }
void Cosh(FormulaEvaluator& e, int) { unary<std::cosh>(e); }
void Exp(FormulaEvaluator& e, int) { unary<std::exp>(e); }
void Ln(FormulaEvaluator& e, int) { unary<std::log>(e); }
void Log10(FormulaEvaluator& e, int) { unary<std::log10>(e); }
void Radians(FormulaEvaluator& e, int) { unary<radians>(e); }
void Degrees(FormulaEvaluator& e, int) { unary<degrees>(e); }
void Sin(FormulaEvaluator& e, int) { unary<std::sin>(e); }
void Sinh(FormulaEvaluator& e, int) { unary<std::sinh>(e); }
void Tan(FormulaEvaluator& e, int) { unary<std::tan>(e); }
void Tanh(FormulaEvaluator& e, int) { unary<std::tanh>(e); }
void Int(FormulaEvaluator& e, int) { unary<std::floor>(e); }
void Sign(FormulaEvaluator& e, int) { unary<sign>(e); }
void Pi(FormulaEvaluator& e, int) { e.pushNumber(std::numbers::pi); }
void Rand(FormulaEvaluator& e, int) { e.pushNumber(e.random().next()); }

void Atan2(FormulaEvaluator& e, int) {
    const double y = e.popNumber();
    const double x = e.popNumber();
    pushUnlessError(e, std::atan2(y, x));
}

void Sqrt(FormulaEvaluator& e, int) {
    const double x = e.popNumber();
    if (x < 0) e.setError(5);
    pushUnlessError(e, std::sqrt(x));
}

void Log(FormulaEvaluator& e, int count) {
    const double base = count >= 2 ? e.popNumber() : 10;
    const double x = e.popNumber();
    if (x <= 0 || base <= 0) e.setError(5);
    pushUnlessError(e, std::log(x) / std::log(base));
}

void Power(FormulaEvaluator& e, int) {
    const double b = e.popNumber();
    const double a = e.popNumber();
    pushUnlessError(e, std::pow(a, b));
}

void Round(FormulaEvaluator& e, int) {
    const double n = e.popNumber();
    const double x = e.popNumber();
    const double p = std::pow(10.0, n);
    const double scaled = x * p;
    double t = std::trunc(scaled);
    // Only non-negative values round up; negative ones are truncated.
    if ((scaled - t) * 10 >= 5 && scaled >= 0) t += 1;
    pushUnlessError(e, t / p);
}

namespace {
void roundDirected(FormulaEvaluator& e, double (*direction)(double)) {
    const double n = std::trunc(e.popNumber());
    double x = e.popNumber();
    const int steps = n > kMaxDecimalSteps ? kMaxDecimalSteps : static_cast<int>(n);
    for (int i = 0; i < steps; ++i) x *= 10;
    x = direction(x);
    for (int i = 0; i < steps; ++i) x /= 10;
    pushUnlessError(e, x);
}
}  // namespace

void RoundDown(FormulaEvaluator& e, int) { roundDirected(e, std::floor); }
void RoundUp(FormulaEvaluator& e, int) { roundDirected(e, std::ceil); }

void Trunc(FormulaEvaluator& e, int count) {
    const double n = count >= 2 ? e.popNumber() : 0;
    const double x = e.popNumber();
    const double p = std::pow(10.0, n);
    pushUnlessError(e, std::trunc(x * p) / p);
}

namespace {
void toParity(FormulaEvaluator& e, bool even) {
    double x = e.popNumber();
    const double s = sign(x);
    if (x != std::trunc(x)) x = std::trunc(x + s);
    const bool isEven = std::fmod(x, 2.0) == 0;
    if (isEven != even) x += s;
    pushUnlessError(e, x);
}
}  // namespace

void Even(FormulaEvaluator& e, int) { toParity(e, true); }
void Odd(FormulaEvaluator& e, int) { toParity(e, false); }

void Fact(FormulaEvaluator& e, int) {
    const double n = std::floor(e.popNumber());
    if (e.errorCode()) return;
    // The product loop counts with a float: from 2^53 on the counter stops
    // growing and the loop would never end; past 170 the product is infinite.
    if (n >= 9007199254740992.0) {
        e.setError(5);
        return;
    }
    if (n > 170) {
        e.pushNumber(HUGE_VAL);
        return;
    }
    double product = 1;
    for (double i = 1; i <= n; i += 1) product *= i;
    e.pushNumber(product);
}

void Mod(FormulaEvaluator& e, int) {
    const double y = e.popNumber();
    double x = e.popNumber();
    if (e.errorCode()) return;
    if (y == 0) {
        e.setError(2);
        return;
    }
    // The subtraction loop "while x >= y: x -= y", without running it.
    if (x >= y) {
        if (y < 0 || x - y == x) {  // it would grow x, or not change it: never ends
            e.setError(5);
            return;
        }
        x = std::fmod(x, y);
    }
    e.pushNumber(std::floor(x));
}

namespace {
void roundToMultiple(FormulaEvaluator& e, bool ceiling) {
    double s = e.popNumber();
    double x = e.popNumber();
    if (e.errorCode()) return;
    if (s == 0 || (x > 0 && s < 0) || (x < 0 && s > 0)) {
        e.setError(5);
        return;
    }
    double scale = 1;
    for (int i = 0; i < 15 && (x * scale != std::trunc(x * scale) || s * scale != std::trunc(s * scale)); ++i)
        scale *= 10;
    x = std::round(x * scale);
    s = std::round(s * scale);
    double q = x / s;
    if (q != std::trunc(q)) q = ceiling ? std::trunc(q) + sign(q) : std::trunc(q);
    e.pushNumber(q * s / scale);
}
}  // namespace

void Ceiling(FormulaEvaluator& e, int) { roundToMultiple(e, true); }
void Floor(FormulaEvaluator& e, int) { roundToMultiple(e, false); }

void Fixed(FormulaEvaluator& e, int count) {
    if (count >= 3) e.popBoolean();
    double n = count >= 2 ? std::nearbyint(e.popNumber()) : 2;
    double x = e.popNumber();
    if (n <= 0) {
        const double p = std::pow(10.0, -n);
        x = std::trunc(x / p) * p;
    }
    pushUnlessError(e, x);
}

// --- aggregates ---

void Sum(FormulaEvaluator& e, int count) {
    double sum = 0;
    e.enumerateNumbers(count, [&](double v) { sum += v; });
    pushUnlessError(e, sum);
}

void SumSq(FormulaEvaluator& e, int count) {
    double sum = 0;
    e.enumerateNumbers(count, [&](double v) { sum += v * v; });
    pushUnlessError(e, sum);
}

namespace {
void extreme(FormulaEvaluator& e, int count, bool max) {
    bool has = false;
    double best = 0;
    e.enumerateNumbers(count, [&](double v) {
        if (!has || (max ? v > best : v < best)) best = v;
        has = true;
    });
    pushUnlessError(e, best);
}
}  // namespace

void Max(FormulaEvaluator& e, int count) { extreme(e, count, true); }
void Min(FormulaEvaluator& e, int count) { extreme(e, count, false); }

void Count(FormulaEvaluator& e, int count) {
    double n = 0;
    e.enumerateNumbers(count, [&](double) { ++n; });
    pushUnlessError(e, n);
}

void CountA(FormulaEvaluator& e, int count) {
    double n = 0;
    e.enumerateTexts(count, [&](std::string_view text, std::uint64_t times) {
        if (!text.empty()) n += static_cast<double>(times);
    });
    pushUnlessError(e, n);
}

void CountBlank(FormulaEvaluator& e, int count) {
    double n = 0;
    e.enumerateTexts(count, [&](std::string_view text, std::uint64_t times) {
        if (text.empty()) n += static_cast<double>(times);
    });
    pushUnlessError(e, n);
}

void CountIf(FormulaEvaluator& e, int count) {
    const std::string criterion = e.popText();
    std::string_view rest = criterion;
    int op = 0;  // 0 equal, 1 "<", 2 "<=", 3 ">", 4 ">="
    if (rest.starts_with("<=")) op = 2;
    else if (rest.starts_with(">=")) op = 4;
    else if (rest.starts_with("<")) op = 1;
    else if (rest.starts_with(">")) op = 3;
    rest.remove_prefix(op == 0 ? 0 : (op % 2 == 0 ? 2 : 1));
    double n = 0;
    // Cells compare with the criterion as text, numbers included.
    e.enumerateTexts(count - 1, [&](std::string_view text, std::uint64_t times) {
        bool match;
        if (op == 0) {
            match = LocaleSettings::sameText(text, rest);
        } else {
            const int order = LocaleSettings::compareText(text, rest);
            match = op == 1 ? order < 0 : op == 2 ? order <= 0 : op == 3 ? order > 0 : order >= 0;
        }
        if (match) n += static_cast<double>(times);
    });
    pushUnlessError(e, n);
}

namespace {
void average(FormulaEvaluator& e, int count, bool allValues) {
    e.duplicate(count);
    double n = 0, sum = 0;
    if (allValues) {
        e.enumerateTexts(count, [&](std::string_view text, std::uint64_t times) {
            if (!text.empty()) n += static_cast<double>(times);
        });
    } else {
        e.enumerateNumbers(count, [&](double) { ++n; });
    }
    e.enumerateNumbers(count, [&](double v) { sum += v; });
    if (n <= 0) {
        e.setError(2);
        e.pushNumber(0);
        return;
    }
    pushUnlessError(e, sum / n);
}
}  // namespace

void Average(FormulaEvaluator& e, int count) { average(e, count, false); }
void AverageA(FormulaEvaluator& e, int count) { average(e, count, true); }

}  // namespace zorfa::sheet::functions
