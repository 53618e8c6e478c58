#pragma once

#include <time/timedate.h>

inline ka_time_and_date ka_time_and_date::operator+(const ka_time_period& period) const noexcept
{
    return ka_time_and_date(*this) += period;
}

inline ka_time_and_date ka_time_and_date::operator-(const ka_time_period& period) const
{
    return ka_time_and_date(*this) -= period;
}

inline ka_time_and_date& ka_time_and_date::operator+=(const ka_time_period& period) noexcept
{
    instant_ += period;
    return *this;
}

inline ka_time_and_date& ka_time_and_date::operator-=(const ka_time_period& period)
{
    instant_ -= period;
    return *this;
}
