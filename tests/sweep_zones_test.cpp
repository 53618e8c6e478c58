#include <algorithm>
#include <chrono>
#include <ctime>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

// Every change of the clocks of every built-in zone, and the ends of the range,
// read and set. What is expected comes from the catalogue as it is published
// and from the calendar of the standard library alone.

namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days, std::chrono::hours, std::chrono::floor, std::chrono::minutes;

/// What a clock shows, whichever clock it is.
using clock_time = std::chrono::sys_time<std::chrono::microseconds>;

constexpr int epoch = 2440588, first_day = 38, last_day = 13688960;
constexpr sys_days day_zero{-std::chrono::days(epoch)};

constexpr int last = -1, day_of_month = 0, sun = 0, mon = 1, fri = 5;

struct point {
    int hour;
    unsigned int month;
    int week;
    unsigned int day; // a weekday from Sunday, 0, on but where `week` is `day_of_month`

    clock_time in(int year) const
    {
        const auto days = std::chrono::year(year) / month;
        const std::chrono::weekday weekday(day);
        const sys_days found = week == day_of_month ? sys_days(days / day)
                               : week == last       ? sys_days(days / weekday[std::chrono::last])
                                                    : sys_days(days / weekday[static_cast<unsigned>(week)]);
        return found + hours(hour);
    }
};

struct rule_row {
    point start, end;
    int first_year, last_year = 0;

    bool covers(int year) const { return first_year <= year && (last_year == 0 || year <= last_year); }
    bool holds(clock_time now, int year) const
    {
        if (!covers(year))
            return false;
        const bool is_after_start = start.in(year) <= now, is_before_end = now < end.in(year);
        return start.month < end.month ? is_after_start && is_before_end : is_after_start || is_before_end;
    }
};

// clang-format off
using rows = std::vector<rule_row>;
const rows british = {
    {{2, 3, last, sun}, {1, 10, 4, sun}, 1981, 1988}, {{2, 3, last, sun}, {1, 10, last, sun}, 1989, 1989},
    {{2, 3, last, sun}, {1, 10, 4, sun}, 1990, 1995}, {{1, 3, last, sun}, {1, 10, last, sun}, 1996}};
const rows american = {
    {{2, 4, last, sun}, {1, 10, last, sun}, 1967, 1973},
    {{2, 1, day_of_month, 6}, {1, 11, last, sun}, 1974, 1974},
    {{2, 2, 4, sun}, {1, 10, last, sun}, 1975, 1975}, {{2, 4, last, sun}, {1, 10, last, sun}, 1976, 1986},
    {{2, 4, 1, sun}, {1, 10, last, sun}, 1987, 2006}, {{2, 3, 2, sun}, {2, 11, 1, sun}, 2007}};
const rows alaskan = {american[0], american[1], american[2], {{2, 4, last, sun}, {1, 10, last, sun}, 1986}};
const rows western = {{{1, 3, last, sun}, {1, 10, last, sun}, 1996}};
const rows central = {{{2, 3, last, sun}, {2, 10, last, sun}, 1996}};
const rows southern = {{{2, 10, last, sun}, {1, 3, 1, sun}, 1985}};
const rows israeli = {
    {{1, 4, 2, mon}, {0, 9, last, mon}, 2001, 2006}, {{2, 3, last, fri}, {1, 9, 3, sun}, 2007}};

