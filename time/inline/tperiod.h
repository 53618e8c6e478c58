#pragma once

#include <time/tperiod.h>

constexpr ka_time_period::ka_time_period(int days, int hours, int minutes, int seconds, int microseconds)
{
    time_period(days, hours, minutes, seconds, microseconds);
}

constexpr ka_time_period& ka_time_period::operator=(const long long& seconds) noexcept
{
    seconds_ = seconds;
    microseconds_ = 0;
    return *this;
}

constexpr void ka_time_period::time_period(long long seconds, int microseconds)
{
    if (are_of_opposite_signs(seconds, microseconds) || !is_microsecond(microseconds))
        refuse(seconds, microseconds);
    seconds_ = seconds;
    microseconds_ = microseconds;
}

constexpr void ka_time_period::time_period(int days, int hours, int minutes, int seconds, int microseconds)
{
    const bool none_below = days >= 0 && hours >= 0 && minutes >= 0 && seconds >= 0 && microseconds >= 0;
    const bool none_above = days <= 0 && hours <= 0 && minutes <= 0 && seconds <= 0 && microseconds <= 0;
    if (!none_below && !none_above)
        refuse(days, hours, minutes, seconds, microseconds);
    const int hour_seconds = static_cast<int>(static_cast<unsigned int>(hours) * 3600u);
    const int minute_seconds = static_cast<int>(static_cast<unsigned int>(minutes) * 60u);
    seconds_ = days * seconds_per_day + hour_seconds + minute_seconds + seconds +
               microseconds / microseconds_per_second;
    microseconds_ = microseconds % microseconds_per_second;
}

constexpr bool ka_time_period::is_microsecond(int value) noexcept
{
    return -microseconds_per_second < value && value < microseconds_per_second;
}

constexpr bool ka_time_period::operator==(const ka_time_period& other) const noexcept
{
    return seconds_ == other.seconds_ && microseconds_ == other.microseconds_;
}

constexpr bool ka_time_period::operator<(const ka_time_period& other) const noexcept
{
    if (seconds_ != other.seconds_) [[likely]]
        return seconds_ < other.seconds_;
    return microseconds_ < other.microseconds_;
}

constexpr ka_time_period ka_time_period::operator+(const ka_time_period& other) const noexcept
{
    return carried(wrapping_sum(seconds_, other.seconds_), microseconds_ + other.microseconds_);
}

constexpr ka_time_period ka_time_period::operator-(const ka_time_period& other) const
{
    if (can_lack_opposite(other)) [[unlikely]]
        return *this + -other;
    return carried(wrapping_difference(seconds_, other.seconds_), microseconds_ - other.microseconds_);
}

constexpr ka_time_period ka_time_period::operator-() const
{
    const long long seconds = wrapping_product(seconds_, -1);
    if (are_of_opposite_signs(seconds, -microseconds_)) [[unlikely]]
        refuse(seconds, -microseconds_);
    return unchecked(seconds, -microseconds_);
}

constexpr ka_time_period& ka_time_period::operator+=(const ka_time_period& other) noexcept
{
    return *this = *this + other;
}

constexpr ka_time_period ka_time_period::operator*(int factor) const noexcept
{
    ka_time_period product;
    product.normalize_time_period(wrapping_product(seconds_, factor),
                                  static_cast<long long>(microseconds_) * factor);
    return product;
}

constexpr ka_time_period ka_time_period::operator/(int divisor) const
{
    if (divisor == 0)
        refuse_zero_divisor();
    if (divisor == -1)
        return -*this;
    const long long whole = quotient(seconds_, divisor);
    const long long rest = quotient((seconds_ - whole * divisor) * microseconds_per_second, divisor);
    return unchecked(whole, microseconds_ / divisor + static_cast<int>(rest));
}

constexpr ka_time_period ka_time_period::operator%(int divisor) const
{
    if (divisor == 0)
        refuse_zero_divisor();
    if (divisor == -1)
        return {};
    return unchecked(seconds_ % divisor, microseconds_ % divisor);
}

constexpr ka_time_period ka_time_period::unchecked(long long seconds, int microseconds) noexcept
{
    ka_time_period result;
    result.seconds_ = seconds;
    result.microseconds_ = microseconds;
    return result;
}

constexpr bool ka_time_period::are_of_opposite_signs(long long seconds, int microseconds) noexcept
{
    return (seconds ^ microseconds) < 0 && seconds != 0 && microseconds != 0;
}

/// Whether the minus of a period has to be looked at: it throws for some of
/// these, for no others.
constexpr bool ka_time_period::can_lack_opposite(const ka_time_period& period) noexcept
{
    constexpr long long lowest = -0x7fffffffffffffff - 1;
    return (period.seconds_ ^ period.microseconds_) < 0 || period.seconds_ == lowest;
}

/// A period of seconds and a fraction below two of them: one second is
/// carried at most, and then one moves where the signs differ. Each is -1, 0
/// or 1, and where both are not 0 they are equal.
constexpr ka_time_period ka_time_period::carried(long long seconds, int fraction) noexcept
{
    const int carry = (fraction >= microseconds_per_second) - (fraction <= -microseconds_per_second);
    seconds = wrapping_sum(seconds, carry);
    const int moved = ((seconds < 0) & (fraction > 0)) - ((seconds > 0) & (fraction < 0));
    return unchecked(seconds + moved, fraction - (carry | moved) * microseconds_per_second);
}

/// Stores the two fields, once the excess of the microseconds has gone to
/// the seconds and the signs agree.
constexpr void ka_time_period::normalize_time_period(long long seconds, long long microseconds) noexcept
{
    long long carried = wrapping_sum(seconds, microseconds / microseconds_per_second);
    if (carried < 0 && microseconds > 0) {
        ++carried;
        microseconds -= microseconds_per_second;
    } else if (carried > 0 && microseconds < 0) {
        --carried;
        microseconds += microseconds_per_second;
    }
    seconds_ = carried;
    microseconds_ = static_cast<int>(microseconds % microseconds_per_second);
}

/// By any divisor but 0 and -1. A processor divides 32 bits in a fraction of
/// the time that 64 take.
constexpr long long ka_time_period::quotient(long long dividend, int divisor) noexcept
{
    return dividend == static_cast<int>(dividend) ? static_cast<int>(dividend) / divisor : dividend / divisor;
}

constexpr long long ka_time_period::wrapping_sum(long long a, long long b) noexcept
{
    return static_cast<long long>(static_cast<unsigned long long>(a) + static_cast<unsigned long long>(b));
}

constexpr long long ka_time_period::wrapping_difference(long long a, long long b) noexcept
{
    return static_cast<long long>(static_cast<unsigned long long>(a) - static_cast<unsigned long long>(b));
}

constexpr long long ka_time_period::wrapping_product(long long a, long long b) noexcept
{
    return static_cast<long long>(static_cast<unsigned long long>(a) * static_cast<unsigned long long>(b));
}
