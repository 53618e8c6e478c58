#pragma once

#include "../rules/effect.h"
#include "standard_clock.h"

// How an instant is read in a zone, in two stages: the standard clock, which is
// the instant less the zone's offset, and what the zone then makes of it. A zone
// that goes by a table is read in a few steps, which are compiled into each
// operation that reads a moment.

namespace clocks {

/// The local clock by a table: null where it does not serve.
struct clock_by_table {
    [[gnu::always_inline]] clock_by_table(const ka_time_period& instant, const ka_time_zone& zone) noexcept
    {
        if (ka_access::kind(zone) != rules::zone_kind::table)
            return;
        const standard_clock standard(instant, zone);
        if (!standard.is_regular) [[unlikely]]
            return;
        told = &rules::kind_at<rules::clock::standard>(zone, standard.seconds);
        seconds = standard.seconds + told->adjustment;
    }

    const rules::kind* told = nullptr;
    long long seconds = 0;
};

/// The local clock, read once for all who want more than one part of it.
struct reading {
    ka_time time;
    ka_date date;
    ka_gregorian::date_parts day;
    bool is_dst;
    /// What the zone's table tells, where it goes by one.
    const rules::kind* told;
};

// In any zone, for any instant: by rules in a fast path for nearly all, else by
// the general path, which is the definition.

ka_time time_by_rules(const ka_time_period& instant, const ka_time_zone& zone);
ka_date date_by_rules(const ka_time_period& instant, const ka_time_zone& zone);
bool is_dst_by_rules(const ka_time_period& instant, const ka_time_zone& zone);
reading reading_by_rules(const ka_time_period& instant, const ka_time_zone& zone);

[[gnu::always_inline]] inline ka_time local_time(const ka_time_period& instant, const ka_time_zone& zone)
{
    const clock_by_table local(instant, zone);
    return local.told != nullptr ? time_at(local.seconds, instant.microseconds())
                                 : time_by_rules(instant, zone);
}

[[gnu::always_inline]] inline ka_date local_date(const ka_time_period& instant, const ka_time_zone& zone)
{
    const clock_by_table local(instant, zone);
    return local.told != nullptr ? date_at(local.seconds) : date_by_rules(instant, zone);
}

[[gnu::always_inline]] inline bool is_dst(const ka_time_period& instant, const ka_time_zone& zone)
{
    const clock_by_table local(instant, zone);
    return local.told != nullptr ? local.told->is_dst : is_dst_by_rules(instant, zone);
}

[[gnu::always_inline]] inline reading local_reading(const ka_time_period& instant, const ka_time_zone& zone)
{
    const clock_by_table local(instant, zone);
    if (local.told == nullptr) [[unlikely]]
        return reading_by_rules(instant, zone);
    const ka_date date = date_at(local.seconds);
    return {time_at(local.seconds, instant.microseconds()), date, ka_gregorian::split(date.julian_day()),
            local.told->is_dst, local.told};
}

}
