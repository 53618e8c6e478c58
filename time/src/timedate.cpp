#include <time/timedate.h>

#include <ostream>

#include "platform.h"
#include "reading.h"
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

void ka_time_and_date::time_and_date(const ka_time& time, const ka_date& date) { set_local(time, date); }

[[gnu::always_inline]] inline const ka_time_zone_rule* ka_time_and_date::set_local(const ka_time& time,
                                                                                   const ka_date& date)
{
    utc_time_and_date(time, date);
    const ka_time_zone_rule* const rule = zone_->rule_at(time, date);
    const ka_time_period& offset = zone_->offset_;
    constexpr ka_time_period none;
    const ka_time_period adjustment = rule != nullptr ? rule->adjustment() : none;
    // Whole seconds that leave the instant at or above zero carry nothing.
    const long long seconds = ka_time_period::wrapping_difference(
        ka_time_period::wrapping_sum(instant_.seconds_, offset.seconds_), adjustment.seconds_);
    if (offset.microseconds_ == 0 && adjustment.microseconds_ == 0 && seconds >= 0 &&
        instant_.microseconds_ >= 0) [[likely]]
        instant_.seconds_ = seconds;
    else
        instant_ += rule != nullptr ? offset - adjustment : offset;
    return rule;
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
    const ka_time_period midnight = midnight_of(date.julian_day());
    const ka_time_period since_midnight = time;
    if (midnight.seconds_ >= 0) [[likely]]
        instant_ = ka_time_period::unchecked(midnight.seconds_ + since_midnight.seconds_,
                                             since_midnight.microseconds_);
    else
        instant_ = midnight + since_midnight;
}

void ka_time_and_date::utc_time_and_date(const ka_time_period& period) noexcept { instant_ = period; }

ka_date ka_time_and_date::moved_date(const ka_time_period& adjustment) const
{
    return ka_date(instant_ - zone_->offset_ + adjustment);
}

ka_time_and_date::reading ka_time_and_date::irregular_local() const
{
    const ka_time_zone_rule* const rule = zone_->rule(std_time(), std_date());
    if (rule != nullptr)
        return moved_local(rule->adjustment());
    const ka_date date = std_date();
    return {std_time(), date, ka_date::split(date.julian_day()), false};
}

ka_time_and_date::reading ka_time_and_date::moved_local(const ka_time_period& adjustment) const
{
    const ka_date date = moved_date(adjustment);
    return {std_time() + adjustment, date, ka_date::split(date.julian_day()), true};
}

ka_time ka_time_and_date::time() const
{
    long long seconds = 0;
    if (!is_regular(seconds)) [[unlikely]] {
        const ka_time_zone_rule* const rule = zone_->rule(std_time(), std_date());
        return rule == nullptr ? std_time() : std_time() + rule->adjustment();
    }
    const ka_time time = regular_time(seconds);
    const ka_date date = regular_date(seconds);
    const ka_time_zone_rule* const rule = zone_->rule_at(time, date);
    if (rule == nullptr)
        return time;
    if (stays_in_day(time, rule->adjustment())) [[likely]]
        return moved_in_day(time, rule->adjustment());
    return time + rule->adjustment();
}

ka_date ka_time_and_date::date() const
{
    long long seconds = 0;
    if (!is_regular(seconds)) [[unlikely]]
        return irregular_local().date;
    const ka_time time = regular_time(seconds);
    const ka_date date = regular_date(seconds);
    const ka_time_zone_rule* const rule = zone_->rule_at(time, date);
    if (rule == nullptr || stays_in_day(time, rule->adjustment())) [[likely]]
        return date;
    return moved_date(rule->adjustment());
}

ka_time ka_time_and_date::std_time() const { return ka_time(instant_ - zone_->offset_); }

ka_date ka_time_and_date::std_date() const { return ka_date(instant_ - zone_->offset_); }

ka_time ka_time_and_date::utc_time() const noexcept { return ka_time(instant_); }

ka_date ka_time_and_date::utc_date() const { return ka_date(instant_); }

bool ka_time_and_date::is_dst() const
{
    long long seconds = 0;
    if (!is_regular(seconds)) [[unlikely]]
        return zone_->rule(std_time(), std_date()) != nullptr;
    return zone_->rule_at(regular_time(seconds), regular_date(seconds)) != nullptr;
}

ka_time_and_date::operator std::tm() const
{
    const reading now = local();
    std::tm fields = {};
    const unsigned int second_of_day = now.time.second_of_day();
    const unsigned int minute_of_day = second_of_day / 60;
    fields.tm_sec = static_cast<int>(second_of_day % 60);
    fields.tm_min = static_cast<int>(minute_of_day % 60);
    fields.tm_hour = static_cast<int>(minute_of_day / 60);
    fields.tm_mday = static_cast<int>(now.day.day);
    fields.tm_mon = static_cast<int>(now.day.month) - 1;
    fields.tm_year = now.day.year - 1900;
    fields.tm_wday =
        static_cast<int>(ka_date::modulo_7(static_cast<unsigned int>(now.date.julian_day()) + 1));
    fields.tm_yday = now.date.julian_day() - ka_date::day_number(1, 1, now.day.astronomical_year);
    fields.tm_isdst = now.is_dst;
    return fields;
}

ka_time_and_date ka_time_and_date::now_if_available()
{
    ka_time_and_date moment;
    moment.read_clock();
    return moment;
}

ka_time_and_date ka_time_and_date::now()
{
    ka_time_and_date moment;
    if (moment.read_clock() == min_date())
        throw_error(error_code::failure, {__FILE__, __LINE__}, "Could not determine current time and date");
    return moment;
}

ka_date ka_time_and_date::read_clock()
{
    const platform::wall_clock clock = platform::read_wall_clock();
    const ka_date date(clock.local);
    const bool is_dst = set_local(ka_time(clock.since_midnight()), date) != nullptr;
    // With no rule in effect the standard clock shows what was read, and asking
    // again would be to ask the same.
    return is_dst ? this->date() : date;
}

void ka_time_and_date::print(std::ostream& stream) const { stream << to_string(nullptr); }

std::string ka_time_and_date::to_string(const std::string& format) const { return formatted(format, *this); }

std::string ka_time_and_date::default_format() { return *default_time_and_date_format_; }

void ka_time_and_date::default_format(const std::string& format) { *default_time_and_date_format_ = format; }

const ka_time_zone& ka_time_and_date::default_time_zone() noexcept { return *default_tzone_; }

void ka_time_and_date::default_time_zone(const ka_time_zone& zone) noexcept { default_tzone_ = &zone; }

const ka_date& ka_time_and_date::min_date() noexcept { return *min_date_; }

const ka_date& ka_time_and_date::max_date() noexcept { return *max_date_; }

const ka_time& ka_time_and_date::min_time() noexcept { return *min_time_; }

const ka_time& ka_time_and_date::max_time() noexcept { return *max_time_; }
