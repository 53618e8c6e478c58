#include "zone_shelf.h"

#include <cstdint>
#include <utility>

#include "../access.h"

namespace world {

namespace {

/// A rule has two points, also one that does not go by them.
constexpr ka_calendar_date new_year(ka_time_period(), 1, 1);

}

kind_rule::kind_rule(const rules::table& table, const rules::kind& told) noexcept
    : ka_time_zone_rule(new_year, new_year, 0, 0, ka_time_period(told.adjustment)), table_(table), told_(told)
{}

bool kind_rule::is_in_effect(const ka_time& time, const ka_date& date) const
{
    const long long second = date.julian_day() * 86400ll + ka_time_period(time).to_seconds();
    return rules::kind_by_local(table_, second) == told_;
}

loaded_zone::loaded_zone(std::string_view name, const zone_data& data, bool is_named)
    : key(name), table(data, is_named ? key.c_str() : nullptr),
      zone(ka_time_period(table.offset()), table.standard_name(), table.summer_name())
{
    // In the public data no zone has more than seven such kinds.
    const rules::table& view = table.view();
    for (std::size_t i = 0; i < view.kind_count; ++i)
        if (view.kinds[i].adjustment != 0 || view.kinds[i].is_dst)
            zone.insert(rules.emplace_back(view, view.kinds[i]));
    ka_access::go_by(zone, view);
}

zone_shelf::~zone_shelf()
{
    for (const std::atomic<const loaded_zone*>& place : places_) {
        const loaded_zone* loaded = place;
        while (loaded != nullptr)
            delete std::exchange(loaded, loaded->next);
    }
}

std::size_t zone_shelf::place_of(std::string_view key) noexcept
{
    // FNV-1a, 32 bits.
    std::uint32_t hash = 2166136261u;
    for (const char c : key)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    return (hash ^ hash >> 16) & 0xff;
}

const ka_time_zone* zone_shelf::find(std::string_view key) const noexcept
{
    const loaded_zone* loaded = places_[place_of(key)].load(std::memory_order_acquire);
    while (loaded != nullptr && loaded->key != key)
        loaded = loaded->next;
    return loaded != nullptr ? &loaded->zone : nullptr;
}

const ka_time_zone& zone_shelf::add(std::unique_ptr<loaded_zone> loaded)
{
    const std::lock_guard lock(adding_);
    if (const ka_time_zone* const known = find(loaded->key))
        return *known;
    std::atomic<const loaded_zone*>& place = places_[place_of(loaded->key)];
    loaded->next = place.load(std::memory_order_relaxed);
    place.store(loaded.get(), std::memory_order_release);
    return loaded.release()->zone;
}

}
