#pragma once

#include <charconv>
#include <cstddef>
#include <cstring>
#include <string>
#include <system_error>

#include <time/exchange.h>
#include <time/inline/gregorian.h>

#include "../access.h"
#include "digits.h"
#include "exchange_names.h"

// What the texts of all standards are written with. A writer puts characters at
// a place where there is room for its longest text, and gives the end.

namespace exchange {

/// Longer than any text that is written here.
inline constexpr std::size_t room = 64;

/// As `std::to_chars`: in the caller's room where that is long enough for any
/// text, and else by way of another.
template <typename Write>
std::to_chars_result write_in(char* first, char* last, Write write)
{
    char text[room];
    const auto given = static_cast<std::size_t>(last - first);
    const bool is_enough = given >= room;
    char* const begin = is_enough ? first : text;
    char* const end = write(begin);
    if (is_enough)
        return {end, std::errc()};
    const auto size = static_cast<std::size_t>(end - begin);
    if (given < size)
        return {last, std::errc::value_too_large};
    std::memcpy(first, text, size);
    return {first + size, std::errc()};
}

/// What a writer of the kind above gives, as a string.
template <typename Write>
std::string string_of(Write write)
{
    char text[room];
    return std::string(text, static_cast<std::size_t>(write(text, text + room).ptr - text));
}

inline char* write_character(char* out, char character) noexcept
{
    *out = character;
    return out + 1;
}

inline char* write_text(char* out, std::string_view text) noexcept
{
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

inline char* write_number(char* out, unsigned long long number) noexcept
{
    char digits[most_digits];
    char* const end = digits + sizeof digits;
    const char* const begin = write_before(end, number);
    return write_text(out, {begin, static_cast<std::size_t>(end - begin)});
}

/// Counted through 0.
inline char* write_year(char* out, int year) noexcept
{
    if (year < 0 || year > 9999) [[unlikely]] {
        out = write_character(out, year < 0 ? '-' : '+');
        return write_six_places(out, static_cast<unsigned int>(year < 0 ? -year : year));
    }
    const auto number = static_cast<unsigned int>(year);
    return write_two_places(write_two_places(out, number / 100), number % 100);
}

inline char* write_date(char* out, const ka_gregorian::date_parts& date) noexcept
{
    out = write_year(out, date.astronomical_year);
    *out = '-';
    out = write_two_places(out + 1, date.month);
    *out = '-';
    return write_two_places(out + 1, date.day);
}

inline char* write_clock(char* out, unsigned int second_of_day) noexcept
{
    const unsigned int minute_of_day = second_of_day / 60;
    out = write_two_places(out, minute_of_day / 60);
    *out = ':';
    out = write_two_places(out + 1, minute_of_day % 60);
    *out = ':';
    return write_two_places(out + 1, second_of_day % 60);
}

inline char* write_fraction(char* out, unsigned int microsecond, ka_fraction fraction) noexcept
{
    if (fraction == ka_fraction::none || (fraction == ka_fraction::as_needed && microsecond == 0))
        return out;
    *out = '.';
    char* const end = write_six_places(out + 1, microsecond);
    const bool is_short = fraction == ka_fraction::milliseconds ||
                          (fraction == ka_fraction::as_needed && microsecond % 1000 == 0);
    return is_short ? end - 3 : end;
}

/// A moment as the clock of its offset shows it.
struct shown_moment {
    ka_gregorian::date_parts date;
    int julian_day;
    unsigned int second_of_day;
    unsigned int microsecond;
    /// Seconds ahead of universal time, in whole minutes.
    int ahead;
    /// Whether it is shown in universal time for want of another offset.
    bool is_universal = false;

    /// By the offset of its zone.
    explicit shown_moment(const ka_time_and_date& moment);
    /// By a clock so many seconds ahead. Out of the range is `invalid_day`.
    shown_moment(const ka_time_and_date& moment, int seconds_ahead);
};

/// "Thu, ", with which mail and HTTP begin.
inline char* write_weekday(char* out, int julian_day) noexcept
{
    out = write_text(out, weekday_names[ka_gregorian::modulo_7(static_cast<unsigned int>(julian_day) + 1)]);
    return write_text(out, ", ");
}

/// " Jul 2024 18:00:00", with which they go on.
inline char* write_month_year_and_clock(char* out, const shown_moment& shown) noexcept
{
    *out = ' ';
    out = write_text(out + 1, month_names[shown.date.month - 1]);
    *out = ' ';
    const int year = shown.date.astronomical_year;
    out = year > 9999 ? write_number(out + 1, static_cast<unsigned int>(year)) : write_year(out + 1, year);
    *out = ' ';
    return write_clock(out + 1, shown.second_of_day);
}

}
