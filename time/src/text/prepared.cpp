#include "prepared.h"

#include <string_view>

namespace {

/// A layout can hold another, that one the third, and that one a code for pieces.
constexpr int deepest = 5;

std::string expanded(std::string_view format, const ka_language_texts& language, int depth)
{
    std::string text;
    for (ka_format_pieces pieces(format); !pieces.is_at_end();) {
        const std::string_view rest = pieces.rest();
        const ka_format_piece piece = pieces.next();
        const int row = piece.is_code ? row_of(piece.letter) : -1;
        if (row >= 0 && !piece.is_padded && stands_for_pieces(ka_format_codes[row]) && depth < deepest)
            text += expanded(format_behind(ka_format_codes[row], language), language, depth + 1);
        else
            text += rest.substr(0, rest.size() - pieces.rest().size());
    }
    return text;
}

}

ka_prepared_format::ka_prepared_format(const std::string& format, const ka_language_texts& language)
    : printed(expanded(format, language, 0)), unreadable_code(ka_unreadable_code(format))
{
    for (piece_stream stream(printed, language); !stream.is_at_end();) {
        const coded_piece next = stream.next();
        pieces.push_back(read_piece_of(next, next.is_code() && stream.is_number_next()));
        if (next.is_code())
            told |= ka_field_bit(next.code().field);
    }
    make_steps();
    measure_steps();
}

void ka_prepared_format::make_steps()
{
    tail = printed;
    for (ka_format_pieces stream(printed); !stream.is_at_end();) {
        const std::string_view rest = stream.rest();
        const ka_format_piece piece = stream.next();
        if (!piece.is_code)
            continue;
        const auto letter = static_cast<unsigned char>(piece.letter);
        const way printed_so = piece.is_padded ? way::letter_itself : ways[letter];
        const std::string_view literal = tail.substr(0, tail.size() - rest.size());
        steps.push_back({literal, printed_so, code_printers[letter], rest.substr(1), stream.rest()});
        tail = stream.rest();
    }
}

void ka_prepared_format::measure_steps()
{
    room = tail.size();
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        if (step->printed < way::text) {
            room += step->literal.size() + longest_common_text(step->printed);
        } else {
            step->room_behind = room;
            room = step->literal.size();
        }
    }
}
