#pragma once

#include "../rules/effect.h"
#include "standard_clock.h"

// The way from a local time and date to an instant. A zone is asked on the clock
// that is handed in.

namespace clocks {

/// A universal time and date as an instant.
[[gnu::always_inline]] inline ka_time_period universal_instant(const ka_time& time,
                                                               const ka_date& date) noexcept
{
    const long long midnight = date.julian_day() * seconds_per_day;
    if (midnight >= 0) [[likely]]
        return ka_access::period(midnight + ka_access::second_of_day(time),
                                 static_cast<int>(time.microseconds()));
    return ka_time_period(midnight) + time;
}

/// Turns a universal instant into one whose time and date are those of the zone.
bool set_by_rules(ka_time_period& instant, const ka_time& time, const ka_date& date,
                  const ka_time_zone& zone);

/// Sets an instant from a local time and date; where a rule fails, they are taken
/// as universal. Returns whether it can read otherwise: with no rule in effect
/// the standard clock shows what was set, and to ask again would be to ask the
/// same. A table can tell the two clocks apart.
[[gnu::always_inline]] inline bool set_local(ka_time_period& instant, const ka_time& time,
                                             const ka_date& date, const ka_time_zone& zone)
{
    instant = universal_instant(time, date);
    if (ka_access::kind(zone) == rules::zone_kind::table) [[likely]] {
        const long long local = instant.whole_seconds();
        if (is_well_in_range(local)) [[likely]] {
            const int adjustment = rules::kind_at<rules::clock::local>(zone, local).adjustment;
            instant =
                ka_access::period(wrapping_sum(local, ka_access::offset(zone).whole_seconds()) - adjustment,
                                  instant.microseconds());
            return true;
        }
    }
    return set_by_rules(instant, time, date, zone);
}

}
