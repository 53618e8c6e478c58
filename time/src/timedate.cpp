#include <time/timedate.h>

#include <ostream>

#include "platform.h"
#include "throw.h"

namespace {

constexpr int epoch_day = 2440588;

/// Midnight of a day number, as a period from day number 0.
constexpr ka_time_period midnight_of(int julian_day) { return ka_time_period(julian_day * 86400ll); }

constexpr ka_time_period epoch = midnight_of(epoch_day);

}

const ka_time_zone* ka_time_and_date::default_tzone_ = nullptr;

ka_time_and_date::ka_time_and_date() noexcept : instant_(epoch), zone_(default_tzone_) {}

ka_time_and_date::ka_time_and_date(const ka_time& time, const ka_date& date) : zone_(default_tzone_)
{
    time_and_date(time, date);
}

ka_time_and_date::ka_time_and_date(const ka_time& time, const ka_date& date, const ka_time_zone& zone)
    : zone_(&zone)
{
    time_and_date(time, date);
}

ka_time_and_date::ka_time_and_date(const ka_time_period& period) noexcept
    : instant_(epoch + period), zone_(default_tzone_)
{}

ka_time_and_date::ka_time_and_date(const ka_time_period& period, const ka_date& date) : zone_(default_tzone_)
{
    time_and_date(period, date);
}

ka_time_and_date::ka_time_and_date(const std::tm& fields, unsigned int microseconds) : zone_(default_tzone_)
{
    time_and_date(fields, microseconds);
}

ka_time_and_date::ka_time_and_date(long long seconds) noexcept : zone_(default_tzone_)
{
    time_and_date(seconds);
}

ka_time_and_date::ka_time_and_date(const ka_time& time, const ka_date& date, bool) noexcept
    : zone_(&ka_time_zone::utc())
{
    utc_time_and_date(time, date);
}

ka_time_and_date& ka_time_and_date::operator=(const std::tm& fields)
{
    time_and_date(fields, 0);
    return *this;
}

void ka_time_and_date::time_and_date(const ka_time& time, const ka_date& date)
{
    utc_time_and_date(time, date);
    instant_ += zone_->offset(time, date);
}

void ka_time_and_date::time_and_date(const ka_time& time, const ka_date& date, const ka_time_zone& zone)
{
    zone_ = &zone;
    time_and_date(time, date);
}

void ka_time_and_date::time_and_date(const ka_time_period& period, const ka_date& date)
{
    instant_ = midnight_of(date.julian_day()) + period;
    instant_ += zone_->offset(ka_time(period), date);
}

void ka_time_and_date::time_and_date(const std::tm& fields, unsigned int microseconds)
{
    const ka_date date(fields);
    const ka_time time(fields, microseconds);
    time_and_date(time, date);
}

void ka_time_and_date::time_and_date(long long seconds) noexcept
{
    instant_ = epoch + ka_time_period(seconds);
}

void ka_time_and_date::time_and_date(const ka_time_period& period) noexcept
{
    time_and_date(static_cast<long long>(period.to_seconds()));
}

void ka_time_and_date::time(const ka_time& time) { time_and_date(time, date()); }

void ka_time_and_date::date(const ka_date& date) { time_and_date(std_time(), date); }

void ka_time_and_date::utc_time_and_date(const ka_time& time, const ka_date& date) noexcept
{
    instant_ = midnight_of(date.julian_day()) + time;
}

void ka_time_and_date::utc_time_and_date(const ka_time_period& period) noexcept { instant_ = period; }

const ka_time_zone_rule* ka_time_and_date::rule_at(const ka_time_period& standard) const
{
    return zone_->rule(ka_time(standard), ka_date(standard));
}

ka_time_and_date::reading ka_time_and_date::local() const
{
    const ka_time_period standard = instant_ - zone_->offset_;
    reading now = {ka_time(standard), ka_date(standard), 0, 0, 0, false};
    ka_date::calc_calendar_date(now.date.julian_day(), &now.month, &now.day, &now.year);

    const ka_time_zone_rule* const rule = zone_->rule_in_month(now.time, now.date, now.year, now.month);
    if (rule == nullptr)
        return now;
    const ka_time_period local = standard + rule->adjustment();
    const ka_date local_date(local);
    if (local_date != now.date)
        ka_date::calc_calendar_date(local_date.julian_day(), &now.month, &now.day, &now.year);
    now.time = ka_time(local);
    now.date = local_date;
    now.is_dst = true;
    return now;
}

ka_time ka_time_and_date::time() const
{
    const ka_time_period standard = instant_ - zone_->offset_;
    const ka_time_zone_rule* const rule = rule_at(standard);
    return ka_time(rule != nullptr ? standard + rule->adjustment() : standard);
}

ka_date ka_time_and_date::date() const
{
    const ka_time_period standard = instant_ - zone_->offset_;
    const ka_time_zone_rule* const rule = rule_at(standard);
    return ka_date(rule != nullptr ? standard + rule->adjustment() : standard);
}

ka_time ka_time_and_date::std_time() const { return ka_time(instant_ - zone_->offset_); }

ka_date ka_time_and_date::std_date() const { return ka_date(instant_ - zone_->offset_); }

ka_time ka_time_and_date::utc_time() const noexcept { return ka_time(instant_); }

ka_date ka_time_and_date::utc_date() const { return ka_date(instant_); }

bool ka_time_and_date::is_dst() const { return rule_at(instant_ - zone_->offset_) != nullptr; }

ka_time_and_date::operator std::tm() const
{
    const reading now = local();
    std::tm fields = {};
    fields.tm_sec = now.time.seconds();
    fields.tm_min = now.time.minutes();
    fields.tm_hour = now.time.hours();
    fields.tm_mday = now.day;
    fields.tm_mon = now.month - 1;
    fields.tm_year = now.year - 1900;
    fields.tm_wday = now.date.weekday() - 1;
    fields.tm_yday = now.date.julian_day() - ka_date::calc_julian_day(1, 1, now.year);
    fields.tm_isdst = now.is_dst;
    return fields;
}

ka_time_and_date ka_time_and_date::now_if_available()
{
    const platform::wall_clock clock = platform::read_wall_clock();
    return ka_time_and_date(ka_time(clock.since_midnight()), ka_date(clock.local));
}

ka_time_and_date ka_time_and_date::now()
{
    const ka_time_and_date moment = now_if_available();
    if (moment.date() == min_date())
        throw_error(error_code::failure, {__FILE__, __LINE__}, "Could not determine current time and date");
    return moment;
}

std::string ka_time_and_date::to_string(const char* format) const
{
    return format == nullptr ? formatted(*default_time_and_date_format_, *this) : formatted(format, *this);
}

void ka_time_and_date::print(std::ostream& stream) const { stream << to_string(nullptr); }

std::string ka_time_and_date::default_format() { return *default_time_and_date_format_; }

void ka_time_and_date::default_format(const std::string& format) { *default_time_and_date_format_ = format; }

const ka_time_zone& ka_time_and_date::default_time_zone() noexcept { return *default_tzone_; }

void ka_time_and_date::default_time_zone(const ka_time_zone& zone) noexcept { default_tzone_ = &zone; }

const ka_date& ka_time_and_date::min_date() noexcept { return *min_date_; }

const ka_date& ka_time_and_date::max_date() noexcept { return *max_date_; }

const ka_time& ka_time_and_date::min_time() noexcept { return *min_time_; }

const ka_time& ka_time_and_date::max_time() noexcept { return *max_time_; }
