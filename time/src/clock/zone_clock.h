#pragma once

#include <time/timedate.h>
#include <time/zone.h>

#include "../rules/effect.h"

// A zone as its standard clock shows it: universal time less the zone's offset.
// On this clock the rules are asked when a moment is read, and local time is
// what it shows and the adjustment of the rule in effect. Times of either clock
// are periods from midnight of day number 0.

namespace zone_clock {

inline constexpr ka_time_period microsecond(0, 1);

/// The ends of the range of dates.
inline constexpr ka_time_period first_time(38 * 86400ll);
inline constexpr ka_time_period last_time(13688960 * 86400ll + 86399, 999999);

constexpr bool is_in_range(const ka_time_period& time) { return first_time <= time && time <= last_time; }

constexpr ka_time_period midnight_of(const ka_date& date)
{
    return ka_time_period(date.julian_day() * 86400ll);
}

/// Hands over each rule that a zone holds.
template <typename Use>
void for_each_rule(const ka_time_zone& zone, Use use)
{
    for (int slot = 0; slot < ka_access::rule_count(zone); ++slot)
        use(*ka_access::rules(zone)[slot]);
}

/// The table of a zone that goes by one and has the times of its changes, or null.
inline const rules::table* table_with_times(const ka_time_zone& zone) noexcept
{
    if (ka_access::kind(zone) != rules::zone_kind::table || ka_access::changes(zone).kind_of == nullptr)
        return nullptr;
    return &ka_access::changes(zone);
}

/// Hands over each adjustment that a zone can have, but for that of zero.
template <typename Use>
void for_each_adjustment(const ka_time_zone& zone, Use use)
{
    const rules::table* const table = table_with_times(zone);
    if (table == nullptr)
        return for_each_rule(zone, [&](const ka_time_zone_rule& rule) { use(rule.adjustment()); });
    for (std::size_t kind = 0; kind < table->kind_count; ++kind)
        use(ka_time_period(table->kinds[kind].adjustment));
}

/// How far the local clock is ahead. The one place that asks it.
inline ka_time_period adjustment_at(const ka_time_zone& zone, const ka_time_period& time)
{
    return rules::effect_at<rules::clock::standard>(zone, ka_time(time), ka_access::date_of(time)).adjustment;
}

inline ka_time_and_date moment_of(const ka_time_zone& zone, const ka_time_period& time)
{
    ka_time_and_date moment;
    moment.time_zone(zone);
    moment.utc_time_and_date(time + zone.offset());
    return moment;
}

/// A change, and the adjustments on its two sides.
struct change {
    ka_time_period at;
    ka_time_period before;
    ka_time_period after;
};

inline change change_at(const ka_time_zone& zone, const ka_time_period& time)
{
    return {time, adjustment_at(zone, time - microsecond), adjustment_at(zone, time)};
}

/// The first time for which `is_after` holds, between one for which it does not
/// and one for which it does.
template <typename IsAfter>
ka_time_period bisected(ka_time_period low, ka_time_period high, IsAfter is_after)
{
    while (high - low > microsecond) {
        const ka_time_period middle = low + (high - low) / 2;
        (is_after(middle) ? high : low) = middle;
    }
    return high;
}

}
