#include <time/read.h>
#include <time/time_varnel.h>

#include "inputs.h"

namespace {

const column<ka_time_and_date>& moments()
{
    static const auto made = made_column([](std::size_t i) {
        ka_time_and_date moment(ka_time_period(inputs().early[i], inputs().microseconds[i]));
        moment.time_zone(ka_time_zone::pacific());
        return moment;
    });
    return made;
}

auto with_microseconds()
{
    const auto& in = moments();
    return [&in](std::size_t i) { return in[i].to_string("%Y-%m-%d %H:%M:%S.%q"); };
}

auto with_names()
{
    const auto& in = moments();
    return [&in](std::size_t i) { return in[i].to_string("%A, %d %B %Y %I:%M:%S %p"); };
}

const ka_pattern& short_pattern()
{
    static const ka_pattern pattern("%Y-%m-%d %H:%M:%S.%q");
    return pattern;
}

const ka_pattern& long_pattern()
{
    static const ka_pattern pattern("%A, %d %B %Y %I:%M:%S %p");
    return pattern;
}

/// Into a buffer, of which the end is kept.
template <const ka_pattern& (*Pattern)()>
auto by_pattern()
{
    const auto& in = moments();
    return [&in](std::size_t i) {
        char room[64];
        return Pattern().to_chars(room, room + sizeof room, in[i]).ptr - room;
    };
}

/// 19 characters, in universal time.
auto read_by_pattern()
{
    static const ka_pattern pattern("%Y-%m-%dT%H:%M:%S");
    static const auto in = made_column([](std::size_t i) {
        ka_time_and_date moment = moments()[i];
        moment.time_zone(ka_time_zone::utc());
        return pattern.to_string(moment);
    });
    return [](std::size_t i) { return *ka_read_time_and_date(in[i], pattern, ka_time_zone::utc()); };
}

auto date_text()
{
    static const auto in = made_column([](std::size_t i) { return moments()[i].date(); });
    return [](std::size_t i) { return in[i].to_string("%m/%d/%Y"); };
}

/// Of whole seconds, the most that the peers can print.
auto clock_text()
{
    static const auto in = made_column([](std::size_t i) {
        const ka_time time = moments()[i].time();
        return ka_time(time.hours(), time.minutes(), time.seconds());
    });
    return [](std::size_t i) { return in[i].to_string(); };
}

}

std::vector<operation> text_operations()
{
    return {
        {"moment to date, time, microseconds", run_all<with_microseconds>, 0.22, 650,
         result_of<with_microseconds>},
        {"moment to a long text with names", run_all<with_names>, 0.33, 800, result_of<with_names>},
        {"the first by a pattern, into a buffer", run_all<by_pattern<short_pattern>>, 0.14, 411},
        {"the second by a pattern, into a buffer", run_all<by_pattern<long_pattern>>, 0.25, 528},
        {"19 characters read by a pattern", run_all<read_by_pattern>, 0.7, 0},
        {"ka_date::to_string, %m/%d/%Y", run_all<date_text>, 0.3, 300, result_of<date_text>},
        {"ka_time::to_string", run_all<clock_text>, 0.3, 300, result_of<clock_text>},
    };
}
