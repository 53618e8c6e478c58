#pragma once

#include <algorithm>
#include <charconv>
#include <compare>
#include <concepts>
#include <string>
#include <system_error>
#include <type_traits>
#include <utility>

#include <time/chrono.h>
#include <time/date.h>
#include <time/error.h>
#include <time/export.h>
#include <time/local.h>
#include <time/timedate.h>
#include <time/tperiod.h>

/// Months, quarters and years; ages; weeks of ISO 8601; business days; and a
/// period as people read it.
///
///     #include <time/months.h>
///
///     ka_date(1, 31, 2024) + ka_months(1);                              // 29 February 2024
///     ka_years_between(ka_date(7, 4, 1990), ka_date(7, 3, 2024));       // 33
///     ka_iso_week(ka_date(12, 30, 2024)).year();                        // 2025
///     ka_business_day(ka_date(7, 4, 2024), 2);                          // 8 July 2024
///     ka_period_text(ka_time_period(0, 2, 5, 0, 0));                    // "2 h 05 min"
///
/// All but what refuses is compiled into the program that uses it, and works at
/// compile time too, but for moments and strings.
/// Range: that of `ka_date`. There is no year 0: a year after -1 is 1.
/// Failure: `ka_time_varnel_error` with the code named; what was given stays.

// Refused values: the library throws, so that a host can be built without exceptions.

[[noreturn]] KA_TIME_VARNEL_API void ka_refuse_months(ka_error code, long long given, int line);

/// A number of calendar months, or of what has so many months each. It meets
/// dates alone: a month is no period, as its length depends on where it lies.
///
///     ka_date(2, 29, 2024) + ka_years(1);                   // 28 February 2025
///     ka_date(11, 30, 2024) + ka_quarters(1);               // 28 February 2025
///     ka_date(1, 15, -1) + ka_years(1);                     // 15 January 1
template <int MonthsEach>
class ka_calendar_count {
public:
    constexpr ka_calendar_count() noexcept = default;
    /// Any integer that `int` holds; else `invalid_year`, since no calendar
    /// reaches that far.
    template <std::integral Number>
    explicit constexpr ka_calendar_count(Number count);

    constexpr int count() const noexcept { return count_; }
    /// The same in months, in 64 bits.
    constexpr long long months() const noexcept { return static_cast<long long>(MonthsEach) * count_; }

    // Results that `int` does not hold throw `invalid_year`.

    constexpr ka_calendar_count operator-() const
    {
        return ka_calendar_count(-static_cast<long long>(count_));
    }
    constexpr ka_calendar_count operator+(ka_calendar_count other) const;
    constexpr ka_calendar_count operator-(ka_calendar_count other) const;
    constexpr ka_calendar_count operator*(int factor) const;

    constexpr bool operator==(const ka_calendar_count&) const noexcept = default;
    constexpr std::strong_ordering operator<=>(const ka_calendar_count&) const noexcept = default;

private:
    int count_ = 0;
};

using ka_months = ka_calendar_count<1>;
using ka_quarters = ka_calendar_count<3>;
using ka_years = ka_calendar_count<12>;

/// What becomes of a day that the month arrived at lacks: 31 January and a month.
enum class ka_month_end {
    clamp,  ///< the last day of that month: 29 or 28 February
    run_on, ///< so many days on: 2 or 3 March
    refuse  ///< `invalid_date`
};

/// The same day of the month, so many months on. The day is looked at once, at
/// the end: 31 January and two months is 31 March. A month before January
/// -4713, or after December 32766, throws `invalid_year`, showing its year.
///
///     ka_date due(1, 31, 2023);
///     ka_add(due, ka_months(1));                            // 28 February 2023
///     ka_add(due, ka_months(1), ka_month_end::run_on);      // 3 March 2023
///     ka_add(due, ka_months(2), ka_month_end::refuse);      // 31 March 2023
template <int MonthsEach>
constexpr ka_date ka_add(const ka_date& date, ka_calendar_count<MonthsEach> count,
                         ka_month_end end = ka_month_end::clamp);

/// As `ka_add`, clamped.
template <int MonthsEach>
constexpr ka_date operator+(const ka_date& date, ka_calendar_count<MonthsEach> count);
template <int MonthsEach>
constexpr ka_date operator-(const ka_date& date, ka_calendar_count<MonthsEach> count);
template <int MonthsEach>
constexpr ka_date& operator+=(ka_date& date, ka_calendar_count<MonthsEach> count);
template <int MonthsEach>
constexpr ka_date& operator-=(ka_date& date, ka_calendar_count<MonthsEach> count);

