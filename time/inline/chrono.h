#pragma once

#include <time/chrono.h>

constexpr std::chrono::sys_days ka_to_sys_days(const ka_date& date) noexcept
{
    return std::chrono::sys_days(std::chrono::days(date.julian_day() - ka_gregorian::unix_epoch));
}

constexpr ka_date ka_to_date(std::chrono::sys_days day)
{
    // A sum beyond 64 bits wraps to a number that is out of the range as well.
    return ka_date(static_cast<long long>(static_cast<unsigned long long>(day.time_since_epoch().count()) +
                                          ka_gregorian::unix_epoch));
}

constexpr std::chrono::year_month_day ka_to_year_month_day(const ka_date& date) noexcept
{
    unsigned short month = 0;
    unsigned short day = 0;
    short year = 0;
    ka_date::calc_calendar_date(date.julian_day(), &month, &day, &year);
    return {std::chrono::year(ka_gregorian::to_astronomical(year)), std::chrono::month(month),
            std::chrono::day(day)};
}

constexpr ka_date ka_to_date(const std::chrono::year_month_day& date)
{
    return ka_date(static_cast<unsigned int>(date.month()), static_cast<unsigned int>(date.day()),
                   ka_gregorian::from_astronomical(static_cast<int>(date.year())));
}

constexpr ka_date ka_to_date(const std::chrono::year_month_day_last& date)
{
    return ka_to_date(std::chrono::year_month_day(date));
}

constexpr std::chrono::weekday ka_to_chrono_weekday(ka_integer auto weekday)
{
    if (!ka_date::is_weekday(weekday))
        ka_refuse_chrono_weekday(weekday);
    return std::chrono::weekday(static_cast<unsigned int>(weekday) - 1);
}

constexpr unsigned short ka_to_weekday(std::chrono::weekday weekday)
{
    if (!weekday.ok())
        ka_refuse_chrono_weekday(weekday.c_encoding());
    return static_cast<unsigned short>(weekday.c_encoding() + 1);
}

constexpr ka_time_period ka_to_time_period(std::chrono::microseconds period) noexcept
{
    constexpr long long million = 1000000;
    ka_time_period result(period.count() / million);
    result += ka_time_period(0, 0, 0, 0, static_cast<int>(period.count() % million));
    return result;
}

constexpr std::chrono::microseconds ka_to_microseconds(const ka_time_period& period)
{
    constexpr std::chrono::microseconds lowest = std::chrono::microseconds::min();
    constexpr std::chrono::microseconds highest = std::chrono::microseconds::max();
    if (period < ka_to_time_period(lowest) || period > ka_to_time_period(highest))
        ka_refuse_chrono_period(period);
    return std::chrono::microseconds(period.whole_seconds() * 1000000 + period.microseconds());
}

constexpr std::chrono::hh_mm_ss<std::chrono::microseconds> ka_to_hh_mm_ss(const ka_time& time)
{
    return std::chrono::hh_mm_ss<std::chrono::microseconds>(ka_to_microseconds(time));
}

template <typename Duration>
requires std::convertible_to<Duration, std::chrono::microseconds>
constexpr ka_time ka_to_time(const std::chrono::hh_mm_ss<Duration>& time)
{
    // Whole seconds apart: they have a period, whatever their number.
    const auto exact = time.to_duration();
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(exact);
    ka_time_period since_midnight(static_cast<long long>(seconds.count()));
    since_midnight += ka_to_time_period(exact - seconds);
    if (since_midnight < ka_time_period() || since_midnight >= ka_time_period(1, 0, 0, 0))
        ka_refuse_chrono_time(since_midnight);
    return ka_time(since_midnight);
}

inline std::chrono::sys_time<std::chrono::microseconds> ka_to_sys_time(const ka_time_and_date& moment)
{
    const ka_time_period epoch(ka_gregorian::unix_epoch, 0, 0, 0);
    return std::chrono::sys_time<std::chrono::microseconds>(
        ka_to_microseconds(moment.utc_time_and_date() - epoch));
}

inline ka_time_and_date ka_to_time_and_date(std::chrono::sys_time<std::chrono::microseconds> time) noexcept
{
    return ka_time_and_date(ka_to_time_period(time.time_since_epoch()));
}

inline ka_time_and_date ka_to_time_and_date(std::chrono::sys_time<std::chrono::microseconds> time,
                                            const ka_time_zone& zone) noexcept
{
    ka_time_and_date moment = ka_to_time_and_date(time);
    moment.time_zone(zone);
    return moment;
}
