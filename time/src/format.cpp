#include <string>
#include <string_view>

#include <time/timedate.h>

#include "text/print_inline.h"
#include "text/values.h"

/// Opens to the engine what start has found.
struct ka_access::user_language {
    static constexpr ka_language_texts texts = {
        ka_time_and_date::month_name_,   ka_time_and_date::month_abbr_,  ka_time_and_date::weekday_name_,
        ka_time_and_date::weekday_abbr_, &ka_time_and_date::am_name_,    &ka_time_and_date::pm_name_,
        &ka_time_and_date::ad_name_,     &ka_time_and_date::bc_name_,    &ka_time_and_date::format_timedate_,
        &ka_time_and_date::format_date_, &ka_time_and_date::format_time_};
};

constinit const ka_language_texts ka_locale_text::user = ka_access::user_language::texts;

namespace {

[[gnu::always_inline]] inline std::string text_in(std::string_view format, const printed_value& value)
{
    growing_text out;
    const char* const end = print_inline(out.begin(), out, format, value);
    return std::move(out).str(end);
}

}

std::string ka_time_and_date::formatted(const std::string& format, const unsigned short& hour,
                                        const unsigned short& minute, const unsigned short& second,
                                        const unsigned int& microsecond, const unsigned short& month,
                                        const unsigned short& day, const short& year,
                                        const ka_time_zone& zone, bool dst)
{
    return text_in(format, {{hour, minute, second, month, day}, microsecond, year, dst, 0, zone});
}

namespace {

std::string text_of(std::string_view format, const ka_time_and_date& value)
{
    return text_in(format, printed(value, ka_locale_text::user));
}

}

std::string ka_time_and_date::to_string(const char* format) const
{
    return text_of(format == nullptr ? std::string_view(*default_time_and_date_format_) : format, *this);
}

std::string ka_time_and_date::formatted(const std::string& format, const ka_time_and_date& value)
{
    return text_of(format, value);
}

std::string ka_time_and_date::formatted(const std::string& format, const ka_time* time, const ka_date* date)
{
    ka_time_and_date value;
    if (date != nullptr)
        value.date(*date);
    if (time != nullptr)
        value.time(*time);
    return text_of(format, value);
}

std::string ka_time_and_date::to_string(int value, int width, char fill)
{
    char digits[most_digits];
    char* const end = digits + sizeof digits;
    const auto pattern = static_cast<unsigned int>(value);
    const char* const first = write_before(end, value < 0 ? 0u - pattern : pattern);
    const auto length = static_cast<int>(end - first);

    std::string text(value < 0 ? 1 : 0, '-');
    if (length < width)
        text.append(static_cast<std::size_t>(width - length), fill);
    return text.append(first, static_cast<std::size_t>(length));
}

std::string ka_date::to_string(const std::string& format) const
{
    const ka_gregorian::date_parts date = ka_gregorian::split(julian_day_);
    const int known_day = is_julian_day(julian_day_) ? julian_day_ : 0;
    return text_in(format, {{0, 0, 0, date.month, date.day},
                            0,
                            static_cast<short>(date.year),
                            false,
                            known_day,
                            *ka_time_and_date::default_tzone_});
}

std::string ka_time::to_string(const std::string& format) const
{
    const unsigned int minute_of_day = second_of_day() / 60;
    return text_in(format, {{minute_of_day / 60, minute_of_day % 60, second_of_day() % 60, 0, 0},
                            microseconds(),
                            0,
                            false,
                            0,
                            *ka_time_and_date::default_tzone_});
}
