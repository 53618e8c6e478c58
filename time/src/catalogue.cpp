#include <time/zone.h>

#include <iterator>

#include "access.h"
#include "release.h"

namespace {

// The catalogue as data. A point or a rule is named by its row, and the objects
// stand in arrays beside the tables, one for each row.

enum point_id {
    mar_last_sun_02,
    mar_last_sun_01,
    oct_fourth_sun_01,
    oct_last_sun_01,
    oct_last_sun_02,
    mar_first_sun_01,
    apr_last_sun_02,
    jan_6_02,
    nov_last_sun_01,
    feb_fourth_sun_02,
    apr_first_sun_02,
    mar_second_sun_02,
    nov_first_sun_02,
    apr_second_mon_01,
    sep_last_mon_00,
    mar_last_fri_02,
    sep_third_sun_01,
    point_count
};

constexpr unsigned short sunday = 1;
constexpr unsigned short monday = 2;
constexpr unsigned short friday = 6;

struct point_row {
    point_id id;
    int hour;
    unsigned short month;
    ka_which_one week;
    /// The weekday, or the day of the month where the week is `ka_none`.
    unsigned short day;
};

// clang-format off
constexpr point_row point_table[] = {
    {mar_last_sun_02, 2, 3, ka_last, sunday},
    {mar_last_sun_01, 1, 3, ka_last, sunday},
    {oct_fourth_sun_01, 1, 10, ka_fourth, sunday},
    {oct_last_sun_01, 1, 10, ka_last, sunday},
    {oct_last_sun_02, 2, 10, ka_last, sunday},
    {mar_first_sun_01, 1, 3, ka_first, sunday},
    {apr_last_sun_02, 2, 4, ka_last, sunday},
    {jan_6_02, 2, 1, ka_none, 6},
    {nov_last_sun_01, 1, 11, ka_last, sunday},
    {feb_fourth_sun_02, 2, 2, ka_fourth, sunday},
    {apr_first_sun_02, 2, 4, ka_first, sunday},
    {mar_second_sun_02, 2, 3, ka_second, sunday},
    {nov_first_sun_02, 2, 11, ka_first, sunday},
    {apr_second_mon_01, 1, 4, ka_second, monday},
    {sep_last_mon_00, 0, 9, ka_last, monday},
    {mar_last_fri_02, 2, 3, ka_last, friday},
    {sep_third_sun_01, 1, 9, ka_third, sunday},
};
// clang-format on

enum rule_id {
    gb_1981,
    gb_1989,
    gb_1990,
    gb_1996,
    cet_1996,
    wet_1996,
    sast_1985,
    america_1967,
    america_1974,
    america_1975,
    america_1976,
    america_1987,
    america_2007,
    yukon_1986,
    israel_2001,
    israel_2007,
    rule_count
};

constexpr short open_ended = 0;

struct rule_row {
    rule_id id;
    point_id start;
    point_id end;
    short first_year;
    short last_year;
};

constexpr rule_row rule_table[] = {
    {gb_1981, mar_last_sun_02, oct_fourth_sun_01, 1981, 1988},
    {gb_1989, mar_last_sun_02, oct_last_sun_01, 1989, 1989},
    {gb_1990, mar_last_sun_02, oct_fourth_sun_01, 1990, 1995},
    {gb_1996, mar_last_sun_01, oct_last_sun_01, 1996, open_ended},
    {cet_1996, mar_last_sun_02, oct_last_sun_02, 1996, open_ended},
    {wet_1996, mar_last_sun_01, oct_last_sun_01, 1996, open_ended},
    {sast_1985, oct_last_sun_02, mar_first_sun_01, 1985, open_ended},
    {america_1967, apr_last_sun_02, oct_last_sun_01, 1967, 1973},
    {america_1974, jan_6_02, nov_last_sun_01, 1974, 1974},
    {america_1975, feb_fourth_sun_02, oct_last_sun_01, 1975, 1975},
    {america_1976, apr_last_sun_02, oct_last_sun_01, 1976, 1986},
    {america_1987, apr_first_sun_02, oct_last_sun_01, 1987, 2006},
    {america_2007, mar_second_sun_02, nov_first_sun_02, 2007, open_ended},
    {yukon_1986, apr_last_sun_02, oct_last_sun_01, 1986, open_ended},
    {israel_2001, apr_second_mon_01, sep_last_mon_00, 2001, 2006},
    {israel_2007, mar_last_fri_02, sep_third_sun_01, 2007, open_ended},
};

template <typename Row, std::size_t Count>
constexpr bool is_in_order_of_ids(const Row (&table)[Count])
{
    for (std::size_t i = 0; i < Count; ++i)
        if (table[i].id != i)
            return false;
    return true;
}
static_assert(std::size(point_table) == point_count && is_in_order_of_ids(point_table));
static_assert(std::size(rule_table) == rule_count && is_in_order_of_ids(rule_table));

/// The rules of a zone, from the latest on; unused places are `rule_count`.
struct rule_list {
    rule_id rules[7] = {rule_count, rule_count, rule_count, rule_count, rule_count, rule_count, rule_count};

