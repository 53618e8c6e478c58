#include <time/chrono.h>

#include "period_text.h"
#include "throw.h"

void ka_refuse_chrono_weekday(ka_integers::given weekday)
{
    throw_error(ka_invalid_weekday, {KA_SOURCE, __LINE__}, weekday);
}

void ka_refuse_chrono_period(const ka_time_period& period)
{
    throw_error(ka_invalid_time_period, {KA_SOURCE, __LINE__}, period_text(period).view());
}

void ka_refuse_chrono_time(const ka_time_period& since_midnight)
{
    throw_error(ka_invalid_time, {KA_SOURCE, __LINE__}, period_text(since_midnight).view());
}
