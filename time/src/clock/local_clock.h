#pragma once

#include "../rules/effect.h"

// How an instant is read in a zone, in two stages: the standard clock, which is
// the instant less the zone's offset, and what the zone's rules then make of it.
// The fast path is compiled into each operation that reads a moment; the general
// path is the definition, for any instant and any zone.

namespace clocks {

inline constexpr long long seconds_per_day = 86400;

/// Whether a clock shows a date in the range, and none of the first or last week.
constexpr bool is_well_in_range(long long seconds) noexcept
{
    constexpr long long first = (38 + 7) * seconds_per_day;
    constexpr long long end = (13688961 - 7) * seconds_per_day;
    return first <= seconds && seconds < end;
}

/// The halves of a clock that shows a date in the range.
constexpr ka_date date_at(long long seconds) noexcept
{
    return ka_access::date(static_cast<int>(static_cast<unsigned long long>(seconds) / seconds_per_day));
}
constexpr ka_time time_at(long long seconds, int microseconds) noexcept
{
    const auto second = static_cast<unsigned long long>(seconds) % seconds_per_day;
    return ka_access::time(static_cast<int>(second), microseconds);
}

constexpr long long wrapping_sum(long long a, long long b) noexcept
{
    return static_cast<long long>(static_cast<unsigned long long>(a) + static_cast<unsigned long long>(b));
}
constexpr long long wrapping_difference(long long a, long long b) noexcept
{
    return static_cast<long long>(static_cast<unsigned long long>(a) - static_cast<unsigned long long>(b));
}

/// The standard clock where seconds are all there is to subtract, as they are for
/// nearly every moment: an instant above zero, under an offset of whole seconds,
/// which reads a date in the range, and not so near its ends that a table could
/// move it out.
struct standard_clock {
    [[gnu::always_inline]] standard_clock(const ka_time_period& instant, const ka_time_zone& zone) noexcept
        : seconds(
              wrapping_difference(ka_access::seconds(instant), ka_access::seconds(ka_access::offset(zone)))),
          is_regular(is_well_in_range(seconds) && instant.microseconds() >= 0 &&
                     ka_access::offset(zone).microseconds() == 0)
    {}

    long long seconds;
    bool is_regular;
};

/// The local clock, with what made it.
struct local_clock {
    /// False where the general path has to tell time and date.
    bool is_regular = false;
    ka_time time;
    ka_date date;
    rules::effect effect;
    rules::known_date known;
};

/// The general path to what the rules make of the standard clock.
rules::effect effect_in_general(const ka_time_period& instant, const ka_time_zone& zone);
/// The general path to the halves of the local clock.
ka_time time_in_general(const ka_time_period& instant, const ka_time_zone& zone, const rules::effect& effect);
ka_date date_in_general(const ka_time_period& instant, const ka_time_zone& zone, const rules::effect& effect);

/// Whether a time stays in its day when it moves, by whole seconds.
inline bool stays_in_day(const ka_time& time, const ka_time_period& adjustment) noexcept
{
    const auto second = static_cast<unsigned long long>(ka_access::second_of_day(time)) +
                        static_cast<unsigned long long>(ka_access::seconds(adjustment));
    return second < seconds_per_day && adjustment.microseconds() == 0;
}
inline ka_time moved_in_day(const ka_time& time, const ka_time_period& adjustment) noexcept
{
    return ka_access::time(ka_access::second_of_day(time) + adjustment.to_seconds(),
                           static_cast<int>(time.microseconds()));
}

[[gnu::always_inline]] inline local_clock local_clock_of(const ka_time_period& instant,
                                                         const ka_time_zone& zone)
{
    const standard_clock standard(instant, zone);
    if (!standard.is_regular) [[unlikely]] {
        const rules::effect effect = effect_in_general(instant, zone);
        return {false, {}, {}, effect, {}};
    }
    if (ka_access::kind(zone) == rules::zone_kind::table) {
        const rules::kind& told = rules::kind_at<rules::clock::standard>(zone, standard.seconds);
        const long long seconds = standard.seconds + told.adjustment;
        return {true, time_at(seconds, instant.microseconds()), date_at(seconds), rules::effect_of(told), {}};
    }
    const ka_time time = time_at(standard.seconds, instant.microseconds());
    const ka_date date = date_at(standard.seconds);
    rules::known_date known;
    const ka_time_zone_rule* const rule = rules::find_rule(zone, time, date, known);
    if (rule == nullptr)
        return {true, time, date, {}, known};
    if (!stays_in_day(time, rule->adjustment())) [[unlikely]]
        return {false, {}, {}, rules::effect_of(rule), known};
    return {true, moved_in_day(time, rule->adjustment()), date, rules::effect_of(rule), known};
}

[[gnu::always_inline]] inline ka_time local_time(const ka_time_period& instant, const ka_time_zone& zone)
{
    const local_clock local = local_clock_of(instant, zone);
    return local.is_regular ? local.time : time_in_general(instant, zone, local.effect);
}

[[gnu::always_inline]] inline ka_date local_date(const ka_time_period& instant, const ka_time_zone& zone)
{
    const local_clock local = local_clock_of(instant, zone);
    return local.is_regular ? local.date : date_in_general(instant, zone, local.effect);
}

[[gnu::always_inline]] inline bool is_dst(const ka_time_period& instant, const ka_time_zone& zone)
{
    return local_clock_of(instant, zone).effect.is_dst;
}

/// The local clock, read once for all who want more than one part of it.
struct reading {
    ka_time time;
    ka_date date;
    ka_gregorian::date_parts day;
    bool is_dst;
    /// What the zone's table tells, where it goes by one.
    const rules::kind* told;
};

[[gnu::always_inline]] inline reading local_reading(const ka_time_period& instant, const ka_time_zone& zone)
{
    const local_clock local = local_clock_of(instant, zone);
    if (!local.is_regular) [[unlikely]] {
        const ka_date date = date_in_general(instant, zone, local.effect);
        const ka_time time = time_in_general(instant, zone, local.effect);
        return {time, date, ka_gregorian::split(date.julian_day()), local.effect.is_dst, local.effect.told};
    }
    const int day = local.date.julian_day();
    return {local.time, local.date,
            local.known.julian_day == day ? local.known.parts : ka_gregorian::split(day), local.effect.is_dst,
            local.effect.told};
}

}
