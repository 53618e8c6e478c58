#pragma once

#include <time/date.h>
#include <time/time_of_day.h>

#include "reader.h"

// What the codes of a format have told, made into values. Where they form none,
// or contradict each other, the result is false and the reader has the problem.

bool resolve(text_reader& read, ka_date& date);
/// Of second 60, the second before.
bool resolve(text_reader& read, ka_time& time);

/// Whether a leap second was told.
inline bool tells_leap_second(const text_reader& read)
{
    return read.tells(ka_format_field::second) && read.told(ka_format_field::second).number == 60;
}
