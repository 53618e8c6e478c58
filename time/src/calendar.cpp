#include <time/calendar.h>

#include "throw.h"

void ka_calendar_date::refuse_when(const ka_time_period& when)
{
    char text[ka_time_period::longest_text];
    const std::string_view shown(text, when.write_text(text));
    throw_error(error_code::invalid_time_period, {__FILE__, __LINE__}, shown);
}

void ka_calendar_date::refuse_month(unsigned short month)
{
    throw_error(error_code::invalid_month, {__FILE__, __LINE__}, month);
}

void ka_calendar_date::refuse_day(unsigned short day)
{
    throw_error(error_code::invalid_day, {__FILE__, __LINE__}, day);
}

void ka_calendar_date::refuse_weekday(unsigned short weekday)
{
    throw_error(error_code::invalid_weekday, {__FILE__, __LINE__}, weekday);
}

void ka_calendar_date::refuse_year(short year)
{
    throw_error(error_code::invalid_year, {__FILE__, __LINE__}, year);
}
