#include <absl/time/clock.h>
#include <absl/time/time.h>

#include "inputs.h"

namespace {

const absl::TimeZone& pacific()
{
    static const absl::TimeZone zone = [] {
        absl::TimeZone made;
        absl::LoadTimeZone(pacific_name, &made);
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

std::string duration_shown(const absl::Duration& shown)
{
    return std::to_string(absl::ToInt64Microseconds(shown));
}
std::string whole_seconds_shown(const absl::Duration& shown)
{
    return std::to_string(absl::ToInt64Seconds(shown));
}

auto add()
{
    return [&a = durations<0>(), &b = durations<1>()](std::size_t i) { return a[i] + b[i]; };
}

auto subtract()
{
    return [&a = durations<0>(), &b = durations<1>()](std::size_t i) { return a[i] - b[i]; };
}

auto compare()
{
    return [&a = durations<0>(), &b = durations<1>()](std::size_t i) { return a[i] < b[i]; };
}

auto divide()
{
    return [&a = durations<0>(), &by = inputs().divisors](std::size_t i) { return a[i] / by[i]; };
}

template <int Less>
auto divide_any()
{
    static const auto a =
        made_column([](std::size_t i) { return absl::Seconds(inputs().any_numbers[i] >> Less); });
    return [&by = inputs().divisors](std::size_t i) { return a[i] / by[i]; };
}

auto present()
{
    return [zone = pacific()](std::size_t) { return zone.At(absl::Now()); };
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

std::string fine_shown(const absl::Time& instant) { return seconds_text(absl::ToUnixMicros(instant)); }

const peers rows = {
    beside<read_early, shown>("operator tm in a world zone, 1970 to 2037", "Abseil"),
    beside<read_late, shown>("operator tm in a world zone, 2040 to 2100", "Abseil"),
    beside<set_early, second_shown>("local to universal in a world zone", "Abseil"),
    beside_alone<found>("a loaded zone found by its name", "Abseil"),
    beside<read_early, shown>("operator tm, 1970 to 2037", "Abseil"),
    beside<read_early, shown>("time(), date(), is_dst(), 1970 to 2037", "Abseil"),
    beside<read_late, shown>("operator tm, 2040 to 2100", "Abseil"),
    beside<read_one_day, shown>("operator tm, one day in ascending order", "Abseil"),
    beside<set_early, second_shown>("local to universal, 1970 to 2037", "Abseil"),
    beside<set_late, second_shown>("local to universal, 2040 to 2100", "Abseil"),
    beside<read_late, shown>("operator tm in a zone of one's own", "Abseil"),
    beside<read_late, shown>("time(), date(), is_dst() in a zone of one's own", "Abseil"),
    beside<set_late, second_shown>("local to universal in a zone of one's own", "Abseil"),
    beside_alone<present>("ka_time_and_date::now()", "Abseil"),
    beside<with_microseconds>("moment to date, time, microseconds", "Abseil"),
    beside<with_names>("moment to a long text with names", "Abseil"),
    beside<add, duration_shown>("period + period", "Abseil"),
    beside<subtract, duration_shown>("period - period", "Abseil"),
    beside<compare>("period < period", "Abseil"),
    beside<divide, duration_shown>("period / int", "Abseil"),
    beside<divide_any<20>, duration_shown>("period / int, to 43 bits of seconds", "Abseil"),
    beside<divide_any<0>, whole_seconds_shown>("period / int, to 63 bits of seconds", "Abseil"),
    beside<read_stamp, second_shown>("19 characters to a moment", "Abseil"),
    beside<read_stamp, second_shown>("19 characters read by a pattern", "Abseil"),
    beside<read_full_stamp, fine_shown>("RFC 3339 with offset and fraction to a moment", "Abseil"),
};

}
