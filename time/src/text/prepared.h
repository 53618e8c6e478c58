#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <time/inline/read.h>

#include "language.h"
#include "read_piece.h"
#include "ways.h"

/// A code of a format, and the letters in front of it.
struct print_step {
    std::string_view literal;
    /// `letter_itself` for all that takes more than its letter: flags, widths, and letters that are no codes.
    way printed;
    code_printer printer;
    /// What stands behind the "%", and what stands behind the code.
    std::string_view code;
    std::string_view rest;
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
    /// The letters behind the last code.
    std::string_view tail;
    /// The room that all takes up to the first text, in years of four characters.
    std::size_t room = 0;

    std::vector<read_piece> pieces;
    /// The place of the first code that can't be read, or `npos`.
    std::size_t unreadable_code;
    ka_told_fields told = 0;

private:
    void make_steps();
    void measure_steps();
};
