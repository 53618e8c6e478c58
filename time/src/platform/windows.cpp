#include "platform.h"

#include <locale.h>
#include <time.h>

#include <windows.h>

namespace platform {

namespace {

_locale_t locale_of_start = nullptr;

}

split_seconds from_timeval(const timeval& value) noexcept { return {value.tv_sec, value.tv_usec}; }

timeval to_timeval(long long seconds, int microseconds) noexcept
{
    timeval result = {};
    // 32 bits, which a longer period wraps in, as in all its counts.
    result.tv_sec = static_cast<decltype(result.tv_sec)>(seconds);
    result.tv_usec = microseconds;
    return result;
}

wall_clock read_wall_clock() noexcept
{
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    std::tm local = {};
    local.tm_year = now.wYear - 1900;
    local.tm_mon = now.wMonth - 1;
    local.tm_mday = now.wDay;
    local.tm_wday = now.wDayOfWeek;
    local.tm_hour = now.wHour;
    local.tm_min = now.wMinute;
    local.tm_sec = now.wSecond;
    return {local, now.wMilliseconds};
}

bool read_universal_clock(split_seconds& now) noexcept
{
    FILETIME clock = {};
    GetSystemTimeAsFileTime(&clock);
    // Tenths of microseconds since 1 January 1601.
    constexpr long long to_1970 = 116444736000000000;
    const long long count =
        (static_cast<long long>(clock.dwHighDateTime) << 32 | clock.dwLowDateTime) - to_1970;
    now = {count / 10000000, count % 10000000 / 10};
    return true;
}

void read_time_zone() noexcept { _tzset(); }

machine_zone read_machine_zone() noexcept
{
    const __time64_t moment = _time64(nullptr);
    const std::tm* const local = _localtime64(&moment);
    const bool is_dst = local != nullptr && local->tm_isdst != 0;
    machine_zone machine;
    machine.add(-_timezone, is_dst);
    machine.own_seconds_west = static_cast<int>(_timezone);
    return machine;
}

user_locale::user_locale() noexcept { locale_of_start = _create_locale(LC_TIME, ""); }

user_locale::~user_locale()
{
    _free_locale(locale_of_start);
    locale_of_start = nullptr;
}

std::size_t format_time(char* buffer, std::size_t size, const char* format, std::tm value) noexcept
{
    return locale_of_start != nullptr ? _strftime_l(buffer, size, format, &value, locale_of_start)
                                      : strftime(buffer, size, format, &value);
}

named_locale::named_locale(const char* name) noexcept : locale_(_create_locale(LC_TIME, name)) {}

named_locale::~named_locale() { _free_locale(static_cast<_locale_t>(locale_)); }

// This runtime tells none.
const char* named_locale::layout(char) const noexcept { return nullptr; }

std::size_t named_locale::format_time(char* buffer, std::size_t size, const char* format,
                                      const std::tm& value) const noexcept
{
    return _strftime_l(buffer, size, format, &value, static_cast<_locale_t>(locale_));
}

}
