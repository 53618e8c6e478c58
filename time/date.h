#pragma once

#include <compare>
#include <concepts>
#include <ctime>
#include <iosfwd>
#include <string>

#include <time/export.h>
#include <time/inline/gregorian.h>
#include <time/inline/integer.h>
#include <time/tperiod.h>

/// Which occurrence of a weekday in a month is meant. Any other number counts
/// on in the same way: -3 is the third from the end.
enum ka_which_one : int {
    ka_next_to_last = -2,
    ka_last = -1,
    ka_none = 0,
    ka_first = 1,
    ka_second = 2,
    ka_third = 3,
    ka_fourth = 4,
    ka_fifth = 5
};

/// The enumerator's own name, such as "ka_last"; "out of range" for any other number.
KA_TIME_VARNEL_API const char* ka_which_one_name(ka_which_one which) noexcept;

/// A date of the Gregorian calendar, which is applied to all of the range:
/// there is no change-over in 1582, and the leap rule of centuries holds B.C.
///
///     ka_date d(2, 29, 2024);                       // month, day, year
///     d.weekday();                                  // 5, a Thursday
///     d + ka_time_period(366, 0, 0, 0);             // 1 March 2025
///     ka_date(ka_last, 1, 10, 2024);                // 27 October 2024, the last Sunday
///     d.to_string("%A, %d %B %f");                  // "Thursday, 29 February 2024"
///
/// A date is one number, the Julian Day Number, and is copied like one.
///
/// Range: 1 January -4713, day number 38, to 31 December 32766, day number
/// 13688960. Years are negative B.C. (-1 is 1 B.C.), and there is no year 0.
/// Months count from 1, days of the month from 1, weekdays from 1 (Sunday) to
/// 7 (Saturday).
/// Numbers: of any integer type. Each is checked as it was given, before it is
/// narrowed, so that year 67560 is refused, and shown, as any year of no date.
/// Failure: `ka_time_varnel_error` with the code named at each operation; the
/// date stays as it was. Only `++` and `--`, and `next` and `previous` at its
/// ends, leave the range.
/// Threads: a plain value. The calendar needs no start of the library, and
/// works at compile time but for `today`; names, texts and limits do need it.
class KA_TIME_VARNEL_API ka_date {
public:
    // Building.

    /// 1 January 1970, which is not today: see `today`.
    constexpr ka_date() noexcept = default;

    /// The date of a day number, 38 to 13688960; else `invalid_day`.
    constexpr ka_date(int julian_day);
    constexpr ka_date(ka_integer auto julian_day);

    /// A day that the calendar has, or `invalid_date`.
    constexpr ka_date(unsigned short month, unsigned short day, short year) { date(month, day, year); }
    constexpr ka_date(ka_integer auto month, ka_integer auto day, ka_integer auto year);

    /// The first, last or n-th weekday of a month: see `date` with `which`.
    constexpr ka_date(const ka_which_one& which, unsigned short weekday, unsigned short month, short year);
    constexpr ka_date(const ka_which_one& which, ka_integer auto weekday, ka_integer auto month,
                      ka_integer auto year);

    template <typename... Numbers>
    requires(ka_wider_integer<Numbers> || ...) ka_date(Numbers...)
    = delete;

    constexpr ka_date(const ka_date&) noexcept = default;
    constexpr ka_date& operator=(const ka_date&) noexcept = default;

    /// Today in the process's local time, as the C runtime sees it.
    static ka_date today();

    // Setting.

    /// Any part that is wrong throws `invalid_date`, showing all three.
    constexpr void date(unsigned short month, unsigned short day, short year);
    constexpr void date(ka_integer auto month, ka_integer auto day, ka_integer auto year);

    /// The n-th weekday of a month from its start, or from its end where
    /// `which` is below 0. Tests, in this order: the month (`invalid_month`),
    /// the year (`invalid_year`), the weekday (`invalid_weekday`), the range on
    /// the way (`invalid_day`: the last weekday of December 32766 is counted
    /// from a day that does not exist), and that the day found is in a month of
    /// that number (`invalid_week`: a fifth Monday that the month lacks, or
    /// `ka_none`).
    constexpr void date(const ka_which_one& which, unsigned short weekday, unsigned short month, short year);
    constexpr void date(const ka_which_one& which, ka_integer auto weekday, ka_integer auto month,
                        ka_integer auto year);

    template <typename... Numbers>
    requires(ka_wider_integer<Numbers> || ...) void date(Numbers...) = delete;

    // Reading. Each of these works the calendar out afresh from the day number;
    // for all three parts at once there is `calc_calendar_date`.

    constexpr int julian_day() const noexcept { return julian_day_; }
    constexpr short year() const noexcept
    {
        return static_cast<short>(ka_gregorian::split(julian_day_).year);
    }
    constexpr unsigned short month() const noexcept;
    constexpr unsigned short day() const noexcept;

