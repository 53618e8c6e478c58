#pragma once

#include <time/date.h>

template <std::integral Number>
constexpr ka_date::ka_date(Number julian_day) : julian_day_(checked_day(julian_day))
{}

constexpr ka_date::ka_date(const ka_which_one& which, unsigned short weekday, unsigned short month,
                           short year)
{
    date(which, weekday, month, year);
}

constexpr void ka_date::date(unsigned short month, unsigned short day, short year)
{
    if (!is_day_in_month(month, day, year))
        refuse_date(month, day, year);
    julian_day_ = day_number(month, day, astronomical(year));
}

constexpr void ka_date::date(const ka_which_one& which, unsigned short weekday, unsigned short month,
                             short year)
{
    if (!is_month(month))
        refuse_month_of_weekday(month);
    if (!is_year(year))
        refuse_year(year);
    if (!is_weekday(weekday))
        refuse_weekday(weekday);
    julian_day_ = nth_weekday(which, weekday, month, year);
}

constexpr unsigned short ka_date::month() const noexcept
{
    return static_cast<unsigned short>(split(julian_day_).month);
}

constexpr unsigned short ka_date::day() const noexcept
{
    return static_cast<unsigned short>(split(julian_day_).day);
}

constexpr unsigned short ka_date::day_of_year() const
{
    return static_cast<unsigned short>(julian_day_ - new_year().julian_day_);
}

constexpr ka_date ka_date::next(unsigned short weekday) const
{
    ka_date found(julian_day_ + 1);
    if (!is_weekday(weekday))
        refuse_weekday(weekday);
    found.julian_day_ += days_until(found.weekday(), weekday);
    return found;
}

constexpr ka_date ka_date::previous(unsigned short weekday) const
{
    ka_date found(julian_day_ - 1);
    if (!is_weekday(weekday))
        refuse_weekday(weekday);
    found.julian_day_ -= days_until(weekday, found.weekday());
    if (found.julian_day_ < first_day - 1)
        refuse_day(first_day - 1ll);
    return found;
}

constexpr unsigned short ka_date::week_of_year(unsigned short first) const
{
    const ka_date january_1 = new_year();
    if (!is_weekday(first))
        refuse_weekday(first);
    const int week_1 = january_1.julian_day_ + days_until(january_1.weekday(), first);
    if (julian_day_ < week_1)
        return 0;
    return static_cast<unsigned short>((julian_day_ - week_1) / 7 + 1);
}

constexpr bool ka_date::operator==(const ka_date& other) const noexcept
{
    return julian_day_ == other.julian_day_;
}

constexpr ka_date& ka_date::operator++() noexcept
{
    ++julian_day_;
    return *this;
}

constexpr ka_date& ka_date::operator--() noexcept
{
    --julian_day_;
    return *this;
}

constexpr ka_date ka_date::operator++(int)
{
    const ka_date before(julian_day_);
    ++*this;
    return before;
}

constexpr ka_date ka_date::operator--(int)
{
    const ka_date before(julian_day_);
    --*this;
    return before;
}

constexpr ka_date ka_date::operator+(const ka_time_period& period) const
{
    return ka_date(moved(julian_day_, static_cast<unsigned int>(period.to_days())));
}

constexpr ka_date ka_date::operator-(const ka_time_period& period) const
{
    return ka_date(moved(julian_day_, 0u - static_cast<unsigned int>(period.to_days())));
}

constexpr ka_time_period ka_date::operator-(const ka_date& other) const noexcept
{
    return ka_time_period((julian_day_ - other.julian_day_) * 86400ll);
}

constexpr bool ka_date::is_year(short year) noexcept
{
    return is_ad_year(year) || (first_year <= year && year < 0);
}

constexpr bool ka_date::is_month(unsigned short month) noexcept
{
    return static_cast<unsigned int>(month - 1) < 12;
}

constexpr bool ka_date::is_julian_day(int julian_day) noexcept
{
    return first_day <= julian_day && julian_day <= last_day;
}

constexpr bool ka_date::is_leap_year(short year) noexcept
{
    return is_year(year) && is_leap(astronomical(year));
}

constexpr bool ka_date::is_day_in_month(unsigned short month, unsigned short day, short year) noexcept
{
    return is_month(month) && is_year(year) && day >= 1 &&
           (day <= shortest_month || day <= month_length(month, year));
}

