#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include <time/export.h>
#include <time/local.h>
#include <time/zone.h>

/// Whole columns of instants, read in a zone, and back.
///
///     #include <time/columns.h>
///
///     const long long instants[] = {1720117718000123, 1720117719000000};
///     ka_clock_fields fields[2];
///     ka_local_fields(ka_time_zone::pacific(), instants, fields).done;   // 2
///     fields[0].hour;                                                    // 11
///
/// Instants are microseconds of universal time since 1970, as those of
/// `ka_to_sys_time`. A row gives what a moment of its instant reads, or what
/// `ka_local_time` gives, in zones of any rules, whatever the other rows are. The
/// time between two changes is worked out once for all rows that follow each
/// other in it, so a column in order costs least.
/// Failure: a row that can't be done is told by its index and nothing is thrown
/// for it. Columns of different lengths throw `failure`, and so nothing is done.
/// What a rule of the caller's own throws passes through, unless it is a
/// `ka_time_varnel_error`, which counts as the row's.
/// Memory: none is allocated, but by a rule that throws.
/// Lifetime: the zone is borrowed for the call, so it may be a temporary.
/// Threads: as readings of the zone: each thread may take a part of a column.

/// How far a column was done. To go on behind a row that was refused, call with
/// the parts of the columns from row `done + 1` on.
struct ka_column_result {
    /// The rows done, from the first on, and so the index of the one that was
    /// refused. That one and all behind it were not written.
    std::size_t done = 0;
    /// Why it was refused: a `ka_error`, or whatever code a rule has thrown.
    std::optional<int> code;

    /// Whether all rows were done.
    constexpr explicit operator bool() const noexcept { return !code; }
};

/// What the clocks of a zone show at an instant: a plain value, 32 bytes on 64-bit machines.
struct ka_clock_fields {
    short year;               ///< -4713 to 32766; there is no year 0
    unsigned short month;     ///< 1 to 12
    unsigned short day;       ///< 1 to 31
    unsigned short hour;      ///< 0 to 23
    unsigned short minute;    ///< 0 to 59
    unsigned short second;    ///< 0 to 59
    unsigned int microsecond; ///< 0 to 999999
    bool is_dst;              ///< whether a rule is in effect; not read by `ka_instants`
    unsigned short weekday;   ///< 1 (Sunday) to 7; not read by `ka_instants`
    /// Microseconds from local to universal time, positive in the west; not read by `ka_instants`.
    long long offset;

    bool operator==(const ka_clock_fields&) const = default;
};

/// Microseconds from local to universal time, as `ka_offset` has them: positive
/// in the west, and local time is the instant less its offset.
///
/// Refused: an instant whose local date is out of the range (`invalid_day`), an
/// offset that 64 bits do not hold (`invalid_time_period`), and what a rule
/// refuses, such as a year that lacks its day (`invalid_date`).
[[nodiscard]] KA_TIME_VARNEL_API ka_column_result ka_local_offsets(const ka_time_zone& zone,
                                                                   std::span<const long long> instants,
                                                                   std::span<long long> offsets);

/// All that the clocks show. Refused: as in `ka_local_offsets`.
[[nodiscard]] KA_TIME_VARNEL_API ka_column_result ka_local_fields(const ka_time_zone& zone,
                                                                  std::span<const long long> instants,
                                                                  std::span<ka_clock_fields> fields);

/// The instants of local times, from year, month, day, hour, minute, second and
/// microsecond alone. `choice` tells which is meant where there is not one.
///
/// Refused: fields that are no date (`invalid_date`) or no time of day
/// (`invalid_time`), local times that `choice` refuses (`invalid_time`), an
/// instant that 64 bits do not hold (`invalid_time_period`), and what a rule
/// refuses.
[[nodiscard]] KA_TIME_VARNEL_API ka_column_result ka_instants(const ka_time_zone& zone,
                                                              std::span<const ka_clock_fields> fields,
                                                              ka_local_choice choice,
                                                              std::span<long long> instants);
