#include <time/time_varnel.h>

#include <cstdio>

#include "inputs.h"

std::string reading_text(long long year, int month, int day, int hour, int minute, int second, bool is_dst)
{
    char out[80];
    std::snprintf(out, sizeof out, "%lld-%d-%d %d:%d:%d %d", year, month, day, hour, minute, second, is_dst);
    return out;
}

std::string fields_text(const std::tm& fields)
{
    return reading_text(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday, fields.tm_hour,
                        fields.tm_min, fields.tm_sec, fields.tm_isdst > 0);
}

namespace {

column<ka_time_and_date> moments(const column<long long>& seconds)
{
    return made_column([&](std::size_t i) {
        ka_time_and_date moment(seconds[i]);
        moment.time_zone(ka_time_zone::pacific());
        return moment;
    });
}

const column<ka_time_and_date>& early()
{
    static const auto made = moments(inputs().early);
    return made;
}

const column<ka_time_and_date>& late()
{
    static const auto made = moments(inputs().late);
    return made;
}

const column<ka_time_and_date>& one_day()
{
    static const auto made = moments(inputs().one_day);
    return made;
}

struct clock_reading {
    ka_time time;
    ka_date date;
    bool is_dst;
};

std::string shown(const clock_reading& reading)
{
    const auto& [time, date, is_dst] = reading;
    return reading_text(date.year(), date.month(), date.day(), time.hours(), time.minutes(), time.seconds(),
                        is_dst);
}

std::string second_shown(const ka_time_and_date& moment)
{
    const timeval instant = moment - ka_time_and_date(0);
    return std::to_string(instant.tv_sec);
}

column<clock_reading> local_times(const column<ka_time_and_date>& moments)
{
    return made_column([&](std::size_t i) {
        return clock_reading{moments[i].time(), moments[i].date(), moments[i].is_dst()};
    });
}

auto reading(const column<ka_time_and_date>& in)
{
    return [&in](std::size_t i) { return static_cast<std::tm>(in[i]); };
}

auto read_early() { return reading(early()); }
auto read_late() { return reading(late()); }
auto read_one_day() { return reading(one_day()); }

auto three_readings()
{
    const auto& in = early();
    return [&in](std::size_t i) { return clock_reading{in[i].time(), in[i].date(), in[i].is_dst()}; };
}

auto setting(const column<clock_reading>& in)
{
    ka_time_and_date moment;
    moment.time_zone(ka_time_zone::pacific());
    return [&in, moment](std::size_t i) mutable {
        moment.time_and_date(in[i].time, in[i].date);
        return moment;
    };
}

auto set_early()
{
    static const auto in = local_times(early());
    return setting(in);
}

auto set_late()
{
    static const auto in = local_times(late());
    return setting(in);
}

void now()
{
    for_each_input([](std::size_t) { return ka_time_and_date::now(); });
}

}

std::vector<operation> zone_operations()
{
    return {
        {"operator tm, 1970 to 2037", run_all<read_early>, 0.35, 260, result_of<read_early, fields_text>},
        {"time(), date(), is_dst(), 1970 to 2037", run_all<three_readings>, 0.6, 500,
         result_of<three_readings, shown>},
        {"operator tm, 2040 to 2100", run_all<read_late>, 0.25, 240, result_of<read_late, fields_text>},
        {"operator tm, one day in ascending order", run_all<read_one_day>, 0.6, 240,
         result_of<read_one_day, fields_text>},
        {"local to universal, 1970 to 2037", run_all<set_early>, 0.4, 270,
         result_of<set_early, second_shown>},
        {"local to universal, 2040 to 2100", run_all<set_late>, 0.3, 250, result_of<set_late, second_shown>},
        {"ka_time_and_date::now()", now, 1.3, 0},
    };
}
