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

void ka_prepared_format::add_letters(std::string_view letters)
{
    if (!letters.empty())
        steps.push_back({.format = letters});
}

void ka_prepared_format::make_steps()
{
    std::string_view letters = printed;
    for (ka_format_pieces stream(printed); !stream.is_at_end();) {
        const std::size_t left = stream.rest().size();
        const ka_format_piece piece = stream.next();
        if (!piece.is_code)
            continue;
        const std::string_view code = letters.substr(letters.size() - left + 1);
        letters.remove_suffix(left);
        const auto letter = static_cast<unsigned char>(piece.letter);
        print_step step;
        step.printed = ways[letter];
        if (piece.is_padded)
            step.printed = way::letter_itself;
        if (letters.size() == 1) {
            step.letters_in_front = 1;
            step.letter_in_front = letters.front();
        } else {
            add_letters(letters);
        }
        step.printer = code_printers[letter];
        step.format = code;
        step.rest = letters = stream.rest();
        steps.push_back(step);
    }
    add_letters(letters);
}

void ka_prepared_format::measure_steps()
{
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        if (step->printed == way::letters) {
            room += step->format.size();
        } else if (step->printed < way::text) {
            room += step->letters_in_front + longest_common_text(step->printed);
        } else {
            step->room_behind = room;
            room = step->letters_in_front;
        }
    }
}