    template <typename... Rules>
    constexpr rule_list(Rules... listed)
    {
        int place = 0;
        ((rules[place++] = listed), ...);
    }
};

constexpr rule_list no_rules;
constexpr rule_list british(gb_1996, gb_1990, gb_1989, gb_1981);
constexpr rule_list american(america_2007, america_1987, america_1976, america_1975, america_1974,
                             america_1967);
constexpr rule_list alaskan(yukon_1986, america_1975, america_1974, america_1967);
constexpr rule_list israeli(israel_2007, israel_2001);

/// Positive west of Greenwich.
constexpr int hours(int count) { return count * 3600; }

const ka_calendar_date* made_points[point_count];
ka_simple_time_zone_rule* made_rules[rule_count];

const ka_calendar_date* make_point(const point_row& row)
{
    const ka_time_period when(row.hour * 3600);
    return row.week == ka_none ? new ka_calendar_date(when, row.month, row.day)
                               : new ka_calendar_date(when, row.month, row.week, row.day);
}

ka_simple_time_zone_rule& rule_of(rule_id id)
{
    const rule_row& row = rule_table[id];
    if (made_rules[id] == nullptr)
        made_rules[id] = new ka_simple_time_zone_rule(*made_points[row.start], *made_points[row.end],
                                                      row.first_year, row.last_year);
    return *made_rules[id];
}

}

/// The built-in zones, in the order in which they are built.
struct ka_access::catalogue {
    struct row {
        ka_time_zone** zone;
        int offset;
        const char* name;
        const char* dst_name;
        rule_list rules;
        /// Whether the zone is found by its offset: one zone of each offset is.
        bool is_found;
    };

    // clang-format off
    static constexpr row rows[] = {
        {&ka_time_zone::utc_,    0,              "UTC",  "",     no_rules,  false},
        {&ka_time_zone::gmt_,    0,              "GMT",  "BST",  british,   true},
        {&ka_time_zone::cet_,    hours(-1),      "CET",  "CEST", cet_1996,  true},
        {&ka_time_zone::wet_,    0,              "WET",  "WEST", wet_1996,  false},
        {&ka_time_zone::pwt_,    0,              "PWT",  "PST",  wet_1996,  false},
        {&ka_time_zone::sast_,   hours(-2),      "SAST", "SADT", sast_1985, false},
        {&ka_time_zone::hawt_,   hours(10),      "HST",  "",     no_rules,  false},
        {&ka_time_zone::indt_,   hours(5),       "EST",  "",     no_rules,  false},
        {&ka_time_zone::pst_,    hours(8),       "PST",  "PDT",  american,  true},
        {&ka_time_zone::mst_,    hours(7),       "MST",  "MDT",  american,  true},
        {&ka_time_zone::cst_,    hours(6),       "CST",  "CDT",  american,  true},
        {&ka_time_zone::est_,    hours(5),       "EST",  "EDT",  american,  true},
        {&ka_time_zone::ast_,    hours(4),       "AST",  "ADT",  american,  true},
        {&ka_time_zone::nst_,    hours(3) + 1800,  "NST",  "NDT",  american,  true},
        {&ka_time_zone::yst_,    hours(9),       "YST",  "YDT",  alaskan,   true},
        {&ka_time_zone::ast_10_, hours(10),      "AST",  "ADT",  alaskan,   true},
        {&ka_time_zone::ist_,    hours(-2),      "IST",  "IDT",  israeli,   true},
    };
    // clang-format on

