#pragma once

#include <time/months.h>

#include <time/inline/gregorian.h>

// Years are counted through 0 here: 1 B.C. is 0.

struct ka_month_arithmetic {
    static constexpr int first_year = -4712;
    static constexpr int last_year = 32766;
    static constexpr int count_of_months = 12 * (last_year - first_year + 1);

    struct parts {
        unsigned short month;
        unsigned short day;
        short year;

        explicit constexpr parts(const ka_date& date) noexcept : month(), day(), year()
        {
            ka_date::calc_calendar_date(date.julian_day(), &month, &day, &year);
        }
        /// From January of the first year.
        constexpr long long month_number() const noexcept
        {
            return 12ll * (ka_gregorian::to_astronomical(year) - first_year) + month - 1;
        }
    };

    static constexpr short checked_year(long long year, int line)
    {
        if (year < -0x8000 || year > 0x7fff || !ka_date::is_year(static_cast<short>(year)))
            ka_refuse_months(ka_invalid_year, year, line);
        return static_cast<short>(year);
    }

    /// The first of a month; `invalid_date`, in the words of the dates, for
    /// what is none. What is cut off here is no month or year either way.
    static constexpr ka_date first_of(long long month, long long year)
    {
        const auto narrow_month = static_cast<unsigned short>(1 <= month && month <= 12 ? month : 0);
        const auto narrow_year = static_cast<short>(-4713 <= year && year <= last_year ? year : 0);
        if (narrow_month == 0)
            ka_refuse_months(ka_invalid_date, month, __LINE__);
        if (narrow_year == 0)
            ka_refuse_months(ka_invalid_date, year, __LINE__);
        return ka_date(narrow_month, 1, narrow_year);
    }

    /// A day of a month that is counted from the first one.
    static constexpr ka_date day_of(unsigned int month_number, unsigned short day, ka_month_end end)
    {
        const auto year = static_cast<short>(
            ka_gregorian::from_astronomical(static_cast<int>(month_number / 12) + first_year));
        const auto month = static_cast<unsigned short>(month_number % 12 + 1);
        if (day > 28) {
            if (end == ka_month_end::clamp)
                day = std::min(day, ka_date::days_in_month(month, year));
            else if (end == ka_month_end::refuse)
                return ka_date(month, day, year);
        }
        return ka_date(ka_date::calc_julian_day(month, day, year));
    }
};

template <int MonthsEach>
template <std::integral Number>
constexpr ka_calendar_count<MonthsEach>::ka_calendar_count(Number count) : count_(static_cast<int>(count))
{
    if (!std::in_range<int>(count))
        ka_refuse_months(ka_invalid_year, static_cast<long long>(count), __LINE__);
}

template <int MonthsEach>
constexpr ka_calendar_count<MonthsEach>
ka_calendar_count<MonthsEach>::operator+(ka_calendar_count other) const
{
    return ka_calendar_count(static_cast<long long>(count_) + other.count_);
}

template <int MonthsEach>
constexpr ka_calendar_count<MonthsEach>
ka_calendar_count<MonthsEach>::operator-(ka_calendar_count other) const
{
    return ka_calendar_count(static_cast<long long>(count_) - other.count_);
}

template <int MonthsEach>
constexpr ka_calendar_count<MonthsEach> ka_calendar_count<MonthsEach>::operator*(int factor) const
{
    return ka_calendar_count(static_cast<long long>(count_) * factor);
}

template <int MonthsEach>
constexpr ka_date ka_add(const ka_date& date, ka_calendar_count<MonthsEach> count, ka_month_end end)
{
    const ka_month_arithmetic::parts from(date);
    const long long month = from.month_number() + count.months();
    if (month < 0 || month >= ka_month_arithmetic::count_of_months) [[unlikely]] {
        const long long year = (month < 0 ? (month - 11) / 12 : month / 12) + ka_month_arithmetic::first_year;
        ka_refuse_months(ka_invalid_year, ka_gregorian::from_astronomical(year), __LINE__);
    }
    return ka_month_arithmetic::day_of(static_cast<unsigned int>(month), from.day, end);
}

