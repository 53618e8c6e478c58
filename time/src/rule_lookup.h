#pragma once

#include <time/zone.h>

#include "rule_check.h"

// The way from a time on a date to the rule in effect. Each reading of a moment
// goes it, so its short part is compiled into each: between weekdays of two
// months a date matters in the two months alone. A point that may lack its day
// has to be asked all the same.

[[gnu::always_inline]] inline const ka_time_zone_rule*
ka_time_zone::rule_in_month(const ka_time& time, const ka_date& date, int year, unsigned int month) const
{
    if (!all_simple_) [[unlikely]]
        return rule_by_asking(time, date);
    const ka_time_zone_rule* const* const end = rules_ + count_;
    for (const ka_time_zone_rule* const* slot = rules_; slot != end; ++slot) {
        const ka_time_zone_rule& asked = **slot;
        if (!ka_rule_check::covers(asked, static_cast<short>(year)))
            continue;
        const ka_calendar_date& start_point = asked.start_point();
        const ka_calendar_date& end_point = asked.end_point();
        const unsigned int start_month = start_point.month();
        const unsigned int end_month = end_point.month();
        bool is_within = false;
        if (start_month == end_month || !ka_rule_check::is_regular_year(year) ||
            !ka_rule_check::is_in_every_month(start_point.week()) ||
            !ka_rule_check::is_in_every_month(end_point.week())) [[unlikely]]
            is_within = ka_rule_check::is_within_points(asked, time, date, static_cast<short>(year));
        else if (month == start_month)
            is_within = !ka_rule_check::is_before_point(start_point, time, date, year);
        else if (month == end_month)
            is_within = ka_rule_check::is_before_point(end_point, time, date, year);
        else
            is_within = ka_rule_check::is_between_months(start_month, month, end_month);
        if (is_within)
            return &asked;
    }
    return nullptr;
}

[[gnu::always_inline]] inline const ka_time_zone_rule* ka_time_zone::rule_at(const ka_time& time,
                                                                             const ka_date& date) const
{
    if (count_ == 0)
        return nullptr;
    const ka_date::parts day = ka_date::split(date.julian_day());
    return rule_in_month(time, date, day.year, day.month);
}
