#pragma once

#include <deque>
#include <iterator>

#include <time/time_varnel.h>

#include "input.h"

// Where a value takes more than one number, braces have each compiler take them
// in the same order.

/// A day of any year, or near a limit, the first year A.D. or the first of four digits.
inline ka_date any_date(input& in)
{
    constexpr int spans[][2] = {
        {38, 13688960}, {38, 40}, {13688958, 13688960}, {1721000, 1722000}, {2086000, 2087000}};
    const auto& span = spans[in.take<unsigned char>() % std::size(spans)];
    return in.between(span[0], span[1]);
}

inline ka_time any_time(input& in) { return ka_time_period{in.between(0, 86399), in.between(0, 999999)}; }

/// A point of the year, which not every year may have.
inline ka_calendar_date any_point(input& in)
{
    const ka_time_period when{in.one_in(4) ? 0 : in.between(0, 100000), in.between(0, 1)};
    const auto month = static_cast<unsigned short>(in.between(1, 12));
    if (in.one_in(3))
        return {when, month, static_cast<unsigned short>(in.between(1, 31))};
    const auto week = static_cast<ka_which_one>(in.one_in(8) ? in.between(-7, 7) : in.between(1, 4));
    return {when, month, week, static_cast<unsigned short>(in.between(1, 7))};
}

/// An offset or adjustment: mostly of half hours, at times of any length.
inline ka_time_period any_shift(input& in)
{
    if (in.one_in(4))
        return ka_time_period(in.between(-200000, 200000));
    if (in.one_in(4))
        return ka_time_period(in.between(0, 3), 999999);
    return ka_time_period(in.between(-2, 2) * 1800);
}

/// A zone of a host's own, with as many rules as it takes.
struct own_zone {
    explicit own_zone(input& in) : zone{any_shift(in), in.one_in(2) ? "OWN" : "UTC", "SUMMER"}
    {
        for (int count = in.between(0, 8); count > 0; --count) {
            const auto first = static_cast<short>(in.one_in(4) ? -4713 : in.between(1990, 2030));
            const auto last = static_cast<short>(in.one_in(2) ? 0 : first + in.between(0, 1));
            const ka_calendar_date& start = points.emplace_back(any_point(in));
            ka_calendar_date& end = points.emplace_back(in.one_in(4) ? start : any_point(in));
            if (in.one_in(4))
                end.when(any_point(in).when());
            ka_simple_time_zone_rule& rule = rules.emplace_back(start, end, first, last, any_shift(in));
            agree(zone.insert(rule) == (rules.size() <= 7), "insert");
        }
    }

    std::deque<ka_calendar_date> points;
    std::deque<ka_simple_time_zone_rule> rules;
    ka_time_zone zone;
};
