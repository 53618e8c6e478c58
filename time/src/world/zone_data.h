#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <time/inline/gregorian.h>

// What tz files and TZ strings tell, before it becomes a table.

namespace world {

/// Midnight on 1 January 1970, in seconds from day number 0.
inline constexpr long long unix_epoch = ka_gregorian::unix_epoch * 86400ll;

/// What is wrong with bytes or a text, and at which of them.
struct fault {
    const char* what;
    std::size_t place;
};

/// A kind of local time.
struct local_type {
    /// Seconds that local time is ahead of universal time, positive in the east.
    int east = 0;
    bool is_dst = false;
    std::string abbreviation;

    bool operator==(const local_type&) const = default;
};

/// A day of the year and a time on it.
struct yearly_point {
    enum class form { julian, day_of_year, weekday };

    form kind = form::weekday;
    /// 1 to 365 without 29 February, or 0 to 365 with it.
    int day = 0;
    int month = 0;
    /// 1 to 5, which is the last.
    int week = 0;
    /// From 0, Sunday.
    int weekday = 0;
    /// Seconds from midnight, of either sign.
    int time = 7200;

    /// Seconds of the local clock from day number 0, in a year after -4800. The
    /// year before 1 is 0.
    long long in(long long year) const noexcept;
};

/// What a TZ string says: standard time, and summer time between two points.
struct yearly_rules {
    local_type standard;
    bool has_summer = false;
    local_type summer;
    yearly_point start;
    yearly_point end;
};

/// The changes of a zone on the universal clock, in seconds from day number 0.
struct zone_data {
    std::vector<long long> at;
    /// What holds from each change on; before the first, type 0 holds.
    std::vector<unsigned char> type_of;
    std::vector<local_type> types;
    /// What holds after the last change, if it is told.
    bool has_rules = false;
    yearly_rules rules;
};

}
