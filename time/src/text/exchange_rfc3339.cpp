#include <cstdint>

#include "eight_digits.h"
#include "exchange_reading.h"
#include "exchange_writing.h"

namespace exchange {

namespace {

char* write_offset(char* out, const shown_moment& shown) noexcept
{
    if (shown.is_universal)
        return write_character(out, 'Z');
    const auto minutes = static_cast<unsigned int>(shown.ahead < 0 ? -shown.ahead : shown.ahead) / 60;
    *out = shown.ahead < 0 ? '-' : '+';
    out = write_two_places(out + 1, minutes / 60);
    *out = ':';
    return write_two_places(out + 1, minutes % 60);
}

auto rfc3339_writer(const ka_time_and_date& moment, ka_fraction fraction)
{
    return [fraction, shown = shown_moment(moment)](char* out) {
        out = write_date(out, shown.date);
        *out = 'T';
        out = write_clock(out + 1, shown.second_of_day);
        out = write_fraction(out, shown.microsecond, fraction);
        return write_offset(out, shown);
    };
}

/// The first 19 characters, where they are what they nearly always are: 2024-07-04T18:28:38.
bool read_at_once(std::string_view text, int& julian_day, told_time& time) noexcept
{
    constexpr eight_pattern year_month("0000-00-"), day_hour("00T00:00"), times("00:00:00");
    std::uint64_t first = 0, second = 0, third = 0;
    if (text.size() < 19 || !year_month.reads(text.data(), first) ||
        !day_hour.reads(text.data() + 8, second) || !times.reads(text.data() + 11, third))
        return false;
    const int year = two(first, 0) * 100 + two(first, 2), month = two(first, 5), day = two(second, 0);
    const int hour = two(third, 0), minute = two(third, 3), second_of_minute = two(third, 6);
    if (!ka_gregorian::is_month(month) || hour > 23 || minute > 59 || second_of_minute > 59)
        return false;
    if (day < 1 || (day > 28 && day > ka_gregorian::month_length(month, ka_gregorian::is_leap(year))))
        return false;
    julian_day = ka_gregorian::day_number(month, day, year);
    time.second_of_day = (hour * 60 + minute) * 60 + second_of_minute;
    return true;
}

/// Two digits, or a number above any that is asked for.
int pair_at(const char* text) noexcept
{
    const auto tens = static_cast<unsigned char>(text[0] - '0'),
               ones = static_cast<unsigned char>(text[1] - '0');
    return tens <= 9 && ones <= 9 ? tens * 10 + ones : 100;
}

/// "Z", or an offset that is not zero. Gives where it ends, or null.
const char* read_offset_at_once(const char* next, const char* end, told_offset& offset) noexcept
{
    if (next != end && *next == 'Z') {
        offset.is_zulu = true;
        return next + 1;
    }
    if (end - next < 6 || next[3] != ':' || (*next != '+' && *next != '-'))
        return nullptr;
    const int hours = pair_at(next + 1), minutes = pair_at(next + 4);
    const int seconds = (hours * 60 + minutes) * 60;
    if (hours > 23 || minutes > 59 || seconds == 0)
        return nullptr;
    offset.seconds = *next == '-' ? -seconds : seconds;
    return next + 6;
}

/// What stands behind the first 19 characters, likewise. Gives where it ends, or 0.
std::size_t read_end_at_once(std::string_view text, told_time& time, told_offset& offset,
                             ka_extent extent) noexcept
{
    const char* next = text.data() + 19;
    const char* const end = text.data() + text.size();
    if (next != end && *next == '.' && !read_fraction_at_once(++next, end, time.microsecond))
        return 0;
    next = read_offset_at_once(next, end, offset);
    const bool is_read = next != nullptr && (next == end || extent == ka_extent::start);
    return is_read ? static_cast<std::size_t>(next - text.data()) : 0;
}

bool read_date_and_time(scanner& in, int& julian_day, told_time& time) noexcept
{
    if (!read_date(in, julian_day))
        return false;
    if (!in.sees('T') && !in.sees('t') && !in.sees(' '))
        return in.fails(ka_failure, in.at(), 1, "'T'");
    in.skip(1);
    return read_clock(in, true, time) && read_fraction(in, time);
}

bool begins_offset(const scanner& in) noexcept
{
    return in.sees('Z') || in.sees('z') || in.sees('+') || in.sees('-');
}

}

bool read_offset(scanner& in, told_offset& offset) noexcept
{
    offset.is_zulu = in.takes('Z') || in.takes('z');
    if (offset.is_zulu)
        return true;
    const std::size_t start = in.at();
    const bool is_negative = in.takes('-');
    int hours = 0, minutes = 0;
    if (!is_negative && !in.takes('+'))
        return in.fails(ka_failure, start, 1, "offset");
    if (!in.number(2, 0, 23, hours, ka_failure, "offset") || !in.literal(':', "':'") ||
        !in.number(2, 0, 59, minutes, ka_failure, "offset"))
        return false;
    const int seconds = (hours * 60 + minutes) * 60;
    offset.seconds = is_negative ? -seconds : seconds;
    offset.is_known = !is_negative || seconds != 0;
    return true;
}

bool read_local_clock(scanner& in, std::string_view text, int& julian_day, told_time& time) noexcept
{
    if (!read_at_once(text, julian_day, time)) [[unlikely]]
        return read_date_and_time(in, julian_day, time);
    in.skip(19);
    return read_fraction(in, time);
}

}

