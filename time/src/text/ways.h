#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include <time/inline/codes.h>

#include "digits.h"
#include "print.h"

// How the code of each letter is printed: the commonest numbers without a call.

/// The first five are the numbers of two digits, by their `ka_format_field`. The
/// last one is of no code, but of all letters up to the next.
enum class way : unsigned char { two_digits, year = 5, microsecond, number, text, letter_itself, letters };

constexpr bool is_number(ka_format_form form) { return form < ka_format_form::name; }

constexpr way way_of(const ka_format_code& code)
{
    if (code.form == ka_format_form::two_digits && code.field <= ka_format_field::day)
        return static_cast<way>(code.field);
    if (code.field == ka_format_field::year)
        return way::year;
    if (code.field == ka_format_field::microsecond)
        return way::microsecond;
    return is_number(code.form) ? way::number : way::text;
}

template <typename Value>
using by_letter = std::array<Value, 256>;

inline constexpr by_letter<way> ways = [] {
    by_letter<way> rows = {};
    rows.fill(way::letter_itself);
    for (const ka_format_code& code : ka_format_codes)
        rows[static_cast<unsigned char>(code.letter)] = way_of(code);
    return rows;
}();

/// Prints a code. Where that is a number, there must be room for it.
using code_printer = char* (*)(char* at, sink& out, const printed_value& value);

/// Of the letters whose way is a number or a text.
extern const by_letter<code_printer> code_printers;

/// The most characters that a number takes, a sign among them.
inline constexpr std::size_t number_room = 16;

/// How many times as long as in the format, where a code has two characters at
/// least, the numbers can be that are printed without a call.
inline constexpr std::size_t longest_for_letter = 3;

constexpr std::size_t longest_text(way printed)
{
    static_assert(sizeof printed_value::year == 2);
    switch (printed) {
        case way::year:
            return sizeof "-32768" - 1;
        case way::microsecond:
            return sizeof "999999" - 1;
        default:
            return 2;
    }
}
static_assert(std::all_of(ways.begin(), ways.end(), [](way printed) {
    return printed >= way::number || longest_text(printed) <= 2 * longest_for_letter;
}));

/// Room for all of a format that is letters and such numbers, and for one number of any kind.
constexpr std::size_t promised_room(std::size_t size)
{
    if constexpr (sizeof(std::size_t) < sizeof(unsigned long long))
        if (size > (static_cast<std::size_t>(-1) - number_room) / longest_for_letter)
            return static_cast<std::size_t>(-1);
    return longest_for_letter * size + number_room;
}

/// Years whose numbers take four characters at most, a sign among them.
constexpr bool is_common_year(int year) { return -1000 < year && year < 10000; }

/// The most characters that a number takes in such years.
constexpr std::size_t longest_common_text(way printed)
{
    constexpr std::size_t longest_year = sizeof "-999" - 1;
    return printed == way::year || printed == way::number ? longest_year : longest_text(printed);
}

/// A number with a sign in front, which its width does not count.
char* write_signed(char* at, int number, int width);

/// A number with as many digits as it has, and most have four.
inline char* write_plain(char* at, int number)
{
    if (number < 1000 || number > 9999) [[unlikely]]
        return write_signed(at, number, 0);
    const auto digits = static_cast<unsigned int>(number);
    return write_two_places(write_two_places(at, digits / 100), digits % 100);
}

/// A number of a way before `number`.
inline char* write_common(char* at, way printed, const printed_value& value)
{
    if (printed < way::year)
        return write_two_places(at, value.two_places[static_cast<int>(printed)]);
    return printed == way::year ? write_plain(at, value.year) : write_six_places(at, value.microsecond);
}
