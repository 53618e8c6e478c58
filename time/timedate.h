#pragma once

#include <compare>
#include <ctime>
#include <iosfwd>
#include <string>
#include <string_view>

#include <time/date.h>
#include <time/export.h>
#include <time/time_of_day.h>
#include <time/tperiod.h>
#include <time/zone.h>

/// A moment: a point of universal time, seen through a time zone.
///
///     ka_time_and_date call(ka_time(18, 0, 0), ka_date(7, 4, 2024), ka_time_zone::eastern());
///     call.time_zone(ka_time_zone::central_european());
///     call.to_string("%Y-%m-%d %H:%M %Z");     // "2024-07-05 00:00 CEST-2"
///     call += ka_time_period(1, 0, 0, 0, 0);   // 24 hours later
///
/// Three clocks: the universal one, which is what a moment stores; the standard
/// one, universal time less the zone's offset; and the local one, standard time
/// plus the adjustment of a rule that is in effect on the standard clock.
/// Nothing local is stored: another zone changes what a moment reads, and not
/// where it lies or what it equals.
///
/// Where the clocks change: local times that are skipped are taken as daylight
/// time and read back an hour earlier (02:30 on 10 March 2024 in `pacific()`
/// reads 01:30). Of local times that come twice the later, in standard time, is
/// meant; the earlier is reached through universal time.
/// Range: any instant can be held and compared; reading a date outside the
/// range of `ka_date` throws `invalid_day` (by the low 32 bits of the day
/// count). Arithmetic wraps as a period does.
/// Lifetime: a moment borrows its zone, which must outlive it; a temporary zone
/// does not compile.
/// Threads: a plain value; the default zone and the default format are shared
/// and have no lock.
class KA_TIME_VARNEL_API ka_time_and_date {
public:
    // Building. A time and a date are local, in the zone named or else in the
    // default zone. The epoch is 1 January 1970 00:00:00 universal time.

    /// The epoch.
    ka_time_and_date() noexcept;
    ka_time_and_date(const ka_time& time, const ka_date& date);
    ka_time_and_date(const ka_time& time, const ka_date& date, const ka_time_zone& zone);
    ka_time_and_date(const ka_time&, const ka_date&, const ka_time_zone&&) = delete;
    /// The epoch and a period.
    ka_time_and_date(const ka_time_period& period) noexcept;
    /// A period, of any length, from local midnight of a date.
    ka_time_and_date(const ka_time_period& period, const ka_date& date);
    /// A local time and date; `invalid_date` or `invalid_time` where the fields are neither.
    ka_time_and_date(const std::tm& fields, unsigned int microseconds = 0);
    template <ka_integer Microseconds>
    ka_time_and_date(const std::tm& fields, Microseconds microseconds);
    /// The epoch and so many seconds.
    ka_time_and_date(long long seconds) noexcept;
    template <ka_wider_integer Wide>
    ka_time_and_date(Wide seconds) = delete;
    ka_time_and_date(const ka_time_and_date&) noexcept = default;

    ka_time_and_date& operator=(const ka_time_and_date&) noexcept = default;
    /// As `time_and_date(fields, 0)`: the zone stays.
    ka_time_and_date& operator=(const std::tm& fields);

    /// The machine's wall clock, taken as local time in the default zone, in
    /// whole milliseconds. Throws `failure` where there is no present time.
    static ka_time_and_date now();

    // Setting from local time. The zone stays unless one is named.

    void time_and_date(const ka_time& time, const ka_date& date);
    void time_and_date(const ka_time& time, const ka_date& date, const ka_time_zone& zone);
    void time_and_date(const ka_time&, const ka_date&, const ka_time_zone&&) = delete;
    /// A period from local midnight of a date. It may exceed a day; the offset
    /// is that of its time of day on `date` itself.
    void time_and_date(const ka_time_period& period, const ka_date& date);
    /// Reads month, day, year, hour, minute and second alone.
    void time_and_date(const std::tm& fields, unsigned int microseconds = 0);
    template <ka_integer Microseconds>
    void time_and_date(const std::tm& fields, Microseconds microseconds);
    /// The epoch and so many seconds.
    void time_and_date(long long seconds) noexcept;
    template <ka_wider_integer Wide>
    void time_and_date(Wide seconds) = delete;
    /// The epoch and the whole seconds of a period, in 32 bits: its
    /// microseconds are dropped, unlike in the constructor.
    void time_and_date(const ka_time_period& period) noexcept;
    /// Another local time on the same local date.
    void time(const ka_time& time);
    /// Another local date at the same standard time: in daylight time the
    /// reading moves back by the adjustment.
    void date(const ka_date& date);

    // Setting from universal time.

    void utc_time_and_date(const ka_time& time, const ka_date& date) noexcept;
    /// The instant itself: the period from midnight at the start of day number
    /// 0, not from the epoch.
    void utc_time_and_date(const ka_time_period& period) noexcept;

    /// Another zone for the same instant.
    void time_zone(const ka_time_zone& zone) noexcept { zone_ = &zone; }
    void time_zone(const ka_time_zone&&) = delete;

    // Reading. A date out of range throws `invalid_day`; so do the local
    // readings, which ask the rules about a date.

