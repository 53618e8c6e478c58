#pragma once

#include <time/stopwatch.h>

inline bool ka_stopwatch::operator==(const ka_stopwatch& other) const noexcept
{
    return start_ == other.start_ && elapsed_ == other.elapsed_ && running_ == other.running_;
}

bool operator==(const std::same_as<ka_stopwatch> auto& watch, const std::same_as<ka_time_period> auto& period)
{
    return watch.lap() == period;
}