    static constexpr bool are_found_by_one_offset_each()
    {
        for (const row& one : rows)
            for (const row& other : rows)
                if (&one != &other && one.is_found && other.is_found && one.offset == other.offset)
                    return false;
        return true;
    }
};
static_assert(ka_access::catalogue::are_found_by_one_offset_each());

ka_time_zone* ka_time_zone::utc_ = nullptr;
const ka_time_zone& ka_time_zone::utc() noexcept { return *utc_; }

ka_time_zone* ka_time_zone::gmt_ = nullptr;
const ka_time_zone& ka_time_zone::greenwich() noexcept { return *gmt_; }

ka_time_zone* ka_time_zone::cet_ = nullptr;
const ka_time_zone& ka_time_zone::central_european() noexcept { return *cet_; }

ka_time_zone* ka_time_zone::wet_ = nullptr;
const ka_time_zone& ka_time_zone::western_european() noexcept { return *wet_; }

ka_time_zone* ka_time_zone::pwt_ = nullptr;
const ka_time_zone& ka_time_zone::portuguese() noexcept { return *pwt_; }

ka_time_zone* ka_time_zone::sast_ = nullptr;
const ka_time_zone& ka_time_zone::south_africa() noexcept { return *sast_; }

ka_time_zone* ka_time_zone::hawt_ = nullptr;
const ka_time_zone& ka_time_zone::hawaii() noexcept { return *hawt_; }

ka_time_zone* ka_time_zone::indt_ = nullptr;
const ka_time_zone& ka_time_zone::indiana() noexcept { return *indt_; }

ka_time_zone* ka_time_zone::pst_ = nullptr;
const ka_time_zone& ka_time_zone::pacific() noexcept { return *pst_; }

ka_time_zone* ka_time_zone::mst_ = nullptr;
const ka_time_zone& ka_time_zone::mountain() noexcept { return *mst_; }

ka_time_zone* ka_time_zone::cst_ = nullptr;
const ka_time_zone& ka_time_zone::central() noexcept { return *cst_; }

ka_time_zone* ka_time_zone::est_ = nullptr;
const ka_time_zone& ka_time_zone::eastern() noexcept { return *est_; }

ka_time_zone* ka_time_zone::ast_ = nullptr;
const ka_time_zone& ka_time_zone::atlantic() noexcept { return *ast_; }

ka_time_zone* ka_time_zone::nst_ = nullptr;
const ka_time_zone& ka_time_zone::newfoundland() noexcept { return *nst_; }

ka_time_zone* ka_time_zone::yst_ = nullptr;
const ka_time_zone& ka_time_zone::yukon() noexcept { return *yst_; }

ka_time_zone* ka_time_zone::ast_10_ = nullptr;
const ka_time_zone& ka_time_zone::aleutian() noexcept { return *ast_10_; }

ka_time_zone* ka_time_zone::ist_ = nullptr;
const ka_time_zone& ka_time_zone::israel() noexcept { return *ist_; }

void ka_time_zone::create_zones()
{
    for (const point_row& row : point_table)
        made_points[row.id] = make_point(row);
    for (const auto& row : ka_access::catalogue::rows) {
        *row.zone = new ka_time_zone(ka_time_period(row.offset), row.name, row.dst_name);
        for (const rule_id id : row.rules.rules)
            if (id != rule_count)
                (*row.zone)->insert(rule_of(id));
    }
}

void ka_time_zone::delete_zones() noexcept
{
    for (const auto& row : ka_access::catalogue::rows)
        release(*row.zone);
    release(made_rules);
    release(made_points);
}

ka_time_zone* ka_time_zone::find(ka_time_period offset, bool) noexcept
{
    for (const auto& row : ka_access::catalogue::rows)
        if (row.is_found && ka_time_period(row.offset) == offset)
            return *row.zone;
    return nullptr;
}
