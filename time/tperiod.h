#pragma once

#include <compare>
#include <concepts>
#include <iosfwd>
#include <string>

#include <time/export.h>
#include <time/inline/integer.h>

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

    /// The period of length zero.
    constexpr ka_time_period() noexcept = default;
    /// Whole seconds, any that 64 bits with a sign hold; more are refused.
    explicit constexpr ka_time_period(long long seconds) noexcept : seconds_(seconds) {}
    explicit constexpr ka_time_period(ka_unsigned_64 auto seconds) { time_period(seconds, 0); }
    constexpr ka_time_period(long long seconds, int microseconds) { time_period(seconds, microseconds); }
    constexpr ka_time_period(ka_integer auto seconds, ka_integer auto microseconds);
    /// `ka_time_period(0, -1, -30, 0)` is an hour and a half below zero.
    constexpr ka_time_period(int days, int hours, int minutes, int seconds, int microseconds = 0);
    template <ka_integer Days, ka_integer Hours, ka_integer Minutes, ka_integer Seconds,
              ka_integer Microseconds = int>
    constexpr ka_time_period(Days days, Hours hours, Minutes minutes, Seconds seconds,
                             Microseconds microseconds = 0);
    ka_time_period(const timeval& value);
    template <typename... Numbers>
    requires(ka_wider_integer<Numbers> || ...) explicit ka_time_period(Numbers...) = delete;
    constexpr ka_time_period(const ka_time_period&) noexcept = default;

    constexpr ka_time_period& operator=(const ka_time_period&) noexcept = default;
    /// So many seconds, and no microseconds.
    constexpr ka_time_period& operator=(const long long& seconds) noexcept;
    ka_time_period& operator=(const timeval& value);

    /// Seconds and a fraction of -999999 to 999999 microseconds, of one sign
    /// (zero goes with either). Anything else throws `invalid_time_period`.
    constexpr void time_period(long long seconds, int microseconds);
    constexpr void time_period(ka_integer auto seconds, ka_integer auto microseconds);

    /// Five fields of one sign (zero goes with either), or `invalid_time_period`.
    /// No field has a range but that of 32 bits: 25 hours or 90 minutes are
    /// fine. The products of hours and of minutes wrap at 32 bits, beyond 596523
    /// hours and 35791394 minutes.
    constexpr void time_period(int days, int hours, int minutes, int seconds, int microseconds = 0);
    template <ka_integer Days, ka_integer Hours, ka_integer Minutes, ka_integer Seconds,
              ka_integer Microseconds = int>
    constexpr void time_period(Days days, Hours hours, Minutes minutes, Seconds seconds,
                               Microseconds microseconds = 0);

    /// The whole width of the platform's fields is taken. Fields of opposite
    /// signs, or a fraction of a second or more, throw `invalid_time_period`.
    void time_period(const timeval& value);

    template <typename... Numbers>
    requires(ka_wider_integer<Numbers> || ...) void time_period(Numbers...) = delete;

    /// True for -999999 to 999999.
    static constexpr bool is_microsecond(int value) noexcept;
    static constexpr bool is_microsecond(ka_integer auto value) noexcept;

    // Reading. The counts are totals, not clock fields: 90 minutes is 1 hour
    // and 90 minutes. They truncate toward zero and look at the whole seconds
    // alone.

    /// All 64 bits of the seconds, without the fraction.
    constexpr long long whole_seconds() const noexcept { return seconds_; }
    // These keep the low 32 bits: of days all that periods of dates and moments
    // can have, of seconds those of 68 years.
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

    // Order: the shorter, or more negative, first: by the seconds, and of the same
    // seconds by the fraction.

    constexpr bool operator==(const ka_time_period& other) const noexcept;
    constexpr bool operator!=(const ka_time_period& other) const noexcept { return !(*this == other); }
    constexpr bool operator<(const ka_time_period& other) const noexcept;
    constexpr bool operator>(const ka_time_period& other) const noexcept { return other < *this; }
    constexpr bool operator<=(const ka_time_period& other) const noexcept { return !(other < *this); }
    constexpr bool operator>=(const ka_time_period& other) const noexcept { return !(*this < other); }
    /// For a class that holds periods and defaults its own.
    constexpr std::strong_ordering operator<=>(const std::same_as<ka_time_period> auto& other) const noexcept;

    // Arithmetic.

    /// Seconds and fractions are added, and a whole second is carried: 0.75 and 0.5
    /// seconds are 1.25. The result has one sign again.
    constexpr ka_time_period operator+(const ka_time_period& other) const noexcept;
    /// As `*this + -other`; it throws only where that minus does.
    constexpr ka_time_period operator-(const ka_time_period& other) const;
    /// Throws `invalid_time_period` where the seconds have no opposite and
    /// microseconds stand beside them: the lowest seconds alone wrap to
    /// themselves.
    constexpr ka_time_period operator-() const;
    constexpr ka_time_period& operator+=(const ka_time_period& other) noexcept;
    constexpr ka_time_period& operator-=(const ka_time_period& other) { return *this = *this - other; }

    // By whole numbers of any type, up to 64 bits. Others do not compile: what a
    // fraction of a period is to be, its caller has to say.

    /// Exact for any factor as long as the seconds stay within 64 bits.
    constexpr ka_time_period operator*(int factor) const noexcept;
    constexpr ka_time_period operator*(ka_integer auto factor) const noexcept;
    constexpr ka_time_period& operator*=(int factor) noexcept { return *this = *this * factor; }
    constexpr ka_time_period& operator*=(ka_integer auto factor) noexcept;

    /// The quotient, truncated toward zero. Seconds and microseconds are
    /// truncated apart, so the last microsecond can be one too few: 1.000002
    /// seconds / 3 is 0.333333. A divisor of 0 throws `divide_by_zero`; -1 is
    /// the unary minus. A period whose seconds have wrapped throws
    /// `invalid_time_period` where the signs of the two quotients differ.
    constexpr ka_time_period operator/(int divisor) const;
    constexpr ka_time_period operator/(ka_integer auto divisor) const;
    constexpr ka_time_period& operator/=(int divisor) { return *this = *this / divisor; }
    constexpr ka_time_period& operator/=(ka_integer auto divisor);

    /// The remainders of the two fields, each for itself and with its own
    /// sign: 7.5 seconds % 2 is 1 second. It throws as the quotient does.
    constexpr ka_time_period operator%(int divisor) const;
    constexpr ka_time_period operator%(ka_integer auto divisor) const;
    constexpr ka_time_period& operator%=(int divisor) { return *this = *this % divisor; }
    constexpr ka_time_period& operator%=(ka_integer auto divisor);

    ka_time_period operator*(ka_no_factor auto) const = delete;
    ka_time_period operator/(ka_no_factor auto) const = delete;
    ka_time_period operator%(ka_no_factor auto) const = delete;
    ka_time_period& operator*=(ka_no_factor auto) = delete;
    ka_time_period& operator/=(ka_no_factor auto) = delete;
    ka_time_period& operator%=(ka_no_factor auto) = delete;

