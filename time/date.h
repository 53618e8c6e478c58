#pragma once

#include <concepts>
#include <ctime>
#include <iosfwd>
#include <string>
#include <type_traits>

#include <time/export.h>
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
///     ka_date(ka_last, 1, 10, 2024);                // the last Sunday of October: the 27th
///     d.to_string("%A, %d %B %f");                  // "Thursday, 29 February 2024"
///
/// A date is one number, the Julian Day Number, and is copied like one.
///
/// Range: 1 January -4713, day number 38, to 31 December 32766, day number
/// 13688960. Years are negative B.C. (-1 is 1 B.C.), and there is no year 0.
/// Months count from 1, days of the month from 1, weekdays from 1 (Sunday) to
/// 7 (Saturday).
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
    constexpr ka_date(int julian_day) : julian_day_(checked_day(julian_day)) {}
    /// The same, from any other integer, of which no bit is lost on the way.
    template <std::integral Number>
    constexpr ka_date(Number julian_day) : julian_day_(checked_day(julian_day))
    {}

    /// A day that the calendar has, or `invalid_date`.
    constexpr ka_date(unsigned short month, unsigned short day, short year) { date(month, day, year); }

    /// The first, last or n-th weekday of a month: see `date` with `which`.
    constexpr ka_date(const ka_which_one& which, unsigned short weekday, unsigned short month, short year)
    {
        date(which, weekday, month, year);
    }

    constexpr ka_date(const ka_date&) noexcept = default;
    constexpr ka_date& operator=(const ka_date&) noexcept = default;

    /// Today in the process's local time, as the C runtime sees it.
    static ka_date today();

    // Setting.

    /// Any part that is wrong throws `invalid_date`, showing all three.
    constexpr void date(unsigned short month, unsigned short day, short year)
    {
        if (!is_day_in_month(month, day, year))
            refuse_date(month, day, year);
        julian_day_ = day_number(month, day, astronomical(year));
    }

    /// The n-th weekday of a month from its start, or from its end where
    /// `which` is below 0. Tests, in this order: the month (`invalid_month`),
    /// the year (`invalid_year`), the weekday (`invalid_weekday`), the range on
    /// the way (`invalid_day`: the last weekday of December 32766 is counted
    /// from a day that does not exist), and that the day found is in a month of
    /// that number (`invalid_week`: a fifth Monday that the month lacks, or
    /// `ka_none`).
    constexpr void date(const ka_which_one& which, unsigned short weekday, unsigned short month, short year)
    {
        if (!is_month(month))
            refuse_month_of_weekday(month);
        if (!is_year(year))
            refuse_year(year);
        if (!is_weekday(weekday))
            refuse_weekday(weekday);
        julian_day_ = nth_weekday(which, weekday, month, year);
    }

    // Reading. Each of these works the calendar out afresh from the day number;
    // for all three parts at once there is `calc_calendar_date`.

    constexpr int julian_day() const noexcept { return julian_day_; }
    constexpr short year() const noexcept { return static_cast<short>(split(julian_day_).year); }
    constexpr unsigned short month() const noexcept
    {
        return static_cast<unsigned short>(split(julian_day_).month);
    }
    constexpr unsigned short day() const noexcept
    {
        return static_cast<unsigned short>(split(julian_day_).day);
    }

    /// 0 on 1 January, 364 or 365 on 31 December. A date stepped out of the
    /// range throws `invalid_date`.
    constexpr unsigned short day_of_year() const
    {
        return static_cast<unsigned short>(julian_day_ - new_year().julian_day_);
    }
    constexpr bool is_leap_year() const noexcept { return is_leap_year(year()); }
    constexpr bool is_ad() const noexcept { return julian_day_ > last_bc_day; }
    constexpr bool is_bc() const noexcept { return julian_day_ <= last_bc_day; }

    // The seven-day cycle.

    /// 1 (Sunday) to 7 (Saturday).
    constexpr unsigned short weekday() const noexcept { return weekday_of(julian_day_); }

    /// The nearest later date on a weekday, 1 to 7 days on. The day after must
    /// be in the range (`invalid_day`); the result can lie up to 6 days beyond.
    /// A weekday outside 1 to 7 throws `invalid_weekday`.
    constexpr ka_date next(unsigned short weekday) const
    {
        ka_date found(julian_day_ + 1);
        if (!is_weekday(weekday))
            refuse_weekday(weekday);
        found.julian_day_ += days_until(found.weekday(), weekday);
        return found;
    }

    /// The nearest earlier date on a weekday, 1 to 7 days back. Day number 37
    /// can be the result; a walk further down throws `invalid_day`, showing 37.
    /// A weekday outside 1 to 7 throws `invalid_weekday`.
    constexpr ka_date previous(unsigned short weekday) const
    {
        ka_date found(julian_day_ - 1);
        if (!is_weekday(weekday))
            refuse_weekday(weekday);
        found.julian_day_ -= days_until(weekday, found.weekday());
        if (found.julian_day_ < first_day - 1)
            refuse_day(first_day - 1ll);
        return found;
    }

    /// The week of the year, 0 to 53, in weeks that begin on Sunday.
    constexpr unsigned short week_of_year() const { return week_of_year(1); }

    /// The week of the year, in weeks that begin on the weekday `first`. Week 1
    /// begins with the first such day of January, and the days before it are
    /// week 0: 1 and 2 give what `strftime` prints for %U and %W. This is not
    /// the week of ISO 8601. A date stepped out of the range throws
    /// `invalid_date`, a weekday outside 1 to 7 `invalid_weekday`.
    constexpr unsigned short week_of_year(unsigned short first) const
    {
        const ka_date january_1 = new_year();
        if (!is_weekday(first))
            refuse_weekday(first);
        const int week_1 = january_1.julian_day_ + days_until(january_1.weekday(), first);
        if (julian_day_ < week_1)
            return 0;
        return static_cast<unsigned short>((julian_day_ - week_1) / 7 + 1);
    }

    // Order: the earlier first.

    constexpr bool operator==(const ka_date& other) const noexcept
    {
        return julian_day_ == other.julian_day_;
    }
    constexpr bool operator!=(const ka_date& other) const noexcept { return !(*this == other); }
    constexpr bool operator<(const ka_date& other) const noexcept { return julian_day_ < other.julian_day_; }
    constexpr bool operator>(const ka_date& other) const noexcept { return julian_day_ > other.julian_day_; }
    constexpr bool operator<=(const ka_date& other) const noexcept { return !(*this > other); }
    constexpr bool operator>=(const ka_date& other) const noexcept { return !(*this < other); }

    // Moving.

    /// One day on, or back, with no check: past 31 December 32766 lies day
    /// number 13688961, which reads as 1 January 32767.
    constexpr ka_date& operator++() noexcept
    {
        ++julian_day_;
        return *this;
    }
    constexpr ka_date& operator--() noexcept
    {
        --julian_day_;
        return *this;
    }
    /// The same, but a date that is out of the range throws `invalid_day`
    /// before it moves.
    constexpr ka_date operator++(int)
    {
        const ka_date before(julian_day_);
        ++*this;
        return before;
    }
    constexpr ka_date operator--(int)
    {
        const ka_date before(julian_day_);
        --*this;
        return before;
    }

    /// The date so many whole days on; the rest of the period is dropped, so
    /// 23 hours move nothing. Leaving the range throws `invalid_day`, showing
    /// the number reached.
    constexpr ka_date operator+(const ka_time_period& period) const
    {
        return ka_date(moved(julian_day_, static_cast<unsigned int>(period.to_days())));
    }
    constexpr ka_date operator-(const ka_time_period& period) const
    {
        return ka_date(moved(julian_day_, 0u - static_cast<unsigned int>(period.to_days())));
    }
    constexpr ka_date& operator+=(const ka_time_period& period) { return *this = *this + period; }
    constexpr ka_date& operator-=(const ka_time_period& period) { return *this = *this - period; }

    /// The days from the other date to this one, negative where this is earlier.
    constexpr ka_time_period operator-(const ka_date& other) const noexcept
    {
        return ka_time_period((julian_day_ - other.julian_day_) * 86400ll);
    }

    // The limits, 1 January -4713 and 31 December 32766.

    static const ka_date& min_date() noexcept;
    static const ka_date& max_date() noexcept;

    // The calendar itself: no state, any thread, any time.

    /// -4713 to 32766, without 0.
    static constexpr bool is_year(short year) noexcept
    {
        return is_ad_year(year) || (first_year <= year && year < 0);
    }
    /// 1 to 12.
    static constexpr bool is_month(unsigned short month) noexcept
    {
        return static_cast<unsigned int>(month - 1) < 12;
    }
    /// 1 to 7.
    static constexpr bool is_weekday(unsigned short weekday) noexcept { return 1 <= weekday && weekday <= 7; }
    /// 38 to 13688960.
    static constexpr bool is_julian_day(int julian_day) noexcept
    {
        return first_day <= julian_day && julian_day <= last_day;
    }
    /// False for a year that `is_year` refuses.
    static constexpr bool is_leap_year(short year) noexcept
    {
        return is_year(year) && is_leap(astronomical(year));
    }
    /// True for a day that the calendar has, in a month and year that it has.
    static constexpr bool is_day_in_month(unsigned short month, unsigned short day, short year) noexcept
    {
        return is_month(month) && is_year(year) && day >= 1 &&
               (day <= shortest_month || day <= month_length(month, year));
    }

    /// 365 or 366; 365 for any year out of the range but 0, which throws `invalid_year`.
    static constexpr unsigned short days_in_year(short year)
    {
        if (year == 0)
            refuse_year_zero();
        return is_leap_year(year) ? 366 : 365;
    }

    /// 28 to 31. Throws `invalid_month`, then, for year 0, `invalid_year`.
    static constexpr unsigned short days_in_month(unsigned short month, short year)
    {
        if (!is_month(month))
            refuse_month(month);
        if (year == 0)
            refuse_year_zero();
        return month_length(month, year);
    }

    /// The day number of a date. The day is not checked and runs on: 30
    /// February is 2 March or 1 March, day 0 the day before the first. Throws
    /// `invalid_month`, then, for year 0, `invalid_year`. For any other year
    /// out of the range the number is no calendar date's.
    static constexpr int calc_julian_day(unsigned short month, unsigned short day, short year)
    {
        if (is_month(month) && is_ad_year(year)) [[likely]]
            return day_number(month, day, year);
        if (!is_month(month))
            refuse_month(month);
        if (year == 0)
            refuse_year_zero();
        return is_year(year) ? day_number(month, day, astronomical(year))
                             : day_number_without_leap_row(month, day, astronomical(year));
    }

    /// The date of a day number; a null pointer is skipped. The number is not
    /// checked: the neighbouring days of the range give the neighbouring dates,
    /// and numbers further out no promised result.
    static constexpr void calc_calendar_date(int julian_day, unsigned short* month, unsigned short* day,
                                             short* year) noexcept
    {
        const parts date = split(julian_day);
        if (month != nullptr)
            *month = static_cast<unsigned short>(date.month);
        if (day != nullptr)
            *day = static_cast<unsigned short>(date.day);
        if (year != nullptr)
            *year = static_cast<short>(date.year);
    }

    // Names, in the user's language as it was when the library started. A
    // reference shows later changes and is valid until the library stops.

    /// The full name, or `invalid_month`.
    static const std::string& month_name(unsigned short month);
    static const std::string& month_abbreviation(unsigned short month);
    /// 1 to 12 for a full or abbreviated name in any case of letters, else 0.
    static unsigned short month_index(const std::string& name);

    /// The full name, or `invalid_weekday`.
    static const std::string& weekday_name(unsigned short weekday);
    static const std::string& weekday_abbreviation(unsigned short weekday);
    /// 1 to 7 for a full or abbreviated name in any case of letters, else 0.
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
    friend class ka_time_and_date;
    friend class ka_time_zone;
    friend struct locale_text;
    friend struct rule_check;

    struct parts {
        unsigned int month;
        unsigned int day;
        int year;
        int astronomical_year;
    };

    static constexpr short first_year = -4713;
    static constexpr short last_year = 32766;
    static constexpr int first_day = 38;
    static constexpr int last_day = 13688960;
    static constexpr int last_bc_day = 1721425;
    static constexpr unsigned short shortest_month = 28;

    /// The date of the whole days from day number 0, or `invalid_day`.
    explicit constexpr ka_date(const ka_time_period& since_day_zero) : julian_day_(since_day_zero.to_days())
    {
        if (!is_julian_day(julian_day_))
            refuse_whole_days(julian_day_);
    }

    static constexpr int checked_day(int julian_day)
    {
        if (!is_julian_day(julian_day))
            refuse_day(static_cast<long long>(julian_day));
        return julian_day;
    }
    template <std::integral Number>
    static constexpr int checked_day(Number julian_day)
    {
        using widest = std::conditional_t<std::signed_integral<Number>, long long, unsigned long long>;
        const auto number = static_cast<widest>(julian_day);
        if (number < first_day || number > last_day)
            refuse_day(number);
        return static_cast<int>(number);
    }

    static constexpr ka_date unchecked(int julian_day) noexcept
    {
        ka_date result;
        result.julian_day_ = julian_day;
        return result;
    }

    constexpr ka_date new_year() const { return ka_date(1, 1, year()); }

    /// A day number so many days on, in 32 bits that wrap.
    static constexpr int moved(int julian_day, unsigned int days) noexcept
    {
        return static_cast<int>(static_cast<unsigned int>(julian_day) + days);
    }

    static constexpr unsigned short weekday_of(int julian_day) noexcept
    {
        return static_cast<unsigned short>((julian_day + 1) % 7 + 1);
    }

    /// 0 to 6 days from one weekday on to another.
    static constexpr int days_until(unsigned short from, unsigned short to) noexcept
    {
        return (to + 7 - from) % 7;
    }

    /// A number modulo 7 by two products. 7 x 613566757 is 2^32 + 3, so the low
    /// half of the first product is the fraction of the quotient and three
    /// seventh parts of the number: exact below 2^32 / 3.
    static constexpr unsigned int modulo_7(unsigned int number) noexcept
    {
        return static_cast<unsigned int>((number * 613566757u) * 7ull >> 32);
    }

    /// The n-th weekday of the days from `first` to before `end`, counted from
    /// `end` where `which` is not above 0. The weekday next to either end takes
    /// one remainder; day number 0 is a Monday, weekday 2.
    static constexpr int nth_weekday_between(int first, int end, int which, unsigned short weekday) noexcept
    {
        constexpr unsigned int monday = 2;
        constexpr unsigned int sevens_above_range = 7 * 2000000;
        if (which > 0) {
            const unsigned int days_on =
                modulo_7(sevens_above_range - monday + weekday - static_cast<unsigned int>(first));
            return moved(first, days_on + 7u * static_cast<unsigned int>(which - 1));
        }
        const int last = end - 1;
        const unsigned int days_back = modulo_7(static_cast<unsigned int>(last) + monday + 7 - weekday);
        return moved(last, 7u * static_cast<unsigned int>(which + 1) - days_back);
    }

    static constexpr int nth_weekday(int which, unsigned short weekday, unsigned short month, short year)
    {
        const int first = day_number(month, 1, astronomical(year));
        const int end = first + month_length(month, year);
        if (which <= 0)
            checked_day(end);
        const int found = checked_day(nth_weekday_between(first, end, which, weekday));
        if ((found < first || found >= end) && split(found).month != month)
            refuse_week();
        return found;
    }

    // The arithmetic of the calendar.
    //
    // Years are astronomical: 1 B.C. is 0, 2 B.C. is -1. They are counted from
    // March of year -4800, a multiple of 400 below the range, so that nothing
    // is negative and a leap day is the last day of its counted year. Month and
    // day then follow from the day of the counted year alone, with no table:
    // from March on, months have 31, 30, 31, 30, 31 days, over and over, and a
    // line of slope 30.6 through them, rounded down, hits every first of a month.

    static constexpr int first_counted_year = -4800;
    /// The day number of 1 March -4800.
    static constexpr int first_counted_day = -32044;
    static constexpr unsigned int days_in_4_years = 1461;
    static constexpr unsigned int days_in_400_years = 146097;
    /// The days of March to December: from here on a day is in January or February.
    static constexpr unsigned int days_to_new_year = 306;

    /// 1 to 32766: nearly all years asked for, and told by one comparison.
    static constexpr bool is_ad_year(int year) noexcept
    {
        return static_cast<unsigned int>(year - 1) < static_cast<unsigned int>(last_year);
    }

    static constexpr int astronomical(int year) noexcept { return year + (year < 0); }

    static constexpr bool is_leap(int year) noexcept
    {
        // A multiple of 100 and 16 is a multiple of 400.
        return year % 100 != 0 ? year % 4 == 0 : year % 16 == 0;
    }

    static constexpr unsigned short month_length(unsigned short month, short year) noexcept
    {
        if (month == 2)
            return is_leap_year(year) ? 29 : shortest_month;
        // Odd months are long up to July, even ones from August on.
        const unsigned int number = month;
        return static_cast<unsigned short>(30 + ((number + number / 8) & 1));
    }

    /// The days from 1 March to the first of a month, March as 3 to February as
    /// 14: 979/32 is close enough to 30.6 to be exact for these twelve.
    static constexpr unsigned int days_from_march(unsigned int month) noexcept
    {
        return (979 * month - 2919) / 32;
    }

    /// Holds from March -4800 on, so for every year of the range.
    static constexpr int day_number(unsigned short month, unsigned short day, int year) noexcept
    {
        // All bits set in January and February, which end the year before.
        const int ends_counted_year = -(month < 3);
        const auto counted = static_cast<unsigned int>(year - first_counted_year + ends_counted_year);
        const auto counted_month = static_cast<unsigned int>(month + (ends_counted_year & 12));
        const unsigned int century = counted / 100;
        const unsigned int days =
            counted * days_in_4_years / 4 - century + century / 4 + days_from_march(counted_month);
        return static_cast<int>(days + day) + (first_counted_day - 1);
    }

    /// A year out of the range counts as a common one, and the years before it
    /// by plain division, which truncates toward zero.
    static constexpr int day_number_without_leap_row(unsigned short month, unsigned short day,
                                                     int year) noexcept
    {
        constexpr int first_new_year = first_counted_day + static_cast<int>(days_to_new_year);
        const int counted = year - first_counted_year - 1;
        const int days_before_month =
            month < 3 ? 31 * (month - 1) : static_cast<int>(days_from_march(month)) + 59;
        return 365 * counted + counted / 4 - counted / 100 + counted / 400 + days_before_month + day - 1 +
               first_new_year;
    }

    /// The inverse of `day_number`, by multiplication and shift in place of
    /// division. Four times the day count plus 3 is divided by the days of 400
    /// years for the century, its remainder by those of 4 years for the year of
    /// the century. The second division is a product with 2939745, which is
    /// 2^32 / 1461 rounded up: its high half is the year and its low half the
    /// day, exact below 28,825,529, where a century has less than 146,100. The
    /// month is a line of slope 65536 / 2141 = 30.61, exact for the 366 days.
    static constexpr parts split(int julian_day) noexcept
    {
        constexpr unsigned long long reciprocal = 2939745;
        constexpr unsigned int month_slope = 2141;
        constexpr unsigned int month_offset = 197913;

        const unsigned int days =
            static_cast<unsigned int>(julian_day) - static_cast<unsigned int>(first_counted_day);
        const unsigned int century = (4 * days + 3) / days_in_400_years;
        const unsigned int day_of_century = (4 * days + 3) % days_in_400_years / 4;

        const unsigned long long product = reciprocal * (4 * day_of_century + 3);
        const auto year_of_century = static_cast<unsigned int>(product >> 32);
        const auto day_of_year =
            static_cast<unsigned int>(product) / static_cast<unsigned int>(reciprocal) / 4;

        const unsigned int line = month_slope * day_of_year + month_offset;
        const bool ends_counted_year = day_of_year >= days_to_new_year;
        const int year =
            static_cast<int>(100 * century + year_of_century) + first_counted_year + ends_counted_year;

        return {(line >> 16) - (ends_counted_year ? 12u : 0u), (line & 0xffff) / month_slope + 1,
                year - (year < 1), year};
    }

    // What is refused, and in which words: in the class's source.
    [[noreturn]] static void refuse_day(long long julian_day);
    [[noreturn]] static void refuse_day(unsigned long long julian_day);
    [[noreturn]] static void refuse_whole_days(int julian_day);
    [[noreturn]] static void refuse_date(unsigned short month, unsigned short day, short year);
    [[noreturn]] static void refuse_month(unsigned short month);
    [[noreturn]] static void refuse_month_of_weekday(unsigned short month);
    [[noreturn]] static void refuse_year(short year);
    [[noreturn]] static void refuse_year_zero();
    [[noreturn]] static void refuse_weekday(unsigned short weekday);
    [[noreturn]] static void refuse_week();

    int julian_day_ = 2440588;
};