    ka_time time() const;
    ka_date date() const;
    ka_time std_time() const;
    ka_date std_date() const;
    ka_time utc_time() const noexcept;
    ka_date utc_date() const;
    /// The instant: the period from midnight at the start of day number 0.
    ka_time_period utc_time_and_date() const noexcept { return instant_; }
    /// Whether a rule of the zone is in effect.
    bool is_dst() const;
    const ka_time_zone& time_zone() const noexcept { return *zone_; }
    /// The local reading, `tm_isdst` and all the days' numbers included.
    operator std::tm() const;

    // Arithmetic on the universal clock: 24 hours over a change of the clocks
    // read as 23 or 25 on the local one.

    ka_time_and_date operator+(const ka_time_period& period) const noexcept;
    ka_time_and_date operator-(const ka_time_period& period) const;
    ka_time_and_date& operator+=(const ka_time_period& period) noexcept;
    ka_time_and_date& operator-=(const ka_time_period& period);
    ka_time_period operator-(const ka_time_and_date& other) const { return instant_ - other.instant_; }

    // Order: that of the instants. Zones play no part.

    bool operator==(const ka_time_and_date& other) const noexcept { return instant_ == other.instant_; }
    bool operator!=(const ka_time_and_date& other) const noexcept { return instant_ != other.instant_; }
    bool operator<(const ka_time_and_date& other) const noexcept { return instant_ < other.instant_; }
    bool operator<=(const ka_time_and_date& other) const noexcept { return instant_ <= other.instant_; }
    bool operator>(const ka_time_and_date& other) const noexcept { return instant_ > other.instant_; }
    bool operator>=(const ka_time_and_date& other) const noexcept { return instant_ >= other.instant_; }
    /// Weak, since moments that are equal can still have different zones.
    std::weak_ordering operator<=>(const ka_time_and_date& other) const noexcept;

    // Text.

    /// The local reading in a format, whose codes are those of docs/format.md;
    /// null stands for the default format.
    std::string to_string(const char* format = nullptr) const;
    /// The same for a string, a NUL inside it included.
    std::string to_string(const std::string& format) const;
    /// Writes `to_string()`; the stream's width and fill apply.
    void print(std::ostream& stream) const;

    /// The default format, "%x %H:%M:%S:%q" at start.
    static std::string default_format();
    static void default_format(const std::string& format);

    // The default zone: that of every moment built without one. The library
    // chooses it at start, from the machine's offset and daylight saving time;
    // where no built-in zone agrees with the machine, it is one of that offset
    // named "UTC". Moments built earlier keep theirs.

    static const ka_time_zone& default_time_zone() noexcept;
    /// Stores the address: the zone must live as long as it is the default.
    static void default_time_zone(const ka_time_zone& zone) noexcept;
    static void default_time_zone(const ka_time_zone&&) = delete;

    // The limits of times and dates.

    static const ka_date& min_date() noexcept;
    static const ka_date& max_date() noexcept;
    static const ka_time& min_time() noexcept;
    static const ka_time& max_time() noexcept;

protected:
    /// Fills the shared statics: names, default formats, patterns, limits and
    /// the default zone, in this order.
    static void initialize_statics();

    static std::string formatted(const std::string& format, const ka_time_and_date& value);
    /// A null half stands for that of the epoch as the default zone sees it.
    static std::string formatted(const std::string& format, const ka_time* time, const ka_date* date);

private:
    friend struct ka_access;

    // What the binary interface fixes: who starts and stops the library and reads
    // its statics, what is built from these, and the fields of a moment.

    friend class ka_date;
    friend class ka_time;
    friend void ka_init_time_varnel();
    friend void ka_exit_time_varnel();

    /// A universal time and date, in the zone `utc`.
    ka_time_and_date(const ka_time& time, const ka_date& date, bool universal) noexcept;
    static ka_time_and_date now_if_available();
    static void delete_names() noexcept;

    static std::string formatted(const std::string& format, const unsigned short& hour,
                                 const unsigned short& minute, const unsigned short& second,
                                 const unsigned int& microsecond, const unsigned short& month,
                                 const unsigned short& day, const short& year, const ka_time_zone& zone,
                                 bool dst);
    /// A number in decimal, right-aligned in `width` characters; a minus sign
    /// stands in front and is not counted.
    static std::string to_string(int value, int width, char fill);
    static std::string tm_string(const char* format, const std::tm& value);
    static std::string decode(const char* conversion);
    static void replace_if_present(std::string& target, const std::string& search,
                                   const std::string& replacement);

    static std::string *month_name_[12], *month_abbr_[12], *weekday_name_[7], *weekday_abbr_[7];
    static std::string *am_name_, *pm_name_, *ad_name_, *bc_name_;
    static std::string *default_time_format_, *default_date_format_, *default_time_and_date_format_;
    static std::string *format_timedate_, *format_date_, *format_time_;
    static ka_time *min_time_, *max_time_;
    static ka_date *default_date_, *min_date_, *max_date_;
    static const ka_time_zone* default_tzone_;

    ka_time_period instant_;
    const ka_time_zone* zone_;
};

#include <time/inline/timedate.h>
