// Wide integers, periods and times of day, wraps included, against integers of 128 bits.
#include <bitset>
#include <cfenv>
#include <climits>

#include <time/months.h>
#include <time/time_of_day.h>
#include <time/tperiod.h>
#include <time/wint.h>

#include "../tests/support/comparisons.h"
#include "../tests/support/opened.h"
#include "input.h"
#include "wide.h"

namespace {

using u64 = unsigned long long;

constexpr int million = 1000000;

bool is_by_zero(auto operation) { return result_of(operation) == "divide_by_zero"; }

u64 magnitude(int128 value) { return static_cast<u64>(value < 0 ? -value : value); }

/// A value keeps the low 64 bits of its magnitude, and zero has no sign.
bool is(const ka_wint& x, int128 value)
{
    const u64 low = magnitude(value);
    return x.to_uint64_t() == low && x.is_negative() == (value < 0 && low != 0);
}

std::string digits(u64 value, unsigned int radix, const char* shapes = "0123456789ABCDEF")
{
    std::string text;
    do
        text.insert(text.begin(), shapes[value % radix]);
    while ((value /= radix) != 0);
    return text;
}

ka_wint wide(int128 value) { return value < 0 ? -ka_wint(magnitude(value)) : ka_wint(magnitude(value)); }

void check_wint(int128 value)
{
    const ka_wint x = wide(value);
    const u64 low = magnitude(value);
    ka_wint up = x, down = x;
    agree(is(++up, value + 1), "wide step up");
    agree(is(--down, value - 1), "wide step down");
    agree(x.is_zero() == (value == 0), "zero of a wide integer");
    agree(x.is_positive() == (value > 0), "sign of a wide integer");
    agree(x.to_int32_t() == static_cast<int>(static_cast<unsigned int>(value)), "wide integer in 32 bits");
    agree(x.to_int64_t() == static_cast<long long>(static_cast<u64>(value)), "wide integer in 64 bits");
    const std::string sign = value < 0 ? "-" : "";
    agree(x.to_string() == sign + digits(low, 10), "decimal text");
    agree(x.to_string(ka_binary) == sign + std::bitset<64>(low).to_string(), "binary text");
    agree(x.to_string(ka_octal) == sign + "0" + digits(low, 8), "octal text");
    agree(x.to_string(ka_hexadecimal) == sign + "0X" + digits(low, 16), "hexadecimal text");
    agree(x.to_string(ka_hexadecimal, false) == sign + "0x" + digits(low, 16, "0123456789abcdef"),
          "hexadecimal text in small letters");
    opened_wint negated(x);
    agree(negated.digits() == 0u + (low > 0) + (low >> 16 > 0) + (low >> 32 > 0) + (low >> 48 > 0),
          "digits of a wide integer");
    negated.make_negative();
    agree(is(negated, -value), "wide sign flipped");
    agree(is(opened_wint::abs(x), low), "magnitude of a wide integer");
}

void check_wint(int128 a, int128 b)
{
    const ka_wint x = wide(a);
    const ka_wint y = wide(b);
    agree(opened_wint::same_sign(x, y) == ((a < 0) == (b < 0)), "same sign");
    agree(is(x, a), "wide integer");
    agree(is(x + y, a + b), "wide sum");
    agree(is(x - y, a - b), "wide difference");
    agree(is(-x, -a), "wide minus");
    agree(compared(x, y) == compared(a, b), "wide order");
    const int128 product = int128{magnitude(a) * magnitude(b)};
    agree(is(x * y, (a < 0) == (b < 0) ? product : -product), "wide product");
    if (b == 0) {
        agree(is_by_zero([&] { x / y; }), "wide quotient by zero");
        return agree(is_by_zero([&] { x % y; }), "wide remainder by zero");
    }
    // The remainder has the sign of the quotient, and none where that is zero.
    const int128 rest = magnitude(a) % magnitude(b);
    agree(is(x / y, a / b), "wide quotient");
    agree(is(x % y, a / b < 0 ? -rest : rest), "wide remainder");
}

struct fields {
    long long seconds;
    int microseconds;

