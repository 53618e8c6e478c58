#include <absl/time/time.h>

#include "inputs.h"

namespace {

absl::TimeZone pacific()
{
    absl::TimeZone zone;
    absl::LoadTimeZone("America/Los_Angeles", &zone);
    return zone;
}

column<absl::Time> moments(const column<long long>& seconds)
{
    return made_column([&](std::size_t i) { return absl::FromUnixSeconds(seconds[i]); });
}

void read_all(const column<absl::Time>& in)
{
    const absl::TimeZone zone = pacific();
    for_each_input([&](std::size_t i) { return zone.At(in[i]); });
}

void read_early()
{
    static const auto in = moments(inputs().early);
    read_all(in);
}

void read_late()
{
    static const auto in = moments(inputs().late);
    read_all(in);
}

void read_one_day()
{
    static const auto in = moments(inputs().one_day);
    read_all(in);
}

void set_all(const column<absl::CivilSecond>& in)
{
    const absl::TimeZone zone = pacific();
    for_each_input([&](std::size_t i) { return absl::FromCivil(in[i], zone); });
}

column<absl::CivilSecond> local_times(const column<long long>& seconds)
{
    return made_column(
        [&](std::size_t i) { return absl::ToCivilSecond(absl::FromUnixSeconds(seconds[i]), pacific()); });
}

void set_early()
{
    static const auto in = local_times(inputs().early);
    set_all(in);
}

void set_late()
{
    static const auto in = local_times(inputs().late);
    set_all(in);
}

void print_all(const char* format)
{
    static const auto in = made_column([](std::size_t i) {
        return absl::FromUnixMicros(inputs().early[i] * 1000000 + inputs().microseconds[i]);
    });
    const absl::TimeZone zone = pacific();
    for_each_input([&](std::size_t i) { return absl::FormatTime(format, in[i], zone); });
}

void with_microseconds() { print_all("%Y-%m-%d %H:%M:%E6S"); }
void with_names() { print_all("%A, %d %B %Y, %H:%M:%S (%a, %b)"); }

template <int Which>
const column<absl::Duration>& durations()
{
    static const auto made = made_column([](std::size_t i) {
        return absl::Seconds(inputs().seconds[Which][i]) + absl::Microseconds(inputs().fractions[Which][i]);
    });
    return made;
}

void add()
{
    const auto& a = durations<0>();
    const auto& b = durations<1>();
    for_each_input([&](std::size_t i) { return a[i] + b[i]; });
}

void subtract()
{
    const auto& a = durations<0>();
    const auto& b = durations<1>();
    for_each_input([&](std::size_t i) { return a[i] - b[i]; });
}

void compare()
{
    const auto& a = durations<0>();
    const auto& b = durations<1>();
    for_each_input([&](std::size_t i) { return a[i] < b[i]; });
}

void divide()
{
    const auto& a = durations<0>();
    const auto& by = inputs().divisors;
    for_each_input([&](std::size_t i) { return a[i] / by[i]; });
}

const peers rows = {
    {"operator tm, 1970 to 2037", "Abseil", read_early},
    {"time(), date(), is_dst(), 1970 to 2037", "Abseil", read_early},
    {"operator tm, 2040 to 2100", "Abseil", read_late},
    {"operator tm, one day in ascending order", "Abseil", read_one_day},
    {"local to universal, 1970 to 2037", "Abseil", set_early},
    {"local to universal, 2040 to 2100", "Abseil", set_late},
    {"moment to date, time, microseconds", "Abseil", with_microseconds},
    {"moment to a long text with names", "Abseil", with_names},
    {"period + period", "Abseil", add},
    {"period - period", "Abseil", subtract},
    {"period < period", "Abseil", compare},
    {"period / int", "Abseil", divide},
};

}
