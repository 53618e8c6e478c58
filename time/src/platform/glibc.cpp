#include "platform.h"

#include <langinfo.h>
#include <locale.h>
#include <time.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace platform {

namespace {

locale_t locale_of_start = nullptr;

/// The local time of a moment; the first day of the calendar where the runtime has none.
struct tm local_time(time_t moment) noexcept
{
    struct tm fields = {};
    return localtime_r(&moment, &fields) != nullptr ? fields : no_clock;
}

/// What the local clock keeps to between two changes.
struct stretch {
    long ahead; // of Greenwich, in seconds
    bool is_flagged;

    bool operator==(const stretch&) const = default;
};

stretch stretch_at(time_t moment) noexcept
{
    const struct tm fields = local_time(moment);
    return {fields.tm_gmtoff, fields.tm_isdst != 0};
}

/// The next stretch that is not the present one, forwards or backwards; the
/// present one itself where a year brings no change.
stretch neighbour_of(const stretch& present, time_t moment, bool is_later) noexcept
{
    // Shorter than any daylight saving time, or pause in it, on record.
    constexpr time_t two_weeks = 14 * 86400;
    for (time_t distance = two_weeks; distance <= 27 * two_weeks; distance += two_weeks) {
        const stretch other = stretch_at(is_later ? moment + distance : moment - distance);
        if (other != present)
            return other;
    }
    return present;
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
    struct timespec now;
    if (clock_gettime(CLOCK_REALTIME, &now) != 0)
        return {no_clock, 0};
    wall_clock clock;
    clock.milliseconds = static_cast<int>(now.tv_nsec / 1000000);
    if (localtime_r(&now.tv_sec, &clock.local) != nullptr) [[likely]]
        clock.local_seconds = now.tv_sec + clock.local.tm_gmtoff;
    else
        clock.local = no_clock;
    return clock;
}

bool read_universal_clock(split_seconds& now) noexcept
{
    struct timespec clock = {};
    if (clock_gettime(CLOCK_REALTIME, &clock) != 0)
        return false;
    now = {clock.tv_sec, clock.tv_nsec / 1000};
    return true;
}

void read_time_zone() noexcept { tzset(); }

machine_zone read_machine_zone() noexcept
{
    const time_t moment = time(nullptr);
    const stretch present = stretch_at(moment);
    const long told = -timezone;
    stretch nearer = neighbour_of(present, moment, true);
    stretch farther = neighbour_of(present, moment, false);
    // A greater difference holds a change of the standard offset too.
    if (std::abs(nearer.ahead - present.ahead) > std::abs(farther.ahead - present.ahead))
        std::swap(nearer, farther);

    machine_zone machine;
    for (const stretch& other : {nearer, farther})
        // Some tz data call summer time the standard, and winter a negative
        // saving: then it is the time without the flag that is ahead.
        if (machine.count == 0 && other.is_flagged != present.is_flagged && other.ahead != present.ahead)
            machine.add(std::min(other.ahead, present.ahead), other.ahead < present.ahead);

    machine.own_seconds_west = static_cast<int>(-present.ahead);
    if (!present.is_flagged) {
        machine.add(present.ahead, false);
        return machine;
    }
    if (machine.count == 0 && told < present.ahead)
        machine.add(told, true);
    if (machine.count != 0)
        machine.own_seconds_west = machine.readings[0].seconds_west;
    else
        // The standard offset changed together with the flag, so that no clock
        // tells the saving: an hour, if a built-in zone says so too.
        machine.add(present.ahead - 3600, true);
    return machine;
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

named_locale::named_locale(const char* name) noexcept : locale_(newlocale(LC_TIME_MASK, name, nullptr)) {}

named_locale::~named_locale()
{
    if (locale_ != nullptr)
        freelocale(static_cast<locale_t>(locale_));
}

const char* named_locale::layout(char code) const noexcept
{
    const auto locale = static_cast<locale_t>(locale_);
    switch (code) {
        case 'c':
            return nl_langinfo_l(D_T_FMT, locale);
        case 'x':
            return nl_langinfo_l(D_FMT, locale);
        case 'X':
            return nl_langinfo_l(T_FMT, locale);
        case 'r':
            return nl_langinfo_l(T_FMT_AMPM, locale);
        default:
            return nullptr;
    }
}

std::size_t named_locale::format_time(char* buffer, std::size_t size, const char* format,
                                      const std::tm& value) const noexcept
{
    return strftime_l(buffer, size, format, &value, static_cast<locale_t>(locale_));
}

}
