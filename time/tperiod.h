#pragma once

#include <iosfwd>
#include <string>

#include <time/export.h>

struct timeval;

/// A signed duration, exact to the microsecond.
///
///     ka_time_period shift(0, 7, 30, 0, 0);            // days, hours, minutes, seconds, us
///     (shift * 5).to_hours();                          // 37
///     (shift - ka_time_period(0, 1)).to_string();      // "26999.999999 seconds"
///
/// Range: 64-bit seconds and a fraction of -999999 to 999999 microseconds. The
/// two never have opposite signs, so each duration has one form: minus half a
/// second is 0 seconds and -500000 microseconds. (Only a sum or product whose
/// seconds have wrapped can break this.)
/// Overflow: arithmetic wraps at 64 bits of seconds, in silence.
/// Failure: a refused value throws `invalid_time_period` and a zero divisor
/// `divide_by_zero`; the object stays as it was.
class KA_TIME_VARNEL_API ka_time_period {
public:
    /// The period of length zero, for comparing. Initialised at load, before
    /// any code of the library or its host runs.
    static ka_time_period zero_period;

    // Building. The constructors refuse what the setters `time_period` refuse.

    constexpr ka_time_period() noexcept = default;
    explicit constexpr ka_time_period(long long seconds) noexcept : seconds_(seconds) {}
    constexpr ka_time_period(long long seconds, int microseconds) { time_period(seconds, microseconds); }
    constexpr ka_time_period(int days, int hours, int minutes, int seconds, int microseconds = 0)
    {
        time_period(days, hours, minutes, seconds, microseconds);
    }
    ka_time_period(const timeval& value);
    constexpr ka_time_period(const ka_time_period&) noexcept = default;

    constexpr ka_time_period& operator=(const ka_time_period&) noexcept = default;
    /// So many seconds, and no microseconds.
    constexpr ka_time_period& operator=(const long long& seconds) noexcept
    {
        seconds_ = seconds;
        microseconds_ = 0;
        return *this;
    }
    ka_time_period& operator=(const timeval& value);

    /// Seconds and a fraction of -999999 to 999999 microseconds, of one sign
    /// (zero goes with either). Anything else throws `invalid_time_period`.
    constexpr void time_period(long long seconds, int microseconds)
    {
        if (are_of_opposite_signs(seconds, microseconds) || !is_microsecond(microseconds))
            refuse(seconds, microseconds);
        seconds_ = seconds;
        microseconds_ = microseconds;
    }

    /// Five fields of one sign (zero goes with either), or `invalid_time_period`.
    /// No field has a range: 25 hours or 90 minutes are fine. The products of
    /// hours and of minutes wrap at 32 bits, beyond 596523 hours and 35791394
    /// minutes.
    constexpr void time_period(int days, int hours, int minutes, int seconds, int microseconds = 0)
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

    /// The whole width of the platform's fields is taken. Fields of opposite
    /// signs, or a fraction of a second or more, throw `invalid_time_period`.
    void time_period(const timeval& value);

    /// True for -999999 to 999999.
    static constexpr bool is_microsecond(int value) noexcept
    {
        return -microseconds_per_second < value && value < microseconds_per_second;
    }

    // Reading. The counts are totals, not clock fields: 90 minutes is 1 hour
    // and 90 minutes. They truncate toward zero, look at the whole seconds
    // alone, and keep the low 32 bits.

    constexpr int to_days() const noexcept { return static_cast<int>(seconds_ / seconds_per_day); }
    constexpr int to_hours() const noexcept { return static_cast<int>(seconds_ / 3600); }
    constexpr int to_minutes() const noexcept { return static_cast<int>(seconds_ / 60); }
    constexpr int to_seconds() const noexcept { return static_cast<int>(seconds_); }
    /// The fraction, -999999 to 999999.
    constexpr int microseconds() const noexcept { return microseconds_; }

    /// The platform's record, all 64 bits of the seconds where it has them.
    operator timeval() const noexcept;

    /// The exact length in seconds: "90 seconds", "-1 second", "-0.500000 seconds".
    std::string to_string() const;
    /// Writes `to_string()`; the stream's width and fill apply.
    void print(std::ostream& stream) const;

    // Order: the shorter, or more negative, first.

    constexpr bool operator==(const ka_time_period& other) const noexcept
    {
        return seconds_ == other.seconds_ && microseconds_ == other.microseconds_;
    }
    constexpr bool operator!=(const ka_time_period& other) const noexcept { return !(*this == other); }
    constexpr bool operator<(const ka_time_period& other) const noexcept
    {
        if (seconds_ != other.seconds_) [[likely]]
            return seconds_ < other.seconds_;
        return microseconds_ < other.microseconds_;
    }
    constexpr bool operator>(const ka_time_period& other) const noexcept { return other < *this; }
    constexpr bool operator<=(const ka_time_period& other) const noexcept { return !(other < *this); }
    constexpr bool operator>=(const ka_time_period& other) const noexcept { return !(*this < other); }

    // Arithmetic.

