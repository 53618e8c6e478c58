#include <cstring>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include <time/time_varnel.h>

namespace {

template <typename Value, std::size_t size>
constexpr bool
    plain = sizeof(Value) == size&& std::is_trivially_copyable_v<Value>&& std::is_standard_layout_v<Value> &&
            !std::is_polymorphic_v<Value>;
static_assert(plain<ka_date, 4> && plain<ka_wint, 10> && plain<ka_time_period, 16> && plain<ka_time, 16>);
static_assert(plain<ka_time_and_date, 24> && plain<ka_calendar_date, 32> && plain<ka_stopwatch, 48>);
static_assert(sizeof(ka_which_one) == 4 && sizeof(ka_base) == 4);

using error = ka_time_varnel_error;
static_assert(std::is_base_of_v<ka_varnel_error, error> && std::has_virtual_destructor_v<ka_varnel_error>);
static_assert(std::is_nothrow_copy_constructible_v<error> && std::is_nothrow_copy_assignable_v<error>);
static_assert(std::is_nothrow_move_constructible_v<error> && std::is_nothrow_move_assignable_v<error>);

template <typename Value, typename... Numbers>
constexpr bool takes = (std::is_constructible_v<Value, Numbers> && ...) &&
                       (std::is_assignable_v<Value&, Numbers> && ...);
template <typename Value>
constexpr bool takes_every_integer = takes<Value, short, unsigned short, int, unsigned int, long,
                                           unsigned long, long long, unsigned long long>;
static_assert(takes_every_integer<ka_date> && takes_every_integer<ka_time> && takes_every_integer<ka_wint>);
static_assert(takes_every_integer<ka_time_period> && takes_every_integer<ka_time_and_date>);

template <typename Result, typename... Found>
constexpr bool all_give = (std::is_same_v<Result, Found> && ...);

/// Never called: what operations give, to the width, on objects that are const where they are read.
[[maybe_unused]] void widths(const ka_date& d, const ka_time& t, const ka_time_period& p, const ka_wint& w,
                             ka_date& date, ka_time& time, ka_time_period& period, ka_wint& wide)
{
    static_assert(all_give<unsigned short, decltype(d.month()), decltype(d.day()), decltype(d.day_of_year()),
                           decltype(d.weekday()), decltype(d.week_of_year()), decltype(d.week_of_year(1)),
                           decltype(ka_date::days_in_year(1)), decltype(ka_date::days_in_month(1, 1)),
                           decltype(ka_date::month_index("")), decltype(ka_date::weekday_index("")),
                           decltype(t.hours()), decltype(t.minutes()), decltype(t.seconds())>);
    static_assert(all_give<short, decltype(d.year())> && all_give<unsigned int, decltype(t.microseconds())>);
    static_assert(all_give<int, decltype(d.julian_day()), decltype(ka_date::calc_julian_day(1, 1, 1)),
                           decltype(p.to_days()), decltype(p.to_hours()), decltype(p.to_minutes()),
                           decltype(p.to_seconds()), decltype(p.microseconds()), decltype(w.to_int32_t())>);
    static_assert(all_give<long long, decltype(w.to_int64_t())>);
    static_assert(all_give<unsigned long long, decltype(w.to_uint64_t())>);
    static_assert(all_give<const std::string&, decltype(ka_date::month_name(1)), decltype(ka_date::ad_name()),
                           decltype(ka_date::weekday_abbreviation(1)), decltype(ka_time::pm_name())>);
    static_assert(all_give<ka_date&, decltype(++date), decltype(--date), decltype(date += p)>);
    static_assert(all_give<const ka_date&, decltype(ka_date::min_date()), decltype(ka_date::max_date())>);
    static_assert(all_give<ka_time&, decltype(time += p), decltype(time -= p), decltype(time = t)>);
    static_assert(all_give<ka_wint&, decltype(++wide), decltype(--wide), decltype(wide = 1)>);
    static_assert(all_give<const ka_time&, decltype(ka_time::min_time()), decltype(ka_time::max_time())>);
    static_assert(all_give<ka_time_period&, decltype(period += p), decltype(period *= 2),
                           decltype(period /= 2), decltype(period %= 2), decltype(period = 1)>);
}

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

    const error thrown(4, "text");
    EXPECT_EQ(reinterpret_cast<const char*>(&thrown) + sizeof(void*), thrown.what());
    EXPECT_EQ(field<int>(thrown, sizeof(void*) + 512), 4);
}
