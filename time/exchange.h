#pragma once

#include <charconv>
#include <string>
#include <string_view>

#include <time/date.h>
#include <time/export.h>
#include <time/local.h>
#include <time/read_result.h>
#include <time/time_of_day.h>
#include <time/timedate.h>
#include <time/tperiod.h>
#include <time/zone.h>

/// Texts that programs exchange, each of one standard, written and read.
///
///     #include <time/exchange.h>
///
///     ka_time_and_date call(ka_time(18, 0, 0), ka_date(7, 4, 2024), ka_time_zone::eastern());
///     ka_rfc3339(call);                                               // "2024-07-04T18:00:00-04:00"
///     ka_http_date(call);                                             // "Thu, 04 Jul 2024 22:00:00 GMT"
///     ka_read_rfc3339("2024-07-04T18:00:00-04:00")->moment == call;   // true
///     ka_read_iso_date("2024-02-30").failure().message();
///     // "invalid_day: 30 at 8, day, in 2024-02-30"
///
/// For each text there are three functions. `ka_rfc3339(value)` gives a string.
/// `ka_write_rfc3339(first, last, value)` writes as `std::to_chars` does, and
/// gives the end of the text or, where there is no room, `last` with
/// `value_too_large`. `ka_read_rfc3339(text)` reads, and takes the whole text or
/// none of it.
///
///     const auto stamp = ka_read_rfc3339("2024-07-04T18:00:00Z door opened", ka_extent::start);
///     stamp.end();   // 20
///
/// With `ka_extent::start` only the start of a text has to match, and what is
/// read is what that part alone says. It reaches as far as it can: a part that
/// may be left out, such as the fraction, has to be right once it has begun.
///
/// Language: English, whatever the user's is.
/// Years: from 0 to 9999 four digits, and beyond a sign and six. They are those
/// of ISO 8601, so 0000 is 1 B.C., -1 in `ka_date`, and -000043 is 44 B.C.
/// Offsets: positive in the east, as all the world writes them; those of
/// `ka_time_zone` have the other sign.
/// Failure: what is written throws `invalid_day` where a value is out of the
/// range of dates, and `invalid_year` where a text has no room for the year.
/// What is read throws nothing, allocates nothing, and takes a time that grows
/// with the text alone.
/// Fractions: digits beyond the sixth are read and dropped. Second 60 is read as
/// 59, which the result tells; 24:00 is refused.

/// How many digits of a second are written. Dropped digits are not rounded.
enum class ka_fraction {
    none,
    milliseconds, ///< three
    microseconds, ///< six
    as_needed     ///< none, three or six: as few as lose nothing
};

/// A moment that was read, in the zone `utc`, with what the text told of its zone.
struct ka_told_moment {
    ka_time_and_date moment;
    /// Positive in the east; zero where it is not known.
    ka_time_period offset;
    /// False where the text says that universal time is all that is known: -00:00.
    bool is_offset_known = true;
};

// RFC 3339, the profile of ISO 8601 for the net: 2024-07-04T18:00:00.123456+02:00.

/// By the offset of the moment's zone, in whole minutes; by "Z" in `utc()`, and
/// where an offset is a day or more.
KA_TIME_VARNEL_API std::string ka_rfc3339(const ka_time_and_date& moment,
                                          ka_fraction fraction = ka_fraction::as_needed);
KA_TIME_VARNEL_API std::to_chars_result ka_write_rfc3339(char* first, char* last,
                                                         const ka_time_and_date& moment,
                                                         ka_fraction fraction = ka_fraction::as_needed);
/// A blank, "t" and "z" are taken too. Without an offset there is no moment.
KA_TIME_VARNEL_API ka_read_result<ka_told_moment> ka_read_rfc3339(std::string_view text,
                                                                  ka_extent extent = ka_extent::all) noexcept;
