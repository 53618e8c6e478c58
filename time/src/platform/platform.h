#pragma once

#include <climits>
#include <cstddef>
#include <ctime>

#include <sys/time.h> // timeval, on POSIX and mingw alike

#include <time/tperiod.h>

/// What the library asks of the machine. One source for each platform answers
/// it, and no other file includes a header of an operating system. That source
/// also ties `ka_init_time_varnel` and `ka_exit_time_varnel` to the load and
/// unload of the library.
namespace platform {

/// Seconds and microseconds, of the platform's `timeval` for one.
struct split_seconds {
    long long seconds;
    long long microseconds;
};
split_seconds from_timeval(const timeval& value) noexcept;
timeval to_timeval(long long seconds, int microseconds) noexcept;

/// What a machine without a clock reads: midnight of the calendar's first day,
/// which `ka_time_and_date::now` takes for a failure.
inline constexpr std::tm no_clock = [] {
    std::tm fields = {};
    fields.tm_mday = 1;
    fields.tm_year = -4713 - 1900;
    return fields;
}();

/// One reading of the machine's wall clock, broken down in its local time; a
/// clock that can't be read gives `no_clock`.
struct wall_clock {
    std::tm local;
    int milliseconds;
    /// The same since 1970 on the local clock, where the machine tells how far
    /// that is ahead; it counts no leap seconds, which `local` can.
    long long local_seconds = LLONG_MIN;

    /// A period, since a machine that counts leap seconds can show second 60.
    ka_time_period since_midnight() const
    {
        return ka_time_period(0, local.tm_hour, local.tm_min, local.tm_sec, milliseconds * 1000);
    }
};
wall_clock read_wall_clock() noexcept;

/// The universal clock, since 1970. Returns whether there is one.
bool read_universal_clock(split_seconds& now) noexcept;

/// Has the runtime read the machine's time zone again.
void read_time_zone() noexcept;

/// One way to read the machine's present clock.
struct zone_reading {
    /// The standard offset in seconds, positive west of Greenwich.
    int seconds_west;
    /// Whether daylight saving time holds, which is always ahead of standard time.
    bool is_dst;
};

/// The machine's time zone as it holds now. Runtimes don't agree on which of a
/// year's two clocks is the standard one, so that there can be several readings.
struct machine_zone {
    /// The likeliest first.
    zone_reading readings[2];
    int count = 0;
    /// The standard offset where no built-in zone agrees with a reading.
    int own_seconds_west = 0;

    void add(long ahead, bool is_dst) { readings[count++] = {static_cast<int>(-ahead), is_dst}; }
    constexpr const zone_reading* begin() const { return readings; }
    constexpr const zone_reading* end() const { return readings + count; }
};
machine_zone read_machine_zone() noexcept;

/// For as long as an object lives, `format_time` prints in the user's
/// `LC_TIME` locale, as the environment names it. The locale of the process
/// and of its threads stays as it is. If the environment's locale can't be
/// had, `format_time` prints in the locale in force.
class user_locale {
public:
    user_locale() noexcept;
    ~user_locale();
    user_locale(const user_locale&) = delete;
    user_locale& operator=(const user_locale&) = delete;
};

/// `strftime` in the locale above. Where the record has fields for a zone, the
/// zone is one of offset 0 that is called "%Z".
std::size_t format_time(char* buffer, std::size_t size, const char* format, std::tm value) noexcept;

/// One of the machine's locales, by its name, for texts of dates and times. The
/// locale of the process and of its threads stays as it is.
class named_locale {
public:
    explicit named_locale(const char* name) noexcept;
    ~named_locale();
    named_locale(const named_locale&) = delete;
    named_locale& operator=(const named_locale&) = delete;

    bool is_known() const noexcept { return locale_ != nullptr; }
    /// The layout that the runtime tells for `%c`, `%x`, `%X` or `%r`, in the
    /// codes of `strftime`; null where it tells none.
    const char* layout(char code) const noexcept;
    /// `strftime` in this locale.
    std::size_t format_time(char* buffer, std::size_t size, const char* format,
                            const std::tm& value) const noexcept;

private:
    void* locale_;
};

}
