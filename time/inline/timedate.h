#pragma once

#include <time/timedate.h>

template <ka_integer Microseconds>
ka_time_and_date::ka_time_and_date(const std::tm& fields, Microseconds microseconds) : ka_time_and_date()
{
    time_and_date(fields, microseconds);
}

template <ka_integer Microseconds>
void ka_time_and_date::time_and_date(const std::tm& fields, Microseconds microseconds)
{
    const ka_date date(static_cast<unsigned short>(static_cast<unsigned int>(fields.tm_mon) + 1u),
                       static_cast<unsigned short>(fields.tm_mday),
                       static_cast<short>(static_cast<unsigned int>(fields.tm_year) + 1900u));
    const ka_time time(fields, microseconds);
    time_and_date(time, date);
}

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
