#include "reader.h"

#include <algorithm>
#include <array>
#include <bit>

#include "fields.h"

namespace {

using field = ka_format_field;
using form = ka_format_form;

constexpr bool is_space(char letter) { return letter == ' ' || ('\t' <= letter && letter <= '\r'); }

constexpr bool is_digit(char letter) { return '0' <= letter && letter <= '9'; }

/// A letter of ASCII, or a byte of any other letter.
constexpr bool is_letter(char letter)
{
    return ('a' <= (letter | 0x20) && (letter | 0x20) <= 'z') || static_cast<unsigned char>(letter) >= 0x80;
}

constexpr int scaled(int number, std::size_t digits)
{
    for (; digits < 6; ++digits)
        number *= 10;
    return number;
}

}

std::uint64_t text_reader::rows_of(ka_format_field wanted) noexcept
{
    static constexpr auto rows = [] {
        std::array<std::uint64_t, static_cast<std::size_t>(field::pieces) + 1> found = {};
        for (std::size_t row = 0; row < code_count; ++row)
            found[static_cast<std::size_t>(ka_format_codes[row].field)] |= std::uint64_t{1} << row;
        return found;
    }();
    return rows[static_cast<std::size_t>(wanted)];
}

int text_reader::first_row(ka_format_field wanted) const noexcept
{
    return std::countr_zero(told_ & rows_of(wanted));
}

bool text_reader::read(std::string_view format)
{
    for (piece_stream pieces(format, language_); !pieces.is_at_end();) {
        const coded_piece next = pieces.next();
        if (next.is_code() ? !read_code(next, pieces.is_number_next()) : !read_literal(next))
            return false;
    }
    return true;
}

bool text_reader::read_literal(const coded_piece& next) noexcept
{
    const char letter = next.piece.letter;
    if (next.piece.is_padded)
        skip(next.piece.fill, text_.size());
    if (is_space(letter)) {
        const std::size_t start = at_;
        while (at_ < text_.size() && is_space(text_[at_]))
            ++at_;
        if (at_ > start || (at_ > 0 && is_space(text_[at_ - 1])))
            return true;
    } else if (at_ < text_.size() && text_[at_] == letter) {
        ++at_;
        return true;
    }
    const char quoted[] = {'"', letter, '"'};
    return refuse(ka_failure, at_, 1, {quoted, sizeof quoted});
}

bool text_reader::read_code(const coded_piece& next, bool is_number_next) noexcept
{
    const std::size_t start = at_;
    const ka_format_piece& piece = next.piece;
    const std::size_t width =
        static_cast<std::size_t>(std::min<unsigned long long>(piece.width, text_.size()));
    if (stands_for_pieces(next.code())) {
        skip(' ', width);
        return true;
    }
    bool is_read = false;
    if (is_number(next.code().form)) {
        is_read = read_number(next.row, piece.is_left ? 0 : width, piece.fill, is_number_next);
    } else {
        if (!piece.is_left)
            skip(piece.fill, width);
        is_read = next.code().field == field::year_with_era ? read_year_with_era(next.row, is_number_next)
                  : next.code().field == field::zone        ? read_zone(next.row)
                                                            : read_name(next.row);
    }
    if (is_read && piece.is_left && at_ - start < width)
        skip(' ', width - (at_ - start));
    return is_read;
}

void text_reader::skip(char fill, std::size_t most) noexcept
{
    for (; most > 0 && at_ < text_.size() && text_[at_] == fill; --most)
        ++at_;
}

bool text_reader::read_number(int row, std::size_t width, char fill, bool is_number_next) noexcept
{
    const ka_format_code& code = ka_format_codes[row];
    digits_row digits = digits_of(code, is_number_next);
    const std::size_t filled = at_;
    if (width > 0 && (digits.has_sign || fill == ' '))
        skip(fill, width - 1);
    else if (width > digits.most)
        skip(fill, width - digits.most);
    // The last zero of nothing but zeros is the number.
    if (fill == '0' && at_ > filled && !is_digit_next() && peek() != '-' && peek() != ' ')
        --at_;
    const std::size_t start = at_;
    if (code.form == form::two_places && peek() == ' ') {
        ++at_;
        digits = {1, 1, false};
    }
    const bool is_negative = digits.has_sign && peek() == '-';
    if (is_negative || (digits.has_sign && peek() == '+'))
        ++at_;
    const std::size_t first = at_;
    int number = 0;
    for (; at_ - first < digits.most && is_digit_next(); ++at_)
        number = number * 10 + (text_[at_] - '0');
    if (at_ - first < digits.least)
        return refuse_word(row, start);
    if (code.form == form::six_digits)
        number = scaled(number, at_ - first);
    return tell(row, is_negative ? -number : number, start);
}

bool text_reader::tell(int row, int number, std::size_t position) noexcept
{
    const ka_format_code& code = ka_format_codes[row];
    const field_row limits = row_of_field(code.field);
    const bool is_year = code.field == field::year || code.field == field::year_with_era;
    const bool is_bits = code.form == form::name || code.form == form::abbreviation;
    const std::uint64_t bit = std::uint64_t{1} << row;
    told_value& value = values_[row];
    const bool is_told_otherwise =
        (told_ & bit) != 0 && (is_bits ? (value.number & number) == 0 : value.number != number);
    if (is_told_otherwise || (!is_bits && (number < limits.lowest || limits.highest < number)) ||
        (is_year && number == 0))
        return refuse(limits.code, position, at_ - position, {&code.letter, 1});
    told_ |= bit;
    value = {number, position, at_ - position};
    return true;
}

bool text_reader::refuse(ka_error code, std::size_t position, std::size_t length,
                         std::string_view what) noexcept
{
    problem_ = {code, position, length, {}};
    char* at = problem_.field;
    if (what.size() == 1)
        *at++ = '%';
    std::copy_n(what.data(), std::min(what.size(), sizeof problem_.field - 2), at);
    return false;
}

bool text_reader::refuse(int row) noexcept
{
    const ka_format_code& code = ka_format_codes[row];
    return refuse(row_of_field(code.field).code, values_[row].position, values_[row].length,
                  {&code.letter, 1});
}

/// Shows the word that stands at a position, or the one character.
bool text_reader::refuse_word(int row, std::size_t position) noexcept
{
    constexpr std::size_t longest_word = 40;
    const ka_format_code& code = ka_format_codes[row];
    std::size_t end = position;
    while (end < text_.size() && end - position < longest_word &&
           (is_letter(text_[end]) || is_digit(text_[end])))
        ++end;
    return refuse(row_of_field(code.field).code, position, std::max<std::size_t>(end - position, 1),
                  {&code.letter, 1});
}
