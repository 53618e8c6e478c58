#include "reader.h"

#include <algorithm>

#include "fields.h"

namespace {

using field = ka_format_field;
using form = ka_format_form;

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

[[gnu::always_inline]] inline bool text_reader::read_literal(const read_piece& next) noexcept
{
    if (at_ < text_.size() && text_[at_] == next.letter) [[likely]] {
        ++at_;
        return true;
    }
    const char quoted[] = {'"', next.letter, '"'};
    return refuse(ka_failure, at_, 1, {quoted, sizeof quoted});
}

/// Nearly all numbers are read by their first two digits, or by four of a year.
[[gnu::always_inline]] inline bool text_reader::read_number(const read_piece& next) noexcept
{
    const char* const text = text_.data() + at_;
    const std::size_t rest = text_.size() - at_;
    if (next.digits.most == 2 && rest >= 2 && is_digit(text[0]) && is_digit(text[1])) [[likely]] {
        at_ += 2;
        return tell_number(next.row, 10 * (text[0] - '0') + (text[1] - '0'), at_ - 2);
    }
    return read_digits(next);
}

[[gnu::always_inline]] inline bool text_reader::read(const read_piece& next)
{
    if (next.width != 0) [[unlikely]]
        return read_padded(next);
    switch (next.reads) {
        case read_piece::literal:
            return read_literal(next);
        case read_piece::number:
            return read_number(next);
        case read_piece::blank:
            return read_blank(next);
        case read_piece::year_with_era:
            return read_year_with_era(next);
        case read_piece::name:
            return read_name(next.row);
        case read_piece::zone:
            return read_zone(next.row);
        default:
            return true;
    }
}

bool text_reader::read(std::string_view format)
{
    for (piece_stream pieces(format, language_); !pieces.is_at_end();) {
        const coded_piece next = pieces.next();
        if (!read(read_piece_of(next, next.is_code() && pieces.is_number_next())))
            return false;
    }
    left_ = told_;
    return true;
}

bool text_reader::read(const read_piece* first, const read_piece* last)
{
    for (; first != last; ++first)
        if (!read(*first))
            return false;
    left_ = told_;
    return true;
}

/// White space in a format is as much of it as there is in the text, and none
/// where what stood before has ended in some.
bool text_reader::read_blank(const read_piece& next) noexcept
{
    const std::size_t start = at_;
    while (at_ < text_.size() && is_blank(text_[at_]))
        ++at_;
    return at_ > start || (at_ > 0 && is_blank(text_[at_ - 1])) || read_literal(next);
}

void text_reader::skip(char fill, std::size_t most) noexcept
{
    for (; most > 0 && at_ < text_.size() && text_[at_] == fill; --most)
        ++at_;
}

/// What fills the width in front of a number leaves the digits that it prints.
bool text_reader::read_padded(const read_piece& padded)
{
    const std::size_t start = at_;
    const auto width = static_cast<std::size_t>(std::min<unsigned long long>(padded.width, text_.size()));
    read_piece next = padded;
    next.width = 0;
    if (next.reads == read_piece::number && !next.is_left) {
        if (width > 0 && (next.digits.has_sign || next.fill == ' '))
            skip(next.fill, width - 1);
        else if (width > next.digits.most)
            skip(next.fill, width - next.digits.most);
        // The last zero of nothing but zeros is the number.
        if (next.fill == '0' && at_ > start && !is_digit_next() && peek() != '-' && peek() != ' ')
            --at_;
    } else if (!next.is_left) {
        skip(next.fill, width);
    }
    if (!read(next))
        return false;
    if (next.is_left && at_ - start < width)
        skip(' ', width - (at_ - start));
    return true;
}

bool text_reader::read_digits(const read_piece& next) noexcept
{
    const std::size_t start = at_;
    digits_row digits = next.digits;
    if (peek() == ' ' && ka_format_codes[next.row].form == form::two_places) {
        ++at_;
        digits = {1, 1, false};
    }
    const bool has_sign = digits.has_sign && (peek() == '-' || peek() == '+');
    const bool is_negative = has_sign && peek() == '-';
    if (has_sign)
        ++at_;
    const std::size_t first = at_;
    const std::size_t end = std::min(text_.size(), first + digits.most);
    int number = 0;
    for (; at_ < end && is_digit(text_[at_]); ++at_)
        number = number * 10 + (text_[at_] - '0');
    if (at_ - first < digits.least)
        return refuse_word(next.row, start);
    if (digits.most == 6)
        number = scaled(number, at_ - first);
    return tell_number(next.row, is_negative ? -number : number, start);
}

bool text_reader::tell_name(int row, int bits, std::size_t position) noexcept
{
    const std::uint64_t bit = std::uint64_t{1} << row;
    told_value& value = values_[row];
    if ((told_ & bit) != 0 && (value.number & bits) == 0)
        return refuse(limits_of_row(row).code, position, at_ - position, {&ka_format_codes[row].letter, 1});
    told_ |= bit;
    value = {bits, position, at_ - position};
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
    return refuse(limits_of_row(row).code, values_[row].position, values_[row].length, {&code.letter, 1});
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
    return refuse(limits_of_row(row).code, position, std::max<std::size_t>(end - position, 1),
                  {&code.letter, 1});
}
