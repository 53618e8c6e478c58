#pragma once

#include "../rules/effect.h"
#include "reading.h"
#include "standard_clock.h"

// How an instant is read in a zone, in two stages: the standard clock, which is
// the instant less the zone's offset, and what the zone then makes of it. A zone
// that goes by a table is read in a few steps, which are compiled into each
// operation that reads a moment. All else is the last call of the operation, with
// the arguments as they came: a jump, before which nothing has to be kept.

namespace clocks {

/// The local clock by the table of a zone.
struct clock_by_table {
    /// False where the general path has to find all that follows.
    bool is_told = false;
    const rules::kind* told = nullptr;
    long long seconds = 0;
};

/// The local clock, where the table's index tells it.
[[gnu::always_inline]] inline clock_by_table indexed_clock(const ka_time_period& instant,
                                                           const ka_time_zone& zone) noexcept
{
    const standard_clock standard(instant, zone);
    const rules::kind* told = nullptr;
    if (!standard.is_regular || !rules::find_by_index<rules::clock::standard>(told, zone, standard.seconds))
        [[unlikely]]
        return {};
    return {true, told, standard.seconds + told->adjustment};
}

[[gnu::always_inline]] inline ka_time time_of(const clock_by_table& local,
                                              const ka_time_period& instant) noexcept
{
    return time_at(local.seconds, instant.microseconds());
}

[[gnu::always_inline]] inline reading reading_of(const clock_by_table& local,
                                                 const ka_time_period& instant) noexcept
{
    const ka_date date = date_at(local.seconds);
    return {time_of(local, instant), date, ka_gregorian::split(date.julian_day()), local.told->is_dst,
            local.told};
}

inline bool goes_by_table(const ka_time_zone& zone) noexcept
{
    return ka_access::kind(zone) == rules::zone_kind::table;
}

// By the table of a zone, whether or not the index tells it.
ka_time time_by_table(const ka_time_period& instant, const ka_time_zone& zone);
ka_date date_by_table(const ka_time_period& instant, const ka_time_zone& zone);
bool is_dst_by_table(const ka_time_period& instant, const ka_time_zone& zone);
reading reading_by_table(const ka_time_period& instant, const ka_time_zone& zone);
std::tm fields_by_table(const ka_time_period& instant, const ka_time_zone& zone);

// By the rules of a zone.
ka_time time_by_rules(const ka_time_period& instant, const ka_time_zone& zone);
ka_date date_by_rules(const ka_time_period& instant, const ka_time_zone& zone);
bool is_dst_by_rules(const ka_time_period& instant, const ka_time_zone& zone);
reading reading_by_rules(const ka_time_period& instant, const ka_time_zone& zone);
std::tm fields_by_rules(const ka_time_period& instant, const ka_time_zone& zone);

/// All of a reading, in any zone. Those without rules, as that of universal time,
/// show the standard clock.
[[gnu::always_inline]] inline reading local_reading(const ka_time_period& instant, const ka_time_zone& zone)
{
    if (goes_by_table(zone)) {
        const clock_by_table local = indexed_clock(instant, zone);
        return local.is_told ? reading_of(local, instant) : reading_by_table(instant, zone);
    }
    if (rules::has_rules(zone))
        return reading_by_rules(instant, zone);
    const standard_clock standard(instant, zone);
    if (!standard.is_regular) [[unlikely]]
        return reading_by_rules(instant, zone);
    const ka_date date = date_at(standard.seconds);
    return {time_at(standard.seconds, instant.microseconds()), date, ka_gregorian::split(date.julian_day()),
            false, nullptr};
}

}
