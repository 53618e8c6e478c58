#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

/// A text of more than 16 bytes. Not compiled into its callers, which keep
/// nothing then over the call of `memcpy`.
[[gnu::noinline]] inline char* copy_long(char* at, std::string_view text) noexcept
{
    std::memcpy(at, text.data(), text.size());
    return at + text.size();
}

inline void copy_four(char* at, const char* text) noexcept
{
    std::uint32_t four = 0;
    std::memcpy(&four, text, sizeof four);
    std::memcpy(at, &four, sizeof four);
}

/// Copies a short text by copies that overlap, of which a name costs no call to
/// `memcpy`, and no branch that its length decides.
inline char* copy_name(char* at, std::string_view name) noexcept
{
    const std::size_t size = name.size();
    const char* const text = name.data();
    if (size - 4 <= 12) {
        const std::size_t step = size / 8 * 4, last = size - 4;
        copy_four(at, text);
        copy_four(at + step, text + step);
        copy_four(at + last - step, text + last - step);
        copy_four(at + last, text + last);
    } else if (size - 2 <= 2) {
        std::uint16_t first = 0, last = 0;
        std::memcpy(&first, text, 2);
        std::memcpy(&last, text + size - 2, 2);
        std::memcpy(at, &first, 2);
        std::memcpy(at + size - 2, &last, 2);
    } else if (size == 1) {
        *at = *text;
    } else if (size != 0) {
        return copy_long(at, name);
    }
    return at + size;
}

/// Where a text is written: a string that grows, or a caller's room.
///
/// The end of the text is with the writer, who hands it in and gets it back,
/// moved where the text had to move:
///
///     char* at = out.begin();
///     at = out.put(at, "27 ");
///     if (out.has_room(at, 2))
///         at = write_two_places(at, month);
class sink {
public:
    sink(const sink&) = delete;
    sink& operator=(const sink&) = delete;

    char* begin() const noexcept { return begin_; }
    std::size_t size(const char* at) const noexcept { return static_cast<std::size_t>(at - begin_); }
    /// Whether a caller's room was too small. From then on nothing is written.
    bool is_full() const noexcept { return state_ == state::full; }

    /// Whether there is room for so many characters behind the end; a string makes it.
    bool has_room(char*& at, std::size_t count)
    {
        if (count <= static_cast<std::size_t>(limit_ - at)) [[likely]]
            return true;
        at = grown(at, count);
        return count <= static_cast<std::size_t>(limit_ - at);
    }

    char* put(char* at, std::string_view added)
    {
        if (added.size() <= static_cast<std::size_t>(limit_ - at)) [[likely]]
            return copy_name(at, added);
        return put_in_more_room(at, added);
    }

    /// Puts fill characters at a place of the text, in front of what stands there.
    char* insert(char* at, std::size_t place, unsigned long long count, char fill)
    {
        // More than memory has numbers for is as far beyond it as the highest number.
        const auto added = static_cast<std::size_t>(
            std::min<unsigned long long>(count, std::numeric_limits<std::size_t>::max()));
        if (!room_for(at, added))
            return at;
        std::memmove(begin_ + place + added, begin_ + place, size(at) - place);
        std::memset(begin_ + place, fill, added);
        return at + added;
    }

protected:
    enum class state : unsigned char { growing, fixed, full };

    sink(char* begin, char* limit, state kind) noexcept : begin_(begin), limit_(limit), state_(kind) {}
    ~sink() = default;

    char* begin_;
    char* limit_;

private:
    [[gnu::cold, gnu::noinline]] char* put_in_more_room(char* at, std::string_view added)
    {
        return room_for(at, added.size()) ? copy_name(at, added) : at;
    }

    /// The same end, with room for so many characters behind it where that can be had.
    char* grown(char* at, std::size_t count);

    bool room_for(char*& at, std::size_t count)
    {
        if (has_room(at, count)) [[likely]]
            return true;
        state_ = state::full;
        limit_ = at;
        return false;
    }

    state state_;
};

/// A text on the stack as long as it is short, in a string from then on. So it
/// costs the one allocation of its result, and a width that no memory could
/// hold ends in the string's own exception.
class growing_text : public sink {
public:
    growing_text() noexcept : sink(small_, small_ + sizeof small_, state::growing) {}
    ~growing_text()
    {
        if (begin_ != small_) [[unlikely]]
            std::destroy_at(&large_);
    }

    [[gnu::always_inline]] std::string str(const char* at) &&
    {
        if (begin_ == small_) [[likely]]
            return std::string(small_, size(at));
        large_.resize(size(at));
        return std::move(large_);
    }

private:
    friend class sink;

    /// To a string, or to a longer one, of twice the room at least.
    [[gnu::cold, gnu::noinline]] char* moved(char* at, std::size_t count)
    {
        const std::size_t used = size(at);
        const std::size_t added = std::max(count, static_cast<std::size_t>(limit_ - begin_));
        if (begin_ == small_) {
            std::string text(small_, used);
            text.append(added, '\0');
            std::construct_at(&large_, std::move(text));
        } else {
            large_.resize(used);
            large_.append(added, '\0');
        }
        begin_ = large_.data();
        limit_ = begin_ + large_.size();
        return begin_ + used;
    }

    union {
        /// There from the first move on.
        std::string large_;
    };
    char small_[256];
};

/// A caller's room, which is filled to its last character.
class text_buffer : public sink {
public:
    text_buffer(char* first, char* last) noexcept : sink(first, last, state::fixed) {}
};

inline char* sink::grown(char* at, std::size_t count)
{
    return state_ == state::growing ? static_cast<growing_text*>(this)->moved(at, count) : at;
}
