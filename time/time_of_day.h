#pragma once

#include <compare>
#include <concepts>
#include <ctime>
#include <iosfwd>
#include <string>

#include <time/export.h>
#include <time/inline/integer.h>
#include <time/tperiod.h>

/// A time of day, exact to the microsecond, with no date and no zone.
///
///     ka_time t(23, 30, 0);
///     t + ka_time_period(0, 1, 0, 0, 0);    // 00:30
///     ka_time(1, 0, 0) - t;                 // 1.5 hours: from 23:30 on to 01:00
///     t.to_string("%I:%M %p");              // "11:30 PM"
///
/// Range: 00:00:00.000000 to 23:59:59.999999, always.
/// Numbers: of any integer type, checked as they were given.
/// Overflow: arithmetic wraps at midnight, with a period of any length.
/// Failure: fields out of bounds throw `invalid_time`, and the time stays as
/// it was; nothing else throws but the codes of a format.
/// Threads: a plain value.
class KA_TIME_VARNEL_API ka_time {
public:
    // Building.

    /// Midnight, which is not the present time: see `now`.
    constexpr ka_time() noexcept = default;

    /// Hours 0 to 23, minutes and seconds 0 to 59, microseconds 0 to 999999;
    /// else `invalid_time`.
    constexpr ka_time(unsigned short hours, unsigned short minutes, unsigned short seconds,
                      unsigned int microseconds = 0);
    template <ka_integer Hours, ka_integer Minutes, ka_integer Seconds, ka_integer Microseconds = int>
    constexpr ka_time(Hours hours, Minutes minutes, Seconds seconds, Microseconds microseconds = 0);

    /// So many seconds from midnight, modulo a day: -1 is 23:59:59. A number alone
    /// is never refused: `ka_time(90)` is 00:01:30.
    constexpr ka_time(int seconds) noexcept : since_midnight_(seconds) { adjust(); }
    constexpr ka_time(ka_integer auto seconds) noexcept;

    /// A period from midnight, modulo a day: -1 microsecond is 23:59:59.999999.
    constexpr ka_time(const ka_time_period& since_midnight) noexcept;

    /// The time of a record's `tm_hour`, `tm_min` and `tm_sec`, each cut to 16
    /// bits; a leap second (60) is `invalid_time` as any other value above 59.
    ka_time(const std::tm& fields, unsigned int microseconds = 0);
    ka_time(const std::tm& fields, ka_integer auto microseconds);

    /// Integers of 128 bits don't compile; here and in `time` they would be cut.
    template <typename... Numbers>
    requires(ka_wider_integer<Numbers> || ...) ka_time(Numbers...)
    = delete;

    constexpr ka_time(const ka_time&) noexcept = default;
    constexpr ka_time& operator=(const ka_time&) noexcept = default;

    /// The machine's local wall clock, in whole milliseconds. It depends
    /// neither on the zones of this library nor on its having been started.
    static ka_time now();

    // Setting: as the constructors. A time that is refused stays what it was.

    constexpr void time(unsigned short hours, unsigned short minutes, unsigned short seconds,
                        unsigned int microseconds = 0);
    template <ka_integer Hours, ka_integer Minutes, ka_integer Seconds, ka_integer Microseconds = int>
    constexpr void time(Hours hours, Minutes minutes, Seconds seconds, Microseconds microseconds = 0);
    void time(const std::tm& fields, unsigned int microseconds = 0);
    void time(const std::tm& fields, ka_integer auto microseconds);

    template <typename... Numbers>
    requires(ka_wider_integer<Numbers> || ...) void time(Numbers...) = delete;

    // Reading, on a clock of 24 hours; `%I` prints the hour of one of 12.

    /// 0 to 23.
    constexpr unsigned short hours() const noexcept;
    /// 0 to 59.
    constexpr unsigned short minutes() const noexcept;
    /// 0 to 59.
    constexpr unsigned short seconds() const noexcept;
    /// 0 to 999999.
    constexpr unsigned int microseconds() const noexcept;

    /// Noon is PM, midnight is AM.
    constexpr bool is_pm() const noexcept { return second_of_day() >= 12 * 3600; }
    constexpr bool is_am() const noexcept { return !is_pm(); }

    /// The time since midnight.
    constexpr operator ka_time_period() const noexcept { return since_midnight_; }

    // Bounds of the fields. Each takes any integer, and none throws.

