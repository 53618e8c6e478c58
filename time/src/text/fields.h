#pragma once

#include <array>
#include <cstddef>
#include <iterator>
#include <limits>

#include <time/inline/codes.h>

#include "../throw.h"

/// The numbers that a field can have, and the code of the error where it has another.
struct field_row {
    int lowest;
    int highest;
    ka_error code;
    /// A number between them that it can't have.
    int never = std::numeric_limits<int>::min();
};

constexpr field_row limits_of(ka_format_field told)
{
    using field = ka_format_field;
    switch (told) {
        case field::hour:
            return {0, 23, ka_invalid_time};
        case field::minute:
            return {0, 59, ka_invalid_time};
        case field::second:
            // A leap second, which is taken as the one before it.
            return {0, 60, ka_invalid_time};
        case field::microsecond:
            return {0, 999999, ka_invalid_time};
        case field::hour_of_12:
            return {1, 12, ka_invalid_time};
        case field::half_of_day:
            return {0, 3, ka_invalid_time};
        case field::month:
            return {1, 12, ka_invalid_month};
        case field::day:
            return {1, 31, ka_invalid_day};
        case field::day_of_year:
            return {1, 366, ka_invalid_day};
        case field::weekday:
            return {0, 6, ka_invalid_weekday};
        case field::week_from_sunday:
        case field::week_from_monday:
            return {0, 53, ka_invalid_week};
        case field::year:
        case field::year_with_era:
            return {-4713, 32766, ka_invalid_year, 0};
        case field::year_of_era:
            return {1, 32766, ka_invalid_year};
        case field::century:
            return {-47, 327, ka_invalid_year};
        case field::year_of_century:
            return {-99, 99, ka_invalid_year};
        case field::era:
            return {0, 3, ka_invalid_year};
        default:
            return {0, 3, ka_failure};
    }
}

/// By the row of a code.
inline constexpr auto limits_of_rows = [] {
    std::array<field_row, std::size(ka_format_codes)> rows = {};
    for (std::size_t code = 0; code < rows.size(); ++code)
        rows[code] = limits_of(ka_format_codes[code].field);
    return rows;
}();

inline const field_row& limits_of_row(int row) { return limits_of_rows[static_cast<std::size_t>(row)]; }

/// How many digits a number has, and whether a sign can stand in front.
struct digits_row {
    unsigned char least;
    unsigned char most;
    bool has_sign;
};

/// With another number right behind, a number has as many digits as it prints in these years.
constexpr digits_row digits_of(const ka_format_code& code, bool is_number_next)
{
    const auto row = [is_number_next](unsigned char fixed, unsigned char most, bool has_sign) {
        return is_number_next ? digits_row{fixed, fixed, has_sign} : digits_row{1, most, has_sign};
    };
    switch (code.field) {
        case ka_format_field::year:
            return row(4, 5, true);
        case ka_format_field::year_of_era:
        case ka_format_field::year_with_era:
            return row(4, 5, false);
        case ka_format_field::century:
            return row(2, 3, true);
        case ka_format_field::year_of_century:
            return row(2, 2, true);
        case ka_format_field::microsecond:
            return row(6, 6, false);
        case ka_format_field::day_of_year:
            return row(3, 3, false);
        default:
            return code.form == ka_format_form::plain ? row(1, 1, false) : row(2, 2, false);
    }
}
