#include <functional>
#include <tuple>

#include <gtest/gtest.h>

#include <time/calendar.h>

#include "expect_error.h"
#include "printers.h"

namespace {

constexpr const char* source = "time/src/calendar";
constexpr ka_time_period none, below_none(0, -1), two_hours(7200);

struct point : ka_calendar_date {
    using ka_calendar_date::ka_calendar_date;

    auto fields() const
    {
        return std::tuple(when(), month(), day(), weekday(), week(), is_formula(), is_absolute());
    }
};

TEST(calendar, refused_fields_in_the_order_of_the_arguments)
{
    const struct {
        const char *symbol, *shown;
        std::function<void(point&)> set;
    } refusals[] = {
        {"invalid_time_period", "-0.000001 seconds", [](point&) { point(below_none, 13, 0); }},
        {"invalid_month", "13", [](point&) { point(none, 13, 0); }},
        {"invalid_day", "0", [](point&) { point(none, 2, 0); }},
        {"invalid_day", "32", [](point&) { point(none, 2, 32); }},
        {"invalid_time_period", "-0.000001 seconds", [](point&) { point(below_none, 0, ka_first, 8); }},
        {"invalid_weekday", "8", [](point&) { point(none, 1, ka_first, 8); }},
        {"invalid_time_period", "-86400 seconds", [](point& p) { p.when(ka_time_period(-86400)); }},
        {"invalid_month", "65535", [](point& p) { p.month(65535); }},
        {"invalid_day", "32", [](point& p) { p.day(32); }},
        {"invalid_weekday", "0", [](point& p) { p.weekday(ka_first, 0); }},
    };
    for (const point& start : {point(two_hours, 3, ka_last, 1), point(two_hours, 1, 6)})
        for (const auto& [symbol, shown, set] : refusals) {
            SCOPED_TRACE(shown);
            point changed = start;
            expect_error(symbol, shown, source, [&, &change = set] { change(changed); });
            EXPECT_EQ(changed.fields(), start.fields());
        }
}

TEST(calendar, the_form_follows_the_last_setter)
{
    point changed(none, 3, ka_last, 7);
    EXPECT_EQ(changed.fields(), std::tuple(none, 3, 0, 7, ka_last, true, false));
    changed.day(5);
    EXPECT_EQ(changed.fields(), std::tuple(none, 3, 5, 7, ka_none, false, true));
    EXPECT_EQ(changed.date(2024), ka_date(3, 5, 2024));
    changed.weekday(ka_first, 1);
    changed.month(12);
    EXPECT_EQ(changed.fields(), std::tuple(none, 12, 0, 1, ka_first, true, false));
    EXPECT_EQ(changed.date(2024), ka_date(12, 1, 2024));
    changed.when(ka_time_period(49 * 3600, 1));
    EXPECT_EQ(changed.when(), ka_time_period(49 * 3600, 1));
    EXPECT_EQ(changed.time(), ka_time(1, 0, 0, 1));
}

TEST(calendar, a_year_that_lacks_the_day)
{
    point no_day(none, 3, 5);
    no_day.day(0);
    const struct {
        point missing;
        short year;
        const char *symbol, *shown;
    } refusals[] = {
        {{none, 2, 29}, 2023, "invalid_date", "Month( 2 ), day( 29 ), year( 2023 )"},
        {no_day, 2024, "invalid_date", "Month( 3 ), day( 0 ), year( 2024 )"},
        {{none, 3, ka_fifth, 1}, 2023, "invalid_week", "Invalid week for month!"},
        {{none, 12, ka_last, 1}, 32766, "invalid_day", "13688961"},
    };
    for (const auto& row : refusals)
        expect_error(row.symbol, row.shown, "time/src/date", [&] { (void)row.missing.date(row.year); });
    for (const short year : std::initializer_list<short>{-4714, 0, 32767})
        expect_error("invalid_year", std::to_string(year), source, [&] { (void)no_day.date(year); });
    EXPECT_EQ(point(none, 3, ka_fifth, 1).date(2024), ka_date(3, 31, 2024));
    EXPECT_EQ(point(two_hours, 12, 31).date(32766), ka_date::max_date());
}

}
