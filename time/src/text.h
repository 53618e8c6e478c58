#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

/// Text under construction: on the stack as long as it is short, in a string
/// from then on. So a text costs the one allocation of its result, and a width
/// that no memory could hold ends in the string's own exception.
///
/// The end of the text is with the writer, who hands it in and gets it back,
/// moved where the text had to move:
///
///     char* at = out.begin();
///     at = out.put(at, "27 ");
///     at = write_two_places(out.room(at, 2), month);
class text {
public:
    text() noexcept : begin_(small_), limit_(small_ + sizeof small_) {}
    text(const text&) = delete;
    text& operator=(const text&) = delete;

    char* begin() noexcept { return begin_; }
    std::size_t size(const char* at) const noexcept { return static_cast<std::size_t>(at - begin_); }

    /// The same end, with room for so many characters behind it.
    char* room(char* at, std::size_t count)
    {
        return count <= static_cast<std::size_t>(limit_ - at) ? at : moved(at, count);
    }

    char* put(char* at, std::string_view added)
    {
        at = room(at, added.size());
        std::memcpy(at, added.data(), added.size());
        return at + added.size();
    }

    /// Puts fill characters at a place of the text, in front of what stands there.
    char* insert(char* at, std::size_t place, std::size_t count, char fill)
    {
        at = room(at, count);
        std::memmove(begin_ + place + count, begin_ + place, size(at) - place);
        std::memset(begin_ + place, fill, count);
        return at + count;
    }

    [[gnu::always_inline]] std::string str(const char* at) &&
    {
        if (begin_ == small_) [[likely]]
            return std::string(small_, size(at));
        large_.resize(size(at));
        return std::move(large_);
    }

private:
    /// To a string, or to a longer one, of twice the room at least.
    [[gnu::cold, gnu::noinline]] char* moved(char* at, std::size_t count)
    {
        const std::size_t used = size(at);
        const std::size_t held = static_cast<std::size_t>(limit_ - begin_);
        if (begin_ == small_)
            large_.assign(small_, used);
        else
            large_.resize(used);
        large_.append(std::max(count, held), '\0');
        begin_ = large_.data();
        limit_ = begin_ + large_.size();
        return begin_ + used;
    }

    char* begin_;
    char* limit_;
    std::string large_;
    char small_[256];
};
