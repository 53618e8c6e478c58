#include <time/chrono.h>

#include "period_text.h"
#include "throw.h"

void ka_refuse_chrono_weekday(ka_integers::given weekday)
{
    throw_error(error_code::invalid_weekday, {__FILE__, __LINE__}, weekday);
}

void ka_refuse_chrono_period(const ka_time_period& period)
{
    throw_error(error_code::invalid_time_period, {__FILE__, __LINE__}, period_text(period).view());
}

void ka_refuse_chrono_time(const ka_time_period& since_midnight)
{
    throw_error(error_code::invalid_time, {__FILE__, __LINE__}, period_text(since_midnight).view());
}
