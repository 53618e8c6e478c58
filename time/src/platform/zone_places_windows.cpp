#include "files.h"

#include <cstdio>

#include <windows.h>

#include <time/date.h>

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

/// Of its weekday in the month, 5 for the last. The system tells it so, or, with
/// a year, as the day of the month.
int week_of(const SYSTEMTIME& change)
{
    if (change.wYear == 0)
        return change.wDay;
    const ka_date day(change.wMonth, change.wDay, change.wYear);
    const bool is_last = (day + ka_time_period(7, 0, 0, 0)).month() != change.wMonth;
    return is_last ? 5 : (change.wDay - 1) / 7 + 1;
}

/// A change, as a weekday of a month.
std::string point_text(const SYSTEMTIME& change)
{
    char text[60];
    std::snprintf(text, sizeof text, ",M%d.%d.%d/%d:%02d:%02d", change.wMonth, week_of(change),
                  change.wDayOfWeek, change.wHour, change.wMinute, change.wSecond);
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
