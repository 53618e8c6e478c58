#include <time/zone_rule.h>

#include <ostream>

#include "rule_check.h"

namespace {

/// The last year in which every month has a day after it to count back from.
constexpr short last_regular_year = 32765;

/// Whether a point has a date in every year up to that one.
bool is_in_every_year(const ka_calendar_date& point)
{
    if (point.week() == ka_none)
        return point.day() >= 1 && point.day() <= 28;
    return ka_next_to_last <= point.week() && point.week() <= ka_fourth;
}

bool is_before(const ka_date& date, const ka_time& time, const ka_date& point_date,
               const ka_calendar_date& point)
{
    return date != point_date ? date < point_date : time < point.time();
}

}

bool is_within_points(const ka_time_zone_rule& rule, const ka_time& time, const ka_date& date, short year,
                      unsigned short month)
{
    const ka_calendar_date& start = rule.start_point();
    const ka_calendar_date& end = rule.end_point();

    // With points in two months, the date of a point matters in its own month
    // alone. A point that may lack its day has to be asked all the same.
    if (start.month() != end.month() && is_in_every_year(start) && is_in_every_year(end) &&
        ka_date::is_year(year) && year <= last_regular_year) {
        if (month == start.month())
            return !is_before(date, time, start.date(year), start);
        if (month == end.month())
            return is_before(date, time, end.date(year), end);
        const bool is_after_start = start.month() < month;
        const bool is_before_end = month < end.month();
        return end.month() < start.month() ? is_after_start || is_before_end
                                           : is_after_start && is_before_end;
    }

    const ka_date start_date = start.date(year);
    const ka_date end_date = end.date(year);
    const bool is_after_start = !is_before(date, time, start_date, start);
    const bool is_before_end = is_before(date, time, end_date, end);
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
    unsigned short month = 0;
    short year = 0;
    ka_date::calc_calendar_date(date.julian_day(), &month, nullptr, &year);
    return covers(*this, year) && is_within_points(*this, time, date, year, month);
}
