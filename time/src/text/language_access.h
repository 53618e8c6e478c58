#pragma once

#include <time/language.h>

#include "language.h"

/// Opens a language to those who print and read in it.
struct ka_language_access {
    static const ka_language_texts& texts_of(const ka_language& language) { return *language.texts_; }
};

inline const ka_language_texts& texts_of(const ka_language& language)
{
    return ka_language_access::texts_of(language);
}