    constexpr ka_time_period operator+(const ka_time_period& other) const noexcept
    {
        return carried(wrapping_sum(seconds_, other.seconds_), microseconds_ + other.microseconds_);
    }
    /// As `*this + -other`; it throws only where that minus does.
    constexpr ka_time_period operator-(const ka_time_period& other) const
    {
        if (can_lack_opposite(other)) [[unlikely]]
            return *this + -other;
        return carried(wrapping_difference(seconds_, other.seconds_), microseconds_ - other.microseconds_);
    }
    /// Throws `invalid_time_period` where the seconds have no opposite and
    /// microseconds stand beside them: the lowest seconds alone wrap to
    /// themselves.
    constexpr ka_time_period operator-() const
    {
        const long long seconds = wrapping_product(seconds_, -1);
        if (are_of_opposite_signs(seconds, -microseconds_)) [[unlikely]]
            refuse(seconds, -microseconds_);
        return unchecked(seconds, -microseconds_);
    }
    constexpr ka_time_period& operator+=(const ka_time_period& other) noexcept
    {
        return *this = *this + other;
    }
    constexpr ka_time_period& operator-=(const ka_time_period& other) { return *this = *this - other; }

    /// Exact for any factor as long as the seconds stay within 64 bits.
    constexpr ka_time_period operator*(int factor) const noexcept
    {
        ka_time_period product;
        product.normalize_time_period(wrapping_product(seconds_, factor),
                                      static_cast<long long>(microseconds_) * factor);
        return product;
    }
    constexpr ka_time_period& operator*=(int factor) noexcept { return *this = *this * factor; }

    /// The quotient, truncated toward zero. Seconds and microseconds are
    /// truncated apart, so the last microsecond can be one too few: 1.000002
    /// seconds / 3 is 0.333333. A divisor of 0 throws `divide_by_zero`; -1 is
    /// the unary minus.
    constexpr ka_time_period operator/(int divisor) const
    {
        if (divisor == 0)
            refuse_zero_divisor();
        if (divisor == -1)
            return -*this;
        const long long whole = quotient(seconds_, divisor);
        const long long rest = quotient((seconds_ - whole * divisor) * microseconds_per_second, divisor);
        return unchecked(whole, microseconds_ / divisor + static_cast<int>(rest));
    }
    constexpr ka_time_period& operator/=(int divisor) { return *this = *this / divisor; }

    /// The remainders of the two fields, each for itself and with its own
    /// sign: 7.5 seconds % 2 is 1 second. A divisor of 0 throws `divide_by_zero`.
    constexpr ka_time_period operator%(int divisor) const
    {
        if (divisor == 0)
            refuse_zero_divisor();
        if (divisor == -1)
            return {};
        return unchecked(seconds_ % divisor, microseconds_ % divisor);
    }
    constexpr ka_time_period& operator%=(int divisor) { return *this = *this % divisor; }

private:
    friend class ka_time;
    friend class ka_time_and_date;
    friend class ka_calendar_date;

    static constexpr long long seconds_per_day = 86400;
    static constexpr int microseconds_per_second = 1000000;

    static constexpr ka_time_period unchecked(long long seconds, int microseconds) noexcept
    {
        ka_time_period result;
        result.seconds_ = seconds;
        result.microseconds_ = microseconds;
        return result;
    }

    static constexpr bool are_of_opposite_signs(long long seconds, int microseconds) noexcept
    {
        return (seconds ^ microseconds) < 0 && seconds != 0 && microseconds != 0;
    }

    /// Whether the minus of a period has to be looked at: it throws for some of
    /// these, for no others.
    static constexpr bool can_lack_opposite(const ka_time_period& period) noexcept
    {
        constexpr long long lowest = -0x7fffffffffffffff - 1;
        return (period.seconds_ ^ period.microseconds_) < 0 || period.seconds_ == lowest;
    }

    /// A period of seconds and a fraction below two of them: one second is
    /// carried at most, and then one moves where the signs differ. Each is -1, 0
    /// or 1, and where both are not 0 they are equal.
    static constexpr ka_time_period carried(long long seconds, int fraction) noexcept
    {
        const int carry = (fraction >= microseconds_per_second) - (fraction <= -microseconds_per_second);
        seconds = wrapping_sum(seconds, carry);
        const int moved = ((seconds < 0) & (fraction > 0)) - ((seconds > 0) & (fraction < 0));
        return unchecked(seconds + moved, fraction - (carry | moved) * microseconds_per_second);
    }

    /// Stores the two fields, once the excess of the microseconds has gone to
    /// the seconds and the signs agree.
    constexpr void normalize_time_period(long long seconds, long long microseconds) noexcept
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
    static constexpr long long quotient(long long dividend, int divisor) noexcept
    {
        return dividend == static_cast<int>(dividend) ? static_cast<int>(dividend) / divisor
                                                      : dividend / divisor;
    }

    static constexpr long long wrapping_sum(long long a, long long b) noexcept
    {
        return static_cast<long long>(static_cast<unsigned long long>(a) +
                                      static_cast<unsigned long long>(b));
    }
    static constexpr long long wrapping_difference(long long a, long long b) noexcept
    {
        return static_cast<long long>(static_cast<unsigned long long>(a) -
                                      static_cast<unsigned long long>(b));
    }
    static constexpr long long wrapping_product(long long a, long long b) noexcept
    {
        return static_cast<long long>(static_cast<unsigned long long>(a) *
                                      static_cast<unsigned long long>(b));
    }

    /// Writes the text of `to_string` at `out`, which has room for
    /// `longest_text` characters, and returns its end.
    KA_TIME_VARNEL_INTERNAL char* write_text(char* out) const noexcept;
    static constexpr int longest_text = 48;

    [[noreturn]] static void refuse(long long seconds, long long microseconds);
    [[noreturn]] static void refuse(int days, int hours, int minutes, int seconds, int microseconds);
    [[noreturn]] static void refuse_zero_divisor();

    long long seconds_ = 0;
    int microseconds_ = 0;
};

/// The same as `period * factor`.
constexpr ka_time_period operator*(int factor, const ka_time_period& period) noexcept
{
    return period * factor;
}
