#include "table.h"

#include <algorithm>
#include <climits>

namespace rules {

namespace {

constexpr change none{0, nullptr, nullptr};

long long end_of(const table& zone) noexcept { return zone.origin + static_cast<long long>(zone.length); }

/// Moved by whole folds, of which a time near an end of 64 bits has few.
long long moved(long long time, long long folds) noexcept
{
    return static_cast<long long>(static_cast<unsigned long long>(time) +
                                  static_cast<unsigned long long>(folds) * fold_length);
}

/// How many folds lead from a time outside the slots to one inside.
long long folds_inward(const table& zone, long long time) noexcept
{
    const auto distance = [](long long low, long long high) {
        return static_cast<unsigned long long>(high) - static_cast<unsigned long long>(low);
    };
    if (time < zone.origin)
        return static_cast<long long>((distance(time, zone.origin) - 1) / fold_length) + 1;
    return -static_cast<long long>(distance(end_of(zone), time) / fold_length) - 1;
}

change change_in_row(const table& zone, long long at, std::uint32_t row) noexcept
{
    return {at, &zone.pairs[row].before, &zone.pairs[row].after};
}

change change_at(const table& zone, std::size_t index) noexcept
{
    return {zone.read.at[index], &zone.kinds[zone.kind_of[index]], &zone.kinds[zone.kind_of[index + 1]]};
}

/// The change in a slot of a table that is never searched, if there is one.
change change_in_slot(const table& zone, std::size_t slot) noexcept
{
    const std::uint32_t word = zone.read.slots[slot];
    const std::uint32_t second = word & 0xffffff;
    if (second == slot_length)
        return none;
    return change_in_row(zone, zone.origin + static_cast<long long>(slot << slot_bits) + second, word >> 24);
}

/// The first change in the slots that comes after a time in them or just before.
change next_inside(const table& zone, long long time) noexcept
{
    if (zone.read.at != nullptr) {
        const long long* const end = zone.read.at + zone.count;
        const long long* const found = std::upper_bound(zone.read.at, end, time);
        return found == end ? none : change_at(zone, static_cast<std::size_t>(found - zone.read.at));
    }
    const long long since = std::max(time - zone.origin, 0ll);
    for (auto slot = static_cast<std::size_t>(since >> slot_bits); slot < slots_for(zone.length); ++slot)
        if (const change found = change_in_slot(zone, slot); found && found.at > time)
            return found;
    return none;
}

/// The last change in the slots at a time in them or before it.
change previous_inside(const table& zone, long long time) noexcept
{
    if (zone.read.at != nullptr) {
        const long long* const found = std::upper_bound(zone.read.at, zone.read.at + zone.count, time);
        return found == zone.read.at ? none
                                     : change_at(zone, static_cast<std::size_t>(found - zone.read.at) - 1);
    }
    for (auto slot = static_cast<std::size_t>((time - zone.origin) >> slot_bits) + 1; slot-- > 0;)
        if (const change found = change_in_slot(zone, slot); found && found.at <= time)
            return found;
    return none;
}

/// The stretch between the changes of a table with times.
table_stretch searched_stretch(const table& zone, long long time) noexcept
{
    const long long* const end = zone.read.at + zone.count;
    const long long* const found = std::upper_bound(zone.read.at, end, time);
    return {found == zone.read.at ? zone.origin : found[-1], found == end ? end_of(zone) : *found,
            &zone.kinds[zone.kind_of[found - zone.read.at]]};
}

table_stretch stretch_inside(const table& zone, long long time) noexcept
{
    const auto since = static_cast<unsigned long long>(time - zone.origin);
    const std::uint32_t word = zone.read.slots[since >> slot_bits];
    if (word >> 24 == searched_row)
        return searched_stretch(zone, time);
    const kind_pair& pair = zone.pairs[word >> 24];
    const long long start = time - static_cast<long long>(since & (slot_length - 1));
    const long long change = start + (word & 0xffffff);
    const long long end = std::min(start + static_cast<long long>(slot_length), end_of(zone));
    return time < change ? table_stretch{start, std::min(change, end), &pair.before}
                         : table_stretch{change, end, &pair.after};
}

change moved(change found, long long folds) noexcept
{
    found.at = moved(found.at, folds);
    return found;
}

}

const kind& kind_off_index(const table& zone, const timeline& line, long long time) noexcept
{
    const unsigned long long since =
        static_cast<unsigned long long>(time) - static_cast<unsigned long long>(zone.origin);
    if (since >= zone.length)
        return kind_at(zone, line, moved(time, folds_inward(zone, time)));
    const long long* const found = std::upper_bound(line.at, line.at + zone.count, time);
    return zone.kinds[zone.kind_of[found - line.at]];
}

table_stretch stretch_by_standard(const table& zone, long long standard_time) noexcept
{
    const bool is_before = standard_time < zone.origin;
    if (!is_before && standard_time < end_of(zone)) [[likely]]
        return stretch_inside(zone, standard_time);
    if (is_before && !zone.folds_back)
        return {LLONG_MIN, zone.origin, &zone.first};
    if (!is_before && !zone.folds_forward)
        return {end_of(zone), LLONG_MAX, &zone.last};
    const long long folds = folds_inward(zone, standard_time);
    table_stretch found = stretch_inside(zone, moved(standard_time, folds));
    found.first = moved(found.first, -folds);
    found.end = moved(found.end, -folds);
    return found;
}

change next_change(const table& zone, long long standard_time) noexcept
{
    long long folds = 0;
    if (standard_time < zone.origin) {
        if (!zone.folds_back)
            return next_inside(zone, zone.origin - 1);
        folds = folds_inward(zone, standard_time);
    } else if (standard_time >= end_of(zone)) {
        if (!zone.folds_forward)
            return none;
        folds = folds_inward(zone, standard_time);
    }
    if (const change found = next_inside(zone, moved(standard_time, folds)))
        return moved(found, -folds);
    if (!zone.folds_forward)
        return none;
    // The slots have no more: it is the first of their last 400 years, come again.
    return moved(next_inside(zone, moved(end_of(zone), -1) - 1), 1 - folds);
}

change previous_change(const table& zone, long long standard_time) noexcept
{
    if (standard_time < zone.origin) {
        if (!zone.folds_back)
            return none;
        const long long folds = folds_inward(zone, standard_time);
        if (const change found = previous_inside(zone, moved(standard_time, folds)))
            return moved(found, -folds);
        return moved(previous_inside(zone, moved(zone.origin, 1) - 1), -folds - 1);
    }
    if (standard_time < end_of(zone)) {
        const change found = previous_inside(zone, standard_time);
        if (found || !zone.folds_back)
            return found;
        return moved(previous_inside(zone, moved(zone.origin, 1) - 1), -1);
    }
    const change last = previous_inside(zone, end_of(zone) - 1);
    if (!zone.folds_forward)
        return last;
    const long long folds = folds_inward(zone, standard_time);
    const change found = previous_inside(zone, moved(standard_time, folds));
    const long long window = moved(end_of(zone), -1);
    return found && found.at >= window ? moved(found, -folds) : moved(last, -folds - 1);
}

}
