#include <time/months.h>
#include <time/time_varnel.h>

#include "inputs.h"

namespace {

struct month_day_year {
    unsigned short month;
    unsigned short day;
    short year;
};

std::string parts_shown(const month_day_year& parts)
{
    return calendar_text(parts.year, parts.month, parts.day);
}
std::string day_shown(const ka_date& date) { return std::to_string(date.julian_day() - epoch_day); }

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

auto split()
{
    return [&in = dates()](std::size_t i) {
        month_day_year out;
        ka_date::calc_calendar_date(in[i].julian_day(), &out.month, &out.day, &out.year);
        return out;
    };
}

auto three_questions()
{
    return [&in = dates()](std::size_t i) {
        return month_day_year{in[i].month(), in[i].day(), in[i].year()};
    };
}

auto day_number()
{
    return [&in = parts()](std::size_t i) {
        return ka_date::calc_julian_day(in[i].month, in[i].day, in[i].year);
    };
}

std::string number_shown(int julian_day) { return std::to_string(julian_day - epoch_day); }

auto checked_date()
{
    return [&in = parts()](std::size_t i) { return ka_date(in[i].month, in[i].day, in[i].year); };
}

auto weekday()
{
    return [&in = dates()](std::size_t i) { return in[i].weekday(); };
}

/// From 0, a Sunday, as the peers count.
std::string weekday_shown(unsigned short weekday) { return std::to_string(weekday - 1); }

auto last_sunday()
{
    return [&in = parts()](std::size_t i) { return ka_date(ka_last, 1, 10, in[i].year); };
}

auto second_sunday()
{
    return [&in = parts()](std::size_t i) { return ka_date(ka_second, 1, 3, in[i].year); };
}

/// One function for all callers, as a program has it that asks in many places.
[[gnu::noinline]] ka_date nth_weekday(ka_which_one which, unsigned short weekday, unsigned short month,
                                      short year)
{
    return ka_date(which, weekday, month, year);
}

auto any_nth_weekday()
{
    return [&in = parts()](std::size_t i) {
        const auto which = static_cast<ka_which_one>(1 + in[i].day % 4);
        return nth_weekday(which, static_cast<unsigned short>(1 + in[i].day % 7), in[i].month, in[i].year);
    };
}

auto any_last_weekday()
{
    return [&in = parts()](std::size_t i) {
        return nth_weekday(ka_last, static_cast<unsigned short>(1 + in[i].day % 7), in[i].month, in[i].year);
    };
}

auto add_months()
{
    return [&in = dates()](std::size_t i) { return in[i] + ka_months(inputs().divisors[i] - 50); };
}

auto iso_week()
{
    return [&in = dates()](std::size_t i) { return ka_iso_week(in[i]); };
}

}

std::vector<operation> calendar_operations()
{
    return {
        row<split, parts_shown>("day number to month, day, year", {{1.08}}, 42),
        row<three_questions, parts_shown>("month(), day(), year()", {{1.08}}, 42),
        row<day_number, number_shown>("month, day, year to day number", {{1.0}}, 31),
        row<checked_date, day_shown>("ka_date(month, day, year), checked", {{1.0}}, 56),
        row<weekday, weekday_shown>("weekday()", {{1.0}}, 20),
        row<last_sunday, day_shown>("last Sunday of October", {{1.0}}, 35),
        row<second_sunday, day_shown>("second Sunday of March", {{1.0}}, 35),
        row<any_nth_weekday, day_shown>("n-th weekday, from many places", {{0.7}}),
        row<any_last_weekday, day_shown>("last weekday, from many places", {{0.6}}),
        row<add_months, day_shown>("date + months, clamped", {{1.3}}),
        row_alone<iso_week>("date to ISO year and week"),
    };
}