    bool operator==(const fields&) const = default;
    int128 total() const { return int128{seconds} * million + microseconds; }
};

fields of(const ka_time_period& period) { return {period.whole_seconds(), period.microseconds()}; }

/// One carry and one change of sign, at most, of seconds that wrap.
fields evened_once(int128 seconds, int128 microseconds)
{
    const auto wrapped = static_cast<long long>(static_cast<u64>(seconds + microseconds / million));
    const int borrowed = (wrapped < 0 && microseconds > 0) - (wrapped > 0 && microseconds < 0);
    return {wrapped + borrowed, static_cast<int>((microseconds - borrowed * million) % million)};
}

/// The exact total where 64 bits of seconds hold it.
fields evened(int128 seconds, int128 microseconds)
{
    const int128 total = seconds * million + microseconds;
    if (LLONG_MIN <= total / million && total / million <= LLONG_MAX)
        return {static_cast<long long>(total / million), static_cast<int>(total % million)};
    return evened_once(seconds, microseconds);
}

/// Seconds and microseconds are truncated apart, in whatever way the host rounds.
void check_quotient(const fields& a, int divisor)
{
    const int128 rest = int128{a.seconds % divisor} * million / divisor;
    const fields expected = {a.seconds / divisor, a.microseconds / divisor + static_cast<int>(rest)};
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO, FE_TONEAREST}) {
        std::fesetround(mode);
        // Else the compiler could divide once for all modes.
        const volatile int by = divisor;
        agree(of(ka_time_period(a.seconds, a.microseconds) / by) == expected, "period quotient");
    }
}

void check_period(const fields& a, const fields& b, int factor)
{
    const ka_time_period x(a.seconds, a.microseconds);
    const ka_time_period y(b.seconds, b.microseconds);
    agree(of(x) == a, "period");
    agree(compared(x, y) == compared(a.total(), b.total()), "order of periods");
    agree(of(x + y) == evened(int128{a.seconds} + b.seconds, a.microseconds + b.microseconds), "period sum");
    if (b.seconds == LLONG_MIN && b.microseconds != 0) {
        agree(result_of([&] { -y; }) == "invalid_time_period", "period without a minus");
        agree(result_of([&] { x - y; }) == "invalid_time_period", "period that cannot be subtracted");
    } else if (b.seconds != LLONG_MIN) {
        agree(of(-y) == fields{-b.seconds, -b.microseconds}, "period minus");
        agree(of(x - y) == evened(int128{a.seconds} - b.seconds, a.microseconds - b.microseconds),
              "period difference");
    }
    agree(of(x * factor) == evened(int128{a.seconds} * factor, int128{a.microseconds} * factor),
          "period product");
    agree(factor * x == x * factor, "period product from the left");
    agree((ka_time_period(x) *= factor) == x * factor, "period product in place");
    // The fields of a product that has wrapped can be of two signs.
    const fields product = of(x * factor);
    const bool is_of_one_sign = product.seconds == 0 || product.microseconds == 0 ||
                                (product.seconds < 0) == (product.microseconds < 0);
    const auto sum = is_of_one_sign ? evened : evened_once;
    agree(of(x * factor + y) ==
              sum(int128{product.seconds} + b.seconds, product.microseconds + b.microseconds),
          "sum with a product");
    agree(x.to_days() == static_cast<int>(static_cast<unsigned int>(a.seconds / 86400)), "days of a period");
    agree(x.to_minutes() == static_cast<int>(static_cast<unsigned int>(a.seconds / 60)),
          "minutes of a period");
    if (factor == 0) {
        agree(is_by_zero([&] { x / factor; }), "period quotient by zero");
        return agree(is_by_zero([&] { x % factor; }), "period remainder by zero");
    }
    if (factor == -1 && a.seconds == LLONG_MIN)
        return;
    agree(of(x % factor) == fields{a.seconds % factor, a.microseconds % factor}, "period remainder");
    check_quotient(a, factor);
    // The two sides of a whole quotient.
    const long long near = a.seconds / 2 / factor * factor;
    check_quotient({near, 0}, factor);
    check_quotient({near - (near < 0 ? -1 : 1), 0}, factor);
}

constexpr int128 day = int128{86400} * million;

