#include "exchange_reading.h"
#include "exchange_writing.h"

#include <time/months.h>

namespace exchange {

namespace {

/// A date that was stepped out of the range is refused.
int checked_day(const ka_date& date) { return ka_date(date.julian_day()).julian_day(); }

auto iso_date_writer(const ka_date& date)
{
    return [parts = ka_gregorian::split(checked_day(date))](char* out) { return write_date(out, parts); };
}

auto iso_week_date_writer(const ka_date& date)
{
    return [week = ka_iso_week(checked_day(date))](char* out) {
        out = write_text(write_year(out, ka_gregorian::to_astronomical(week.year())), "-W");
        out = write_character(write_two_places(out, week.week()), '-');
        return write_character(out, static_cast<char>('0' + week.weekday()));
    };
}

auto iso_ordinal_date_writer(const ka_date& date)
{
    const int day = checked_day(date);
    const int year = ka_gregorian::split(day).astronomical_year;
    const auto of_year = static_cast<unsigned int>(day - ka_gregorian::day_number(1, 1, year) + 1);
    return [year, of_year](char* out) {
        out = write_character(write_year(out, year), '-');
        out = write_character(out, static_cast<char>('0' + of_year / 100));
        return write_two_places(out, of_year % 100);
    };
}

auto iso_time_writer(const ka_time& time, ka_fraction fraction)
{
    const auto second = static_cast<unsigned int>(ka_access::second_of_day(time));
    return [second, fraction, microsecond = time.microseconds()](char* out) {
        return write_fraction(write_clock(out, second), microsecond, fraction);
    };
}

// No year that `read_year` lets pass is refused.
// NOLINTNEXTLINE(bugprone-exception-escape)
bool read_week_date(scanner& in, int& julian_day) noexcept
{
    int year = 0, week = 0, weekday = 0;
    const std::size_t start = in.at();
    if (!read_year(in, year) || !in.literal('-', "'-'") || !in.literal('W', "'W'"))
        return false;
    const int weeks = ka_iso_week::weeks_of_year(ka_gregorian::from_astronomical(year));
    if (!in.number(2, 1, weeks, week, ka_invalid_week, "week") || !in.literal('-', "'-'") ||
        !in.number(1, 1, 7, weekday, ka_invalid_weekday, "weekday"))
        return false;
    // Week 1 has 4 January in it, and day number 0 is a Monday.
    const int fourth = ka_gregorian::day_number(1, 4, year);
    julian_day = fourth - fourth % 7 + 7 * (week - 1) + weekday - 1;
    return ka_gregorian::is_day_number(julian_day) ||
           in.fails(ka_invalid_day, start, in.at() - start, "date");
}

bool read_ordinal_date(scanner& in, int& julian_day) noexcept
{
    int year = 0, day = 0;
    if (!read_year(in, year) || !in.literal('-', "'-'") ||
        !in.number(3, 1, ka_gregorian::is_leap(year) ? 366 : 365, day, ka_invalid_day, "day"))
        return false;
    julian_day = ka_gregorian::day_number(1, 1, year) + day - 1;
    return true;
}

template <typename Read>
ka_read_result<ka_date> date_of(std::string_view text, ka_extent extent, Read read) noexcept
{
    scanner in(text, extent);
    int julian_day = 0;
    if (!read(in, julian_day) || !in.ends())
        return in.failure();
    return {ka_access::date(julian_day), in.at()};
}

}

}

using namespace exchange;

std::string ka_iso_date(const ka_date& date)
{
    return string_of([&](char* first, char* last) { return ka_write_iso_date(first, last, date); });
}

std::to_chars_result ka_write_iso_date(char* first, char* last, const ka_date& date)
{
    return write_in(first, last, iso_date_writer(date));
}

ka_read_result<ka_date> ka_read_iso_date(std::string_view text, ka_extent extent) noexcept
{
    return date_of(text, extent, read_date);
}

std::string ka_iso_week_date(const ka_date& date)
{
    return string_of([&](char* first, char* last) { return ka_write_iso_week_date(first, last, date); });
}

std::to_chars_result ka_write_iso_week_date(char* first, char* last, const ka_date& date)
{
    return write_in(first, last, iso_week_date_writer(date));
}

ka_read_result<ka_date> ka_read_iso_week_date(std::string_view text, ka_extent extent) noexcept
{
    return date_of(text, extent, read_week_date);
}

std::string ka_iso_ordinal_date(const ka_date& date)
{
    return string_of([&](char* first, char* last) { return ka_write_iso_ordinal_date(first, last, date); });
}

std::to_chars_result ka_write_iso_ordinal_date(char* first, char* last, const ka_date& date)
{
    return write_in(first, last, iso_ordinal_date_writer(date));
}

ka_read_result<ka_date> ka_read_iso_ordinal_date(std::string_view text, ka_extent extent) noexcept
{
    return date_of(text, extent, read_ordinal_date);
}

std::string ka_iso_time(const ka_time& time, ka_fraction fraction)
{
    return string_of([&](char* first, char* last) { return ka_write_iso_time(first, last, time, fraction); });
}

std::to_chars_result ka_write_iso_time(char* first, char* last, const ka_time& time, ka_fraction fraction)
{
    return write_in(first, last, iso_time_writer(time, fraction));
}

ka_read_result<ka_time> ka_read_iso_time(std::string_view text, ka_extent extent) noexcept
{
    scanner in(text, extent);
    told_time time;
    if (!read_clock(in, false, time) || (time.has_seconds && !read_fraction(in, time)) || !in.ends())
        return in.failure();
    return {ka_access::time(time.second_of_day, time.microsecond), in.at(), time.is_leap_second};
}
