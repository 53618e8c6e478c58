#include <iterator>

#include "platform/load.h"
#include "release.h"
#include "start/statics.h"

std::string* ka_time_and_date::month_name_[12] = {};
std::string* ka_time_and_date::month_abbr_[12] = {};
std::string* ka_time_and_date::weekday_name_[7] = {};
std::string* ka_time_and_date::weekday_abbr_[7] = {};
std::string* ka_time_and_date::am_name_ = nullptr;
std::string* ka_time_and_date::pm_name_ = nullptr;
std::string* ka_time_and_date::ad_name_ = nullptr;
std::string* ka_time_and_date::bc_name_ = nullptr;
std::string* ka_time_and_date::default_time_format_ = nullptr;
std::string* ka_time_and_date::default_date_format_ = nullptr;
std::string* ka_time_and_date::default_time_and_date_format_ = nullptr;
std::string* ka_time_and_date::format_timedate_ = nullptr;
std::string* ka_time_and_date::format_date_ = nullptr;
std::string* ka_time_and_date::format_time_ = nullptr;
ka_time* ka_time_and_date::min_time_ = nullptr;
ka_time* ka_time_and_date::max_time_ = nullptr;
ka_date* ka_time_and_date::default_date_ = nullptr;
ka_date* ka_time_and_date::min_date_ = nullptr;
ka_date* ka_time_and_date::max_date_ = nullptr;

std::span<const ka_access::statics::name_row> ka_access::statics::name_rows() noexcept
{
    static constexpr name_row rows[] = {
        {month_name_, 12, "%B", &std::tm::tm_mon, 0},   {month_abbr_, 12, "%b", &std::tm::tm_mon, 0},
        {weekday_name_, 7, "%A", &std::tm::tm_wday, 0}, {weekday_abbr_, 7, "%a", &std::tm::tm_wday, 0},
        {&am_name_, 1, "%p", &std::tm::tm_hour, 8},     {&pm_name_, 1, "%p", &std::tm::tm_hour, 18},
    };
    return rows;
}

std::span<const ka_access::statics::text_row> ka_access::statics::text_rows() noexcept
{
    static constexpr text_row rows[] = {
        {&ad_name_, "A.D."},
        {&bc_name_, "B.C."},
        {&default_time_format_, "%H:%M:%S:%q"},
        {&default_date_format_, "%x"},
        {&default_time_and_date_format_, "%x %H:%M:%S:%q"},
    };
    return rows;
}

std::span<const ka_access::statics::layout_row> ka_access::statics::layout_rows() noexcept
{
    static constexpr layout_row rows[] = {
        {&format_timedate_, "%c"},
        {&format_date_, "%x"},
        {&format_time_, "%X"},
    };
    return rows;
}

std::span<const ka_access::statics::time_row> ka_access::statics::time_rows() noexcept
{
    static constexpr time_row rows[] = {
        {&min_time_, ka_time(0)},
        {&max_time_, ka_time(23, 59, 59, 999999)},
    };
    return rows;
}

std::span<const ka_access::statics::date_row> ka_access::statics::date_rows() noexcept
{
    static constexpr date_row rows[] = {
        {&default_date_, ka_date(1, 1, 1970)},
        {&min_date_, ka_date(1, 1, -4713)},
        {&max_date_, ka_date(12, 31, 32766)},
    };
    return rows;
}

void ka_time_and_date::initialize_statics()
{
    using statics = ka_access::statics;
    for (const statics::name_row& row : statics::name_rows())
        statics::make_names(row);
    for (const statics::text_row& row : statics::text_rows())
        *row.text = new std::string(row.value);
    // Layouts are told by the names in them.
    statics::make_layouts();
    for (const statics::time_row& row : statics::time_rows())
        *row.time = new ka_time(row.value);
    for (const statics::date_row& row : statics::date_rows())
        *row.date = new ka_date(row.value);
    // A choice reads the clock through a zone, which takes the limits.
    statics::choose_default_zone();
}

void ka_time_and_date::delete_names() noexcept
{
    using statics = ka_access::statics;
    for (const statics::name_row& row : statics::name_rows())
        for (std::string*& name : std::span(row.names, static_cast<std::size_t>(row.count)))
            release(name);
    for (const statics::text_row& row : statics::text_rows())
        release(*row.text);
    for (const statics::layout_row& row : statics::layout_rows())
        release(*row.layout);
    for (const statics::time_row& row : statics::time_rows())
        release(*row.time);
    for (const statics::date_row& row : statics::date_rows())
        release(*row.date);
    statics::release_made_zone();
}
