#include "layouts.h"

#include <utility>

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

void replace_first(std::string& text, std::string_view search, std::string_view replacement)
{
    if (search.empty())
        return;
    const std::size_t place = text.find(search);
    if (place != std::string::npos)
        text.replace(place, search.size(), replacement);
}

std::string layout_of_probe(std::string text, const probe_names& names)
{
    // What the probe's fields look like, and the code that prints each. A long
    // form stands before the short one inside it, and digits before names.
    const std::pair<std::string_view, std::string_view> rows[] = {
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
        {names.month, "%B"},
        {names.weekday, "%A"},
        {names.month_abbreviation, "%b"},
        {names.weekday_abbreviation, "%a"},
        {names.pm, "%p"},
    };
    for (const auto& [search, code] : rows)
        replace_first(text, search, code);
    return text;
}
