#include <string>

#include <gtest/gtest.h>

#include <time/exchange.h>
#include <time/io.h>

// Every day through the texts that name one, there and back.

namespace {

constexpr int first_day = 38, last_day = 13688960;

}

TEST(exchange_sweep, every_day_there_and_back)
{
    ka_time_and_date moment;
    moment.time_zone(ka_time_zone::pacific());
    char text[64];
    const auto text_of = [&](const std::to_chars_result& end) {
        return std::string_view(text, static_cast<std::size_t>(end.ptr - text));
    };
    for (int day = first_day + 1; day < last_day; day += SWEEP_STRIDE) {
        const ka_date date(day);
        moment.utc_time_and_date(ka_time_period(day * 86400ll + day % 86400, day % 1000000));
        ASSERT_EQ(ka_read_rfc3339(text_of(ka_write_rfc3339(text, text + 64, moment))).value().moment, moment)
            << date;
        ASSERT_EQ(ka_read_iso_date(text_of(ka_write_iso_date(text, text + 64, date))).value(), date);
        ASSERT_EQ(ka_read_iso_week_date(text_of(ka_write_iso_week_date(text, text + 64, date))).value(),
                  date);
        ASSERT_EQ(ka_read_iso_ordinal_date(text_of(ka_write_iso_ordinal_date(text, text + 64, date))).value(),
                  date);
    }
}
