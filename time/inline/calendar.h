#pragma once

#include <time/calendar.h>

constexpr unsigned short ka_calendar_date::checked_month(ka_integer auto month)
{
    if (!ka_date::is_month(month))
        refuse_month(month);
    return static_cast<unsigned short>(month);
}

/// A day of any month, or below 1 where a caller allows it.
constexpr unsigned short ka_calendar_date::checked_day(long long lowest, ka_integer auto day)
{
    if (!ka_integers::is_in(lowest, day, 31))
        refuse_day(day);
    return static_cast<unsigned short>(day);
}

constexpr unsigned short ka_calendar_date::checked_weekday(ka_integer auto weekday)
{
    if (!ka_date::is_weekday(weekday))
        refuse_weekday(weekday);
    return static_cast<unsigned short>(weekday);
}

constexpr ka_calendar_date::ka_calendar_date(const ka_time_period& when, ka_integer auto month,
                                             ka_which_one week, ka_integer auto weekday)
    : when_(checked_when(when)), month_(checked_month(month)), weekday_(checked_weekday(weekday)), week_(week)
{}

constexpr ka_date ka_calendar_date::date(ka_integer auto year) const
{
    if (!ka_date::is_year(year))
        refuse_year(year);
    const auto valid = static_cast<short>(year);
    return is_formula() ? ka_date(week_, weekday_, month_, valid) : ka_date(month_, day_, valid);
}

constexpr void ka_calendar_date::month(ka_integer auto month) { month_ = checked_month(month); }

constexpr void ka_calendar_date::day(ka_integer auto day)
{
    day_ = checked_day(0, day);
    week_ = ka_none;
}

constexpr void ka_calendar_date::weekday(ka_which_one week, ka_integer auto weekday)
{
    weekday_ = checked_weekday(weekday);
    week_ = week;
    day_ = 0;
}

constexpr const ka_time_period& ka_calendar_date::checked_when(const ka_time_period& when)
{
    if (when < ka_time_period())
        refuse_when(when);
    return when;
}

// All templates stand above what calls them and is none: clang looks for them
// in constant expressions as soon as they are called.

constexpr ka_calendar_date::ka_calendar_date(const ka_time_period& when, unsigned short month,
                                             unsigned short day)
    : when_(checked_when(when)), month_(checked_month(month)), day_(checked_day(1, day))
{}

template <ka_integer Month, ka_integer Day>
constexpr ka_calendar_date::ka_calendar_date(const ka_time_period& when, Month month, Day day)
    : when_(checked_when(when)), month_(checked_month(month)), day_(checked_day(1, day))
{}

constexpr ka_calendar_date::ka_calendar_date(const ka_time_period& when, unsigned short month,
                                             ka_which_one week, unsigned short weekday)
    : when_(checked_when(when)), month_(checked_month(month)), weekday_(checked_weekday(weekday)), week_(week)
{}

constexpr ka_date ka_calendar_date::date(short year) const { return date<short>(year); }

constexpr void ka_calendar_date::month(unsigned short month) { month_ = checked_month(month); }

constexpr void ka_calendar_date::day(unsigned short day) { this->day<unsigned short>(day); }

constexpr void ka_calendar_date::weekday(ka_which_one week, unsigned short weekday)
{
    this->weekday<unsigned short>(week, weekday);
}
