#pragma once

#include <time/calendar.h>

constexpr ka_calendar_date::ka_calendar_date(const ka_time_period& when, unsigned short month,
                                             unsigned short day)
    : when_(checked_when(when)), month_(checked_month(month)), day_(day)
{
    if (day < 1 || day > 31)
        refuse_day(day);
}

constexpr ka_calendar_date::ka_calendar_date(const ka_time_period& when, unsigned short month,
                                             ka_which_one week, unsigned short weekday)
    : when_(checked_when(when)), month_(checked_month(month)), weekday_(checked_weekday(weekday)), week_(week)
{}

constexpr ka_date ka_calendar_date::date(short year) const
{
    if (!ka_date::is_year(year))
        refuse_year(year);
    return is_formula() ? ka_date(week_, weekday_, month_, year) : ka_date(month_, day_, year);
}

constexpr void ka_calendar_date::day(unsigned short day)
{
    if (day > 31)
        refuse_day(day);
    day_ = day;
    week_ = ka_none;
}

constexpr void ka_calendar_date::weekday(ka_which_one week, unsigned short weekday)
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

constexpr unsigned short ka_calendar_date::checked_month(unsigned short month)
{
    if (!ka_date::is_month(month))
        refuse_month(month);
    return month;
}

constexpr unsigned short ka_calendar_date::checked_weekday(unsigned short weekday)
{
    if (!ka_date::is_weekday(weekday))
        refuse_weekday(weekday);
    return weekday;
}
