#pragma once

#include <algorithm>
#include <array>

#include <time/inline/gregorian.h>

#include "catalogue_rows.h"
#include "table.h"

// The changes of the built-in zones as tables, which the compiler works out from
// the rows of the catalogue. A table is on the standard clock, so zones that share
// their rules share it.

namespace catalogue {

inline constexpr rules::kind standard_time{};
inline constexpr rules::kind daylight_time{3600, 0, 0, true};

/// By twice what holds before a change, and what holds after it, daylight time as 1.
inline constexpr rules::kind_pair pairs[] = {{standard_time, standard_time},
                                             {standard_time, daylight_time},
                                             {daylight_time, standard_time},
                                             {daylight_time, daylight_time}};

constexpr long long new_year(int year) { return ka_gregorian::day_number(1, 1, year) * 86400ll; }

constexpr long long second_of(const point_row& point, int year)
{
    const int first = ka_gregorian::day_number(point.month, 1, year);
    const int end = first + ka_gregorian::month_length(point.month, ka_gregorian::is_leap(year));
    const int day = point.week == ka_none ? first + point.day - 1
                                          : ka_gregorian::nth_weekday(first, end, point.week, point.day);
    return day * 86400ll + point.hour * 3600;
}

/// The rule of a year, or `rule_count`. No two rules of a zone share a year.
constexpr rule_id rule_of_year(const rule_list& list, int year)
{
    for (const rule_id id : list.rules)
        if (id != rule_count && rule_table[id].first_year <= year &&
            (year <= rule_table[id].last_year || rule_table[id].last_year == open_ended))
            return id;
    return rule_count;
}

constexpr int first_year(const rule_list& list)
{
    int year = rule_table[list.rules[0]].first_year;
    for (const rule_id id : list.rules)
        if (id != rule_count)
            year = std::min<int>(year, rule_table[id].first_year);
    return year;
}

/// The latest rule has no end, and after 400 years the calendar comes again.
constexpr int end_year(const rule_list& list) { return rule_table[list.rules[0]].first_year + 400; }

constexpr bool has_no_end(const rule_list& list) { return rule_table[list.rules[0]].last_year == open_ended; }

template <const rule_list& List>
struct built_changes {
    static_assert(has_no_end(List));
    static constexpr int years = end_year(List) - first_year(List);

    /// The times of the changes, with the row of each; behind them a row for the end.
    struct timeline {
        std::array<long long, 3 * years> at = {};
        std::array<unsigned char, 3 * years + 1> row = {};
        std::size_t count = 0;
        bool is_dst = false;

        constexpr void put(long long time, bool begins)
        {
            if (begins == is_dst)
                return;
            is_dst = begins;
            at[count] = time;
            row[count++] = begins ? 1 : 2;
            row[count] = begins ? 3 : 0;
        }
    };

    static constexpr timeline changes = [] {
        timeline line;
        for (int year = first_year(List); year < end_year(List); ++year) {
            const rule_id rule = rule_of_year(List, year);
            if (rule == rule_count) {
                line.put(new_year(year), false);
                continue;
            }
            const long long start = second_of(point_table[rule_table[rule].start], year);
            const long long end = second_of(point_table[rule_table[rule].end], year);
            line.put(new_year(year), end < start);
            line.put(std::min(start, end), start < end);
            line.put(std::max(start, end), end < start);
        }
        return line;
    }();

    /// The last day before the first year from which on no slot has two changes,
    /// so that none is searched.
    static constexpr long long origin = [] {
        const auto slot_of = [](long long time, long long start) {
            return (time - start) >> rules::slot_bits;
        };
        long long start = new_year(first_year(List));
        for (std::size_t i = 1; i < changes.count; ++i)
            while (slot_of(changes.at[i - 1], start) == slot_of(changes.at[i], start)) {
                start -= 86400;
                i = 1;
            }
        return start;
    }();
    static constexpr auto length = static_cast<unsigned long long>(new_year(end_year(List)) - origin);

    static constexpr std::array<std::uint32_t, rules::slots_for(length)> slots = [] {
        std::array<std::uint32_t, rules::slots_for(length)> filled = {};
        rules::fill_slots(filled.data(), filled.size(), origin, changes.at.data(), changes.row.data(),
                          changes.count);
        return filled;
    }();
};

/// The table of a list of rules.
template <const rule_list& List>
inline constexpr rules::table changes_of = {
    .origin = built_changes<List>::origin,
    .length = built_changes<List>::length,
    .read = {built_changes<List>::slots.data(), nullptr},
    .set = {built_changes<List>::slots.data(), nullptr},
    .pairs = pairs,
    .first = standard_time,
    .last = standard_time,
    .folds_forward = true,
};

constexpr bool is_same_rule(const rule_row& one, const rule_row& other)
{
    return one.start == other.start && one.end == other.end && one.first_year == other.first_year &&
           one.last_year == other.last_year;
}

/// The same for a list that holds the latest rule of another and no more: the
/// slots of the other from New Year of the first year on.
template <const rule_list& List, const rule_list& Whole>
inline constexpr rules::table latest_changes_of = [] {
    constexpr long long start = new_year(first_year(List));
    constexpr long long skipped = (start - built_changes<Whole>::origin) >> rules::slot_bits;
    constexpr std::uint32_t first_slot = built_changes<Whole>::slots[skipped];
    static_assert(is_same_rule(rule_table[List.rules[0]], rule_table[Whole.rules[0]]));
    static_assert(List.rules[1] == rule_count);
    static_assert((first_slot & 0xffffff) == rules::slot_length); // no change
    static_assert(!pairs[first_slot >> 24].before.is_dst);

    rules::table view = changes_of<Whole>;
    view.origin += skipped << rules::slot_bits;
    view.length -= static_cast<unsigned long long>(skipped << rules::slot_bits);
    view.read.slots += skipped;
    view.set.slots += skipped;
    return view;
}();

}
