#include <time/timedate.h>

#include <ostream>

#include "clock/local_clock.h"
#include "clock/setting.h"
#include "platform/load.h"
#include "platform/platform.h"
#include "throw.h"

namespace {

constexpr int epoch_day = ka_gregorian::unix_epoch;

/// Midnight of a day number, as a period from day number 0.
constexpr ka_time_period midnight_of(int julian_day) { return ka_time_period(julian_day * 86400ll); }

constexpr ka_time_period epoch = midnight_of(epoch_day);

/// A wall clock as a date and a time. The seconds tell both, where its fields say
/// the same time of day.
struct local_present {
    explicit local_present(const platform::wall_clock& clock)
    {
        const long long seconds =
            clocks::wrapping_sum(clock.local_seconds, epoch_day * clocks::seconds_per_day);
        const std::tm& told = clock.local;
        if (clocks::is_well_in_range(seconds)) [[likely]] {
            date = clocks::date_at(seconds);
            time = clocks::time_at(seconds, clock.milliseconds * 1000);
            if (ka_access::second_of_day(time) == told.tm_hour * 3600 + told.tm_min * 60 + told.tm_sec)
                [[likely]]
                return;
        }
        date = ka_access::date_of(told);
        time = clock.since_midnight();
    }

    ka_date date;
    ka_time time;
};

/// Whether a zone that goes by a table reads a date in the range, and not the
/// first one, wherever it takes a date for its own.
bool is_far_from_the_ends(const ka_date& date) noexcept
{
    constexpr int month = 31;
    return ka_gregorian::first_day + month < date.julian_day() &&
           date.julian_day() < ka_gregorian::last_day - month;
}

/// Takes the machine's wall clock for the local one. Returns the date that is
/// read then, or some other one where that is neither the first nor out of the range.
ka_date set_to_present(ka_time_and_date& moment)
{
    const local_present now(platform::read_wall_clock());
    const ka_time_zone& zone = moment.time_zone();
    ka_time_period instant;
    const bool can_differ = clocks::set_local(instant, now.time, now.date, zone);
    moment.utc_time_and_date(instant);
    if (ka_access::kind(zone) == rules::zone_kind::table && is_far_from_the_ends(now.date)) [[likely]]
        return now.date;
    return can_differ ? moment.date() : now.date;
}

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
    clocks::set_local(instant_, time, date, *zone_);
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
    const ka_date date = ka_access::date_of(fields);
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
    instant_ = clocks::universal_instant(time, date);
}

void ka_time_and_date::utc_time_and_date(const ka_time_period& period) noexcept { instant_ = period; }

ka_time ka_time_and_date::time() const
{
    if (!clocks::goes_by_table(*zone_))
        return clocks::time_by_rules(instant_, *zone_);
    const clocks::clock_by_table local = clocks::indexed_clock(instant_, *zone_);
    if (!local.is_told) [[unlikely]]
        return clocks::time_by_table(instant_, *zone_);
    return clocks::time_of(local, instant_);
}

ka_date ka_time_and_date::date() const
{
    if (!clocks::goes_by_table(*zone_))
        return clocks::date_by_rules(instant_, *zone_);
    const clocks::clock_by_table local = clocks::indexed_clock(instant_, *zone_);
    if (!local.is_told) [[unlikely]]
        return clocks::date_by_table(instant_, *zone_);
    return clocks::date_at(local.seconds);
}

ka_time ka_time_and_date::std_time() const { return ka_time(instant_ - zone_->offset_); }

ka_date ka_time_and_date::std_date() const { return ka_access::date_of(instant_ - zone_->offset_); }

ka_time ka_time_and_date::utc_time() const noexcept { return ka_time(instant_); }

ka_date ka_time_and_date::utc_date() const { return ka_access::date_of(instant_); }

bool ka_time_and_date::is_dst() const
{
    if (!clocks::goes_by_table(*zone_))
        return clocks::is_dst_by_rules(instant_, *zone_);
    const clocks::clock_by_table local = clocks::indexed_clock(instant_, *zone_);
    if (!local.is_told) [[unlikely]]
        return clocks::is_dst_by_table(instant_, *zone_);
    return local.told->is_dst;
}

ka_time_and_date::operator std::tm() const
{
    if (!clocks::goes_by_table(*zone_))
        return clocks::fields_by_rules(instant_, *zone_);
    const clocks::clock_by_table local = clocks::indexed_clock(instant_, *zone_);
    if (!local.is_told) [[unlikely]]
        return clocks::fields_by_table(instant_, *zone_);
    return fields_of(clocks::reading_of(local, instant_));
}

ka_time_and_date ka_time_and_date::now_if_available()
{
    ka_time_and_date moment;
    set_to_present(moment);
    return moment;
}

ka_time_and_date ka_time_and_date::now()
{
    ka_time_and_date moment;
    if (set_to_present(moment) == min_date())
        throw_error(ka_failure, {KA_SOURCE, __LINE__}, "Could not determine current time and date");
    return moment;
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
