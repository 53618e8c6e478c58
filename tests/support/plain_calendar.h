#pragma once

// The calendar as anyone would write it down, for tests to compare with.

inline bool is_year(int year) { return -4713 <= year && year <= 32766 && year != 0; }

/// Of a year counted through 0, which is the library's year -1.
inline bool is_leap(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

inline int month_length(int month, bool leap)
{
    constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return lengths[month - 1] + (month == 2 && leap);
}
