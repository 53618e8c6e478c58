#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_io.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/date_time/posix_time/time_parsers.hpp>
#include <boost/multiprecision/cpp_int.hpp>

#include <locale>
#include <sstream>

#include "inputs.h"

namespace {

namespace gregorian = boost::gregorian;
using period = boost::posix_time::time_duration;
using wide = boost::multiprecision::number<
    boost::multiprecision::cpp_int_backend<64, 64, boost::multiprecision::signed_magnitude,
                                           boost::multiprecision::unchecked, void>,
    boost::multiprecision::et_off>;

struct parts {
    unsigned short month;
    unsigned short day;
    unsigned short year;
};

const column<gregorian::date>& dates()
{
    static const auto made = made_column(
        [](std::size_t i) { return gregorian::date(1970, 1, 1) + gregorian::days(inputs().days[i]); });
    return made;
}

parts parts_of(const gregorian::date& date)
{
    const auto split = date.year_month_day();
    return {split.month, split.day, split.year};
}

std::string parts_shown(const parts& shown) { return calendar_text(shown.year, shown.month, shown.day); }
std::string day_shown(const gregorian::date& date)
{
    return std::to_string((date - gregorian::date(1970, 1, 1)).days());
}

const column<parts>& all_parts()
{
    static const auto made = made_column([](std::size_t i) { return parts_of(dates()[i]); });
    return made;
}

auto split()
{
    return [&in = dates()](std::size_t i) { return parts_of(in[i]); };
}

auto checked_date()
{
    return [&in = all_parts()](std::size_t i) { return gregorian::date(in[i].year, in[i].month, in[i].day); };
}

auto weekday()
{
    return [&in = dates()](std::size_t i) { return in[i].day_of_week().as_number(); };
}

template <int Which>
const column<period>& periods()
{
    static const auto made = made_column([](std::size_t i) {
        return period(boost::posix_time::seconds(inputs().seconds[Which][i]) +
                      boost::posix_time::microseconds(inputs().fractions[Which][i]));
    });
    return made;
}

std::string period_shown(const period& shown) { return std::to_string(shown.total_microseconds()); }

auto add()
{
    return [&a = periods<0>(), &b = periods<1>()](std::size_t i) { return a[i] + b[i]; };
}

auto subtract()
{
    return [&a = periods<0>(), &b = periods<1>()](std::size_t i) { return a[i] - b[i]; };
}

auto compare()
{
    return [&a = periods<0>(), &b = periods<1>()](std::size_t i) { return a[i] < b[i]; };
}

auto divide()
{
    return [&a = periods<0>(), &by = inputs().divisors](std::size_t i) { return a[i] / by[i]; };
}

auto divide_any()
{
    static const auto a = made_column(
        [](std::size_t i) { return period(boost::posix_time::seconds(inputs().any_numbers[i] >> 20)); });
    return [&by = inputs().divisors](std::size_t i) { return a[i] / by[i]; };
}

const column<wide>& long_numbers()
{
    static const auto made = made_column([](std::size_t i) { return wide(inputs().long_numbers[i]); });
    return made;
}

const column<wide>& short_numbers()
{
    static const auto made = made_column([](std::size_t i) { return wide(inputs().short_numbers[i]); });
    return made;
}

std::string wide_shown(const wide& number) { return number.str(); }

auto wide_multiply()
{
    return [&a = long_numbers(), &b = short_numbers()](std::size_t i) { return wide(a[i] * b[i]); };
}

auto wide_divide()
{
    return [&a = long_numbers(), &b = short_numbers()](std::size_t i) { return wide(a[i] / b[i]); };
}

auto read_stamp()
{
    const auto& in = stamps();
    return [&in](std::size_t i) { return boost::posix_time::from_iso_extended_string(in[i]); };
}

/// By a pattern, which stays with its stream.
auto read_stamp_by_pattern()
{
    const auto& in = stamps();
    return [&in](std::size_t i) {
        static std::istringstream stream;
        static const std::locale pattern(stream.getloc(),
                                         new boost::posix_time::time_input_facet("%Y-%m-%dT%H:%M:%S"));
        stream.imbue(pattern);
        stream.clear();
        stream.str(in[i]);
        boost::posix_time::ptime at;
        stream >> at;
        return at;
    };
}

std::string stamp_shown(const boost::posix_time::ptime& at)
{
    return std::to_string((at - boost::posix_time::ptime(gregorian::date(1970, 1, 1))).total_seconds());
}

const peers rows = {
    beside<split, parts_shown>("day number to month, day, year", "Boost"),
    beside<split, parts_shown>("month(), day(), year()", "Boost"),
    beside<checked_date, day_shown>("ka_date(month, day, year), checked", "Boost"),
    beside<weekday>("weekday()", "Boost"),
    beside<add, period_shown>("period + period", "Boost"),
    beside<subtract, period_shown>("period - period", "Boost"),
    beside<compare>("period < period", "Boost"),
    beside<divide, period_shown>("period / int", "Boost"),
    beside<divide_any, period_shown>("period / int, to 43 bits of seconds", "Boost"),
    beside<wide_multiply, wide_shown>("ka_wint * ka_wint", "Boost"),
    beside<wide_divide, wide_shown>("ka_wint / ka_wint", "Boost"),
    beside<read_stamp, stamp_shown>("19 characters to a moment", "Boost"),
    beside<read_stamp_by_pattern, stamp_shown>("19 characters read by a pattern", "Boost"),
};

}
