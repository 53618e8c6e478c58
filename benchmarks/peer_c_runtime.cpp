#include <sys/time.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iomanip>
#include <sstream>
#include <stdexcept>
#include <string>

#include "inputs.h"

// The C runtime, and the standard library where it has no calendar. The process
// runs with TZ=America/Los_Angeles.

namespace {

std::tm local(std::time_t moment)
{
    std::tm fields;
    localtime_r(&moment, &fields);
    return fields;
}

auto reading(const column<long long>& in)
{
    return [&in](std::size_t i) { return local(in[i]); };
}

auto read_early() { return reading(inputs().early); }
auto read_late() { return reading(inputs().late); }
auto read_one_day() { return reading(inputs().one_day); }

std::string second_shown(std::time_t moment) { return std::to_string(moment); }

auto setting(const column<std::tm>& in)
{
    return [&in](std::size_t i) {
        std::tm fields = in[i];
        return std::mktime(&fields);
    };
}

auto set_early()
{
    static const auto in = made_column([](std::size_t i) { return local(inputs().early[i]); });
    return setting(in);
}

auto set_late()
{
    static const auto in = made_column([](std::size_t i) { return local(inputs().late[i]); });
    return setting(in);
}

auto now()
{
    return [](std::size_t) {
        timespec clock;
        clock_gettime(CLOCK_REALTIME, &clock);
        return local(clock.tv_sec);
    };
}

std::string text(const char* format, const std::tm& fields)
{
    char out[128];
    const std::size_t size = std::strftime(out, sizeof out, format, &fields);
    return std::string(out, size);
}

auto with_microseconds()
{
    const auto& in = inputs();
    return [&in](std::size_t i) {
        const std::tm fields = local(in.early[i]);
        char out[128];
        const std::size_t size = std::strftime(out, sizeof out, "%Y-%m-%d %H:%M:%S", &fields);
        const int more = std::snprintf(out + size, sizeof out - size, ".%06d", in.microseconds[i]);
        return std::string(out, size + static_cast<std::size_t>(more));
    };
}

auto with_names()
{
    const auto& in = inputs().early;
    return [&in](std::size_t i) { return text("%A, %d %B %Y %I:%M:%S %p", local(in[i])); };
}

auto date_text()
{
    static const auto in = made_column([](std::size_t i) { return local(inputs().early[i]); });
    return [](std::size_t i) { return text("%m/%d/%Y", in[i]); };
}

auto clock_text()
{
    static const auto in = made_column([](std::size_t i) { return local(inputs().early[i]); });
    return [](std::size_t i) { return text("%H:%M:%S:000000", in[i]); };
}

template <int Which>
const column<timeval>& intervals()
{
    static const auto made = made_column([](std::size_t i) {
        const long long seconds = inputs().seconds[Which][i];
        const int fraction = inputs().fractions[Which][i];
        return fraction < 0 ? timeval{seconds - 1, fraction + 1000000} : timeval{seconds, fraction};
    });
    return made;
}

std::string interval_shown(const timeval& shown)
{
    return std::to_string(shown.tv_sec * 1000000 + shown.tv_usec);
}

auto add()
{
    return [&a = intervals<0>(), &b = intervals<1>()](std::size_t i) {
        timeval sum;
        timeradd(&a[i], &b[i], &sum);
        return sum;
    };
}

auto subtract()
{
    return [&a = intervals<0>(), &b = intervals<1>()](std::size_t i) {
        timeval difference;
        timersub(&a[i], &b[i], &difference);
        return difference;
    };
}

auto compare()
{
    return [&a = intervals<0>(), &b = intervals<1>()](std::size_t i) { return timercmp(&a[i], &b[i], <); };
}

auto number_text()
{
    const auto& in = inputs().long_numbers;
    return [&in](std::size_t i) { return std::to_string(in[i]); };
}

auto any_number_text()
{
    const auto& in = inputs().any_numbers;
    return [&in](std::size_t i) { return std::to_string(in[i]); };
}

/// A function of its own, as whoever refuses a value has.
[[gnu::noinline]] int refused(int month, int day, int year)
{
    std::ostringstream text;
    text << "invalid_date: Month( " << month << " ), day( " << day << " ), year( " << year
         << " ) [time/src/date:" << 150 << "]";
    throw std::runtime_error(text.str());
}

auto refuse()
{
    return [](std::size_t i) {
        try {
            return refused(13, 1, static_cast<int>(i + 1));
        } catch (const std::runtime_error& error) {
            return static_cast<int>(error.what()[0]);
        }
    };
}

std::time_t second_of(const char* text, std::tm& fields)
{
    fields = {};
    if (strptime(text, "%Y-%m-%dT%H:%M:%S", &fields) == nullptr)
        throw std::invalid_argument("stamp");
    return timegm(&fields);
}

auto read_stamp()
{
    const auto& in = stamps();
    return [&in](std::size_t i) {
        std::tm fields;
        return second_of(in[i].c_str(), fields);
    };
}

auto read_stamp_from_stream()
{
    const auto& in = stamps();
    return [&in](std::size_t i) {
        std::istringstream stream(in[i]);
        std::tm fields = {};
        stream >> std::get_time(&fields, "%Y-%m-%dT%H:%M:%S");
        return timegm(&fields);
    };
}

/// Seconds and microseconds; the runtime reads no fraction.
struct fine_second {
    std::time_t second;
    long microsecond;
};

std::string fine_shown(const fine_second& at)
{
    return seconds_text(static_cast<long long>(at.second) * 1000000 + at.microsecond);
}

auto read_full_stamp()
{
    const auto& in = full_stamps();
    return [&in](std::size_t i) {
        std::tm fields = {};
        const char* at = strptime(in[i].c_str(), "%Y-%m-%dT%H:%M:%S.", &fields);
        char* end = nullptr;
        const long fraction = std::strtol(at, &end, 10);
        if (strptime(end, "%z", &fields) == nullptr)
            throw std::invalid_argument("stamp");
        const long ahead = fields.tm_gmtoff;
        return fine_second{timegm(&fields) - ahead, fraction};
    };
}

auto write_stamp()
{
    const auto& in = inputs().early;
    return [&in](std::size_t i) {
        const std::time_t second = in[i];
        std::tm fields;
        gmtime_r(&second, &fields);
        stamp_text text;
        std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &fields);
        return text;
    };
}

