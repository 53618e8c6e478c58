#pragma once

#include <string>
#include <string_view>

#include <time/date.h>
#include <time/zone.h>

#include "text.h"

/// The numbers that a format prints in two places.
enum two_places : signed char {
    hour_place,
    minute_place,
    second_place,
    month_place,
    day_place,
    places_count
};

/// What the codes of a format print from.
struct format_fields {
    unsigned int places[places_count];
    unsigned int microsecond;
    int year;
    bool dst;
    /// The day number of a date, or 0: then month, day and year may form none.
    int julian_day;
    const ka_time_zone& zone;

    unsigned int hour() const { return places[hour_place]; }
    unsigned int hour_of_12() const { return hour() % 12 == 0 ? 12 : hour() % 12; }
    unsigned short month() const { return static_cast<unsigned short>(places[month_place]); }
    unsigned short day() const { return static_cast<unsigned short>(places[day_place]); }
    /// Throws `invalid_date` where there is no date.
    ka_date date() const
    {
        return julian_day != 0 ? ka_date(julian_day) : ka_date(month(), day(), static_cast<short>(year));
    }
};

/// Writes the text of a format and returns its end. A NUL must follow the format.
char* write_formatted(text& out, std::string_view format, const format_fields& value);

inline std::string made_text(std::string_view format, const format_fields& value)
{
    text out;
    const char* const end = write_formatted(out, format, value);
    return std::move(out).str(end);
}
