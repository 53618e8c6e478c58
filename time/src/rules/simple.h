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

struct month_of_year {
    int year;
    unsigned int month;
};

/// The rule in effect, or null, among those from a slot on: by the dates of their
/// points.
const ka_time_zone_rule* find_by_date(const ka_time_zone_rule* const* slot,
                                      const ka_time_zone_rule* const* end, ka_time time, ka_date date,
                                      month_of_year asked);

/// The rule in effect in a zone of simple rules, or null; `asked` is the month of
/// the date. Between weekdays of two months a date matters in the two months
/// alone; a point that may lack its day has to be asked all the same.
[[gnu::always_inline]] inline const ka_time_zone_rule*
find_simple(const ka_time_zone& zone, const ka_time& time, const ka_date& date, month_of_year asked)
{
    const ka_time_zone_rule* const* slot = ka_access::rules(zone);
    const ka_time_zone_rule* const* const end = slot + ka_access::rule_count(zone);
    if (!is_regular_year(asked.year)) [[unlikely]]
        return find_by_date(slot, end, time, date, asked);
    for (; slot != end; ++slot) {
        const ka_time_zone_rule& rule = **slot;
        if (!covers(rule, asked.year))
            continue;
        const ka_calendar_date& start = rule.start_point();
        const ka_calendar_date& stop = rule.end_point();
        if (start.month() == asked.month || stop.month() == asked.month || start.month() == stop.month() ||
            !is_in_every_month(start.week()) || !is_in_every_month(stop.week())) [[unlikely]]
            return find_by_date(slot, end, time, date, asked);
        if (is_between_months(start.month(), asked.month, stop.month()))
            return &rule;
    }
    return nullptr;
}

}
