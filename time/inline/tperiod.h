#pragma once

#include <climits>
#include <type_traits>

#include <time/tperiod.h>

constexpr ka_time_period::ka_time_period(ka_integer auto seconds, ka_integer auto microseconds)
{
    time_period(seconds, microseconds);
}

constexpr ka_time_period::ka_time_period(int days, int hours, int minutes, int seconds, int microseconds)
{
    time_period(days, hours, minutes, seconds, microseconds);
}

constexpr ka_time_period::ka_time_period(ka_integer auto days, ka_integer auto hours, ka_integer auto minutes,
                                         ka_integer auto seconds, ka_integer auto microseconds)
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

constexpr void ka_time_period::time_period(ka_integer auto seconds, ka_integer auto microseconds)
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

constexpr void ka_time_period::time_period(ka_integer auto days, ka_integer auto hours,
                                           ka_integer auto minutes, ka_integer auto seconds,
                                           ka_integer auto microseconds)
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

constexpr bool ka_time_period::is_microsecond(ka_integer auto value) noexcept
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

constexpr std::strong_ordering
ka_time_period::operator<=>(const std::same_as<ka_time_period> auto& other) const noexcept
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
    // The lowest seconds and two signs are among these; whole seconds below zero
    // and less than a second are as well, and pass.
    if ((wrapping_sum(other.seconds_, -1) ^ other.microseconds_) < 0) [[unlikely]]
        (void)-other;
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

constexpr ka_time_period ka_time_period::operator*(ka_integer auto factor) const noexcept
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

constexpr ka_time_period& ka_time_period::operator*=(ka_integer auto factor) noexcept
{
    return *this = *this * factor;
}

[[gnu::always_inline]] constexpr ka_time_period ka_time_period::operator/(int divisor) const
{
    if (divisor == 0)
        refuse_zero_divisor();
    if (divisor == -1)
        return -*this;
    // 0 or all bits set for both fields of most periods.
    const auto sign = static_cast<int>(seconds_ >> 50);
    if (std::is_constant_evaluated() || (microseconds_ + sign) >> 31 != sign) [[unlikely]]
        return integer_quotient(divisor);

    // A division in double precision takes less than half the time of one of
    // integers. Each dividend is half of one further from zero here, so that no
    // quotient is nearer to a whole number than half of one by the divisor: below
    // 2^51 more than the last place of a double, and cutting off the fraction is
    // exact in any rounding mode.
    const int half = sign | 1;
    const double twice = 2.0 * divisor;
    const auto quotient = [=](long long dividend) {
        return static_cast<long long>(static_cast<double>(2 * dividend + half) / twice);
    };
    const long long whole = quotient(seconds_);
    const long long rest = quotient((seconds_ - whole * divisor) * microseconds_per_second);
    return unchecked(whole, static_cast<int>(quotient(microseconds_) + rest));
}

constexpr ka_time_period ka_time_period::operator/(ka_integer auto divisor) const
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

constexpr ka_time_period& ka_time_period::operator/=(ka_integer auto divisor)
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

constexpr ka_time_period ka_time_period::operator%(ka_integer auto divisor) const
{
    if (ka_integers::is_in(INT_MIN, divisor, INT_MAX)) [[likely]]
        return *this % static_cast<int>(divisor);
    const ka_integers::magnitude dividend(seconds_);
    const auto rest = static_cast<long long>(dividend.value % ka_integers::magnitude(divisor).value);
    return of_one_sign(dividend.is_negative ? wrapping_product(rest, -1) : rest, microseconds_);
}

constexpr ka_time_period& ka_time_period::operator%=(ka_integer auto divisor)
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

/// A period of seconds and a fraction below two of them, the fast path: of the
/// seconds' sign there can be a second too much, and of the other sign, of
/// operands that have not wrapped, is less than one.
constexpr ka_time_period ka_time_period::carried(long long seconds, int fraction) noexcept
{
    // Of seconds below zero, -999999 to 0 are right, of others 0 to 999999: the
    // same numbers from here on.
    constexpr int most = microseconds_per_second - 1;
    const int from_least = fraction + (static_cast<int>(seconds >> 63) & most);
    if (seconds == 0 || static_cast<unsigned int>(from_least + most) > 3u * most) [[unlikely]]
        return evened(seconds, fraction);
    const int carry = (from_least >> 31) - ((most - from_least) >> 31);
    long long sum = 0;
    if (__builtin_add_overflow(seconds, carry, &sum)) [[unlikely]]
        return evened(seconds, fraction);
    return unchecked(sum, fraction - carry * microseconds_per_second);
}

/// The general path. One second is carried at most, and then one goes over
/// where the signs differ. Each is -1, 0 or 1, and where both are not 0 they are
/// equal.
constexpr ka_time_period ka_time_period::evened(long long seconds, int fraction) noexcept
{
    const int carry = (fraction >= microseconds_per_second) - (fraction <= -microseconds_per_second);
    seconds = wrapping_sum(seconds, carry);
    const int over = ((seconds < 0) & (fraction > 0)) - ((seconds > 0) & (fraction < 0));
    return unchecked(seconds + over, fraction - (carry | over) * microseconds_per_second);
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

/// The general path, by any divisor but 0 and -1.
constexpr ka_time_period ka_time_period::integer_quotient(int divisor) const
{
    const long long rest = seconds_ % divisor * microseconds_per_second / divisor;
    return of_one_sign(seconds_ / divisor, microseconds_ / divisor + static_cast<int>(rest));
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

constexpr ka_time_period operator*(ka_integer auto factor,
                                   const std::derived_from<ka_time_period> auto& period) noexcept
{
    return period * factor;
}
