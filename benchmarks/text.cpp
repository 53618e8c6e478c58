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

/// A text in a buffer.
struct text_in_room {
    std::array<char, 64> room;
    std::ptrdiff_t size;
};

std::string text_shown(const text_in_room& text)
{
    return std::string(text.room.data(), static_cast<std::size_t>(text.size));
}

template <const ka_pattern& (*Pattern)()>
auto by_pattern()
{
    const auto& in = moments();
    return [&in](std::size_t i) {
        text_in_room text;
        text.size = Pattern().to_chars(text.room.begin(), text.room.end(), in[i]).ptr - text.room.begin();
        return text;
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

std::string second_shown(const ka_time_and_date& moment)
{
    return std::to_string((moment - ka_time_and_date(0)).whole_seconds());
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
    using enum difference;
    return {
        row<with_microseconds>("moment to date, time, microseconds", {{0.19}}, 620, zones),
        row<with_names>("moment to a long text with names", {{0.35}}, 800, zones),
        row<by_pattern<short_pattern>, text_shown>("the first by a pattern, into a buffer", {{0.14}}, 411,
                                                   zones),
        row<by_pattern<long_pattern>, text_shown>("the second by a pattern, into a buffer", {{0.25}}, 528,
                                                  zones),
        row<read_by_pattern, second_shown>("19 characters read by a pattern", {{0.7}}),
        row<date_text>("ka_date::to_string, %m/%d/%Y", {{0.3}}, 300, zones),
        row<clock_text>("ka_time::to_string", {{0.3}}, 300, zones),
    };
}
