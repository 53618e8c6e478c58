#include <cstddef>
#include <cstring>
#include <exception>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

#include "printers.h"

namespace {

// The classes as records of what they hold, which every machine lays out in its own way.

struct period_fields {
    long long seconds;
    int microseconds;
};
struct moment_fields {
    period_fields instant;
    const ka_time_zone* zone;
};
struct watch_fields {
    moment_fields start;
    period_fields elapsed;
    bool running;
};
struct point_fields {
    period_fields when;
    unsigned short month, day, weekday;
    ka_which_one week;
};
struct rule_fields {
    const void* operations;
    const ka_calendar_date *start_point, *end_point;
    short start_year, end_year;
    period_fields adjustment;
};
struct zone_fields {
    std::string name, dst_name;
    period_fields offset;
    void** rules;
    int count, kind;
};
struct message_fields {
    const void* operations;
    char message[512];
};
struct error_fields {
    message_fields message;
    int code;
};

template <typename Value, typename Fields>
constexpr bool has_layout = (sizeof(Value) == sizeof(Fields) && alignof(Value) == alignof(Fields));
template <typename Value, typename Fields>
constexpr bool plain =
    has_layout<Value, Fields>&& std::is_trivially_copyable<Value>() && std::is_standard_layout<Value>() &&
    !std::is_polymorphic<Value>();
static_assert(plain<ka_date, int> && plain<ka_wint, unsigned short[5]> &&
              plain<ka_time_period, period_fields>);
static_assert(plain<ka_time, period_fields> && plain<ka_time_and_date, moment_fields>);
static_assert(plain<ka_calendar_date, point_fields> && plain<ka_stopwatch, watch_fields>);
static_assert(plain<ka_which_one, int> && plain<ka_base, int>);
static_assert(sizeof(int) == 4 && sizeof(unsigned short) == 2 && sizeof(long long) == 8);

using error = ka_time_varnel_error;
static_assert(has_layout<ka_varnel_error, message_fields> && has_layout<error, error_fields>);
static_assert(has_layout<ka_time_zone_rule, rule_fields> &&
              has_layout<ka_simple_time_zone_rule, rule_fields>);
static_assert(has_layout<ka_time_zone, zone_fields> && !std::is_polymorphic<ka_time_zone>());
static_assert(sizeof(void*) != 8 ||
              (sizeof(ka_time_and_date) == 24 && sizeof(ka_calendar_date) == 32 &&
               sizeof(ka_stopwatch) == 48 && sizeof(error) == 528 && sizeof(ka_time_zone_rule) == 48));
static_assert(!std::is_base_of_v<std::exception, error> && std::has_virtual_destructor_v<ka_varnel_error>);
static_assert(std::is_nothrow_copy_constructible_v<error> && std::is_nothrow_copy_assignable_v<error>);
static_assert(std::is_nothrow_move_constructible_v<error> && std::is_nothrow_move_assignable_v<error>);

template <typename Value, typename... Numbers>
constexpr bool takes = (std::is_constructible<Value, Numbers>() && ...) &&
                       (std::is_assignable<Value&, Numbers>() && ...);
template <typename... Values>
constexpr bool take_integers = (takes<Values, short, unsigned short, int, unsigned int, long, unsigned long,
                                      long long, unsigned long long> &&
                                ...);
static_assert(take_integers<ka_date, ka_time, ka_wint, ka_time_period, ka_time_and_date>);

template <typename Result, typename... Found>
constexpr bool all_give = (std::is_same_v<Result, Found> && ...);
static_assert(all_give<unsigned short, decltype(ka_date().month()), decltype(ka_date().day_of_year()),
                       decltype(ka_date().weekday()), decltype(ka_time().hours())>);
static_assert(all_give<int, decltype(ka_date().julian_day()), decltype(ka_time_period().to_seconds())>);

template <typename Field, typename Value>
Field field(const Value& value, std::size_t offset)
{
    Field result;
    std::memcpy(&result, reinterpret_cast<const char*>(&value) + offset, sizeof result);
    return result;
}

}

TEST(layout, fields_stand_in_their_order)
{
    const ka_wint number = -ka_wint(0x0004000300020001ll);
    EXPECT_TRUE(field<bool>(number, 0));
    for (unsigned short digit = 0; digit < 4; ++digit)
        EXPECT_EQ(field<unsigned short>(number, 2u + 2u * digit), digit + 1);

    const ka_time_period length(7, 8);
    EXPECT_EQ(field<long long>(length, offsetof(period_fields, seconds)), 7);
    EXPECT_EQ(field<int>(length, offsetof(period_fields, microseconds)), 8);

    const ka_calendar_date recurring(length, 3, ka_last, 6);
    EXPECT_EQ(field<ka_time_period>(recurring, offsetof(point_fields, when)), length);
    EXPECT_EQ(field<unsigned short>(recurring, offsetof(point_fields, month)), 3);
    EXPECT_EQ(field<unsigned short>(recurring, offsetof(point_fields, day)), 0);
    EXPECT_EQ(field<unsigned short>(recurring, offsetof(point_fields, weekday)), 6);
    EXPECT_EQ(field<ka_which_one>(recurring, offsetof(point_fields, week)), ka_last);

    const ka_time_and_date moment;
    EXPECT_EQ(field<ka_time_period>(moment, offsetof(moment_fields, instant)), moment.utc_time_and_date());
    EXPECT_EQ(field<const ka_time_zone*>(moment, offsetof(moment_fields, zone)), &moment.time_zone());

    ka_stopwatch watch;
    watch.start(), watch.stop(), watch.start();
    EXPECT_EQ(field<const ka_time_zone*>(watch, offsetof(watch_fields, start.zone)),
              &ka_time_and_date::default_time_zone());
    EXPECT_TRUE(field<bool>(watch, offsetof(watch_fields, running)));
    watch.stop();
    EXPECT_EQ(field<ka_time_period>(watch, offsetof(watch_fields, elapsed)), watch.lap());

    ka_simple_time_zone_rule rule(recurring, recurring, 1, 2, length);
    EXPECT_EQ(field<const ka_calendar_date*>(rule, offsetof(rule_fields, start_point)), &rule.start_point());
    EXPECT_EQ(field<const ka_calendar_date*>(rule, offsetof(rule_fields, end_point)), &rule.end_point());
    EXPECT_EQ(field<short>(rule, offsetof(rule_fields, start_year)), 1);
    EXPECT_EQ(field<short>(rule, offsetof(rule_fields, end_year)), 2);
    EXPECT_EQ(field<ka_time_period>(rule, offsetof(rule_fields, adjustment)), length);
    EXPECT_EQ(field<ka_time_period>(ka_time_zone(length), offsetof(zone_fields, offset)), length);

    const error thrown(4, "text");
    EXPECT_EQ(reinterpret_cast<const char*>(&thrown) + sizeof(void*), thrown.what());
    EXPECT_EQ(field<int>(thrown, offsetof(error_fields, code)), 4);
}

TEST(layout, versions_of_headers_and_library_agree)
{
    EXPECT_EQ(ka_time_varnel_version(), KA_TIME_VARNEL_VERSION);
    EXPECT_EQ(LIBRARY_VERSION, std::to_string(KA_TIME_VARNEL_VERSION_MAJOR) + "." +
                                   std::to_string(KA_TIME_VARNEL_VERSION_MINOR) + "." +
                                   std::to_string(KA_TIME_VARNEL_VERSION_PATCH));
}
