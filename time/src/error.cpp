#include <time/error.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iterator>

#include "throw.h"

namespace {

struct error_row {
    const char* symbol;
    const char* description;
};

/// The index of a row is its code.
constexpr error_row error_table[] = {
    {"failure", "Requested operation failed."},
    {"invalid_time", "Invalid time value."},
    {"invalid_time_period", "Invalid time period."},
    {"invalid_date", "Invalid date."},
    {"invalid_day", "Invalid day."},
    {"invalid_weekday", "Invalid weekday."},
    {"invalid_week", "Invalid week."},
    {"invalid_month", "Invalid month."},
    {"invalid_year", "Invalid year."},
    {"divide_by_zero", "Division by zero failure."},
};
constexpr int error_count = std::size(error_table);
static_assert(error_count == ka_divide_by_zero + 1);

constexpr error_row row_of(int code)
{
    return 0 <= code && code < error_count ? error_table[code] : error_row{nullptr, nullptr};
}

}

ka_time_varnel_error::ka_time_varnel_error(int code, const char* text) noexcept
    : ka_varnel_error(text), code_(code)
{}

ka_time_varnel_error::ka_time_varnel_error(const ka_time_varnel_error&) noexcept = default;
ka_time_varnel_error::ka_time_varnel_error(ka_time_varnel_error&&) noexcept = default;
ka_time_varnel_error& ka_time_varnel_error::operator=(const ka_time_varnel_error&) noexcept = default;
ka_time_varnel_error& ka_time_varnel_error::operator=(ka_time_varnel_error&&) noexcept = default;
ka_time_varnel_error::~ka_time_varnel_error() = default;

int ka_time_varnel_error::code() const noexcept { return code_; }

const char* ka_time_varnel_error::symbol(int code) noexcept { return row_of(code).symbol; }

const char* ka_time_varnel_error::description(int code) noexcept { return row_of(code).description; }

message::message(ka_error code) noexcept
{
    put(std::string_view(error_table[code].symbol));
    put(": ");
}

void message::put(std::string_view text) noexcept
{
    const std::size_t count = std::min(text.size(), sizeof text_ - 1 - size_);
    std::memcpy(text_ + size_, text.data(), count);
    size_ += count;
}

void message::put(long long number) noexcept
{
    char digits[20];
    const char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    put(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

void message::put(unsigned long long number) noexcept
{
    char digits[20];
    const char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    put(std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

void message::put(throw_site site) noexcept
{
    put(" [");
    put(std::string_view(site.file));
    put(":");
    put(site.line);
    put("]");
}
