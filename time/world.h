#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <time/export.h>
#include <time/timedate.h>
#include <time/tperiod.h>
#include <time/zone.h>

/// The zones of the world: every zone of the public tz data by its name.
///
///     const ka_time_zone& kyiv = ka_zone("Europe/Kyiv");
///     const ka_time_and_date start(ka_time(9, 30, 0), ka_date(7, 1, 2024), ka_zone("America/New_York"));
///     ka_time_and_date there = start;
///     there.time_zone(kyiv);
///     there.to_string("%H:%M %Z");      // "16:30 EEST-3"
///     ka_zone_abbreviation(there);      // "EEST"
///
/// Such a zone is a `ka_time_zone` as any other. `offset()` is the standard
/// offset that holds in the end; `offset(time, date)`, `is_dst`, `%Z`, the names
/// and `tm_isdst` follow the data at that moment, by which summer time can also
/// be behind standard time (Dublin, Casablanca). Local times that are skipped or
/// repeated mean what they mean in every zone: see `ka_time_and_date`.
/// Exact: from the first change on record to the end of the range. Before it the
/// first type of the data holds; after the last the rule at the end of the file
/// does, for ever, or the last type where there is none.
/// Lifetime: a zone never changes. Those of `ka_zone`, `ka_posix_zone` and
/// `ka_machine_zone` live until the library stops, those of a store as long as it.
/// Failure: `ka_time_varnel_error` with the code `failure`, which names the zone
/// and the place looked at; nothing is left half loaded.
/// Threads: all of it is safe from any thread. A zone that is loaded is found
/// without a lock.

/// A zone by its name, such as "Asia/Kolkata", loaded when it is first asked for.
/// The folders that are searched: the one that `TZDIR` names, if it is set, then
/// /usr/share/zoneinfo, /usr/lib/zoneinfo, /usr/share/lib/zoneinfo and
/// /etc/zoneinfo. Capital letters count. A name that leads out of the folder, or
/// to something that is no tz file (RFC 9636, versions 1 to 4), is refused.
KA_TIME_VARNEL_API const ka_time_zone& ka_zone(std::string_view name);

/// The names of all zones that `ka_zone` would find, in ascending order. It looks
/// into every file of the folder: keep the result.
KA_TIME_VARNEL_API std::vector<std::string> ka_zone_names();

/// The zone of this machine: what `TZ` says (a name, a path, a TZ string; empty is
/// universal time), else the zone of /etc/localtime, else one of the machine's
/// standard offset. Unlike the default zone it knows all changes. It is worked out
/// at the first call.
KA_TIME_VARNEL_API const ka_time_zone& ka_machine_zone();

/// The present moment, to the microsecond, in a zone. It comes from the universal
/// clock, so that it is right whatever the default zone is; `now` takes the local
/// clock of the machine for that of the default zone.
KA_TIME_VARNEL_API ka_time_and_date ka_present(const ka_time_zone& zone);
ka_time_and_date ka_present(const ka_time_zone&&) = delete;

/// A zone by a TZ string: POSIX.1-2024, section 8.3, such as
/// "CET-1CEST,M3.5.0,M10.5.0/3", "<+0330>-3:30" or "EST5EDT,0/0,J365/25". The
/// hours of a change can be -167 to 167; where the changes are left out, those of
/// the United States hold. The rules hold in every year. Refused with the first
/// character that is wrong, counted from 0.
KA_TIME_VARNEL_API const ka_time_zone& ka_posix_zone(std::string_view text);

/// What the people call the time at a moment: "EEST" or "+0545" in a zone of the
/// world; in other zones the name without its number.
KA_TIME_VARNEL_API std::string ka_zone_abbreviation(const ka_time_and_date& moment);

/// The offset at a moment, in any zone: what has to be added to local time to
/// reach universal time, so positive in the west.
KA_TIME_VARNEL_API ka_time_period ka_offset(const ka_time_and_date& moment);

/// A file of a store: the name of its zone, and its bytes.
struct ka_zone_file {
    std::string name;
    std::string bytes;
};

/// Zones of one's own data: another folder, or files in memory. A new store reads
/// anew, so that a running program gets fresh data.
///
///     const ka_zone_store fresh("/usr/share/zoneinfo");
///     fresh.zone("Asia/Tokyo").name();      // "JST-9"
class KA_TIME_VARNEL_API ka_zone_store {
public:
    /// Nothing is read before it is asked for.
    explicit ka_zone_store(std::string folder);
    /// The bytes of tz files, by the names of their zones; of two of one name the
    /// first counts.
    explicit ka_zone_store(std::vector<ka_zone_file> files);
    ~ka_zone_store();

    ka_zone_store(const ka_zone_store&) = delete;
    ka_zone_store& operator=(const ka_zone_store&) = delete;

    /// As `ka_zone`, in this store.
    const ka_time_zone& zone(std::string_view name) const;
    /// As `ka_posix_zone`; the zone is the store's.
    const ka_time_zone& posix_zone(std::string_view text) const;
    /// As `ka_zone_names`.
    std::vector<std::string> names() const;
    /// The version of the data, such as "2026c", where a file "+VERSION" or
    /// "tzdata.zi" tells it; else empty.
    std::string version() const;

private:
    struct shelf;
    shelf* shelf_;
};
