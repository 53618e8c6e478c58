#include <time/pattern.h>

#include <utility>

#include "text/exact.h"
#include "text/language_access.h"
#include "text/pattern_access.h"
#include "text/print_prepared.h"
#include "text/values.h"
#include "throw.h"

namespace {

[[gnu::always_inline]] inline printed_value value_of(const ka_date& date, const ka_language_texts& language)
{
    unsigned short month = 0, day = 0;
    short year = 0;
    ka_date::calc_calendar_date(date.julian_day(), &month, &day, &year);
    const int known_day = ka_date::is_julian_day(date.julian_day()) ? date.julian_day() : 0;
    return {
        {0, 0, 0, month, day}, 0, year, false, known_day, ka_time_and_date::default_time_zone(), language};
}

[[gnu::always_inline]] inline printed_value value_of(const ka_time& time, const ka_language_texts& language)
{
    return {{time.hours(), time.minutes(), time.seconds(), 0, 0},
            time.microseconds(),
            0,
            false,
            0,
            ka_time_and_date::default_time_zone(),
            language};
}

[[gnu::always_inline]] inline printed_value value_of(const ka_time_and_date& moment,
                                                     const ka_language_texts& language)
{
    return printed(moment, language);
}

template <typename Value>
std::string text_of(const ka_pattern& pattern, const Value& value)
{
    growing_text out;
    const char* const end =
        print_prepared(out.begin(), out, prepared(pattern), value_of(value, texts_of(pattern.language())));
    return std::move(out).str(end);
}

template <typename Value>
[[gnu::always_inline]] inline std::to_chars_result written(char* first, char* last, const ka_pattern& pattern,
                                                           const Value& value)
{
    text_buffer out(first, last);
    char* const end =
        print_prepared(first, out, prepared(pattern), value_of(value, texts_of(pattern.language())));
    if (out.is_full())
        return {last, std::errc::value_too_large};
    return {end, std::errc()};
}

bool is_date_exact(ka_told_fields told)
{
    using field = ka_format_field;
    return ka_missing_of_date(told) == nullptr &&
           (ka_tells(told, field::year) || ka_tells(told, field::year_with_era) ||
            ka_tells(told, field::year_of_era, field::era) ||
            ka_tells(told, field::century, field::year_of_century));
}

bool is_time_exact(ka_told_fields told, const ka_language_texts& language)
{
    using field = ka_format_field;
    const bool has_halves = !(**language.am).empty() && !(**language.pm).empty();
    return (ka_tells(told, field::hour) ||
            (has_halves && ka_tells(told, field::hour_of_12, field::half_of_day))) &&
           ka_tells(told, field::minute, field::second, field::microsecond);
}

}

ka_pattern::ka_pattern(const ka_pattern_text& format, const ka_language& language)
    : format_(format.text()), language_(language)
{
    const std::size_t place = ka_misplaced_code(format_);
    if (place != format_.npos)
        throw_error(ka_failure, {KA_SOURCE, __LINE__}, "No code of a pattern at ",
                    static_cast<unsigned long long>(place), " in ", std::string_view(format_));
    prepared_ = std::make_shared<const ka_prepared_format>(format_, texts_of(language_));
}

std::string ka_pattern::to_string(const ka_date& value) const { return text_of(*this, value); }

std::string ka_pattern::to_string(const ka_time& value) const { return text_of(*this, value); }

std::string ka_pattern::to_string(const ka_time_and_date& value) const { return text_of(*this, value); }

std::to_chars_result ka_pattern::to_chars(char* first, char* last, const ka_date& value) const
{
    return written(first, last, *this, value);
}

std::to_chars_result ka_pattern::to_chars(char* first, char* last, const ka_time& value) const
{
    return written(first, last, *this, value);
}

std::to_chars_result ka_pattern::to_chars(char* first, char* last, const ka_time_and_date& value) const
{
    return written(first, last, *this, value);
}

template <>
bool ka_pattern::is_exact<ka_date>() const noexcept
{
    return prepared_->unreadable_code == format_.npos && is_date_exact(prepared_->told) &&
           is_read_one_way(prepared_->printed, texts_of(language_), true);
}

template <>
bool ka_pattern::is_exact<ka_time>() const noexcept
{
    const ka_language_texts& language = texts_of(language_);
    return prepared_->unreadable_code == format_.npos && is_time_exact(prepared_->told, language) &&
           is_read_one_way(prepared_->printed, language, false);
}

template <>
bool ka_pattern::is_exact<ka_time_and_date>() const noexcept
{
    return is_exact<ka_date>() && is_time_exact(prepared_->told, texts_of(language_)) &&
           ka_tells(prepared_->told, ka_format_field::zone);
}