/// For a moment: the same local time in its zone on the moved date, and of a
/// local time that the clocks skip or repeat there the one that `choice` says.
/// No months leave the moment as it is. Not for the compiler.
///
///     ka_time_and_date call(ka_time(2, 30, 0), ka_date(2, 10, 2024), ka_time_zone::pacific());
///     ka_add(call, ka_months(1)).time();                    // 03:30, as 02:30 is skipped
///     (call + ka_months(2)).time();                         // 02:30
template <int MonthsEach>
ka_time_and_date ka_add(const ka_time_and_date& moment, ka_calendar_count<MonthsEach> count,
                        ka_month_end end = ka_month_end::clamp,
                        ka_local_choice choice = ka_local_choice::compatible);
template <int MonthsEach>
ka_time_and_date operator+(const ka_time_and_date& moment, ka_calendar_count<MonthsEach> count);
template <int MonthsEach>
ka_time_and_date operator-(const ka_time_and_date& moment, ka_calendar_count<MonthsEach> count);
template <int MonthsEach>
ka_time_and_date& operator+=(ka_time_and_date& moment, ka_calendar_count<MonthsEach> count);
template <int MonthsEach>
ka_time_and_date& operator-=(ka_time_and_date& moment, ka_calendar_count<MonthsEach> count);

// How far two dates are apart.

/// Years, months and days of one sign, as `ka_until` gives them: fewer than 12
/// months beside the years.
struct ka_span {
    int years = 0;
    int months = 0;
    int days = 0;

    constexpr bool operator==(const ka_span&) const noexcept = default;
};

/// From one date to another: as many whole months as, clamped, do not lead past
/// `to`, and the days that are left. `from + ka_until(from, to)` is `to`, always.
///
///     ka_span apart = ka_until(ka_date(1, 31, 2024), ka_date(3, 1, 2025));
///     apart.years;      // 1
///     apart.months;     // 1
///     apart.days;       // 1
constexpr ka_span ka_until(const ka_date& from, const ka_date& to);

/// The date so far on: first the years and months together, clamped, then the days.
constexpr ka_date operator+(const ka_date& from, const ka_span& span);

/// The whole months from one date to another, negative where `to` is earlier:
/// the most that, clamped, do not lead past `to`.
constexpr int ka_months_between(const ka_date& from, const ka_date& to);

/// The whole years, so an age. A year is complete on the anniversary, which is
/// `ka_add(from, ka_years(n), end)`. For somebody born on 29 February 2004:
///
///     on                  clamp    run_on
///     27 February 2025     20        20
///     28 February 2025     21        20
///     1 March 2025         21        21
///     28 February 2028     23        23
///     29 February 2028     24        24
///
/// With `refuse`, a year in which the anniversary is lacking throws `invalid_date`.
constexpr int ka_years_between(const ka_date& from, const ka_date& to,
                               ka_month_end end = ka_month_end::clamp);

// Weeks.

/// A day by year, week and weekday, as ISO 8601 counts them: weeks begin on
/// Monday, and a week belongs to the year that its Thursday is in. Unlike
/// elsewhere in the library, weekdays are 1 (Monday) to 7 (Sunday).
///
///     ka_iso_week week(ka_date(12, 30, 2024));
///     week.week();                                          // 1
///     week.weekday();                                       // 1
///     ka_iso_week(2020, 53, 7).date();                      // 3 January 2021
///     ka_iso_week::weeks_of_year(2020);                     // 53
class ka_iso_week {
public:
    constexpr ka_iso_week(const ka_date& date);
    /// Checked in this order: `invalid_year`, `invalid_week` (0, or beyond the
    /// weeks of the year), `invalid_weekday`; and `invalid_day` for the days of
    /// the last week that lie after 31 December 32766.
    constexpr ka_iso_week(long long year, long long week, long long weekday = 1);

    constexpr short year() const noexcept { return year_; }
    /// 1 to 53.
    constexpr unsigned short week() const noexcept { return week_; }
    /// 1 (Monday) to 7 (Sunday).
    constexpr unsigned short weekday() const noexcept { return weekday_; }
    constexpr ka_date date() const;

    /// 52 or 53; else `invalid_year`.
    static constexpr unsigned short weeks_of_year(long long year);