constexpr unsigned short ka_date::days_in_year(short year)
{
    if (year == 0)
        refuse_year_zero();
    return is_leap_year(year) ? 366 : 365;
}

constexpr unsigned short ka_date::days_in_month(unsigned short month, short year)
{
    if (!is_month(month))
        refuse_month(month);
    if (year == 0)
        refuse_year_zero();
    return month_length(month, year);
}

constexpr int ka_date::calc_julian_day(unsigned short month, unsigned short day, short year)
{
    if (is_month(month) && is_ad_year(year)) [[likely]]
        return day_number(month, day, year);
    if (!is_month(month))
        refuse_month(month);
    if (year == 0)
        refuse_year_zero();
    return is_year(year) ? day_number(month, day, astronomical(year))
                         : day_number_without_leap_row(month, day, astronomical(year));
}

constexpr void ka_date::calc_calendar_date(int julian_day, unsigned short* month, unsigned short* day,
                                           short* year) noexcept
{
    const parts date = split(julian_day);
    if (month != nullptr)
        *month = static_cast<unsigned short>(date.month);
    if (day != nullptr)
        *day = static_cast<unsigned short>(date.day);
    if (year != nullptr)
        *year = static_cast<short>(date.year);
}

/// The date of the whole days from day number 0, or `invalid_day`.
constexpr ka_date::ka_date(const ka_time_period& since_day_zero) : julian_day_(since_day_zero.to_days())
{
    if (!is_julian_day(julian_day_))
        refuse_whole_days(julian_day_);
}

constexpr int ka_date::checked_day(int julian_day)
{
    if (!is_julian_day(julian_day))
        refuse_day(static_cast<long long>(julian_day));
    return julian_day;
}

template <std::integral Number>
constexpr int ka_date::checked_day(Number julian_day)
{
    using widest = std::conditional_t<std::signed_integral<Number>, long long, unsigned long long>;
    const auto number = static_cast<widest>(julian_day);
    if (number < first_day || number > last_day)
        refuse_day(number);
    return static_cast<int>(number);
}

constexpr ka_date ka_date::unchecked(int julian_day) noexcept
{
    ka_date result;
    result.julian_day_ = julian_day;
    return result;
}

/// A day number so many days on, in 32 bits that wrap.
constexpr int ka_date::moved(int julian_day, unsigned int days) noexcept
{
    return static_cast<int>(static_cast<unsigned int>(julian_day) + days);
}

constexpr unsigned short ka_date::weekday_of(int julian_day) noexcept
{
    return static_cast<unsigned short>((julian_day + 1) % 7 + 1);
}

/// 0 to 6 days from one weekday on to another.
constexpr int ka_date::days_until(unsigned short from, unsigned short to) noexcept
{
    return (to + 7 - from) % 7;
}

/// A number modulo 7 by two products. 7 x 613566757 is 2^32 + 3, so the low
/// half of the first product is the fraction of the quotient and three
/// seventh parts of the number: exact below 2^32 / 3.
constexpr unsigned int ka_date::modulo_7(unsigned int number) noexcept
{
    return static_cast<unsigned int>((number * 613566757u) * 7ull >> 32);
}

/// The n-th weekday of the days from `first` to before `end`, counted from
/// `end` where `which` is not above 0. The weekday next to either end takes
/// one remainder; day number 0 is a Monday, weekday 2.
constexpr int ka_date::nth_weekday_between(int first, int end, int which, unsigned short weekday) noexcept
{
    constexpr unsigned int monday = 2;
    constexpr unsigned int sevens_above_range = 7 * 2000000;
    if (which > 0) {
        const unsigned int days_on =
            modulo_7(sevens_above_range - monday + weekday - static_cast<unsigned int>(first));
        return moved(first, days_on + 7u * static_cast<unsigned int>(which - 1));
    }
    const int last = end - 1;
    const unsigned int days_back = modulo_7(static_cast<unsigned int>(last) + monday + 7 - weekday);
    return moved(last, 7u * static_cast<unsigned int>(which + 1) - days_back);
}