    /// 0 on 1 January, 364 or 365 on 31 December. A date stepped out of the
    /// range throws `invalid_date`.
    constexpr unsigned short day_of_year() const;
    constexpr bool is_leap_year() const noexcept { return is_leap_year(year()); }
    constexpr bool is_ad() const noexcept { return julian_day_ > ka_gregorian::last_bc_day; }
    constexpr bool is_bc() const noexcept { return julian_day_ <= ka_gregorian::last_bc_day; }

    // The seven-day cycle.

    /// 1 (Sunday) to 7 (Saturday).
    constexpr unsigned short weekday() const noexcept;

    /// The nearest later date on a weekday, 1 to 7 days on. The day after must
    /// be in the range (`invalid_day`); the result can lie up to 6 days beyond.
    /// A weekday outside 1 to 7 throws `invalid_weekday`.
    constexpr ka_date next(unsigned short weekday) const;
    constexpr ka_date next(ka_integer auto weekday) const;

    /// The nearest earlier date on a weekday, 1 to 7 days back. Day number 37
    /// can be the result; a walk further down throws `invalid_day`, showing 37.
    /// A weekday outside 1 to 7 throws `invalid_weekday`.
    constexpr ka_date previous(unsigned short weekday) const;
    constexpr ka_date previous(ka_integer auto weekday) const;

    /// The week of the year, 0 to 53, in weeks that begin on Sunday.
    constexpr unsigned short week_of_year() const;

    /// The week of the year, in weeks that begin on the weekday `first`. Week 1
    /// begins with the first such day of January, and the days before it are
    /// week 0: 1 and 2 give what `strftime` prints for %U and %W. This is not
    /// the week of ISO 8601. A date stepped out of the range throws
    /// `invalid_date`, a weekday outside 1 to 7 `invalid_weekday`.
    constexpr unsigned short week_of_year(unsigned short first) const;
    constexpr unsigned short week_of_year(ka_integer auto first) const;

    // Order: the earlier first.

    constexpr bool operator==(const ka_date& other) const noexcept;
    constexpr bool operator!=(const ka_date& other) const noexcept { return !(*this == other); }
    constexpr bool operator<(const ka_date& other) const noexcept { return julian_day_ < other.julian_day_; }
    constexpr bool operator>(const ka_date& other) const noexcept { return julian_day_ > other.julian_day_; }
    constexpr bool operator<=(const ka_date& other) const noexcept { return !(*this > other); }
    constexpr bool operator>=(const ka_date& other) const noexcept { return !(*this < other); }
    /// For a class that holds dates and defaults its own.
    constexpr std::strong_ordering operator<=>(const std::same_as<ka_date> auto& other) const noexcept;

    // Moving.

    /// One day on, or back, with no check: past 31 December 32766 lies day
    /// number 13688961, which reads as 1 January 32767.
    constexpr ka_date& operator++() noexcept;
    constexpr ka_date& operator--() noexcept;
    /// The same, but a date that is out of the range throws `invalid_day`
    /// before it moves.
    constexpr ka_date operator++(int);
    constexpr ka_date operator--(int);

    /// The date so many whole days on; the rest of the period is dropped, so
    /// 23 hours move nothing. Leaving the range throws `invalid_day`, showing
    /// the number reached.
    constexpr ka_date operator+(const ka_time_period& period) const;
    constexpr ka_date operator-(const ka_time_period& period) const;
    constexpr ka_date& operator+=(const ka_time_period& period) { return *this = *this + period; }
    constexpr ka_date& operator-=(const ka_time_period& period) { return *this = *this - period; }

    /// The days from the other date to this one, negative where this is earlier.
    constexpr ka_time_period operator-(const ka_date& other) const noexcept;

    // The limits, 1 January -4713 and 31 December 32766.

    static const ka_date& min_date() noexcept;
    static const ka_date& max_date() noexcept;

    // The calendar itself: no state, any thread, any time.

    /// -4713 to 32766, without 0.
    static constexpr bool is_year(short year) noexcept { return ka_gregorian::is_year(year); }
    static constexpr bool is_year(ka_integer auto year) noexcept;

    /// 1 to 12.
    static constexpr bool is_month(unsigned short month) noexcept { return ka_gregorian::is_month(month); }
    static constexpr bool is_month(ka_integer auto month) noexcept;

    /// 1 to 7.
    static constexpr bool is_weekday(unsigned short weekday) noexcept;
    static constexpr bool is_weekday(ka_integer auto weekday) noexcept;

    /// 38 to 13688960.
    static constexpr bool is_julian_day(int julian_day) noexcept;
    static constexpr bool is_julian_day(ka_integer auto julian_day) noexcept;

    /// False for a year that `is_year` refuses.
    static constexpr bool is_leap_year(short year) noexcept;
    static constexpr bool is_leap_year(ka_integer auto year) noexcept;

