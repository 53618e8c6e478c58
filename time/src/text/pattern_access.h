#pragma once

#include <time/pattern.h>

#include "prepared.h"

/// Opens a pattern to those who print and read by it.
struct ka_pattern_access {
    static const ka_prepared_format& prepared(const ka_pattern& pattern) { return *pattern.prepared_; }
};

inline const ka_prepared_format& prepared(const ka_pattern& pattern)
{
    return ka_pattern_access::prepared(pattern);
}
