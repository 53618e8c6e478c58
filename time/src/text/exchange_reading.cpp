#include "exchange_reading.h"

#include <algorithm>

#include <time/inline/gregorian.h>

namespace exchange {

std::string_view scanner::take_word() noexcept
{
    const std::size_t start = at_;
    while (sees_letter())
        ++at_;
    return text_.substr(start, at_ - start);
}

bool scanner::number(int digits, int& value, ka_error code, const char* field) noexcept
{
    const std::size_t start = at_;
    int read = 0;
    for (int place = 0; place < digits; ++place) {
        if (!sees_digit())
            return fails(code, start, static_cast<std::size_t>(digits), field);
        read = 10 * read + take_digit();
    }
    value = read;
    return true;
}

bool scanner::number(int digits, int low, int high, int& value, ka_error code, const char* field) noexcept
{
    const std::size_t start = at_;
    if (!number(digits, value, code, field))
        return false;
    return (low <= value && value <= high) || fails(code, start, static_cast<std::size_t>(digits), field);
}

bool scanner::name(const std::string_view* names, int count, bool in_any_case, int& index, ka_error code,
                   const char* field) noexcept
{
    const std::size_t start = at_;
    const std::string_view word = take_word();
    const auto same = [=](char a, char b) { return a == b || (in_any_case && (a | 0x20) == (b | 0x20)); };
    const std::string_view* const end = names + count;
    const std::string_view* const found = std::find_if(names, end, [&](std::string_view each) {
        return std::equal(word.begin(), word.end(), each.begin(), each.end(), same);
    });
    index = static_cast<int>(found - names);
    return found != end || fails(code, start, std::max<std::size_t>(word.size(), 1), field);
}

bool scanner::fails(ka_error code, std::size_t position, std::size_t length, const char* field) noexcept
{
    code_ = code;
    position_ = position;
    length_ = length;
    field_ = field;
    return false;
}

bool read_year(scanner& in, int& year) noexcept
{
    constexpr int lowest = ka_gregorian::to_astronomical(ka_gregorian::first_year);
    const std::size_t start = in.at();
    const bool is_negative = in.takes('-');
    const bool is_signed = is_negative || in.takes('+');
    if (!in.number(is_signed ? 6 : 4, year, ka_invalid_year, "year"))
        return false;
    // The standard has no year of zero below zero.
    const bool is_known = is_negative ? 0 < year && year <= -lowest : year <= ka_gregorian::last_year;
    year = is_negative ? -year : year;
    return is_known || in.fails(ka_invalid_year, start, in.at() - start, "year");
}

bool is_day(scanner& in, std::size_t position, int day, int month, int year) noexcept
{
    const int length = ka_gregorian::month_length(month, ka_gregorian::is_leap(year));
    return (1 <= day && day <= length) || in.fails(ka_invalid_day, position, in.at() - position, "day");
}

bool read_date(scanner& in, int& julian_day) noexcept
{
    int year = 0, month = 0, day = 0;
    if (!read_year(in, year) || !in.literal('-', "'-'") ||
        !in.number(2, 1, 12, month, ka_invalid_month, "month") || !in.literal('-', "'-'"))
        return false;
    const std::size_t start = in.at();
    if (!in.number(2, day, ka_invalid_day, "day") || !is_day(in, start, day, month, year))
        return false;
    julian_day = ka_gregorian::day_number(month, day, year);
    return true;
}

bool read_fraction(scanner& in, told_time& time) noexcept
{
    if (!in.takes('.'))
        return true;
    if (!in.sees_digit())
        return in.fails(ka_invalid_time, in.at(), 1, "fraction");
    int unit = 100000;
    for (; in.sees_digit(); unit /= 10)
        time.microsecond += in.take_digit() * unit;
    return true;
}

bool read_clock(scanner& in, bool needs_seconds, told_time& time) noexcept
{
    int hour = 0, minute = 0, second = 0;
    if (!in.number(2, 0, 23, hour, ka_invalid_time, "hour") || !in.literal(':', "':'") ||
        !in.number(2, 0, 59, minute, ka_invalid_time, "minute"))
        return false;
    time.has_seconds = needs_seconds || in.sees(':');
    if (time.has_seconds &&
        (!in.literal(':', "':'") || !in.number(2, 0, 60, second, ka_invalid_time, "second")))
        return false;
    time.is_leap_second = second == 60;
    time.second_of_day = (hour * 60 + minute) * 60 + std::min(second, 59);
    return true;
}

bool is_weekday(scanner& in, std::size_t position, int told, int julian_day) noexcept
{
    constexpr std::size_t length = 3;
    return told == ka_gregorian::weekday(julian_day) - 1 ||
           in.fails(ka_invalid_weekday, position, length, "weekday");
}

}
