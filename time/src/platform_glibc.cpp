#include "platform.h"

#include <locale.h>
#include <sys/time.h>
#include <time.h>

#include <time/time_varnel.h>

namespace platform {

namespace {

locale_t locale_of_start = nullptr;

struct tm local_time(time_t moment) noexcept
{
    struct tm fields = {};
    localtime_r(&moment, &fields);
    return fields;
}

/// How far the clocks are ahead while the runtime's daylight flag is set, from
/// the nearest change of both within a year of a moment; 0 where there is none.
/// Two weeks are shorter than any daylight saving time, or pause in it, on
/// record.
long saving_near(time_t moment, bool is_flagged) noexcept
{
    constexpr time_t two_weeks = 14 * 86400;
    for (time_t distance = two_weeks; distance <= 27 * two_weeks; distance += two_weeks)
        for (const time_t step : {two_weeks, -two_weeks}) {
            const time_t beyond = step > 0 ? moment + distance : moment - distance;
            const struct tm other = local_time(beyond);
            if ((other.tm_isdst > 0) == is_flagged)
                continue;
            const long ahead = other.tm_gmtoff - local_time(beyond - step).tm_gmtoff;
            if (ahead != 0)
                return is_flagged ? -ahead : ahead;
        }
    return 0;
}

}

split_seconds from_timeval(const timeval& value) noexcept { return {value.tv_sec, value.tv_usec}; }

timeval to_timeval(long long seconds, int microseconds) noexcept
{
    timeval result = {};
    result.tv_sec = static_cast<time_t>(seconds);
    result.tv_usec = microseconds;
    return result;
}

wall_clock read_wall_clock() noexcept
{
    struct timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return {local_time(now.tv_sec), static_cast<int>(now.tv_nsec / 1000000)};
}

void read_time_zone() noexcept { tzset(); }

zone_reading read_standard_offset() noexcept
{
    const time_t moment = time(nullptr);
    const struct tm now = local_time(moment);
    const bool is_flagged = now.tm_isdst > 0;
    const int seconds_west = static_cast<int>(-now.tm_gmtoff);

    const long saving = saving_near(moment, is_flagged);
    if (saving == 0)
        return {is_flagged ? static_cast<int>(timezone) : seconds_west, is_flagged};
    // Some tz data call summer time the standard, and winter a negative saving:
    // then it is the time without the flag that is ahead.
    if (is_flagged != (saving > 0))
        return {seconds_west, false};
    return {seconds_west + static_cast<int>(saving > 0 ? saving : -saving), true};
}

user_locale::user_locale() noexcept { locale_of_start = newlocale(LC_TIME_MASK, "", nullptr); }

user_locale::~user_locale()
{
    if (locale_of_start != nullptr)
        freelocale(locale_of_start);
    locale_of_start = nullptr;
}

std::size_t format_time(char* buffer, std::size_t size, const char* format, std::tm value) noexcept
{
    value.tm_gmtoff = 0;
    value.tm_zone = "%Z";
    return locale_of_start != nullptr ? strftime_l(buffer, size, format, &value, locale_of_start)
                                      : strftime(buffer, size, format, &value);
}

}

namespace {

[[gnu::constructor]] void on_load() { ka_init_time_varnel(); }

[[gnu::destructor]] void on_unload() { ka_exit_time_varnel(); }

}
