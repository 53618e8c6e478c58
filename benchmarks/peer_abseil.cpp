#include <absl/time/time.h>

#include "inputs.h"

namespace {

const absl::TimeZone& pacific()
{
    static const absl::TimeZone zone = [] {
        absl::TimeZone made;
        absl::LoadTimeZone("America/Los_Angeles", &made);
        return made;
    }();
    return zone;
}

column<absl::Time> moments(const column<long long>& seconds)
{
    return made_column([&](std::size_t i) { return absl::FromUnixSeconds(seconds[i]); });
}

std::string shown(const absl::TimeZone::CivilInfo& reading)
{
    const auto& at = reading.cs;
    return reading_text(at.year(), at.month(), at.day(), at.hour(), at.minute(), at.second(), reading.is_dst);
}

auto reading(const column<absl::Time>& in)
{
    return [&in, zone = pacific()](std::size_t i) { return zone.At(in[i]); };
}

auto read_early()
{
    static const auto in = moments(inputs().early);
    return reading(in);
}

auto read_late()
{
    static const auto in = moments(inputs().late);
    return reading(in);
}

auto read_one_day()
{
    static const auto in = moments(inputs().one_day);
    return reading(in);
}

std::string second_shown(const absl::Time& instant) { return std::to_string(absl::ToUnixSeconds(instant)); }

auto setting(const column<absl::CivilSecond>& in)
{
    return [&in, zone = pacific()](std::size_t i) { return absl::FromCivil(in[i], zone); };
}

column<absl::CivilSecond> local_times(const column<long long>& seconds)
{
    return made_column(
        [&](std::size_t i) { return absl::ToCivilSecond(absl::FromUnixSeconds(seconds[i]), pacific()); });
}

auto set_early()
{
    static const auto in = local_times(inputs().early);
    return setting(in);
}

auto set_late()
{
    static const auto in = local_times(inputs().late);
    return setting(in);
}

auto printing(const char* format)
{
    static const auto in = made_column([](std::size_t i) {
        return absl::FromUnixMicros(inputs().early[i] * 1000000 + inputs().microseconds[i]);
    });
    return [format, zone = pacific()](std::size_t i) { return absl::FormatTime(format, in[i], zone); };
}

auto with_microseconds() { return printing("%Y-%m-%d %H:%M:%E6S"); }
auto with_names() { return printing("%A, %d %B %Y %I:%M:%S %p"); }

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

auto found()
{
    return [](std::size_t i) {
        absl::TimeZone zone;
        absl::LoadTimeZone(world_names[i % std::size(world_names)], &zone);
        return zone;
    };
}

auto parsing(const char* format, const column<std::string>& in)
{
    return [format, &in](std::size_t i) {
        absl::Time at;
        std::string error;
        absl::ParseTime(format, in[i], &at, &error);
        return at;
    };
}

auto read_stamp() { return parsing("%Y-%m-%dT%H:%M:%S", stamps()); }
auto read_full_stamp() { return parsing(absl::RFC3339_full, full_stamps()); }

const peers rows = {
    {"operator tm in a world zone, 1970 to 2037", "Abseil", run_all<read_early>,
     result_of<read_early, shown>},
    {"operator tm in a world zone, 2040 to 2100", "Abseil", run_all<read_late>, result_of<read_late, shown>},
    {"local to universal in a world zone", "Abseil", run_all<set_early>, result_of<set_early, second_shown>},
    {"a loaded zone found by its name", "Abseil", run_all<found>},
    {"operator tm, 1970 to 2037", "Abseil", run_all<read_early>, result_of<read_early, shown>},
    {"time(), date(), is_dst(), 1970 to 2037", "Abseil", run_all<read_early>, result_of<read_early, shown>},
    {"operator tm, 2040 to 2100", "Abseil", run_all<read_late>, result_of<read_late, shown>},
    {"operator tm, one day in ascending order", "Abseil", run_all<read_one_day>,
     result_of<read_one_day, shown>},
    {"local to universal, 1970 to 2037", "Abseil", run_all<set_early>, result_of<set_early, second_shown>},
    {"local to universal, 2040 to 2100", "Abseil", run_all<set_late>, result_of<set_late, second_shown>},
    {"moment to date, time, microseconds", "Abseil", run_all<with_microseconds>,
     result_of<with_microseconds>},
    {"moment to a long text with names", "Abseil", run_all<with_names>, result_of<with_names>},
    {"period + period", "Abseil", add},
    {"period - period", "Abseil", subtract},
    {"period < period", "Abseil", compare},
    {"period / int", "Abseil", divide},
    {"19 characters to a moment", "Abseil", run_all<read_stamp>},
    {"RFC 3339 with offset and fraction to a moment", "Abseil", run_all<read_full_stamp>},
};

}
