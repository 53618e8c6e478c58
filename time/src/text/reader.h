#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

#include <time/inline/codes.h>
#include <time/read_result.h>
#include <time/zone.h>

#include "../throw.h"
#include "language.h"
#include "read_piece.h"

inline constexpr std::size_t code_count = std::size(ka_format_codes);

/// The rows of the table of codes that tell each field, one bit each.
inline constexpr auto rows_of_fields = [] {
    std::array<std::uint64_t, static_cast<std::size_t>(ka_format_field::pieces) + 1> rows = {};
    for (std::size_t row = 0; row < code_count; ++row)
        rows[static_cast<std::size_t>(ka_format_codes[row].field)] |= std::uint64_t{1} << row;
    return rows;
}();

/// What a text does not fit to.
struct misfit {
    ka_error code = ka_failure;
    std::size_t position = 0;
    std::size_t length = 0;
    /// A code, a character in quotes, or words.
    char field[16] = {};

    ka_read_failure in(std::string_view text) const noexcept
    {
        return {static_cast<int>(code), text, position, length, field};
    }
};

/// What one code has told: a number, or of a name a bit for each that it can be.
struct told_value {
    int number;
    std::size_t position;
    std::size_t length;
};

/// Takes a text apart by a format, and keeps what each code tells.
class text_reader {
public:
    /// The zone is that whose names `%Z` reads; without one it reads nothing.
    text_reader(std::string_view text, const ka_language_texts& language, const ka_time_zone* zone) noexcept
        : text_(text), language_(language), zone_(zone)
    {}

    /// Reads from the start of the text on. False where something does not fit, which `problem` tells.
    bool read(std::string_view format);
    bool read(const read_piece* first, const read_piece* last);

    std::size_t end() const noexcept { return at_; }
    const misfit& problem() const noexcept { return problem_; }

    bool tells(ka_format_field field) const noexcept { return (told_ & rows_of(field)) != 0; }
    /// What the first code of a field has told; there must be one.
    const told_value& told(ka_format_field field) const noexcept { return values_[first_row(field)]; }

    /// Whether the name that was told of the zone is a given one.
    bool tells_zone_name(std::string_view name) const noexcept;

    /// A bit for each row of the table of codes that has told something.
    std::uint64_t told_rows() const noexcept { return told_; }
    const told_value& told_by(int row) const noexcept { return values_[row]; }
    int first_row(ka_format_field field) const noexcept { return std::countr_zero(told_ & rows_of(field)); }
    static std::uint64_t rows_of(ka_format_field field) noexcept
    {
        return rows_of_fields[static_cast<std::size_t>(field)];
    }

    /// What a field has told, as a number; a name that several have is the first of them.
    int take(ka_format_field wanted) noexcept
    {
        const int row = first_row(wanted);
        left_ &= ~(std::uint64_t{1} << row);
        const int number = values_[row].number;
        return has_numbers(row) ? number : first_name(number) + (wanted == ka_format_field::month ? 1 : 0);
    }

    /// The rows that have told something that nothing was made of.
    std::uint64_t rows_left() const noexcept { return left_; }

    /// Notes that what a row has told does not hold. Gives false.
    bool refuse(int row) noexcept;
    bool refuse(ka_error code, std::size_t position, std::size_t length, std::string_view field) noexcept;

private:
    /// The names that the rest of the text begins with, of those that are longest.
    struct name_match {
        int bits = 0;
        std::size_t length = 0;
    };

    bool read(const read_piece& next);
    bool read_literal(const read_piece& next) noexcept;
    bool read_blank(const read_piece& next) noexcept;
    bool read_padded(const read_piece& next);
    bool read_number(const read_piece& next) noexcept;
    bool read_digits(const read_piece& next) noexcept;
    bool read_year_with_era(const read_piece& next) noexcept;
    bool read_name(int row) noexcept;
    bool read_zone(int row);
    void consider_names_of_table(name_match& best) const;

    name_match match_month() const noexcept;
    name_match match_weekday() const noexcept;
    name_match match_pair(const std::string& first, const std::string& second, std::string_view english_first,
                          std::string_view english_second) const noexcept;
    void consider(std::string_view name, unsigned int index, bool is_own, name_match& best) const noexcept;

    static bool has_numbers(int row) noexcept
    {
        return is_number(ka_format_codes[row].form) ||
               ka_format_codes[row].field == ka_format_field::year_with_era;
    }
    static int first_name(int bits) noexcept { return std::countr_zero(static_cast<unsigned int>(bits)); }

    bool tell_number(int row, int number, std::size_t position) noexcept;
    bool tell_name(int row, int bits, std::size_t position) noexcept;
    bool refuse_word(int row, std::size_t position) noexcept;
    bool has(std::size_t count) const noexcept { return text_.size() - at_ >= count; }
    char peek() const noexcept { return at_ < text_.size() ? text_[at_] : '\0'; }
    bool is_digit_next() const noexcept { return '0' <= peek() && peek() <= '9'; }
    void skip(char fill, std::size_t most) noexcept;

    std::string_view text_;
    const ka_language_texts& language_;
    const ka_time_zone* zone_;
    std::size_t at_ = 0;
    std::uint64_t told_ = 0;
    std::uint64_t left_ = 0;
    told_value values_[code_count];
    misfit problem_;
};

[[gnu::always_inline]] inline bool text_reader::tell_number(int row, int number,
                                                            std::size_t position) noexcept
{
    const field_row& limits = limits_of_row(row);
    const std::uint64_t bit = std::uint64_t{1} << row;
    told_value& value = values_[row];
    if (number < limits.lowest || limits.highest < number || number == limits.never ||
        ((told_ & bit) != 0 && value.number != number)) [[unlikely]]
        return refuse(limits.code, position, at_ - position, {&ka_format_codes[row].letter, 1});
    told_ |= bit;
    value = {number, position, at_ - position};
    return true;
}
