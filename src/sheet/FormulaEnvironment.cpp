#include "sheet/FormulaEnvironment.h"

#include <chrono>
#include <cmath>
#include <ctime>

namespace zorfa::sheet {

namespace {

// Days from 1 January of year 1 (day 1) to 30 December 1899.
constexpr std::int64_t kDateDelta = 693594;

bool isLeap(int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

// Days since 1970-01-01 of a proleptic Gregorian date, and back.
std::int64_t daysFromCivil(std::int64_t y, unsigned m, unsigned d) {
    y -= m <= 2;
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<std::int64_t>(doe) - 719468;
}

CivilDate civilFromDays(std::int64_t z) {
    z += 719468;
    const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const unsigned doe = static_cast<unsigned>(z - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const std::int64_t y = static_cast<std::int64_t>(yoe) + era * 400;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    const unsigned d = doy - (153 * mp + 2) / 5 + 1;
    const unsigned m = mp < 10 ? mp + 3 : mp - 9;
    return {static_cast<int>(y + (m <= 2)), static_cast<int>(m), static_cast<int>(d)};
}

// 1899-12-30 is 25569 days before 1970-01-01.
constexpr std::int64_t kUnixToSerial = 25569;

}  // namespace

double SystemClock::now() const {
    const std::time_t t = std::time(nullptr);
    std::tm local{};
    localtime_r(&t, &local);
    double serial = 0;
    encodeDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, serial);
    return serial + (local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec) / 86400.0;
}

DefaultRandom::DefaultRandom() : engine_(std::random_device{}()) {}

double DefaultRandom::next() { return std::uniform_real_distribution<double>(0.0, 1.0)(engine_); }

bool encodeDate(int year, int month, int day, double& serial) noexcept {
    if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1) return false;
    static const int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const int length = lengths[month - 1] + (month == 2 && isLeap(year) ? 1 : 0);
    if (day > length) return false;
    serial = static_cast<double>(daysFromCivil(year, static_cast<unsigned>(month), static_cast<unsigned>(day)) +
                                 kUnixToSerial);
    return true;
}

bool serialDay(double serial, std::int64_t& day) noexcept {
    const double ms = std::nearbyint(serial * 86400000.0);
    if (!(std::fabs(ms) < 9223372036854775808.0)) return false;
    day = static_cast<std::int64_t>(ms) / 86400000;
    return true;
}

CivilDate decodeDate(double serial) noexcept {
    std::int64_t days = 0;
    if (!std::isfinite(serial) || std::fabs(serial) > 4e6 || !serialDay(serial, days)) return {};
    if (days + kDateDelta <= 0) return {};
    return civilFromDays(days - kUnixToSerial);
}

}  // namespace zorfa::sheet
