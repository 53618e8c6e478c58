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

std::string parts_shown(const parts& shown) { return calendar_text(shown.year, shown.month, shown.day); }
std::string day_shown(sys_days day) { return std::to_string(day.time_since_epoch().count()); }

year_month_day date_of(const parts& value) { return {year(value.year), month(value.month), day(value.day)}; }

auto split()
{
    return [&in = dates()](std::size_t i) { return parts_of(in[i]); };
}

auto day_number()
{
    return [&in = all_parts()](std::size_t i) { return sys_days(date_of(in[i])); };
}

auto checked_date()
{
    return [&in = all_parts()](std::size_t i) {
        const year_month_day date = date_of(in[i]);
        if (!date.ok())
            throw std::invalid_argument("date");
        return sys_days(date);
    };
}

auto week_day()
{
    return [&in = dates()](std::size_t i) { return weekday(in[i]).c_encoding(); };
}

auto last_sunday()
{
    return [&in = all_parts()](std::size_t i) { return sys_days(year(in[i].year) / October / Sunday[last]); };
}

auto second_sunday()
{
    return [&in = all_parts()](std::size_t i) { return sys_days(year(in[i].year) / March / Sunday[2]); };
}

auto add_months()
{
    return [&in = dates()](std::size_t i) {
        const year_month_day moved = year_month_day(in[i]) + months(inputs().divisors[i] - 50);
        return sys_days(moved.ok() ? moved : moved.year() / moved.month() / last);
    };
}

[[gnu::noinline]] sys_days nth_weekday(unsigned int which, weekday day, month in, year of)
{
    return year_month_weekday(of, in, day[which]);
}

[[gnu::noinline]] sys_days last_weekday(weekday day, month in, year of)
{
    return year_month_weekday_last(of, in, day[last]);
}

auto any_nth_weekday()
{
    return [&in = all_parts()](std::size_t i) {
        return nth_weekday(1 + in[i].day % 4, weekday(in[i].day % 7), month(in[i].month), year(in[i].year));
    };
}

auto any_last_weekday()
{
    return [&in = all_parts()](std::size_t i) {
        return last_weekday(weekday(in[i].day % 7), month(in[i].month), year(in[i].year));
    };
}

const peers rows = {
    beside<split, parts_shown>("day number to month, day, year", "std::chrono"),
    beside<split, parts_shown>("month(), day(), year()", "std::chrono"),
    beside<day_number, day_shown>("month, day, year to day number", "std::chrono"),
    beside<checked_date, day_shown>("ka_date(month, day, year), checked", "std::chrono"),
    beside<week_day>("weekday()", "std::chrono"),
    beside<last_sunday, day_shown>("last Sunday of October", "std::chrono"),
    beside<second_sunday, day_shown>("second Sunday of March", "std::chrono"),
    beside<any_nth_weekday, day_shown>("n-th weekday, from many places", "std::chrono"),
    beside<any_last_weekday, day_shown>("last weekday, from many places", "std::chrono"),
    beside<add_months, day_shown>("date + months, clamped", "std::chrono"),
};

}
