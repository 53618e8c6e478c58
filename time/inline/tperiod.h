#pragma once

#include <climits>

#include <time/tperiod.h>

template <ka_integer Seconds, ka_integer Microseconds>
constexpr ka_time_period::ka_time_period(Seconds seconds, Microseconds microseconds)
{
    time_period(seconds, microseconds);
}

constexpr ka_time_period::ka_time_period(int days, int hours, int minutes, int seconds, int microseconds)
{
    time_period(days, hours, minutes, seconds, microseconds);
}

template <ka_integer Days, ka_integer Hours, ka_integer Minutes, ka_integer Seconds, ka_integer Microseconds>
constexpr ka_time_period::ka_time_period(Days days, Hours hours, Minutes minutes, Seconds seconds,
                                         Microseconds microseconds)
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

template <ka_integer Seconds, ka_integer Microseconds>
constexpr void ka_time_period::time_period(Seconds seconds, Microseconds microseconds)
{
    if (!ka_integers::is_in(LLONG_MIN, seconds, LLONG_MAX) || !is_microsecond(microseconds) ||
        are_of_opposite_signs(static_cast<long long>(seconds), static_cast<int>(microseconds)))
        refuse(seconds, microseconds);
    seconds_ = static_cast<long long>(seconds);
    microseconds_ = static_cast<int>(microseconds);
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

template <ka_integer Days, ka_integer Hours, ka_integer Minutes, ka_integer Seconds, ka_integer Microseconds>
constexpr void ka_time_period::time_period(Days days, Hours hours, Minutes minutes, Seconds seconds,
                                           Microseconds microseconds)
{
    const auto is_int = [](auto number) { return ka_integers::is_in(INT_MIN, number, INT_MAX); };
    if (!is_int(days) || !is_int(hours) || !is_int(minutes) || !is_int(seconds) || !is_int(microseconds))
        refuse(days, hours, minutes, seconds, microseconds);
    time_period(static_cast<int>(days), static_cast<int>(hours), static_cast<int>(minutes),
                static_cast<int>(seconds), static_cast<int>(microseconds));
}

constexpr bool ka_time_period::is_microsecond(int value) noexcept
{
    return -microseconds_per_second < value && value < microseconds_per_second;
}

template <ka_integer Number>
constexpr bool ka_time_period::is_microsecond(Number value) noexcept
{
    return is_microsecond(ka_integers::int_or(microseconds_per_second, value));
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

template <std::same_as<ka_time_period> Period>
constexpr std::strong_ordering ka_time_period::operator<=>(const Period& other) const noexcept
{
    if (seconds_ != other.seconds_) [[likely]]
        return seconds_ <=> other.seconds_;
    return microseconds_ <=> other.microseconds_;
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
    return of_one_sign(wrapping_product(seconds_, -1), -microseconds_);
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

template <ka_integer Factor>
constexpr ka_time_period ka_time_period::operator*(Factor factor) const noexcept
{
    if (ka_integers::is_in(INT_MIN, factor, INT_MAX)) [[likely]]
        return *this * static_cast<int>(factor);
    // Of the factor, each whole million makes a second of a microsecond.
    const auto millions = static_cast<long long>(ka_integers::widest(factor) / microseconds_per_second);
    const auto rest = static_cast<int>(ka_integers::widest(factor) % microseconds_per_second);
    const long long fraction = static_cast<long long>(microseconds_) * rest;
    const long long seconds = wrapping_product(seconds_, static_cast<long long>(factor));
    ka_time_period product;
    product.normalize_time_period(wrapping_sum(seconds, microseconds_ * millions), fraction);
    return product;
}

template <ka_integer Factor>
constexpr ka_time_period& ka_time_period::operator*=(Factor factor) noexcept
{
    return *this = *this * factor;
}

constexpr ka_time_period ka_time_period::operator/(int divisor) const
{
    if (divisor == 0)
        refuse_zero_divisor();
    if (divisor == -1)
        return -*this;
    const long long whole = quotient(seconds_, divisor);
    const long long rest = quotient((seconds_ - whole * divisor) * microseconds_per_second, divisor);
    return of_one_sign(whole, microseconds_ / divisor + static_cast<int>(rest));
}

template <ka_integer Divisor>
constexpr ka_time_period ka_time_period::operator/(Divisor divisor) const
{
    if (ka_integers::is_in(INT_MIN, divisor, INT_MAX)) [[likely]]
        return *this / static_cast<int>(divisor);
    // Microseconds are too few for any such divisor.
    const ka_integers::magnitude dividend(seconds_);
    const ka_integers::magnitude by(divisor);
    const int rest = static_cast<int>(
        ka_integers::quotient_of_product(dividend.value % by.value, microseconds_per_second, by.value));
    const auto whole = static_cast<long long>(dividend.value / by.value);
    return dividend.is_negative == by.is_negative ? unchecked(whole, rest) : unchecked(-whole, -rest);
}

template <ka_integer Divisor>
constexpr ka_time_period& ka_time_period::operator/=(Divisor divisor)
{
    return *this = *this / divisor;
}

constexpr ka_time_period ka_time_period::operator%(int divisor) const
{
    if (divisor == 0)
        refuse_zero_divisor();
    if (divisor == -1)
        return {};
    return of_one_sign(seconds_ % divisor, microseconds_ % divisor);
}

template <ka_integer Divisor>
constexpr ka_time_period ka_time_period::operator%(Divisor divisor) const
{
    if (ka_integers::is_in(INT_MIN, divisor, INT_MAX)) [[likely]]
        return *this % static_cast<int>(divisor);
    const ka_integers::magnitude dividend(seconds_);
    const auto rest = static_cast<long long>(dividend.value % ka_integers::magnitude(divisor).value);
    return of_one_sign(dividend.is_negative ? wrapping_product(rest, -1) : rest, microseconds_);
}

template <ka_integer Divisor>
constexpr ka_time_period& ka_time_period::operator%=(Divisor divisor)
{
    return *this = *this % divisor;
}

constexpr ka_time_period ka_time_period::unchecked(long long seconds, int microseconds) noexcept
{
    ka_time_period result;
    result.seconds_ = seconds;
    result.microseconds_ = microseconds;
    return result;
}

/// The period of two fields, or `invalid_time_period`.
constexpr ka_time_period ka_time_period::of_one_sign(long long seconds, int microseconds)
{
    if (are_of_opposite_signs(seconds, microseconds)) [[unlikely]]
        refuse(seconds, microseconds);
    return unchecked(seconds, microseconds);
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
