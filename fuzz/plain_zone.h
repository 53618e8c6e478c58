#pragma once

#include <chrono>
#include <string>
#include <vector>

#include <time/time_varnel.h>
#include <time/world.h>

#include "input.h"

// Zones as the definition has them: no index, no table, no fold.

/// What holds at a moment.
struct plain_state {
    int east;
    bool is_dst;
    std::string abbreviation;

    bool operator==(const plain_state&) const = default;
};

/// A point of the year, as a TZ string has it.
struct plain_point {
    int form, number, month, week, weekday, time;

    /// In four months from one on.
    static plain_point any(input& in, int from)
    {
        plain_point point = {};
        point.form = in.between(0, 2);
        point.month = from + in.between(0, 3);
        point.number = point.month * 30 - in.between(5, 25);
        point.week = in.between(1, 5);
        point.weekday = in.between(0, 6);
        point.time = in.one_in(2) ? in.between(-167 * 3600, 167 * 3600) : 3600 * in.between(0, 4);
        return point;
    }

    std::string text() const
    {
        char day[40];
        if (form == 2)
            std::snprintf(day, sizeof day, ",M%d.%d.%d/", month, week, weekday);
        else
            std::snprintf(day, sizeof day, form == 0 ? ",J%d/" : ",%d/", number);
        return day + clock(time);
    }

    /// Hours, minutes and seconds, with the sign in front.
    static std::string clock(int seconds)
    {
        const int size = seconds < 0 ? -seconds : seconds;
        char text[40];
        std::snprintf(text, sizeof text, "%s%d:%02d:%02d", seconds < 0 ? "-" : "", size / 3600,
                      size / 60 % 60, size % 60);
        return text;
    }

    /// Seconds of the local clock from 1970 on.
    long long in(int year) const
    {
        using namespace std::chrono;
        const auto of = std::chrono::year(year);
        sys_days day = sys_days(of / January / 1);
        if (form == 0)
            day += days(number - 1 + (of.is_leap() && number >= 60));
        else if (form == 1)
            day += days(number);
        else if (week == 5)
            day = of / std::chrono::month(static_cast<unsigned>(month)) /
                  std::chrono::weekday(static_cast<unsigned>(weekday))[last];
        else
            day = of / std::chrono::month(static_cast<unsigned>(month)) /
                  std::chrono::weekday(static_cast<unsigned>(weekday))[static_cast<unsigned>(week)];
        return day.time_since_epoch() / seconds(1) + time;
    }
};

/// A TZ string whose two points keep away from each other and from New Year.
struct plain_rules {
    plain_state standard{}, summer{};
    bool has_summer = false;
    plain_point start{}, end{};

    static plain_rules any(input& in)
    {
        plain_rules rules;
        rules.standard = {in.one_in(4) ? in.between(-50000, 50000) : 1800 * in.between(-24, 24), false,
                          "STD"};
        rules.summer = {rules.standard.east + in.between(-2, 4) * 1800, true, "+0330"};
        rules.has_summer = !in.one_in(4);
        const bool is_north = in.one_in(2);
        rules.start = plain_point::any(in, is_north ? 2 : 8);
        rules.end = plain_point::any(in, is_north ? 8 : 2);
        return rules;
    }

    std::string text() const
    {
        std::string text = standard.abbreviation;
        text.append(plain_point::clock(-standard.east));
        if (has_summer)
            text.append("<")
                .append(summer.abbreviation)
                .append(">")
                .append(plain_point::clock(-summer.east))
                .append(start.text())
                .append(end.text());
        return text;
    }

    /// Whether the rules tell a change after a time, at another or before it.
    bool change_between(long long after, long long until) const
    {
        const int year = static_cast<int>(1970 + after / 31556952);
        for (int of = year - 2; has_summer && of <= year + 2; ++of)
            for (const long long at : {start.in(of)-standard.east, end.in(of)-summer.east})
                if (after < at && at <= until)
                    return true;
        return has_summer && until - after > 400 * 86400;
    }

    const plain_state& at(long long unix_time) const
    {
        const int year = static_cast<int>(1970 + unix_time / 31556952);
        for (int of = year - 2; has_summer && of <= year + 2; ++of) {
            const long long from = start.in(of)-standard.east;
            const long long to_same = end.in(of)-summer.east;
            const long long to = to_same > from ? to_same : end.in(of + 1) - summer.east;
            if (from <= unix_time && unix_time < to)
                return summer;
        }
        return standard;
    }
};

/// What a zone of the library tells of a moment.
inline plain_state state_at(const ka_time_zone& zone, long long unix_time)
{
    ka_time_and_date moment(unix_time);
    moment.time_zone(zone);
    const int east = -ka_offset(moment).to_seconds();
    // The fields are another road to the same.
    const ka_time_and_date shown(moment.time(), moment.date(), ka_time_zone::utc());
    agree(shown - moment == ka_time_period(east), "fields of a world zone");
    return {east, moment.is_dst(), ka_zone_abbreviation(moment)};
}
