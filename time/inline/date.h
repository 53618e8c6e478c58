#pragma once

#include <climits>

#include <time/date.h>

// A number that `int` does not hold stands as 0 where it is checked: there is
// no year, month, day or weekday 0.

constexpr int ka_date::checked_day(ka_integer auto julian_day)
{
    if (!is_julian_day(julian_day))
        refuse_day(julian_day);
    return static_cast<int>(julian_day);
}

constexpr unsigned short ka_date::checked_weekday(ka_integer auto weekday)
{
    if (!is_weekday(weekday))
        refuse_weekday(weekday);
    return static_cast<unsigned short>(weekday);
}

constexpr ka_date::ka_date(ka_integer auto julian_day) : julian_day_(checked_day(julian_day)) {}

constexpr ka_date::ka_date(ka_integer auto month, ka_integer auto day, ka_integer auto year)
{
    date(month, day, year);
}

[[gnu::always_inline]] constexpr ka_date::ka_date(const ka_which_one& which, unsigned short weekday,
                                                  unsigned short month, short year)
{
    date(which, weekday, month, year);
}

[[gnu::always_inline]] constexpr ka_date::ka_date(const ka_which_one& which, ka_integer auto weekday,
                                                  ka_integer auto month, ka_integer auto year)
{
    date(which, weekday, month, year);
}

constexpr void ka_date::date(unsigned short month, unsigned short day, short year)
{
    if (!ka_gregorian::is_date(month, day, year))
        refuse_date(month, day, year);
    julian_day_ = ka_gregorian::day_number(month, day, ka_gregorian::to_astronomical(year));
}

constexpr void ka_date::date(ka_integer auto month, ka_integer auto day, ka_integer auto year)
{
    if (!is_day_in_month(month, day, year))
        refuse_date(month, day, year);
    julian_day_ = ka_gregorian::day_number(static_cast<int>(month), static_cast<int>(day),
                                           ka_gregorian::to_astronomical(static_cast<int>(year)));
}

[[gnu::always_inline]] constexpr void ka_date::date(const ka_which_one& which, ka_integer auto weekday,
                                                    ka_integer auto month, ka_integer auto year)
{
    if (!is_month(month))
        refuse_month_of_weekday(month);
    if (!is_year(year))
        refuse_year(year);
    if (!is_weekday(weekday))
        refuse_weekday(weekday);

    julian_day_ =
        nth_weekday(which, static_cast<int>(weekday), static_cast<int>(month), static_cast<int>(year));
}

/// Of a valid weekday, month and year. A day within the month is one of the
/// range, but for those counted back from the end of the range.
[[gnu::always_inline]] constexpr int ka_date::nth_weekday(int which, int weekday, int month, int year)
{
    const int counted = ka_gregorian::is_ad_year(year) ? year : year + 1;
    const int length = ka_gregorian::month_length(month, ka_gregorian::is_leap(counted));
    const int first = ka_gregorian::day_number(month, 1, counted);
    const int found = ka_gregorian::nth_weekday(first, first + length, which, weekday);
    const auto days_on = static_cast<unsigned int>(found) - static_cast<unsigned int>(first);
    if (days_on >= static_cast<unsigned int>(length) ||
        (which <= 0 && first + length > ka_gregorian::last_day)) [[unlikely]]
        check_weekday_out_of_month(which, first + length, found, month);
    return found;
}

constexpr ka_date ka_date::next(ka_integer auto weekday) const
{
    ka_date found(julian_day_ + 1);
    found.julian_day_ += ka_gregorian::days_until(found.weekday(), checked_weekday(weekday));
    return found;
}

constexpr ka_date ka_date::previous(ka_integer auto weekday) const
{
    ka_date found(julian_day_ - 1);
    found.julian_day_ -= ka_gregorian::days_until(checked_weekday(weekday), found.weekday());
    if (found.julian_day_ < ka_gregorian::first_day - 1)
        refuse_day(ka_gregorian::first_day - 1);
    return found;
}

constexpr unsigned short ka_date::week_of_year(ka_integer auto first) const
{
    const int january_1 = new_year();
    const int week_1 =
        january_1 + ka_gregorian::days_until(ka_gregorian::weekday(january_1), checked_weekday(first));
    if (julian_day_ < week_1)
        return 0;
    return static_cast<unsigned short>((julian_day_ - week_1) / 7 + 1);
}

