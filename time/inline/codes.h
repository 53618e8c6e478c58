#pragma once

#include <cstddef>
#include <string_view>

// How a format is cut into pieces, for all who print by one, check one or read by one.

/// A run of literal characters, or one code with its flag and width.
struct ka_format_piece {
    /// All of the piece, as it stands in the format.
    std::string_view text;
    bool is_code = false;
    /// Whether the format ends before the letter of this code, which then is NUL.
    bool is_cut_off = false;
    char letter = '\0';
    /// The field stands left, and blanks fill it from behind.
    bool is_left = false;
    char fill = ' ';
    /// The least number of characters. It wraps in 64 bits.
    unsigned long long width = 0;

    constexpr bool is_padded() const { return text.size() > 2; }
};

/// Takes the first piece off a format, which is not empty.
constexpr ka_format_piece ka_next_piece(std::string_view& format)
{
    ka_format_piece piece;
    std::size_t end = format.find('%');
    if (end != 0) {
        piece.text = format.substr(0, end);
        format.remove_prefix(piece.text.size());
        return piece;
    }
    piece.is_code = true;
    const auto at = [format](std::size_t place) { return place < format.size() ? format[place] : '\0'; };
    end = 1;
    piece.is_left = at(end) == '-';
    piece.fill = at(end) == '0' ? '0' : ' ';
    if (piece.is_left || piece.fill == '0')
        ++end;
    for (; '0' <= at(end) && at(end) <= '9'; ++end)
        piece.width = piece.width * 10 + static_cast<unsigned long long>(at(end) - '0');
    piece.is_cut_off = end >= format.size();
    piece.letter = at(end);
    piece.text = format.substr(0, end + 1);
    format.remove_prefix(piece.text.size());
    return piece;
}
