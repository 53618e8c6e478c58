#include <time/read.h>

#include <string_view>

#include "clock/local_clock.h"
#include "text/exact.h"
#include "text/language_access.h"
#include "text/pattern_access.h"
#include "text/reader.h"
#include "text/resolve.h"

namespace {

/// Why a format can't be read by, at its place in the format; or null in `field`.
struct refused_format {
    std::size_t position = 0;
    std::size_t length = 0;
    const char* field = nullptr;
};

template <typename Value>
refused_format checked(std::string_view format, std::size_t unreadable_code, ka_told_fields told)
{
    if (unreadable_code != format.npos)
        return {unreadable_code, 2, "a code to read by"};
    return {format.size(), 0, ka_missing<Value>(told)};
}

ka_read_failure failure_of(const refused_format& refused, std::string_view format)
{
    return {ka_failure, format, refused.position, refused.length, refused.field};
}

/// The zone of a moment that is read, and what a local time means there.
struct reading_place {
    const ka_time_zone* zone;
    ka_local_choice choice = ka_local_choice::compatible;
};

bool make(text_reader& read, ka_date& value, const reading_place&) { return resolve(read, value); }

bool make(text_reader& read, ka_time& value, const reading_place&) { return resolve(read, value); }

/// Whether the zone has the name at a moment that the text has told.
bool is_named_so(const text_reader& read, const ka_time_and_date& moment)
{
    const ka_time_zone& zone = moment.time_zone();
    const clocks::reading reading = clocks::local_reading(ka_access::instant(moment), zone);
    return read.tells_zone_name(rules::name_under(zone, reading.is_dst, reading.told));
}

/// Refuses a local time at what told its hour.
bool refuse_time(text_reader& read)
{
    const ka_format_field told =
        read.tells(ka_format_field::hour) ? ka_format_field::hour : ka_format_field::hour_of_12;
    return read.refuse(read.first_row(told));
}

bool make(text_reader& read, ka_time_and_date& value, const reading_place& place)
{
    ka_date date;
    ka_time time;
    if (!resolve(read, date) || !resolve(read, time))
        return false;
    if (!place.zone->dst_observed() && !read.tells(ka_format_field::zone)) {
        value = ka_time_and_date(time, date, *place.zone);
        return true;
    }
    const ka_local_moments found = ka_local_times(*place.zone, time, date);
    const bool is_skipped = found.kind == ka_local_kind::skipped;
    if (read.tells(ka_format_field::zone) && !is_skipped) {
        const bool is_earlier = is_named_so(read, found.earlier), is_later = is_named_so(read, found.later);
        if (is_earlier != is_later) {
            value = is_earlier ? found.earlier : found.later;
            return true;
        }
        if (!is_earlier)
            return read.refuse(read.first_row(ka_format_field::zone));
    }
    if (place.choice == ka_local_choice::refuse && found.kind != ka_local_kind::once)
        return refuse_time(read);
    const bool is_later =
        place.choice == ka_local_choice::later || (place.choice == ka_local_choice::compatible && is_skipped);
    value = is_later ? found.later : found.earlier;
    return true;
}

/// What comes of a text that was taken apart, or not.
template <typename Value>
[[gnu::always_inline]] inline ka_read_result<Value> result_of(std::string_view text, text_reader& read,
                                                              bool is_read, const reading_place& place,
                                                              ka_extent extent)
{
    Value value;
    if (!is_read)
        return read.problem().in(text);
    if (extent == ka_extent::all && read.end() != text.size()) {
        read.refuse(ka_failure, read.end(), text.size() - read.end(), "end of text");
        return read.problem().in(text);
    }
    if (!make(read, value, place))
        return read.problem().in(text);
    return {value, read.end(), tells_leap_second(read)};
}

template <typename Value>
ka_read_result<Value> read_by(std::string_view text, const ka_read_format<Value>& format,
                              const reading_place& place, ka_extent extent)
{
    const ka_language_texts& language = ka_locale_text::user;
    if (!format.is_checked()) {
        const refused_format refused = checked<Value>(format.text(), ka_unreadable_code(format.text()),
                                                      fields_told(format.text(), language));
        if (refused.field != nullptr)
            return failure_of(refused, format.text());
    }
    text_reader read(text, language, place.zone);
    const bool is_read = read.read(format.text());
    return result_of<Value>(text, read, is_read, place, extent);
}

template <typename Value>
ka_read_result<Value> read_by(std::string_view text, const ka_pattern& pattern, const reading_place& place,
                              ka_extent extent)
{
    const ka_prepared_format& format = prepared(pattern);
    const refused_format refused = checked<Value>(pattern.format(), format.unreadable_code, format.told);
    if (refused.field != nullptr)
        return failure_of(refused, pattern.format());
    text_reader read(text, texts_of(pattern.language()), place.zone);
    const bool is_read = read.read(format.pieces.data(), format.pieces.data() + format.pieces.size());
    return result_of<Value>(text, read, is_read, place, extent);
}

}

ka_read_result<ka_date> ka_read_date(std::string_view text, const ka_read_format<ka_date>& format,
                                     ka_extent extent)
{
    return read_by(text, format, {&ka_time_and_date::default_time_zone()}, extent);
}

ka_read_result<ka_date> ka_read_date(std::string_view text, const ka_pattern& pattern, ka_extent extent)
{
    return read_by<ka_date>(text, pattern, {&ka_time_and_date::default_time_zone()}, extent);
}

ka_read_result<ka_time> ka_read_time(std::string_view text, const ka_read_format<ka_time>& format,
                                     ka_extent extent)
{
    return read_by(text, format, {nullptr}, extent);
}

ka_read_result<ka_time> ka_read_time(std::string_view text, const ka_pattern& pattern, ka_extent extent)
{
    return read_by<ka_time>(text, pattern, {nullptr}, extent);
}

ka_read_result<ka_time_and_date> ka_read_time_and_date(std::string_view text,
                                                       const ka_read_format<ka_time_and_date>& format,
                                                       const ka_time_zone& zone, ka_local_choice choice,
                                                       ka_extent extent)
{
    return read_by(text, format, {&zone, choice}, extent);
}

ka_read_result<ka_time_and_date> ka_read_time_and_date(std::string_view text, const ka_pattern& pattern,
                                                       const ka_time_zone& zone, ka_local_choice choice,
                                                       ka_extent extent)
{
    return read_by<ka_time_and_date>(text, pattern, {&zone, choice}, extent);
}