constexpr bool ka_date::operator==(const ka_date& other) const noexcept
{
    return julian_day_ == other.julian_day_;
}

constexpr std::strong_ordering ka_date::operator<=>(const std::same_as<ka_date> auto& other) const noexcept
{
    return julian_day_ <=> other.julian_day_;
}

constexpr ka_date& ka_date::operator++() noexcept
{
    ++julian_day_;
    return *this;
}

constexpr ka_date& ka_date::operator--() noexcept
{
    --julian_day_;
    return *this;
}

constexpr ka_date ka_date::operator++(int)
{
    const ka_date before(julian_day_);
    ++*this;
    return before;
}

constexpr ka_date ka_date::operator--(int)
{
    const ka_date before(julian_day_);
    --*this;
    return before;
}

constexpr ka_date ka_date::operator+(const ka_time_period& period) const
{
    return ka_date(ka_gregorian::days_later(julian_day_, static_cast<unsigned int>(period.to_days())));
}

constexpr ka_date ka_date::operator-(const ka_time_period& period) const
{
    return ka_date(ka_gregorian::days_later(julian_day_, 0u - static_cast<unsigned int>(period.to_days())));
}

constexpr ka_time_period ka_date::operator-(const ka_date& other) const noexcept
{
    return ka_time_period((julian_day_ - other.julian_day_) * 86400ll);
}

constexpr bool ka_date::is_year(ka_integer auto year) noexcept
{
    return ka_gregorian::is_year(ka_integers::int_or(0, year));
}

constexpr bool ka_date::is_month(ka_integer auto month) noexcept
{
    return ka_gregorian::is_month(ka_integers::int_or(0, month));
}

constexpr bool ka_date::is_weekday(unsigned short weekday) noexcept
{
    return ka_gregorian::is_weekday(weekday);
}

constexpr bool ka_date::is_weekday(ka_integer auto weekday) noexcept
{
    return ka_gregorian::is_weekday(ka_integers::int_or(0, weekday));
}

constexpr bool ka_date::is_julian_day(int julian_day) noexcept
{
    return ka_gregorian::is_day_number(julian_day);
}

constexpr bool ka_date::is_julian_day(ka_integer auto julian_day) noexcept
{
    return ka_gregorian::is_day_number(ka_integers::int_or(0, julian_day));
}

constexpr bool ka_date::is_leap_year(ka_integer auto year) noexcept
{
    return is_year(year) && ka_gregorian::is_leap(ka_gregorian::to_astronomical(static_cast<int>(year)));
}

constexpr bool ka_date::is_day_in_month(unsigned short month, unsigned short day, short year) noexcept
{
    return ka_gregorian::is_date(month, day, year);
}

constexpr bool ka_date::is_day_in_month(ka_integer auto month, ka_integer auto day,
                                        ka_integer auto year) noexcept
{
    return ka_gregorian::is_date(ka_integers::int_or(0, month), ka_integers::int_or(0, day),
                                 ka_integers::int_or(0, year));
}

constexpr unsigned short ka_date::days_in_year(ka_integer auto year)
{
    if (!ka_integers::is_in(SHRT_MIN, year, SHRT_MAX))
        refuse_year(year);
    if (year == 0)
        refuse_year_zero();
    return is_leap_year(year) ? 366 : 365;
}

constexpr unsigned short ka_date::days_in_month(ka_integer auto month, ka_integer auto year)
{
    if (!is_month(month))
        refuse_month(month);
    const bool is_leap = days_in_year(year) == 366;
    return static_cast<unsigned short>(ka_gregorian::month_length(static_cast<int>(month), is_leap));
}

constexpr int ka_date::calc_julian_day(ka_integer auto month, ka_integer auto day, ka_integer auto year)
{
    const int known_month = ka_integers::int_or(0, month);
    const int known_year = ka_integers::int_or(0, year);
    const bool is_day = ka_integers::is_in(0, day, USHRT_MAX);
    if (ka_gregorian::is_month(known_month) && ka_gregorian::is_ad_year(known_year) && is_day) [[likely]]
        return ka_gregorian::day_number(known_month, static_cast<int>(day), known_year);

    if (!is_month(month))
        refuse_month(month);
    if (!ka_integers::is_in(SHRT_MIN, year, SHRT_MAX))
        refuse_year(year);
    if (year == 0)
        refuse_year_zero();
    if (!is_day)
        refuse_day(day);
    const int counted = ka_gregorian::to_astronomical(known_year);
    return ka_gregorian::is_year(known_year)
               ? ka_gregorian::day_number(known_month, static_cast<int>(day), counted)
               : ka_gregorian::day_number_of_no_year(known_month, static_cast<int>(day), counted);
}

