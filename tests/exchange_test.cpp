#include <climits>
#include <string>
#include <string_view>
#include <system_error>

#include <gtest/gtest.h>

#include <time/exchange.h>
#include <time/months.h>

#include "expect_error.h"
#include "printers.h"

// The examples of the standards and what they refuse. What is written and read
// back at random is with the fuzzer.

namespace {

ka_time_and_date universal(const ka_time& time, const ka_date& date)
{
    ka_time_and_date moment;
    moment.utc_time_and_date(time, date);
    moment.time_zone(ka_time_zone::utc());
    return moment;
}

/// A zone so many minutes ahead.
struct fixed_zone {
    explicit fixed_zone(int minutes) : zone(ka_time_period(-60 * minutes), "OWN") {}
    ka_time_zone zone;
};

struct refusal {
    const char* text;
    const char* message;
};

/// Each text is refused in these words.
template <std::size_t Count, typename Read>
void expect_refusals(const refusal (&rows)[Count], Read read)
{
    for (const refusal& row : rows) {
        SCOPED_TRACE(row.text);
        const auto result = read(std::string_view(row.text));
        ASSERT_FALSE(result.has_value());
        const std::string shown = std::string(row.message) + ", in " + row.text;
        EXPECT_STREQ(result.failure().message(), shown.c_str());
    }
}

/// A writer fills the room that it needs, and refuses one that is a character shorter.
template <typename Write>
void expect_room(const std::string& text, Write write)
{
    char room[100];
    const std::to_chars_result exact = write(room, room + text.size());
    EXPECT_EQ(exact.ec, std::errc());
    EXPECT_EQ(std::string(room, exact.ptr), text);
    char* const last = room + text.size() - 1;
    const std::to_chars_result short_of_one = write(room, last);
    EXPECT_EQ(short_of_one.ec, std::errc::value_too_large);
    EXPECT_EQ(short_of_one.ptr, last);
    EXPECT_EQ(write(room, room + sizeof room).ptr, room + text.size());
}

}

