#include <time/time_varnel.h>

#include "inputs.h"

namespace {

template <int Which>
const column<ka_time_period>& periods()
{
    static const auto made = made_column([](std::size_t i) {
        return ka_time_period(inputs().seconds[Which][i], inputs().fractions[Which][i]);
    });
    return made;
}

std::string period_shown(const ka_time_period& period)
{
    return std::to_string(period.whole_seconds() * 1000000 + period.microseconds());
}

auto add()
{
    return [&a = periods<0>(), &b = periods<1>()](std::size_t i) { return a[i] + b[i]; };
}

auto subtract()
{
    return [&a = periods<0>(), &b = periods<1>()](std::size_t i) { return a[i] - b[i]; };
}

auto compare()
{
    return [&a = periods<0>(), &b = periods<1>()](std::size_t i) { return a[i] < b[i]; };
}

auto divide()
{
    return [&a = periods<0>(), &by = inputs().divisors](std::size_t i) { return a[i] / by[i]; };
}

/// Numbers of fewer bits, down to none.
template <int Less>
auto divide_any()
{
    static const auto a =
        made_column([](std::size_t i) { return ka_time_period(inputs().any_numbers[i] >> Less, 0); });
    return [&by = inputs().divisors](std::size_t i) { return a[i] / by[i]; };
}

std::string whole_seconds_shown(const ka_time_period& period)
{
    return std::to_string(period.whole_seconds());
}

const column<ka_wint>& long_wints()
{
    static const auto made = made_column([](std::size_t i) { return ka_wint(inputs().long_numbers[i]); });
    return made;
}

const column<ka_wint>& short_wints()
{
    static const auto made = made_column([](std::size_t i) { return ka_wint(inputs().short_numbers[i]); });
    return made;
}

std::string wint_shown(const ka_wint& number) { return number.to_string(); }

auto wint_text()
{
    return [&in = long_wints()](std::size_t i) { return in[i].to_string(); };
}

auto any_wint_text()
{
    static const auto in = made_column([](std::size_t i) { return ka_wint(inputs().any_numbers[i]); });
    return [](std::size_t i) { return in[i].to_string(); };
}

auto wint_multiply()
{
    return [&a = long_wints(), &b = short_wints()](std::size_t i) { return a[i] * b[i]; };
}

auto wint_divide()
{
    return [&a = long_wints(), &b = short_wints()](std::size_t i) { return a[i] / b[i]; };
}

auto refuse()
{
    return [](std::size_t i) {
        try {
            return ka_date(13, 1, static_cast<short>(i + 1)).julian_day();
        } catch (const ka_time_varnel_error& error) {
            return static_cast<int>(error.what()[0]);
        }
    };
}

}

std::vector<operation> arithmetic_operations()
{
    using enum difference;
    return {
        row<add, period_shown>("period + period", {{1.5, "Boost"}}, 26),
        row<subtract, period_shown>("period - period", {{1.7, "Boost"}}, 32),
        row<compare>("period < period", {{1.0}}, 8),
        row<divide, period_shown>("period / int", {{1.5}}, 41, last_digit),
        row<divide_any<20>, period_shown>("period / int, to 43 bits of seconds", {{1.5}}, 0, last_digit),
        row<divide_any<0>, whole_seconds_shown>("period / int, to 63 bits of seconds", {{1.5}}),
        row<wint_text>("ka_wint to 12 digits", {{1.0}}, 135),
        row<any_wint_text>("ka_wint to 1 to 19 digits", {{0.95}}),
        row<wint_multiply, wint_shown>("ka_wint * ka_wint", {{2.5}}, 20),
        row<wint_divide, wint_shown>("ka_wint / ka_wint", {{1.1}}, 32),
        row<refuse>("a refused value, thrown and caught", {{0.6}}),
    };
}
