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

inline std::weak_ordering ka_time_and_date::operator<=>(const ka_time_and_date& other) const noexcept
{
    if (*this == other)
        return std::weak_ordering::equivalent;
    return *this < other ? std::weak_ordering::less : std::weak_ordering::greater;
}
