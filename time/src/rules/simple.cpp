#include "simple.h"

#include <cstring>

namespace rules {

namespace {

bool is_before(const ka_time& time, const ka_date& date, const ka_calendar_date& point,
               const ka_date& point_date) noexcept
{
    return date != point_date ? date < point_date : time < point.time();
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
    const ka_calendar_date& start = rule.start_point();
    const ka_calendar_date& end = rule.end_point();
    const ka_date start_date = start.date(year);
    const ka_date end_date = end.date(year);
    const bool is_after_start = !is_before(time, date, start, start_date);
    const bool is_before_end = is_before(time, date, end, end_date);
    return end_date < start_date ? is_after_start || is_before_end : is_after_start && is_before_end;
}

bool is_before_weekday(const ka_calendar_date& point, const ka_time& time, const ka_date& date,
                       int year) noexcept
{
    const int counted = ka_gregorian::to_astronomical(year);
    const int first = ka_gregorian::day_number(point.month(), 1, counted);
    const int end = first + ka_gregorian::month_length(point.month(), ka_gregorian::is_leap(counted));
    const int found = ka_gregorian::nth_weekday(first, end, point.week(), point.weekday());
    return is_before(time, date, point, ka_access::date(found));
}

}
