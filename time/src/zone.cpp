#include <time/zone.h>

#include <algorithm>
#include <charconv>
#include <ostream>

#include "rules/effect.h"

namespace {

constexpr int max_rules = 7;

}

ka_time_zone::ka_time_zone(const ka_time_period& offset) : ka_time_zone(offset, "GMT") {}

ka_time_zone::ka_time_zone(const ka_time_period& offset, const std::string& name)
    : ka_time_zone(offset, name, name)
{}

ka_time_zone::ka_time_zone(const ka_time_period& offset, const std::string& name, const std::string& dst_name)
    : name_(name), dst_name_(dst_name), offset_(offset), rules_(new ka_time_zone_rule* [max_rules] {})
{}

ka_time_zone::~ka_time_zone() { delete[] rules_; }

bool ka_time_zone::insert(ka_time_zone_rule& rule) noexcept
{
    if (count_ == max_rules)
        return false;
    ka_time_zone_rule** const end = rules_ + count_;
    ka_time_zone_rule** const place =
        std::find_if(rules_, end, [&](const ka_time_zone_rule* held) { return !(rule < *held); });
    std::move_backward(place, end, end + 1);
    *place = &rule;
    ++count_;
    if (!rules::is_simple(rule))
        kind_ = rule_kind::user_defined;
    return true;
}

const ka_time_zone_rule* ka_time_zone::rule(int index) const noexcept
{
    return 0 <= index && index < max_rules ? rules_[index] : nullptr;
}

const ka_time_zone_rule* ka_time_zone::rule(const ka_time& time, const ka_date& date) const
{
    rules::known_date known;
    return rules::find_rule(*this, time, date, known);
}

ka_time_period ka_time_zone::offset(const ka_time& time, const ka_date& date) const
{
    const ka_time_zone_rule* const in_effect = rule(time, date);
    return in_effect != nullptr ? offset_ - in_effect->adjustment() : offset_;
}

ka_time_period ka_time_zone::dst_adjustment(const ka_time& time, const ka_date& date) const
{
    const ka_time_zone_rule* const in_effect = rule(time, date);
    return in_effect != nullptr ? in_effect->adjustment() : ka_time_period();
}

bool ka_time_zone::is_dst(const ka_time& time, const ka_date& date) const
{
    return rule(time, date) != nullptr;
}

std::string ka_time_zone::name() const { return name(name_, offset_); }

std::string ka_time_zone::dst_name() const
{
    return dst_observed() ? name(dst_name_, offset_ - ka_time_period(3600)) : dst_name_;
}

std::string ka_time_zone::name(const ka_time& time, const ka_date& date) const
{
    return is_dst(time, date) ? dst_name() : name();
}

void ka_time_zone::print(std::ostream& stream) const
{
    std::string text = "ka_time_zone( " + name();
    if (dst_observed())
        text += ", " + dst_name();
    text += " )";
    stream << text;
}

std::string ka_time_zone::name(const std::string& stem, const ka_time_period& offset)
{
    // "UTC" shows the usual sign, positive to the east. Wider than the hours,
    // so that the lowest count has an opposite.
    const bool is_utc = stem == "UTC";
    const long long hours = is_utc ? -static_cast<long long>(offset.to_hours()) : offset.to_hours();
    char digits[12];
    char* const end = std::to_chars(digits, digits + sizeof digits, hours).ptr;

    std::string text = stem;
    if (is_utc && hours > 0)
        text += '+';
    return text.append(digits, end);
}