using zone = ka_time_zone;
/// Of zones with the same offset, the one that is found by it stands first.
const struct zone_row {
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

/// Opens what a derived class may use.
struct open_zone : ka_time_zone {
    using ka_time_zone::find, ka_time_zone::rule;
    static const ka_time_zone_rule* in_slot(const ka_time_zone& any, int slot)
    {
        using by_slot = const ka_time_zone_rule* (ka_time_zone::*)(int) const;
        return (any.*static_cast<by_slot>(&open_zone::rule))(slot);
    }
};

bool is_dst(const rows& rules, clock_time now)
{
    const int year(std::chrono::year_month_day(floor<std::chrono::days>(now)).year());
    return std::any_of(rules.begin(), rules.end(), [&](const auto& rule) { return rule.holds(now, year); });
}

long long day_of(clock_time now) { return (floor<std::chrono::days>(now) - day_zero).count(); }
bool is_in_range(clock_time now) { return first_day <= day_of(now) && day_of(now) <= last_day; }
ka_time_period as_period(std::chrono::microseconds count)
{
    return ka_time_period(count / 1s, static_cast<int>((count % 1s).count()));
}
ka_time as_time(clock_time now) { return ka_time(as_period(now - floor<std::chrono::days>(now))); }

/// What an operation gives, or below zero the code of its error.
template <typename Operation>
long long read(Operation operation)
{
    try {
        return operation();
    } catch (const ka_time_varnel_error& error) {
        return -error.code();
    }
}
constexpr long long invalid_day = -4;

bool shows(const std::tm& fields, clock_time now, bool dst)
{
    const sys_days today = floor<std::chrono::days>(now);
    const std::chrono::year_month_day date(today);
    const std::chrono::hh_mm_ss time(now - today);
    const int year = int(date.year());
    return fields.tm_year == year - 1900 - (year < 1) &&
           fields.tm_mon + 1 == static_cast<int>(unsigned(date.month())) &&
           fields.tm_mday == static_cast<int>(unsigned(date.day())) && fields.tm_hour == time.hours() / 1h &&
           fields.tm_min == time.minutes() / 1min && fields.tm_sec == time.seconds() / 1s &&
           fields.tm_wday == static_cast<int>(std::chrono::weekday(today).c_encoding()) &&
           fields.tm_yday == (today - sys_days(date.year() / 1 / 1)).count() && fields.tm_isdst == dst;
}

/// Universal to local, at what the standard clock shows.
bool reads(const zone_row& row, clock_time standard)
{
    ka_time_and_date moment;
    moment.time_zone(row.get());
    const clock_time universal = standard + minutes(row.minutes);
    moment.utc_time_and_date(as_period(universal - day_zero));
    const bool dst = is_dst(row.rules, standard);
    const clock_time local = standard + hours(dst);
    const bool can_ask = is_in_range(standard), has_date = can_ask && is_in_range(local);
    return moment.utc_time() == as_time(universal) && moment.std_time() == as_time(standard) &&
           read([&] { return moment.utc_date().julian_day(); }) ==
               (is_in_range(universal) ? day_of(universal) : invalid_day) &&
           read([&] { return moment.std_date().julian_day(); }) ==
               (can_ask ? day_of(standard) : invalid_day) &&
           read([&] { return moment.date().julian_day(); }) == (has_date ? day_of(local) : invalid_day) &&
           read([&] { return moment.is_dst(); }) == (can_ask ? dst : invalid_day) &&
           read([&] { return moment.time() == as_time(local); }) == (can_ask ? true : invalid_day) &&
           read([&] { return shows(moment, local, dst); }) == (has_date ? true : invalid_day) &&
           read([&] { return moment.to_string("%Z") == (dst ? row.dst_name : row.name); }) ==
               (has_date ? true : invalid_day);
}

/// Local to universal, with the rules asked about the time handed in.
bool sets(const zone_row& row, clock_time local)
{
    const zone& of = row.get();
    const ka_time time = as_time(local);
    const ka_date date(day_of(local));
    const bool dst = is_dst(row.rules, local);
    const ka_time_period adjustment(dst ? 3600 : 0);
    const clock_time universal = local + minutes(row.minutes) - hours(dst);
    return ka_time_and_date(time, date, of).utc_time_and_date() == as_period(universal - day_zero) &&
           of.is_dst(time, date) == dst && of.dst_adjustment(time, date) == adjustment &&
           of.offset(time, date) == ka_time_period(row.minutes * 60) - adjustment &&
           of.name(time, date) == (dst ? row.dst_name : row.name);
}

TEST(zone_sweep, every_change_of_the_clocks_and_the_ends_of_the_range)
{
    for (const zone_row& row : catalogue) {
        std::vector<clock_time> edges = {day_zero + 24h * first_day, day_zero + 24h * (last_day + 1)};
        for (int year = 1960; year <= 32766; ++year) {
            if (year > 2040 && year < 32760 && year % SWEEP_STRIDE != 0)
                continue;
            const sys_days new_year(std::chrono::year(year) / 1 / 1);
            if (year <= 2040 || is_dst(row.rules, new_year))
                edges.push_back(new_year);
            for (const rule_row& rule : row.rules)
                if (year <= 2040 || rule.covers(year))
                    edges.insert(edges.end(), {rule.start.in(year), rule.end.in(year)});
        }
        for (const clock_time edge : edges)
            for (const clock_time now : {edge - 1us, edge, edge + 1us}) {
                // What is set in the hour after a change can read an hour earlier.
                ASSERT_TRUE(reads(row, now) && reads(row, now - 1h))
                    << row.name << ": " << now.time_since_epoch() / 1us;
                for (const clock_time local : {now, now + 1h})
                    ASSERT_TRUE(!is_in_range(local) || sets(row, local))
                        << row.name << ": " << local.time_since_epoch() / 1us;
            }
    }
}

TEST(zone_sweep, zones_share_rules_and_are_found_as_the_table_says)
{
    std::set<const void*> distinct;
    for (const zone_row& row : catalogue) {
        SCOPED_TRACE(row.name);
        const zone& built_in = row.get();
        EXPECT_EQ(built_in.name() + "/" + built_in.dst_name(), row.name + std::string("/") + row.dst_name);
        EXPECT_EQ(built_in.offset(), ka_time_period(row.minutes * 60));
        EXPECT_EQ(built_in.dst_observed(), !row.rules.empty());
        int slot = 0;
        for (auto expected = row.rules.rbegin(); expected != row.rules.rend(); ++expected) {
            const ka_time_zone_rule* const rule = open_zone::in_slot(built_in, slot++);
            ASSERT_NE(rule, nullptr);
            EXPECT_TRUE(rule->start_year() == expected->first_year &&
                        rule->end_year() == expected->last_year &&
                        rule->adjustment() == ka_time_period(3600));
            distinct.insert({rule, &rule->start_point(), &rule->end_point()});
        }
        EXPECT_EQ(open_zone::in_slot(built_in, slot), nullptr);
        const auto& found = *std::find_if(std::begin(catalogue), std::end(catalogue),
                                          [&](const auto& any) { return any.minutes == row.minutes; });
        for (const int delta : {-1, 0, 1})
            for (const bool dst : {false, true})
                EXPECT_EQ(open_zone::find(built_in.offset() + ka_time_period(0, delta), dst),
                          delta == 0 ? &found.get() : nullptr);
    }
    EXPECT_EQ(distinct.size(), 16u + 17u);
}

}
