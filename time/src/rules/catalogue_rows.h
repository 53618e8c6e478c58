#pragma once

#include <cstddef>
#include <iterator>

#include <time/date.h>

// The rules of the built-in zones as data. A point or a rule is named by its row.

namespace catalogue {

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

inline constexpr unsigned short sunday = 1;
inline constexpr unsigned short monday = 2;
inline constexpr unsigned short friday = 6;

struct point_row {
    point_id id;
    int hour;
    unsigned short month;
    ka_which_one week;
    /// The weekday, or the day of the month where the week is `ka_none`.
    unsigned short day;
};

// clang-format off
inline constexpr point_row point_table[] = {
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

inline constexpr short open_ended = 0;

struct rule_row {
    rule_id id;
    point_id start;
    point_id end;
    short first_year;
    short last_year;
};

inline constexpr rule_row rule_table[] = {
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

inline constexpr rule_list no_rules;
inline constexpr rule_list central_european(cet_1996);
inline constexpr rule_list western_european(wet_1996);
inline constexpr rule_list south_african(sast_1985);
inline constexpr rule_list british(gb_1996, gb_1990, gb_1989, gb_1981);
inline constexpr rule_list american(america_2007, america_1987, america_1976, america_1975, america_1974,
                                    america_1967);
inline constexpr rule_list alaskan(yukon_1986, america_1975, america_1974, america_1967);
inline constexpr rule_list israeli(israel_2007, israel_2001);

}
