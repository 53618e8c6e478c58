#pragma once

#include <cstddef>
#include <string>
#include <vector>

// What the library asks of the file system, and only when a program asks for a
// zone of the world.

namespace platform {

enum class file_state { read, absent, irregular, unreadable, too_long };

/// Reads a plain file of no more than so many bytes. Of one that is longer the
/// first bytes are there.
file_state read_file(const std::string& path, std::size_t most, std::string& bytes);

bool is_folder(const std::string& path) noexcept;

/// The plain files in a folder and in those below it, by their paths from the
/// folder on, with '/' between the parts. Links to folders are not followed.
std::vector<std::string> files_below(const std::string& folder);

/// What a link leads to; empty where there is none.
std::string link_target(const std::string& path);

/// The folders where this kind of machine has its tz files.
const std::vector<std::string>& zone_folders();

/// The file or link that tells the machine's zone; empty where there is none.
std::string machine_zone_path();

/// The rules of the machine's zone as a TZ string, where there is no such file
/// and the machine tells them; else empty.
std::string machine_zone_text();

}