    constexpr bool operator==(const ka_iso_week&) const noexcept = default;

private:
    static constexpr int first_monday(short year);

    short year_;
    unsigned short week_;
    unsigned short weekday_;
};

// Where a date lies, and the first and last days around it. A day that is out
// of the range throws `invalid_day`.

/// 1 to 4.
constexpr int ka_quarter(const ka_date& date) noexcept;
/// From 0, as `day_of_year`.
constexpr int ka_day_of_quarter(const ka_date& date);
/// Saturday or Sunday.
constexpr bool ka_is_weekend(const ka_date& date) noexcept;

constexpr ka_date ka_first_of_month(const ka_date& date);
constexpr ka_date ka_last_of_month(const ka_date& date);
constexpr ka_date ka_first_of_quarter(const ka_date& date);
constexpr ka_date ka_last_of_quarter(const ka_date& date);
constexpr ka_date ka_first_of_year(const ka_date& date);
constexpr ka_date ka_last_of_year(const ka_date& date);
/// Of the week around a date, which begins on the weekday `first`, 1 (Sunday)
/// to 7; else `invalid_weekday`.
constexpr ka_date ka_first_of_week(const ka_date& date, unsigned short first = 1);
constexpr ka_date ka_last_of_week(const ka_date& date, unsigned short first = 1);

/// All days of a month, of a year; `invalid_date` where there are none such.
///
///     int mondays = 0;
///     for (ka_date day : ka_days_of_month(7, 2024))
///         mondays += day.weekday() == 2;
///     mondays;                                              // 5
constexpr ka_days ka_days_of_month(long long month, long long year);
constexpr ka_days ka_days_of_year(long long year);
/// All days of a quarter, 1 to 4, of the year; `invalid_date` for any other.
constexpr ka_days ka_days_of_quarter(long long quarter, long long year);
/// All days of the week around a date.
constexpr ka_days ka_days_of_week(const ka_date& date, unsigned short first = 1);

// Business days: Monday to Friday, without the holidays. These are a function
// that tells of a date whether it is one, or a sorted range of dates.

/// No day at all.
struct ka_no_holidays {
    constexpr bool operator()(const ka_date&) const noexcept { return false; }
};

template <typename Holidays = ka_no_holidays>
constexpr bool ka_is_business_day(const ka_date& date, const Holidays& holidays = {});

/// The n-th business day after a date, before it where n is below 0; with 0 the
/// date itself, or the next one where it is none. Walks from day to day; leaving
/// the range throws `invalid_day`.
///
///     ka_date holidays[] = {ka_date(7, 4, 2024), ka_date(12, 25, 2024)};
///     ka_business_day(ka_date(7, 3, 2024), 1, holidays);            // 5 July 2024
///     ka_business_day(ka_date(9, 1, 2024), -1);                     // 30 August 2024
template <typename Holidays = ka_no_holidays>
constexpr ka_date ka_business_day(const ka_date& date, int n, const Holidays& holidays = {});

// Text.

/// The words for units of time, one and more.
struct ka_period_units {
    const char* day = "day";
    const char* days = "days";
    const char* hour = "h";
    const char* hours = "h";
    const char* minute = "min";
    const char* minutes = "min";
    const char* second = "s";
    const char* seconds = "s";
    const char* millisecond = "ms";
    const char* milliseconds = "ms";
    const char* microsecond = "us";
    const char* microseconds = "us";
};

/// A period as people read it: the largest unit that it has and those that
/// follow, `count` in all; less is dropped, as are units of zero at the end.
/// Minutes and seconds behind another unit have two digits.
///
///     ka_period_text(ka_time_period(3, 0, 0, 0));                   // "3 days"
///     ka_period_text(ka_time_period(1, 2, 5, 9), 4);                // "1 day 2 h 05 min 09 s"
///     ka_period_text(ka_time_period(0, -2, -5, -9));                // "-2 h 05 min"
std::string ka_period_text(const ka_time_period& period, int count = 2, const ka_period_units& units = {});

/// The same into the characters from `first` to before `last`, as
/// `std::to_chars` writes: the end of the text, or `value_too_large`.
constexpr std::to_chars_result ka_write_period_text(char* first, char* last, const ka_time_period& period,
                                                    int count = 2,
                                                    const ka_period_units& units = {}) noexcept;

#include <time/inline/months.h>
