#include <time/time_varnel.h>

#include "inputs.h"

namespace {

column<ka_time_and_date> moments(const column<long long>& seconds,
                                 const ka_time_zone& zone = ka_time_zone::pacific())
{
    return made_column([&](std::size_t i) {
        ka_time_and_date moment(seconds[i]);
        moment.time_zone(zone);
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

auto three_readings(const column<ka_time_and_date>& in)
{
    return [&in](std::size_t i) { return clock_reading{in[i].time(), in[i].date(), in[i].is_dst()}; };
}

auto ask_early() { return three_readings(early()); }

auto setting(const column<clock_reading>& in, const ka_time_zone& zone = ka_time_zone::pacific())
{
    ka_time_and_date moment;
    moment.time_zone(zone);
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

auto now()
{
    return [](std::size_t) { return ka_time_and_date::now(); };
}

/// A zone of a program's own: the rule of pacific() since 2007.
const ka_time_zone& own_zone()
{
    static const ka_calendar_date start(ka_time_period(7200), 3, ka_second, 1);
    static const ka_calendar_date end(ka_time_period(3600), 11, ka_first, 1);
    static ka_simple_time_zone_rule rule(start, end, 2007, 0);
    static ka_time_zone zone(ka_time_period(8 * 3600), "PST", "PDT");
    static const bool is_inserted = zone.insert(rule);
    (void)is_inserted;
    return zone;
}

const column<ka_time_and_date>& in_own_zone()
{
    static const auto made = moments(inputs().late, own_zone());
    return made;
}

auto read_own() { return reading(in_own_zone()); }
auto ask_own() { return three_readings(in_own_zone()); }

auto set_own()
{
    static const auto in = local_times(in_own_zone());
    return setting(in, own_zone());
}

}

std::vector<operation> zone_operations()
{
    using enum difference;
    const std::vector<goal> early_goals = {{0.25, "cctz"}, {0.30, "Hinnant's date"}};
    return {
        row<read_early, fields_text>("operator tm, 1970 to 2037", early_goals, 143, zones),
        row<ask_early, shown>("time(), date(), is_dst(), 1970 to 2037", {{0.5, "cctz"}}, 411, zones),
        row<read_late, fields_text>("operator tm, 2040 to 2100", {{0.22, "cctz"}}, 143, zones),
        row<read_one_day, fields_text>("operator tm, one day in ascending order", {{0.42, "cctz"}}, 143,
                                       zones),
        row<set_early, second_shown>("local to universal, 1970 to 2037", {{0.35, "cctz"}}, 80, zones),
        row<set_late, second_shown>("local to universal, 2040 to 2100", {{0.28, "cctz"}}, 80, zones),
        row<read_own, fields_text>("operator tm in a zone of one's own", {}, 0, zones),
        row<ask_own, shown>("time(), date(), is_dst() in a zone of one's own", {}, 0, zones),
        row<set_own, second_shown>("local to universal in a zone of one's own", {}, 0, zones),
        row_alone<now>("ka_time_and_date::now()", {{1.2, "clock_gettime + localtime_r"}}),
    };
}
