#pragma once

#include <cstddef>

#include <time/inline/codes.h>

#include "../throw.h"

/// The numbers that a field can have, and the code of the error where it has another.
struct field_row {
    int lowest;
    int highest;
    ka_error code;
};

constexpr field_row row_of_field(ka_format_field told)
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
            return {-4713, 32766, ka_invalid_year};
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

/// How many digits a number has, and whether a sign can stand in front.
struct digits_row {
    std::size_t least;
    std::size_t most;
    bool has_sign;
};

/// With another number right behind, a number has as many digits as it prints in these years.
constexpr digits_row digits_of(const ka_format_code& code, bool is_number_next)
{
    const std::size_t year = is_number_next ? 4 : 5;
    if (code.field == ka_format_field::year_with_era)
        return {std::size_t{is_number_next ? 4u : 1u}, year, false};
    if (code.field == ka_format_field::year_of_century)
        return {std::size_t{is_number_next ? 2u : 1u}, 2, true};
    switch (code.form) {
        case ka_format_form::three_digits:
            return {std::size_t{is_number_next ? 3u : 1u}, 3, false};
        case ka_format_form::six_digits:
            return {std::size_t{is_number_next ? 6u : 1u}, 6, false};
        case ka_format_form::plain:
            if (code.field == ka_format_field::weekday)
                return {1, 1, false};
            if (code.field == ka_format_field::century)
                return {std::size_t{is_number_next ? 2u : 1u}, std::size_t{is_number_next ? 2u : 3u}, true};
            return {std::size_t{is_number_next ? 4u : 1u}, year, code.field == ka_format_field::year};
        default:
            return {std::size_t{is_number_next ? 2u : 1u}, 2, false};
    }
}
