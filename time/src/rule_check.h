#pragma once

#include <time/date.h>
#include <time/time_of_day.h>
#include <time/zone_rule.h>

/// A date beside what every rule asks of it, worked out once for all rules.
struct dated {
    explicit dated(const ka_date& on) noexcept : date(on)
    {
        ka_date::calc_calendar_date(on.julian_day(), &month, nullptr, &year);
    }

    ka_date date;
    unsigned short month = 0;
    short year = 0;
};

/// `ka_simple_time_zone_rule::is_in_effect`. Nothing is kept between two calls,
/// since a rule and its points can change at any time.
bool is_simple_rule_in_effect(const ka_time_zone_rule& rule, const ka_time& time, const dated& on);
