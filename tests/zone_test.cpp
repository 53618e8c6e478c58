#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

#include "expect_error.h"

namespace {

constexpr ka_time_period none;
constexpr ka_time_period hour(3600);
constexpr ka_time_period one_us(0, 1);
const ka_time noon(12, 0, 0);

/// Opens what a derived class may use, on its own objects and on any zone.
struct open_zone : ka_time_zone {
    using ka_time_zone::find;
    using ka_time_zone::ka_time_zone;
    using ka_time_zone::name;
    using by_slot = const ka_time_zone_rule* (ka_time_zone::*)(int) const;
    using by_moment = const ka_time_zone_rule* (ka_time_zone::*)(const ka_time&, const ka_date&) const;

    static const ka_time_zone_rule* in_slot(const ka_time_zone& zone, int slot)
    {
        return (zone.*static_cast<by_slot>(&open_zone::rule))(slot);
    }
    static const ka_time_zone_rule* at(const ka_time_zone& zone, const ka_time& time, const ka_date& date)
    {
        return (zone.*static_cast<by_moment>(&open_zone::rule))(time, date);
    }
};

template <typename Value>
std::string printed(const Value& value)
{
    std::ostringstream out;
    value.print(out);
    return out.str();
}

/// Midnight of a date and a time, as one number of microseconds.
long long count(const ka_date& date, const ka_time& time)
{
    const ka_time_period since_midnight = time;
    return (date.julian_day() * 86400LL + since_midnight.to_seconds()) * 1000000 +
           since_midnight.microseconds();
}

TEST(zone_rule, every_day_of_the_year_and_both_sides_of_each_point)
{
    using point = ka_calendar_date;
    const point march(ka_time_period(7200), 3, 29), october(hour, 10, 25), early_october(hour, 10, 1);
    const std::pair<point, point> rules[] = {
        {march, october},
        {october, march},
        {early_october, october},
        {october, early_october},
        {march, point(ka_time_period(7201), 3, 29)},
        {march, march},
        {point(ka_time_period(7201), 3, 29), march},
        {point(ka_time_period(26 * 3600), 3, 29), october},
        {point(none, 1, 1), point(none, 12, 31)},
        {point(none, 12, 31), point(one_us, 1, 1)},
        {point(hour, 3, ka_last, 1), point(hour, 10, ka_next_to_last, 7)},
        {point(hour, 11, ka_fourth, 5), point(none, 2, ka_first, 2)},
    };
    const ka_time times[] = {0,
                             ka_time(0, 59, 59, 999999),
                             ka_time(1, 0, 0),
                             ka_time(1, 59, 59, 999999),
                             ka_time(2, 0, 0),
                             ka_time(2, 0, 1),
                             ka_time::max_time()};
    for (const auto& [start, end] : rules) {
        const ka_simple_time_zone_rule rule(start, end, -4713, 0);
        for (const short year : std::initializer_list<short>{-4713, -1, 1, 1900, 2023, 2024, 32765, 32766}) {
            const ka_date start_date = start.date(year), end_date = end.date(year);
            const long long from = count(start_date, start.time()), to = count(end_date, end.time());
            const ka_date last(12, 31, year);
            for (ka_date date(1, 1, year); date <= last; ++date)
                for (const ka_time& time : times) {
                    const long long now = count(date, time);
                    const bool is_inside =
                        start_date <= end_date ? from <= now && now < to : from <= now || now < to;
                    ASSERT_EQ(rule.is_in_effect(time, date), is_inside)
                        << date.to_string("%Y-%m-%d ") << time.to_string();
                }
        }
    }
}

TEST(zone_rule, points_are_asked_in_the_years_of_the_rule_alone)
{
    const ka_calendar_date new_year(none, 1, 1), none_in_march(none, 3, ka_fifth, 1), leap_day(none, 2, 29);
    const ka_simple_time_zone_rule rule(none_in_march, leap_day, 2021, 2023);
    for (const short year : std::initializer_list<short>{-4713, 2020, 2024, 32766})
        EXPECT_FALSE(rule.is_in_effect(noon, ka_date(3, 5, year)));
    const char* const source = "time/src/date";
    const ka_simple_time_zone_rule bad_end(new_year, leap_day, 2023, 0);
    EXPECT_TRUE(bad_end.is_in_effect(noon, ka_date(2, 28, 2024)));
    for (const ka_date& date : {ka_date(1, 5, 2023), ka_date(3, 5, 2023), ka_date(12, 5, 2023)}) {
        expect_error("invalid_week", "Invalid week for month!", source,
                     [&] { rule.is_in_effect(noon, date); });
        expect_error("invalid_date", "Month( 2 ), day( 29 ), year( 2023 )", source,
                     [&] { bad_end.is_in_effect(noon, date); });
    }
    const ka_simple_time_zone_rule one_year(leap_day, new_year, 1988, 1988);
    EXPECT_FALSE(one_year.is_in_effect(noon, ka_date(12, 31, 1987)));
    EXPECT_TRUE(one_year.is_in_effect(noon, ka_date(12, 31, 1988)));
    EXPECT_FALSE(one_year.is_in_effect(noon, ka_date(12, 31, 1989)));
}

TEST(zone_rule, fields_and_a_point_changed_after_it_was_handed_over)
{
    ka_calendar_date march(none, 3, 1), may(none, 5, 1), june(none, 6, 1);
    ka_simple_time_zone_rule rule(march, may, 2000, 0), later(march, may, 2001, 2001, ka_time_period(-60));
    EXPECT_TRUE(rule < later && !(later < rule) && !(rule < rule));
    EXPECT_TRUE(rule.is_open_ended() && !later.is_open_ended());
    EXPECT_TRUE(rule.adjustment() == hour && later.adjustment() == ka_time_period(-60));
    EXPECT_EQ(printed(rule) + printed(later), "ka_time_zone_rule()ka_time_zone_rule()");
    EXPECT_TRUE(&rule.start_point() == &march && &rule.end_point() == &may);

    ka_time_zone zone(none);
    zone.insert(rule);
    const ka_date day(5, 15, 2020);
    const auto expect_after = [&](bool is_dst, const std::function<void()>& change) {
        change();
        EXPECT_EQ(zone.is_dst(noon, day), is_dst);
    };
    expect_after(false, [] {});
    expect_after(true, [&] { may.month(6); });
    expect_after(false, [&] { rule.start_point(june); });
    expect_after(true, [&] { june.month(5), june.weekday(ka_third, day.weekday()); });
    expect_after(false, [&] { june.when(ka_time_period(43200, 1)); });
    expect_after(true, [&] { june.when(ka_time_period(43200)); });
    expect_after(false, [&] { rule.end_point(june); });
    expect_after(true, [&] { rule.end_point(may); });
    expect_after(false, [&] { rule.end_year(2019); });
    expect_after(true, [&] { rule.end_year(2020); });
    expect_after(false, [&] { rule.start_year(2021); });
}

/// A rule of a host's own, which notes what it is asked.
template <typename Base>
struct asking_rule : Base {
    explicit asking_rule(const ka_calendar_date& point) : Base(point, point, 1, 1, ka_time_period(1800)) {}
    bool is_in_effect(const ka_time& time, const ka_date& date) const override
    {
        asked.emplace_back(count(date, time));
        return time == noon;
    }
    mutable std::vector<long long> asked;
};

template <typename Base>
void expect_asked()
{
    const ka_calendar_date never(none, 2, 31);
    asking_rule<Base> rule(never);
    ka_time_zone zone(none, "X", "Y");
    zone.insert(rule);
    const ka_date far = ++ka_date(ka_date::max_date());
    EXPECT_EQ(zone.offset(noon, far), ka_time_period(-1800));
    EXPECT_EQ(zone.dst_adjustment(noon, far), ka_time_period(1800));
    EXPECT_EQ(zone.name(noon, far), "Y-1");
    EXPECT_EQ(zone.name(noon - one_us, far), "X0");
    EXPECT_EQ(rule.asked,
              std::vector({count(far, noon), count(far, noon), count(far, noon), count(far, noon - one_us)}));
    // A moment asks on the standard clock.
    rule.asked.clear();
    ka_time_and_date moment(noon, ka_date(7, 1, 2024), zone);
    EXPECT_EQ(moment.utc_time(), ka_time(11, 30, 0));
    EXPECT_EQ(moment.time(), ka_time(11, 30, 0));
    ASSERT_GE(rule.asked.size(), 2u);
    EXPECT_EQ(rule.asked.front(), count(ka_date(7, 1, 2024), noon));
    EXPECT_EQ(rule.asked.back(), count(ka_date(7, 1, 2024), ka_time(11, 30, 0)));
}

TEST(zone, rules_of_a_host_are_asked_what_the_zone_was_asked)
{
    expect_asked<ka_time_zone_rule>();
    expect_asked<ka_simple_time_zone_rule>();
}

TEST(zone, the_rule_that_started_last_wins_in_any_order_of_insert)
{
    const ka_calendar_date january(none, 1, 1), december(none, 12, 31);
    std::vector<ka_simple_time_zone_rule> rules;
    for (const short year : std::initializer_list<short>{1980, 2000, 1990, 2000, -100, 1985, 1970, 2010})
        rules.emplace_back(january, december, year, short{0}, hour);
    std::array<std::size_t, 7> order = {0, 1, 2, 3, 4, 5, 6};
    do {
        open_zone zone(hour, "X", "Y");
        std::vector<std::size_t> sorted;
        for (const std::size_t index : order) {
            ASSERT_TRUE(zone.insert(rules[index]));
            sorted.push_back(index);
            std::rotate(sorted.begin(), sorted.end() - 1, sorted.end());
            std::stable_sort(sorted.begin(), sorted.end(),
                             [&](std::size_t a, std::size_t b) { return rules[b] < rules[a]; });
            for (std::size_t slot = 0; slot < 7; ++slot)
                ASSERT_EQ(open_zone::in_slot(zone, static_cast<int>(slot)),
                          slot < sorted.size() ? &rules[sorted[slot]] : nullptr);
        }
        ASSERT_FALSE(zone.insert(rules[7]));
        ASSERT_EQ(open_zone::at(zone, noon, ka_date(7, 1, 2024)), &rules[sorted[0]]);
        ASSERT_EQ(open_zone::at(zone, noon, ka_date(7, 1, 1984)), &rules[0]);
        ASSERT_EQ(open_zone::at(zone, noon, ka_date(7, 1, -101)), nullptr);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(zone, names_and_offsets)
{
    const ka_calendar_date march(none, 3, 1), may(none, 5, 1);
    ka_simple_time_zone_rule half_hour(march, may, 2000, 2000, ka_time_period(1800));
    const struct {
        int offset;
        const char *stem, *dst_stem, *name, *dst_name, *bare_dst_name;
    } rows[] = {
        {8 * 3600, "PST", "PDT", "PST8", "PDT7", "PDT"},
        {12600, "NST", "", "NST3", "2", ""},
        {-3599, "A", "B", "A0", "B-1", "B"},
        {0, "UTC", "UTC", "UTC0", "UTC+1", "UTC"},
        {18000, "UTC", "Y", "UTC-5", "Y4", "Y"},
        {-3600, "UTC", "utc", "UTC+1", "utc-2", "utc"},
        {-19800, "UTC", "UTC ", "UTC+5", "UTC -6", "UTC "},
        {100 * 3600, "", "UTCX", "100", "UTCX99", "UTCX"},
    };
    for (const auto& row : rows) {
        const ka_time_period offset(row.offset);
        open_zone zone(offset, row.stem, row.dst_stem);
        EXPECT_EQ(zone.name() + "/" + zone.dst_name(), row.name + std::string("/") + row.bare_dst_name);
        EXPECT_EQ(printed(zone), "ka_time_zone( " + std::string(row.name) + " )");
        EXPECT_EQ(open_zone::name(row.stem, offset), row.name);
        EXPECT_FALSE(zone.dst_observed() || zone.is_dst(noon, ka_date(4, 1, 2000)));

        zone.insert(half_hour);
        EXPECT_EQ(zone.name() + "/" + zone.dst_name(), row.name + std::string("/") + row.dst_name);
        EXPECT_EQ(printed(zone), std::string("ka_time_zone( ") + row.name + ", " + row.dst_name + " )");
        EXPECT_TRUE(zone.dst_observed() && zone.offset() == offset);
        for (const auto& [year, is_dst] : {std::pair(1999, false), {2000, true}, {2001, false}}) {
            const ka_date date(4, 1, static_cast<short>(year));
            const ka_time_period adjustment = is_dst ? ka_time_period(1800) : none;
            EXPECT_EQ(zone.is_dst(noon, date), is_dst);
            EXPECT_EQ(zone.offset(noon, date), offset - adjustment);
            EXPECT_EQ(zone.dst_adjustment(noon, date), adjustment);
            EXPECT_EQ(zone.name(noon, date), is_dst ? row.dst_name : row.name);
        }
    }
    EXPECT_EQ(ka_time_zone(hour).name() + ka_time_zone(hour).dst_name(), "GMT1GMT");
    EXPECT_EQ(ka_time_zone(-hour, "X").name() + ka_time_zone(-hour, "X").dst_name(), "X-1X");
}

/// The catalogue once more, as the table that it is published as.
struct point_row {
    unsigned short month;
    ka_which_one week;
    unsigned short day;
    int hour;

    auto key() const { return std::tuple(month, week, day, hour); }
    ka_date date(short year) const
    {
        return week == ka_none ? ka_date(month, day, year) : ka_date(week, day, month, year);
    }
};
constexpr unsigned short sun = 1, mon = 2, fri = 6;
const std::map<std::string, std::tuple<point_row, point_row, int, int>> catalogue_rules = {
    {"gb_1981", {{3, ka_last, sun, 2}, {10, ka_fourth, sun, 1}, 1981, 1988}},
    {"gb_1989", {{3, ka_last, sun, 2}, {10, ka_last, sun, 1}, 1989, 1989}},
    {"gb_1990", {{3, ka_last, sun, 2}, {10, ka_fourth, sun, 1}, 1990, 1995}},
    {"gb_1996", {{3, ka_last, sun, 1}, {10, ka_last, sun, 1}, 1996, 0}},
    {"cet_1996", {{3, ka_last, sun, 2}, {10, ka_last, sun, 2}, 1996, 0}},
    {"wet_1996", {{3, ka_last, sun, 1}, {10, ka_last, sun, 1}, 1996, 0}},
    {"sast_1985", {{10, ka_last, sun, 2}, {3, ka_first, sun, 1}, 1985, 0}},
    {"us_1967", {{4, ka_last, sun, 2}, {10, ka_last, sun, 1}, 1967, 1973}},
    {"us_1974", {{1, ka_none, 6, 2}, {11, ka_last, sun, 1}, 1974, 1974}},
    {"us_1975", {{2, ka_fourth, sun, 2}, {10, ka_last, sun, 1}, 1975, 1975}},
    {"us_1976", {{4, ka_last, sun, 2}, {10, ka_last, sun, 1}, 1976, 1986}},
    {"us_1987", {{4, ka_first, sun, 2}, {10, ka_last, sun, 1}, 1987, 2006}},
    {"us_2007", {{3, ka_second, sun, 2}, {11, ka_first, sun, 2}, 2007, 0}},
    {"yukon_1986", {{4, ka_last, sun, 2}, {10, ka_last, sun, 1}, 1986, 0}},
    {"israel_2001", {{4, ka_second, mon, 1}, {9, ka_last, mon, 0}, 2001, 2006}},
    {"israel_2007", {{3, ka_last, fri, 2}, {9, ka_third, sun, 1}, 2007, 0}},
};
using names = std::vector<std::string>;
const names british = {"gb_1996", "gb_1990", "gb_1989", "gb_1981"};
const names american = {"us_2007", "us_1987", "us_1976", "us_1975", "us_1974", "us_1967"};
const names alaskan = {"yukon_1986", "us_1975", "us_1974", "us_1967"};
const struct {
    const ka_time_zone& (*zone)();
    int minutes;
    const char *name, *dst_name;
    names rules;
} catalogue[] = {
    {ka_time_zone::utc, 0, "UTC0", "", {}},
    {ka_time_zone::greenwich, 0, "GMT0", "BST-1", british},
    {ka_time_zone::central_european, -60, "CET-1", "CEST-2", {"cet_1996"}},
    {ka_time_zone::western_european, 0, "WET0", "WEST-1", {"wet_1996"}},
    {ka_time_zone::portuguese, 0, "PWT0", "PST-1", {"wet_1996"}},
    {ka_time_zone::south_africa, -120, "SAST-2", "SADT-3", {"sast_1985"}},
    {ka_time_zone::hawaii, 600, "HST10", "", {}},
    {ka_time_zone::indiana, 300, "EST5", "", {}},
    {ka_time_zone::pacific, 480, "PST8", "PDT7", american},
    {ka_time_zone::mountain, 420, "MST7", "MDT6", american},
    {ka_time_zone::central, 360, "CST6", "CDT5", american},
    {ka_time_zone::eastern, 300, "EST5", "EDT4", american},
    {ka_time_zone::atlantic, 240, "AST4", "ADT3", american},
    {ka_time_zone::newfoundland, 210, "NST3", "NDT2", american},
    {ka_time_zone::yukon, 540, "YST9", "YDT8", alaskan},
    {ka_time_zone::aleutian, 600, "AST10", "ADT9", alaskan},
    {ka_time_zone::israel, -120, "IST-2", "IDT-3", {"israel_2007", "israel_2001"}},
};

TEST(catalogue, zones_rules_and_points_are_those_of_the_table_and_shared)
{
    std::map<std::string, const ka_time_zone_rule*> rules;
    std::map<decltype(point_row().key()), const ka_calendar_date*> points;
    for (const auto& row : catalogue) {
        const ka_time_zone& zone = row.zone();
        EXPECT_EQ(zone.name() + "/" + zone.dst_name(), row.name + std::string("/") + row.dst_name);
        EXPECT_EQ(zone.offset(), ka_time_period(row.minutes * 60)) << row.name;
        for (std::size_t slot = 0; slot < 7; ++slot) {
            const ka_time_zone_rule* const rule = open_zone::in_slot(zone, static_cast<int>(slot));
            ASSERT_EQ(rule != nullptr, slot < row.rules.size()) << row.name;
            if (rule == nullptr)
                continue;
            const auto& [start, end, first, last] = catalogue_rules.at(row.rules[slot]);
            EXPECT_EQ(rules.emplace(row.rules[slot], rule).first->second, rule) << row.rules[slot];
            EXPECT_EQ(points.emplace(start.key(), &rule->start_point()).first->second, &rule->start_point());
            EXPECT_EQ(points.emplace(end.key(), &rule->end_point()).first->second, &rule->end_point());
            EXPECT_TRUE(rule->start_year() == first && rule->end_year() == last &&
                        rule->adjustment() == hour);
        }
    }
    EXPECT_EQ(rules.size(), 16u);
    std::set<const void*> distinct;
    for (const auto& [name, rule] : rules)
        distinct.insert(rule);
    for (const auto& [key, point] : points)
        distinct.insert(point);
    EXPECT_EQ(distinct.size(), 16u + 17u);
}

TEST(catalogue, the_first_and_the_last_microsecond_of_every_year)
{
    for (const auto& row : catalogue)
        for (int year = 1960; year <= 2040; ++year) {
            SCOPED_TRACE(row.name + std::to_string(year));
            const auto at = [&](const ka_date& date, const ka_time& time) {
                return row.zone().is_dst(time, date);
            };
            const auto y = static_cast<short>(year);
            const auto name = std::find_if(row.rules.begin(), row.rules.end(), [&](const std::string& rule) {
                const auto& [start, end, first, last] = catalogue_rules.at(rule);
                return first <= year && (last == 0 || year <= last);
            });
            if (name == row.rules.end()) {
                EXPECT_FALSE(at(ka_date(1, 1, y), 0) || at(ka_date(7, 1, y), noon) ||
                             at(ka_date(12, 31, y), noon));
                continue;
            }
            const auto& [start, end, first, last] = catalogue_rules.at(*name);
            const ka_date from = start.date(y), to = end.date(y);
            const ka_time on(start.hour * 3600), off(end.hour * 3600);
            EXPECT_FALSE(at(from, on - one_us));
            EXPECT_TRUE(at(from, on));
            EXPECT_TRUE(end.hour == 0 ? at(to - ka_time_period(86400), ka_time::max_time())
                                      : at(to, off - one_us));
            EXPECT_FALSE(at(to, off));
            EXPECT_EQ(at(ka_date(1, 1, y), 0), to < from);
            EXPECT_EQ(at(ka_date(12, 31, y), ka_time::max_time()), to < from);
        }
}

TEST(catalogue, find_goes_by_the_exact_offset_and_the_first_match)
{
    const auto find = [](const ka_time_period& offset) {
        EXPECT_EQ(open_zone::find(offset, true), open_zone::find(offset, false));
        return open_zone::find(offset, true);
    };
    const names never = {"UTC0", "WET0", "PWT0", "HST10", "SAST-2"};
    for (const auto& row : catalogue) {
        const ka_time_zone* const found = find(ka_time_period(row.minutes * 60));
        ASSERT_NE(found, nullptr) << row.name;
        EXPECT_EQ(found->offset(), row.zone().offset());
        const bool is_found = &row.zone() != &ka_time_zone::indiana() &&
                              std::find(never.begin(), never.end(), row.name) == never.end();
        EXPECT_EQ(found == &row.zone(), is_found) << row.name;
        EXPECT_EQ(find(row.zone().offset() + one_us), nullptr);
        EXPECT_EQ(find(row.zone().offset() - one_us), nullptr);
    }
    EXPECT_EQ(find(ka_time_period(-19800)), nullptr);
}

}
