#include <time/tperiod.h>

#include <charconv>
#include <ostream>

#include "platform.h"
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

std::string ka_time_period::to_string() const
{
    char text[longest_text];
    return std::string(text, write_text(text));
}

void ka_time_period::print(std::ostream& stream) const { stream << to_string(); }

char* ka_time_period::write_text(char* out) const noexcept
{
    char* const end = out + longest_text;
    if (seconds_ == 0 && microseconds_ < 0)
        *out++ = '-';
    out = std::to_chars(out, end, seconds_).ptr;
    if (microseconds_ != 0) {
        *out++ = '.';
        out = write_six_places(out,
                               static_cast<unsigned int>(microseconds_ < 0 ? -microseconds_ : microseconds_));
    }
    for (const char letter : {' ', 's', 'e', 'c', 'o', 'n', 'd'})
        *out++ = letter;
    if (microseconds_ != 0 || (seconds_ != 1 && seconds_ != -1))
        *out++ = 's';
    return out;
}

void ka_time_period::refuse(long long seconds, long long microseconds)
{
    throw_error(error_code::invalid_time_period, {__FILE__, __LINE__}, "Seconds: ", seconds,
                " Microseconds: ", microseconds);
}

void ka_time_period::refuse(int days, int hours, int minutes, int seconds, int microseconds)
{
    throw_error(error_code::invalid_time_period, {__FILE__, __LINE__}, "Days: ", days, " Hours: ", hours,
                " Minutes: ", minutes, " Seconds: ", seconds, " Microseconds: ", microseconds);
}

void ka_time_period::refuse_zero_divisor() { throw_error(error_code::divide_by_zero, {__FILE__, __LINE__}); }