/// The moment in a zone. A text without an offset is local time there, of which
/// `choice` says what is meant where the clocks change; a choice to refuse, and
/// what a rule refuses, is thrown.
///
///     const ka_time_zone& zone = ka_time_zone::pacific();
///     ka_read_rfc3339("2024-07-04 18:28:38", zone)->time();                           // 18:28:38
///     ka_read_rfc3339("2024-07-04T18:28:38Z", zone)->time();                          // 11:28:38
KA_TIME_VARNEL_API ka_read_result<ka_time_and_date>
ka_read_rfc3339(std::string_view text, const ka_time_zone& zone,
                ka_local_choice choice = ka_local_choice::compatible, ka_extent extent = ka_extent::all);
ka_read_result<ka_time_and_date> ka_read_rfc3339(std::string_view text, const ka_time_zone&& zone,
                                                 ka_local_choice choice = ka_local_choice::compatible,
                                                 ka_extent extent = ka_extent::all) = delete;

// RFC 9557: the same with the name of the zone behind it,
// 2024-07-04T18:00:00+02:00[Europe/Berlin].

/// In a zone of the world (`time/world.h`), or in `utc()`. A zone without a
/// name of the tz data has its offset in the brackets.
KA_TIME_VARNEL_API std::string ka_rfc9557(const ka_time_and_date& moment,
                                          ka_fraction fraction = ka_fraction::as_needed);
KA_TIME_VARNEL_API std::to_chars_result ka_write_rfc9557(char* first, char* last,
                                                         const ka_time_and_date& moment,
                                                         ka_fraction fraction = ka_fraction::as_needed);
/// The moment in the zone that is named, as `ka_zone` gives it. An offset that
/// the zone does not have then is refused; "Z" and -00:00 go with any zone, and
/// a text without an offset is local time, by `choice`. Other tags are passed
/// over, unless they are critical (!) and ask for another calendar, or for what
/// is not known here. What `choice` refuses is thrown. A zone that is not loaded
/// yet is read from its file.
///
///     ka_read_rfc9557("2024-07-04T18:00:00+02:00[Europe/Berlin]")->utc_time();   // 16:00
///     ka_read_rfc9557("2024-07-04T18:00:00[Europe/Berlin]")->utc_time();         // 16:00
///     ka_read_rfc9557("2024-07-04T18:00:00+01:00[Europe/Berlin]").has_value();   // false
KA_TIME_VARNEL_API ka_read_result<ka_time_and_date>
ka_read_rfc9557(std::string_view text, ka_local_choice choice = ka_local_choice::compatible,
                ka_extent extent = ka_extent::all);

// RFC 5322, of mail: Thu, 4 Jul 2024 18:00:00 +0200.

/// By the offset of the moment's zone, as above. A year before 1900 throws `invalid_year`.
KA_TIME_VARNEL_API std::string ka_rfc5322(const ka_time_and_date& moment);
KA_TIME_VARNEL_API std::to_chars_result ka_write_rfc5322(char* first, char* last,
                                                         const ka_time_and_date& moment);
/// The weekday and the seconds can be left out; a weekday must be that of the
/// date. Comments, folded lines, years of two and three digits and the zones
/// "UT", "GMT", "EST" to "PDT" are taken as the standard says for old mail; a
/// single letter as an offset that is not known.
KA_TIME_VARNEL_API ka_read_result<ka_told_moment> ka_read_rfc5322(std::string_view text,
                                                                  ka_extent extent = ka_extent::all) noexcept;

// RFC 9110, of HTTP: Thu, 04 Jul 2024 16:00:00 GMT.

/// A year outside 1 to 9999 throws `invalid_year`.
KA_TIME_VARNEL_API std::string ka_http_date(const ka_time_and_date& moment);
KA_TIME_VARNEL_API std::to_chars_result ka_write_http_date(char* first, char* last,
                                                           const ka_time_and_date& moment);
/// Also the two older forms: "Thursday, 04-Jul-24 16:00:00 GMT", whose year is
/// at most 50 years ahead of the machine's date, and "Thu Jul  4 16:00:00 2024".
KA_TIME_VARNEL_API ka_read_result<ka_time_and_date>
ka_read_http_date(std::string_view text, ka_extent extent = ka_extent::all) noexcept;

// ISO 8601: dates, times, durations.

