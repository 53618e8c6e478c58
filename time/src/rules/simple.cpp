#include "simple.h"

#include <cstring>

namespace rules {

namespace {

/// The date of a point that is a weekday of every month, in a regular year.
[[gnu::noinline]] ka_date weekday_in(const ka_calendar_date& point, int year) noexcept
{
    const int counted = ka_gregorian::to_astronomical(year);
    const int first = ka_gregorian::day_number(point.month(), 1, counted);
    const int end = first + ka_gregorian::month_length(point.month(), ka_gregorian::is_leap(counted));
    return ka_access::date(ka_gregorian::nth_weekday(first, end, point.week(), point.weekday()));
}

/// The date of any point in a year. One that every regular year has is found
/// without a check.
[[gnu::always_inline]] inline ka_date date_in(const ka_calendar_date& point, int year)
{
    if (is_regular_year(year)) {
        if (is_in_every_month(point.week()))
            return weekday_in(point, year);
        const int day = point.day();
        if (point.week() == ka_none && 1 <= day && day <= ka_gregorian::shortest_month)
            return ka_access::date(
                ka_gregorian::day_number(point.month(), day, ka_gregorian::to_astronomical(year)));
    }
    return point.date(year);
}

bool is_before(const ka_time& time, const ka_date& date, const ka_calendar_date& point,
               const ka_date& point_date) noexcept
{
    return date != point_date ? date < point_date : time < point.time();
}

/// The definition, for points of any kind.
[[gnu::always_inline]] inline bool is_between_points(const ka_time_zone_rule& rule, const ka_time& time,
                                                     const ka_date& date, int year)
{
    const ka_calendar_date& start = rule.start_point();
    const ka_calendar_date& end = rule.end_point();
    const ka_date start_date = date_in(start, year);
    const ka_date end_date = date_in(end, year);
    const bool is_after_start = !is_before(time, date, start, start_date);
    const bool is_before_end = is_before(time, date, end, end_date);
    return end_date < start_date ? is_after_start || is_before_end : is_after_start && is_before_end;
}

/// Whether a rule that covers the year of a date is in effect.
bool is_in_effect(const ka_time_zone_rule& rule, const ka_time& time, const ka_date& date,
                  month_of_year asked)
{
    const ka_calendar_date& start = rule.start_point();
    const ka_calendar_date& end = rule.end_point();
    if (start.month() == end.month() || !is_regular_year(asked.year) || !is_in_every_month(start.week()) ||
        !is_in_every_month(end.week()))
        return is_between_points(rule, time, date, asked.year);
    if (asked.month == start.month())
        return !is_before(time, date, start, weekday_in(start, asked.year));
    if (asked.month == end.month())
        return is_before(time, date, end, weekday_in(end, asked.year));
    return is_between_months(start.month(), asked.month, end.month());
}

}

bool is_simple(const ka_time_zone_rule& rule) noexcept
{
    // Its table of virtual operations tells, which stands first. A host that is
    // built without type information gives its rules no other sign of their kind.
    const ka_simple_time_zone_rule simple(rule.start_point(), rule.end_point(), 0, 0);
    return std::memcmp(static_cast<const void*>(&rule), static_cast<const void*>(&simple), sizeof(void*)) ==
           0;
}

bool is_within_points(const ka_time_zone_rule& rule, const ka_time& time, const ka_date& date, short year)
{
    return is_between_points(rule, time, date, year);
}

const ka_time_zone_rule* find_by_date(const ka_time_zone_rule* const* slot,
                                      const ka_time_zone_rule* const* end, ka_time time, ka_date date,
                                      month_of_year asked)
{
    for (; slot != end; ++slot)
        if (covers(**slot, static_cast<short>(asked.year)) && is_in_effect(**slot, time, date, asked))
            return *slot;
    return nullptr;
}

}
