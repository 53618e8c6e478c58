#pragma once

#include <time/time_of_day.h>

constexpr ka_time::ka_time(unsigned short hours, unsigned short minutes, unsigned short seconds,
                           unsigned int microseconds)
{
    time(hours, minutes, seconds, microseconds);
}

constexpr ka_time::ka_time(ka_integer auto hours, ka_integer auto minutes, ka_integer auto seconds,
                           ka_integer auto microseconds)
{
    time(hours, minutes, seconds, microseconds);
}

constexpr ka_time::ka_time(ka_integer auto seconds) noexcept
{
    const auto count = ka_integers::widest(seconds);
    since_midnight_ = static_cast<long long>(count % decltype(count){86400});
    adjust();
}

ka_time::ka_time(const std::tm& fields, ka_integer auto microseconds) { time(fields, microseconds); }

constexpr ka_time::ka_time(const ka_time_period& since_midnight) noexcept : since_midnight_(since_midnight)
{
    adjust();
}

constexpr void ka_time::time(unsigned short hours, unsigned short minutes, unsigned short seconds,
                             unsigned int microseconds)
{
    if (!is_hour(hours) || !is_minute(minutes) || !is_second(seconds) || !is_microsecond(microseconds))
        refuse(hours, minutes, seconds, microseconds);
    since_midnight_ =
        ka_time_period::unchecked(hours * 3600 + minutes * 60 + seconds, static_cast<int>(microseconds));
}

constexpr void ka_time::time(ka_integer auto hours, ka_integer auto minutes, ka_integer auto seconds,
                             ka_integer auto microseconds)
{
    if (!is_hour(hours) || !is_minute(minutes) || !is_second(seconds) || !is_microsecond(microseconds))
        refuse(hours, minutes, seconds, microseconds);
    time(static_cast<unsigned short>(hours), static_cast<unsigned short>(minutes),
         static_cast<unsigned short>(seconds), static_cast<unsigned int>(microseconds));
}

void ka_time::time(const std::tm& fields, ka_integer auto microseconds)
{
    time(static_cast<unsigned short>(fields.tm_hour), static_cast<unsigned short>(fields.tm_min),
         static_cast<unsigned short>(fields.tm_sec), microseconds);
}

constexpr unsigned short ka_time::hours() const noexcept
{
    return static_cast<unsigned short>(second_of_day() / 3600);
}

constexpr unsigned short ka_time::minutes() const noexcept
{
    return static_cast<unsigned short>(second_of_day() / 60 % 60);
}

constexpr unsigned short ka_time::seconds() const noexcept
{
    return static_cast<unsigned short>(second_of_day() % 60);
}

constexpr unsigned int ka_time::microseconds() const noexcept
{
    return static_cast<unsigned int>(since_midnight_.microseconds());
}

constexpr bool ka_time::is_hour(ka_integer auto value) noexcept { return ka_integers::is_in(0, value, 23); }

constexpr bool ka_time::is_minute(ka_integer auto value) noexcept { return ka_integers::is_in(0, value, 59); }

constexpr bool ka_time::is_second(ka_integer auto value) noexcept { return ka_integers::is_in(0, value, 59); }

constexpr bool ka_time::is_microsecond(ka_integer auto value) noexcept
{
    return ka_integers::is_in(0, value, 999999);
}

constexpr ka_time ka_time::operator+(const ka_time_period& period) const noexcept
{
    return ka_time(since_midnight_ + ka_time(period).since_midnight_);
}

constexpr ka_time ka_time::operator-(const ka_time_period& period) const noexcept
{
    return ka_time(since_midnight_ - ka_time(period).since_midnight_);
}

constexpr ka_time_period ka_time::operator-(const ka_time& other) const noexcept
{
    const ka_time_period difference = since_midnight_ - other.since_midnight_;
    return difference < ka_time_period() ? difference + ka_time_period(1, 0, 0, 0) : difference;
}

constexpr bool ka_time::operator==(const ka_time& other) const noexcept
{
    return since_midnight_ == other.since_midnight_;
}

constexpr bool ka_time::operator<(const ka_time& other) const noexcept
{
    return since_midnight_ < other.since_midnight_;
}

constexpr std::strong_ordering ka_time::operator<=>(const std::same_as<ka_time> auto& other) const noexcept
{
    return since_midnight_ <=> other.since_midnight_;
}

/// Of a second below 86400 and a microsecond below 1000000.
constexpr ka_time ka_time::unchecked(int second_of_day, int microsecond) noexcept
{
    ka_time result;
    result.since_midnight_ = ka_time_period::unchecked(second_of_day, microsecond);
    return result;
}

constexpr unsigned int ka_time::second_of_day() const noexcept
{
    return static_cast<unsigned int>(since_midnight_.seconds_);
}

/// Brings the period into one day, from zero on.
constexpr ka_time& ka_time::adjust() noexcept
{
    long long seconds = since_midnight_.seconds_ % ka_time_period::seconds_per_day;
    int microseconds = since_midnight_.microseconds_;
    if (microseconds < 0) {
        microseconds += ka_time_period::microseconds_per_second;
        --seconds;
    }
    if (seconds < 0)
        seconds += ka_time_period::seconds_per_day;
    since_midnight_ = ka_time_period::unchecked(seconds, microseconds);
    return *this;
}

constexpr bool operator==(const std::derived_from<ka_time> auto& time,
                          const std::derived_from<ka_time_period> auto& period) noexcept
{
    return time == ka_time(period);
}

constexpr bool operator!=(const std::derived_from<ka_time> auto& time,
                          const std::derived_from<ka_time_period> auto& period) noexcept
{
    return !(time == period);
}

constexpr bool operator==(const std::derived_from<ka_time_period> auto& period,
                          const std::derived_from<ka_time> auto& time) noexcept
{
    return period == static_cast<ka_time_period>(time);
}

constexpr bool operator!=(const std::derived_from<ka_time_period> auto& period,
                          const std::derived_from<ka_time> auto& time) noexcept
{
    return !(period == time);
}
