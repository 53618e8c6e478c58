#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <time/inline/read.h>

#include "language.h"
#include "read_piece.h"

/// What a pattern keeps of its format.
struct ka_prepared_format {
    ka_prepared_format(const std::string& format, const ka_language_texts& language);

    /// The format with what its compound codes stand for.
    std::string printed;
    std::vector<read_piece> pieces;
    /// The place of the first code that can't be read, or `npos`.
    std::size_t unreadable_code;
    ka_told_fields told = 0;
};