constexpr int ka_date::nth_weekday(int which, unsigned short weekday, unsigned short month, short year)
{
    const int first = day_number(month, 1, astronomical(year));
    const int end = first + month_length(month, year);
    if (which <= 0)
        checked_day(end);
    const int found = checked_day(nth_weekday_between(first, end, which, weekday));
    if ((found < first || found >= end) && split(found).month != month)
        refuse_week();
    return found;
}

/// 1 to 32766: nearly all years asked for, and told by one comparison.
constexpr bool ka_date::is_ad_year(int year) noexcept
{
    return static_cast<unsigned int>(year - 1) < static_cast<unsigned int>(last_year);
}

constexpr bool ka_date::is_leap(int year) noexcept
{
    // A multiple of 100 and 16 is a multiple of 400.
    return year % 100 != 0 ? year % 4 == 0 : year % 16 == 0;
}

constexpr unsigned short ka_date::month_length(unsigned short month, short year) noexcept
{
    if (month == 2)
        return is_leap_year(year) ? 29 : shortest_month;
    // Odd months are long up to July, even ones from August on.
    const unsigned int number = month;
    return static_cast<unsigned short>(30 + ((number + number / 8) & 1));
}

/// The days from 1 March to the first of a month, March as 3 to February as
/// 14: 979/32 is close enough to 30.6 to be exact for these twelve.
constexpr unsigned int ka_date::days_from_march(unsigned int month) noexcept
{
    return (979 * month - 2919) / 32;
}

/// Holds from March -4800 on, so for every year of the range.
constexpr int ka_date::day_number(unsigned short month, unsigned short day, int year) noexcept
{
    // All bits set in January and February, which end the year before.
    const int ends_counted_year = -(month < 3);
    const auto counted = static_cast<unsigned int>(year - first_counted_year + ends_counted_year);
    const auto counted_month = static_cast<unsigned int>(month + (ends_counted_year & 12));
    const unsigned int century = counted / 100;
    const unsigned int days =
        counted * days_in_4_years / 4 - century + century / 4 + days_from_march(counted_month);
    return static_cast<int>(days + day) + (first_counted_day - 1);
}

/// A year out of the range counts as a common one, and the years before it
/// by plain division, which truncates toward zero.
constexpr int ka_date::day_number_without_leap_row(unsigned short month, unsigned short day,
                                                   int year) noexcept
{
    constexpr int first_new_year = first_counted_day + static_cast<int>(days_to_new_year);
    const int counted = year - first_counted_year - 1;
    const int days_before_month =
        month < 3 ? 31 * (month - 1) : static_cast<int>(days_from_march(month)) + 59;
    return 365 * counted + counted / 4 - counted / 100 + counted / 400 + days_before_month + day - 1 +
           first_new_year;
}

/// The inverse of `day_number`, by multiplication and shift in place of
/// division. Four times the day count plus 3 is divided by the days of 400
/// years for the century, its remainder by those of 4 years for the year of
/// the century. The second division is a product with 2939745, which is
/// 2^32 / 1461 rounded up: its high half is the year and its low half the
/// day, exact below 28,825,529, where a century has less than 146,100. The
/// month is a line of slope 65536 / 2141 = 30.61, exact for the 366 days.
constexpr ka_date::parts ka_date::split(int julian_day) noexcept
{
    constexpr unsigned long long reciprocal = 2939745;
    constexpr unsigned int month_slope = 2141;
    constexpr unsigned int month_offset = 197913;

    const unsigned int days =
        static_cast<unsigned int>(julian_day) - static_cast<unsigned int>(first_counted_day);
    const unsigned int century = (4 * days + 3) / days_in_400_years;
    const unsigned int day_of_century = (4 * days + 3) % days_in_400_years / 4;

    const unsigned long long product = reciprocal * (4 * day_of_century + 3);
    const auto year_of_century = static_cast<unsigned int>(product >> 32);
    const auto day_of_year = static_cast<unsigned int>(product) / static_cast<unsigned int>(reciprocal) / 4;

    const unsigned int line = month_slope * day_of_year + month_offset;
    const bool ends_counted_year = day_of_year >= days_to_new_year;
    const int year =
        static_cast<int>(100 * century + year_of_century) + first_counted_year + ends_counted_year;

    return {(line >> 16) - (ends_counted_year ? 12u : 0u), (line & 0xffff) / month_slope + 1,
            year - (year < 1), year};
}
