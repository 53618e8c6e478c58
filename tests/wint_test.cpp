#include <climits>
#include <string>

#include <gtest/gtest.h>

#include <time/wint.h>

#include "expect_error.h"

namespace {

/// Opens what is protected.
struct probe : ka_wint {
    probe(const ka_wint& value) : ka_wint(value) {}
    probe(const unsigned short& digit, unsigned int index) : ka_wint(digit, index) {}
    using ka_wint::divide, ka_wint::normalize;
};

static_assert(ka_wint(7) * ka_wint(-6) == ka_wint(-42) && ka_wint(-7) % ka_wint(5) == ka_wint(-2));

}

TEST(wint, divides_in_place_and_holds_digits_and_every_integer_type)
{
    ka_wint a = 47, b = -5;
    probe::divide(a, b, b, a);
    expect_error("divide_by_zero", "", "time/src/wint", [&] { probe::divide(a, 0, a, b); });
    EXPECT_TRUE(a == ka_wint(-2) && b == ka_wint(-9));

    for (unsigned int index = 0; index < 4; ++index)
        EXPECT_EQ(probe(65535, index), ka_wint(65535ull << 16 * index));
    probe zero = ka_wint();
    reinterpret_cast<bool&>(zero) = true; // the sign is the first field
    zero.normalize();
    EXPECT_EQ(zero, ka_wint());
    std::string texts;
    const auto held = [&](auto... n) {
        ((a = n, texts += ' ' + (a == ka_wint(n) ? a.to_string() : "")), ...);
    };
    held(short{-5}, static_cast<unsigned short>(5), INT_MIN, INT_MAX, UINT_MAX, LONG_MIN, ULONG_MAX,
         LLONG_MIN, ULLONG_MAX);
    EXPECT_EQ(texts, " -5 5 -2147483648 2147483647 4294967295 -9223372036854775808 18446744073709551615"
                     " -9223372036854775808 18446744073709551615");
    EXPECT_EQ(ka_wint(255).to_string(static_cast<ka_base>(7)), "255"); // no radix: decimal
}
