#pragma once
// The clock and the random generator of the formula functions NOW, TODAY and
// RAND, injectable so that tests and batch runs can fix them.

#include <cstdint>
#include <random>

namespace zorfa::sheet {

class FormulaClock {
public:
    virtual ~FormulaClock() = default;
    // The local date and time as a day serial: days since 30 December 1899,
    // the fraction being the time of day.
    virtual double now() const = 0;
};

class FormulaRandom {
public:
    virtual ~FormulaRandom() = default;
    // A number in [0, 1).
    virtual double next() = 0;
};

class SystemClock final : public FormulaClock {
public:
    double now() const override;
};

class DefaultRandom final : public FormulaRandom {
public:
    DefaultRandom();
    explicit DefaultRandom(std::uint32_t seed) : engine_(seed) {}
    double next() override;

private:
    std::mt19937_64 engine_;
};

// Calendar arithmetic on day serials (day 0 is 30 December 1899).
struct CivilDate {
    int year = 0, month = 0, day = 0;
};
// The serial of a valid date in years 1 to 9999; false for an invalid date.
bool encodeDate(int year, int month, int day, double& serial) noexcept;
// Year 0, month 0, day 0 for a serial before 1 January of year 1.
CivilDate decodeDate(double serial) noexcept;
// The day of a serial as the runtime takes it: the serial rounded to whole
// milliseconds (half to even), then whole days towards zero. False when
// |serial| is past what a 64-bit count of milliseconds holds.
bool serialDay(double serial, std::int64_t& day) noexcept;

}  // namespace zorfa::sheet
