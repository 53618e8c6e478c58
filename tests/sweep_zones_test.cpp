#include <algorithm>
#include <chrono>
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
using std::chrono::days, std::chrono::floor, std::chrono::hours, std::chrono::minutes, std::chrono::sys_days;

/// What a clock shows, whichever clock it is.
using clock_time = std::chrono::sys_time<std::chrono::microseconds>;

constexpr int first_day = 38, last_day = 13688960;
constexpr sys_days day_zero{-days(2440588)};

constexpr int last = -1, day_of_month = 0, sun = 0, mon = 1, fri = 5;

struct point {
    int hour;
    unsigned int month;
    int week;
    unsigned int day; // a weekday from Sunday, 0, on but where `week` is `day_of_month`

    clock_time in(int year) const
    {
        const auto in_month = std::chrono::year(year) / month;
        const std::chrono::weekday weekday(day);
        if (week == day_of_month)
            return sys_days(in_month / day) + hours(hour);
        if (week == last)
            return sys_days(in_month / weekday[std::chrono::last]) + hours(hour);
        return sys_days(in_month / weekday[static_cast<unsigned int>(week)]) + hours(hour);
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
    minutes offset;
    std::string std_name, dst_name;
    rows rules;
    const std::string& name(bool dst) const { return dst ? dst_name : std_name; }
} catalogue[] = {
    {zone::greenwich, 0min, "GMT0", "BST-1", british}, {zone::eastern, 300min, "EST5", "EDT4", american},
    {zone::western_european, 0min, "WET0", "WEST-1", western}, {zone::indiana, 300min, "EST5", "", {}},
    {zone::portuguese, 0min, "PWT0", "PST-1", western}, {zone::israel, -120min, "IST-2", "IDT-3", israeli},
    {zone::central_european, -60min, "CET-1", "CEST-2", central}, {zone::utc, 0min, "UTC0", "", {}},
    {zone::newfoundland, 210min, "NST3", "NDT2", american}, {zone::yukon, 540min, "YST9", "YDT8", alaskan},
    {zone::atlantic, 240min, "AST4", "ADT3", american}, {zone::central, 360min, "CST6", "CDT5", american},
    {zone::mountain, 420min, "MST7", "MDT6", american}, {zone::pacific, 480min, "PST8", "PDT7", american},
    {zone::aleutian, 600min, "AST10", "ADT9", alaskan}, {zone::hawaii, 600min, "HST10", "", {}},
    {zone::south_africa, -120min, "SAST-2", "SADT-3", southern},
};
// clang-format on

/// Opens what a derived class may use.
struct open_zone : ka_time_zone {
    using ka_time_zone::find, ka_time_zone::rule;
};

bool is_dst(const rows& rules, clock_time now)
{
    const int year(std::chrono::year_month_day(floor<days>(now)).year());
    return std::any_of(rules.begin(), rules.end(), [&](const auto& rule) { return rule.holds(now, year); });
}

ka_time_period as_period(std::chrono::microseconds count)
{
    return ka_time_period(count / 1s, static_cast<int>((count % 1s).count()));
}
ka_time as_time(clock_time now) { return ka_time(as_period(now - floor<days>(now))); }
int day_of(clock_time now) { return static_cast<int>((floor<days>(now) - day_zero) / 24h); }
bool is_in_range(clock_time now) { return first_day <= day_of(now) && day_of(now) <= last_day; }

/// Whether a reading is as expected, or refuses a date that is out of range.
template <typename Value>
bool gives(bool is_in_range, const Value& expected, auto reading)
{
    try {
        return reading() == expected && is_in_range;
    } catch (const ka_time_varnel_error& error) {
        return error.code() == 4 && !is_in_range;
    }
}

/// From universal time to what the standard clock shows, and to local time.
bool reads(const zone_row& row, clock_time standard)
{
    const clock_time universal = standard + row.offset;
    ka_time_and_date moment;
    moment.time_zone(row.get());
    moment.utc_time_and_date(as_period(universal - day_zero));
    const bool dst = is_dst(row.rules, standard), can_ask = is_in_range(standard);
    const clock_time local = standard + hours(dst);
    const bool has_date = can_ask && is_in_range(local);
    return moment.utc_time() == as_time(universal) && moment.std_time() == as_time(standard) &&
           gives(is_in_range(universal), day_of(universal), [&] { return moment.utc_date().julian_day(); }) &&
           gives(can_ask, day_of(standard), [&] { return moment.std_date().julian_day(); }) &&
           gives(can_ask, dst, [&] { return moment.is_dst(); }) &&
           gives(can_ask, as_time(local), [&] { return moment.time(); }) &&
           gives(has_date, day_of(local), [&] { return moment.date().julian_day(); }) &&
           gives(has_date, row.name(dst), [&] { return moment.to_string("%Z"); });
}

/// From local time to universal time, with the rules asked about the time handed in.
bool sets(const zone_row& row, clock_time local)
{
    if (!is_in_range(local))
        return true;
    const zone& of = row.get();
    const ka_time time = as_time(local);
    const ka_date date(day_of(local));
    const bool dst = is_dst(row.rules, local);
    const auto instant = as_period(local + row.offset - hours(dst) - day_zero);
    return ka_time_and_date(time, date, of).utc_time_and_date() == instant && of.is_dst(time, date) == dst &&
           of.dst_adjustment(time, date) == as_period(hours(dst)) &&
           of.offset(time, date) == as_period(row.offset - hours(dst)) &&
           of.name(time, date) == row.name(dst);
}

TEST(zone_sweep, every_change_of_the_clocks_and_the_ends_of_the_range)
{
    for (const zone_row& row : catalogue) {
        std::vector<clock_time> edges = {day_zero + days(first_day), day_zero + days(last_day + 1),
                                         sys_days(std::chrono::year(1) / 1 / 1)};
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
        // What is set in the hour after a change can read an hour earlier.
        for (const clock_time edge : edges)
            for (const clock_time now : {edge - 1us, edge, edge + 1us})
                ASSERT_TRUE(reads(row, now - 1h) && reads(row, now) && sets(row, now) && sets(row, now + 1h))
                    << row.name(false) << ", second " << (edge - day_zero) / 1s;
    }
}

TEST(zone_sweep, zones_share_rules_and_are_found_as_the_table_says)
{
    const ka_time_zone_rule* (ka_time_zone::*const in_slot)(int) const = &open_zone::rule;
    std::set<const void*> distinct;
    for (const zone_row& row : catalogue) {
        const zone& built_in = row.get();
        EXPECT_EQ(built_in.name() + built_in.dst_name(), row.name(false) + row.name(true));
        int slot = 0;
        for (auto expected = row.rules.rbegin(); expected != row.rules.rend(); ++expected) {
            const ka_time_zone_rule& rule = *(built_in.*in_slot)(slot++);
            EXPECT_TRUE(rule.start_year() == expected->first_year && rule.end_year() == expected->last_year);
            distinct.insert({&rule, &rule.start_point(), &rule.end_point()});
        }
        EXPECT_EQ((built_in.*in_slot)(slot), nullptr);
        const auto& found = *std::find_if(std::begin(catalogue), std::end(catalogue),
                                          [&](const auto& any) { return any.offset == row.offset; });
        for (const auto delta : {-1us, 0us, 1us})
            for (const bool dst : {false, true})
                EXPECT_EQ(open_zone::find(as_period(row.offset + delta), dst),
                          delta == 0us ? &found.get() : nullptr);
    }
    EXPECT_EQ(distinct.size(), 16u + 17u);
}

}
