#pragma once

/// The arithmetic of the calendar: day numbers to dates and back, by functions
/// without state that work at compile time as well.
///
/// Source: C. Neri and L. Schneider, "Euclidean affine functions and their
/// application to calendar algorithms", Software: Practice and Experience, 2022.
/// A division by a constant is there a product with a rounded reciprocal, whose
/// high bits are the quotient and whose low bits tell the remainder. The
/// constants are worked out below from what they stand for, and the ranges in
/// which they are exact are asserted.
///
/// Years here are astronomical, but where they are said to be those of the
/// library: 1 B.C. is 0, 2 B.C. is -1. They are counted from March of year
/// -4800, a multiple of 400 below the range, so that nothing is negative and a
/// leap day is the last day of its counted year.
namespace ka_gregorian {

// The range.

inline constexpr int first_year = -4713; // as the library counts
inline constexpr int last_year = 32766;
inline constexpr int first_day = 38;
inline constexpr int last_day = 13688960;
inline constexpr int last_bc_day = 1721425;
/// 1 January 1970.
inline constexpr int unix_epoch = 2440588;

/// 1 to 32766: nearly all years asked for, told by one comparison, and
/// astronomical as they are.
constexpr bool is_ad_year(int year) noexcept
{
    return static_cast<unsigned int>(year) - 1 < static_cast<unsigned int>(last_year);
}
/// A year of the library: those, and -4713 to -1.
constexpr bool is_year(int year) noexcept { return is_ad_year(year) || (first_year <= year && year < 0); }
constexpr bool is_month(int month) noexcept { return static_cast<unsigned int>(month) - 1 < 12; }
constexpr bool is_weekday(int weekday) noexcept { return static_cast<unsigned int>(weekday) - 1 < 7; }
constexpr bool is_day_number(int day) noexcept { return first_day <= day && day <= last_day; }

// Years. The library has no year 0.

/// The sign of a number that is taken down by one, in every bit: a mask without
/// a comparison, whose result would wait in a register that is still in use.
constexpr int mask_below(int number, int limit) noexcept { return (number - limit) >> 31; }

constexpr int to_astronomical(int year) noexcept { return year - mask_below(year, 0); }
constexpr int from_astronomical(int year) noexcept { return year + mask_below(year, 1); }
/// The same for a year that no date has, as a message shows it.
constexpr long long from_astronomical(long long year) noexcept { return year - (year < 1); }

constexpr bool is_leap(int year) noexcept
{
    // A multiple of 100 and 16 is a multiple of 400.
    return year % 100 != 0 ? year % 4 == 0 : year % 16 == 0;
}

// Months.

inline constexpr int shortest_month = 28;

constexpr int month_length(int month, bool is_leap_year) noexcept
{
    if (month == 2)
        return shortest_month + is_leap_year;
    // Odd months are long up to July, even ones from August on.
    return 30 + ((month + month / 8) & 1);
}

/// Whether the calendar has a day of a year of the library.
constexpr bool is_date(int month, int day, int year) noexcept
{
    return is_month(month) && is_year(year) && day >= 1 &&
           (day <= shortest_month || day <= month_length(month, is_leap(to_astronomical(year))));
}

// From a date to its day number.

inline constexpr int first_counted_year = -4800;
/// The day number of 1 March -4800.
inline constexpr int first_counted_day = -32044;
inline constexpr unsigned int days_in_4_years = 4 * 365 + 1;
inline constexpr unsigned int days_in_400_years = 100 * days_in_4_years - 3;
/// The days of March to December: from here on a day is in January or February.
inline constexpr unsigned int days_to_new_year = 306;

/// The days from 1 March to the first of a month, March as 3 to February as
/// 14. Months have 31, 30, 31, 30, 31 days, over and over, and a line of slope
/// 153/5 through them, rounded down, hits every first of a month.
inline constexpr unsigned int days_in_5_months = 31 + 30 + 31 + 30 + 31;
inline constexpr unsigned int first_slope = 32 * days_in_5_months / 5; // 979

constexpr unsigned int days_from_march(unsigned int month) noexcept
{
    return (first_slope * month - 2919) / 32;
}

/// The day number of a date, exact from March -4800 on. The day runs on past
/// the end of its month.
constexpr int day_number(int month, int day, int year) noexcept
{
    // January and February end the year before.
    const int ends_counted_year = mask_below(month, 3);
    const auto counted = static_cast<unsigned int>(year - first_counted_year + ends_counted_year);
    const auto counted_month = static_cast<unsigned int>(month + (ends_counted_year & 12));
    const unsigned int century = counted / 100;
    const unsigned int days =
        counted * days_in_4_years / 4 - century + century / 4 + days_from_march(counted_month);
    return static_cast<int>(days) + day + (first_counted_day - 1);
}

/// The number that stands for a date of a year that is not the library's, nor
/// 0: the year counts as a common one, and those before it by plain division,
/// which truncates toward zero.
constexpr int day_number_of_no_year(int month, int day, int year) noexcept
{
    constexpr int first_new_year = first_counted_day + static_cast<int>(days_to_new_year);
    const int counted = year - first_counted_year - 1;
    const int days_before_month =
        month < 3 ? 31 * (month - 1)
                  : static_cast<int>(days_from_march(static_cast<unsigned int>(month))) + 59;
    return 365 * counted + counted / 4 - counted / 100 + counted / 400 + days_before_month + day - 1 +
           first_new_year;
}

// From a day number to its date.

struct date_parts {
    unsigned int month;
    unsigned int day;
    /// As the library counts.
    int year;
    int astronomical_year;
};

/// A factor for division by the days of four years: 2^32 / 1461, rounded up.
/// The high half of a product with it is the quotient; the low half, divided by
/// the factor, the remainder.
inline constexpr unsigned long long year_factor = (1ull << 32) / days_in_4_years + 1; // 2939745

/// The line on which the days of a counted year lie, in parts of 65536 to a
/// month: its slope is 5/153 rounded down. The lower part of a point, divided
/// by the slope, is the day of the month.
inline constexpr unsigned int month_slope = 5 * 65536 / days_in_5_months; // 2141

/// The highest of the lines that keep each first of a month the first.
constexpr unsigned int highest_month_line() noexcept
{
    unsigned int line = ~0u;
    for (unsigned int month = 3; month <= 14; ++month) {
        const unsigned int last_fit = 65536 * month + month_slope - 1 - month_slope * days_from_march(month);
        line = last_fit < line ? last_fit : line;
    }
    return line;
}
inline constexpr unsigned int month_line = highest_month_line(); // 197913

/// The date of a day number from 1 March -4800 on, as far as 32 bits hold four
/// times the days since: 1,073,709,779.
constexpr date_parts split(int julian_day) noexcept
{
    const unsigned int days =
        static_cast<unsigned int>(julian_day) - static_cast<unsigned int>(first_counted_day);
    const unsigned int century = (4 * days + 3) / days_in_400_years;
    const unsigned int day_of_century = (4 * days + 3) % days_in_400_years / 4;

    const unsigned long long product = year_factor * (4 * day_of_century + 3);
    const auto year_of_century = static_cast<unsigned int>(product >> 32);
    const auto day_of_year = static_cast<unsigned int>(product) / static_cast<unsigned int>(year_factor) / 4;

    const unsigned int point = month_slope * day_of_year + month_line;
    const bool ends_counted_year = day_of_year >= days_to_new_year;
    const int year =
        static_cast<int>(100 * century + year_of_century) + first_counted_year + ends_counted_year;
    return {(point >> 16) - (ends_counted_year ? 12u : 0u), (point & 0xffff) / month_slope + 1,
            from_astronomical(year), year};
}

// Weekdays, 1 (Sunday) to 7 (Saturday).

/// The remainder carries the sign of the number, as far below the range as a
/// date can be stepped.
constexpr int weekday(int julian_day) noexcept { return (julian_day + 1) % 7 + 1; }

/// A number modulo 7 by two products. The factor is 2^32 / 7 rounded up, and
/// seven of it are 2^32 + 3: so the low half of the first product is the
/// fraction of the quotient and three seventh parts of the number.
inline constexpr unsigned int week_factor = (1ull << 32) / 7 + 1; // 613566757
inline constexpr unsigned int week_excess = week_factor * 7;      // 3, modulo 2^32

constexpr unsigned int modulo_7(unsigned int number) noexcept
{
    return static_cast<unsigned int>(number * week_factor * 7ull >> 32);
}

/// 0 to 6 days from one weekday on to another.
constexpr int days_until(int from, int to) noexcept
{
    return static_cast<int>(modulo_7(static_cast<unsigned int>(to + 7 - from)));
}

/// A day number so many days on, in 32 bits that wrap.
constexpr int days_later(int julian_day, unsigned int days) noexcept
{
    return static_cast<int>(static_cast<unsigned int>(julian_day) + days);
}

/// The n-th weekday of the days from `first` to before `end`, counted from
/// `end` where `which` is not above 0. Day number 0 is a Monday, weekday 2.
constexpr int nth_weekday(int first, int end, int which, int weekday) noexcept
{
    constexpr unsigned int monday = 2;
    constexpr unsigned int sevens_above_range = 7 * 2000000;
    const auto number = static_cast<unsigned int>(weekday);
    if (which > 0) {
        const unsigned int days_on =
            modulo_7(sevens_above_range - monday + number - static_cast<unsigned int>(first));
        return days_later(first, days_on + 7u * static_cast<unsigned int>(which - 1));
    }
    const int last = end - 1;
    const unsigned int days_back = modulo_7(static_cast<unsigned int>(last) + monday + 7 - number);
    return days_later(last, 7u * static_cast<unsigned int>(which + 1) - days_back);
}

// What the constants promise.

/// A number q d + r gives a product of q 2^32, q times the excess of d factors
/// over 2^32, and r factors. So quotient and remainder are exact as long as
/// q + 1 times the excess is less than a factor.
constexpr bool divides_exactly(unsigned long long factor, unsigned long long divisor,
                               unsigned long long largest) noexcept
{
    return (largest / divisor + 1) * (factor * divisor - (1ull << 32)) < factor;
}
static_assert(divides_exactly(year_factor, days_in_4_years, days_in_400_years / 4 * 4 + 3));
static_assert(week_excess == 3 && sizeof(unsigned int) == 4);

/// Both lines, held against the lengths of the months.
constexpr bool lines_hit_all_months() noexcept
{
    unsigned int first = 0;
    for (unsigned int month = 3; month <= 14; ++month) {
        const int number = static_cast<int>(month > 12 ? month - 12 : month);
        const auto length = static_cast<unsigned int>(month_length(number, true));
        const unsigned int start = month_slope * first + month_line;
        const unsigned int end = start + month_slope * (length - 1);
        if (days_from_march(month) != first || start >> 16 != month || (start & 0xffff) >= month_slope ||
            end >> 16 != month)
            return false;
        first += length;
    }
    return first == 366;
}
static_assert(lines_hit_all_months());
static_assert(days_from_march(13) == days_to_new_year);
static_assert(day_number(3, 1, first_counted_year) == first_counted_day);

}
