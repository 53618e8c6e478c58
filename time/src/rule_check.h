#pragma once

#include <time/calendar.h>
#include <time/date.h>
#include <time/time_of_day.h>
#include <time/zone_rule.h>

/// How the library's own kind of rule is tested. Nothing is kept between two
/// tests, since a rule and its points can change at any time.
struct ka_rule_check {
    /// Whether a rule is of the library's own kind, and not of one derived from it.
    static bool is_simple(const ka_time_zone_rule& rule) noexcept;

    /// Whether a year is one of the rule's. Both ends of the span belong to it.
    static bool covers(const ka_time_zone_rule& rule, short year) noexcept
    {
        return rule.start_year() <= year && (year <= rule.end_year() || rule.is_open_ended());
    }

    /// All years but the very last, after whose December there is no day to
    /// count back from.
    static bool is_regular_year(int year) noexcept { return -4713 <= year && year <= 32765; }

    /// Whether every month of a regular year has such a weekday.
    static bool is_in_every_month(ka_which_one week) noexcept
    {
        return ka_next_to_last <= week && week <= ka_fourth && week != ka_none;
    }

    /// Whether a month lies between two others that differ from it and from
    /// each other. Where the start comes first in the year, both of the first
    /// two comparisons hold in between, and one alone outside; where the end
    /// comes first, it is one alone in between, round New Year.
    static bool is_between_months(unsigned int start, unsigned int month, unsigned int end) noexcept
    {
        return (start < month) ^ (month < end) ^ (start < end);
    }

    /// `ka_simple_time_zone_rule::is_in_effect` in a year that the rule covers.
    static bool is_within_points(const ka_time_zone_rule& rule, const ka_time& time, const ka_date& date,
                                 short year);

    /// Whether a time on a date of a regular year comes before a point that is
    /// a weekday of every month.
    static bool is_before_point(const ka_calendar_date& point, const ka_time& time, const ka_date& date,
                                int year) noexcept;

private:
    static bool is_before(const ka_time& time, const ka_date& date, const ka_calendar_date& point,
                          const ka_date& point_date) noexcept;
};
