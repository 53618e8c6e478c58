#include <bitset>
#include <climits>
#include <iomanip>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <time/wint.h>

#include "expect_error.h"

namespace {

__extension__ typedef __int128 int128;
using u16 = unsigned short;
using u64 = unsigned long long;

u64 magnitude(int128 value) { return static_cast<u64>(value < 0 ? -value : value); }
ka_wint wide(int128 value) { return value < 0 ? -ka_wint(magnitude(value)) : ka_wint(magnitude(value)); }

/// The magnitude is cut to its low 64 bits, and zero has no sign.
bool is(const ka_wint& x, int128 value)
{
    const u64 low = magnitude(value);
    return x.to_uint64_t() == low && x.is_negative() == (value < 0 && low != 0);
}

/// Neighbours of powers of two and random values of all lengths; of both signs.
std::vector<int128> samples()
{
    std::mt19937_64 random(1);
    std::vector<int128> all = {0, 0x8000ffff0000ffff};
    for (const int bit : {1, 2, 15, 16, 17, 31, 32, 33, 47, 48, 62, 63, 64})
        for (const int step : {-1, 0, 1})
            all.push_back(magnitude((int128{1} << bit) + step));
    for (int i = 0; i < 60; ++i)
        all.push_back(random() >> random() % 64);
    for (std::size_t i = all.size(); i-- > 0;)
        all.push_back(-all[i]);
    return all;
}

/// Opens what is protected.
struct probe : ka_wint {
    probe(const ka_wint& value) : ka_wint(value) {}
    probe(const unsigned short& digit, unsigned int index) : ka_wint(digit, index) {}
    using ka_wint::abs, ka_wint::digits, ka_wint::divide, ka_wint::make_negative, ka_wint::normalize;
    using ka_wint::same_sign;
};

static_assert(ka_wint(7) * ka_wint(-6) == ka_wint(-42) && ka_wint(-7) % ka_wint(5) == ka_wint(-2));

}

TEST(wint, each_value_alone)
{
    for (const int128 sample : samples()) {
        const u64 low = magnitude(sample);
        const ka_wint value = wide(sample);
        SCOPED_TRACE(value.to_string());
        ka_wint up = value, down = value;
        EXPECT_TRUE(is(++up, sample + 1) && is(--down, sample - 1));
        EXPECT_TRUE(value.is_zero() == (sample == 0) && value.is_positive() == (sample > 0));
        EXPECT_TRUE(value.to_int32_t() == static_cast<int>(sample) &&
                    value.to_int64_t() == static_cast<long long>(sample));

        const std::string sign = sample < 0 ? "-" : "";
        std::ostringstream text;
        text << sign << low << sign << '0' << std::oct << low << std::hex << sign << "0x" << low << sign
             << "0X" << std::uppercase << low << sign << std::bitset<64>(low);
        EXPECT_EQ(value.to_string() + value.to_string(ka_octal) + value.to_string(ka_hexadecimal, false) +
                      value.to_string(ka_hexadecimal) + value.to_string(ka_binary),
                  text.str());

        probe open = value;
        EXPECT_EQ(open.digits(), 0u + (low > 0) + (low >> 16 > 0) + (low >> 32 > 0) + (low >> 48 > 0));
        EXPECT_TRUE(is(probe::abs(value), low) && probe::same_sign(value, 0) == (sample >= 0));
        open.make_negative();
        EXPECT_TRUE(is(open, -sample));
    }
}

TEST(wint, divides_in_place_and_holds_digits_and_every_integer_type)
{
    ka_wint a = 47, b = -5;
    probe::divide(a, b, b, a);
    expect_error("divide_by_zero", "", "time/src/wint", [&] { probe::divide(a, 0, a, b); });
    EXPECT_TRUE(a == ka_wint(-2) && b == ka_wint(-9));

    for (unsigned int index = 0; index < 4; ++index)
        EXPECT_TRUE(is(probe(65535, index), u64{65535} << 16 * index));
    probe zero = ka_wint();
    reinterpret_cast<bool&>(zero) = true; // the sign is the first field
    zero.normalize();
    EXPECT_EQ(zero, ka_wint());
    const auto held = [&](auto... n) { EXPECT_TRUE(((a = n, a == ka_wint(n) && is(a, int128{n})) && ...)); };
    held(short{-5}, u16{5}, INT_MIN, INT_MAX, UINT_MAX, LONG_MIN, ULONG_MAX, LLONG_MIN, ULLONG_MAX);

    EXPECT_EQ(ka_wint(255).to_string(static_cast<ka_base>(7)), "255"); // no radix: decimal
    std::ostringstream stream;
    stream << std::setfill('*') << std::setw(6) << std::hex << std::showbase << std::showpos;
    ka_wint(-255).print(stream);
    ka_wint(255).print(stream);
    EXPECT_EQ(stream.str(), "**-255255");
}
