#include <time/zone.h>

#include "access.h"
#include "platform/load.h"
#include "release.h"
#include "rules/catalogue_tables.h"

namespace {

using namespace catalogue;

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
struct ka_access::built_in_zones {
    struct row {
        ka_time_zone** zone;
        int offset;
        const char* name;
        const char* dst_name;
        /// The rules, and their changes as a table: none where there are none.
        const rule_list& rules;
        const rules::table* changes;
        /// Whether the zone is found by its offset: one zone of each offset is.
        bool is_found;
    };

    // clang-format off
    static constexpr row rows[] = {
        {&ka_time_zone::utc_,    0,              "UTC",  "", no_rules, nullptr,  false},
        {&ka_time_zone::gmt_,    0,              "GMT",  "BST", british, &changes_of<british>,   true},
        {&ka_time_zone::cet_,    hours(-1),      "CET",  "CEST", central_european, &changes_of<central_european>,  true},
        {&ka_time_zone::wet_,    0,              "WET",  "WEST", western_european, &latest_changes_of<western_european, british>,  false},
        {&ka_time_zone::pwt_,    0,              "PWT",  "PST", western_european, &latest_changes_of<western_european, british>,  false},
        {&ka_time_zone::sast_,   hours(-2),      "SAST", "SADT", south_african, &changes_of<south_african>, false},
        {&ka_time_zone::hawt_,   hours(10),      "HST",  "", no_rules, nullptr,  false},
        {&ka_time_zone::indt_,   hours(5),       "EST",  "", no_rules, nullptr,  false},
        {&ka_time_zone::pst_,    hours(8),       "PST",  "PDT", american, &changes_of<american>,  true},
        {&ka_time_zone::mst_,    hours(7),       "MST",  "MDT", american, &changes_of<american>,  true},
        {&ka_time_zone::cst_,    hours(6),       "CST",  "CDT", american, &changes_of<american>,  true},
        {&ka_time_zone::est_,    hours(5),       "EST",  "EDT", american, &changes_of<american>,  true},
        {&ka_time_zone::ast_,    hours(4),       "AST",  "ADT", american, &changes_of<american>,  true},
        {&ka_time_zone::nst_,    hours(3) + 1800,  "NST",  "NDT", american, &changes_of<american>,  true},
        {&ka_time_zone::yst_,    hours(9),       "YST",  "YDT", alaskan, &changes_of<alaskan>,   true},
        {&ka_time_zone::ast_10_, hours(10),      "AST",  "ADT", alaskan, &changes_of<alaskan>,   true},
        {&ka_time_zone::ist_,    hours(-2),      "IST",  "IDT", israeli, &changes_of<israeli>,   true},
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
static_assert(ka_access::built_in_zones::are_found_by_one_offset_each());

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
    for (const auto& row : ka_access::built_in_zones::rows) {
        *row.zone = new ka_time_zone(ka_time_period(row.offset), row.name, row.dst_name);
        for (const rule_id id : row.rules.rules)
            if (id != rule_count)
                (*row.zone)->insert(rule_of(id));
        if (row.changes != nullptr)
            ka_access::go_by(**row.zone, *row.changes);
    }
}

void ka_time_zone::delete_zones() noexcept
{
    for (const auto& row : ka_access::built_in_zones::rows)
        release(*row.zone);
    release(made_rules);
    release(made_points);
}

ka_time_zone* ka_time_zone::find(ka_time_period offset, bool) noexcept
{
    for (const auto& row : ka_access::built_in_zones::rows)
        if (row.is_found && ka_time_period(row.offset) == offset)
            return *row.zone;
    return nullptr;
}
