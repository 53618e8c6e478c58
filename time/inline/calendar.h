#pragma once

#include <time/calendar.h>

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

template <ka_integer Month, ka_integer Weekday>
constexpr ka_calendar_date::ka_calendar_date(const ka_time_period& when, Month month, ka_which_one week,
                                             Weekday weekday)
    : when_(checked_when(when)), month_(checked_month(month)), weekday_(checked_weekday(weekday)), week_(week)
{}

constexpr ka_date ka_calendar_date::date(short year) const { return date<short>(year); }

template <ka_integer Year>
constexpr ka_date ka_calendar_date::date(Year year) const
{
    if (!ka_date::is_year(year))
        refuse_year(year);
    const auto valid = static_cast<short>(year);
    return is_formula() ? ka_date(week_, weekday_, month_, valid) : ka_date(month_, day_, valid);
}

constexpr void ka_calendar_date::day(unsigned short day) { this->day<unsigned short>(day); }

template <ka_integer Day>
constexpr void ka_calendar_date::day(Day day)
{
    day_ = checked_day(0, day);
    week_ = ka_none;
}

constexpr void ka_calendar_date::weekday(ka_which_one week, unsigned short weekday)
{
    this->weekday<unsigned short>(week, weekday);
}

template <ka_integer Weekday>
constexpr void ka_calendar_date::weekday(ka_which_one week, Weekday weekday)
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

template <ka_integer Month>
constexpr unsigned short ka_calendar_date::checked_month(Month month)
{
    if (!ka_date::is_month(month))
        refuse_month(month);
    return static_cast<unsigned short>(month);
}

/// A day of any month, or below 1 where a caller allows it.
template <ka_integer Day>
constexpr unsigned short ka_calendar_date::checked_day(long long lowest, Day day)
{
    if (!ka_integers::is_in(lowest, day, 31))
        refuse_day(day);
    return static_cast<unsigned short>(day);
}

template <ka_integer Weekday>
constexpr unsigned short ka_calendar_date::checked_weekday(Weekday weekday)
{
    if (!ka_date::is_weekday(weekday))
        refuse_weekday(weekday);
    return static_cast<unsigned short>(weekday);
}