template <int MonthsEach>
constexpr ka_date operator+(const ka_date& date, ka_calendar_count<MonthsEach> count)
{
    return ka_add(date, count);
}

template <int MonthsEach>
constexpr ka_date operator-(const ka_date& date, ka_calendar_count<MonthsEach> count)
{
    return ka_add(date, -count);
}

template <int MonthsEach>
constexpr ka_date& operator+=(ka_date& date, ka_calendar_count<MonthsEach> count)
{
    return date = date + count;
}

template <int MonthsEach>
constexpr ka_date& operator-=(ka_date& date, ka_calendar_count<MonthsEach> count)
{
    return date = date - count;
}

template <int MonthsEach>
ka_time_and_date ka_add(const ka_time_and_date& moment, ka_calendar_count<MonthsEach> count, ka_month_end end,
                        ka_local_choice choice)
{
    if (count.count() == 0)
        return moment;
    return ka_local_time(moment.time_zone(), moment.time(), ka_add(moment.date(), count, end), choice);
}

template <int MonthsEach>
ka_time_and_date operator+(const ka_time_and_date& moment, ka_calendar_count<MonthsEach> count)
{
    return ka_add(moment, count);
}

template <int MonthsEach>
ka_time_and_date operator-(const ka_time_and_date& moment, ka_calendar_count<MonthsEach> count)
{
    return ka_add(moment, -count);
}

template <int MonthsEach>
ka_time_and_date& operator+=(ka_time_and_date& moment, ka_calendar_count<MonthsEach> count)
{
    return moment = moment + count;
}

template <int MonthsEach>
ka_time_and_date& operator-=(ka_time_and_date& moment, ka_calendar_count<MonthsEach> count)
{
    return moment = moment - count;
}

constexpr int ka_months_between(const ka_date& from, const ka_date& to)
{
    const int months = static_cast<int>(ka_month_arithmetic::parts(to).month_number() -
                                        ka_month_arithmetic::parts(from).month_number());
    const ka_date reached = from + ka_months(months);
    if (from <= to)
        return months - (reached > to);
    return months + (reached < to);
}

constexpr ka_span ka_until(const ka_date& from, const ka_date& to)
{
    const int months = ka_months_between(from, to);
    const ka_date reached = from + ka_months(months);
    return {months / 12, months % 12, to.julian_day() - reached.julian_day()};
}

constexpr ka_date operator+(const ka_date& from, const ka_span& span)
{
    const ka_date reached = from + ka_months(12ll * span.years + span.months);
    return ka_date(static_cast<long long>(reached.julian_day()) + span.days);
}

constexpr int ka_years_between(const ka_date& from, const ka_date& to, ka_month_end end)
{
    const int years = ka_gregorian::to_astronomical(to.year()) - ka_gregorian::to_astronomical(from.year());
    const ka_date anniversary = ka_add(from, ka_years(years), end);
    if (from <= to)
        return years - (anniversary > to);
    return years + (anniversary < to);
}

/// The day number of the Monday of week 1, which is that of 4 January.
constexpr int ka_iso_week::first_monday(short year)
{
    const int fourth = ka_date::calc_julian_day(1, 4, year);
    return fourth - fourth % 7; // day number 0 is a Monday
}

constexpr ka_iso_week::ka_iso_week(const ka_date& date)
    : year_(), week_(), weekday_(static_cast<unsigned short>(date.julian_day() % 7 + 1))
{
    const int thursday = date.julian_day() - weekday_ + 4;
    ka_date::calc_calendar_date(thursday, nullptr, nullptr, &year_);
    week_ = static_cast<unsigned short>((thursday - ka_date::calc_julian_day(1, 1, year_)) / 7 + 1);
}