    static constexpr bool is_hour(unsigned short value) noexcept { return value <= 23; }
    static constexpr bool is_minute(unsigned short value) noexcept { return value <= 59; }
    static constexpr bool is_second(unsigned short value) noexcept { return value <= 59; }
    static constexpr bool is_microsecond(unsigned int value) noexcept { return value <= 999999; }
    static constexpr bool is_hour(ka_integer auto value) noexcept;
    static constexpr bool is_minute(ka_integer auto value) noexcept;
    static constexpr bool is_second(ka_integer auto value) noexcept;
    static constexpr bool is_microsecond(ka_integer auto value) noexcept;

    // Arithmetic, round the clock. Whole days of a period vanish, and the date
    // that they would step to is not told: for that there is `ka_time_and_date`.

    /// 23:30 and an hour is 00:30; 00:30 less 49 hours is 23:30. A period of any
    /// length and sign goes in, and nothing overflows.
    constexpr ka_time operator+(const ka_time_period& period) const noexcept;
    constexpr ka_time operator-(const ka_time_period& period) const noexcept;
    constexpr ka_time& operator+=(const ka_time_period& period) noexcept { return *this = *this + period; }
    constexpr ka_time& operator-=(const ka_time_period& period) noexcept { return *this = *this - period; }

    /// The time from the other on to this one, zero or more and below 24
    /// hours: 01:00 - 23:00 is 2 hours, 23:00 - 01:00 is 22.
    constexpr ka_time_period operator-(const ka_time& other) const noexcept;

    // Order within one day: there is no wrap, 23:00 is later than 01:00.

    constexpr bool operator==(const ka_time& other) const noexcept;
    constexpr bool operator!=(const ka_time& other) const noexcept { return !(*this == other); }
    constexpr bool operator<(const ka_time& other) const noexcept;
    constexpr bool operator>(const ka_time& other) const noexcept { return other < *this; }
    constexpr bool operator<=(const ka_time& other) const noexcept { return !(other < *this); }
    constexpr bool operator>=(const ka_time& other) const noexcept { return !(*this < other); }
    /// For a class that holds times and defaults its own.
    constexpr std::strong_ordering operator<=>(const std::same_as<ka_time> auto& other) const noexcept;

    // The limits, 00:00:00.000000 and 23:59:59.999999. The references are valid
    // from the start of the library to its stop.

    static const ka_time& min_time() noexcept;
    static const ka_time& max_time() noexcept;

    // The texts for morning and afternoon, as the user's locale has them when
    // the library starts; empty in a locale that has none. A reference shows
    // later changes and is valid until the library stops.

    static const std::string& am_name() noexcept;
    static const std::string& pm_name() noexcept;
    static void am_name(const std::string& text);
    static void pm_name(const std::string& text);

    // Text. The codes of a format are those of docs/format.md. A code for a
    // number of the date prints a zero, one for the zone nothing; one for a
    // weekday, a week or the day of the year throws `invalid_date`, one for a
    // month's name `invalid_month`.

    /// In the default format.
    std::string to_string() const;
    std::string to_string(const std::string& format) const;
    /// Writes `to_string()`; the stream's width and fill apply.
    void print(std::ostream& stream) const;

    /// The default format, "%H:%M:%S:%q" at start: 18:28:38:000123.
    static std::string default_format();
    static void default_format(const std::string& format);

private:
    friend struct ka_access;

    // Named for all versions of the library; what follows is this one's own.
    constexpr ka_time& adjust() noexcept;

    static constexpr ka_time unchecked(int second_of_day, int microsecond) noexcept;
    constexpr unsigned int second_of_day() const noexcept;
    using given = ka_integers::given;
    [[noreturn]] static void refuse(given hours, given minutes, given seconds, given microseconds);

    ka_time_period since_midnight_;
};

// Beside a time a period is a period, and nothing that converts to one: a number
// or a stopwatch there does not compile.

/// The period on the right is taken as a time of day, round the clock: 01:00 is
/// equal to a period of 25 hours here, and not in the next comparison.
constexpr bool operator==(const std::derived_from<ka_time> auto& time,
                          const std::derived_from<ka_time_period> auto& period) noexcept;
constexpr bool operator!=(const std::derived_from<ka_time> auto& time,
                          const std::derived_from<ka_time_period> auto& period) noexcept;

/// The time on the right is taken as the period since midnight.
constexpr bool operator==(const std::derived_from<ka_time_period> auto& period,
                          const std::derived_from<ka_time> auto& time) noexcept;
constexpr bool operator!=(const std::derived_from<ka_time_period> auto& period,
                          const std::derived_from<ka_time> auto& time) noexcept;

#include <time/inline/time_of_day.h>