const std::string& ka_date::month_name(ka_integer auto month)
{
    if (!is_month(month))
        refuse_month(month);
    return month_name(static_cast<unsigned short>(month));
}

const std::string& ka_date::month_abbreviation(ka_integer auto month)
{
    if (!is_month(month))
        refuse_month(month);
    return month_abbreviation(static_cast<unsigned short>(month));
}

const std::string& ka_date::weekday_name(ka_integer auto weekday)
{
    return weekday_name(checked_weekday(weekday));
}

const std::string& ka_date::weekday_abbreviation(ka_integer auto weekday)
{
    return weekday_abbreviation(checked_weekday(weekday));
}

/// The date of the whole days from day number 0, or `invalid_day`.
constexpr ka_date::ka_date(const ka_time_period& since_day_zero) : julian_day_(since_day_zero.to_days())
{
    if (!is_julian_day(julian_day_))
        refuse_whole_days(julian_day_);
}

constexpr ka_date ka_date::unchecked(int julian_day) noexcept
{
    ka_date result;
    result.julian_day_ = julian_day;
    return result;
}

/// The day number of 1 January of the date's year, or `invalid_date`.
constexpr int ka_date::new_year() const
{
    constexpr unsigned short first = 1;
    return ka_date(first, first, year()).julian_day_;
}

// All templates stand above what calls them and is none: clang looks for them
// in constant expressions as soon as they are called.

constexpr ka_date::ka_date(int julian_day) : julian_day_(checked_day(julian_day)) {}

[[gnu::always_inline]] constexpr void ka_date::date(const ka_which_one& which, unsigned short weekday,
                                                    unsigned short month, short year)
{
    date<unsigned short, unsigned short, short>(which, weekday, month, year);
}

/// Passes what lies in a month of that number all the same.
constexpr void ka_date::check_weekday_out_of_month(int which, int end, int found, int month)
{
    if (which <= 0)
        checked_day(end);
    checked_day(found);
    if (static_cast<int>(ka_gregorian::split(found).month) != month)
        refuse_week();
}

constexpr unsigned short ka_date::month() const noexcept
{
    return static_cast<unsigned short>(ka_gregorian::split(julian_day_).month);
}

constexpr unsigned short ka_date::day() const noexcept
{
    return static_cast<unsigned short>(ka_gregorian::split(julian_day_).day);
}

constexpr unsigned short ka_date::day_of_year() const
{
    return static_cast<unsigned short>(julian_day_ - new_year());
}

constexpr unsigned short ka_date::weekday() const noexcept
{
    return static_cast<unsigned short>(ka_gregorian::weekday(julian_day_));
}

constexpr ka_date ka_date::next(unsigned short weekday) const { return next<unsigned short>(weekday); }

constexpr ka_date ka_date::previous(unsigned short weekday) const
{
    return previous<unsigned short>(weekday);
}

constexpr unsigned short ka_date::week_of_year(unsigned short first) const
{
    return week_of_year<unsigned short>(first);
}

constexpr unsigned short ka_date::week_of_year() const { return week_of_year(1); }

constexpr bool ka_date::is_leap_year(short year) noexcept { return is_leap_year<short>(year); }

constexpr unsigned short ka_date::days_in_year(short year) { return days_in_year<short>(year); }

constexpr unsigned short ka_date::days_in_month(unsigned short month, short year)
{
    return days_in_month<unsigned short, short>(month, year);
}

constexpr int ka_date::calc_julian_day(unsigned short month, unsigned short day, short year)
{
    return calc_julian_day<unsigned short, unsigned short, short>(month, day, year);
}

constexpr void ka_date::calc_calendar_date(int julian_day, unsigned short* month, unsigned short* day,
                                           short* year) noexcept
{
    const ka_gregorian::date_parts date = ka_gregorian::split(julian_day);
    if (month != nullptr)
        *month = static_cast<unsigned short>(date.month);
    if (day != nullptr)
        *day = static_cast<unsigned short>(date.day);
    if (year != nullptr)
        *year = static_cast<short>(date.year);
}
