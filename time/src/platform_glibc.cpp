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

/// The local time nearest to a moment at which the runtime's daylight flag is
/// the other one, within a year; false where there is none. Two weeks are
/// shorter than any daylight saving time, or pause in it, on record.
bool find_other_flag(time_t moment, bool is_dst, struct tm& found) noexcept
{
    constexpr time_t two_weeks = 14 * 86400;
    for (time_t distance = two_weeks; distance <= 27 * two_weeks; distance += two_weeks)
        for (const time_t candidate : {moment + distance, moment - distance}) {
            found = local_time(candidate);
            if ((found.tm_isdst > 0) != is_dst)
                return true;
        }
    return false;
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
    const bool flag = now.tm_isdst > 0;
    const int seconds_west = static_cast<int>(-now.tm_gmtoff);

    struct tm other = {};
    if (!find_other_flag(moment, flag, other))
        return {flag ? static_cast<int>(timezone) : seconds_west, flag};
    // Some tz data call summer time the standard and winter a negative saving.
    // Of the two clocks the one behind is standard time, whatever its flag.
    const bool is_dst = now.tm_gmtoff > other.tm_gmtoff;
    return {is_dst ? static_cast<int>(-other.tm_gmtoff) : seconds_west, is_dst};
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