TEST(exchange, rfc3339_as_it_is_read)
{
    const struct {
        const char* text;
        ka_time time; // universal
        ka_date date;
        int offset; // minutes
        bool is_known, is_leap_second;
    } rows[] = {
        // The examples of RFC 3339, 5.8.
        {"1985-04-12T23:20:50.52Z", ka_time(23, 20, 50, 520000), {4, 12, 1985}, 0, true, false},
        {"1996-12-19T16:39:57-08:00", ka_time(0, 39, 57), {12, 20, 1996}, -480, true, false},
        {"1990-12-31T23:59:60Z", ka_time(23, 59, 59), {12, 31, 1990}, 0, true, true},
        {"1990-12-31T15:59:60-08:00", ka_time(23, 59, 59), {12, 31, 1990}, -480, true, true},
        {"1937-01-01T12:00:27.87+00:20", ka_time(11, 40, 27, 870000), {1, 1, 1937}, 20, true, false},
        {"2024-07-04 18:00:00-00:00", ka_time(18, 0, 0), {7, 4, 2024}, 0, false, false},
        {"2024-07-04t18:00:00.123456789z", ka_time(18, 0, 0, 123456), {7, 4, 2024}, 0, true, false},
        {"0000-03-01T00:00:00+23:59", ka_time(0, 1, 0), {2, 29, -1}, 1439, true, false},
        {"-004712-01-01T00:00:00Z", ka_time(), ka_date(38), 0, true, false},
        {"+032766-12-31T23:59:59.999999Z", ka_time(23, 59, 59, 999999), ka_date(13688960), 0, true, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const auto read = ka_read_rfc3339(row.text);
        ASSERT_TRUE(read.has_value());
        EXPECT_EQ(read->moment, universal(row.time, row.date));
        EXPECT_EQ(&read->moment.time_zone(), &ka_time_zone::utc());
        EXPECT_EQ(read->offset, ka_time_period(row.offset * 60));
        EXPECT_EQ(read->is_offset_known, row.is_known);
        EXPECT_EQ(read.is_leap_second(), row.is_leap_second);
        EXPECT_EQ(read.end(), std::string_view(row.text).size());
    }
}

TEST(exchange, rfc3339_as_it_is_refused)
{
    const refusal rows[] = {
        {"", "invalid_year: end of text at 0, year"},
        {"2024", "failure: end of text at 4, '-'"},
        {"-000000-07-04T18:00:00Z", "invalid_year: -000000 at 0, year"},
        {"+032767-07-04T18:00:00Z", "invalid_year: +032767 at 0, year"},
        {"2024-13-04T18:00:00Z", "invalid_month: 13 at 5, month"},
        {"2024-7-04T18:00:00Z", "invalid_month: 7- at 5, month"},
        {"2023-02-29T18:00:00Z", "invalid_day: 29 at 8, day"},
        {"2024-07-04", "failure: end of text at 10, 'T'"},
        {"2024-07-04T24:00:00Z", "invalid_time: 24 at 11, hour"},
        {"2024-07-04T18:00:61Z", "invalid_time: 61 at 17, second"},
        {"2024-07-04T18:00Z", "failure: Z at 16, ':'"},
        {"2024-07-04T18:00:00.Z", "invalid_time: Z at 20, fraction"},
        {"2024-07-04T18:00:00", "failure: end of text at 19, offset"},
        {"2024-07-04T18:00:00+24:00", "failure: 24 at 20, offset"},
        {"2024-07-04T18:00:00Z ", "failure:   at 20, end"},
    };
    expect_refusals(rows, [](std::string_view text) { return ka_read_rfc3339(text); });
    const std::string with_nul("2024-07-04T18:00:00Z\0", 21);
    EXPECT_EQ(ka_read_rfc3339(with_nul).failure().position(), 20u);
    EXPECT_EQ(ka_read_rfc3339(std::string(100000, '9')).failure().position(), 4u);
    EXPECT_TRUE(ka_read_rfc3339("2024-07-04T18:00:00." + std::string(100000, '9') + "Z").has_value());
}

TEST(exchange, rfc3339_in_a_zone)
{
    const ka_time_zone& pacific = ka_time_zone::pacific();
    const auto told = ka_read_rfc3339("2024-07-04T18:28:38Z", pacific);
    EXPECT_EQ(told->time(), ka_time(11, 28, 38));
    EXPECT_EQ(&told->time_zone(), &pacific);
    EXPECT_EQ(ka_read_rfc3339("2024-07-04T18:28:38", pacific)->utc_time(), ka_time(1, 28, 38));
    EXPECT_EQ(ka_read_rfc3339("2024-07-04 18:28:38.5", ka_time_zone::indiana())->utc_time(),
              ka_time(23, 28, 38, 500000));
    const char* const skipped = "2024-03-10T02:30:00";
    EXPECT_EQ(ka_read_rfc3339(skipped, pacific)->time(), ka_time(3, 30, 0));
    EXPECT_EQ(ka_read_rfc3339(skipped, pacific, ka_local_choice::earlier)->time(), ka_time(1, 30, 0));
    EXPECT_THROW((void)ka_read_rfc3339(skipped, pacific, ka_local_choice::refuse), ka_time_varnel_error);
    EXPECT_STREQ(ka_read_rfc3339("2024-02-30 18:28:38", pacific).failure().message(),
                 "invalid_day: 30 at 8, day, in 2024-02-30 18:28:38");
}

TEST(exchange, rfc3339_as_it_is_written)
{
    const ka_time_and_date call(ka_time(18, 0, 0), ka_date(7, 4, 2024), ka_time_zone::newfoundland());
    expect_room("2024-07-04T18:00:00-02:30",
                [&](char* first, char* last) { return ka_write_rfc3339(first, last, call); });
    const struct {
        unsigned int microsecond;
        ka_fraction fraction;
        const char* text;
    } rows[] = {
        {0, ka_fraction::as_needed, ""},
        {120000, ka_fraction::as_needed, ".120"},
        {1, ka_fraction::as_needed, ".000001"},
        {999999, ka_fraction::none, ""},
        {999999, ka_fraction::milliseconds, ".999"},
        {0, ka_fraction::milliseconds, ".000"},
        {0, ka_fraction::microseconds, ".000000"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ka_rfc3339(universal(ka_time(1, 2, 3, row.microsecond), {7, 4, 2024}), row.fraction),
                  "2024-07-04T01:02:03" + std::string(row.text) + "Z");

    ka_time_and_date moment = universal(ka_time(), {7, 4, 2024});
    const auto shown_in = [&](const ka_time_zone& zone) {
        moment.time_zone(zone);
        return ka_rfc3339(moment);
    };
    EXPECT_EQ(shown_in(ka_time_zone::greenwich()), "2024-07-04T01:00:00+01:00");
    EXPECT_EQ(shown_in(ka_time_zone(ka_time_period(), "UTC")), "2024-07-04T00:00:00+00:00");
    // An offset that no text holds: less of it, and never another instant.
    EXPECT_EQ(shown_in(ka_time_zone(ka_time_period(44 * 60 + 30), "MMT")), "2024-07-03T23:16:00-00:44");
    EXPECT_EQ(shown_in(ka_time_zone(ka_time_period(-86400), "FAR")), "2024-07-04T00:00:00Z");
    moment.utc_time_and_date(ka_time_period(38 * 86400ll - 1));
    expect_error("invalid_day", "37", "time/src/date", [&] { (void)shown_in(ka_time_zone::utc()); });
    moment.utc_time_and_date(ka_time_period(LLONG_MAX));
    EXPECT_THROW((void)shown_in(ka_time_zone::pacific()), ka_time_varnel_error);
}

TEST(exchange, rfc9557)
{
    const struct {
        const char* text;
        ka_time time; // universal
        const char* written;
    } rows[] = {
        {"2024-07-04T18:00:00+02:00[Europe/Berlin]", {16, 0, 0}, nullptr},
        {"2024-07-04T18:00:00[Europe/Berlin]", {16, 0, 0}, "2024-07-04T18:00:00+02:00[Europe/Berlin]"},
        {"2024-07-04T16:00:00.5Z[Europe/Berlin]",
         {16, 0, 0, 500000},
         "2024-07-04T18:00:00.500+02:00[Europe/Berlin]"},
        {"2024-07-04T16:00:00-00:00[!Europe/Berlin][u-ca=hebrew][x=y]",
         {16, 0, 0},
         "2024-07-04T18:00:00+02:00[Europe/Berlin]"},
        {"2024-07-04T16:00:00Z[UTC][!u-ca=gregory]", {16, 0, 0}, "2024-07-04T16:00:00Z[UTC]"},
        {"2024-07-04T16:00:00-02:30[-02:30]", {18, 30, 0}, nullptr},
        {"2024-07-04T18:00:00+05:45[+05:45]", {12, 15, 0}, nullptr},
        // The zone has an offset of seconds there, of which the text has the minutes.
        {"1960-01-01T00:44:00-00:44[Africa/Monrovia]", {1, 28, 0}, nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const auto read = ka_read_rfc9557(row.text);
        ASSERT_TRUE(read.has_value()) << read.failure().message();
        EXPECT_EQ(read->utc_time(), row.time);
        EXPECT_EQ(ka_rfc9557(*read), row.written != nullptr ? row.written : row.text);
        expect_room(ka_rfc9557(*read),
                    [&](char* first, char* last) { return ka_write_rfc9557(first, last, *read); });
    }
    const ka_time_and_date summer(ka_time(), ka_date(7, 4, 2024), ka_time_zone::pacific());
    EXPECT_EQ(ka_rfc9557(summer), "2024-07-04T00:00:00-07:00[-07:00]");
    const refusal refused[] = {
        {"2024-07-04T18:00:00+01:00[Europe/Berlin]", "failure: +01:00 at 19, offset of the zone"},
        {"2024-07-04T18:00:00+02:00", "failure: end of text at 25, '['"},
        {"2024-07-04T18:00:00+02:00[Europe/Bonn]", "failure: Europe/Bonn at 26, zone"},
        {"2024-07-04T18:00:00+02:00[../../etc/passwd]", "failure: ../../etc/passwd at 26, zone"},
        {"2024-07-04T18:00:00+02:00[]", "failure: ] at 26, zone"},
        {"2024-07-04T18:00:00+02:00[Europe/Berlin", "failure: end of text at 39, ']'"},
        {"2024-07-04T18:00:00+02:00[Europe/Berlin][!u-ca=hebrew]", "failure: u-ca=hebrew at 42, tag"},
        {"2024-07-04T18:00:00+02:00[Europe/Berlin][Europe/Paris]", "failure: Europe/Paris at 41, tag"},
        {"2024-07-04T18:00:00+02:00[+24:00]", "failure: 24 at 27, offset"},
    };
    expect_refusals(refused, [](std::string_view text) { return ka_read_rfc9557(text); });
}

TEST(exchange, rfc5322)
{
    const struct {
        const char* text;
        ka_time time; // universal
        ka_date date;
        int offset; // minutes
        bool is_known;
    } rows[] = {
        // The examples of RFC 5322, appendix A.
        {"Fri, 21 Nov 1997 09:55:06 -0600", {15, 55, 6}, {11, 21, 1997}, -360, true},
        {"Tue, 1 Jul 2003 10:52:37 +0200", {8, 52, 37}, {7, 1, 2003}, 120, true},
        {"Thu, 13 Feb 1969 23:32:54 -0330", {3, 2, 54}, {2, 14, 1969}, -210, true},
        {"Thu,\r\n      13\r\n        Feb\r\n          1969\r\n      23:32\r\n               -0330 "
         "(Newfoundland Time)",
         {3, 2, 0},
         {2, 14, 1969},
         -210,
         true},
        {"21 Nov 97 09:55:06 GMT", {9, 55, 6}, {11, 21, 1997}, 0, true},
        {" 1 jul 03 10:52 edt", {14, 52, 0}, {7, 1, 2003}, -240, true},
        {"Fri, 21 Nov 097 (a (nested \\) one)) 09:55:06 -0600", {15, 55, 6}, {11, 21, 1997}, -360, true},
        {"4 Jul 2024 18:00:00 A", {18, 0, 0}, {7, 4, 2024}, 0, false},
        {"4 Jul 2024 18:00:00 -0000", {18, 0, 0}, {7, 4, 2024}, 0, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const auto read = ka_read_rfc5322(row.text);
        ASSERT_TRUE(read.has_value()) << read.failure().message();
        EXPECT_EQ(read->moment, universal(row.time, row.date));
        EXPECT_EQ(read->offset, ka_time_period(row.offset * 60));
        EXPECT_EQ(read->is_offset_known, row.is_known);
    }
    const refusal refused[] = {
        {"Wed, 21 Nov 1997 09:55:06 -0600", "invalid_weekday: Wed at 0, weekday"},
        {"Fri 21 Nov 1997 09:55:06 -0600", "failure: 2 at 4, ','"},
        {"31 Nov 1997 09:55:06 -0600", "invalid_day: 31 at 0, day"},
        {"21 Okt 1997 09:55:06 -0600", "invalid_month: Okt at 3, month"},
        {"21 Nov 1899 09:55:06 -0600", "invalid_year: 1899 at 7, year"},
        {"21 Nov 1997 9:55:06 -0600", "invalid_time: 9: at 12, hour"},
        {"21 Nov 1997 09:55:06", "failure: end of text at 20, ' '"},
        {"21 Nov 1997 09:55:06 CEST", "failure: CEST at 21, zone"},
        {"21 Nov 1997 (no end", "failure: (no end at 12, comment"},
    };
    expect_refusals(refused, [](std::string_view text) { return ka_read_rfc5322(text); });

    const ka_time_and_date call(ka_time(18, 0, 0), ka_date(7, 4, 2024), ka_time_zone::newfoundland());
    expect_room("Thu, 4 Jul 2024 18:00:00 -0230",
                [&](char* first, char* last) { return ka_write_rfc5322(first, last, call); });
    EXPECT_EQ(ka_rfc5322(universal(ka_time(1, 2, 3), ka_date(13688960))), "Sat, 31 Dec 32766 01:02:03 +0000");
    expect_error("invalid_year", "1899", "time/src/text/exchange_rfc5322", [] {
        (void)ka_rfc5322(universal(ka_time(), {12, 31, 1899}));
    });
}

TEST(exchange, http_dates)
{
    const ka_time_and_date expected = universal(ka_time(8, 49, 37), {11, 6, 1994});
    // The examples of RFC 9110, 5.6.7.
    for (const char* const text :
         {"Sun, 06 Nov 1994 08:49:37 GMT", "Sunday, 06-Nov-94 08:49:37 GMT", "Sun Nov  6 08:49:37 1994"}) {
        SCOPED_TRACE(text);
        const auto read = ka_read_http_date(text);
        ASSERT_TRUE(read.has_value()) << read.failure().message();
        EXPECT_EQ(*read, expected);
        EXPECT_EQ(&read->time_zone(), &ka_time_zone::utc());
    }
    const refusal refused[] = {
        {"", "invalid_weekday: end of text at 0, weekday"},
        {"sun, 06 Nov 1994 08:49:37 GMT", "invalid_weekday: sun at 0, weekday"},
        {"Mon, 06 Nov 1994 08:49:37 GMT", "invalid_weekday: Mon at 0, weekday"},
        {"Sun, 6 Nov 1994 08:49:37 GMT", "invalid_day: 6  at 5, day"},
        {"Sun, 06 nov 1994 08:49:37 GMT", "invalid_month: nov at 8, month"},
        {"Sun, 06 Nov 0000 08:49:37 GMT", "invalid_year: 0000 at 12, year"},
        {"Sun, 06 Nov 1994 08:49:37 UTC", "failure: UTC at 26, GMT"},
        {"Sun, 06 Nov 1994 08:49:37", "failure: end of text at 25, ' '"},
        {"Sun, 06-Nov-94 08:49:37 GMT", "failure: - at 7, ' '"},
    };
    expect_refusals(refused, [](std::string_view text) { return ka_read_http_date(text); });
    expect_room("Sun, 06 Nov 1994 08:49:37 GMT", [&](char* first, char* last) {
        ka_time_and_date moment = expected;
        moment.time_zone(ka_time_zone::pacific());
        return ka_write_http_date(first, last, moment);
    });
    for (const int day : {ka_date(12, 31, -1).julian_day(), ka_date(1, 1, 10000).julian_day()})
        EXPECT_THROW((void)ka_http_date(universal(ka_time(), day)), ka_time_varnel_error);
}

TEST(exchange, years_of_two_digits_follow_the_machine)
{
    // At most 50 years ahead of today, whatever today is.
    const int this_year = ka_date::today().year();
    for (const int ahead : {-49, 0, 50, 51}) {
        const int year = this_year + (ahead > 50 ? ahead - 100 : ahead);
        const ka_date date(7, 4, static_cast<short>(year));
        const std::string_view names[] = {"Sun", "Mon", "Tues", "Wednes", "Thurs", "Fri", "Satur"};
        const std::string digits = std::to_string(this_year + ahead).substr(2);
        const auto read = ka_read_http_date(std::string(names[date.weekday() - 1]) + "day, 04-Jul-" + digits +
                                            " 08:49:37 GMT");
        ASSERT_TRUE(read.has_value()) << read.failure().message();
        EXPECT_EQ(read->utc_date(), date);
    }
}

TEST(exchange, iso_dates_and_times)
{
    expect_room("2024-07-04", [](char* first, char* last) {
        return ka_write_iso_date(first, last, {7, 4, 2024});
    });
    expect_room("2025-W01-1", [](char* first, char* last) {
        return ka_write_iso_week_date(first, last, {12, 30, 2024});
    });
    expect_room("2024-186", [](char* first, char* last) {
        return ka_write_iso_ordinal_date(first, last, {7, 4, 2024});
    });
    expect_room("18:28:38.123", [](char* first, char* last) {
        return ka_write_iso_time(first, last, ka_time(18, 28, 38, 123000));
    });
    EXPECT_EQ(ka_read_iso_time("18:28").value(), ka_time(18, 28, 0));
    EXPECT_TRUE(ka_read_iso_time("23:59:60").is_leap_second());
    EXPECT_EQ(ka_iso_date({3, 15, -44}), "-000043-03-15");
    ka_date beyond(13688960);
    ++beyond;
    expect_error("invalid_day", "13688961", "time/src/date", [&] { (void)ka_iso_date(beyond); });

    const refusal dates[] = {
        {"2024-02-30", "invalid_day: 30 at 8, day"},
        {"2024-1-2", "invalid_month: 1- at 5, month"},
        {"20240704", "failure: 0 at 4, '-'"},
        {"2024-07-04T", "failure: T at 10, end"},
    };
    expect_refusals(dates, [](std::string_view text) { return ka_read_iso_date(text); });
    const refusal weeks[] = {
        {"2024-W53-1", "invalid_week: 53 at 6, week"},
        {"2024-W01-0", "invalid_weekday: 0 at 9, weekday"},
        {"2024-W01", "failure: end of text at 8, '-'"},
        {"-004712-W01-3", "invalid_day: -004712-W01-3 at 0, date"},
        {"+032766-W52-7", "invalid_day: +032766-W52-7 at 0, date"},
    };
    expect_refusals(weeks, [](std::string_view text) { return ka_read_iso_week_date(text); });
    const refusal ordinals[] = {
        {"2023-366", "invalid_day: 366 at 5, day"},
        {"2024-367", "invalid_day: 367 at 5, day"},
    };
    expect_refusals(ordinals, [](std::string_view text) { return ka_read_iso_ordinal_date(text); });
    const refusal times[] = {
        {"24:00", "invalid_time: 24 at 0, hour"},
        {"18", "failure: end of text at 2, ':'"},
    };
    expect_refusals(times, [](std::string_view text) { return ka_read_iso_time(text); });
}

TEST(exchange, durations)
{
    const struct {
        const char* text;
        ka_time_period period;
        const char* written; // where it differs
    } rows[] = {
        {"P3DT7H30M", ka_time_period(3, 7, 30, 0), nullptr},
        {"PT-0.5S", ka_time_period(0, -500000), nullptr},
        {"PT0S", ka_time_period(), nullptr},
        {"P-1DT-1H-1M-1.000001S", ka_time_period(-1, -1, -1, -1, -1), nullptr},
        {"-PT0.5S", ka_time_period(0, -500000), "PT-0.5S"},
        {"P1W", ka_time_period(7, 0, 0, 0), "P7D"},
        {"P1DT-1H", ka_time_period(82800), "PT23H"},
        {"PT1,5H", ka_time_period(5400), "PT1H30M"},
        {"P0.0000116D", ka_time_period(1, 2240), "PT1.00224S"},
        {"PT0.0000009S", ka_time_period(), "PT0S"},
        {"P106751991167300DT15H30M7.999999S", ka_time_period(LLONG_MAX, 999999), nullptr},
        {"P-106751991167300DT-15H-30M-8.999999S", ka_time_period(LLONG_MIN, -999999), nullptr},
        {"PT9223372036854775807S", ka_time_period(LLONG_MAX), "P106751991167300DT15H30M7S"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(ka_read_iso_duration(row.text).value(), row.period);
        EXPECT_EQ(ka_read_duration(row.text).value(), row.period);
        EXPECT_EQ(ka_iso_duration(row.period), row.written != nullptr ? row.written : row.text);
    }
    const refusal refused[] = {
        {"", "failure: end of text at 0, 'P'"},
        {"P", "invalid_time_period: end of text at 1, number"},
        {"PT", "invalid_time_period: end of text at 2, number"},
        {"P1Y", "invalid_time_period: Y at 2, no period has years or months"},
        {"P1M", "invalid_time_period: M at 2, no period has years or months"},
        {"PT1D", "invalid_time_period: D at 3, unit"},
        {"P1H", "invalid_time_period: H at 2, unit"},
        {"PT1H1H", "invalid_time_period: H at 5, unit"},
        {"PT1.5H1M", "failure: 1M at 6, end"},
        {"PT1", "invalid_time_period: end of text at 3, unit"},
        {"PT9223372036854775808S", "invalid_time_period: 9223372036854775808S at 2, number"},
        {"P99999999999999999999D", "invalid_time_period: 99999999999999999999 at 1, number"},
        {"P106751991167300DT15H30M8S", "invalid_time_period: 8S at 24, number"},
    };
    expect_refusals(refused, [](std::string_view text) { return ka_read_iso_duration(text); });
    expect_room("P3DT7H30M", [](char* first, char* last) {
        return ka_write_iso_duration(first, last, ka_time_period(3, 7, 30, 0));
    });
}

TEST(exchange, durations_of_people)
{
    const struct {
        const char* text;
        ka_time_period period;
    } rows[] = {
        {"2h05m", ka_time_period(0, 2, 5, 0)},
        {"1d 3h", ka_time_period(1, 3, 0, 0)},
        {"2 h 05 min", ka_time_period(0, 2, 5, 0)},
        {"1 day, 3 hours", ka_time_period(1, 3, 0, 0)},
        {"-1 min 01 s 000 ms 001 us", ka_time_period(-61, -1)},
        {"1w2d", ka_time_period(9, 0, 0, 0)},
        {"250ms", ka_time_period(0, 250000)},
        {"9223372036854775807 s 999999 us", ka_time_period(LLONG_MAX, 999999)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const auto read = ka_read_duration(row.text);
        ASSERT_TRUE(read.has_value()) << read.failure().message();
        EXPECT_EQ(*read, row.period);
    }
    const refusal refused[] = {
        {"", "invalid_time_period: end of text at 0, number"},
        {"2h 5h", "invalid_time_period: h at 4, unit"},
        {"1.5h 3m", "failure:  3m at 4, end"},
        {"3 months", "invalid_time_period: months at 2, no period has years or months"},
        {"2 fortnights", "invalid_time_period: fortnights at 2, unit"},
        {"2h ", "invalid_time_period: end of text at 3, number"},
        {"20000000000000000000 us", "invalid_time_period: 20000000000000000000 at 0, number"},
    };
    expect_refusals(refused, [](std::string_view text) { return ka_read_duration(text); });
}

TEST(exchange, seconds_since_1970)
{
    const ka_time_period epoch(2440588 * 86400ll);
    const auto moment_of = [](const ka_time_period& instant) {
        ka_time_and_date moment;
        moment.utc_time_and_date(instant);
        return moment;
    };
    const struct {
        ka_time_period instant;
        const char* text;
    } rows[] = {
        {epoch, "0"},
        {epoch + ka_time_period(1720117718, 123000), "1720117718.123"},
        {epoch + ka_time_period(0, 100000), "0.1"},
        {epoch - ka_time_period(0, 500000), "-0.5"},
        {epoch - ka_time_period(1, 999999), "-1.999999"},
        {ka_time_period(), "-210866803200"},
        {ka_time_period(0, -1), "-210866803200.000001"},
        {ka_time_period(0, 1), "-210866803199.999999"},
        {ka_time_period(LLONG_MAX, 999999), "9223371825987972607.999999"},
        {ka_time_period(LLONG_MIN, -999999), "-9223372247721579008.999999"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(ka_unix_seconds(moment_of(row.instant)), row.text);
        const auto read = ka_read_unix_seconds(row.text);
        ASSERT_TRUE(read.has_value());
        EXPECT_EQ(read->utc_time_and_date(), row.instant);
    }
    const ka_time_and_date before = moment_of(epoch - ka_time_period(0, 999));
    EXPECT_EQ(ka_unix_seconds(before, ka_fraction::none), "0");
    EXPECT_EQ(ka_unix_seconds(before, ka_fraction::milliseconds), "0.000");
    EXPECT_EQ(ka_unix_seconds(before, ka_fraction::microseconds), "-0.000999");
    expect_room("-0.000999",
                [&](char* first, char* last) { return ka_write_unix_seconds(first, last, before); });
    const refusal refused[] = {
        {"", "invalid_time: end of text at 0, seconds"},
        {"-", "invalid_time: end of text at 1, seconds"},
        {"+1", "invalid_time: + at 0, seconds"},
        {"1e9", "failure: e9 at 1, end"},
        {"9223371825987972608", "invalid_time: 9223371825987972608 at 0, seconds"},
        {"-9223372247721579009", "invalid_time: -9223372247721579009 at 0, seconds"},
    };
    expect_refusals(refused, [](std::string_view text) { return ka_read_unix_seconds(text); });
}

namespace {

/// What is read of the start of a text is what the reader makes of that part alone.
template <typename Read>
void expect_start(std::string_view text, std::size_t end, Read read)
{
    SCOPED_TRACE(text);
    const auto start = read(text, ka_extent::start);
    ASSERT_TRUE(start.has_value()) << start.failure().message();
    EXPECT_EQ(start.end(), end);
    EXPECT_TRUE(read(text.substr(0, end), ka_extent::all).has_value());
    EXPECT_FALSE(read(text, ka_extent::all).has_value());
}

}

TEST(exchange, the_start_of_a_text_alone)
{
    using extent = ka_extent;
    const auto rfc3339 = [](std::string_view text, extent most) { return ka_read_rfc3339(text, most); };
    expect_start("2024-07-04T18:00:00Z door opened", 20, rfc3339);
    expect_start("2024-07-04 18:00:00.1234567zulu", 28, rfc3339);
    const auto rfc9557 = [](std::string_view text, extent most) {
        return ka_read_rfc9557(text, ka_local_choice::compatible, most);
    };
    expect_start("2024-07-04T18:00:00[Europe/Berlin][u-ca=gregory] [x]", 48, rfc9557);
    const auto rfc5322 = [](std::string_view text, extent most) { return ka_read_rfc5322(text, most); };
    expect_start("Tue, 1 Jul 2003 10:52:37 +0200 (CEST), again", 30, rfc5322);
    const auto http = [](std::string_view text, extent most) { return ka_read_http_date(text, most); };
    expect_start("Sun, 06 Nov 1994 08:49:37 GMT; path=/", 29, http);
    const auto people = [](std::string_view text, extent most) { return ka_read_duration(text, most); };
    expect_start("2h05m, then home", 5, people);
    expect_start("1 day, 3 hours  later", 14, people);

    // What has begun has to be whole.
    EXPECT_STREQ(ka_read_iso_time("18:28: open", extent::start).failure().message(),
                 "invalid_time:  o at 6, second, in 18:28: open");
    EXPECT_FALSE(ka_read_rfc3339("2024-07-04T18:00:00.Z", extent::start).has_value());
    EXPECT_FALSE(ka_read_duration("2h 5 people", extent::start).has_value());
    EXPECT_EQ(ka_read_unix_seconds("99999999999999999999.5 x", extent::start).failure().length(), 22u);
}
