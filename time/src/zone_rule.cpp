#include <time/zone_rule.h>

#include <cstring>
#include <ostream>

#include "rule_check.h"

inline bool ka_rule_check::is_before(const ka_time& time, const ka_date& date, const ka_calendar_date& point,
                                     const ka_date& point_date) noexcept
{
    return date != point_date ? date < point_date : time < point.time();
}

bool ka_rule_check::is_simple(const ka_time_zone_rule& rule) noexcept
{
    // Its table of virtual operations tells, which stands first. A host that is
    // built without type information gives its rules no other sign of their kind.
    const ka_simple_time_zone_rule simple(rule.start_point(), rule.end_point(), 0, 0);
    return std::memcmp(static_cast<const void*>(&rule), static_cast<const void*>(&simple), sizeof(void*)) ==
           0;
}

bool ka_rule_check::is_before_point(const ka_calendar_date& point, const ka_time& time, const ka_date& date,
                                    int year) noexcept
{
    const unsigned short month = point.month();
    const int first = ka_date::day_number(month, 1, ka_date::astronomical(year));
    const int end = first + ka_date::month_length(month, static_cast<short>(year));
    const int found = ka_date::nth_weekday_between(first, end, point.week(), point.weekday());
    return is_before(time, date, point, ka_date::unchecked(found));
}

bool ka_rule_check::is_within_points(const ka_time_zone_rule& rule, const ka_time& time, const ka_date& date,
                                     short year)
{
    const ka_calendar_date& start = rule.start_point();
    const ka_calendar_date& end = rule.end_point();
    const ka_date start_date = start.date(year);
    const ka_date end_date = end.date(year);
    const bool is_after_start = !is_before(time, date, start, start_date);
    const bool is_before_end = is_before(time, date, end, end_date);
    return end_date < start_date ? is_after_start || is_before_end : is_after_start && is_before_end;
}

ka_time_zone_rule::ka_time_zone_rule(const ka_calendar_date& start, const ka_calendar_date& end,
                                     short start_year, short end_year,
                                     const ka_time_period& adjustment) noexcept
    : start_point_(&start), end_point_(&end), start_year_(start_year), end_year_(end_year),
      adjustment_(adjustment)
{}

ka_time_zone_rule::~ka_time_zone_rule() = default;

void ka_time_zone_rule::print(std::ostream& stream) const { stream << "ka_time_zone_rule()"; }

ka_simple_time_zone_rule::ka_simple_time_zone_rule(const ka_calendar_date& start, const ka_calendar_date& end,
                                                   short start_year, short end_year) noexcept
    : ka_simple_time_zone_rule(start, end, start_year, end_year, ka_time_period(3600))
{}

ka_simple_time_zone_rule::ka_simple_time_zone_rule(const ka_calendar_date& start, const ka_calendar_date& end,
                                                   short start_year, short end_year,
                                                   const ka_time_period& adjustment) noexcept
    : ka_time_zone_rule(start, end, start_year, end_year, adjustment)
{}

ka_simple_time_zone_rule::~ka_simple_time_zone_rule() = default;

bool ka_simple_time_zone_rule::is_in_effect(const ka_time& time, const ka_date& date) const
{
    const short year = date.year();
    return ka_rule_check::covers(*this, year) && ka_rule_check::is_within_points(*this, time, date, year);
}
