#include <time/world.h>

#include <ctime>

#include "throw.h"
#include "world/zone_library.h"

const ka_time_zone& ka_zone(std::string_view name) { return world::common_library().zone(name); }

std::vector<std::string> ka_zone_names() { return world::common_library().names(); }

const ka_time_zone& ka_machine_zone() { return world::machine_zone(); }

const ka_time_zone& ka_posix_zone(std::string_view text) { return world::common_library().posix_zone(text); }

ka_time_and_date ka_present(const ka_time_zone& zone)
{
    std::timespec now = {};
    if (std::timespec_get(&now, TIME_UTC) == 0)
        throw_error(ka_failure, {KA_SOURCE, __LINE__}, "Could not determine current time and date");
    ka_time_and_date moment(ka_time_period(now.tv_sec, static_cast<int>(now.tv_nsec / 1000)));
    moment.time_zone(zone);
    return moment;
}

namespace {

/// The table of a zone of the world that has rules, or null.
const rules::table* table_of(const ka_time_zone& zone) noexcept
{
    struct opened : ka_time_zone {
        using ka_time_zone::rule;
    };
    const ka_time_zone_rule* (ka_time_zone::*const in_slot)(int) const noexcept = &opened::rule;
    const auto* const rule = dynamic_cast<const world::kind_rule*>((zone.*in_slot)(0));
    return rule != nullptr ? &rule->table() : nullptr;
}

}

ka_time_period ka_offset(const ka_time_and_date& moment)
{
    return moment.time_zone().offset(moment.std_time(), moment.std_date());
}

std::string ka_zone_abbreviation(const ka_time_and_date& moment)
{
    const ka_time_zone& zone = moment.time_zone();
    const ka_time time = moment.std_time();
    const ka_date date = moment.std_date();
    if (const rules::table* const table = table_of(zone)) {
        const long long second = date.julian_day() * 86400ll + ka_time_period(time).to_seconds();
        return table->abbreviations + rules::kind_by_standard(*table, second).abbreviation;
    }
    // The number of a name is that of the whole hours.
    const std::string name = zone.name(time, date);
    const std::string hours = std::to_string(ka_offset(moment).to_hours());
    return name.ends_with(hours) ? name.substr(0, name.size() - hours.size()) : name;
}

struct ka_zone_store::shelf : world::zone_library {
    using zone_library::zone_library;
};

ka_zone_store::ka_zone_store(std::string folder)
    : shelf_(new shelf(std::vector<std::string>{std::move(folder)}))
{}

ka_zone_store::ka_zone_store(std::vector<ka_zone_file> files) : shelf_(new shelf(std::move(files))) {}

ka_zone_store::~ka_zone_store() { delete shelf_; }

const ka_time_zone& ka_zone_store::zone(std::string_view name) const { return shelf_->zone(name); }

const ka_time_zone& ka_zone_store::posix_zone(std::string_view text) const
{
    return shelf_->posix_zone(text);
}

std::vector<std::string> ka_zone_store::names() const { return shelf_->names(); }

std::string ka_zone_store::version() const { return shelf_->version(); }
