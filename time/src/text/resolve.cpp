#include "resolve.h"

#include <bit>

#include <time/timedate.h>

#include "print.h"

namespace {

using field = ka_format_field;

bool is_name(int row)
{
    const ka_format_form form = ka_format_codes[row].form;
    return form == ka_format_form::name || form == ka_format_form::abbreviation;
}

/// The rows whose codes tell a date, and those that tell a time.
consteval std::uint64_t rows_of_need(bool is_date)
{
    std::uint64_t rows = 0;
    for (std::size_t row = 0; row < code_count; ++row) {
        const ka_format_need need = ka_format_codes[row].need;
        const bool is_of_date =
            need == ka_format_need::date || need == ka_format_need::month || need == ka_format_need::day;
        if (is_date ? is_of_date : need == ka_format_need::time)
            rows |= std::uint64_t{1} << row;
    }
    return rows;
}

/// Whether what some rows have told is what a value has.
bool agrees(text_reader& read, std::uint64_t rows, const printed_value& value)
{
    for (; rows != 0; rows &= rows - 1) {
        const int row = std::countr_zero(rows);
        const int number = field_number(row, value);
        const int told = read.told_by(row).number;
        const int index = ka_format_codes[row].field == field::month ? number - 1 : number;
        if (is_name(row) ? (told >> index & 1) == 0 : told != number)
            return read.refuse(row);
    }
    return true;
}

/// The year of the first field that tells one, or 0.
int year_of(text_reader& read)
{
    if (read.tells(field::year))
        return read.take(field::year);
    if (read.tells(field::year_with_era))
        return read.take(field::year_with_era);
    if (read.tells(field::year_of_era) && read.tells(field::era)) {
        const int year = read.take(field::year_of_era);
        return read.take(field::era) == 0 ? year : -year;
    }
    if (!read.tells(field::year_of_century))
        return 0;
    const int year = read.take(field::year_of_century);
    if (read.tells(field::century))
        return read.take(field::century) * 100 + year;
    return year < 0 ? 0 : year + (year < 69 ? 2000 : 1900);
}

/// The field that the year was taken from, for a year that is none.
field year_field(const text_reader& read)
{
    for (const field told : {field::year, field::year_with_era, field::year_of_era})
        if (read.tells(told))
            return told;
    return field::year_of_century;
}

bool refuse(text_reader& read, field told) { return read.refuse(read.first_row(told)); }

/// The day number that the week of a year and the weekday tell, weeks beginning with a weekday from 0 on.
int day_of_week(text_reader& read, field week, int first_weekday, int new_year)
{
    const int weekday_of_new_year = (new_year + 1) % 7;
    const int first = new_year + (7 + first_weekday - weekday_of_new_year) % 7;
    const int weekday = (read.take(field::weekday) + 7 - first_weekday) % 7;
    return first + 7 * (read.take(week) - 1) + weekday;
}

bool resolve_day_of_year(text_reader& read, short year, ka_date& date)
{
    const int new_year = ka_date::calc_julian_day(1, 1, year);
    const int end = new_year + ka_date::days_in_year(year);
    int day = 0;
    field told = field::day_of_year;
    if (read.tells(told)) {
        day = new_year + read.take(told) - 1;
    } else {
        told = read.tells(field::week_from_sunday) ? field::week_from_sunday : field::week_from_monday;
        day = day_of_week(read, told, told == field::week_from_sunday ? 0 : 1, new_year);
    }
    if (day < new_year || day >= end)
        return refuse(read, told);
    date = ka_date(day);
    return true;
}

}

bool resolve(text_reader& read, ka_date& date)
{
    const int told_year = year_of(read);
    const auto year = static_cast<short>(told_year);
    if (!ka_date::is_year(year) || year != told_year)
        return refuse(read, year_field(read));

    if (read.tells(field::month) && read.tells(field::day)) {
        const auto month = static_cast<unsigned short>(read.take(field::month));
        const auto day = static_cast<unsigned short>(read.take(field::day));
        if (!ka_date::is_day_in_month(month, day, year))
            return refuse(read, field::day);
        date = ka_date(month, day, year);
    } else if (!resolve_day_of_year(read, year, date)) {
        return false;
    }
    const std::uint64_t rows = read.rows_left() & rows_of_need(true);
    return rows == 0 || agrees(read, rows,
                               {{0, 0, 0, date.month(), date.day()},
                                0,
                                date.year(),
                                false,
                                date.julian_day(),
                                ka_time_and_date::default_time_zone()});
}

bool resolve(text_reader& read, ka_time& time)
{
    int hour = 0;
    if (read.tells(field::hour)) {
        hour = read.take(field::hour);
    } else {
        // In a language without texts for the halves, these may have told nothing.
        if (!read.tells(field::half_of_day))
            return refuse(read, field::hour_of_12);
        hour = read.take(field::hour_of_12) % 12 + 12 * read.take(field::half_of_day);
    }
    const int minute = read.tells(field::minute) ? read.take(field::minute) : 0;
    const int told_second = read.tells(field::second) ? read.take(field::second) : 0;
    const int second = told_second == 60 ? 59 : told_second;
    const int microsecond = read.tells(field::microsecond) ? read.take(field::microsecond) : 0;
    time = ka_time(static_cast<unsigned short>(hour), static_cast<unsigned short>(minute),
                   static_cast<unsigned short>(second), static_cast<unsigned int>(microsecond));
    const std::uint64_t rows = read.rows_left() & rows_of_need(false);
    if (rows == 0)
        return true;
    const printed_value value = {{static_cast<unsigned int>(hour), static_cast<unsigned int>(minute),
                                  static_cast<unsigned int>(told_second), 0, 0},
                                 static_cast<unsigned int>(microsecond),
                                 0,
                                 false,
                                 0,
                                 ka_time_and_date::default_time_zone()};
    return agrees(read, rows, value);
}
