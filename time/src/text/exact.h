#pragma once

#include <string_view>

#include <time/inline/read.h>

#include "language.h"

/// The fields that a format tells, those behind the layouts of a language among them.
ka_told_fields fields_told(std::string_view format, const ka_language_texts& language);

/// Whether a text of a type that a format prints can be taken apart in one way alone.
bool is_read_one_way(std::string_view format, const ka_language_texts& language, bool has_date);
