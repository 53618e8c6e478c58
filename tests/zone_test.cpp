#include <functional>
#include <sstream>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

#include "expect_error.h"
#include "opened.h"
#include "printers.h"

namespace {

constexpr ka_time_period none, hour(3600), half_hour(1800), one_us(0, 1);
const ka_time noon(12, 0, 0);

// What keeps an address takes no temporary: rules their points, moments and the default zone theirs.
using point = ka_calendar_date;
using simple_rule = ka_simple_time_zone_rule;
template <typename Start, typename End>
constexpr bool is_rule_of = std::is_constructible_v<simple_rule, Start, End, short, short> ||
                            std::is_constructible_v<simple_rule, Start, End, short, short, ka_time_period>;
static_assert(is_rule_of<point&, const point&>);
static_assert(!is_rule_of<point, point&>);
static_assert(!is_rule_of<point&, point>);
static_assert(!is_rule_of<point, point>);
template <typename Point>
constexpr bool can_be_start = requires(simple_rule& rule, Point&& point)
{
    rule.start_point(std::forward<Point>(point));
};
template <typename Point>
constexpr bool can_be_end = requires(simple_rule& rule, Point&& point)
{
    rule.end_point(std::forward<Point>(point));
};
static_assert(can_be_start<point&>);
static_assert(can_be_end<point&>);
static_assert(!can_be_start<point>);
static_assert(!can_be_end<point>);
template <typename Rule>
constexpr bool can_be_inserted = requires(ka_time_zone& zone, Rule&& rule)
{
    zone.insert(std::forward<Rule>(rule));
};
static_assert(can_be_inserted<simple_rule&>);
static_assert(!can_be_inserted<simple_rule>);
template <typename Zone>
constexpr bool can_be_named = requires(Zone&& zone)
{
    ka_time_and_date(ka_time(), ka_date(), std::forward<Zone>(zone));
};
template <typename Zone>
constexpr bool can_be_set = requires(ka_time_and_date& moment, Zone&& zone)
{
    moment.time_and_date(ka_time(), ka_date(), std::forward<Zone>(zone));
};
template <typename Zone>
constexpr bool can_be_zone = requires(ka_time_and_date& moment, Zone&& zone)
{
    moment.time_zone(std::forward<Zone>(zone));
};
template <typename Zone>
constexpr bool can_be_default = requires(Zone&& zone)
{
    ka_time_and_date::default_time_zone(std::forward<Zone>(zone));
};
static_assert(can_be_named<ka_time_zone&>);
static_assert(can_be_set<ka_time_zone&>);
static_assert(can_be_zone<ka_time_zone&>);
static_assert(can_be_default<ka_time_zone&>);
static_assert(!can_be_named<ka_time_zone>);
static_assert(!can_be_set<ka_time_zone>);
static_assert(!can_be_zone<ka_time_zone>);
static_assert(!can_be_default<ka_time_zone>);
// A period makes a zone on the way.
static_assert(!can_be_zone<ka_time_period>);

std::string printed(const auto& value)
{
    std::ostringstream out;
    value.print(out);
    return out.str();
}

TEST(zone_rule, fields_and_a_point_changed_after_it_was_handed_over)
{
    ka_calendar_date march(none, 3, 1), may(none, 5, 1), june(none, 6, 1);
    ka_simple_time_zone_rule rule(march, may, 2000, 0), later(march, may, 2001, 2001, -half_hour);
    EXPECT_LT(rule, later);
    EXPECT_FALSE(later < rule);
    EXPECT_FALSE(rule < rule);
    EXPECT_EQ(rule.adjustment(), hour);
    EXPECT_EQ(&rule.start_point(), &march);
    EXPECT_EQ(&rule.end_point(), &may);
    EXPECT_EQ(printed(rule), "ka_time_zone_rule()");

    ka_time_zone zone(none);
    zone.insert(rule);
    const ka_date day(5, 15, 2020);
    bool is_dst = false;
    EXPECT_FALSE(zone.is_dst(noon, day));
    const struct {
        const char* name;
        std::function<void()> make;
    } changes[] = {
        {"end a month later", [&] { may.month(6); }},
        {"start after the day", [&] { rule.start_point(june); }},
        {"start on the day", [&] { june.month(5), june.weekday(ka_third, day.weekday()); }},
        {"start after noon", [&] { june.when(ka_time_period(43200, 1)); }},
        {"start at noon", [&] { june.when(ka_time_period(43200)); }},
        {"end at noon", [&] { rule.end_point(june); }},
        {"end in June", [&] { rule.end_point(may); }},
        {"last year before", [&] { rule.end_year(2019); }},
        {"last year of the day", [&] { rule.end_year(2020); }},
        {"first year after", [&] { rule.start_year(2021); }},
    };
    // Each takes the noon of the day into the rule or out of it.
    for (const auto& [name, make] : changes) {
        make();
        EXPECT_EQ(zone.is_dst(noon, day), is_dst = !is_dst) << name;
    }
}

/// A user-defined rule, which notes what it is asked.
struct asking_rule : ka_simple_time_zone_rule {
    using ka_simple_time_zone_rule::ka_simple_time_zone_rule;
    bool is_in_effect(const ka_time& time, const ka_date& date) const override
    {
        asked.emplace_back(time, date);
        return time == noon;
    }
    mutable std::vector<std::pair<ka_time, ka_date>> asked;
};

TEST(zone, rules_of_a_host_are_asked_what_the_zone_was_asked)
{
    const ka_calendar_date never(none, 2, 31);
    asking_rule rule(never, never, 1, 1, half_hour);
    ka_time_zone zone(none, "X", "Y");
    zone.insert(rule);
    const ka_date far = ++ka_date(ka_date::max_date()), july(7, 1, 2024);
    EXPECT_EQ(zone.offset(noon, far), -half_hour);
    EXPECT_EQ(zone.dst_adjustment(noon, far), half_hour);
    EXPECT_EQ(zone.name(noon, far), "Y-1");
    EXPECT_EQ(zone.name(noon - one_us, far), "X0");
    // A moment asks on the standard clock.
    const ka_time_and_date moment(noon, july, zone);
    EXPECT_EQ(moment.utc_time(), noon - half_hour);
    EXPECT_EQ(moment.time(), noon - half_hour);
    const std::pair now(noon, far);
    EXPECT_EQ(rule.asked, decltype(rule.asked)(
                              {now, now, now, {noon - one_us, far}, {noon, july}, {noon - half_hour, july}}));
}

TEST(zone, a_user_defined_rule_is_asked_with_simple_ones_beside_it)
{
    const ka_calendar_date march(none, 3, 1), may(none, 5, 1), never(none, 2, 31);
    const ka_date april(4, 1, 2024), july(7, 1, 2024);
    // The simple rule is asked first where it has the later first year.
    for (const short first_year : std::initializer_list<short>{1, 1990}) {
        SCOPED_TRACE(first_year);
        asking_rule own(never, never, 1, 1, half_hour);
        simple_rule simple(march, may, first_year, 0);
        ka_time_zone zone(none);
        zone.insert(own);
        zone.insert(simple);
        EXPECT_EQ(zone.dst_adjustment(noon, july), half_hour);
        EXPECT_EQ(zone.dst_adjustment(noon, april), hour);
        EXPECT_EQ(ka_time_and_date(noon, july, zone).utc_time(), noon - half_hour);
        EXPECT_EQ(own.asked.size(), 2u);
    }
}

TEST(zone, a_built_in_zone_that_gets_a_rule_goes_by_its_rules)
{
    const ka_calendar_date february(none, 2, 1), march(none, 3, 1);
    const ka_date winter(2, 10, 2024), summer(7, 1, 2024);
    auto& changed = static_cast<opened_zone&>(const_cast<ka_time_zone&>(ka_time_zone::atlantic()));
    simple_rule simple(february, march, 2024, 2024, half_hour);
    EXPECT_FALSE(changed.is_dst(noon, winter));
    ASSERT_TRUE(changed.insert(simple));
    EXPECT_EQ(changed.dst_adjustment(noon, winter), half_hour);
    EXPECT_EQ(ka_time_and_date(noon, winter, changed).utc_time(), ka_time(15, 30, 0));
    EXPECT_EQ(changed.dst_adjustment(noon, summer), hour);
    // A restart makes all zones anew.
    ka_exit_time_varnel();
    ka_init_time_varnel();
    EXPECT_FALSE(ka_time_zone::atlantic().is_dst(noon, winter));
}

TEST(zone, names_and_offsets)
{
    const ka_calendar_date march(none, 3, 1), may(none, 5, 1);
    ka_simple_time_zone_rule rule(march, may, 2000, 2000, half_hour);
    const struct {
        int offset;
        std::string stem, dst_stem, name, dst_name;
        // clang-format off
    } named_zones[] = {
        {28800, "PST", "PDT", "PST8", "PDT7"}, {-3599, "A", "B", "A0", "B-1"},
        {0, "UTC", "UTC", "UTC0", "UTC+1"}, {18000, "UTC", "Y", "UTC-5", "Y4"},
        {-3600, "UTC", "utc", "UTC+1", "utc-2"}, {-19800, "UTC", "UTC ", "UTC+5", "UTC -6"},
        {12600, "NST", "", "NST3", "2"}, {360000, "", "UTCX", "100", "UTCX99"},
    };
    // clang-format on
    for (const auto& row : named_zones) {
        SCOPED_TRACE(row.name);
        const ka_time_period offset(row.offset);
        opened_zone zone(offset, row.stem, row.dst_stem);
        EXPECT_EQ(zone.dst_name(), row.dst_stem);
        EXPECT_EQ(printed(zone), "ka_time_zone( " + row.name + " )");
        EXPECT_EQ(opened_zone::name(row.stem, offset), row.name);
        EXPECT_FALSE(zone.dst_observed());
        zone.insert(rule);
        EXPECT_EQ(printed(zone), "ka_time_zone( " + row.name + ", " + row.dst_name + " )");
        EXPECT_TRUE(zone.dst_observed());
        for (const short year : std::initializer_list<short>{1999, 2000, 2001}) {
            EXPECT_EQ(zone.offset(noon, {4, 1, year}), offset - (year == 2000 ? half_hour : none));
            EXPECT_EQ(zone.rule(noon, {4, 1, year}), year == 2000 ? &rule : nullptr);
            EXPECT_EQ(zone.name(noon, {4, 1, year}), year == 2000 ? row.dst_name : row.name);
        }
    }
    const ka_time_zone unnamed(hour), named(-hour, "X");
    EXPECT_EQ(unnamed.name(), "GMT1");
    EXPECT_EQ(unnamed.dst_name(), "GMT");
    EXPECT_EQ(named.name(), "X-1");
    EXPECT_EQ(named.dst_name(), "X");
}

}
