#pragma once

#include "../access.h"

namespace clocks {

inline constexpr long long seconds_per_day = 86400;

/// Whether a clock shows a date in the range, and none of the first or last week:
/// so near the ends a zone's rules could move it out.
constexpr bool is_well_in_range(long long seconds) noexcept
{
    constexpr long long first = (ka_gregorian::first_day + 7) * seconds_per_day;
    constexpr long long end = (ka_gregorian::last_day - 6) * seconds_per_day;
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

/// The standard clock of an instant where seconds are all there is to subtract,
/// as they are for nearly every moment: an instant above zero, under an offset of
/// whole seconds, that reads a date well in the range.
struct standard_clock {
    /// The sign of the one number and all of the other are 0 in a single test.
    [[gnu::always_inline]] standard_clock(const ka_time_period& instant, const ka_time_zone& zone) noexcept
        : seconds(wrapping_difference(instant.whole_seconds(), ka_access::offset(zone).whole_seconds())),
          is_regular(is_well_in_range(seconds) &&
                     ((instant.microseconds() >> 31) | ka_access::offset(zone).microseconds()) == 0)
    {}

    long long seconds;
    bool is_regular;
};

}