    /// True for a day that the calendar has, in a month and year that it has.
    static constexpr bool is_day_in_month(unsigned short month, unsigned short day, short year) noexcept;
    static constexpr bool is_day_in_month(ka_integer auto month, ka_integer auto day,
                                          ka_integer auto year) noexcept;

    /// 365 or 366; 365 for any year of 16 bits out of the range but 0. Throws
    /// `invalid_year` for 0 and for a year that 16 bits do not hold.
    static constexpr unsigned short days_in_year(short year);
    static constexpr unsigned short days_in_year(ka_integer auto year);

    /// 28 to 31. Throws `invalid_month`, then, for the years that
    /// `days_in_year` refuses, `invalid_year`.
    static constexpr unsigned short days_in_month(unsigned short month, short year);
    static constexpr unsigned short days_in_month(ka_integer auto month, ka_integer auto year);

    /// The day number of a date. The day is not checked and runs on: 30
    /// February is 2 March or 1 March, day 0 the day before the first. Throws
    /// `invalid_month`, then, for the years that `days_in_year` refuses,
    /// `invalid_year`, then, for a day out of 0 to 65535, `invalid_day`. For any
    /// other year out of the range the number is no calendar date's.
    static constexpr int calc_julian_day(unsigned short month, unsigned short day, short year);
    static constexpr int calc_julian_day(ka_integer auto month, ka_integer auto day, ka_integer auto year);

    /// The date of a day number; a null pointer is skipped. The number is not
    /// checked: the neighbouring days of the range give the neighbouring dates,
    /// and numbers further out no promised result.
    static constexpr void calc_calendar_date(int julian_day, unsigned short* month, unsigned short* day,
                                             short* year) noexcept;

    // Names, in the user's language as it was when the library started. A
    // reference shows later changes and is valid until the library stops.

    /// The full name, or `invalid_month`.
    static const std::string& month_name(unsigned short month);
    static const std::string& month_abbreviation(unsigned short month);
    static const std::string& month_name(ka_integer auto month);
    static const std::string& month_abbreviation(ka_integer auto month);
    /// 1 to 12 for a full or abbreviated name, else 0. Case makes no difference
    /// to bytes of which `tolower` makes one, as the process's `LC_CTYPE` has
    /// it: A to Z, but for I in Turkish ones; others in one with a byte to a letter.
    static unsigned short month_index(const std::string& name);

    /// The full name, or `invalid_weekday`.
    static const std::string& weekday_name(unsigned short weekday);
    static const std::string& weekday_abbreviation(unsigned short weekday);
    static const std::string& weekday_name(ka_integer auto weekday);
    static const std::string& weekday_abbreviation(ka_integer auto weekday);
    /// 1 to 7 for a full or abbreviated name, else 0; compared as months are.
    static unsigned short weekday_index(const std::string& name);

    /// The era names, "A.D." and "B.C." at start.
    static const std::string& ad_name() noexcept;
    static const std::string& bc_name() noexcept;
    static void ad_name(const std::string& text);
    static void bc_name(const std::string& text);

    // Text. The codes of a format are those of docs/format.md; a code for the
    // time of day prints midnight.

    /// In the default format.
    std::string to_string() const;
    std::string to_string(const std::string& format) const;
    /// Writes `to_string()`; the stream's width and fill apply.
    void print(std::ostream& stream) const;

    /// The default format, "%x" at start: the date as the user's locale has it.
    static std::string default_format();
    static void default_format(const std::string& format);

protected:
    /// The date of a record's `tm_mon`, `tm_mday` and `tm_year`; else `invalid_date`.
    explicit ka_date(const std::tm& fields);
    void date(const std::tm& fields);

private:
    friend struct ka_access;

    using given = ka_integers::given;
    // Named for all versions of the library; what follows is this one's own.
    explicit constexpr ka_date(const ka_time_period& since_day_zero);

    static constexpr int checked_day(ka_integer auto julian_day);
    static constexpr unsigned short checked_weekday(ka_integer auto weekday);
    static constexpr ka_date unchecked(int julian_day) noexcept;
    constexpr int new_year() const;
    static constexpr int nth_weekday(int which, int weekday, int month, int year);
    static constexpr void check_weekday_out_of_month(int which, int end, int found, int month);

    // What is refused, and in which words: in the class's source.
    [[noreturn]] static void refuse_day(given julian_day);
    [[noreturn]] static void refuse_whole_days(int julian_day);
    [[noreturn]] static void refuse_date(given month, given day, given year);
    [[noreturn]] static void refuse_month(given month);
    [[noreturn]] static void refuse_month_of_weekday(given month);
    [[noreturn]] static void refuse_year(given year);
    [[noreturn]] static void refuse_year_zero();
    [[noreturn]] static void refuse_weekday(given weekday);
    [[noreturn]] static void refuse_week();

    int julian_day_ = ka_gregorian::unix_epoch;
};

#include <time/inline/date.h>
