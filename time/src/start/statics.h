#pragma once

#include <ctime>
#include <span>
#include <string>

#include "../access.h"

/// The shared statics, one row each: a start walks down the rows, a stop walks
/// down them again.
struct ka_access::statics : ka_time_and_date {
    /// Names that the user's language gives: as `strftime` prints them for one
    /// value of a field after the other.
    struct name_row {
        std::string** names;
        int count;
        const char* conversion;
        int std::tm::*field;
        int first_value;
    };
    static std::span<const name_row> name_rows() noexcept;

    /// Texts that are the same in each language.
    struct text_row {
        std::string** text;
        const char* value;
    };
    static std::span<const text_row> text_rows() noexcept;

    /// Layouts, each read back from what `strftime` prints for a conversion.
    struct layout_row {
        std::string** layout;
        const char* conversion;
    };
    static std::span<const layout_row> layout_rows() noexcept;

    struct time_row {
        ka_time** time;
        ka_time value;
    };
    static std::span<const time_row> time_rows() noexcept;

    struct date_row {
        ka_date** date;
        ka_date value;
    };
    static std::span<const date_row> date_rows() noexcept;

    static void make_names(const name_row& row);
    static void make_layouts();
    static void choose_default_zone();
    /// Releases the zone that the choice made, if it made one.
    static void release_made_zone() noexcept;
};