private:
    friend struct ka_access;
    friend class ka_time;

    // Named for all versions of the library; what follows is this one's own.
    constexpr void normalize_time_period(long long seconds, long long microseconds) noexcept;

    static constexpr long long seconds_per_day = 86400;
    static constexpr int microseconds_per_second = 1000000;

    static constexpr ka_time_period unchecked(long long seconds, int microseconds) noexcept;
    static constexpr ka_time_period of_one_sign(long long seconds, int microseconds);
    static constexpr bool are_of_opposite_signs(long long seconds, int microseconds) noexcept;
    static constexpr ka_time_period carried(long long seconds, int fraction) noexcept;
    static constexpr ka_time_period evened(long long seconds, int fraction) noexcept;
    constexpr ka_time_period integer_quotient(int divisor) const;
    static constexpr long long wrapping_sum(long long a, long long b) noexcept;
    static constexpr long long wrapping_difference(long long a, long long b) noexcept;
    static constexpr long long wrapping_product(long long a, long long b) noexcept;

    using given = ka_integers::given;
    [[noreturn]] static void refuse(given seconds, given microseconds);
    [[noreturn]] static void refuse(given days, given hours, given minutes, given seconds,
                                    given microseconds);
    [[noreturn]] static void refuse_zero_divisor();

    long long seconds_ = 0;
    int microseconds_ = 0;
};

/// The same as `period * factor`. What merely converts to a period, such as a
/// stopwatch, is not meant.
constexpr ka_time_period operator*(ka_integer auto factor,
                                   const std::derived_from<ka_time_period> auto& period) noexcept;

#include <time/inline/tperiod.h>
