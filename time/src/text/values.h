#pragma once

#include <time/timedate.h>

#include "../access.h"
#include "../clock/local_clock.h"
#include "print.h"

/// What a moment reads. Compiled into each operation that prints one.
[[gnu::always_inline]] inline printed_value printed(const ka_time_and_date& value,
                                                    const ka_language_texts& language)
{
    const clocks::reading now = clocks::local_reading(ka_access::instant(value), value.time_zone());
    const auto second_of_day = static_cast<unsigned int>(ka_access::second_of_day(now.time));
    const unsigned int minute_of_day = second_of_day / 60;
    return {{minute_of_day / 60, minute_of_day % 60, second_of_day % 60, now.day.month, now.day.day},
            now.time.microseconds(),
            static_cast<short>(now.day.year),
            now.is_dst,
            now.date.julian_day(),
            value.time_zone(),
            language,
            now.told};
}
