#include <time/time_varnel.h>

#include "inputs.h"

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

column<clock_reading> local_times(const column<ka_time_and_date>& moments)
{
    return made_column([&](std::size_t i) {
        return clock_reading{moments[i].time(), moments[i].date(), moments[i].is_dst()};
    });
}

void read_all(const column<ka_time_and_date>& in)
{
    for_each_input([&](std::size_t i) { return static_cast<std::tm>(in[i]); });
}

void set_all(const column<clock_reading>& in)
{
    ka_time_and_date moment;
    moment.time_zone(ka_time_zone::pacific());
    for_each_input([&](std::size_t i) {
        moment.time_and_date(in[i].time, in[i].date);
        return moment;
    });
}

void read_early() { read_all(early()); }
void read_late() { read_all(late()); }
void read_one_day() { read_all(one_day()); }

void three_readings()
{
    const auto& in = early();
    for_each_input([&](std::size_t i) { return clock_reading{in[i].time(), in[i].date(), in[i].is_dst()}; });
}

void set_early()
{
    static const auto in = local_times(early());
    set_all(in);
}

void set_late()
{
    static const auto in = local_times(late());
    set_all(in);
}

void now()
{
    for_each_input([](std::size_t) { return ka_time_and_date::now(); });
}

}

std::vector<operation> zone_operations()
{
    return {
        {"operator tm, 1970 to 2037", read_early, 0.35, 260},
        {"time(), date(), is_dst(), 1970 to 2037", three_readings, 0.6, 500},
        {"operator tm, 2040 to 2100", read_late, 0.25, 240},
        {"operator tm, one day in ascending order", read_one_day, 0.6, 240},
        {"local to universal, 1970 to 2037", set_early, 0.4, 270},
        {"local to universal, 2040 to 2100", set_late, 0.3, 250},
        {"ka_time_and_date::now()", now, 1.3, 0},
    };
}
