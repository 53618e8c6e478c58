#include "platform.h"

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <optional>

#include <windows.h>

namespace platform {

namespace {

/// Speaks a language on this thread alone, for as long as it lives.
class thread_language {
public:
    explicit thread_language(const char* name) noexcept
        : mode_(_configthreadlocale(_ENABLE_PER_THREAD_LOCALE))
    {
        const char* const before = std::setlocale(LC_TIME, nullptr);
        std::strncpy(before_, before != nullptr ? before : "C", sizeof before_ - 1);
        is_spoken_ = std::setlocale(LC_TIME, name) != nullptr;
    }
    ~thread_language()
    {
        std::setlocale(LC_TIME, before_);
        _configthreadlocale(mode_);
    }
    thread_language(const thread_language&) = delete;
    thread_language& operator=(const thread_language&) = delete;

    bool is_spoken() const noexcept { return is_spoken_; }

private:
    char before_[128] = {};
    int mode_;
    bool is_spoken_ = false;
};

std::optional<thread_language> language_of_start;

}

split_seconds from_timeval(const timeval& value) noexcept { return {value.tv_sec, value.tv_usec}; }

timeval to_timeval(long long seconds, int microseconds) noexcept
{
    timeval result = {};
    // 32 bits in this runtime.
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

user_locale::user_locale() noexcept { language_of_start.emplace(""); }

user_locale::~user_locale() { language_of_start.reset(); }

std::size_t format_time(char* buffer, std::size_t size, const char* format, std::tm value) noexcept
{
    return std::strftime(buffer, size, format, &value);
}

// This runtime has no locale objects: a name is kept, and spoken where it is needed.
named_locale::named_locale(const char* name) noexcept : locale_(nullptr)
{
    if (thread_language(name).is_spoken())
        locale_ = _strdup(name);
}

named_locale::~named_locale() { std::free(locale_); }

const char* named_locale::layout(char) const noexcept { return nullptr; }

std::size_t named_locale::format_time(char* buffer, std::size_t size, const char* format,
                                      const std::tm& value) const noexcept
{
    const thread_language language(static_cast<const char*>(locale_));
    return std::strftime(buffer, size, format, &value);
}

}
