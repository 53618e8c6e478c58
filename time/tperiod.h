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
    constexpr ka_time_period(int days, int hours, int minutes, int seconds, int microseconds = 0);
    ka_time_period(const timeval& value);
    constexpr ka_time_period(const ka_time_period&) noexcept = default;

    constexpr ka_time_period& operator=(const ka_time_period&) noexcept = default;
    /// So many seconds, and no microseconds.
    constexpr ka_time_period& operator=(const long long& seconds) noexcept;
    ka_time_period& operator=(const timeval& value);

    /// Seconds and a fraction of -999999 to 999999 microseconds, of one sign
    /// (zero goes with either). Anything else throws `invalid_time_period`.
    constexpr void time_period(long long seconds, int microseconds);

    /// Five fields of one sign (zero goes with either), or `invalid_time_period`.
    /// No field has a range: 25 hours or 90 minutes are fine. The products of
    /// hours and of minutes wrap at 32 bits, beyond 596523 hours and 35791394
    /// minutes.
    constexpr void time_period(int days, int hours, int minutes, int seconds, int microseconds = 0);

    /// The whole width of the platform's fields is taken. Fields of opposite
    /// signs, or a fraction of a second or more, throw `invalid_time_period`.
    void time_period(const timeval& value);

    /// True for -999999 to 999999.
    static constexpr bool is_microsecond(int value) noexcept;

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

    constexpr bool operator==(const ka_time_period& other) const noexcept;
    constexpr bool operator!=(const ka_time_period& other) const noexcept { return !(*this == other); }
    constexpr bool operator<(const ka_time_period& other) const noexcept;
    constexpr bool operator>(const ka_time_period& other) const noexcept { return other < *this; }
    constexpr bool operator<=(const ka_time_period& other) const noexcept { return !(other < *this); }
    constexpr bool operator>=(const ka_time_period& other) const noexcept { return !(*this < other); }

    // Arithmetic.

    constexpr ka_time_period operator+(const ka_time_period& other) const noexcept;
    /// As `*this + -other`; it throws only where that minus does.
    constexpr ka_time_period operator-(const ka_time_period& other) const;
    /// Throws `invalid_time_period` where the seconds have no opposite and
    /// microseconds stand beside them: the lowest seconds alone wrap to
    /// themselves.
    constexpr ka_time_period operator-() const;
    constexpr ka_time_period& operator+=(const ka_time_period& other) noexcept;
    constexpr ka_time_period& operator-=(const ka_time_period& other) { return *this = *this - other; }

    /// Exact for any factor as long as the seconds stay within 64 bits.
    constexpr ka_time_period operator*(int factor) const noexcept;
    constexpr ka_time_period& operator*=(int factor) noexcept { return *this = *this * factor; }

    /// The quotient, truncated toward zero. Seconds and microseconds are
    /// truncated apart, so the last microsecond can be one too few: 1.000002
    /// seconds / 3 is 0.333333. A divisor of 0 throws `divide_by_zero`; -1 is
    /// the unary minus.
    constexpr ka_time_period operator/(int divisor) const;
    constexpr ka_time_period& operator/=(int divisor) { return *this = *this / divisor; }

    /// The remainders of the two fields, each for itself and with its own
    /// sign: 7.5 seconds % 2 is 1 second. A divisor of 0 throws `divide_by_zero`.
    constexpr ka_time_period operator%(int divisor) const;
    constexpr ka_time_period& operator%=(int divisor) { return *this = *this % divisor; }

private:
    friend class ka_time;
    friend class ka_time_and_date;
    friend class ka_calendar_date;
    friend struct ka_access;

    static constexpr long long seconds_per_day = 86400;
    static constexpr int microseconds_per_second = 1000000;

    static constexpr ka_time_period unchecked(long long seconds, int microseconds) noexcept;
    static constexpr bool are_of_opposite_signs(long long seconds, int microseconds) noexcept;
    static constexpr bool can_lack_opposite(const ka_time_period& period) noexcept;
    static constexpr ka_time_period carried(long long seconds, int fraction) noexcept;
    constexpr void normalize_time_period(long long seconds, long long microseconds) noexcept;
    static constexpr long long quotient(long long dividend, int divisor) noexcept;
    static constexpr long long wrapping_sum(long long a, long long b) noexcept;
    static constexpr long long wrapping_difference(long long a, long long b) noexcept;
    static constexpr long long wrapping_product(long long a, long long b) noexcept;

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

#include <time/inline/tperiod.h>
