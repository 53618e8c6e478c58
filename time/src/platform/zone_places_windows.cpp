#include "files.h"

#include <cstdio>

#include <windows.h>

namespace platform {

namespace {

/// The capital letters of a name, "Pacific Standard Time" to "PST"; a name of
/// another alphabet gives the one that is told.
std::string initials(const wchar_t* name, const char* otherwise)
{
    std::string found;
    for (; *name != L'\0'; ++name)
        if (L'A' <= *name && *name <= L'Z')
            found += static_cast<char>(*name);
    return found.size() < 3 ? otherwise : found;
}

/// Minutes west of Greenwich as hours and minutes.
std::string offset_text(long minutes)
{
    const long size = minutes < 0 ? -minutes : minutes;
    char text[40];
    std::snprintf(text, sizeof text, "%s%ld:%02ld", minutes < 0 ? "-" : "", size / 60, size % 60);
    return text;
}

/// A change, which the system tells as a weekday of a month.
std::string point_text(const SYSTEMTIME& change)
{
    char text[60];
    std::snprintf(text, sizeof text, ",M%d.%d.%d/%d:%02d:%02d", change.wMonth, change.wDay, change.wDayOfWeek,
                  change.wHour, change.wMinute, change.wSecond);
    return text;
}

}

// No tz data come with this system: TZDIR names a folder of them.

const std::vector<std::string>& zone_folders()
{
    static const std::vector<std::string> none;
    return none;
}

std::string machine_zone_path() { return {}; }

std::string machine_zone_text()
{
    TIME_ZONE_INFORMATION zone = {};
    if (GetTimeZoneInformation(&zone) == TIME_ZONE_ID_INVALID)
        return {};
    std::string text = initials(zone.StandardName, "STD") + offset_text(zone.Bias + zone.StandardBias);
    if (zone.DaylightDate.wMonth == 0 || zone.StandardDate.wMonth == 0)
        return text;
    text += initials(zone.DaylightName, "DST") + offset_text(zone.Bias + zone.DaylightBias);
    return text + point_text(zone.DaylightDate) + point_text(zone.StandardDate);
}

}
