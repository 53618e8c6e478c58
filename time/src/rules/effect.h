#pragma once

#include "../access.h"
#include "simple.h"
#include "table.h"
#include "user_defined.h"

namespace rules {

using zone_kind = ka_access::rule_kind;

/// Which clock a zone is asked on: the standard one when a moment is read, the
/// local one when it is set. Rules are asked the same on both; a table knows what
/// each means by a time.
enum class clock { standard, local };

/// What a zone does to its clocks at one time.
struct effect {
    /// Whether the local clock differs from the standard clock, and how far it is
    /// ahead.
    bool is_moved = false;
    ka_time_period adjustment;
    bool is_dst = false;
    /// What the table of the zone tells, in a zone that goes by one.
    const kind* told = nullptr;
};

inline effect effect_of(const ka_time_zone_rule* rule) noexcept
{
    return rule != nullptr ? effect{true, rule->adjustment(), true, nullptr} : effect{};
}

inline effect effect_of(const kind& told) noexcept
{
    return {told.adjustment != 0, ka_time_period(told.adjustment), told.is_dst, &told};
}

inline bool has_rules(const ka_time_zone& zone) noexcept { return ka_access::rule_count(zone) != 0; }

/// The rule in effect at a time on a date, or null: whatever the kind of the zone,
/// its rules are the definition. `parts` are those of the date.
[[gnu::always_inline]] inline const ka_time_zone_rule* find_rule(const ka_time_zone& zone,
                                                                 const ka_time& time, const ka_date& date,
                                                                 const ka_gregorian::date_parts& parts)
{
    if (!has_rules(zone))
        return nullptr;
    if (ka_access::kind(zone) != zone_kind::simple) [[unlikely]]
        return find_by_asking(zone, time, date);
    return find_simple(zone, time, date, {parts.year, parts.month});
}

[[gnu::always_inline]] inline const ka_time_zone_rule* find_rule(const ka_time_zone& zone,
                                                                 const ka_time& time, const ka_date& date)
{
    if (!has_rules(zone))
        return nullptr;
    return find_rule(zone, time, date, ka_gregorian::split(date.julian_day()));
}

/// What holds when a clock of a zone that goes by its table shows a time.
template <clock Asked>
[[gnu::always_inline]] inline const kind& kind_at(const ka_time_zone& zone, long long seconds) noexcept
{
    const table& changes = ka_access::changes(zone);
    return Asked == clock::standard ? kind_by_standard(changes, seconds) : kind_by_local(changes, seconds);
}

/// The same where the table's index tells it; else false.
template <clock Asked>
[[gnu::always_inline]] inline bool find_by_index(const kind*& told, const ka_time_zone& zone,
                                                 long long seconds) noexcept
{
    const table& changes = ka_access::changes(zone);
    return find_by_index(told, changes, Asked == clock::standard ? changes.read : changes.set, seconds);
}

/// What a zone is called: by its table, where that has names, else as in standard
/// or in daylight time.
std::string name_under(const ka_time_zone& zone, bool is_dst, const kind* told);

/// A date that the calendar does not have is for the rules to refuse.
template <clock Asked>
[[gnu::always_inline]] inline effect effect_at(const ka_time_zone& zone, const ka_time& time,
                                               const ka_date& date)
{
    if (ka_access::kind(zone) == zone_kind::table && ka_date::is_julian_day(date.julian_day()))
        return effect_of(kind_at<Asked>(zone, date.julian_day() * 86400ll + ka_access::second_of_day(time)));
    return effect_of(find_rule(zone, time, date));
}

}
