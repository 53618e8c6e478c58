#pragma once

#include <cstring>
#include <string>
#include <string_view>

/// Text under construction: on the stack as long as it is short, in a string
/// from then on. So a text costs the one allocation of its result, and a width
/// that no memory could hold ends in the string's own exception.
class text {
public:
    std::size_t size() const noexcept { return spilled_ ? large_.size() : size_; }

    void put(char letter)
    {
        if (has_room(1))
            small_[size_++] = letter;
        else
            put(std::string_view(&letter, 1));
    }

    void put(std::string_view added)
    {
        if (!has_room(added.size())) {
            spill();
            large_.append(added);
            return;
        }
        std::memcpy(small_ + size_, added.data(), added.size());
        size_ += added.size();
    }

    void insert(std::size_t place, std::size_t count, char fill)
    {
        if (!has_room(count)) {
            spill();
            large_.insert(place, count, fill);
            return;
        }
        std::memmove(small_ + place + count, small_ + place, size_ - place);
        std::memset(small_ + place, fill, count);
        size_ += count;
    }

    std::string str() && { return spilled_ ? std::move(large_) : std::string(small_, size_); }

private:
    bool has_room(std::size_t count) const noexcept { return !spilled_ && count <= sizeof small_ - size_; }

    void spill()
    {
        if (!spilled_)
            large_.assign(small_, size_);
        spilled_ = true;
    }

    char small_[256];
    std::size_t size_ = 0;
    bool spilled_ = false;
    std::string large_;
};
