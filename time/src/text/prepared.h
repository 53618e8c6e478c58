#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <time/inline/read.h>

#include "language.h"
#include "read_piece.h"
#include "ways.h"

/// A code of a format with the letter in front of it, or several letters.
struct print_step {
    /// `letter_itself` for all that takes more than its letter: flags, widths, and letters that are no codes.
    way printed = way::letters;
    /// 1 where there is a letter in front, else 0.
    unsigned char letters_in_front = 0;
    char letter_in_front = '\0';
    code_printer printer = nullptr;
    /// The letters, or what stands behind the "%".
    std::string_view format = {};
    /// What stands behind the code.
    std::string_view rest = {};
    /// Behind a text, the room that all takes up to the next one.
    std::size_t room_behind = 0;
};

/// What a pattern keeps of its format.
struct ka_prepared_format {
    ka_prepared_format(const std::string& format, const ka_language_texts& language);
    ka_prepared_format(const ka_prepared_format&) = delete;
    ka_prepared_format& operator=(const ka_prepared_format&) = delete;

    /// The format with what its compound codes stand for.
    std::string printed;
    std::vector<print_step> steps;
    /// The room that all takes up to the first text, in years of four characters.
    std::size_t room = 0;

    std::vector<read_piece> pieces;
    /// The place of the first code that can't be read, or `npos`.
    std::size_t unreadable_code;
    ka_told_fields told = 0;

private:
    void make_steps();
    void add_letters(std::string_view letters);
    void measure_steps();
};
