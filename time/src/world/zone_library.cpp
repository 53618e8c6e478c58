#include "zone_library.h"

#include <algorithm>

#include "../platform/files.h"
#include "../throw.h"
#include "posix_text.h"
#include "tzif.h"

namespace world {

using platform::file_state;

namespace {

/// The largest file of the public data has less than 4 KB.
constexpr std::size_t most_bytes = 256 * 1024;
constexpr std::size_t longest_name = 200;
/// What a message shows of names, texts and folders, so that all of them show. A
/// NUL would end the message.
std::string_view shown(std::string_view text) noexcept
{
    constexpr std::size_t longest = 100;
    return text.substr(0, std::min(longest, text.find('\0')));
}

/// Whether a name stays in its folder: parts with '/' between them, none of
/// which begins with a dot, in characters that mean nothing to a file system.
bool is_name(std::string_view name) noexcept
{
    if (name.empty() || name.size() > longest_name || name.back() == '/')
        return false;
    char last = '/';
    for (const char c : name) {
        const bool is_start = last == '/';
        const bool is_plain = ('a' <= c && c <= 'z') || ('A' <= c && c <= 'Z') || ('0' <= c && c <= '9') ||
                              c == '_' || c == '+' || c == '-';
        if (!is_plain && (is_start || (c != '/' && c != '.')))
            return false;
        last = c;
    }
    return true;
}

/// Not a zone of its own, though it is a tz file.
bool is_other_form(std::string_view name) noexcept
{
    return name.starts_with("posix/") || name.starts_with("right/") || name == "posixrules" ||
           name == "localtime";
}

std::string_view what_is_wrong(file_state state) noexcept
{
    switch (state) {
        case file_state::absent:
            return "is not there";
        case file_state::irregular:
            return "is no file";
        case file_state::too_long:
            return "is longer than 256 KB";
        default:
            return "can't be read";
    }
}

}

struct zone_library::found_file {
    file_state state = file_state::absent;
    std::string place;
    std::string bytes;
};

zone_library::zone_library(std::vector<std::string> folders)
    : is_in_memory_(false), folders_(std::move(folders))
{}

zone_library::zone_library(std::vector<ka_zone_file> files) : is_in_memory_(true)
{
    for (ka_zone_file& file : files)
        files_.emplace(std::move(file.name), std::move(file.bytes));
}

zone_library::found_file zone_library::look_up(std::string_view name) const
{
    found_file found;
    for (const std::string& folder : folders_) {
        const std::string place = folder + '/' + std::string(name);
        found.state = platform::read_file(place, most_bytes, found.bytes);
        if (found.state != file_state::absent) {
            found.place = place;
            return found;
        }
    }
    return found;
}

const ka_time_zone& zone_library::zone(std::string_view name)
{
    if (const ka_time_zone* const known = zones_.find(name))
        return *known;
    if (is_in_memory_) {
        const auto file = files_.find(name);
        if (file == files_.end())
            throw_error(ka_failure, {KA_SOURCE, __LINE__}, "Zone( ", shown(name),
                        " ), not among the files of the store");
        return load(name, "memory", file->second);
    }
    if (!is_name(name))
        throw_error(ka_failure, {KA_SOURCE, __LINE__}, "Zone( ", shown(name), " ), no name of a zone");
    const found_file found = look_up(name);
    if (found.state == file_state::read)
        return load(name, found.place, found.bytes);
    if (found.state != file_state::absent)
        throw_error(ka_failure, {KA_SOURCE, __LINE__}, "Zone( ", shown(name), " ), file( ",
                    shown(found.place), " ) ", what_is_wrong(found.state));
    const auto has_data = std::find_if(folders_.begin(), folders_.end(), platform::is_folder);
    if (has_data != folders_.end())
        throw_error(ka_failure, {KA_SOURCE, __LINE__}, "Zone( ", shown(name), " ), not in folder( ",
                    shown(*has_data), " )");
    throw_error(ka_failure, {KA_SOURCE, __LINE__}, "Zone( ", shown(name), " ), no folder( ",
                folders_.empty() ? "TZDIR" : shown(folders_.front()),
                " ); tz data come with the package tzdata");
}

const ka_time_zone& zone_library::zone_in_file(const std::string& path)
{
    if (const ka_time_zone* const known = zones_.find(path))
        return *known;
    std::string bytes;
    const file_state state = platform::read_file(path, most_bytes, bytes);
    if (state != file_state::read)
        throw_error(ka_failure, {KA_SOURCE, __LINE__}, "Zone( ", shown(path), " ), file( ", shown(path),
                    " ) ", what_is_wrong(state));
    return load(path, path, bytes);
}

const ka_time_zone& zone_library::load(std::string_view name, const std::string& place,
                                       std::string_view bytes)
{
    zone_data data;
    if (const auto wrong = read_tzif(bytes, data))
        throw_error(ka_failure, {KA_SOURCE, __LINE__}, "Zone( ", shown(name), " ), file( ", shown(place),
                    " ): ", std::string_view(wrong->what), ", at byte( ", wrong->place, " )");
    return zones_.add(std::make_unique<loaded_zone>(name, data, !name.starts_with('/')));
}

const ka_time_zone& zone_library::posix_zone(std::string_view text)
{
    if (const ka_time_zone* const known = posix_zones_.find(text))
        return *known;
    zone_data data;
    if (const auto wrong = read_posix_text(text, data.rules))
        throw_error(ka_failure, {KA_SOURCE, __LINE__}, "TZ string( ", shown(text), " ), at( ", wrong->place,
                    " ): ", std::string_view(wrong->what));
    data.has_rules = true;
    return posix_zones_.add(std::make_unique<loaded_zone>(text, data, false));
}

bool zone_library::has(std::string_view name) const
{
    if (is_in_memory_)
        return files_.contains(name);
    return is_name(name) && look_up(name).state == file_state::read;
}

/// The first bytes of a file, or none.
std::string zone_library::start_of(const std::string& name) const
{
    constexpr std::size_t enough = 64;
    std::string bytes;
    if (is_in_memory_) {
        if (const auto file = files_.find(name); file != files_.end())
            bytes = file->second.substr(0, enough);
        return bytes;
    }
    for (const std::string& folder : folders_) {
        std::string path = folder;
        path.append(1, '/').append(name);
        if (platform::read_file(path, enough, bytes) != file_state::absent)
            break;
    }
    return bytes;
}

std::vector<std::string> zone_library::names() const
{
    std::vector<std::string> names;
    for (const auto& [name, bytes] : files_)
        names.push_back(name);
    const auto folder = std::find_if(folders_.begin(), folders_.end(), platform::is_folder);
    if (folder != folders_.end())
        names = platform::files_below(*folder);
    std::erase_if(names, [this](const std::string& name) {
        return is_other_form(name) || !(is_in_memory_ || is_name(name)) || !is_tzif(start_of(name));
    });
    std::sort(names.begin(), names.end());
    return names;
}

std::string zone_library::version() const
{
    // Either all of a file, or what stands behind two words.
    std::string text = start_of("+VERSION");
    if (text.empty()) {
        constexpr std::string_view head = "# version ";
        text = start_of("tzdata.zi");
        text = text.starts_with(head) ? text.substr(head.size()) : std::string();
    }
    return text.substr(0, text.find_first_of("\r\n"));
}

}
