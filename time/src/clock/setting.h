#pragma once

#include "local_clock.h"

// The way from a local time and date to an instant. The rules are asked on the
// clock that is handed in.

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

/// Sets an instant from a local time and date; returns what the zone's rules make
/// of them. Where a rule fails, they are taken as universal.
[[gnu::always_inline]] inline rules::effect set_local(ka_time_period& instant, const ka_time& time,
                                                      const ka_date& date, const ka_time_zone& zone)
{
    instant = universal_instant(time, date);
    const rules::effect effect = rules::effect_at<rules::clock::local>(zone, time, date);
    const ka_time_period& offset = ka_access::offset(zone);
    const long long seconds =
        wrapping_difference(wrapping_sum(ka_access::seconds(instant), ka_access::seconds(offset)),
                            ka_access::seconds(effect.adjustment));
    // Whole seconds that leave the instant at or above zero carry nothing.
    if (offset.microseconds() == 0 && effect.adjustment.microseconds() == 0 && seconds >= 0 &&
        instant.microseconds() >= 0) [[likely]]
        instant = ka_access::period(seconds, instant.microseconds());
    else
        instant += effect.is_moved ? offset - effect.adjustment : offset;
    return effect;
}

}