using namespace exchange;

namespace {

/// Any text, and what is wrong with it.
ka_read_result<ka_told_moment> read_in_steps(std::string_view text, ka_extent extent) noexcept
{
    scanner in(text, extent);
    int julian_day = 0;
    told_time time;
    told_offset offset;
    if (!read_local_clock(in, text, julian_day, time) || !read_offset(in, offset) || !in.ends())
        return in.failure();
    return result_of(in.at(), julian_day, time, offset);
}

/// A moment of which the text tells the local time alone.
ka_read_result<ka_time_and_date> local_result(int julian_day, const told_time& time, std::size_t end,
                                              const ka_time_zone& zone, ka_local_choice choice)
{
    if (zone.dst_observed())
        return {ka_local_time(zone, ka_access::time(time.second_of_day, time.microsecond),
                              ka_access::date(julian_day), choice),
                end, time.is_leap_second};
    return {moment_of(instant_of(julian_day, time, 0) + zone.offset(), zone), end, time.is_leap_second};
}

ka_read_result<ka_time_and_date> read_in_steps(std::string_view text, const ka_time_zone& zone,
                                               ka_local_choice choice, ka_extent extent)
{
    scanner in(text, extent);
    int julian_day = 0;
    told_time time;
    told_offset offset;
    if (!read_local_clock(in, text, julian_day, time))
        return in.failure();
    if (in.is_at_end() || (!in.wants_all() && !begins_offset(in)))
        return local_result(julian_day, time, in.at(), zone, choice);
    if (!read_offset(in, offset) || !in.ends())
        return in.failure();
    return {moment_of(instant_of(julian_day, time, offset.seconds), zone), in.at(), time.is_leap_second};
}

}

std::string ka_rfc3339(const ka_time_and_date& moment, ka_fraction fraction)
{
    return string_of(
        [&](char* first, char* last) { return ka_write_rfc3339(first, last, moment, fraction); });
}

std::to_chars_result ka_write_rfc3339(char* first, char* last, const ka_time_and_date& moment,
                                      ka_fraction fraction)
{
    return write_in(first, last, rfc3339_writer(moment, fraction));
}

ka_read_result<ka_told_moment> ka_read_rfc3339(std::string_view text, ka_extent extent) noexcept
{
    int julian_day = 0;
    told_time time;
    told_offset offset;
    if (!read_at_once(text, julian_day, time))
        return read_in_steps(text, extent);
    const std::size_t size = read_end_at_once(text, time, offset, extent);
    if (size == 0) [[unlikely]]
        return read_in_steps(text, extent);
    return result_of(size, julian_day, time, offset);
}

ka_read_result<ka_time_and_date> ka_read_rfc3339(std::string_view text, const ka_time_zone& zone,
                                                 ka_local_choice choice, ka_extent extent)
{
    int julian_day = 0;
    told_time time;
    told_offset offset;
    if (!read_at_once(text, julian_day, time))
        return read_in_steps(text, zone, choice, extent);
    if (text.size() == 19)
        return local_result(julian_day, time, 19, zone, choice);
    const std::size_t size = read_end_at_once(text, time, offset, extent);
    if (size == 0) [[unlikely]]
        return read_in_steps(text, zone, choice, extent);
    return {moment_of(instant_of(julian_day, time, offset.seconds), zone), size};
}
