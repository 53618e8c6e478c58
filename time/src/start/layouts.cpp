#include <cstddef>
#include <string>

#include "../text/layouts.h"
#include "statics.h"

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
    replace_first(target, search, replacement);
}

std::string ka_time_and_date::decode(const char* conversion)
{
    return layout_of_probe(tm_string(conversion, layout_probe()),
                           {ka_date::month_name(7), ka_date::month_abbreviation(7), ka_date::weekday_name(6),
                            ka_date::weekday_abbreviation(6), ka_time::pm_name()});
}
