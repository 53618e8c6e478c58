#pragma once

#include <time/hash.h>

inline std::size_t std::hash<ka_date>::operator()(const ka_date& date) const noexcept
{
    return std::hash<int>()(date.julian_day());
}

inline std::size_t std::hash<ka_time_period>::operator()(const ka_time_period& period) const noexcept
{
    const auto microseconds = static_cast<unsigned long long>(period.whole_seconds()) * 1000000u +
                              static_cast<unsigned long long>(period.microseconds());
    // Whole days end in 13 bits of 0, and a table of 2^n places looks at
    // no others.
    const unsigned long long spread = microseconds * 0x9e3779b97f4a7c15;
    return static_cast<std::size_t>(spread ^ spread >> 32);
}

inline std::size_t std::hash<ka_time>::operator()(const ka_time& time) const noexcept
{
    return std::hash<ka_time_period>()(static_cast<ka_time_period>(time));
}

inline std::size_t std::hash<ka_time_and_date>::operator()(const ka_time_and_date& moment) const noexcept
{
    return std::hash<ka_time_period>()(moment.utc_time_and_date());
}

inline std::size_t std::hash<ka_wint>::operator()(const ka_wint& value) const noexcept
{
    return std::hash<unsigned long long>()(value.to_uint64_t()) ^ std::size_t{value.is_negative()};
}
