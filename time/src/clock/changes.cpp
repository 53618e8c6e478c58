#include <time/local.h>

#include <algorithm>
#include <array>

#include <time/error.h>

#include "zone_clock.h"

using namespace zone_clock;

// A table tells its changes. By rules a zone's clocks can change where a rule has a point and where a year
// begins, as rules hold for years. Between two such stops nothing changes, but for rules of a user's own:
// these are asked once a day as well.

namespace {

constexpr ka_time_period hour(3600);
constexpr ka_time_period day(86400);
constexpr short first_year = -4713;
constexpr short last_year = 32766;

/// The stops of a year in order, on the standard clock.
class stops {
public:
    stops(const ka_time_zone& zone, short year)
    {
        add(midnight_of(ka_date(1, 1, year)));
        for_each_rule(zone, [&](const ka_time_zone_rule& rule) {
            if (rules::is_simple(rule) && !rules::covers(rule, year))
                return;
            add_point(rule.start_point(), year);
            add_point(rule.end_point(), year);
        });
        if (year == last_year)
            add(last_time);
        std::sort(times_.begin(), times_.begin() + count_);
    }

    const ka_time_period* begin() const { return times_.data(); }
    const ka_time_period* end() const { return times_.data() + count_; }

private:
    void add(const ka_time_period& time) { times_[static_cast<std::size_t>(count_++)] = time; }

    void add_point(const ka_calendar_date& point, short year)
    {
        try {
            add(midnight_of(point.date(year)) + point.time());
        } catch (const ka_time_varnel_error&) {
            // A year without this day. If that matters, the rule says so when it is asked.
        }
    }

    /// New Year, two points of each of seven rules, and the end of the range.
    std::array<ka_time_period, 16> times_;
    int count_ = 0;
};

/// How far nothing of a year can change unseen between two of its stops. What
/// a user's own rules do is seen when they are asked alone.
ka_time_period step_of(const ka_time_zone& zone, short year)
{
    ka_time_period step = last_time;
    for_each_rule(zone, [&](const ka_time_zone_rule& rule) {
        if (!rules::is_simple(rule))
            step = std::min(step, rules::covers(rule, year) ? hour : day);
    });
    return step;
}

bool is_covered(const ka_time_zone& zone, short year)
{
    bool is_any = false;
    for_each_rule(zone, [&](const ka_time_zone_rule& rule) {
        is_any |= rules::covers(rule, year) || !rules::is_simple(rule);
    });
    return is_any;
}

short next_year(short year) { return static_cast<short>(year == -1 ? 1 : year + 1); }
short previous_year(short year) { return static_cast<short>(year == 1 ? -1 : year - 1); }

/// Walks over the standard clock of a zone to a change. Wherever it stands, it
/// knows the adjustment there.
class walk {
public:
    walk(const ka_time_zone& zone, const ka_time_period& start)
        : zone_(zone), at_(start), adjustment_(adjustment_at(zone, start))
    {}

    const ka_time_period& at() const { return at_; }

    /// On to a stop. Whether it came over a change, at which it then stands.
    bool goes_on_to(const ka_time_period& stop, const ka_time_period& step)
    {
        while (at_ < stop) {
            const ka_time_period next = stop - at_ > step ? at_ + step : stop;
            const ka_time_period before = next - microsecond;
            if (holds_at(before) && holds_at(next)) {
                at_ = next;
                continue;
            }
            at_ = holds_at(before)
                      ? next
                      : bisected(at_, before, [&](const ka_time_period& time) { return !holds_at(time); });
            return true;
        }
        return false;
    }

    /// Back to a stop, or to the one microsecond before that.
    bool goes_back_to(const ka_time_period& stop, const ka_time_period& step)
    {
        while (at_ >= stop) {
            const ka_time_period next = at_ - stop > step ? at_ - step : stop;
            if (!holds_at(next)) {
                at_ = bisected(next, at_, [&](const ka_time_period& time) { return holds_at(time); });
                return true;
            }
            at_ = next;
            if (next == first_time)
                return false;
            if (!holds_at(next - microsecond))
                return true;
            at_ = next - microsecond;
        }
        return false;
    }

private:
    bool holds_at(const ka_time_period& time) const { return adjustment_at(zone_, time) == adjustment_; }

