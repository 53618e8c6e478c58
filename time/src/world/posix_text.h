#pragma once

#include <optional>
#include <string_view>

#include "zone_data.h"

namespace world {

/// Reads a TZ string: POSIX.1-2024, section 8.3, whose hours of a point may be
/// -167 to 167. Where points are left out, those of the United States hold.
/// Returns the first character that is wrong, if one is.
std::optional<fault> read_posix_text(std::string_view text, yearly_rules& rules);

}
