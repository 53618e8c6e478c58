#pragma once

// Classes derived from those of the library, which open what a host's own
// derived class may use.

#include <string>

#include <time/time_varnel.h>

struct opened_date : ka_date {
    explicit opened_date(const std::tm& fields) : ka_date(fields) {}
    using ka_date::date;
};

struct opened_wint : ka_wint {
    explicit opened_wint(const ka_wint& value) : ka_wint(value) {}
    opened_wint(const unsigned short& digit, unsigned int index) : ka_wint(digit, index) {}
    using ka_wint::abs, ka_wint::digits, ka_wint::divide, ka_wint::make_negative, ka_wint::normalize,
        ka_wint::same_sign;
};

struct opened_moment : ka_time_and_date {
    template <typename... Values>
    static std::string text(const std::string& format, const Values&... values)
    {
        return formatted(format, values...);
    }
};

struct opened_zone : ka_time_zone {
    using ka_time_zone::find, ka_time_zone::ka_time_zone, ka_time_zone::name, ka_time_zone::rule;

    /// The rule in a slot of any zone.
    static const ka_time_zone_rule* rule_in_slot(const ka_time_zone& zone, int slot)
    {
        const ka_time_zone_rule* (ka_time_zone::*const rule_of)(int) const = &opened_zone::rule;
        return (zone.*rule_of)(slot);
    }
};
