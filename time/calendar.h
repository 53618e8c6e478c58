#pragma once

#include <time/date.h>
#include <time/export.h>
#include <time/time_of_day.h>
#include <time/tperiod.h>

/// A moment that comes back every year: a time of day on a fixed day, or on a
/// weekday of a month. Zone rules are made of these.
///
///     ka_calendar_date change(ka_time_period(0, 1, 0, 0, 0), 3, ka_last, 1);
///     change.date(2024);    // 31 March 2024, the last Sunday of March
///     change.time();        // 01:00
///
/// Two forms: absolute (`week` is `ka_none`), which goes by month and day, and
/// formula (any other `week`), which goes by month, week and weekday.
/// Failure: constructors and setters test in the order of their arguments and
/// throw before they store. Only `date` finds out whether a year has the day.
/// Numbers: of any integer type, checked as they were given.
/// Threads: a plain value.
class KA_TIME_VARNEL_API ka_calendar_date {
public:
    // Building.

    /// A fixed day: `when` not negative (`invalid_time_period`), month 1 to 12
    /// (`invalid_month`), day 1 to 31 (`invalid_day`), also in a short month.
    constexpr ka_calendar_date(const ka_time_period& when, unsigned short month, unsigned short day);
    constexpr ka_calendar_date(const ka_time_period& when, ka_integer auto month, ka_integer auto day);

    /// A weekday of a month: `when` not negative (`invalid_time_period`), month
    /// 1 to 12 (`invalid_month`), weekday 1 to 7 (`invalid_weekday`).
    constexpr ka_calendar_date(const ka_time_period& when, unsigned short month, ka_which_one week,
                               unsigned short weekday);
    constexpr ka_calendar_date(const ka_time_period& when, ka_integer auto month, ka_which_one week,
                               ka_integer auto weekday);

    constexpr ka_calendar_date(const ka_calendar_date&) noexcept = default;
    constexpr ka_calendar_date& operator=(const ka_calendar_date&) noexcept = default;

    // The date in a year.

    /// The day of that year. A year out of the range throws `invalid_year`. A
    /// year that lacks the day throws `invalid_date` (29 February) or
    /// `invalid_week` (a fifth Sunday); at the ends of the range a weekday can
    /// throw `invalid_day`, as the constructor of `ka_date` tells.
    constexpr ka_date date(short year) const;
    constexpr ka_date date(ka_integer auto year) const;

    /// `when` as a time of day, modulo a day: 25 hours give 01:00.
    constexpr ka_time time() const noexcept { return ka_time(when_); }

    // Fields.

    constexpr ka_time_period when() const noexcept { return when_; }
    constexpr unsigned short month() const noexcept { return month_; }
    /// 0 in the formula form.
    constexpr unsigned short day() const noexcept { return day_; }
    /// 0 in a date built as absolute; else the last weekday stored.
    constexpr unsigned short weekday() const noexcept { return weekday_; }
    /// `ka_none` in the absolute form.
    constexpr ka_which_one week() const noexcept { return week_; }

    constexpr void when(const ka_time_period& when) { when_ = checked_when(when); }
    constexpr void month(unsigned short month);
    constexpr void month(ka_integer auto month);
    /// Makes the form absolute. A day above 31 throws `invalid_day`; 0 is
    /// stored, and has no date in any year.
    constexpr void day(unsigned short day);
    constexpr void day(ka_integer auto day);
    /// Makes the form that of `week`. A weekday outside 1 to 7 throws `invalid_weekday`.
    constexpr void weekday(ka_which_one week, unsigned short weekday);
    constexpr void weekday(ka_which_one week, ka_integer auto weekday);

protected:
    constexpr bool is_absolute() const noexcept { return week_ == ka_none; }
    constexpr bool is_formula() const noexcept { return week_ != ka_none; }

private:
    friend struct ka_access;

    static constexpr const ka_time_period& checked_when(const ka_time_period& when);
    static constexpr unsigned short checked_month(ka_integer auto month);
    static constexpr unsigned short checked_day(long long lowest, ka_integer auto day);
    static constexpr unsigned short checked_weekday(ka_integer auto weekday);

    using given = ka_integers::given;
    [[noreturn]] static void refuse_when(const ka_time_period& when);
    [[noreturn]] static void refuse_month(given month);
    [[noreturn]] static void refuse_day(given day);
    [[noreturn]] static void refuse_weekday(given weekday);
    [[noreturn]] static void refuse_year(given year);

    ka_time_period when_;
    unsigned short month_;
    unsigned short day_ = 0;
    unsigned short weekday_ = 0;
    ka_which_one week_ = ka_none;
};

#include <time/inline/calendar.h>
