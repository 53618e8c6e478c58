#include <time/tperiod.h>

#include <charconv>
#include <ostream>

#include "period_text.h"
#include "platform/platform.h"
#include "text/digits.h"
#include "throw.h"

constinit ka_time_period ka_time_period::zero_period;

ka_time_period::ka_time_period(const timeval& value) { time_period(value); }

ka_time_period& ka_time_period::operator=(const timeval& value)
{
    time_period(value);
    return *this;
}

void ka_time_period::time_period(const timeval& value)
{
    const platform::split_seconds split = platform::from_timeval(value);
    const int microseconds = static_cast<int>(split.microseconds);
    if (microseconds != split.microseconds)
        refuse(split.seconds, split.microseconds);
    time_period(split.seconds, microseconds);
}

ka_time_period::operator timeval() const noexcept { return platform::to_timeval(seconds_, microseconds_); }

std::string ka_time_period::to_string() const { return std::string(period_text(*this).view()); }

void ka_time_period::print(std::ostream& stream) const { stream << to_string(); }

period_text::period_text(const ka_time_period& period) noexcept
{
    const long long seconds = period.whole_seconds();
    const int microseconds = period.microseconds();
    char* out = text_;
    if (seconds == 0 && microseconds < 0)
        *out++ = '-';
    out = std::to_chars(out, text_ + longest, seconds).ptr;
    if (microseconds != 0) {
        *out++ = '.';
        out =
            write_six_places(out, static_cast<unsigned int>(microseconds < 0 ? -microseconds : microseconds));
    }
    for (const char letter : {' ', 's', 'e', 'c', 'o', 'n', 'd'})
        *out++ = letter;
    if (microseconds != 0 || (seconds != 1 && seconds != -1))
        *out++ = 's';
    size_ = static_cast<std::size_t>(out - text_);
}

void ka_time_period::refuse(given seconds, given microseconds)
{
    throw_error(ka_invalid_time_period, {KA_SOURCE, __LINE__}, "Seconds: ", seconds,
                " Microseconds: ", microseconds);
}

void ka_time_period::refuse(given days, given hours, given minutes, given seconds, given microseconds)
{
    throw_error(ka_invalid_time_period, {KA_SOURCE, __LINE__}, "Days: ", days, " Hours: ", hours,
                " Minutes: ", minutes, " Seconds: ", seconds, " Microseconds: ", microseconds);
}

void ka_time_period::refuse_zero_divisor() { throw_error(ka_divide_by_zero, {KA_SOURCE, __LINE__}); }
