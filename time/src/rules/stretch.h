#pragma once

#include <time/zone.h>

#include "table.h"

namespace rules {

/// Microseconds of the standard clock from midnight at the start of day number 0
/// in which nothing changes, and what holds in them.
struct stretch {
    long long first;
    /// The first of what follows.
    long long end;
    ka_time_period adjustment;
    bool is_dst;
};

/// A stretch around a time on a date of the range: not always all that there is
/// between two changes, but as much as is found without a search. Of a zone with
/// a user-defined rule, which may change at any time, it is that time alone.
stretch stretch_around(const ka_time_zone& zone, long long microsecond);

/// The slots of a table by the microseconds since the first of them began: what
/// they tell without a search is compiled into loops that ask for it.
class slots_by_microsecond {
public:
    using u64 = unsigned long long;
    static constexpr u64 million = 1000000;

    /// All or part of a slot.
    struct part {
        u64 first;
        u64 length;
        const kind* told;
    };

    slots_by_microsecond() = default;
    explicit slots_by_microsecond(const table& zone) noexcept
        : changes_(&zone), end_((zone.length >> slot_bits << slot_bits) * million)
    {}

    /// The last slot, where it is not a whole one, and slots of several changes are for others.
    [[gnu::always_inline]] bool find(part& found, u64 since) const noexcept
    {
        if (since >= end_) [[unlikely]]
            return false;
        const u64 second = since / million;
        const u64 start = second >> slot_bits << slot_bits;
        const std::uint32_t word = changes_->read.slots[second >> slot_bits];
        const std::uint32_t row = word >> 24;
        if (row == searched_row) [[unlikely]]
            return false;
        // No branch depends on the season, as in the table's own lookup.
        const u64 change = word & 0xffffff;
        const bool is_after = second - start >= change;
        const u64 all_if_after = 0 - static_cast<u64>(is_after);
        const kind_pair& pair = changes_->pairs[row];
        found.first = (start + (change & all_if_after)) * million;
        found.length = (change + ((slot_length - 2 * change) & all_if_after)) * million;
        found.told = is_after ? &pair.after : &pair.before;
        return true;
    }

private:
    const table* changes_ = nullptr;
    u64 end_ = 0;
};

}
