#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <time/world.h>

#include "zone_shelf.h"

namespace world {

/// Where zones come from, and those that were asked for. Any thread.
class zone_library {
public:
    /// The folders are searched in this order.
    explicit zone_library(std::vector<std::string> folders);
    explicit zone_library(std::vector<ka_zone_file> files);

    const ka_time_zone& zone(std::string_view name);
    const ka_time_zone& posix_zone(std::string_view text);
    /// The zone of a file anywhere, which is called by its path.
    const ka_time_zone& zone_in_file(const std::string& path);
    std::vector<std::string> names() const;
    std::string version() const;
    /// Whether there is a zone of a name; it may be damaged.
    bool has(std::string_view name) const;

private:
    const ka_time_zone& load(std::string_view name, const std::string& place, std::string_view bytes);
    /// Where a name is looked up, and what is there.
    struct found_file;
    found_file look_up(std::string_view name) const;
    std::string start_of(const std::string& name) const;

    bool is_in_memory_;
    std::vector<std::string> folders_;
    std::map<std::string, std::string, std::less<>> files_;
    zone_shelf zones_;
    zone_shelf posix_zones_;
};

/// The library behind `ka_zone`, made when it is first asked for.
zone_library& common_library();

/// The zone of this machine, out of the common library.
const ka_time_zone& machine_zone();

/// Ends what `common_library` has begun; no thread may use it any more.
void close_common_library() noexcept;

}
