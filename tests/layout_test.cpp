#include <cstring>
#include <exception>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

#include "printers.h"

namespace {

template <typename Value, std::size_t size, std::size_t alignment>
constexpr bool has_layout = (sizeof(Value) == size && alignof(Value) == alignment);
template <typename Value, std::size_t size, std::size_t alignment>
constexpr bool plain = has_layout<Value, size, alignment>&& std::is_trivially_copyable<Value>() &&
                       std::is_standard_layout<Value>() && !std::is_polymorphic<Value>();
static_assert(plain<ka_date, 4, 4> && plain<ka_wint, 10, 2> && plain<ka_time_period, 16, 8>);
static_assert(plain<ka_time, 16, 8> && plain<ka_time_and_date, 24, 8> && plain<ka_calendar_date, 32, 8>);
static_assert(plain<ka_stopwatch, 48, 8> && plain<ka_which_one, 4, 4> && plain<ka_base, 4, 4>);

using error = ka_time_varnel_error;
static_assert(has_layout<ka_varnel_error, 520, 8> && has_layout<error, 528, 8>);
static_assert(has_layout<ka_time_zone_rule, 48, 8> && has_layout<ka_simple_time_zone_rule, 48, 8>);
static_assert(has_layout<ka_time_zone, 96, 8> && !std::is_polymorphic<ka_time_zone>());
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
    EXPECT_EQ(field<long long>(length, 0), 7);
    EXPECT_EQ(field<int>(length, 8), 8);

    const ka_calendar_date recurring(length, 3, ka_last, 6);
    EXPECT_EQ(field<ka_time_period>(recurring, 0), length);
    EXPECT_EQ(field<unsigned short>(recurring, 16), 3);
    EXPECT_EQ(field<unsigned short>(recurring, 18), 0);
    EXPECT_EQ(field<unsigned short>(recurring, 20), 6);
    EXPECT_EQ(field<ka_which_one>(recurring, 24), ka_last);

    const ka_time_and_date moment;
    EXPECT_EQ(field<ka_time_period>(moment, 0), moment.utc_time_and_date());
    EXPECT_EQ(field<const ka_time_zone*>(moment, 16), &moment.time_zone());

    ka_stopwatch watch;
    watch.start(), watch.stop(), watch.start();
    EXPECT_EQ(field<const ka_time_zone*>(watch, 16), &ka_time_and_date::default_time_zone());
    EXPECT_TRUE(field<bool>(watch, 40));
    watch.stop();
    EXPECT_EQ(field<ka_time_period>(watch, 24), watch.lap());

    ka_simple_time_zone_rule rule(recurring, recurring, 1, 2, length);
    EXPECT_EQ(field<const ka_calendar_date*>(rule, 8), &rule.start_point());
    EXPECT_EQ(field<const ka_calendar_date*>(rule, 16), &rule.end_point());
    EXPECT_EQ(field<short>(rule, 24), 1);
    EXPECT_EQ(field<short>(rule, 26), 2);
    EXPECT_EQ(field<ka_time_period>(rule, 32), length);
    EXPECT_EQ(field<ka_time_period>(ka_time_zone(length), 64), length);

    const error thrown(4, "text");
    EXPECT_EQ(reinterpret_cast<const char*>(&thrown) + sizeof(void*), thrown.what());
    EXPECT_EQ(field<int>(thrown, sizeof(void*) + 512), 4);
}

TEST(layout, versions_of_headers_and_library_agree)
{
    EXPECT_EQ(ka_time_varnel_version(), KA_TIME_VARNEL_VERSION);
    EXPECT_EQ(LIBRARY_VERSION, std::to_string(KA_TIME_VARNEL_VERSION_MAJOR) + "." +
                                   std::to_string(KA_TIME_VARNEL_VERSION_MINOR) + "." +
                                   std::to_string(KA_TIME_VARNEL_VERSION_PATCH));
}
