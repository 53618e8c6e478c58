#pragma once

#include <optional>
#include <string_view>

#include "zone_data.h"

namespace world {

/// Reads the bytes of a tz file: RFC 9636, versions 1 to 4. Returns what is
/// wrong, if anything is; then the data are of no use. Seconds that a file
/// counts for leaps are taken out.
std::optional<fault> read_tzif(std::string_view bytes, zone_data& data);

/// Whether bytes begin as a tz file does.
bool is_tzif(std::string_view bytes) noexcept;

}
