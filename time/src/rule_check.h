#pragma once

#include <time/date.h>
#include <time/time_of_day.h>
#include <time/zone_rule.h>

/// Whether a year is one of the rule's. Both ends of the span belong to it.
inline bool covers(const ka_time_zone_rule& rule, short year) noexcept
{
    return rule.start_year() <= year && (rule.is_open_ended() || year <= rule.end_year());
}

/// `ka_simple_time_zone_rule::is_in_effect` in a year that the rule covers.
/// Year and month are those of the date, which one caller works out for many
/// rules. Nothing is kept between two calls, since a rule and its points can
/// change at any time.
bool is_within_points(const ka_time_zone_rule& rule, const ka_time& time, const ka_date& date, short year,
                      unsigned short month);