std::string stamp_shown(const stamp_text& text) { return std::string(text.data(), 20); }

const peers rows = {
    beside<read_early, fields_text>("operator tm in a world zone, 1970 to 2037", "localtime_r"),
    beside<read_late, fields_text>("operator tm in a world zone, 2040 to 2100", "localtime_r"),
    beside<set_early, second_shown>("local to universal in a world zone", "mktime"),
    beside<read_early, fields_text>("operator tm, 1970 to 2037", "localtime_r"),
    beside<read_early, fields_text>("time(), date(), is_dst(), 1970 to 2037", "localtime_r"),
    beside<read_late, fields_text>("operator tm, 2040 to 2100", "localtime_r"),
    beside<read_one_day, fields_text>("operator tm, one day in ascending order", "localtime_r"),
    beside<set_early, second_shown>("local to universal, 1970 to 2037", "mktime"),
    beside<set_late, second_shown>("local to universal, 2040 to 2100", "mktime"),
    beside<read_late, fields_text>("operator tm in a zone of one's own", "localtime_r"),
    beside<read_late, fields_text>("time(), date(), is_dst() in a zone of one's own", "localtime_r"),
    beside<set_late, second_shown>("local to universal in a zone of one's own", "mktime"),
    beside_alone<now>("ka_time_and_date::now()", "clock_gettime + localtime_r"),
    beside<with_microseconds>("moment to date, time, microseconds", "localtime_r + strftime + snprintf"),
    beside<with_names>("moment to a long text with names", "localtime_r + strftime"),
    beside<with_microseconds>("the first by a pattern, into a buffer", "localtime_r + strftime + snprintf"),
    beside<with_names>("the second by a pattern, into a buffer", "localtime_r + strftime"),
    beside<read_stamp, second_shown>("19 characters read by a pattern", "strptime + timegm"),
    beside<read_stamp_from_stream, second_shown>("19 characters read by a pattern", "std::get_time + timegm"),
    beside<date_text>("ka_date::to_string, %m/%d/%Y", "strftime"),
    beside<clock_text>("ka_time::to_string", "strftime"),
    beside<read_stamp, second_shown>("19 characters to a moment", "strptime + timegm"),
    beside<read_stamp_from_stream, second_shown>("19 characters to a moment", "std::get_time + timegm"),
    beside<read_full_stamp, fine_shown>("RFC 3339 with offset and fraction to a moment",
                                        "strptime + strtol + timegm"),
    beside<write_stamp, stamp_shown>("moment to RFC 3339 in a buffer", "gmtime_r + strftime"),
    beside<add, interval_shown>("period + period", "timeradd"),
    beside<subtract, interval_shown>("period - period", "timersub"),
    beside<compare>("period < period", "timercmp"),
    beside<number_text>("ka_wint to 12 digits", "std::to_string"),
    beside<any_number_text>("ka_wint to 1 to 19 digits", "std::to_string"),
    beside<refuse>("a refused value, thrown and caught", "std::runtime_error + ostringstream"),
};

}
