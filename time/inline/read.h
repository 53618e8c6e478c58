#pragma once

#include <cstdint>
#include <string_view>
#include <type_traits>

#include <time/inline/codes.h>

// What a format has to tell for a value to be read by it. The compiler asks
// this of a literal, and the library of any other format.

class ka_date;
class ka_time;

/// The fields that a format tells, one bit each, by their number.
using ka_told_fields = std::uint32_t;

constexpr ka_told_fields ka_field_bit(ka_format_field field) noexcept
{
    return ka_told_fields{1} << static_cast<unsigned int>(field);
}

/// Whether all fields of a list are told.
template <typename... Fields>
constexpr bool ka_tells(ka_told_fields told, Fields... fields) noexcept
{
    const ka_told_fields wanted = (ka_field_bit(fields) | ...);
    return (told & wanted) == wanted;
}

/// What is missing of a date, or null.
constexpr const char* ka_missing_of_date(ka_told_fields told) noexcept
{
    using field = ka_format_field;
    if (!ka_tells(told, field::year) && !ka_tells(told, field::year_with_era) &&
        !ka_tells(told, field::year_of_era, field::era) && !ka_tells(told, field::year_of_century))
        return "a year";
    if (ka_tells(told, field::day_of_year))
        return nullptr;
    if (ka_tells(told, field::weekday) &&
        (ka_tells(told, field::week_from_sunday) || ka_tells(told, field::week_from_monday)))
        return nullptr;
    if (!ka_tells(told, field::month))
        return "a month";
    return ka_tells(told, field::day) ? nullptr : "a day";
}

/// What is missing of a time of day, or null. What is finer than all that is told is zero.
constexpr const char* ka_missing_of_time(ka_told_fields told) noexcept
{
    using field = ka_format_field;
    if (!ka_tells(told, field::hour)) {
        if (!ka_tells(told, field::hour_of_12))
            return "an hour";
        if (!ka_tells(told, field::half_of_day))
            return "the half of the day";
    }
    if (ka_tells(told, field::microsecond) && !ka_tells(told, field::second))
        return "a second";
    return ka_tells(told, field::second) && !ka_tells(told, field::minute) ? "a minute" : nullptr;
}

/// What is missing of a value of a type: a date, a time of day, or both.
template <typename Value>
constexpr const char* ka_missing(ka_told_fields told) noexcept
{
    if constexpr (std::is_same_v<Value, ka_date>) {
        return ka_missing_of_date(told);
    } else if constexpr (std::is_same_v<Value, ka_time>) {
        return ka_missing_of_time(told);
    } else {
        const char* const missing = ka_missing_of_date(told);
        return missing != nullptr ? missing : ka_missing_of_time(told);
    }
}

/// Whether a format can be judged without the user's layouts, which the library finds at start.
constexpr bool ka_has_user_layout(std::string_view format) noexcept
{
    for (ka_format_pieces pieces(format); !pieces.is_at_end();) {
        const ka_format_piece piece = pieces.next();
        if (piece.is_code && (piece.letter == 'c' || piece.letter == 'x' || piece.letter == 'X'))
            return true;
    }
    return false;
}

/// The fields that a format without such layouts tells.
constexpr ka_told_fields ka_fields_of(std::string_view format) noexcept
{
    ka_told_fields told = 0;
    for (ka_format_pieces pieces(format); !pieces.is_at_end();) {
        const ka_format_piece piece = pieces.next();
        const int row = piece.is_code ? ka_format_row_of(piece.letter) : -1;
        if (row < 0)
            continue;
        const ka_format_code& code = ka_format_codes[row];
        told |= code.field == ka_format_field::pieces ? ka_fields_of(code.format) : ka_field_bit(code.field);
    }
    return told;
}

/// The place of the first code that a pattern can't have: a letter that prints
/// itself, or a "%" at the end; or `npos`.
constexpr std::string_view::size_type ka_misplaced_code(std::string_view format) noexcept
{
    for (ka_format_pieces pieces(format); !pieces.is_at_end();) {
        const std::string_view::size_type place = format.size() - pieces.rest().size();
        const ka_format_piece piece = pieces.next();
        const bool is_letter =
            ('a' <= piece.letter && piece.letter <= 'z') || ('A' <= piece.letter && piece.letter <= 'Z');
        if (piece.is_cut_off || (piece.is_code && is_letter && ka_format_row_of(piece.letter) < 0))
            return place;
    }
    return format.npos;
}

/// Whether a row is that of a number of no fixed width, whatever stands behind.
constexpr bool ka_is_of_any_width(int row) noexcept
{
    if (row < 0)
        return false;
    const ka_format_field field = ka_format_codes[row].field;
    return field == ka_format_field::year || field == ka_format_field::year_of_era ||
           field == ka_format_field::year_with_era || field == ka_format_field::century;
}

/// Whether a row is that of a code which stands for pieces, the user's layouts among them.
constexpr bool ka_stands_for_pieces(int row) noexcept
{
    return row >= 0 && ka_format_codes[row].form == ka_format_form::format &&
           ka_format_codes[row].field != ka_format_field::year_with_era;
}

/// The same, and the codes that can't be read: those of several fields, padded
/// with zeros or to the left, and one of two numbers of any width side by side.
constexpr std::string_view::size_type ka_unreadable_code(std::string_view format) noexcept
{
    int before = -1;
    for (ka_format_pieces pieces(format); !pieces.is_at_end();) {
        const std::string_view::size_type place = format.size() - pieces.rest().size();
        const ka_format_piece piece = pieces.next();
        const int row = piece.is_code ? ka_format_row_of(piece.letter) : -1;
        if (ka_is_of_any_width(before) && ka_is_of_any_width(row))
            return place;
        if (ka_stands_for_pieces(row) && (piece.is_left || piece.fill == '0'))
            return place;
        before = row;
    }
    return ka_misplaced_code(format);
}
