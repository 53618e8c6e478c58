#include <time/months.h>
#include <time/time_varnel.h>

#include "inputs.h"

namespace {

struct month_day_year {
    unsigned short month;
    unsigned short day;
    short year;
};

const column<ka_date>& dates()
{
    static const auto made =
        made_column([](std::size_t i) { return ka_date(static_cast<int>(epoch_day + inputs().days[i])); });
    return made;
}

const column<month_day_year>& parts()
{
    static const auto made = made_column([](std::size_t i) {
        const ka_date& date = dates()[i];
        return month_day_year{date.month(), date.day(), date.year()};
    });
    return made;
}

void split()
{
    const auto& in = dates();
    for_each_input([&](std::size_t i) {
        month_day_year out;
        ka_date::calc_calendar_date(in[i].julian_day(), &out.month, &out.day, &out.year);
        return out;
    });
}

void three_questions()
{
    const auto& in = dates();
    for_each_input([&](std::size_t i) { return month_day_year{in[i].month(), in[i].day(), in[i].year()}; });
}

void day_number()
{
    const auto& in = parts();
    for_each_input(
        [&](std::size_t i) { return ka_date::calc_julian_day(in[i].month, in[i].day, in[i].year); });
}

void checked_date()
{
    const auto& in = parts();
    for_each_input([&](std::size_t i) { return ka_date(in[i].month, in[i].day, in[i].year); });
}

void weekday()
{
    const auto& in = dates();
    for_each_input([&](std::size_t i) { return in[i].weekday(); });
}

void last_sunday()
{
    const auto& in = parts();
    for_each_input([&](std::size_t i) { return ka_date(ka_last, 1, 10, in[i].year); });
}

/// One function for all callers, as a program has it that asks in many places.
[[gnu::noinline]] ka_date nth_weekday(ka_which_one which, unsigned short weekday, unsigned short month,
                                      short year)
{
    return ka_date(which, weekday, month, year);
}

void any_nth_weekday()
{
    const auto& in = parts();
    for_each_input([&](std::size_t i) {
        const auto which = static_cast<ka_which_one>(1 + in[i].day % 4);
        return nth_weekday(which, static_cast<unsigned short>(1 + in[i].day % 7), in[i].month, in[i].year);
    });
}

void second_sunday()
{
    const auto& in = parts();
    for_each_input([&](std::size_t i) { return ka_date(ka_second, 1, 3, in[i].year); });
}

void add_months()
{
    const auto& in = dates();
    for_each_input([&](std::size_t i) { return in[i] + ka_months(inputs().divisors[i] - 50); });
}

void iso_week()
{
    const auto& in = dates();
    for_each_input([&](std::size_t i) { return ka_iso_week(in[i]); });
}

}

std::vector<operation> calendar_operations()
{
    return {
        {"day number to month, day, year", split, 1.0, 42},
        {"month(), day(), year()", three_questions, 1.0, 42},
        {"month, day, year to day number", day_number, 1.0, 40},
        {"ka_date(month, day, year), checked", checked_date, 1.0, 56},
        {"weekday()", weekday, 1.0, 20},
        {"last Sunday of October", last_sunday, 1.3, 45},
        {"second Sunday of March", second_sunday, 1.3, 45},
        {"n-th weekday, from many places", any_nth_weekday, 0.7, 0},
        {"date + months, clamped", add_months, 1.3, 0},
        {"date to ISO year and week", iso_week, 0, 0},
    };
}
