#pragma once

#include <time/inline/codes.h>

#include "fields.h"
#include "piece_stream.h"

/// A piece of a format as it is read.
struct read_piece {
    enum kind : unsigned char { literal, blank, number, year_with_era, name, zone, fill_alone };

    kind reads = literal;
    char letter = '\0';
    signed char row = -1;
    char fill = ' ';
    bool is_left = false;
    digits_row digits = {};
    unsigned long long width = 0;
};

constexpr bool is_blank(char letter) { return letter == ' ' || ('\t' <= letter && letter <= '\r'); }

inline read_piece::kind reading_of(const coded_piece& next)
{
    if (!next.is_code())
        return is_blank(next.piece.letter) ? read_piece::blank : read_piece::literal;
    if (stands_for_pieces(next.code()))
        return read_piece::fill_alone;
    if (next.code().field == ka_format_field::year_with_era)
        return read_piece::year_with_era;
    if (next.code().field == ka_format_field::zone)
        return read_piece::zone;
    return is_number(next.code().form) ? read_piece::number : read_piece::name;
}

inline read_piece read_piece_of(const coded_piece& next, bool is_number_next)
{
    return {reading_of(next),
            next.piece.letter,
            static_cast<signed char>(next.row),
            next.piece.fill,
            next.piece.is_left,
            next.is_code() ? digits_of(next.code(), is_number_next) : digits_row{},
            next.piece.width};
}
