#include <cstring>
#include <exception>
#include <type_traits>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

namespace {

template <typename Value, std::size_t size>
constexpr bool plain =
    (sizeof(Value) == size) && std::is_trivially_copyable<Value>() && std::is_standard_layout<Value>() &&
    !std::is_polymorphic<Value>();
static_assert(plain<ka_date, 4> && plain<ka_wint, 10> && plain<ka_time_period, 16> && plain<ka_time, 16>);
static_assert(plain<ka_time_and_date, 24> && plain<ka_calendar_date, 32> && plain<ka_stopwatch, 48>);
static_assert(sizeof(ka_which_one) == 4 && sizeof(ka_base) == 4);

using error = ka_time_varnel_error;
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
    EXPECT_TRUE(field<long long>(length, 0) == 7 && field<int>(length, 8) == 8);

    const ka_calendar_date recurring(length, 3, ka_last, 6);
    EXPECT_EQ(field<ka_time_period>(recurring, 0), length);
    EXPECT_EQ(field<unsigned long long>(recurring, 16) & 0xffffffffffff, 0x600000003);
    EXPECT_EQ(field<ka_which_one>(recurring, 24), ka_last);

    const ka_time_and_date moment;
    EXPECT_EQ(field<ka_time_period>(moment, 0), moment.utc_time_and_date());
    EXPECT_EQ(field<const ka_time_zone*>(moment, 16), &moment.time_zone());

    const error thrown(4, "text");
    EXPECT_EQ(reinterpret_cast<const char*>(&thrown) + sizeof(void*), thrown.what());
    EXPECT_EQ(field<int>(thrown, sizeof(void*) + 512), 4);
}
