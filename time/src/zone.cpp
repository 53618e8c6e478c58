#include <time/zone.h>

#include <algorithm>
#include <charconv>
#include <ostream>

#include "rules/effect.h"

namespace {

/// The kind of a zone once a rule is inserted. One that went by a table goes by
/// its rules from then on.
rules::zone_kind kind_with(const ka_time_zone& zone, const ka_time_zone_rule& inserted) noexcept
{
    using kind = rules::zone_kind;
    if (ka_access::kind(zone) == kind::user_defined || !rules::is_simple(inserted))
        return kind::user_defined;
    if (ka_access::kind(zone) == kind::table)
        for (int slot = 0; slot < ka_access::rule_count(zone); ++slot)
            if (!rules::is_simple(*ka_access::rules(zone)[slot]))
                return kind::user_defined;
    return kind::simple;
}

}

ka_time_zone::ka_time_zone(const ka_time_period& offset) : ka_time_zone(offset, "GMT") {}

ka_time_zone::ka_time_zone(const ka_time_period& offset, const std::string& name)
    : ka_time_zone(offset, name, name)
{}

ka_time_zone::ka_time_zone(const ka_time_period& offset, const std::string& name, const std::string& dst_name)
    : name_(name), dst_name_(dst_name), offset_(offset), rules_((new rules::slots)->rules)
{}

ka_time_zone::~ka_time_zone() { delete reinterpret_cast<rules::slots*>(rules_); }

bool ka_time_zone::insert(ka_time_zone_rule& rule) noexcept
{
    if (count_ == rules::slots::count)
        return false;
    ka_time_zone_rule** const end = rules_ + count_;
    ka_time_zone_rule** const place =
        std::find_if(rules_, end, [&](const ka_time_zone_rule* held) { return !(rule < *held); });
    std::move_backward(place, end, end + 1);
    *place = &rule;
    ++count_;
    kind_ = kind_with(*this, rule);
    return true;
}

const ka_time_zone_rule* ka_time_zone::rule(int index) const noexcept
{
    return 0 <= index && index < rules::slots::count ? rules_[index] : nullptr;
}

const ka_time_zone_rule* ka_time_zone::rule(const ka_time& time, const ka_date& date) const
{
    return rules::find_rule(*this, time, date);
}

ka_time_period ka_time_zone::offset(const ka_time& time, const ka_date& date) const
{
    const rules::effect effect = rules::effect_at<rules::clock::local>(*this, time, date);
    return effect.is_moved ? offset_ - effect.adjustment : offset_;
}

ka_time_period ka_time_zone::dst_adjustment(const ka_time& time, const ka_date& date) const
{
    return rules::effect_at<rules::clock::local>(*this, time, date).adjustment;
}

bool ka_time_zone::is_dst(const ka_time& time, const ka_date& date) const
{
    return rules::effect_at<rules::clock::local>(*this, time, date).is_dst;
}

std::string ka_time_zone::name() const { return name(name_, offset_); }

std::string ka_time_zone::dst_name() const
{
    return dst_observed() ? name(dst_name_, offset_ - ka_time_period(3600)) : dst_name_;
}

std::string ka_time_zone::name(const ka_time& time, const ka_date& date) const
{
    const rules::effect effect = rules::effect_at<rules::clock::local>(*this, time, date);
    return rules::name_under(*this, effect.is_dst, effect.told);
}

std::string rules::name_under(const ka_time_zone& zone, bool is_dst, const kind* told)
{
    if (told == nullptr || ka_access::changes(zone).abbreviations == nullptr)
        return is_dst ? zone.dst_name() : zone.name();
    const char* const abbreviation = ka_access::changes(zone).abbreviations + told->abbreviation;
    return ka_access::name(abbreviation, zone.offset() - ka_time_period(told->adjustment));
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
