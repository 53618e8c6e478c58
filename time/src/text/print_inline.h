#pragma once

#include <string_view>

#include "ways.h"

struct printed_piece {
    char* end;
    ka_format_pieces rest;
};

/// Prints what stands behind a "%": flag, width and letter.
printed_piece print_padded(char* at, sink& out, ka_format_pieces pieces, const printed_value& value);

/// Prints the rest of a format into a room that may end with the next character.
char* print_to_the_last(char* at, sink& out, ka_format_pieces pieces, const printed_value& value);

/// `print`, compiled into those who are called often: letters and common
/// numbers ask for no room, as long as there is what was promised for the rest
/// of the format.
[[gnu::always_inline]] inline char* print_inline(char* at, sink& out, std::string_view format,
                                                 const printed_value& value)
{
    ka_format_pieces pieces(format);
    if (!out.has_room(at, promised_room(format.size())))
        return print_to_the_last(at, out, pieces, value);
    while (!pieces.is_at_end()) {
        const char next = pieces.take();
        if (next != '%') {
            *at++ = next;
            continue;
        }
        const auto letter = static_cast<unsigned char>(pieces.peek_to_nul());
        const way printed = ways[letter];
        if (printed < way::year) {
            pieces.take();
            at = write_common(at, printed, value);
            continue;
        }
        if (printed < way::number) {
            pieces.take();
            at = write_common(at, printed, value);
            continue;
        }
        if (printed <= way::text) {
            pieces.take();
            at = code_printers[letter](at, out, value);
        } else {
            const printed_piece padded = print_padded(at, out, pieces, value);
            at = padded.end;
            pieces = padded.rest;
        }
        if (!out.has_room(at, promised_room(pieces.rest().size())))
            return print_to_the_last(at, out, pieces, value);
    }
    return at;
}
