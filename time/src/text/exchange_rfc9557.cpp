#include <algorithm>
#include <cstring>

#include <time/error.h>
#include <time/world.h>

#include "../clock/zone_clock.h"
#include "exchange_reading.h"
#include "exchange_writing.h"

namespace exchange {

namespace {

constexpr std::string_view name_of_utc = "UTC";

/// The name of a zone in the tz data; empty where it has none.
std::string_view name_of(const ka_time_zone& zone) noexcept
{
    if (&zone == &ka_time_zone::utc())
        return name_of_utc;
    const rules::table* const table = zone_clock::table_with_times(zone);
    return table != nullptr && table->name != nullptr ? table->name : std::string_view();
}

bool is_of_name(char character) noexcept
{
    return scanner::is_digit(character) || scanner::is_letter(character) ||
           std::string_view("_+-/.").find(character) != std::string_view::npos;
}

/// The zone of an offset in brackets.
const ka_time_zone& zone_of(const told_offset& offset)
{
    const auto minutes =
        static_cast<unsigned int>(offset.seconds < 0 ? -offset.seconds : offset.seconds) / 60;
    char text[] = "<+00:00>-00:00";
    // POSIX has the sign of its offsets the other way round, and names no colon.
    char* out = write_text(text, offset.seconds < 0 ? "<-" : "<+");
    out = write_two_places(write_two_places(out, minutes / 60), minutes % 60);
    out = write_text(out, offset.seconds < 0 ? ">" : ">-");
    out = write_character(write_two_places(out, minutes / 60), ':');
    out = write_two_places(out, minutes % 60);
    return ka_posix_zone({text, static_cast<std::size_t>(out - text)});
}

bool read_zone_name(scanner& in, const ka_time_zone*& zone)
{
    const std::size_t start = in.at();
    const std::string_view rest = in.rest();
    const std::size_t size =
        static_cast<std::size_t>(std::find_if_not(rest.begin(), rest.end(), is_of_name) - rest.begin());
    const std::string_view name = rest.substr(0, size);
    in.skip(size);
    if (name == name_of_utc) {
        zone = &ka_time_zone::utc();
        return true;
    }
    constexpr std::size_t longest_name = 255;
    if (size == 0 || size > longest_name)
        return in.fails(ka_failure, start, std::max<std::size_t>(size, 1), "zone");
    try {
        zone = &ka_zone(name);
        return true;
    } catch (const ka_time_varnel_error&) {
        return in.fails(ka_failure, start, size, "zone");
    }
}

/// What stands in the first brackets: a name, or an offset.
bool read_zone(scanner& in, const ka_time_zone*& zone)
{
    if (!in.literal('[', "'['"))
        return false;
    in.takes('!');
    if (!in.sees('+') && !in.sees('-'))
        return read_zone_name(in, zone) && in.literal(']', "']'");
    told_offset offset;
    if (!read_offset(in, offset) || !in.literal(']', "']'"))
        return false;
    zone = &zone_of(offset);
    return true;
}

/// A tag with a key and a value. What is critical has to be known.
bool skip_tag(scanner& in) noexcept
{
    if (!in.literal('[', "'['"))
        return false;
    const bool is_critical = in.takes('!');
    const std::size_t start = in.at();
    const std::string_view rest = in.rest();
    const std::size_t size = std::min(rest.find(']'), rest.size());
    const std::string_view tag = rest.substr(0, size);
    const std::size_t value = tag.find('=') + 1;
    const bool is_tag =
        value > 1 && value < tag.size() && std::all_of(tag.begin(), tag.end(), [](char character) {
            return character == '=' ||
                   (is_of_name(character) && character != '/' && character != '+' && character != '.');
        });
    const bool is_known = tag == "u-ca=gregory" || tag == "u-ca=iso8601";
    if (!is_tag || (is_critical && !is_known))
        return in.fails(ka_failure, start, std::max<std::size_t>(size, 1), "tag");
    in.skip(size);
    return in.literal(']', "']'");
}

}

}

using namespace exchange;

std::string ka_rfc9557(const ka_time_and_date& moment, ka_fraction fraction)
{
    std::string text(2 * room + name_of(moment.time_zone()).size(), ' ');
    char* const first = text.data();
    text.resize(
        static_cast<std::size_t>(ka_write_rfc9557(first, first + text.size(), moment, fraction).ptr - first));
    return text;
}

std::to_chars_result ka_write_rfc9557(char* first, char* last, const ka_time_and_date& moment,
                                      ka_fraction fraction)
{
    char text[2 * room];
    char* end = ka_write_rfc3339(text, text + room, moment, fraction).ptr;
    std::string_view name = name_of(moment.time_zone());
    const char* const offset = end[-1] == 'Z' ? "+00:00" : end - 6;
    end = write_character(end, '[');
    if (name.empty())
        name = {offset, 6};
    const auto size = static_cast<std::size_t>(end - text);
    if (static_cast<std::size_t>(last - first) < size + name.size() + 1)
        return {last, std::errc::value_too_large};
    first = write_text(write_text(first, {text, size}), name);
    return {write_character(first, ']'), std::errc()};
}

ka_read_result<ka_time_and_date> ka_read_rfc9557(std::string_view text, ka_local_choice choice,
                                                 ka_extent extent)
{
    scanner in(text, extent);
    int julian_day = 0;
    told_time time;
    told_offset offset;
    if (!read_local_clock(in, text, julian_day, time))
        return in.failure();
    const std::size_t offset_start = in.at();
    const bool has_offset = !in.sees('[');
    if (has_offset && !read_offset(in, offset))
        return in.failure();
    const std::size_t offset_end = in.at();
    const ka_time_zone* zone = nullptr;
    if (!read_zone(in, zone))
        return in.failure();
    while (in.wants_all() ? !in.is_at_end() : in.sees('['))
        if (!skip_tag(in))
            return in.failure();
    if (!has_offset)
        return {ka_local_time(*zone, ka_access::time(time.second_of_day, time.microsecond),
                              ka_access::date(julian_day), choice),
                in.at(), time.is_leap_second};
    const ka_time_and_date moment = moment_of(instant_of(julian_day, time, offset.seconds), *zone);
    if (offset.is_known && !offset.is_zulu && shown_moment(moment).ahead != offset.seconds) {
        in.fails(ka_failure, offset_start, offset_end - offset_start, "offset of the zone");
        return in.failure();
    }
    return {moment, in.at(), time.is_leap_second};
}
