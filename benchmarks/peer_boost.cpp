#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/date_time/posix_time/time_parsers.hpp>
#include <boost/multiprecision/cpp_int.hpp>

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

const column<parts>& all_parts()
{
    static const auto made = made_column([](std::size_t i) { return parts_of(dates()[i]); });
    return made;
}

void split()
{
    const auto& in = dates();
    for_each_input([&](std::size_t i) { return parts_of(in[i]); });
}

void checked_date()
{
    const auto& in = all_parts();
    for_each_input([&](std::size_t i) { return gregorian::date(in[i].year, in[i].month, in[i].day); });
}

void weekday()
{
    const auto& in = dates();
    for_each_input([&](std::size_t i) { return in[i].day_of_week().as_number(); });
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

void add()
{
    const auto& a = periods<0>();
    const auto& b = periods<1>();
    for_each_input([&](std::size_t i) { return a[i] + b[i]; });
}

void subtract()
{
    const auto& a = periods<0>();
    const auto& b = periods<1>();
    for_each_input([&](std::size_t i) { return a[i] - b[i]; });
}

void compare()
{
    const auto& a = periods<0>();
    const auto& b = periods<1>();
    for_each_input([&](std::size_t i) { return a[i] < b[i]; });
}

void divide()
{
    const auto& a = periods<0>();
    const auto& by = inputs().divisors;
    for_each_input([&](std::size_t i) { return a[i] / by[i]; });
}

void divide_any()
{
    static const auto a = made_column(
        [](std::size_t i) { return period(boost::posix_time::seconds(inputs().any_numbers[i] >> 20)); });
    const auto& by = inputs().divisors;
    for_each_input([&](std::size_t i) { return a[i] / by[i]; });
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

void wide_multiply()
{
    const auto& a = long_numbers();
    const auto& b = short_numbers();
    for_each_input([&](std::size_t i) { return wide(a[i] * b[i]); });
}

void wide_divide()
{
    const auto& a = long_numbers();
    const auto& b = short_numbers();
    for_each_input([&](std::size_t i) { return wide(a[i] / b[i]); });
}

auto read_stamp()
{
    const auto& in = stamps();
    return [&in](std::size_t i) { return boost::posix_time::from_iso_extended_string(in[i]); };
}

const peers rows = {
    {"day number to month, day, year", "Boost", split},
    {"month(), day(), year()", "Boost", split},
    {"ka_date(month, day, year), checked", "Boost", checked_date},
    {"weekday()", "Boost", weekday},
    {"period + period", "Boost", add},
    {"period - period", "Boost", subtract},
    {"period < period", "Boost", compare},
    {"period / int", "Boost", divide},
    {"period / int, to 43 bits of seconds", "Boost", divide_any},
    {"ka_wint * ka_wint", "Boost", wide_multiply},
    {"ka_wint / ka_wint", "Boost", wide_divide},
    {"19 characters to a moment", "Boost", run_all<read_stamp>},
};

}
