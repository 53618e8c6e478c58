#pragma once

#include <cstdio>
#include <ctime>
#include <deque>
#include <string>

#include "../tests/support/opened.h"
#include "values.h"

// The library takes short cuts to which rule is in effect and to what a moment
// reads. Here both are worked out step by step, as their definitions have them.

/// A simple rule, asked like a user-defined rule.
class stepwise_rule : public ka_time_zone_rule {
public:
    explicit stepwise_rule(const ka_time_zone_rule& rule)
        : ka_time_zone_rule(rule.start_point(), rule.end_point(), rule.start_year(), rule.end_year(),
                            rule.adjustment())
    {}

    bool is_in_effect(const ka_time& time, const ka_date& date) const override
    {
        const short year = date.year();
        if (year < start_year() || (end_year() != 0 && end_year() < year))
            return false;
        const ka_date start = start_point().date(year);
        const ka_date end = end_point().date(year);
        if (end < start ? date < start && end < date : date < start || end < date)
            return false;
        if (date == start && time < start_point().time())
            return false;
        return !(date == end && end_point().time() <= time);
    }
};

/// A zone with the same rules, each of them worked out.
struct stepwise_zone {
    explicit stepwise_zone(const own_zone& own) : zone(own.zone.offset())
    {
        for (const ka_simple_time_zone_rule& rule : own.rules)
            zone.insert(rules.emplace_back(rule));
    }

    /// The same for a zone of the library: its table is held against its rules.
    explicit stepwise_zone(const ka_time_zone& built_in) : zone(built_in.offset())
    {
        for (int slot = 6; slot >= 0; --slot)
            if (const ka_time_zone_rule* const rule = opened_zone::rule_in_slot(built_in, slot))
                zone.insert(rules.emplace_back(*rule));
    }

    std::deque<stepwise_rule> rules;
    ka_time_zone zone;
};

/// What a moment shows, by the operations that show it.
inline std::string read(const ka_time_and_date& moment)
{
    const auto time = result_of([&] { return ka_time_period(moment.time()).to_string(); });
    const auto date = result_of([&] { return std::to_string(moment.date().julian_day()); });
    const auto fields = result_of([&] {
        const std::tm record = moment;
        char shown[100];
        std::snprintf(shown, sizeof shown, "%d-%02d-%02d %02d:%02d:%02d %03d %d ", 1900 + record.tm_year,
                      record.tm_mon + 1, record.tm_mday, record.tm_hour, record.tm_min, record.tm_sec,
                      record.tm_yday + 1, record.tm_wday);
        agree(moment.to_string("%Y-%m-%d %H:%M:%S %j %w ") == shown, "text and record of a moment");
        return std::string(shown) + (moment.is_dst() ? "1" : "0") + std::to_string(record.tm_isdst);
    });
    return time + " " + date + " " + fields;
}

/// The same from the definitions, and from what date and time show themselves.
inline std::string read_stepwise(const ka_time_period& instant, const ka_time_zone& zone)
{
    const ka_time_period standard = instant - zone.offset();
    const auto std_date = [&] { return ka_date(standard.to_days()); };
    const auto adjustment = [&] { return zone.dst_adjustment(ka_time(standard), std_date()); };
    const auto local_time = [&] { return ka_time(standard) + adjustment(); };
    const auto local_date = [&] { return ka_date((standard + adjustment()).to_days()); };
    const auto time = result_of([&] { return ka_time_period(local_time()).to_string(); });
    const auto date = result_of([&] { return std::to_string(local_date().julian_day()); });
    const auto fields = result_of([&] {
        return local_date().to_string("%Y-%m-%d ") + local_time().to_string("%H:%M:%S ") +
               local_date().to_string("%j %w ") + (zone.is_dst(ka_time(standard), std_date()) ? "11" : "00");
    });
    return time + " " + date + " " + fields;
}
