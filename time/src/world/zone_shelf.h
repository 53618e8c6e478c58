#pragma once

#include <array>
#include <atomic>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include <time/zone.h>

#include "zone_table.h"

namespace world {

/// One of the kinds of a table as a rule, for those who ask a zone for its rules:
/// it is asked on the local clock.
class kind_rule final : public ka_time_zone_rule {
public:
    kind_rule(const rules::table& table, const rules::kind& told) noexcept;

    bool is_in_effect(const ka_time& time, const ka_date& date) const override;

private:
    const rules::table& table_;
    const rules::kind& told_;
};

/// A zone with its table. It neither moves nor changes.
struct loaded_zone {
    /// What `is_named` tells is whether the key is a name of the tz data.
    loaded_zone(std::string_view name, const zone_data& data, bool is_named);

    const std::string key;
    const zone_table table;
    ka_time_zone zone;
    std::deque<kind_rule> rules;
    /// The next of the same place on the shelf, loaded earlier.
    const loaded_zone* next = nullptr;
};

/// Loaded zones by their names. Readers take no lock: a zone is put in front of
/// its place when it is complete, and stays.
class zone_shelf {
public:
    zone_shelf() = default;
    ~zone_shelf();
    zone_shelf(const zone_shelf&) = delete;
    zone_shelf& operator=(const zone_shelf&) = delete;

    /// Null where it is not loaded.
    const ka_time_zone* find(std::string_view key) const noexcept;
    /// Where another thread was faster, its zone stays and is returned.
    const ka_time_zone& add(std::unique_ptr<loaded_zone> loaded);

private:
    static std::size_t place_of(std::string_view key) noexcept;

    std::array<std::atomic<const loaded_zone*>, 256> places_ = {};
    std::mutex adding_;
};

}
