#pragma once

#include <climits>
#include <optional>

#include <time/error.h>
#include <time/tperiod.h>

#include "../access.h"

// What rows of columns share in both directions: numbers that do not overflow,
// why a row is refused, and rows that follow each other.

namespace columns {

using u64 = unsigned long long;

inline constexpr long long million = 1000000;
inline constexpr long long day_length = 86400 * million;

// All times are microseconds here: instants from 1970 on, those of standard and
// local clocks from midnight at the start of day number 0.

inline constexpr long long epoch = ka_gregorian::unix_epoch * day_length;
inline constexpr long long range_start = ka_gregorian::first_day * day_length;
inline constexpr long long range_end = (ka_gregorian::last_day + 1) * day_length;

constexpr bool is_in_range(long long time) noexcept { return range_start <= time && time < range_end; }

constexpr long long wrapping_sum(long long a, long long b) noexcept
{
    return static_cast<long long>(static_cast<u64>(a) + static_cast<u64>(b));
}

constexpr std::optional<long long> sum_of(long long a, long long b) noexcept
{
    long long sum = 0;
    return __builtin_add_overflow(a, b, &sum) ? std::nullopt : std::optional(sum);
}

constexpr std::optional<long long> difference_of(long long a, long long b) noexcept
{
    long long difference = 0;
    return __builtin_sub_overflow(a, b, &difference) ? std::nullopt : std::optional(difference);
}

/// A period in microseconds, where 64 bits hold them.
inline std::optional<long long> microseconds_of(const ka_time_period& period) noexcept
{
    long long count = 0;
    if (__builtin_mul_overflow(period.whole_seconds(), million, &count))
        return std::nullopt;
    return sum_of(count, period.microseconds());
}

/// Why a row is refused; that of a caller's rule may be any number.
struct refusal {
    bool is_one = false;
    int code = 0;

    constexpr refusal() noexcept = default;
    constexpr refusal(int why) noexcept : is_one(true), code(why) {}
    explicit operator bool() const noexcept { return is_one; }
};

/// What a caller's rule is asked may throw.
template <typename Ask>
refusal refusal_of(Ask ask)
{
    try {
        return ask();
    } catch (const ka_time_varnel_error& error) {
        return error.code();
    }
}

/// Values in a row, from the first one on.
struct window {
    long long first = 0;
    u64 length = 0;

    bool holds(long long value) const noexcept
    {
        return static_cast<u64>(value) - static_cast<u64>(first) < length;
    }
};

constexpr window window_of(long long first, long long end) noexcept
{
    return first < end ? window{first, static_cast<u64>(end) - static_cast<u64>(first)} : window{};
}

/// Throws where columns differ in length.
void check_lengths(std::size_t from, std::size_t to);

}
