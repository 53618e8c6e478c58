#include <time/read_result.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <type_traits>

#include "throw.h"

static_assert(std::is_trivially_copyable_v<ka_read_failure>);

namespace {

/// A message in a fixed room, which it is sized to fit.
class short_text {
public:
    explicit short_text(char* at) noexcept : at_(at) {}

    void put(std::string_view text) noexcept { at_ = std::copy(text.begin(), text.end(), at_); }

    void put(std::size_t number) noexcept { at_ = std::to_chars(at_, at_ + most_digits, number).ptr; }

    /// As much of a text as there is room for, with nothing in it that a terminal obeys.
    void put_shown(std::string_view text, std::size_t most) noexcept
    {
        const std::string_view shown = text.substr(0, whole_characters(text, most));
        at_ = std::transform(shown.begin(), shown.end(), at_, [](char letter) {
            const auto byte = static_cast<unsigned char>(letter);
            return byte < 0x20 || byte == 0x7f ? '?' : letter;
        });
        if (shown.size() < text.size())
            put("...");
    }

    void end() noexcept { *at_ = '\0'; }

    static constexpr std::size_t most_digits = 20;

private:
    /// At most so many bytes, without the half of a character of UTF-8 at the end.
    static std::size_t whole_characters(std::string_view text, std::size_t most) noexcept
    {
        if (text.size() <= most)
            return text.size();
        std::size_t size = most;
        while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xc0) == 0x80 && most - size < 3)
            --size;
        return size;
    }

    char* at_;
};

constexpr std::size_t most_of_value = 40;
constexpr std::size_t most_of_text = 100;

constexpr std::string_view longest_symbol = "invalid_time_period";
constexpr std::string_view dots = "...";

}

ka_read_failure::ka_read_failure(int code, std::string_view text, std::size_t position, std::size_t length,
                                 std::string_view field) noexcept
    : position_(std::min(position, text.size())), length_(std::min(length, text.size() - position_)),
      code_(ka_time_varnel_error::symbol(code) != nullptr ? code : 0),
      field_size_(static_cast<unsigned char>(std::min(field.size(), sizeof field_)))
{
    static_assert(sizeof message_ > longest_symbol.size() + most_of_value + most_of_text + sizeof field_ +
                                        2 * dots.size() + short_text::most_digits +
                                        sizeof ": end of text at , , in ");
    std::memcpy(field_, field.data(), field_size_);
    short_text message(message_);
    message.put(ka_time_varnel_error::symbol(code_));
    message.put(": ");
    if (position_ == text.size())
        message.put("end of text");
    else
        message.put_shown(text.substr(position_, length_), most_of_value);
    message.put(" at ");
    message.put(position_);
    message.put(", ");
    message.put_shown({field_, field_size_}, sizeof field_);
    message.put(", in ");
    message.put_shown(text, most_of_text);
    message.end();
}

void ka_read_failure::raise() const
{
    // The symbol is put in front again, and the site behind.
    const char* const shown = std::strstr(message_, ": ") + 2;
    throw_error(static_cast<ka_error>(code_), {KA_SOURCE, __LINE__}, std::string_view(shown));
}
