#include <time/world.h>

#include "access.h"
#include "clock/general_path.h"
#include "platform/platform.h"
#include "throw.h"
#include "world/zone_library.h"

const ka_time_zone& ka_zone(std::string_view name) { return world::common_library().zone(name); }

std::vector<std::string> ka_zone_names() { return world::common_library().names(); }

const ka_time_zone& ka_machine_zone() { return world::machine_zone(); }

const ka_time_zone& ka_posix_zone(std::string_view text) { return world::common_library().posix_zone(text); }

ka_time_and_date ka_present(const ka_time_zone& zone)
{
    platform::split_seconds now = {};
    if (!platform::read_universal_clock(now))
        throw_error(ka_failure, {KA_SOURCE, __LINE__}, "Could not determine current time and date");
    ka_time_and_date moment(ka_time_period(now.seconds, static_cast<int>(now.microseconds)));
    moment.time_zone(zone);
    return moment;
}

ka_time_period ka_offset(const ka_time_and_date& moment)
{
    const ka_time_zone& zone = moment.time_zone();
    const rules::effect effect = clocks::effect_in_general(ka_access::instant(moment), zone);
    return effect.is_moved ? zone.offset() - effect.adjustment : zone.offset();
}

std::string ka_zone_abbreviation(const ka_time_and_date& moment)
{
    const ka_time_zone& zone = moment.time_zone();
    const rules::effect effect = clocks::effect_in_general(ka_access::instant(moment), zone);
    const char* const all = effect.told != nullptr ? ka_access::changes(zone).abbreviations : nullptr;
    return all != nullptr ? all + effect.told->abbreviation : ka_access::stem(zone, effect.is_dst);
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
