#include <time/zone_rule.h>

#include <ostream>

#include "rules/simple.h"

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
    return rules::covers(*this, year) && rules::is_within_points(*this, time, date, year);
}
