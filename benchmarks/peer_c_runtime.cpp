#include <sys/time.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
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

void read_all(const column<long long>& in)
{
    for_each_input([&](std::size_t i) { return local(in[i]); });
}

void read_early() { read_all(inputs().early); }
void read_late() { read_all(inputs().late); }
void read_one_day() { read_all(inputs().one_day); }

void set_all(const column<std::tm>& in)
{
    for_each_input([&](std::size_t i) {
        std::tm fields = in[i];
        return std::mktime(&fields);
    });
}

void set_early()
{
    static const auto in = made_column([](std::size_t i) { return local(inputs().early[i]); });
    set_all(in);
}

void set_late()
{
    static const auto in = made_column([](std::size_t i) { return local(inputs().late[i]); });
    set_all(in);
}

void now()
{
    for_each_input([](std::size_t) {
        timespec clock;
        clock_gettime(CLOCK_REALTIME, &clock);
        return local(clock.tv_sec);
    });
}

std::string text(const char* format, const std::tm& fields)
{
    char out[128];
    const std::size_t size = std::strftime(out, sizeof out, format, &fields);
    return std::string(out, size);
}

void with_microseconds()
{
    const auto& in = inputs();
    for_each_input([&](std::size_t i) {
        const std::tm fields = local(in.early[i]);
        char out[128];
        const std::size_t size = std::strftime(out, sizeof out, "%Y-%m-%d %H:%M:%S", &fields);
        const int more = std::snprintf(out + size, sizeof out - size, ".%06d", in.microseconds[i]);
        return std::string(out, size + static_cast<std::size_t>(more));
    });
}

void with_names()
{
    const auto& in = inputs().early;
    for_each_input([&](std::size_t i) { return text("%A, %d %B %Y, %H:%M:%S (%a, %b)", local(in[i])); });
}

void date()
{
    static const auto in = made_column([](std::size_t i) { return local(inputs().early[i]); });
    for_each_input([&](std::size_t i) { return text("%m/%d/%Y", in[i]); });
}

void time()
{
    static const auto in = made_column([](std::size_t i) { return local(inputs().early[i]); });
    for_each_input([&](std::size_t i) { return text("%H:%M:%S:000000", in[i]); });
}

template <int Which>
const column<timeval>& intervals()
{
    static const auto made = made_column([](std::size_t i) {
        return timeval{inputs().seconds[Which][i], std::abs(inputs().fractions[Which][i])};
    });
    return made;
}

void add()
{
    const auto& a = intervals<0>();
    const auto& b = intervals<1>();
    for_each_input([&](std::size_t i) {
        timeval sum;
        timeradd(&a[i], &b[i], &sum);
        return sum;
    });
}

void subtract()
{
    const auto& a = intervals<0>();
    const auto& b = intervals<1>();
    for_each_input([&](std::size_t i) {
        timeval difference;
        timersub(&a[i], &b[i], &difference);
        return difference;
    });
}

void number_text()
{
    const auto& in = inputs().long_numbers;
    for_each_input([&](std::size_t i) { return std::to_string(in[i]); });
}

/// A function of its own, as whoever refuses a value has.
[[gnu::noinline]] int refused(int month, int day, int year)
{
    std::ostringstream text;
    text << "invalid_date: Month( " << month << " ), day( " << day << " ), year( " << year
         << " ) [time/src/date:" << 150 << "]";
    throw std::runtime_error(text.str());
}

void refuse()
{
    for_each_input([](std::size_t i) {
        try {
            return refused(13, 1, static_cast<int>(i + 1));
        } catch (const std::runtime_error& error) {
            return static_cast<int>(error.what()[0]);
        }
    });
}

const peers rows = {
    {"operator tm, 1970 to 2037", "localtime_r", read_early},
    {"time(), date(), is_dst(), 1970 to 2037", "localtime_r", read_early},
    {"operator tm, 2040 to 2100", "localtime_r", read_late},
    {"operator tm, one day in ascending order", "localtime_r", read_one_day},
    {"local to universal, 1970 to 2037", "mktime", set_early},
    {"local to universal, 2040 to 2100", "mktime", set_late},
    {"ka_time_and_date::now()", "clock_gettime + localtime_r", now},
    {"moment to date, time, microseconds", "localtime_r + strftime + snprintf", with_microseconds},
    {"moment to a long text with names", "localtime_r + strftime", with_names},
    {"ka_date::to_string, %m/%d/%Y", "strftime", date},
    {"ka_time::to_string", "strftime", time},
    {"period + period", "timeradd", add},
    {"period - period", "timersub", subtract},
    {"ka_wint to 12 digits", "std::to_string", number_text},
    {"a refused value, thrown and caught", "std::runtime_error + ostringstream", refuse},
};

}
