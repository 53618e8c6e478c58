#pragma once

#include <time/date.h>
#include <time/time_of_day.h>
#include <time/timedate.h>
#include <time/tperiod.h>
#include <time/zone.h>

#include "rules/slots.h"

/// What the library opens to itself in its classes; this list is all of it.
struct ka_access {
    // Values of numbers that are known to be right.

    static constexpr ka_time_period period(long long seconds, int microseconds) noexcept
    {
        return ka_time_period::unchecked(seconds, microseconds);
    }
    static constexpr ka_time time(int second_of_day, int microsecond) noexcept
    {
        return ka_time::unchecked(second_of_day, microsecond);
    }
    static constexpr int second_of_day(const ka_time& time) noexcept
    {
        return static_cast<int>(time.second_of_day());
    }
    static constexpr ka_date date(int julian_day) noexcept { return ka_date::unchecked(julian_day); }
    /// The date of the whole days from day number 0, or `invalid_day`.
    static constexpr ka_date date_of(const ka_time_period& since_day_zero) { return ka_date(since_day_zero); }
    /// The date of a record, or `invalid_date`.
    static ka_date date_of(const std::tm& fields) { return ka_date(fields); }

    /// What hosts of 1.0 call: `hosts_of_1_0.cpp`.
    struct refusals_of_1_0;

    // Zones.

    using rule_kind = ka_time_zone::rule_kind;
    static const ka_time_period& offset(const ka_time_zone& zone) noexcept { return zone.offset_; }
    static rule_kind kind(const ka_time_zone& zone) noexcept { return zone.kind_; }
    static int rule_count(const ka_time_zone& zone) noexcept { return zone.count_; }
    /// The rules in their slots, as many as the zone has.
    static const ka_time_zone_rule* const* rules(const ka_time_zone& zone) noexcept { return zone.rules_; }
    /// The table of a zone that goes by one.
    static const rules::table& changes(const ka_time_zone& zone) noexcept
    {
        return *reinterpret_cast<const rules::slots*>(zone.rules_)->changes;
    }
    static std::string name(const std::string& stem, const ka_time_period& offset)
    {
        return ka_time_zone::name(stem, offset);
    }
    /// The name without its number, in standard or in daylight time.
    static const std::string& stem(const ka_time_zone& zone, bool is_dst) noexcept
    {
        return is_dst ? zone.dst_name_ : zone.name_;
    }
    /// Has a zone go by a table, until a rule is inserted. The zone's offset is of
    /// whole seconds, and the table moves no clock by a week or more. The rules
    /// stay the zone's own: those of the built-in zones define their tables.
    static void go_by(ka_time_zone& zone, const rules::table& changes) noexcept
    {
        reinterpret_cast<rules::slots*>(zone.rules_)->changes = &changes;
        zone.kind_ = rule_kind::table;
    }
    struct built_in_zones;

    // Moments.

    struct statics;
    struct user_language;
    static const ka_time_period& instant(const ka_time_and_date& moment) noexcept { return moment.instant_; }
};
