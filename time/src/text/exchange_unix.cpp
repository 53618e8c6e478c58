#include "eight_digits.h"
#include "exchange_reading.h"
#include "exchange_writing.h"

#include <climits>

namespace exchange {

namespace {

using u64 = unsigned long long;

constexpr u64 epoch = ka_gregorian::unix_epoch * 86400ull;
constexpr unsigned int million = 1000000;

/// Seconds on one side of the epoch. Both ends of all instants are in it, as 64
/// bits with a sign of their own hold them.
struct distance {
    bool is_before = false;
    u64 seconds = 0;
    unsigned int microseconds = 0;
};

distance from_epoch(const ka_time_period& instant) noexcept
{
    const long long seconds = instant.whole_seconds();
    const int fraction = instant.microseconds();
    if (seconds >= static_cast<long long>(epoch) && fraction >= 0)
        return {false, static_cast<u64>(seconds) - epoch, static_cast<unsigned int>(fraction)};
    const u64 whole = epoch - static_cast<u64>(seconds);
    if (fraction <= 0)
        return {true, whole, static_cast<unsigned int>(-fraction)};
    return {true, whole - 1, million - static_cast<unsigned int>(fraction)};
}

/// False where no instant is so far away.
bool instant_at(const distance& from, ka_time_period& instant) noexcept
{
    const auto fraction = static_cast<int>(from.microseconds);
    if (!from.is_before) {
        if (from.seconds > LLONG_MAX - epoch)
            return false;
        instant = ka_access::period(static_cast<long long>(from.seconds + epoch), fraction);
        return true;
    }
    if (from.seconds > epoch + LLONG_MAX + 1)
        return false;
    // Seconds and fraction of an instant have one sign.
    const bool is_above_zero = from.seconds < epoch;
    const u64 carried = is_above_zero && fraction != 0 ? 1 : 0;
    const int rest = carried != 0 ? static_cast<int>(million) - fraction : -fraction;
    instant = ka_access::period(static_cast<long long>(epoch - from.seconds - carried), rest);
    return true;
}

auto unix_seconds_writer(const ka_time_and_date& moment, ka_fraction fraction)
{
    return [from = from_epoch(ka_access::instant(moment)), fraction](char* out) {
        unsigned int shown = from.microseconds;
        if (fraction == ka_fraction::none)
            shown = 0;
        else if (fraction == ka_fraction::milliseconds)
            shown = shown / 1000 * 1000;
        // What is nothing but zeros has no sign.
        if (from.is_before && (from.seconds != 0 || shown != 0))
            out = write_character(out, '-');
        out = write_fraction(write_number(out, from.seconds), shown, fraction);
        if (fraction == ka_fraction::as_needed && shown != 0)
            while (out[-1] == '0')
                --out;
        return out;
    };
}

/// A number beyond those of 64 bits is read as the highest, which no instant has.
bool read_seconds(scanner& in, u64& seconds) noexcept
{
    if (!in.sees_digit())
        return in.fails(ka_invalid_time, in.at(), 1, "seconds");
    for (seconds = 0; in.sees_digit();) {
        const auto digit = static_cast<u64>(in.take_digit());
        seconds = seconds < ULLONG_MAX / 10 ? 10 * seconds + digit : ULLONG_MAX;
    }
    return true;
}

/// From the epoch on, in at most 15 digits and a fraction, as nearly all texts
/// are. Gives where they end, or 0.
std::size_t read_at_once(std::string_view text, u64& seconds, int& microsecond, ka_extent extent) noexcept
{
    const char* next = text.data();
    const char* const end = next + text.size();
    const digit_run first(next, end);
    next += first.count;
    seconds = first.number;
    if (first.count == 8) {
        const digit_run second(next, end);
        if (second.count == 8)
            return 0;
        next += second.count;
        seconds = seconds * powers_of_ten[second.count] + second.number;
    }
    if (first.count == 0 || (next != end && *next == '.' && !read_fraction_at_once(++next, end, microsecond)))
        return 0;
    return next == end || extent == ka_extent::start ? static_cast<std::size_t>(next - text.data()) : 0;
}

/// Any text, and what is wrong with it.
ka_read_result<ka_time_and_date> read_in_steps(std::string_view text, ka_extent extent) noexcept
{
    scanner in(text, extent);
    distance from;
    told_time fraction;
    from.is_before = in.takes('-');
    if (!read_seconds(in, from.seconds) || !read_fraction(in, fraction) || !in.ends())
        return in.failure();
    from.microseconds = static_cast<unsigned int>(fraction.microsecond);
    ka_time_period instant;
    if (!instant_at(from, instant)) {
        in.fails(ka_invalid_time, 0, in.at(), "seconds");
        return in.failure();
    }
    return {moment_of(instant, ka_time_zone::utc()), in.at()};
}

}

}

using namespace exchange;

std::string ka_unix_seconds(const ka_time_and_date& moment, ka_fraction fraction)
{
    return string_of(
        [&](char* first, char* last) { return ka_write_unix_seconds(first, last, moment, fraction); });
}

std::to_chars_result ka_write_unix_seconds(char* first, char* last, const ka_time_and_date& moment,
                                           ka_fraction fraction)
{
    return write_in(first, last, unix_seconds_writer(moment, fraction));
}

ka_read_result<ka_time_and_date> ka_read_unix_seconds(std::string_view text, ka_extent extent) noexcept
{
    u64 seconds = 0;
    int microsecond = 0;
    const std::size_t size = read_at_once(text, seconds, microsecond, extent);
    if (size == 0) [[unlikely]]
        return read_in_steps(text, extent);
    const ka_time_period instant = ka_access::period(static_cast<long long>(seconds + epoch), microsecond);
    return {moment_of(instant, ka_time_zone::utc()), size};
}
