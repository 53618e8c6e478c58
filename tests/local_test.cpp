#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <time/local.h>
#include <time/world.h>

#include "../examples/zones.h"
#include "expect_error.h"
#include "printers.h"

// What local times mean and when the clocks change, against the readings of each
// minute around each change, and in zones that no rule book has.

namespace {

constexpr ka_time_period hour(3600), minute(60), microsecond(0, 1);
constexpr ka_time_period none;

ka_time_and_date universal(const ka_time& time, const ka_date& date, const ka_time_zone& zone)
{
    ka_time_and_date moment;
    moment.utc_time_and_date(time, date);
    moment.time_zone(zone);
    return moment;
}

/// How far the local clock is ahead of the universal one.
ka_time_period ahead(const ka_time_and_date& moment)
{
    return (moment.date() - moment.utc_date()) +
           (static_cast<ka_time_period>(moment.time()) - static_cast<ka_time_period>(moment.utc_time()));
}

/// All changes, by walking from hour to hour: those of a built-in zone are on the hour or half hour.
std::vector<ka_time_and_date> walked_changes(const ka_time_zone& zone, int first_year, int last_year)
{
    std::vector<ka_time_and_date> found;
    ka_time_and_date at = universal(ka_time(), ka_date(1, 1, static_cast<short>(first_year)), zone);
    const ka_time_and_date end = universal(ka_time(), ka_date(1, 1, static_cast<short>(last_year)), zone);
    for (ka_time_period before = ahead(at); at < end; at += 30 * minute) {
        if (ahead(at) == before)
            continue;
        before = ahead(at);
        found.push_back(at);
    }
    return found;
}

/// What each local minute around a change means, from what each minute reads.
void expect_as_read(const ka_time_and_date& change)
{
    const ka_time_zone& zone = change.time_zone();
    std::map<ka_time_period, std::vector<ka_time_and_date>> moments;
    for (ka_time_and_date at = change - 4 * hour; at <= change + 4 * hour; at += minute)
        moments[at.utc_time_and_date() + ahead(at)].push_back(at);
    const ka_time_period first = (change - 2 * hour).utc_time_and_date() + ahead(change - 2 * hour);
    const ka_time_period last = (change + 2 * hour).utc_time_and_date() + ahead(change + 2 * hour);
    for (ka_time_period local = first; local <= last; local += minute) {
        const ka_time time = local;
        const ka_date date = local.to_days();
        SCOPED_TRACE(zone.name() + ", " + shown(date) + ", " + shown(time));
        const std::vector<ka_time_and_date>& read = moments[local];
        const ka_local_moments found = ka_local_times(zone, time, date);
        if (read.empty()) {
            ASSERT_EQ(found.kind, ka_local_kind::skipped);
            ASSERT_EQ(found.earlier.utc_time_and_date() + ahead(change), local);
            ASSERT_EQ(found.later.utc_time_and_date() + ahead(change - microsecond), local);
        } else {
            ASSERT_EQ(found.kind, read.size() == 1 ? ka_local_kind::once : ka_local_kind::repeated);
            ASSERT_EQ(found.earlier, read.front());
            ASSERT_EQ(found.later, read.back());
        }
        // A moment that is set from a local time means one of these.
        const ka_time_and_date set(time, date, zone);
        ASSERT_EQ(set, read.empty() ? found.earlier : found.later);
    }
}

/// In effect on every tenth of a month, from noon to 18:00.
struct afternoons : ka_time_zone_rule {
    afternoons(const ka_calendar_date& point, const ka_time_period& adjustment)
        : ka_time_zone_rule(point, point, 2000, 2010, adjustment)
    {}
    bool is_in_effect(const ka_time& time, const ka_date& date) const override
    {
        return date.day() == 10 && ka_time(12, 0, 0) <= time && time < ka_time(18, 0, 0) &&
               2000 <= date.year() && date.year() <= 2010;
    }
};

}

