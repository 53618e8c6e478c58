#include <chrono>
#include <stdexcept>

#include "inputs.h"

namespace {

using namespace std::chrono;

struct parts {
    unsigned int month;
    unsigned int day;
    int year;
};

const column<sys_days>& dates()
{
    static const auto made = made_column([](std::size_t i) { return sys_days(days(inputs().days[i])); });
    return made;
}

parts parts_of(const sys_days& date)
{
    const year_month_day split(date);
    return {static_cast<unsigned int>(split.month()), static_cast<unsigned int>(split.day()),
            static_cast<int>(split.year())};
}

const column<parts>& all_parts()
{
    static const auto made = made_column([](std::size_t i) { return parts_of(dates()[i]); });
    return made;
}

year_month_day date_of(const parts& value) { return {year(value.year), month(value.month), day(value.day)}; }

void split()
{
    const auto& in = dates();
    for_each_input([&](std::size_t i) { return parts_of(in[i]); });
}

void day_number()
{
    const auto& in = all_parts();
    for_each_input([&](std::size_t i) { return sys_days(date_of(in[i])); });
}

void checked_date()
{
    const auto& in = all_parts();
    for_each_input([&](std::size_t i) {
        const year_month_day date = date_of(in[i]);
        if (!date.ok())
            throw std::invalid_argument("date");
        return sys_days(date);
    });
}

void week_day()
{
    const auto& in = dates();
    for_each_input([&](std::size_t i) { return weekday(in[i]).c_encoding(); });
}

void last_sunday()
{
    const auto& in = all_parts();
    for_each_input([&](std::size_t i) { return sys_days(year(in[i].year) / October / Sunday[last]); });
}

void second_sunday()
{
    const auto& in = all_parts();
    for_each_input([&](std::size_t i) { return sys_days(year(in[i].year) / March / Sunday[2]); });
}

void add_months()
{
    const auto& in = dates();
    for_each_input([&](std::size_t i) {
        const year_month_day moved = year_month_day(in[i]) + months(inputs().divisors[i] - 50);
        return sys_days(moved.ok() ? moved : moved.year() / moved.month() / last);
    });
}

[[gnu::noinline]] sys_days nth_weekday(unsigned int which, weekday day, month in, year of)
{
    return year_month_weekday(of, in, day[which]);
}

void any_nth_weekday()
{
    const auto& in = all_parts();
    for_each_input([&](std::size_t i) {
        return nth_weekday(1 + in[i].day % 4, weekday(in[i].day % 7), month(in[i].month), year(in[i].year));
    });
}

const peers rows = {
    {"day number to month, day, year", "std::chrono", split},
    {"month(), day(), year()", "std::chrono", split},
    {"month, day, year to day number", "std::chrono", day_number},
    {"ka_date(month, day, year), checked", "std::chrono", checked_date},
    {"weekday()", "std::chrono", week_day},
    {"last Sunday of October", "std::chrono", last_sunday},
    {"second Sunday of March", "std::chrono", second_sunday},
    {"n-th weekday, from many places", "std::chrono", any_nth_weekday},
    {"date + months, clamped", "std::chrono", add_months},
};

}
