#pragma once

#include <time/timedate.h>

#include "rule_lookup.h"

// How a moment is read. Each operation that reads one has this compiled in.

// Nearly every moment is an instant above zero, under an offset of whole
// seconds, and reads a date in the range. Then seconds are all there is to
// subtract, and one unsigned division gives the day and the second of the day.
[[gnu::always_inline]] inline bool ka_time_and_date::is_regular(long long& std_seconds) const noexcept
{
    constexpr long long first_second = ka_date::first_day * 86400ll;
    constexpr long long last_second = ka_date::last_day * 86400ll + 86399;

    const ka_time_period& offset = zone_->offset_;
    std_seconds = ka_time_period::wrapping_difference(instant_.seconds_, offset.seconds_);
    return first_second <= std_seconds && std_seconds <= last_second && instant_.microseconds_ >= 0 &&
           offset.microseconds_ == 0;
}

inline ka_date ka_time_and_date::regular_date(long long std_seconds) noexcept
{
    return ka_date::unchecked(static_cast<int>(static_cast<unsigned long long>(std_seconds) / 86400));
}

inline ka_time ka_time_and_date::regular_time(long long std_seconds) const noexcept
{
    const auto second = static_cast<unsigned long long>(std_seconds) % 86400;
    return ka_time::unchecked(static_cast<int>(second), instant_.microseconds_);
}

inline bool ka_time_and_date::stays_in_day(const ka_time& time, const ka_time_period& adjustment) noexcept
{
    const auto second = static_cast<unsigned long long>(time.second_of_day()) +
                        static_cast<unsigned long long>(adjustment.seconds_);
    return second < 86400 && adjustment.microseconds_ == 0;
}

inline ka_time ka_time_and_date::moved_in_day(const ka_time& time, const ka_time_period& adjustment) noexcept
{
    return ka_time::unchecked(static_cast<int>(time.second_of_day()) + adjustment.to_seconds(),
                              static_cast<int>(time.microseconds()));
}

[[gnu::always_inline]] inline ka_time_and_date::reading ka_time_and_date::local() const
{
    long long seconds = 0;
    reading now;
    if (is_regular(seconds)) [[likely]] {
        const ka_time time = regular_time(seconds);
        const ka_date date = regular_date(seconds);
        now.day = ka_date::split(date.julian_day());
        const ka_time_zone_rule* const rule = zone_->rule_in_month(time, date, now.day.year, now.day.month);
        now.is_dst = rule != nullptr;
        now.date = date;
        if (rule == nullptr) {
            now.time = time;
            return now;
        }
        if (stays_in_day(time, rule->adjustment())) [[likely]] {
            now.time = moved_in_day(time, rule->adjustment());
            return now;
        }
        const reading moved = moved_local(rule->adjustment());
        now = moved;
    } else {
        const reading irregular = irregular_local();
        now = irregular;
    }
    return now;
}