TEST(local, each_minute_around_each_change_of_each_zone)
{
    int changes = 0;
    for (const named_zone& row : zones)
        for (const int year : {1967, 1974, 1987, 2005, 2024, 2100})
            for (const ka_time_and_date& change : walked_changes(row.zone(), year, year + 2)) {
                ASSERT_NO_FATAL_FAILURE(expect_as_read(change));
                ++changes;
            }
    EXPECT_GT(changes, 200);
}

TEST(local, changes_follow_each_other_both_ways)
{
    for (const named_zone& row : zones) {
        SCOPED_TRACE(row.name);
        const ka_time_zone& zone = row.zone();
        const std::vector<ka_time_and_date> walked = walked_changes(zone, 1960, 2030);
        ka_time_and_date at = universal(ka_time(), ka_date(1, 1, 1960), zone);
        for (const ka_time_and_date& expected : walked) {
            const auto next = ka_next_change(zone, at);
            ASSERT_TRUE(next);
            ASSERT_EQ(next->moment, expected);
            ASSERT_EQ(next->before, none - ahead(expected - microsecond));
            ASSERT_EQ(next->after, none - ahead(expected));
            ASSERT_EQ(ka_next_change(zone, expected - microsecond)->moment, expected);
            ASSERT_EQ(ka_previous_change(zone, expected)->moment, expected);
            if (&expected != &walked.front()) {
                ASSERT_EQ(ka_previous_change(zone, expected - microsecond)->moment, at);
            }
            at = expected;
        }
    }
}

namespace {

/// From a year to the end of the range: none is missing, and each is found from both sides.
void expect_two_a_year(const ka_time_zone& zone, short first_year)
{
    auto next = ka_next_change(zone, universal(ka_time(), ka_date(2, 1, first_year), zone));
    ka_time_and_date at = next->moment;
    for (next = ka_next_change(zone, at); next; next = ka_next_change(zone, at)) {
        ASSERT_LT(next->moment - at, ka_time_period(240, 0, 0, 0)) << shown(at.utc_date());
        ASSERT_EQ(next->before, none - ahead(next->moment - microsecond)) << shown(at.utc_date());
        ASSERT_EQ(next->after, none - ahead(next->moment)) << shown(at.utc_date());
        ASSERT_NE(next->before, next->after) << shown(at.utc_date());
        ASSERT_EQ(ka_previous_change(zone, next->moment)->moment, next->moment);
        ASSERT_EQ(ka_previous_change(zone, next->moment - microsecond)->moment, at);
        at = next->moment;
    }
    EXPECT_EQ(at.utc_date().year(), 32766);
}

}

TEST(local, zones_by_a_table)
{
    // Half an hour; the rule book's own shape of a summer; a summer that lasts over New Year.
    for (const char* const text : {"<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", "CET-1CEST,M3.5.0,M10.5.0/3",
                                   "<-04>4<-03>,M9.1.6/24,M4.1.6/24", "IST-1GMT0,M10.5.0,M3.5.0/1"}) {
        SCOPED_TRACE(text);
        const ka_time_zone& zone = ka_posix_zone(text);
        ka_time_and_date at = universal(ka_time(), ka_date(1, 1, 2024), zone);
        for (const ka_time_and_date& expected : walked_changes(zone, 2024, 2028)) {
            ASSERT_NO_FATAL_FAILURE(expect_as_read(expected));
            ASSERT_EQ(ka_next_change(zone, at)->moment, expected);
            ASSERT_EQ(ka_next_change(zone, at)->after, none - ahead(expected));
            at = expected;
            ASSERT_EQ(ka_previous_change(zone, at)->moment, at);
            ASSERT_EQ(ka_previous_change(zone, at)->before, none - ahead(at - microsecond));
        }
        ASSERT_NO_FATAL_FAILURE(expect_two_a_year(zone, -4713));
    }
    EXPECT_FALSE(
        ka_next_change(ka_posix_zone("JST-9"), universal(ka_time(), {1, 1, 2024}, ka_posix_zone("JST-9"))));
}