constexpr ka_iso_week::ka_iso_week(long long year, long long week, long long weekday)
    : year_(ka_month_arithmetic::checked_year(year, __LINE__)), week_(static_cast<unsigned short>(week)),
      weekday_(static_cast<unsigned short>(weekday))
{
    if (week < 1 || week > weeks_of_year(year))
        ka_refuse_months(ka_invalid_week, week, __LINE__);
    if (weekday < 1 || weekday > 7)
        ka_refuse_months(ka_invalid_weekday, weekday, __LINE__);
    (void)date();
}

constexpr ka_date ka_iso_week::date() const
{
    return ka_date(first_monday(year_) + 7 * (week_ - 1) + weekday_ - 1);
}

constexpr unsigned short ka_iso_week::weeks_of_year(long long year)
{
    const short checked = ka_month_arithmetic::checked_year(year, __LINE__);
    // A year has 53 Thursdays where its first or last day is one: day numbers 3, 10, ...
    const int first = ka_date::calc_julian_day(1, 1, checked);
    const int last = ka_date::calc_julian_day(12, 31, checked);
    return first % 7 == 3 || last % 7 == 3 ? 53 : 52;
}

constexpr int ka_quarter(const ka_date& date) noexcept { return (date.month() + 2) / 3; }

constexpr int ka_day_of_quarter(const ka_date& date)
{
    return date.julian_day() - ka_first_of_quarter(date).julian_day();
}

constexpr bool ka_is_weekend(const ka_date& date) noexcept
{
    return date.weekday() == 1 || date.weekday() == 7;
}

constexpr ka_date ka_first_of_month(const ka_date& date) { return ka_date(date.month(), 1, date.year()); }

constexpr ka_date ka_last_of_month(const ka_date& date)
{
    const ka_month_arithmetic::parts parts(date);
    return ka_date(parts.month, ka_date::days_in_month(parts.month, parts.year), parts.year);
}

constexpr ka_date ka_first_of_quarter(const ka_date& date)
{
    return ka_date(static_cast<unsigned short>(3 * ka_quarter(date) - 2), 1, date.year());
}

constexpr ka_date ka_last_of_quarter(const ka_date& date)
{
    return ka_last_of_month(ka_first_of_quarter(date) + ka_months(2));
}

constexpr ka_date ka_first_of_year(const ka_date& date) { return ka_date(1, 1, date.year()); }

constexpr ka_date ka_last_of_year(const ka_date& date) { return ka_date(12, 31, date.year()); }

constexpr ka_date ka_first_of_week(const ka_date& date, unsigned short first)
{
    if (!ka_date::is_weekday(first))
        ka_refuse_months(ka_invalid_weekday, first, __LINE__);
    return ka_date(date.julian_day() - (date.weekday() + 7 - first) % 7);
}

constexpr ka_date ka_last_of_week(const ka_date& date, unsigned short first)
{
    if (!ka_date::is_weekday(first))
        ka_refuse_months(ka_invalid_weekday, first, __LINE__);
    return ka_date(date.julian_day() + (first + 6 - date.weekday()) % 7);
}

constexpr ka_days ka_days_of_month(long long month, long long year)
{
    const ka_date first = ka_month_arithmetic::first_of(month, year);
    return ka_days(first, ka_last_of_month(first));
}

constexpr ka_days ka_days_of_year(long long year)
{
    const ka_date first = ka_month_arithmetic::first_of(1, year);
    return ka_days(first, ka_last_of_year(first));
}

constexpr ka_days ka_days_of_quarter(long long quarter, long long year)
{
    if (quarter < 1 || quarter > 4)
        ka_refuse_months(ka_invalid_date, quarter, __LINE__);
    const ka_date first = ka_month_arithmetic::first_of(3 * quarter - 2, year);
    return ka_days(first, ka_last_of_quarter(first));
}

constexpr ka_days ka_days_of_week(const ka_date& date, unsigned short first)
{
    return ka_days(ka_first_of_week(date, first), ka_last_of_week(date, first));
}

template <typename Holidays>
constexpr bool ka_is_business_day(const ka_date& date, const Holidays& holidays)
{
    if (ka_is_weekend(date))
        return false;
    if constexpr (std::predicate<const Holidays&, const ka_date&>)
        return !holidays(date);
    else
        return !std::ranges::binary_search(holidays, date);
}

