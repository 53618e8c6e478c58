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
        cctz::load_time_zone("America/Los_Angeles", &made);
        return made;
    }();
    return zone;
}

column<moment> moments(const column<long long>& seconds)
{
    return made_column([&](std::size_t i) { return moment(cctz::seconds(seconds[i])); });
}

void read_all(const column<moment>& in)
{
    const cctz::time_zone zone = pacific();
    for_each_input([&](std::size_t i) { return zone.lookup(in[i]); });
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

column<cctz::civil_second> local_times(const column<long long>& seconds)
{
    return made_column(
        [&](std::size_t i) { return cctz::convert(moment(cctz::seconds(seconds[i])), pacific()); });
}

void set_all(const column<cctz::civil_second>& in)
{
    const cctz::time_zone zone = pacific();
    for_each_input([&](std::size_t i) { return cctz::convert(in[i], zone); });
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

const column<fine_moment>& fine_moments()
{
    static const auto made = made_column([](std::size_t i) {
        return fine_moment(std::chrono::microseconds(inputs().early[i] * 1000000 + inputs().microseconds[i]));
    });
    return made;
}

void print_all(const char* format)
{
    const auto& in = fine_moments();
    const cctz::time_zone zone = pacific();
    const std::string text = format;
    for_each_input([&](std::size_t i) { return cctz::format(text, in[i], zone); });
}

void with_microseconds() { print_all("%Y-%m-%d %H:%M:%E6S"); }
void with_names() { print_all("%A, %d %B %Y, %H:%M:%S (%a, %b)"); }

const peers rows = {
    {"operator tm, 1970 to 2037", "cctz", read_early},
    {"time(), date(), is_dst(), 1970 to 2037", "cctz", read_early},
    {"operator tm, 2040 to 2100", "cctz", read_late},
    {"operator tm, one day in ascending order", "cctz", read_one_day},
    {"local to universal, 1970 to 2037", "cctz", set_early},
    {"local to universal, 2040 to 2100", "cctz", set_late},
    {"moment to date, time, microseconds", "cctz", with_microseconds},
    {"moment to a long text with names", "cctz", with_names},
};

}
