#pragma once

#include <cstddef>
#include <iterator>
#include <string_view>

#include <time/inline/codes.h>

#include "language.h"
#include "ways.h"

/// The row of a letter in the table of codes, or -1.
constexpr int row_of(char letter)
{
    constexpr by_letter<signed char> rows = [] {
        by_letter<signed char> found = {};
        found.fill(-1);
        for (std::size_t row = 0; row < std::size(ka_format_codes); ++row)
            found[static_cast<unsigned char>(ka_format_codes[row].letter)] = static_cast<signed char>(row);
        return found;
    }();
    return rows[static_cast<unsigned char>(letter)];
}

/// A piece with the row of its code, which is -1 for a literal and for a letter
/// that prints itself.
struct coded_piece {
    ka_format_piece piece;
    int row = -1;
    /// Where the piece begins in the format, or the code that it is a part of.
    std::size_t position = 0;

    bool is_code() const { return row >= 0; }
    const ka_format_code& code() const { return ka_format_codes[row]; }
};

/// Whether a code stands for the same pieces whatever the value.
constexpr bool stands_for_pieces(const ka_format_code& code)
{
    return code.form == ka_format_form::format && code.field != ka_format_field::year_with_era;
}

inline std::string_view format_behind(const ka_format_code& code, const ka_language_texts& language)
{
    switch (code.field) {
        case ka_format_field::user_timedate:
            return **language.timedate;
        case ka_format_field::user_date:
            return **language.date;
        case ka_format_field::user_time:
            return **language.time;
        default:
            return code.format;
    }
}

/// The pieces of a format one after the other. In place of a code that stands
/// for pieces come these, unless it is padded with zeros or to the left; one
/// that is padded with blanks in front comes before its pieces.
class piece_stream {
public:
    piece_stream(std::string_view format, const ka_language_texts& language)
        : language_(&language),
          size_(format.size()), levels_{ka_format_pieces(format), none, none, none, none}
    {}

    bool is_at_end()
    {
        while (depth_ > 0 && levels_[depth_].is_at_end())
            --depth_;
        return levels_[depth_].is_at_end();
    }

    /// The next piece, of a stream that is not at its end.
    coded_piece next()
    {
        coded_piece found;
        if (depth_ == 0)
            position_ = size_ - levels_[0].rest().size();
        found.position = position_;
        found.piece = levels_[depth_].next();
        if (found.piece.is_code)
            found.row = row_of(found.piece.letter);
        if (found.piece.is_code && found.row < 0 && language_->alternates != nullptr)
            found.row = row_of(alternate_numbers::unpadded_code(found.piece.letter));
        if (found.is_code() && stands_for_pieces(found.code()) && can_enter(found.piece))
            levels_[++depth_] = ka_format_pieces(format_behind(found.code(), *language_));
        return found;
    }

    /// Whether the text of the next piece can begin with a digit.
    bool is_number_next() const
    {
        const ka_format_pieces& level = levels_[depth_];
        if (!level.is_at_end() && level.peek() != '%')
            return '0' <= level.peek() && level.peek() <= '9';
        piece_stream ahead(*this);
        while (!ahead.is_at_end()) {
            const coded_piece next = ahead.next();
            if (!next.is_code())
                return '0' <= next.piece.letter && next.piece.letter <= '9';
            if (!stands_for_pieces(next.code()) || next.piece.is_padded)
                return next.piece.fill == '0' || is_number(next.code().form) ||
                       next.code().field == ka_format_field::year_with_era;
        }
        return false;
    }

private:
    bool can_enter(const ka_format_piece& piece) const
    {
        return !piece.is_left && piece.fill == ' ' && depth_ + 1 < std::size(levels_);
    }

    static constexpr ka_format_pieces none = ka_format_pieces({});

    const ka_language_texts* language_;
    std::size_t size_;
    std::size_t position_ = 0;
    std::size_t depth_ = 0;
    /// A layout can hold another, that one the third, and that one a code for pieces.
    ka_format_pieces levels_[5];
};
