#pragma once

#include <string>

#include "../platform/platform.h"

/// A layout of the runtime in the codes of the format language: that for `%c`,
/// `%x` or `%X`. A code of the runtime that the language has no counterpart for
/// prints nothing.
std::string translated_layout(const platform::named_locale& locale, char layout);
