#include "stretch.h"

#include <algorithm>

#include "effect.h"

namespace rules {

namespace {

constexpr long long million = 1000000;
constexpr long long day_length = 86400 * million;

constexpr long long range_start = ka_gregorian::first_day * day_length;
constexpr long long range_end = (ka_gregorian::last_day + 1) * day_length;

/// Cut to the range, which every bound of a table may exceed.
long long microsecond_of(long long second) noexcept
{
    return std::clamp(second, range_start / million, range_end / million) * million;
}

/// Whether a year has the day of a point, and none of the ends of the range is near.
bool is_regular(const ka_calendar_date& point, int year) noexcept
{
    if (!is_regular_year(year))
        return false;
    if (point.week() != ka_none)
        return is_in_every_month(point.week());
    return ka_gregorian::is_date(point.month(), point.day(), year);
}

/// A stretch within a month of the standard clock, which the points of the
/// month's rules cut.
class stretch_of_month {
public:
    stretch_of_month(long long time, int julian_day, const ka_gregorian::date_parts& date) noexcept
        : time_(time), date_(date), first_((julian_day - static_cast<int>(date.day) + 1) * day_length),
          end_(first_ +
               day_length * ka_gregorian::month_length(static_cast<int>(date.month),
                                                       ka_gregorian::is_leap(date.astronomical_year)))
    {}

    /// False where a point of this month may have no day in this year.
    bool is_cut_by(const ka_time_zone_rule& rule) noexcept
    {
        return is_cut_by(rule.start_point()) && is_cut_by(rule.end_point());
    }

    long long first() const noexcept { return std::max(first_, range_start); }
    long long end() const noexcept { return end_; }

private:
    bool is_cut_by(const ka_calendar_date& point) noexcept
    {
        if (point.month() != date_.month)
            return true;
        if (!is_regular(point, date_.year))
            return false;
        const ka_date date = point.date(date_.year);
        const ka_time time = point.time();
        const long long cut = date.julian_day() * day_length + ka_access::second_of_day(time) * million +
                              static_cast<long long>(time.microseconds());
        if (cut <= time_)
            first_ = std::max(first_, cut);
        else
            end_ = std::min(end_, cut);
        return true;
    }

    long long time_;
    ka_gregorian::date_parts date_;
    long long first_;
    long long end_;
};

stretch stretch_by_table(const table& changes, long long time) noexcept
{
    const table_stretch found = stretch_by_standard(changes, time / million);
    return {microsecond_of(found.first), microsecond_of(found.end), ka_time_period(found.told->adjustment),
            found.told->is_dst};
}

stretch stretch_by_rules(const ka_time_zone& zone, long long time)
{
    // No time of the range is below zero.
    const auto since = static_cast<unsigned long long>(time);
    const ka_date date = ka_access::date(static_cast<int>(since / day_length));
    const auto since_midnight = static_cast<long long>(since % day_length);
    const ka_gregorian::date_parts parts = ka_gregorian::split(date.julian_day());
    const ka_time_zone_rule* const rule =
        find_rule(zone,
                  ka_access::time(static_cast<int>(since_midnight / million),
                                  static_cast<int>(since_midnight % million)),
                  date, parts);
    const effect told = effect_of(rule);
    const stretch alone{time, time + 1, told.adjustment, told.is_dst};
    if (ka_access::kind(zone) == zone_kind::user_defined)
        return alone;
    if (ka_access::rule_count(zone) == 0)
        return {range_start, range_end, told.adjustment, told.is_dst};
    stretch_of_month month(time, date.julian_day(), parts);
    for (int slot = 0; slot < ka_access::rule_count(zone); ++slot) {
        const ka_time_zone_rule& asked = *ka_access::rules(zone)[slot];
        if (covers(asked, parts.year) && !month.is_cut_by(asked))
            return alone;
    }
    return {month.first(), month.end(), told.adjustment, told.is_dst};
}

}

stretch stretch_around(const ka_time_zone& zone, long long microsecond)
{
    return ka_access::kind(zone) == zone_kind::table ? stretch_by_table(ka_access::changes(zone), microsecond)
                                                     : stretch_by_rules(zone, microsecond);
}

}
