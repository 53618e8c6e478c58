#include <algorithm>

#include <time/error.h>

#include "exchange_names.h"
#include "exchange_reading.h"
#include "exchange_writing.h"

namespace exchange {

namespace {

constexpr std::string_view long_weekday_names[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                   "Thursday", "Friday", "Saturday"};

auto http_writer(const ka_time_and_date& moment)
{
    const shown_moment shown(moment, 0);
    if (shown.date.astronomical_year < 1 || shown.date.astronomical_year > 9999)
        throw_error(ka_invalid_year, {KA_SOURCE, __LINE__}, shown.date.year);
    return [shown](char* out) {
        out = write_two_places(write_weekday(out, shown.julian_day), shown.date.day);
        return write_text(write_month_year_and_clock(out, shown), " GMT");
    };
}

bool blank(scanner& in) noexcept { return in.literal(' ', "' '"); }

bool read_month(scanner& in, int& month) noexcept
{
    if (!in.name(month_names, 12, false, month, ka_invalid_month, "month"))
        return false;
    ++month;
    return true;
}

/// The day number of a date whose day was told between two places.
bool is_date(scanner& in, std::size_t start, std::size_t end, int day, int month, int year,
             int& julian_day) noexcept
{
    if (year == 0 || day < 1 || day > ka_gregorian::month_length(month, ka_gregorian::is_leap(year)))
        return in.fails(ka_invalid_day, start, end - start, "day");
    julian_day = ka_gregorian::day_number(month, day, year);
    return true;
}

bool read_gmt(scanner& in) noexcept
{
    const std::size_t start = in.at();
    return (in.take_word() == "GMT" && in.at() - start == 3) ||
           in.fails(ka_failure, start, std::max<std::size_t>(in.at() - start, 1), "GMT");
}

bool read_four_digit_year(scanner& in, int& year) noexcept
{
    return in.number(4, 1, 9999, year, ka_invalid_year, "year");
}

/// A year of two digits lies at most 50 years ahead (RFC 9110, 5.6.7).
bool read_two_digit_year(scanner& in, int& year) noexcept
{
    const std::size_t start = in.at();
    if (!in.number(2, year, ka_invalid_year, "year"))
        return false;
    try {
        const int latest = ka_date::today().year() + 50;
        year += (latest - year) / 100 * 100;
        return true;
    } catch (const ka_time_varnel_error&) {
        return in.fails(ka_failure, start, 2, "year");
    }
}

/// Behind "Thu, ": 04 Jul 2024 16:00:00 GMT.
bool read_fixed_date(scanner& in, int& julian_day, told_time& time) noexcept
{
    int day = 0, month = 0, year = 0;
    const std::size_t start = in.at();
    return in.number(2, day, ka_invalid_day, "day") && blank(in) && read_month(in, month) && blank(in) &&
           read_four_digit_year(in, year) && is_date(in, start, start + 2, day, month, year, julian_day) &&
           blank(in) && read_clock(in, true, time) && blank(in) && read_gmt(in);
}

/// Behind "Thursday, ": 04-Jul-24 16:00:00 GMT.
bool read_rfc850_date(scanner& in, int& julian_day, told_time& time) noexcept
{
    int day = 0, month = 0, year = 0;
    const std::size_t start = in.at();
    return in.number(2, day, ka_invalid_day, "day") && in.literal('-', "'-'") && read_month(in, month) &&
           in.literal('-', "'-'") && read_two_digit_year(in, year) &&
           is_date(in, start, start + 2, day, month, year, julian_day) && blank(in) &&
           read_clock(in, true, time) && blank(in) && read_gmt(in);
}

/// Behind "Thu ": Jul  4 16:00:00 2024.
bool read_asctime_date(scanner& in, int& julian_day, told_time& time) noexcept
{
    int day = 0, month = 0, year = 0;
    if (!read_month(in, month) || !blank(in))
        return false;
    const std::size_t start = in.at();
    const int digits = in.takes(' ') ? 1 : 2;
    return in.number(digits, day, ka_invalid_day, "day") && blank(in) && read_clock(in, true, time) &&
           blank(in) && read_four_digit_year(in, year) &&
           is_date(in, start, start + 2, day, month, year, julian_day);
}

/// Whether a word and a comma come that are longer than those of an abbreviation.
bool begins_with_long_name(scanner in) noexcept { return in.take_word().size() > 3 && in.sees(','); }

bool read_http_date(scanner& in, int& julian_day, told_time& time) noexcept
{
    int weekday = 0;
    const bool is_long = begins_with_long_name(in);
    if (!in.name(is_long ? long_weekday_names : weekday_names, 7, false, weekday, ka_invalid_weekday,
                 "weekday"))
        return false;
    const bool has_comma = in.takes(',');
    if (!blank(in))
        return false;
    const bool is_read = !has_comma ? read_asctime_date(in, julian_day, time)
                         : is_long  ? read_rfc850_date(in, julian_day, time)
                                    : read_fixed_date(in, julian_day, time);
    return is_read && in.ends() && is_weekday(in, 0, weekday, julian_day);
}

}

}

using namespace exchange;

std::string ka_http_date(const ka_time_and_date& moment)
{
    return string_of([&](char* first, char* last) { return ka_write_http_date(first, last, moment); });
}

std::to_chars_result ka_write_http_date(char* first, char* last, const ka_time_and_date& moment)
{
    return write_in(first, last, http_writer(moment));
}

ka_read_result<ka_time_and_date> ka_read_http_date(std::string_view text, ka_extent extent) noexcept
{
    scanner in(text, extent);
    int julian_day = 0;
    told_time time;
    if (!read_http_date(in, julian_day, time))
        return in.failure();
    return {moment_of(instant_of(julian_day, time, 0), ka_time_zone::utc()), in.at(), time.is_leap_second};
}
