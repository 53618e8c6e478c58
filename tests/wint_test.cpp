#include <climits>
#include <string>

#include <gtest/gtest.h>

#include <time/wint.h>

#include "expect_error.h"
#include "opened.h"
#include "printers.h"

static_assert(ka_wint(7) * ka_wint(-6) == ka_wint(-42) && ka_wint(-7) % ka_wint(5) == ka_wint(-2));

TEST(wint, divides_in_place)
{
    ka_wint a = 47, b = -5;
    opened_wint::divide(a, b, b, a);
    EXPECT_EQ(a, ka_wint(-2));
    EXPECT_EQ(b, ka_wint(-9));
    expect_error("divide_by_zero", "", "time/src/wint", [&] { opened_wint::divide(a, 0, a, b); });
    EXPECT_EQ(a, ka_wint(-2));
    EXPECT_EQ(b, ka_wint(-9));
}

TEST(wint, digits_of_derived_classes)
{
    for (unsigned int index = 0; index < 4; ++index)
        EXPECT_EQ(opened_wint(65535, index), ka_wint(65535ull << 16 * index));
    opened_wint zero = opened_wint(ka_wint());
    reinterpret_cast<bool&>(zero) = true; // the sign is the first field
    zero.normalize();
    EXPECT_EQ(zero, ka_wint());
}

TEST(wint, holds_every_integer_type)
{
    const auto expect_held = [](auto number, const std::string& text) {
        ka_wint assigned;
        assigned = number;
        EXPECT_EQ(assigned.to_string(), text);
        EXPECT_EQ(ka_wint(number).to_string(), text);
    };
    expect_held(short{-5}, "-5");
    expect_held(static_cast<unsigned short>(5), "5");
    expect_held(INT_MIN, "-2147483648");
    expect_held(INT_MAX, "2147483647");
    expect_held(UINT_MAX, "4294967295");
    expect_held(LONG_MIN, std::to_string(LONG_MIN));
    expect_held(ULONG_MAX, std::to_string(ULONG_MAX));
    expect_held(LLONG_MIN, "-9223372036854775808");
    expect_held(ULLONG_MAX, "18446744073709551615");
    EXPECT_EQ(ka_wint(255).to_string(static_cast<ka_base>(7)), "255"); // no radix: decimal
}