int128 modulo_day(int128 microseconds) { return (microseconds % day + day) % day; }

/// Microseconds since midnight, by the fields as they are read.
int128 total(const ka_time& time)
{
    return ((time.hours() * 60ll + time.minutes()) * 60 + time.seconds()) * million + time.microseconds();
}

/// Where no count of seconds wraps.
void check_time(const fields& p, const fields& q)
{
    const ka_time_period length(q.seconds, q.microseconds);
    const ka_time a = ka_time_period(p.seconds, p.microseconds), b = length;
    const int128 since_midnight = modulo_day(p.total());
    agree(total(a) == since_midnight, "time");
    agree(of(ka_time_period(a)).total() == since_midnight, "time as a period");
    const auto is_time = [](auto count) {
        return total(ka_time(count)) == modulo_day(int128{count} * million);
    };
    agree(is_time(p.seconds), "time of seconds");
    agree(is_time(static_cast<u64>(p.seconds)), "time of unsigned seconds");
    agree(is_time(static_cast<int>(p.seconds)), "time of 32 bits of seconds");
    agree(is_time(static_cast<unsigned int>(p.seconds)), "time of unsigned 32 bits of seconds");
    agree(a.is_pm() == (since_midnight >= day / 2), "half of the day");
    agree(a.is_am() != a.is_pm(), "other half of the day");
    agree(compared(a, b) == compared(total(a), total(b)), "order of times");
    const int128 difference = modulo_day(p.total() - q.total());
    agree(total(a - length) == difference, "time less a period");
    agree(total(a - b) == difference, "difference of times");
    ka_time later = a;
    agree(total(later += length) == modulo_day(p.total() + q.total()), "time and a period");
    agree((later -= length) == a, "time and a period taken back");
}

/// The law of spans, and that no further month has a place in one.
void check_span(const ka_date& from, const ka_date& to)
{
    const ka_span apart = ka_until(from, to);
    const int sign = from <= to ? 1 : -1;
    agree(from + apart == to, "a span leads to its end");
    agree(apart.years * sign >= 0, "years of a span");
    agree(apart.months * sign >= 0, "the sign of a span's months");
    agree(apart.months * sign < 12, "months of a span");
    agree(apart.days * sign >= 0, "days of a span");
    const ka_months further(12 * apart.years + apart.months + sign);
    const std::string next = result_of([&] {
        const int days_past = (from + further).julian_day() - to.julian_day();
        return std::string(days_past * sign > 0 ? "past" : "short");
    });
    agree(next == "past" || next == "invalid_year", "a span with all its months");
}

/// Of any length, so that small values are as likely as those that wrap, and
/// those next to a power of two.
u64 any_magnitude(input& in)
{
    const int bits = in.between(0, 64);
    const u64 below = bits == 0 ? 0 : ~0ull >> (64 - bits);
    return in.one_in(2) ? below & in.take<u64>() : below + static_cast<u64>(in.between(0, 2));
}

int128 any_wide(input& in)
{
    const bool is_negative = in.between(0, 1) == 1;
    const int128 value = any_magnitude(in);
    return is_negative ? -value : value;
}

fields any_fields(input& in)
{
    const bool is_negative = in.between(0, 1) == 1;
    const auto seconds = static_cast<long long>(any_magnitude(in) >> 1);
    const int microseconds = in.between(0, million - 1);
    return is_negative ? fields{-seconds - 1, -microseconds} : fields{seconds, microseconds};
}

}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    input in(bytes, size);
    const int128 a = any_wide(in);
    check_wint(a);
    check_wint(a, in.one_in(4) ? a : any_wide(in));
    const fields p = any_fields(in);
    const int factor = in.take<int>() >> in.between(0, 31);
    const fields q = in.one_in(4) ? p : any_fields(in);
    check_period(p, q, factor);
    // The edge of a carry: two fractions that make a whole second.
    const int rest = (p.microseconds < 0 ? -million : million) - p.microseconds;
    check_period(p, {p.seconds / 2, rest % million}, factor);
    check_time(p, {q.seconds / 2, q.microseconds});
    const ka_date from = in.between(38, 13688960);
    check_span(from, in.between(38, 13688960));
    return 0;
}
