#include <bitset>
#include <cstdio>
#include <iomanip>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <time/wint.h>

#include "expect_error.h"

namespace {

__extension__ typedef __int128 int128;
using u64 = unsigned long long;

/// A sign and a magnitude, the plain way.
struct model {
    bool negative;
    u64 magnitude;

    int128 value() const { return negative ? -int128{magnitude} : int128{magnitude}; }
    ka_wint wide() const { return negative ? -ka_wint(magnitude) : ka_wint(magnitude); }
};

/// `magnitude` is cut to its low 64 bits, and zero has no sign.
bool is(const ka_wint& value, bool negative, int128 magnitude)
{
    const auto low = static_cast<u64>(magnitude);
    return value.is_negative() == (negative && low != 0) && value.to_uint64_t() == low;
}

bool is(const ka_wint& value, int128 expected)
{
    return is(value, expected < 0, expected < 0 ? -expected : expected);
}

/// Neighbours of powers of two, digits of all ones, random values of all lengths; of both signs.
std::vector<model> samples()
{
    std::mt19937_64 random(1);
    std::vector<model> all = {{false, 0}, {false, ~u64{0}}, {true, ~u64{0}}, {true, 0x8000ffff0000ffff}};
    for (const unsigned int bit : {1u, 2u, 15u, 16u, 17u, 31u, 32u, 33u, 47u, 48u, 62u, 63u})
        for (const u64 step : {u64{0}, u64{1}, ~u64{0}})
            for (const bool negative : {false, true})
                all.push_back({negative, (u64{1} << bit) + step});
    for (int i = 0; i < 120; ++i)
        all.push_back({i % 2 == 0, 1 + (random() >> (1 + random() % 63))});
    return all;
}

/// Opens what is protected.
struct probe : ka_wint {
    probe(const ka_wint& value) : ka_wint(value) {}
    probe(const unsigned short& digit, unsigned int index) : ka_wint(digit, index) {}
    using ka_wint::abs;
    using ka_wint::digits;
    using ka_wint::divide;
    using ka_wint::make_negative;
    using ka_wint::normalize;
    using ka_wint::same_sign;
};

template <typename Number>
void expect_held()
{
    using limits = std::numeric_limits<Number>;
    for (const Number number : {limits::min(), static_cast<Number>(-1), limits::max()}) {
        ka_wint assigned(77);
        assigned = number;
        EXPECT_EQ(assigned.to_string(), std::to_string(number));
        EXPECT_TRUE(assigned == ka_wint(number) && assigned <= number && !(assigned < number));
    }
}

static_assert(ka_wint(7) * ka_wint(-6) == ka_wint(-42) && ka_wint(-7) % ka_wint(5) == ka_wint(-2));

}

TEST(wint, arithmetic_and_order_of_all_pairs)
{
    const std::vector<model> all = samples();
    for (const model& a : all) {
        for (const model& b : all) {
            const ka_wint x = a.wide();
            const ka_wint y = b.wide();
            const bool opposite = a.negative != b.negative;
            ASSERT_TRUE(is(x + y, a.value() + b.value()) && is(x - y, a.value() - b.value()) &&
                        is(x * y, opposite, a.magnitude * b.magnitude) &&
                        same_order(x, y, a.value(), b.value()) &&
                        // Quotient and remainder share a sign: none where the dividend is the smaller.
                        (b.magnitude == 0 ||
                         (is(x / y, opposite && a.magnitude >= b.magnitude, a.magnitude / b.magnitude) &&
                          is(x % y, opposite && a.magnitude >= b.magnitude, a.magnitude % b.magnitude))))
                << x.to_string() << ", " << y.to_string();
        }
    }
}

TEST(wint, each_value_alone)
{
    for (const model& sample : samples()) {
        const ka_wint value = sample.wide();
        SCOPED_TRACE(value.to_string());
        ka_wint up = value;
        ka_wint down = value;
        EXPECT_TRUE(is(-value, -sample.value()));
        EXPECT_TRUE(is(++up, sample.value() + 1) && is(--down, sample.value() - 1));
        EXPECT_EQ(value.is_zero(), sample.magnitude == 0);
        EXPECT_EQ(value.is_positive(), sample.value() > 0);
        const u64 pattern = sample.negative ? 0 - sample.magnitude : sample.magnitude;
        EXPECT_EQ(value.to_int32_t(), static_cast<int>(static_cast<unsigned int>(pattern)));
        EXPECT_EQ(value.to_int64_t(), static_cast<long long>(pattern));

        const std::string sign = sample.negative ? "-" : "";
        const auto in = [&](const char* format) {
            char text[32];
            std::snprintf(text, sizeof text, format, sample.magnitude);
            return sign + text;
        };
        EXPECT_EQ(value.to_string(ka_binary, true), sign + std::bitset<64>(sample.magnitude).to_string());
        EXPECT_EQ(value.to_string(ka_octal, false), in("0%llo"));
        EXPECT_EQ(value.to_string(), in("%llu"));
        EXPECT_EQ(value.to_string(ka_hexadecimal), in("0X%llX"));
        EXPECT_EQ(value.to_string(ka_hexadecimal, false), in("0x%llx"));

        probe open = value;
        unsigned int digits = 0;
        for (u64 rest = sample.magnitude; rest != 0; rest >>= 16)
            ++digits;
        EXPECT_EQ(open.digits(), digits);
        EXPECT_TRUE(is(probe::abs(value), false, sample.magnitude));
        EXPECT_EQ(probe::same_sign(value, 0), !sample.negative);
        open.normalize();
        EXPECT_EQ(open, value);
        open.make_negative();
        EXPECT_EQ(open, -value);
    }
}

TEST(wint, divide_writes_over_its_operands_and_not_on_failure)
{
    ka_wint a = 47;
    ka_wint b = -5;
    probe::divide(a, b, b, a);
    expect_error("divide_by_zero", "", "time/src/wint", [&] { probe::divide(a, 0, a, b); });
    EXPECT_EQ(a, ka_wint(-2));
    EXPECT_EQ(b, ka_wint(-9));
    expect_error("divide_by_zero", "", "time/src/wint", [] { (void)(ka_wint(0) / ka_wint(0)); });
    expect_error("divide_by_zero", "", "time/src/wint", [] { (void)(ka_wint(5) % ka_wint(0)); });
}

TEST(wint, digits_zero_and_print)
{
    for (unsigned int index = 0; index < 4; ++index)
        EXPECT_TRUE(is(probe(65535, index), u64{65535} << 16 * index));
    probe zero = ka_wint();
    reinterpret_cast<bool&>(zero) = true; // the sign is the first field
    zero.normalize();
    EXPECT_EQ(zero, ka_wint());

    std::ostringstream stream;
    stream << std::setfill('*') << std::setw(6) << std::hex << std::showbase << std::showpos;
    ka_wint(-255).print(stream);
    ka_wint(255).print(stream);
    EXPECT_EQ(stream.str(), "**-255255");
}

TEST(wint, integers_of_every_type_are_held)
{
    expect_held<short>(), expect_held<unsigned short>(), expect_held<int>(), expect_held<unsigned int>();
    expect_held<long>(), expect_held<unsigned long>(), expect_held<long long>(), expect_held<u64>();
}