TEST(local, zones_of_the_world)
{
    expect_two_a_year(ka_zone("Europe/Berlin"), 1981);
    const ka_time_zone& apia = ka_zone("Pacific/Apia");
    EXPECT_EQ(ka_local_times(apia, ka_time(12, 0, 0), {12, 30, 2011}).kind, ka_local_kind::skipped);
    EXPECT_EQ(ka_start_of_day(apia, {12, 30, 2011}), universal(ka_time(10, 0, 0), {12, 30, 2011}, apia));
    EXPECT_EQ(ka_start_of_day(apia, {12, 30, 2011}).date(), ka_date(12, 31, 2011));
    const ka_time_zone& tokyo = ka_zone("Asia/Tokyo");
    EXPECT_FALSE(ka_next_change(tokyo, universal(ka_time(), {7, 4, 2024}, tokyo)));
    EXPECT_EQ(ka_previous_change(tokyo, universal(ka_time(), {7, 4, 2024}, tokyo))->moment.utc_date().year(),
              1951);
    // Midnight is skipped in Beirut, and comes twice in Havana.
    EXPECT_EQ(ka_start_of_day(ka_zone("Asia/Beirut"), {3, 31, 2024}).time(), ka_time(1, 0, 0));
    EXPECT_EQ(ka_local_times(ka_zone("America/Havana"), ka_time(), {11, 3, 2024}).kind,
              ka_local_kind::repeated);
}

TEST(local, no_change_before_the_first_and_after_the_last)
{
    const ka_time_zone& pacific = ka_time_zone::pacific();
    const ka_time_and_date first = universal(ka_time(), ka_date(38), pacific) + 8 * hour;
    const ka_time_and_date last = universal(ka_time(), ka_date(13688960), pacific);
    EXPECT_FALSE(ka_previous_change(pacific, first));
    EXPECT_FALSE(ka_previous_change(pacific, first - ka_time_period(400, 0, 0, 0)));
    EXPECT_FALSE(ka_next_change(pacific, last));
    EXPECT_FALSE(ka_next_change(pacific, last + ka_time_period(400, 0, 0, 0)));
    EXPECT_FALSE(ka_next_change(ka_time_zone::utc(), first));
    EXPECT_FALSE(ka_previous_change(ka_time_zone::hawaii(), last));
    const auto earliest = ka_next_change(pacific, first - ka_time_period(400, 0, 0, 0));
    ASSERT_TRUE(earliest);
    EXPECT_FALSE(ka_previous_change(pacific, earliest->moment - microsecond));
    EXPECT_EQ(ka_previous_change(pacific, last)->moment.utc_date().year(), 32766);
}

