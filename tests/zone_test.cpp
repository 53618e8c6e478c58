#include <algorithm>
#include <array>
#include <functional>
#include <set>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

#include "expect_error.h"

namespace {

constexpr ka_time_period none, hour(3600), two_hours(7200), half_hour(1800), one_us(0, 1);
const ka_time noon(12, 0, 0);

/// Opens what a derived class may use, on its own objects.
struct open_zone : ka_time_zone {
    using ka_time_zone::find, ka_time_zone::ka_time_zone, ka_time_zone::name, ka_time_zone::rule;
};

/// The same of any zone.
const ka_time_zone_rule* in_slot(const ka_time_zone& zone, int slot)
{
    using by_slot = const ka_time_zone_rule* (ka_time_zone::*)(int) const;
    return (zone.*static_cast<by_slot>(&open_zone::rule))(slot);
}

std::string printed(const auto& value)
{
    std::ostringstream out;
    value.print(out);
    return out.str();
}

/// A moment as one count, from which its time and its date can be had again.
ka_time_period count(const ka_date& date, const ka_time& time)
{
    return ka_time_period(date.julian_day() * 86400LL) + time;
}

struct rule_row {
    ka_calendar_date start, end;
    short first = -4713, last = 0;

    /// Whether a moment of the year is between the points, and the year one of the rule's.
    bool holds(const ka_time_period& now, short year) const
    {
        const ka_date start_date = start.date(year), end_date = end.date(year);
        const bool is_after_start = count(start_date, start.time()) <= now;
        const bool is_before_end = now < count(end_date, end.time());
        return first <= year && (last == 0 || year <= last) &&
               (start_date <= end_date ? is_after_start && is_before_end : is_after_start || is_before_end);
    }
};

TEST(zone_rule, every_day_of_the_year_and_both_sides_of_each_point)
{
    using point = ka_calendar_date;
    // clang-format off
    const point points[] = {
        point(two_hours, 3, 29), point(two_hours + one_us, 3, 29), point(26 * hour, 3, 29),
        point(hour, 10, 25), point(hour, 10, 1), point(none, 1, 1), point(one_us, 1, 1), point(none, 12, 31),
        point(hour, 3, ka_last, 1), point(hour, 10, ka_next_to_last, 7), point(hour, 11, ka_fourth, 5)};
    // clang-format on
    const ka_time one(1, 0, 0), two(2, 0, 0);
    const ka_time times[] = {0, one - one_us, one, two - one_us, two, two + one_us, ka_time::max_time()};
    for (const point& start : points)
        for (const point& end : points) {
            const rule_row row = {start, end};
            const ka_simple_time_zone_rule rule(start, end, -4713, 0);
            for (const short year : std::initializer_list<short>{-4713, -1, 1900, 2024, 32765, 32766})
                for (ka_date date(1, 1, year), last(12, 31, year); date <= last; ++date)
                    for (const ka_time& time : times)
                        ASSERT_EQ(rule.is_in_effect(time, date), row.holds(count(date, time), year))
                            << date.to_string("%Y-%m-%d ") << time.to_string();
        }
}

TEST(zone_rule, points_are_asked_in_the_years_of_the_rule_alone)
{
    const ka_calendar_date new_year(none, 1, 1), none_in_march(none, 3, ka_fifth, 1), leap_day(none, 2, 29);
    const ka_simple_time_zone_rule rule(none_in_march, leap_day, 2021, 2023),
        bad_end(new_year, leap_day, 2023, 0);
    for (const short year : std::initializer_list<short>{-4713, 2020, 2024, 32766})
        EXPECT_FALSE(rule.is_in_effect(noon, ka_date(3, 5, year)));
    for (const ka_date& date : {ka_date(1, 5, 2023), ka_date(3, 5, 2023), ka_date(12, 5, 2023)}) {
        expect_error("invalid_week", "Invalid week for month!", "time/src/date",
                     [&] { rule.is_in_effect(noon, date); });
        expect_error("invalid_date", "Month( 2 ), day( 29 ), year( 2023 )", "time/src/date",
                     [&] { bad_end.is_in_effect(noon, date); });
    }
    EXPECT_TRUE(bad_end.is_in_effect(noon, ka_date(2, 28, 2024)));
}

TEST(zone_rule, fields_and_a_point_changed_after_it_was_handed_over)
{
    ka_calendar_date march(none, 3, 1), may(none, 5, 1), june(none, 6, 1);
    ka_simple_time_zone_rule rule(march, may, 2000, 0), later(march, may, 2001, 2001, -half_hour);
    EXPECT_TRUE(rule < later && !(later < rule) && !(rule < rule));
    EXPECT_TRUE(rule.adjustment() == hour && &rule.start_point() == &march && &rule.end_point() == &may);
    EXPECT_EQ(printed(rule), "ka_time_zone_rule()");

    ka_time_zone zone(none);
    zone.insert(rule);
    const ka_date day(5, 15, 2020);
    bool is_dst = false;
    EXPECT_FALSE(zone.is_dst(noon, day));
    // Each change takes the noon of the day into the rule or out of it.
    for (const auto& change : std::initializer_list<std::function<void()>>{
             [&] { may.month(6); }, [&] { rule.start_point(june); },
             [&] { june.month(5), june.weekday(ka_third, day.weekday()); },
             [&] { june.when(ka_time_period(43200, 1)); }, [&] { june.when(ka_time_period(43200)); },
             [&] { rule.end_point(june); }, [&] { rule.end_point(may); }, [&] { rule.end_year(2019); },
             [&] { rule.end_year(2020); }, [&] { rule.start_year(2021); }}) {
        change();
        EXPECT_EQ(zone.is_dst(noon, day), is_dst = !is_dst);
    }
}

/// A rule of a host's own, which notes what it is asked.
struct asking_rule : ka_simple_time_zone_rule {
    using ka_simple_time_zone_rule::ka_simple_time_zone_rule;
    bool is_in_effect(const ka_time& time, const ka_date& date) const override
    {
        asked.push_back(count(date, time));
        return time == noon;
    }
    mutable std::vector<ka_time_period> asked;
};

TEST(zone, rules_of_a_host_are_asked_what_the_zone_was_asked)
{
    const ka_calendar_date never(none, 2, 31);
    asking_rule rule(never, never, 1, 1, half_hour);
    ka_time_zone zone(none, "X", "Y");
    zone.insert(rule);
    const ka_date far = ++ka_date(ka_date::max_date()), july(7, 1, 2024);
    EXPECT_TRUE(zone.offset(noon, far) == -half_hour && zone.dst_adjustment(noon, far) == half_hour);
    EXPECT_EQ(zone.name(noon, far), "Y-1");
    EXPECT_EQ(zone.name(noon - one_us, far), "X0");
    const ka_time_period now = count(far, noon), start = count(july, noon);
    // A moment asks on the standard clock.
    const ka_time_and_date moment(noon, july, zone);
    EXPECT_TRUE(moment.utc_time() == noon - half_hour && moment.time() == noon - half_hour);
    EXPECT_EQ(rule.asked, std::vector({now, now, now, now - one_us, start, start - half_hour}));
}

TEST(zone, the_rule_that_started_last_wins_in_any_order_of_insert)
{
    const ka_calendar_date january(none, 1, 1), december(none, 12, 31);
    std::vector<ka_simple_time_zone_rule> rules;
    for (const short year : std::initializer_list<short>{1980, 2000, 1990, 2000, -100, 1985, 1970, 2010})
        rules.emplace_back(january, december, year, short{0}, hour);
    std::array<std::size_t, 7> order = {0, 1, 2, 3, 4, 5, 6};
    do {
        open_zone zone(hour);
        for (const std::size_t index : order)
            ASSERT_TRUE(zone.insert(rules[index]));
        ASSERT_FALSE(zone.insert(rules[7]));
        // Of two that start in the same year, the one inserted last.
        std::array<std::size_t, 7> sorted;
        std::reverse_copy(order.begin(), order.end(), sorted.begin());
        std::stable_sort(sorted.begin(), sorted.end(),
                         [&](std::size_t a, std::size_t b) { return rules[b] < rules[a]; });
        for (std::size_t slot = 0; slot < 7; ++slot)
            ASSERT_EQ(in_slot(zone, static_cast<int>(slot)), &rules[sorted[slot]]);
        ASSERT_EQ(zone.rule(noon, ka_date(7, 1, 2024)), &rules[sorted[0]]);
        ASSERT_EQ(zone.rule(noon, ka_date(7, 1, 1984)), &rules[0]);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(zone, names_and_offsets)
{
    const ka_calendar_date march(none, 3, 1), may(none, 5, 1);
    ka_simple_time_zone_rule rule(march, may, 2000, 2000, half_hour);
    const struct {
        int offset;
        std::string stem, dst_stem, name, dst_name;
        // clang-format off
    } rows[] = {
        {28800, "PST", "PDT", "PST8", "PDT7"}, {-3599, "A", "B", "A0", "B-1"},
        {0, "UTC", "UTC", "UTC0", "UTC+1"}, {18000, "UTC", "Y", "UTC-5", "Y4"},
        {-3600, "UTC", "utc", "UTC+1", "utc-2"}, {-19800, "UTC", "UTC ", "UTC+5", "UTC -6"},
        {12600, "NST", "", "NST3", "2"}, {360000, "", "UTCX", "100", "UTCX99"},
    };
    // clang-format on
    for (const auto& row : rows) {
        const ka_time_period offset(row.offset);
        open_zone zone(offset, row.stem, row.dst_stem);
        EXPECT_EQ(zone.dst_name() + printed(zone), row.dst_stem + "ka_time_zone( " + row.name + " )");
        EXPECT_EQ(open_zone::name(row.stem, offset), row.name);
        EXPECT_FALSE(zone.dst_observed());
        zone.insert(rule);
        EXPECT_EQ(printed(zone), "ka_time_zone( " + row.name + ", " + row.dst_name + " )");
        EXPECT_TRUE(zone.dst_observed());
        for (const short year : std::initializer_list<short>{1999, 2000, 2001}) {
            EXPECT_EQ(zone.offset(noon, {4, 1, year}), offset - (year == 2000 ? half_hour : none));
            EXPECT_EQ(zone.name(noon, {4, 1, year}), year == 2000 ? row.dst_name : row.name);
        }
    }
    const ka_time_zone unnamed(hour), named(-hour, "X");
    EXPECT_EQ(unnamed.name() + unnamed.dst_name() + named.name() + named.dst_name(), "GMT1GMTX-1X");
}

/// The catalogue once more, as the table that it is published as. Of zones
/// with the same offset, the one that is found by it stands first.
using rows = std::vector<rule_row>;
constexpr ka_time_period h1 = hour, h2 = two_hours;
constexpr ka_which_one first = ka_first, last = ka_last, fourth = ka_fourth;
// clang-format off
const rows british = {
    {{h2, 3, last, 1}, {h1, 10, fourth, 1}, 1981, 1988}, {{h2, 3, last, 1}, {h1, 10, last, 1}, 1989, 1989},
    {{h2, 3, last, 1}, {h1, 10, fourth, 1}, 1990, 1995}, {{h1, 3, last, 1}, {h1, 10, last, 1}, 1996}};
const rows american = {
    {{h2, 4, last, 1}, {h1, 10, last, 1}, 1967, 1973}, {{h2, 1, 6}, {h1, 11, last, 1}, 1974, 1974},
    {{h2, 2, fourth, 1}, {h1, 10, last, 1}, 1975, 1975}, {{h2, 4, last, 1}, {h1, 10, last, 1}, 1976, 1986},
    {{h2, 4, first, 1}, {h1, 10, last, 1}, 1987, 2006}, {{h2, 3, ka_second, 1}, {h2, 11, first, 1}, 2007}};
const rows alaskan = {american[0], american[1], american[2], {{h2, 4, last, 1}, {h1, 10, last, 1}, 1986}};
const rows western = {{{h1, 3, last, 1}, {h1, 10, last, 1}, 1996}};
const rows central = {{{h2, 3, last, 1}, {h2, 10, last, 1}, 1996}};
const rows southern = {{{h2, 10, last, 1}, {h1, 3, first, 1}, 1985}};
const rows israeli = {
    {{h1, 4, ka_second, 2}, {none, 9, last, 2}, 2001, 2006}, {{h2, 3, last, 6}, {h1, 9, ka_third, 1}, 2007}};
using zone = ka_time_zone;
const struct {
    const zone& (*get)();
    int minutes;
    const char *name, *dst_name;
    rows rules;
} catalogue[] = {
    {zone::greenwich, 0, "GMT0", "BST-1", british}, {zone::western_european, 0, "WET0", "WEST-1", western},
    {zone::portuguese, 0, "PWT0", "PST-1", western}, {zone::utc, 0, "UTC0", "", {}},
    {zone::central_european, -60, "CET-1", "CEST-2", central}, {zone::eastern, 300, "EST5", "EDT4", american},
    {zone::israel, -120, "IST-2", "IDT-3", israeli}, {zone::south_africa, -120, "SAST-2", "SADT-3", southern},
    {zone::indiana, 300, "EST5", "", {}}, {zone::newfoundland, 210, "NST3", "NDT2", american},
    {zone::atlantic, 240, "AST4", "ADT3", american}, {zone::central, 360, "CST6", "CDT5", american},
    {zone::mountain, 420, "MST7", "MDT6", american}, {zone::pacific, 480, "PST8", "PDT7", american},
    {zone::yukon, 540, "YST9", "YDT8", alaskan}, {zone::aleutian, 600, "AST10", "ADT9", alaskan},
    {zone::hawaii, 600, "HST10", "", {}},
};
// clang-format on

TEST(catalogue, zones_share_rules_and_change_and_are_found_as_the_table_says)
{
    std::set<const void*> distinct;
    for (const auto& row : catalogue) {
        SCOPED_TRACE(row.name);
        const ka_time_zone& built_in = row.get();
        EXPECT_EQ(built_in.name() + "/" + built_in.dst_name(), row.name + std::string("/") + row.dst_name);
        EXPECT_EQ(built_in.offset(), ka_time_period(row.minutes * 60));
        const int size = static_cast<int>(row.rules.size());
        for (int slot = 0; slot < size; ++slot) {
            const ka_time_zone_rule* const rule = in_slot(built_in, slot);
            ASSERT_NE(rule, nullptr);
            EXPECT_TRUE(rule->is_open_ended() == (slot == 0) && rule->adjustment() == hour);
            distinct.insert({rule, &rule->start_point(), &rule->end_point()});
        }
        EXPECT_EQ(in_slot(built_in, size), nullptr);
        const auto& found = *std::find_if(std::begin(catalogue), std::end(catalogue),
                                          [&](const auto& any) { return any.minutes == row.minutes; });
        for (const ka_time_period& delta : {-one_us, none, one_us})
            for (const bool dst : {false, true})
                EXPECT_EQ(open_zone::find(built_in.offset() + delta, dst),
                          delta == none ? &found.get() : nullptr);
        for (short year = 1960; year <= 2040; ++year) {
            std::vector moments = {count(ka_date(1, 1, year), 0), count(ka_date(7, 1, year), noon),
                                   count(ka_date(12, 31, year), ka_time::max_time())};
            for (const rule_row& rule : row.rules)
                for (const ka_calendar_date* point : {&rule.start, &rule.end}) {
                    moments.push_back(count(point->date(year), point->time()));
                    moments.push_back(moments.back() - one_us);
                }
            for (const ka_time_period& now : moments)
                EXPECT_EQ(built_in.is_dst(ka_time(now), ka_date(now.to_days())),
                          std::any_of(row.rules.begin(), row.rules.end(),
                                      [&](const rule_row& rule) { return rule.holds(now, year); }))
                    << row.name << " " << ka_date(now.to_days()).to_string();
        }
    }
    EXPECT_EQ(distinct.size(), 16u + 17u);
}

}
