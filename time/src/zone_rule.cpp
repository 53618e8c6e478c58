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

bool is_simple_rule_in_effect(const ka_time_zone_rule& rule, const ka_time& time, const dated& on)
{
    if (on.year < rule.start_year())
        return false;
    if (!rule.is_open_ended() && rule.end_year() < on.year)
        return false;

    const ka_calendar_date& start = rule.start_point();
    const ka_calendar_date& end = rule.end_point();
    const bool spans_new_year_by_month = end.month() < start.month();

    // Two points in different months need no date, but for the one whose month
    // it is. A point that may lack its day has to be asked all the same.
    const bool asks_no_day = start.month() != end.month() && is_in_every_year(start) &&
                             is_in_every_year(end) && ka_date::is_year(on.year) &&
                             on.year <= last_regular_year;
    if (asks_no_day && on.month != start.month() && on.month != end.month()) {
        const bool after_start = start.month() < on.month;
        const bool before_end = on.month < end.month();
        return spans_new_year_by_month ? after_start || before_end : after_start && before_end;
    }
    if (asks_no_day && on.month == start.month())
        return !is_before(on.date, time, start.date(on.year), start);
    if (asks_no_day)
        return is_before(on.date, time, end.date(on.year), end);

    const ka_date start_date = start.date(on.year);
    const ka_date end_date = end.date(on.year);
    const bool after_start = !is_before(on.date, time, start_date, start);
    const bool before_end = is_before(on.date, time, end_date, end);
    return end_date < start_date ? after_start || before_end : after_start && before_end;
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
    return is_simple_rule_in_effect(*this, time, dated(date));
}
