#pragma once

#include <algorithm>
#include <cstring>
#include <iterator>

#include <time/zone.h>

/// The built-in zones by the names of their accessors, from west to east.
struct named_zone {
    const char* name;
    const ka_time_zone& (*zone)();
};

inline const named_zone zones[] = {
    {"hawaii", ka_time_zone::hawaii},
    {"aleutian", ka_time_zone::aleutian},
    {"yukon", ka_time_zone::yukon},
    {"pacific", ka_time_zone::pacific},
    {"mountain", ka_time_zone::mountain},
    {"central", ka_time_zone::central},
    {"eastern", ka_time_zone::eastern},
    {"indiana", ka_time_zone::indiana},
    {"atlantic", ka_time_zone::atlantic},
    {"newfoundland", ka_time_zone::newfoundland},
    {"utc", ka_time_zone::utc},
    {"greenwich", ka_time_zone::greenwich},
    {"western_european", ka_time_zone::western_european},
    {"portuguese", ka_time_zone::portuguese},
    {"central_european", ka_time_zone::central_european},
    {"south_africa", ka_time_zone::south_africa},
    {"israel", ka_time_zone::israel},
};

/// Null where there is no zone of that name.
inline const named_zone* find_zone(const char* name)
{
    const named_zone* const end = std::end(zones);
    const named_zone* const found =
        std::find_if(zones, end, [=](const named_zone& each) { return std::strcmp(each.name, name) == 0; });
    return found == end ? nullptr : found;
}
