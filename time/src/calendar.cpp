#include <time/calendar.h>

#include "period_text.h"
#include "throw.h"

void ka_calendar_date::refuse_when(const ka_time_period& when)
{
    throw_error(error_code::invalid_time_period, {__FILE__, __LINE__}, period_text(when).view());
}

void ka_calendar_date::refuse_month(given month)
{
    throw_error(error_code::invalid_month, {__FILE__, __LINE__}, month);
}

void ka_calendar_date::refuse_day(given day)
{
    throw_error(error_code::invalid_day, {__FILE__, __LINE__}, day);
}

void ka_calendar_date::refuse_weekday(given weekday)
{
    throw_error(error_code::invalid_weekday, {__FILE__, __LINE__}, weekday);
}

void ka_calendar_date::refuse_year(given year)
{
    throw_error(error_code::invalid_year, {__FILE__, __LINE__}, year);
}