TEST(local, choices)
{
    const ka_time_zone& zone = ka_time_zone::pacific();
    const struct {
        ka_time time;
        ka_date date;
        int compatible, earlier, later; // hours of universal time
        const char* refused;
    } rows[] = {
        {{2, 30, 0}, {3, 10, 2024}, 10, 9, 10, "02:30:00.000000 on 2024-03-10 is skipped in PST8"},
        {{2, 30, 0}, {11, 3, 2024}, 9, 9, 10, "02:30:00.000000 on 2024-11-03 comes twice in PST8"},
        {{3, 30, 0}, {3, 10, 2024}, 10, 10, 10, nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(shown(row.date));
        const auto hour_of = [&](ka_local_choice choice) {
            return ka_local_time(zone, row.time, row.date, choice).utc_time().hours();
        };
        EXPECT_EQ(hour_of(ka_local_choice::compatible), row.compatible);
        EXPECT_EQ(hour_of(ka_local_choice::earlier), row.earlier);
        EXPECT_EQ(hour_of(ka_local_choice::later), row.later);
        if (row.refused == nullptr)
            EXPECT_EQ(hour_of(ka_local_choice::refuse), row.compatible);
        else
            expect_error("invalid_time", row.refused, "time/src/clock/local",
                         [&] { (void)hour_of(ka_local_choice::refuse); });
    }
}

TEST(local, days_without_a_midnight)
{
    // The clocks go to 01:00 at midnight of 1 June, and back to 23:30 at that of 1 October (standard time
    // 23:00).
    const ka_calendar_date start(none, 6, 1), end(23 * hour, 9, 30);
    ka_simple_time_zone_rule rule(start, end, 2000, 2000), longer(start, end, 2001, 2001, 30 * hour);
    ka_time_zone zone(none, "OWN");
    zone.insert(rule);
    zone.insert(longer);
    const auto start_of = [&](unsigned short month, unsigned short day, short year) {
        return ka_start_of_day(zone, ka_date(month, day, year));
    };
    EXPECT_EQ(start_of(5, 31, 2000).time(), ka_time());
    EXPECT_EQ(start_of(6, 1, 2000), universal(ka_time(), {6, 1, 2000}, zone));
    EXPECT_EQ(start_of(6, 1, 2000).time(), ka_time(1, 0, 0));
    // Midnight comes, and an hour of the day before comes again.
    EXPECT_EQ(start_of(10, 1, 2000), universal(ka_time(), {10, 1, 2000}, zone));
    EXPECT_EQ(start_of(9, 30, 2000), universal(ka_time(23, 0, 0), {9, 29, 2000}, zone));
    // A day that is skipped as a whole, and the next one.
    EXPECT_EQ(start_of(6, 1, 2001), universal(ka_time(), {6, 1, 2001}, zone));
    EXPECT_EQ(start_of(6, 2, 2001), universal(ka_time(), {6, 1, 2001}, zone));
    EXPECT_EQ(start_of(6, 2, 2001).time(), ka_time(6, 0, 0));
    EXPECT_EQ(start_of(6, 3, 2001).time(), ka_time());
}

TEST(local, rules_of_a_users_own)
{
    const ka_calendar_date point(none, 1, 1);
    afternoons ahead_by_half(point, 30 * minute);
    ka_time_zone zone(-5 * hour - 30 * minute, "OWN");
    zone.insert(ahead_by_half);
    const auto change = ka_next_change(zone, universal(ka_time(), {2, 1, 2004}, zone));
    ASSERT_TRUE(change);
    EXPECT_EQ(change->moment, universal(ka_time(6, 30, 0), {2, 10, 2004}, zone));
    EXPECT_EQ(change->before, -5 * hour - 30 * minute);
    EXPECT_EQ(change->after, -6 * hour);
    const auto back = ka_previous_change(zone, change->moment - microsecond);
    ASSERT_TRUE(back);
    EXPECT_EQ(back->moment, universal(ka_time(12, 30, 0), {1, 10, 2004}, zone));
    EXPECT_FALSE(ka_next_change(zone, universal(ka_time(), {12, 11, 2010}, zone)));
    EXPECT_EQ(ka_local_times(zone, ka_time(12, 15, 0), {2, 10, 2004}).kind, ka_local_kind::skipped);
    EXPECT_EQ(ka_local_times(zone, ka_time(18, 15, 0), {2, 10, 2004}).kind, ka_local_kind::repeated);
}

TEST(local, ends_of_the_range)
{
    const ka_date first(38), last(13688960);
    for (const named_zone& row : zones) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ka_local_times(row.zone(), ka_time(), first).kind, ka_local_kind::once);
        EXPECT_EQ(ka_local_times(row.zone(), ka_time(23, 59, 59), last).kind, ka_local_kind::once);
        EXPECT_EQ(ka_start_of_day(row.zone(), last).date(), last);
    }
    ka_date beyond = last;
    ++beyond;
    expect_error("invalid_day", "13688961", "time/src/date",
                 [&] { (void)ka_local_times(ka_time_zone::utc(), ka_time(), beyond); });
}
