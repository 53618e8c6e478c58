#pragma once

#include <string_view>

#include <time/date.h>
#include <time/inline/codes.h>
#include <time/zone.h>

#include "../rules/effect.h"
#include "language.h"
#include "sink.h"

/// What the codes of a format print from.
struct printed_value {
    /// By the first fields of `ka_format_field`: hour, minute, second, month, day.
    unsigned int two_places[5];
    unsigned int microsecond;
    /// The short that `calc_calendar_date` gives, of a date stepped however far.
    short year;
    bool is_dst;
    /// The day number of a date, or 0: then month, day and year may form none.
    int julian_day;
    const ka_time_zone& zone;
    const ka_language_texts& language = ka_locale_text::user;
    /// What the table of the zone tells, where it goes by one.
    const rules::kind* told = nullptr;
};

/// Prints by a format: from `at` on, and returns the end.
char* print(char* at, sink& out, std::string_view format, const printed_value& value);

/// The number behind a row of the table of codes: of a name, its place in the
/// list, from 0 on but for the month's.
int field_number(int row, const printed_value& value);
