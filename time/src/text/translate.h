#pragma once

#include <ctime>
#include <string>

#include "../platform/platform.h"
#include "language.h"

/// What a locale prints for a moment by one code of `strftime`.
std::string locale_text(const platform::named_locale& locale, const char* code, const std::tm& fields);

/// A layout of the runtime in the codes of the format language: that for `%c`,
/// `%x` or `%X`. A code of the runtime that the language has no counterpart for
/// prints nothing.
std::string translated_layout(const platform::named_locale& locale, char layout);

/// How a locale writes numbers in layouts that ask for it.
alternate_numbers alternates_of(const platform::named_locale& locale);
