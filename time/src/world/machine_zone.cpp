#include <atomic>
#include <cstdlib>
#include <mutex>

#include "../platform/files.h"
#include "../platform/platform.h"
#include "posix_text.h"
#include "zone_library.h"

namespace world {

namespace {

std::atomic<zone_library*> common{nullptr};
std::atomic<const ka_time_zone*> machine{nullptr};
std::mutex beginning;

std::string environment(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::vector<std::string> folders()
{
    std::vector<std::string> found = platform::zone_folders();
    if (const std::string own = environment("TZDIR"); !own.empty())
        found.insert(found.begin(), own);
    return found;
}

/// The zone that stands at a path, by its name where a folder of tz data has it.
const ka_time_zone& zone_at(zone_library& library, const std::string& path)
{
    constexpr std::string_view folder = "zoneinfo/";
    const std::string target = platform::link_target(path);
    const std::size_t place = target.rfind(folder);
    if (place != std::string::npos) {
        const std::string name = target.substr(place + folder.size());
        if (library.has(name))
            return library.zone(name);
    }
    return library.zone_in_file(path);
}

/// What holds where nothing tells the rules: the offset, which never changes.
const ka_time_zone& zone_of_offset(zone_library& library)
{
    const int west = platform::read_machine_zone().own_seconds_west;
    const int size = std::abs(west);
    const auto two = [](int number) { return std::to_string(number + 100).substr(1); };
    const std::string text = std::string("<UTC>") + (west < 0 ? "-" : "") + std::to_string(size / 3600) +
                             ':' + two(size / 60 % 60) + ':' + two(size % 60);
    return library.posix_zone(text);
}

const ka_time_zone& zone_of_setting(zone_library& library, std::string setting)
{
    if (setting.empty())
        return library.posix_zone("UTC0");
    if (setting.front() == ':')
        setting.erase(0, 1);
    if (setting.starts_with('/'))
        return zone_at(library, setting);
    if (library.has(setting))
        return library.zone(setting);
    yearly_rules rules;
    return read_posix_text(setting, rules) ? zone_of_offset(library) : library.posix_zone(setting);
}

const ka_time_zone& find_machine_zone(zone_library& library)
{
    if (std::getenv("TZ") != nullptr)
        return zone_of_setting(library, environment("TZ"));
    const std::string path = platform::machine_zone_path();
    std::string start;
    if (!path.empty() && platform::read_file(path, 4, start) != platform::file_state::absent)
        return zone_at(library, path);
    const std::string text = platform::machine_zone_text();
    return text.empty() ? zone_of_offset(library) : library.posix_zone(text);
}

}

zone_library& common_library()
{
    if (zone_library* const begun = common.load(std::memory_order_acquire))
        return *begun;
    const std::lock_guard lock(beginning);
    if (common.load(std::memory_order_relaxed) == nullptr)
        common.store(new zone_library(folders()), std::memory_order_release);
    return *common.load(std::memory_order_relaxed);
}

const ka_time_zone& machine_zone()
{
    if (const ka_time_zone* const known = machine.load(std::memory_order_acquire))
        return *known;
    const ka_time_zone& found = find_machine_zone(common_library());
    machine.store(&found, std::memory_order_release);
    return found;
}

void close_common_library() noexcept
{
    machine = nullptr;
    delete common.exchange(nullptr);
}

}
