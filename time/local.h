#pragma once

#include <optional>

#include <time/date.h>
#include <time/export.h>
#include <time/time_of_day.h>
#include <time/timedate.h>
#include <time/tperiod.h>
#include <time/zone.h>

/// What a local time means where the clocks change, and when they do.
///
///     #include <time/local.h>
///
///     const ka_time_zone& zone = ka_time_zone::pacific();
///     ka_time half_past_two(2, 30, 0);
///     ka_date change(3, 10, 2024);
///     ka_local_times(zone, half_past_two, change).kind == ka_local_kind::skipped;  // true
///     ka_local_time(zone, half_past_two, change).time();                           // 03:30
///     ka_next_change(zone, ka_start_of_day(zone, change))->moment.utc_time();      // 10:00
///
/// All of this asks what a moment reads, in zones of any rules: a local time
/// means each moment that reads it. The constructors of a moment go another way,
/// which `timedate.h` tells, and give one of these moments wherever there is one
/// in every built-in zone.
/// Range: local dates are those of `ka_date`. A moment whose reading would be
/// out of the range counts as none.
/// Failure: what a rule throws passes through, as it does from a reading.
/// Lifetime: moments borrow the zone. Threads: as readings of the zone.

enum class ka_local_kind {
    once,    ///< one moment reads so
    skipped, ///< none does: the clocks are moved forward over it
    repeated ///< several do: the clocks are moved back to it
};

/// The moments that a local time can mean, in its zone.
struct ka_local_moments {
    ka_local_kind kind;
    /// Once: the moment. Repeated: the first that reads so. Skipped: by the
    /// offset after the change, and reads that much earlier.
    ka_time_and_date earlier;
    /// Once: the moment. Repeated: the last that reads so. Skipped: by the
    /// offset before the change, and reads that much later.
    ka_time_and_date later;
};

KA_TIME_VARNEL_API ka_local_moments ka_local_times(const ka_time_zone& zone, const ka_time& time,
                                                   const ka_date& date);
ka_local_moments ka_local_times(const ka_time_zone&& zone, const ka_time& time, const ka_date& date) = delete;

/// Which moment is meant where there is not one alone.
enum class ka_local_choice {
    compatible, ///< skipped: the later; repeated: the earlier, as calendars on the net do (RFC 5545)
    earlier,
    later,
    refuse ///< `invalid_time`, with the time, the date and the zone
};

/// The moment of a local time.
KA_TIME_VARNEL_API ka_time_and_date ka_local_time(const ka_time_zone& zone, const ka_time& time,
                                                  const ka_date& date,
                                                  ka_local_choice choice = ka_local_choice::compatible);
ka_time_and_date ka_local_time(const ka_time_zone&& zone, const ka_time& time, const ka_date& date,
                               ka_local_choice choice = ka_local_choice::compatible) = delete;

/// The first moment of a day. Where the clocks skip midnight it is that of the
/// change; so it is where they skip all of the day, and the next one is read.
KA_TIME_VARNEL_API ka_time_and_date ka_start_of_day(const ka_time_zone& zone, const ka_date& date);
ka_time_and_date ka_start_of_day(const ka_time_zone&& zone, const ka_date& date) = delete;

/// A change of the clocks.
struct ka_zone_change {
    /// The first moment that reads by the offset `after`.
    ka_time_and_date moment;
    /// As `ka_time_zone::offset`: positive in the west. The two differ.
    ka_time_period before;
    ka_time_period after;
};

/// The first change after a moment, in the range of dates; or none.
///
/// Rules of the library's own kind are exact to the microsecond. One derived
/// from `ka_time_zone_rule` is asked at its points, and from hour to hour in its
/// years: two changes within an hour, away from the points, can escape. In all
/// other years it is asked once a day, and to find no change at all until the
/// end of the range takes about a second.
KA_TIME_VARNEL_API std::optional<ka_zone_change> ka_next_change(const ka_time_zone& zone,
                                                                const ka_time_and_date& moment);
std::optional<ka_zone_change> ka_next_change(const ka_time_zone&& zone,
                                             const ka_time_and_date& moment) = delete;

/// The last change at a moment or before it.
KA_TIME_VARNEL_API std::optional<ka_zone_change> ka_previous_change(const ka_time_zone& zone,
                                                                    const ka_time_and_date& moment);
std::optional<ka_zone_change> ka_previous_change(const ka_time_zone&& zone,
                                                 const ka_time_and_date& moment) = delete;
