#pragma once

#include <cstddef>
#include <cstdint>

// A zone's changes as a table, and the way from a clock to what holds then. It
// serves the zones of the world, whose tables are built when they are loaded,
// and can serve zones whose rules are known to the compiler.
//
// All times are seconds from midnight at the start of day number 0. A moment is
// read by the standard clock (universal time less the zone's standard offset),
// and set by the local clock that the caller hands in. A change at the standard
// time T holds for setting from T plus the smaller of the adjustments before and
// after it: local times that it skips then read back earlier, and of those that
// it repeats the later is meant.
//
// The time is cut into slots of 2^23 s, 97 days. Nearly every slot has one change
// or none, and one word tells all of it: the second of the slot from which on the
// later kind holds, and a row of the pairs of kinds. No branch depends on the
// season, so nothing has to be foretold. Slots with more changes are searched.

namespace rules {

/// What holds in a stretch of time between two changes.
struct alignas(16) kind {
    /// Seconds that the local clock is ahead of the standard clock.
    int adjustment = 0;
    /// Seconds from local to universal time, positive west of Greenwich.
    int offset = 0;
    /// Where the abbreviation begins in the table's text.
    unsigned short abbreviation = 0;
    bool is_dst = false;

    constexpr bool operator==(const kind&) const = default;
};

/// What holds before and after a change.
struct kind_pair {
    kind before;
    kind after;
};

inline constexpr int slot_bits = 23;
inline constexpr unsigned long long slot_length = 1ull << slot_bits;
/// The row of a slot whose changes have to be searched.
inline constexpr std::uint32_t searched_row = 255;
/// After so many seconds the Gregorian calendar repeats, weekdays and all.
inline constexpr unsigned long long fold_length = 146097ull * 86400;

/// The times of all changes, by one of the two clocks, in ascending order, with
/// their index. A table that is never searched needs the slots alone.
struct timeline {
    /// The row of pairs in the upper 8 bits, in the lower 24 the second of the
    /// slot from which on the later kind holds; 2^23 where none does.
    const std::uint32_t* slots = nullptr;
    const long long* at = nullptr;
};

/// A view of a table: it owns nothing.
struct table {
    /// The start of the first slot, and the seconds that the slots tell of.
    long long origin = 0;
    unsigned long long length = 0;
    timeline read;
    timeline set;
    const kind_pair* pairs = nullptr;
    /// The number of changes in the timelines, and what holds before the first
    /// and after each of them, as indexes of `kinds`. Null in a table
    /// without times.
    std::size_t count = 0;
    const unsigned char* kind_of = nullptr;
    const kind* kinds = nullptr;
    std::size_t kind_count = 0;
    /// Each with a zero behind it. Null in a table without abbreviations.
    const char* abbreviations = nullptr;
    /// The name of the zone in the tz data; null where it has none.
    const char* name = nullptr;
    /// What holds before the slots, and behind them where nothing folds.
    kind first;
    kind last;
    /// Whether times behind the slots are as they were whole multiples of 400
    /// years before. The last 400 years of the slots must repeat then.
    bool folds_forward = false;
    /// The same for times before the slots. All of the slots must repeat then.
    bool folds_back = false;
};

/// Finds what the index of the slots tells of a time; false where it takes a
/// search, or where the table folds.
[[gnu::always_inline]] constexpr bool find_by_index(const kind*& told, const table& zone,
                                                    const timeline& line, long long time) noexcept
{
    const unsigned long long since =
        static_cast<unsigned long long>(time) - static_cast<unsigned long long>(zone.origin);
    if (since >= zone.length) {
        const bool is_before = time < zone.origin;
        told = is_before ? &zone.first : &zone.last;
        return !(is_before ? zone.folds_back : zone.folds_forward);
    }
    const std::uint32_t word = line.slots[since >> slot_bits];
    const std::uint32_t row = word >> 24;
    if (row == searched_row) [[unlikely]]
        return false;
    const auto second = static_cast<std::uint32_t>(since & (slot_length - 1));
    const kind_pair& pair = zone.pairs[row];
    told = second >= (word & 0xffffff) ? &pair.after : &pair.before;
    return true;
}

/// What holds at a time that the index does not tell.
const kind& kind_off_index(const table& zone, const timeline& line, long long time) noexcept;

[[gnu::always_inline]] inline const kind& kind_at(const table& zone, const timeline& line,
                                                  long long time) noexcept
{
    const kind* told = nullptr;
    return find_by_index(told, zone, line, time) ? *told : kind_off_index(zone, line, time);
}

/// What holds when the standard clock shows a time.
[[gnu::always_inline]] inline const kind& kind_by_standard(const table& zone,
                                                           long long standard_time) noexcept
{
    return kind_at(zone, zone.read, standard_time);
}

/// What a local time handed in means.
[[gnu::always_inline]] inline const kind& kind_by_local(const table& zone, long long local_time) noexcept
{
    return kind_at(zone, zone.set, local_time);
}

/// A change as the standard clock shows it.
struct change {
    long long at;
    const kind* before;
    const kind* after;

    explicit operator bool() const noexcept { return before != nullptr; }
};

/// The first change after a standard time, and the last one at it or before it;
/// nothing where there is none.
change next_change(const table& zone, long long standard_time) noexcept;
change previous_change(const table& zone, long long standard_time) noexcept;

/// What holds from a standard time on, before another.
struct table_stretch {
    long long first;
    long long end;
    const kind* told;
};

/// A stretch around a standard time. It ends at a change or with its slot, and
/// outside the slots of a table that does not fold at an end of 64 bits.
table_stretch stretch_by_standard(const table& zone, long long standard_time) noexcept;

/// The number of slots that cover a span of time.
constexpr std::size_t slots_for(unsigned long long length) noexcept
{
    return static_cast<std::size_t>((length + slot_length - 1) >> slot_bits);
}

/// Fills the slots of a timeline, none of whose times comes before the origin.
/// `rows` has the row of each change, or `searched_row` where there is none for
/// it, and then a row whose earlier kind is what holds in the end.
constexpr void fill_slots(std::uint32_t* slots, std::size_t slot_count, long long origin, const long long* at,
                          const unsigned char* rows, std::size_t count) noexcept
{
    std::size_t over = 0;
    long long end = origin;
    for (std::size_t slot = 0; slot < slot_count; ++slot) {
        const long long start = end;
        end += static_cast<long long>(slot_length);
        const std::size_t first = over;
        while (over < count && at[over] < end)
            ++over;
        const std::uint32_t row = over - first > 1 ? searched_row : rows[first];
        const std::uint32_t second =
            over == first ? slot_length : static_cast<std::uint32_t>(at[first] - start);
        slots[slot] = row << 24 | second;
    }
}

}
