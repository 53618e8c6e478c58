#include <time/calendar.h>

#include "period_text.h"
#include "throw.h"

void ka_calendar_date::refuse_when(const ka_time_period& when)
{
    throw_error(ka_invalid_time_period, {KA_SOURCE, __LINE__}, period_text(when).view());
}

void ka_calendar_date::refuse_month(given month)
{
    throw_error(ka_invalid_month, {KA_SOURCE, __LINE__}, month);
}

void ka_calendar_date::refuse_day(given day) { throw_error(ka_invalid_day, {KA_SOURCE, __LINE__}, day); }

void ka_calendar_date::refuse_weekday(given weekday)
{
    throw_error(ka_invalid_weekday, {KA_SOURCE, __LINE__}, weekday);
}

void ka_calendar_date::refuse_year(given year) { throw_error(ka_invalid_year, {KA_SOURCE, __LINE__}, year); }