/// 2024-07-04
KA_TIME_VARNEL_API std::string ka_iso_date(const ka_date& date);
KA_TIME_VARNEL_API std::to_chars_result ka_write_iso_date(char* first, char* last, const ka_date& date);
KA_TIME_VARNEL_API ka_read_result<ka_date> ka_read_iso_date(std::string_view text,
                                                            ka_extent extent = ka_extent::all) noexcept;

/// 2024-W27-4: weeks and weekdays as in `ka_iso_week`.
KA_TIME_VARNEL_API std::string ka_iso_week_date(const ka_date& date);
KA_TIME_VARNEL_API std::to_chars_result ka_write_iso_week_date(char* first, char* last, const ka_date& date);
KA_TIME_VARNEL_API ka_read_result<ka_date> ka_read_iso_week_date(std::string_view text,
                                                                 ka_extent extent = ka_extent::all) noexcept;

/// 2024-186: the day of the year, from 001.
KA_TIME_VARNEL_API std::string ka_iso_ordinal_date(const ka_date& date);
KA_TIME_VARNEL_API std::to_chars_result ka_write_iso_ordinal_date(char* first, char* last,
                                                                  const ka_date& date);
KA_TIME_VARNEL_API ka_read_result<ka_date>
ka_read_iso_ordinal_date(std::string_view text, ka_extent extent = ka_extent::all) noexcept;

/// 18:28:38.000123. The seconds can be left out of what is read.
KA_TIME_VARNEL_API std::string ka_iso_time(const ka_time& time,
                                           ka_fraction fraction = ka_fraction::as_needed);
KA_TIME_VARNEL_API std::to_chars_result ka_write_iso_time(char* first, char* last, const ka_time& time,
                                                          ka_fraction fraction = ka_fraction::as_needed);
KA_TIME_VARNEL_API ka_read_result<ka_time> ka_read_iso_time(std::string_view text,
                                                            ka_extent extent = ka_extent::all) noexcept;

/// P3DT7H30M. Each number of a negative period has its sign: PT-0.5S. Zero is PT0S.
KA_TIME_VARNEL_API std::string ka_iso_duration(const ka_time_period& period);
KA_TIME_VARNEL_API std::to_chars_result ka_write_iso_duration(char* first, char* last,
                                                              const ka_time_period& period);
/// Weeks to seconds, in this order, the last one with a fraction or not, and a
/// sign in front of all or of each. Years and months are refused: no period has
/// them. So is what 64 bits of seconds do not hold: `invalid_time_period`.
KA_TIME_VARNEL_API ka_read_result<ka_time_period>
ka_read_iso_duration(std::string_view text, ka_extent extent = ka_extent::all) noexcept;

/// A duration as people write it, such as "2h05m", "1d 3h", "90 min" or what
/// `ka_period_text` writes; or as above. Units are w, d, h, m, s, ms, us and
/// their words in English, in this order; the last number can have a fraction,
/// and a minus sign in front holds for all.
///
///     ka_read_duration("2h05m").value();                // 125 minutes
///     ka_read_duration("1 day, 3 hours")->to_hours();   // 27
KA_TIME_VARNEL_API ka_read_result<ka_time_period>
ka_read_duration(std::string_view text, ka_extent extent = ka_extent::all) noexcept;

// Seconds since 1 January 1970, 00:00 universal time: 1720117718.000123, -0.5.

/// Any moment at all. As needed, the fraction ends with its last digit that is not 0.
KA_TIME_VARNEL_API std::string ka_unix_seconds(const ka_time_and_date& moment,
                                               ka_fraction fraction = ka_fraction::as_needed);
KA_TIME_VARNEL_API std::to_chars_result ka_write_unix_seconds(char* first, char* last,
                                                              const ka_time_and_date& moment,
                                                              ka_fraction fraction = ka_fraction::as_needed);
/// In the zone `utc`. What no moment holds is `invalid_time`.
KA_TIME_VARNEL_API ka_read_result<ka_time_and_date>
ka_read_unix_seconds(std::string_view text, ka_extent extent = ka_extent::all) noexcept;
