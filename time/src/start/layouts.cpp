#include <cstddef>
#include <string>
#include <utility>

#include "../text/layouts.h"
#include "statics.h"

namespace {

/// The record that the locale's layouts are read back from. All of its fields
/// print differently; the weekday is not that of the date, and need not be.
std::tm layout_probe()
{
    std::tm probe = {};
    probe.tm_sec = 38;
    probe.tm_min = 28;
    probe.tm_hour = 18;
    probe.tm_mday = 4;
    probe.tm_mon = 6;
    probe.tm_year = 91;
    probe.tm_wday = 5;
    probe.tm_yday = 356;
    return probe;
}

}

void ka_access::statics::make_layouts()
{
    const std::span<const layout_row> rows = layout_rows();
    locale_layouts layouts;
    for (std::size_t i = 0; i < rows.size(); ++i)
        layouts.texts[i] = decode(rows[i].conversion);
    layouts.end_circles();
    for (std::size_t i = 0; i < rows.size(); ++i)
        *rows[i].layout = new std::string(layouts.texts[i]);
}

void ka_time_and_date::replace_if_present(std::string& target, const std::string& search,
                                          const std::string& replacement)
{
    if (search.empty())
        return;
    const std::size_t place = target.find(search);
    if (place != std::string::npos)
        target.replace(place, search.size(), replacement);
}

std::string ka_time_and_date::decode(const char* conversion)
{
    // What the probe's fields look like, and the code that prints each. A long
    // form stands before the short one inside it, and digits before names.
    const std::pair<std::string, const char*> rows[] = {
        {"18", "%H"},
        {"06", "%I"},
        {"6", "%l"},
        {"28", "%M"},
        {"38", "%S"},
        {"1991", "%f"},
        {"91", "%y"},
        {"04", "%d"},
        {"4", "%e"},
        {"07", "%m"},
        {"7", "%m"},
        {"5", "%w"},
        {ka_date::month_name(7), "%B"},
        {ka_date::weekday_name(6), "%A"},
        {ka_date::month_abbreviation(7), "%b"},
        {ka_date::weekday_abbreviation(6), "%a"},
        {ka_time::pm_name(), "%p"},
    };
    std::string layout = tm_string(conversion, layout_probe());
    for (const auto& [search, replacement] : rows)
        replace_if_present(layout, search, replacement);
    return layout;
}
