#include "../platform/platform.h"
#include "statics.h"

namespace {

/// Friday, 23 December 1994, 18:27:38: the record that names are printed from.
std::tm name_probe()
{
    std::tm probe = {};
    probe.tm_year = 94;
    probe.tm_mon = 11;
    probe.tm_mday = 23;
    probe.tm_wday = 5;
    probe.tm_yday = 356;
    probe.tm_hour = 18;
    probe.tm_min = 27;
    probe.tm_sec = 38;
    return probe;
}

}

void ka_access::statics::make_names(const name_row& row)
{
    std::tm probe = name_probe();
    for (int i = 0; i < row.count; ++i) {
        probe.*row.field = row.first_value + i;
        row.names[i] = new std::string(tm_string(row.conversion, probe));
    }
}

std::string ka_time_and_date::tm_string(const char* format, const std::tm& value)
{
    char buffer[128];
    if (platform::format_time(buffer, sizeof buffer, format, value) == 0)
        return {};
    return buffer;
}
