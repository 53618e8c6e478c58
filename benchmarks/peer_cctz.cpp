#include <cctz/civil_time.h>
#include <cctz/time_zone.h>

#include <chrono>

#include "inputs.h"

namespace {

using moment = std::chrono::time_point<std::chrono::system_clock, cctz::seconds>;
using fine_moment = std::chrono::time_point<std::chrono::system_clock, std::chrono::microseconds>;

const cctz::time_zone& pacific()
{
    static const cctz::time_zone zone = [] {
        cctz::time_zone made;
        cctz::load_time_zone(pacific_name, &made);
        return made;
    }();
    return zone;
}

column<moment> moments(const column<long long>& seconds)
{
    return made_column([&](std::size_t i) { return moment(cctz::seconds(seconds[i])); });
}

std::string shown(const cctz::time_zone::absolute_lookup& reading)
{
    const auto& at = reading.cs;
    return reading_text(at.year(), at.month(), at.day(), at.hour(), at.minute(), at.second(), reading.is_dst);
}

auto reading(const column<moment>& in)
{
    return [&in, zone = pacific()](std::size_t i) { return zone.lookup(in[i]); };
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

column<cctz::civil_second> local_times(const column<long long>& seconds)
{
    return made_column(
        [&](std::size_t i) { return cctz::convert(moment(cctz::seconds(seconds[i])), pacific()); });
}

std::string second_shown(const moment& instant) { return std::to_string(instant.time_since_epoch().count()); }

auto setting(const column<cctz::civil_second>& in)
{
    return [&in, zone = pacific()](std::size_t i) { return cctz::convert(in[i], zone); };
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

const column<fine_moment>& fine_moments()
{
    static const auto made = made_column([](std::size_t i) {
        return fine_moment(std::chrono::microseconds(inputs().early[i] * 1000000 + inputs().microseconds[i]));
    });
    return made;
}

auto printing(const std::string& format)
{
    return [format, &in = fine_moments(), zone = pacific()](std::size_t i) {
        return cctz::format(format, in[i], zone);
    };
}

auto with_microseconds() { return printing("%Y-%m-%d %H:%M:%E6S"); }
auto with_names() { return printing("%A, %d %B %Y %I:%M:%S %p"); }

auto present()
{
    return [zone = pacific()](std::size_t) { return zone.lookup(std::chrono::system_clock::now()); };
}

/// Rows of a column, each for itself.
template <column<long long> plain_inputs::*Instants>
auto fields()
{
    return [&in = inputs().*Instants, zone = pacific()](std::size_t i) {
        return zone.lookup(fine_moment(std::chrono::microseconds(in[i])));
    };
}

template <column<long long> plain_inputs::*Instants>
auto offsets()
{
    return [&in = inputs().*Instants, zone = pacific()](std::size_t i) {
        return zone.lookup(fine_moment(std::chrono::microseconds(in[i]))).offset;
    };
}

auto found()
{
    return [](std::size_t i) {
        cctz::time_zone zone;
        cctz::load_time_zone(world_names[i % std::size(world_names)], &zone);
        return zone;
    };
}

/// What is loaded stays, so that each time the path is another.
auto loaded()
{
    return [](std::size_t i) {
        static std::string folder = std::string("file:") + zone_folder;
        cctz::time_zone zone;
        if (i % loads_each == 0)
            cctz::load_time_zone((folder += "/.") + '/' + loaded_name, &zone);
        return zone;
    };
}

auto read_stamp()
{
    const auto& in = stamps();
    return [&in, utc = cctz::utc_time_zone()](std::size_t i) {
        moment at;
        cctz::parse("%Y-%m-%dT%H:%M:%S", in[i], utc, &at);
        return at;
    };
}

std::string stamp_shown(const moment& at) { return std::to_string(at.time_since_epoch().count()); }

auto read_full_stamp()
{
    const auto& in = full_stamps();
    return [&in, utc = cctz::utc_time_zone()](std::size_t i) {
        fine_moment at;
        cctz::parse("%Y-%m-%dT%H:%M:%E*S%Ez", in[i], utc, &at);
        return at;
    };
}

std::string fine_shown(const fine_moment& at) { return seconds_text(at.time_since_epoch().count()); }

const peers rows = {
    beside<read_early, shown>("operator tm in a world zone, 1970 to 2037", "cctz"),
    beside<read_late, shown>("operator tm in a world zone, 2040 to 2100", "cctz"),
    beside<set_early, second_shown>("local to universal in a world zone", "cctz"),
    beside_alone<found>("a loaded zone found by its name", "cctz"),
    beside_alone<loaded>("1/256 of loading a zone", "cctz"),
    beside<read_early, shown>("operator tm, 1970 to 2037", "cctz"),
    beside<read_early, shown>("time(), date(), is_dst(), 1970 to 2037", "cctz"),
    beside<read_late, shown>("operator tm, 2040 to 2100", "cctz"),
    beside<read_one_day, shown>("operator tm, one day in ascending order", "cctz"),
    beside<set_early, second_shown>("local to universal, 1970 to 2037", "cctz"),
    beside<set_late, second_shown>("local to universal, 2040 to 2100", "cctz"),
    beside<read_late, shown>("operator tm in a zone of one's own", "cctz"),
    beside<read_late, shown>("time(), date(), is_dst() in a zone of one's own", "cctz"),
    beside<set_late, second_shown>("local to universal in a zone of one's own", "cctz"),
    beside_alone<present>("ka_time_and_date::now()", "cctz"),
    beside<offsets<&plain_inputs::instants>>("a column of offsets", "cctz"),
    beside<offsets<&plain_inputs::instants_in_order>>("a column of offsets, in order", "cctz"),
    beside<fields<&plain_inputs::instants>, shown>("a column of fields", "cctz"),
    beside<fields<&plain_inputs::instants_in_order>, shown>("a column of fields, in order", "cctz"),
    beside<set_early, second_shown>("a column of local times", "cctz"),
    beside<with_microseconds>("moment to date, time, microseconds", "cctz"),
    beside<with_names>("moment to a long text with names", "cctz"),
    beside<read_stamp, stamp_shown>("19 characters to a moment", "cctz"),
    beside<read_stamp, stamp_shown>("19 characters read by a pattern", "cctz"),
    beside<read_full_stamp, fine_shown>("RFC 3339 with offset and fraction to a moment", "cctz"),
};

}
