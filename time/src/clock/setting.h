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

// They set an instant from a local time and date; where a rule fails, those are
// taken as universal. The result is whether it can read otherwise: with no rule
// in effect the standard clock shows what was set, and to ask again would be to
// ask the same. A table can tell the two clocks apart.

bool set_by_rules(ka_time_period& instant, const ka_time& time, const ka_date& date,
                  const ka_time_zone& zone);
bool set_by_table(ka_time_period& instant, const ka_time& time, const ka_date& date,
                  const ka_time_zone& zone);

/// In any zone: where the index of its table tells, compiled into the caller.
[[gnu::always_inline]] inline bool set_local(ka_time_period& instant, const ka_time& time,
                                             const ka_date& date, const ka_time_zone& zone)
{
    if (ka_access::kind(zone) != rules::zone_kind::table)
        return set_by_rules(instant, time, date, zone);
    const long long local = date.julian_day() * seconds_per_day + ka_access::second_of_day(time);
    const rules::kind* told = nullptr;
    if (!is_well_in_range(local) || !rules::find_by_index<rules::clock::local>(told, zone, local))
        [[unlikely]]
        return set_by_table(instant, time, date, zone);
    instant =
        ka_access::period(wrapping_sum(local, ka_access::offset(zone).whole_seconds()) - told->adjustment,
                          static_cast<int>(time.microseconds()));
    return true;
}

}