    const ka_time_zone& zone_;
    ka_time_period at_;
    ka_time_period adjustment_;
};

ka_zone_change change_of(const ka_time_zone& zone, const ka_time_period& at)
{
    const change found = change_at(zone, at);
    return {moment_of(zone, at), zone.offset() - found.before, zone.offset() - found.after};
}

ka_zone_change change_of(const ka_time_zone& zone, const rules::change& found)
{
    return {moment_of(zone, ka_time_period(found.at)),
            zone.offset() - ka_time_period(found.before->adjustment),
            zone.offset() - ka_time_period(found.after->adjustment)};
}

/// A change of the table can be one of names alone.
bool moves_clocks(const rules::change& found) { return found.before->adjustment != found.after->adjustment; }

std::optional<ka_zone_change> next_by_table(const ka_time_zone& zone, const rules::table& table,
                                            const ka_time_period& start)
{
    long long at = start.whole_seconds();
    while (const rules::change found = rules::next_change(table, at)) {
        at = found.at;
        if (ka_time_period(at) > last_time)
            break;
        if (moves_clocks(found))
            return change_of(zone, found);
    }
    return std::nullopt;
}

std::optional<ka_zone_change> previous_by_table(const ka_time_zone& zone, const rules::table& table,
                                                const ka_time_period& start)
{
    long long at = start.whole_seconds();
    while (const rules::change found = rules::previous_change(table, at)) {
        at = found.at - 1;
        if (ka_time_period(found.at) <= first_time)
            break;
        if (moves_clocks(found))
            return change_of(zone, found);
    }
    return std::nullopt;
}

/// Where a walk from a moment begins. A zone without rules has no changes.
std::optional<ka_time_period> start_of_walk(const ka_time_zone& zone, const ka_time_and_date& moment)
{
    if (!zone.dst_observed())
        return std::nullopt;
    return moment.utc_time_and_date() - zone.offset();
}

}

std::optional<ka_zone_change> ka_next_change(const ka_time_zone& zone, const ka_time_and_date& moment)
{
    const std::optional<ka_time_period> start = start_of_walk(zone, moment);
    if (!start || *start >= last_time)
        return std::nullopt;
    const ka_time_period begin = std::max(*start, first_time);
    if (const rules::table* const table = table_with_times(zone))
        return next_by_table(zone, *table, begin);
    walk on(zone, begin);
    for (short year = ka_access::date_of(on.at()).year();; year = next_year(year)) {
        if (year == last_year + 1)
            return std::nullopt;
        // What held in a year can end with it.
        if (!is_covered(zone, year) && !is_covered(zone, previous_year(year)))
            continue;
        const ka_time_period step = step_of(zone, year);
        for (const ka_time_period& stop : stops(zone, year))
            if (on.goes_on_to(stop, step))
                return change_of(zone, on.at());
    }
}

std::optional<ka_zone_change> ka_previous_change(const ka_time_zone& zone, const ka_time_and_date& moment)
{
    const std::optional<ka_time_period> start = start_of_walk(zone, moment);
    if (!start || *start <= first_time)
        return std::nullopt;
    const ka_time_period begin = std::min(*start, last_time);
    if (const rules::table* const table = table_with_times(zone))
        return previous_by_table(zone, *table, begin);
    walk back(zone, begin);
    for (short year = ka_access::date_of(back.at()).year();; year = previous_year(year)) {
        if (year == first_year - 1)
            return std::nullopt;
        if (!is_covered(zone, year) && !is_covered(zone, previous_year(year)))
            continue;
        const ka_time_period step = step_of(zone, year);
        const stops all(zone, year);
        for (const ka_time_period* stop = all.end(); stop != all.begin();)
            if (back.goes_back_to(*--stop, step))
                return change_of(zone, back.at());
    }
}
