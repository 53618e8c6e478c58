#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

#include "opened.h"
#include "printers.h"

// Every change of the clocks of every built-in zone, and the ends of the range,
// read and set. What is expected comes from the catalogue as it is published
// and from the calendar of the standard library alone.

namespace {

using namespace std::chrono;
using namespace std::chrono_literals;

/// What a clock shows, whichever clock it is.
using clock_time = sys_time<microseconds>;

constexpr int first_day = 38, last_day = 13688960;
constexpr sys_days day_zero{-days(2440588)};

struct point {
    std::variant<month_day, month_weekday, month_weekday_last> date;
    hours when;

    clock_time in(std::chrono::year year) const
    {
        return std::visit([&](const auto& any) { return sys_days(year / any); }, date) + when;
    }
};

struct rule_row {
    point start, end;
    int first_year, last_year = 0;

    bool covers(std::chrono::year year) const
    {
        return first_year <= int(year) && (last_year == 0 || int(year) <= last_year);
    }
    bool holds(clock_time now) const
    {
        const auto year = year_month_day(floor<days>(now)).year();
        if (!covers(year))
            return false;
        const clock_time from = start.in(year), to = end.in(year);
        return from < to ? from <= now && now < to : from <= now || now < to;
    }
};

// clang-format off
using rule_rows = std::vector<rule_row>;
const point march{March/Sunday[last], 2h}, april{April/Sunday[last], 2h}, october{October/Sunday[last], 1h};
const point march_1h{March/Sunday[last], 1h}, fourth{October/Sunday[4], 1h};
const rule_rows british = {
    {march, fourth, 1981, 1988}, {march, october, 1989, 1989}, {march, fourth, 1990, 1995},
    {march_1h, october, 1996}};
const rule_rows american = {
    {april, october, 1967, 1973}, {{January/6, 2h}, {November/Sunday[last], 1h}, 1974, 1974},
    {{February/Sunday[4], 2h}, october, 1975, 1975}, {april, october, 1976, 1986},
    {{April/Sunday[1], 2h}, october, 1987, 2006}, {{March/Sunday[2], 2h}, {November/Sunday[1], 2h}, 2007}};
const rule_rows alaskan = {american[0], american[1], american[2], {april, october, 1986}};
const rule_rows western = {{march_1h, october, 1996}}, central = {{march, {October/Sunday[last], 2h}, 1996}};
const rule_rows southern = {{{October/Sunday[last], 2h}, {March/Sunday[1], 1h}, 1985}};
const rule_rows israeli = {
    {{April/Monday[2], 1h}, {September/Monday[last], 0h}, 2001, 2006},
    {{March/Friday[last], 2h}, {September/Sunday[3], 1h}, 2007}};

using zone = ka_time_zone;
/// Of zones with the same offset, the one that is found by it stands first.
const struct zone_row {
    const zone& (*get)();
    minutes offset;
    std::string std_name, dst_name;
    rule_rows rules;
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

bool is_dst(const rule_rows& rules, clock_time now)
{
    return std::any_of(rules.begin(), rules.end(), [&](const auto& rule) { return rule.holds(now); });
}

ka_time_period as_period(microseconds count)
{
    return ka_time_period(count / 1s, static_cast<int>((count % 1s).count()));
}
ka_time as_time(clock_time now) { return ka_time(as_period(now - floor<days>(now))); }
int day_of(clock_time now) { return static_cast<int>((floor<days>(now) - day_zero) / 24h); }
bool is_in_range(clock_time now) { return first_day <= day_of(now) && day_of(now) <= last_day; }

/// What a moment shows on its three clocks; nothing where the date is out of range.
struct reading {
    ka_time utc_time, std_time;
    std::optional<int> utc_day, std_day, day;
    std::optional<ka_time> time;
    std::optional<bool> is_dst;
    std::optional<std::string> name;

    bool operator==(const reading&) const = default;

    friend std::ostream& operator<<(std::ostream& out, const reading& of)
    {
        using testing::PrintToString;
        return out << "universal " << PrintToString(of.utc_day) << ' ' << PrintToString(of.utc_time)
                   << ", standard " << PrintToString(of.std_day) << ' ' << PrintToString(of.std_time)
                   << ", local " << PrintToString(of.day) << ' ' << PrintToString(of.time) << ", dst "
                   << PrintToString(of.is_dst) << ", name " << PrintToString(of.name);
    }
};

template <typename Operation>
std::optional<std::invoke_result_t<Operation>> unless_out_of_range(Operation operation)
{
    try {
        return operation();
    } catch (const ka_time_varnel_error& error) {
        if (error.code() != ka_invalid_day)
            throw;
        return {};
    }
}

reading read(const zone_row& row, clock_time universal)
{
    ka_time_and_date moment;
    moment.time_zone(row.get());
    moment.utc_time_and_date(as_period(universal - day_zero));
    return {moment.utc_time(),
            moment.std_time(),
            unless_out_of_range([&] { return moment.utc_date().julian_day(); }),
            unless_out_of_range([&] { return moment.std_date().julian_day(); }),
            unless_out_of_range([&] { return moment.date().julian_day(); }),
            unless_out_of_range([&] { return moment.time(); }),
            unless_out_of_range([&] { return moment.is_dst(); }),
            unless_out_of_range([&] { return moment.to_string("%Z"); })};
}

/// From universal time to what the standard clock shows, and to local time.
reading expected_reading(const zone_row& row, clock_time universal)
{
    const clock_time standard = universal - row.offset;
    const bool dst = is_dst(row.rules, standard);
    const clock_time local = standard + hours(dst);
    reading expected = {as_time(universal), as_time(standard), {}, {}, {}, {}, {}, {}};
    if (is_in_range(universal))
        expected.utc_day = day_of(universal);
    if (!is_in_range(standard))
        return expected;
    expected.std_day = day_of(standard);
    expected.time = as_time(local);
    expected.is_dst = dst;
    if (is_in_range(local)) {
        expected.day = day_of(local);
        expected.name = row.name(dst);
    }
    return expected;
}

/// What a local time set is taken for.
struct setting {
    ka_time_period instant, adjustment, offset;
    bool is_dst;
    std::string name;

    bool operator==(const setting&) const = default;

    friend std::ostream& operator<<(std::ostream& out, const setting& of)
    {
        return out << shown(of.instant) << " after day 0, adjusted by " << shown(of.adjustment) << ", offset "
                   << shown(of.offset) << ", dst " << of.is_dst << ", name " << of.name;
    }
};

setting set(const zone_row& row, clock_time local)
{
    const zone& of = row.get();
    const ka_time time = as_time(local);
    const ka_date date(day_of(local));
    return {ka_time_and_date(time, date, of).utc_time_and_date(), of.dst_adjustment(time, date),
            of.offset(time, date), of.is_dst(time, date), of.name(time, date)};
}

/// From local time to universal time, with the rules asked about the time handed in.
setting expected_setting(const zone_row& row, clock_time local)
{
    const bool dst = is_dst(row.rules, local);
    return {as_period(local + row.offset - hours(dst) - day_zero), as_period(hours(dst)),
            as_period(row.offset - hours(dst)), dst, row.name(dst)};
}

TEST(zone_sweep, every_change_of_the_clocks_and_the_ends_of_the_range)
{
    for (const zone_row& row : catalogue) {
        std::vector<clock_time> edges = {day_zero + days(first_day), day_zero + days(last_day + 1),
                                         sys_days(1y / January / 1)};
        for (auto year = 1960y; year <= 32766y; ++year) {
            const bool is_early = year <= 2040y;
            if (!is_early && year < 32760y && int(year) % SWEEP_STRIDE != 0)
                continue;
            if (is_early)
                edges.push_back(sys_days(year / January / 1));
            for (const rule_row& rule : row.rules)
                if (is_early || rule.covers(year))
                    edges.insert(edges.end(), {rule.start.in(year), rule.end.in(year)});
        }
        // What is set in the hour after a change can read an hour earlier.
        for (const clock_time edge : edges)
            for (const clock_time now : {edge - 1us, edge, edge + 1us}) {
                for (const clock_time universal : {now - 1h + row.offset, now + row.offset})
                    ASSERT_EQ(read(row, universal), expected_reading(row, universal)) << row.std_name;
                for (const clock_time local : {now, now + 1h})
                    if (is_in_range(local)) {
                        ASSERT_EQ(set(row, local), expected_setting(row, local)) << row.std_name;
                    }
            }
    }
}

TEST(zone_sweep, zones_are_found_as_the_table_says)
{
    std::map<minutes, const zone*> first_of;
    for (const zone_row& row : catalogue) {
        SCOPED_TRACE(row.std_name);
        EXPECT_EQ(row.get().name(), row.std_name);
        EXPECT_EQ(row.get().dst_name(), row.dst_name);
        const zone* const found = first_of.try_emplace(row.offset, &row.get()).first->second;
        for (const auto delta : {-1us, 0us, 1us})
            for (const bool dst : {false, true})
                EXPECT_EQ(opened_zone::find(as_period(row.offset + delta), dst),
                          delta == 0us ? found : nullptr);
    }
}

}
