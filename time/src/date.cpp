#include <time/date.h>

#include <algorithm>
#include <cctype>
#include <ostream>

#include <time/timedate.h>

#include "platform/platform.h"
#include "throw.h"

namespace {

/// Equal but for the case of letters, as the process's `LC_CTYPE` has it.
bool same_but_for_case(const std::string& a, const std::string& b)
{
    const auto lower = [](char letter) { return std::tolower(static_cast<unsigned char>(letter)); };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lower(x) == lower(y); });
}

struct which_one_row {
    ka_which_one which;
    const char* name;
};

constexpr which_one_row which_one_names[] = {
    {ka_next_to_last, "ka_next_to_last"},
    {ka_last, "ka_last"},
    {ka_none, "ka_none"},
    {ka_first, "ka_first"},
    {ka_second, "ka_second"},
    {ka_third, "ka_third"},
    {ka_fourth, "ka_fourth"},
    {ka_fifth, "ka_fifth"},
};

}

const char* ka_which_one_name(ka_which_one which) noexcept
{
    for (const which_one_row& row : which_one_names)
        if (row.which == which)
            return row.name;
    return "out of range";
}

ka_date::ka_date(const std::tm& fields) { date(fields); }

void ka_date::date(const std::tm& fields)
{
    // The record's months count from 0 and its years from 1900; computed as
    // unsigned, so that any record of any origin ends in a refusal at worst.
    date(static_cast<unsigned short>(static_cast<unsigned int>(fields.tm_mon) + 1u),
         static_cast<unsigned short>(fields.tm_mday),
         static_cast<short>(static_cast<unsigned int>(fields.tm_year) + 1900u));
}

ka_date ka_date::today() { return ka_date(platform::read_wall_clock().local); }

const ka_date& ka_date::min_date() noexcept { return ka_time_and_date::min_date(); }

const ka_date& ka_date::max_date() noexcept { return ka_time_and_date::max_date(); }

const std::string& ka_date::month_name(unsigned short month)
{
    if (!is_month(month))
        refuse_month(month);
    return *ka_time_and_date::month_name_[month - 1];
}

const std::string& ka_date::month_abbreviation(unsigned short month)
{
    if (!is_month(month))
        refuse_month(month);
    return *ka_time_and_date::month_abbr_[month - 1];
}

unsigned short ka_date::month_index(const std::string& name)
{
    for (unsigned short month = 1; month <= 12; ++month)
        if (same_but_for_case(name, month_name(month)) || same_but_for_case(name, month_abbreviation(month)))
            return month;
    return 0;
}

const std::string& ka_date::weekday_name(unsigned short weekday)
{
    if (!is_weekday(weekday))
        refuse_weekday(weekday);
    return *ka_time_and_date::weekday_name_[weekday - 1];
}

const std::string& ka_date::weekday_abbreviation(unsigned short weekday)
{
    if (!is_weekday(weekday))
        refuse_weekday(weekday);
    return *ka_time_and_date::weekday_abbr_[weekday - 1];
}

unsigned short ka_date::weekday_index(const std::string& name)
{
    for (unsigned short weekday = 7; weekday >= 1; --weekday)
        if (same_but_for_case(name, weekday_name(weekday)) ||
            same_but_for_case(name, weekday_abbreviation(weekday)))
            return weekday;
    return 0;
}

const std::string& ka_date::ad_name() noexcept { return *ka_time_and_date::ad_name_; }

const std::string& ka_date::bc_name() noexcept { return *ka_time_and_date::bc_name_; }

void ka_date::ad_name(const std::string& text) { *ka_time_and_date::ad_name_ = text; }

void ka_date::bc_name(const std::string& text) { *ka_time_and_date::bc_name_ = text; }

std::string ka_date::to_string() const { return to_string(*ka_time_and_date::default_date_format_); }

void ka_date::print(std::ostream& stream) const { stream << to_string(); }

std::string ka_date::default_format() { return *ka_time_and_date::default_date_format_; }

void ka_date::default_format(const std::string& format) { *ka_time_and_date::default_date_format_ = format; }

void ka_date::refuse_day(given julian_day) { throw_error(ka_invalid_day, {KA_SOURCE, __LINE__}, julian_day); }

void ka_date::refuse_whole_days(int julian_day)
{
    throw_error(ka_invalid_day, {KA_SOURCE, __LINE__}, "Invalid julian day: ", julian_day);
}

void ka_date::refuse_date(given month, given day, given year)
{
    throw_error(ka_invalid_date, {KA_SOURCE, __LINE__}, "Month( ", month, " ),", " day( ", day, " ),",
                " year( ", year, " )");
}

void ka_date::refuse_month(given month) { throw_error(ka_invalid_month, {KA_SOURCE, __LINE__}, month); }

void ka_date::refuse_month_of_weekday(given month)
{
    throw_error(ka_invalid_month, {KA_SOURCE, __LINE__}, "Invalid month: ", month);
}

void ka_date::refuse_year(given year) { throw_error(ka_invalid_year, {KA_SOURCE, __LINE__}, year); }

void ka_date::refuse_year_zero()
{
    throw_error(ka_invalid_year, {KA_SOURCE, __LINE__}, "Year zero never existed!");
}

void ka_date::refuse_weekday(given weekday)
{
    throw_error(ka_invalid_weekday, {KA_SOURCE, __LINE__}, weekday);
}

void ka_date::refuse_week()
{
    throw_error(ka_invalid_week, {KA_SOURCE, __LINE__}, "Invalid week for month!");
}
