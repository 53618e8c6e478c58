#pragma once

#include <time/calendar.h>
#include <time/zone_rule.h>

#include "../access.h"

// Simple rules: those of the library's own kind, looked up in a fast path. It is
// compiled into each reading of a moment. Nothing is kept between two lookups,
// since a rule and its points can change at any time.

namespace rules {

/// Whether a rule is of the library's own kind, and not of one derived from it.
bool is_simple(const ka_time_zone_rule& rule) noexcept;

/// Whether a year is one of the rule's. Both ends of the span belong to it.
inline bool covers(const ka_time_zone_rule& rule, int year) noexcept
{
    return rule.start_year() <= year && (year <= rule.end_year() || rule.is_open_ended());
}

/// `ka_simple_time_zone_rule::is_in_effect` in a year that the rule covers: the
/// definition, for points of any kind.
bool is_within_points(const ka_time_zone_rule& rule, const ka_time& time, const ka_date& date, short year);

/// Whether a time on a date of a regular year comes before a point that is a
/// weekday of every month.
bool is_before_weekday(const ka_calendar_date& point, const ka_time& time, const ka_date& date,
                       int year) noexcept;

/// All years but the very last, after whose December there is no day to count
/// back from.
inline bool is_regular_year(int year) noexcept { return -4713 <= year && year <= 32765; }

/// Whether every month of a regular year has such a weekday.
inline bool is_in_every_month(ka_which_one week) noexcept
{
    return ka_next_to_last <= week && week <= ka_fourth && week != ka_none;
}

/// Whether a month lies between two others that differ from it and from each
/// other. Where the start comes first in the year, both of the first two
/// comparisons hold in between, and one alone outside; where the end comes
/// first, it is one alone in between, round New Year.
inline bool is_between_months(unsigned int start, unsigned int month, unsigned int end) noexcept
{
    return (start < month) ^ (month < end) ^ (start < end);
}

/// Whether a rule that covers the year of a date is in effect. Between weekdays
/// of two months a date matters in the two months alone; a point that may lack
/// its day has to be asked all the same.
[[gnu::always_inline]] inline bool is_in_effect(const ka_time_zone_rule& rule, const ka_time& time,
                                                const ka_date& date, int year, unsigned int month)
{
    const ka_calendar_date& start = rule.start_point();
    const ka_calendar_date& end = rule.end_point();
    const unsigned int start_month = start.month();
    const unsigned int end_month = end.month();
    if (start_month == end_month || !is_regular_year(year) || !is_in_every_month(start.week()) ||
        !is_in_every_month(end.week())) [[unlikely]]
        return is_within_points(rule, time, date, static_cast<short>(year));
    if (month == start_month)
        return !is_before_weekday(start, time, date, year);
    if (month == end_month)
        return is_before_weekday(end, time, date, year);
    return is_between_months(start_month, month, end_month);
}

/// The rule in effect in a zone of simple rules, or null; `year` and `month` are
/// those of the date.
[[gnu::always_inline]] inline const ka_time_zone_rule*
find_simple(const ka_time_zone& zone, const ka_time& time, const ka_date& date, int year, unsigned int month)
{
    const ka_time_zone_rule* const* const first = ka_access::rules(zone);
    const ka_time_zone_rule* const* const end = first + ka_access::rule_count(zone);
    for (const ka_time_zone_rule* const* slot = first; slot != end; ++slot) {
        const ka_time_zone_rule& asked = **slot;
        if (covers(asked, static_cast<short>(year)) && is_in_effect(asked, time, date, year, month))
            return &asked;
    }
    return nullptr;
}

}