template <typename Holidays>
constexpr ka_date ka_business_day(const ka_date& date, int n, const Holidays& holidays)
{
    int found = date.julian_day();
    const int step = n < 0 ? -1 : 1;
    if (n == 0) {
        // The date itself counts.
        --found;
        n = 1;
    }
    for (; n != 0; n -= step) {
        do
            found += step;
        while (!ka_is_business_day(ka_date(found), holidays));
    }
    return ka_date(found);
}

/// A place that takes characters until it is full, and then counts no more.
class ka_period_writer {
public:
    constexpr ka_period_writer(char* first, char* last) noexcept : next_(first), last_(last) {}

    constexpr void put(const char* text) noexcept
    {
        for (; *text != '\0'; ++text)
            put(*text);
    }
    constexpr void put(char character) noexcept
    {
        if (next_ == last_)
            is_full_ = true;
        else
            *next_++ = character;
    }
    constexpr void put(unsigned long long number, int width) noexcept
    {
        unsigned long long size = 1;
        for (int digits = 1; digits < width || number / size >= 10; ++digits)
            size *= 10;
        for (; size != 0; size /= 10)
            put(static_cast<char>('0' + number / size % 10));
    }
    constexpr std::to_chars_result result() const noexcept
    {
        return is_full_ ? std::to_chars_result{last_, std::errc::value_too_large}
                        : std::to_chars_result{next_, std::errc()};
    }

private:
    char* next_;
    char* last_;
    bool is_full_ = false;
};

constexpr std::to_chars_result ka_write_period_text(char* first, char* last, const ka_time_period& period,
                                                    int count, const ka_period_units& units) noexcept
{
    struct unit {
        unsigned long long number;
        int width;
        const char* one;
        const char* more;
    };
    const long long whole = period.whole_seconds();
    const bool is_negative = whole < 0 || period.microseconds() < 0;
    // In unsigned: the lowest count of seconds has no opposite.
    const unsigned long long sign = is_negative ? ~0ull : 1;
    const unsigned long long seconds = static_cast<unsigned long long>(whole) * sign;
    const unsigned long long fraction = static_cast<unsigned long long>(period.microseconds()) * sign;
    const unit all[] = {{seconds / 86400, 1, units.day, units.days},
                        {seconds / 3600 % 24, 1, units.hour, units.hours},
                        {seconds / 60 % 60, 2, units.minute, units.minutes},
                        {seconds % 60, 2, units.second, units.seconds},
                        {fraction / 1000, 3, units.millisecond, units.milliseconds},
                        {fraction % 1000, 3, units.microsecond, units.microseconds}};
    constexpr int unit_count = 6;

    int begin = 0;
    while (begin < unit_count && all[begin].number == 0)
        ++begin;
    ka_period_writer out(first, last);
    if (begin == unit_count) {
        out.put("0 ");
        out.put(units.seconds);
        return out.result();
    }
    int end = count < unit_count - begin ? begin + std::max(count, 1) : unit_count;
    while (all[end - 1].number == 0)
        --end;
    if (is_negative)
        out.put('-');
    for (int place = begin; place < end; ++place) {
        const unit& shown = all[place];
        if (place != begin)
            out.put(' ');
        out.put(shown.number, place == begin ? 1 : shown.width);
        out.put(' ');
        out.put(shown.number == 1 ? shown.one : shown.more);
    }
    return out.result();
}

inline std::string ka_period_text(const ka_time_period& period, int count, const ka_period_units& units)
{
    // Longer than all numbers together; the words are the caller's.
    std::string text(64, ' ');
    for (;;) {
        char* const first = text.data();
        const std::to_chars_result written =
            ka_write_period_text(first, first + text.size(), period, count, units);
        if (written.ec == std::errc()) {
            text.resize(static_cast<std::size_t>(written.ptr - first));
            return text;
        }
        text.resize(2 * text.size());
    }
}
