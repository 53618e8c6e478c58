#include "tzif.h"

#include <algorithm>
#include <cstdint>

#include "posix_text.h"

namespace world {

namespace {

constexpr std::string_view magic = "TZif";
constexpr std::size_t header_size = 44;
constexpr std::size_t type_size = 6;
/// Far more than any zone has: no reading walks through more.
constexpr std::uint64_t most_changes = 4096;
constexpr std::uint64_t most_types = 250;
constexpr std::size_t longest_abbreviation = 255;
/// RFC 9636, section 3.2: offsets lie between -25 and 26 hours.
constexpr int lowest_offset = -89999;
constexpr int highest_offset = 93599;

std::uint64_t big_endian(std::string_view bytes) noexcept
{
    std::uint64_t number = 0;
    for (const char byte : bytes)
        number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

/// The counts of a header, each below 2^32.
struct counts {
    std::uint64_t universal, standard, leaps, changes, types, characters;

    /// The size of the block that follows, whose times have so many bytes.
    std::uint64_t block_size(std::uint64_t time_size) const noexcept
    {
        return changes * (time_size + 1) + types * type_size + characters + leaps * (time_size + 4) +
               standard + universal;
    }
};

class tzif_reader {
public:
    tzif_reader(std::string_view bytes, zone_data& data) noexcept : bytes_(bytes), data_(data) {}

    std::optional<fault> read()
    {
        read_all();
        return fault_;
    }

private:
    void refuse(const char* what, std::size_t place) noexcept
    {
        if (!fault_)
            fault_ = {what, place};
    }

    void read_all()
    {
        const char version = read_header();
        if (fault_ || version == '\0') {
            read_block(4);
            if (!fault_ && next_ != bytes_.size())
                refuse("more bytes than a file of version 1 has", next_);
            return;
        }
        // The first block is for readers of version 1.
        skip(counts_.block_size(4));
        read_header();
        read_block(8);
        read_footer();
    }

    bool has(std::uint64_t size) const noexcept { return size <= bytes_.size() - next_; }

    void skip(std::uint64_t size) noexcept
    {
        if (!has(size))
            refuse("the file ends in a block of data", bytes_.size());
        else
            next_ += static_cast<std::size_t>(size);
    }

    /// What the caller knows to be there.
    std::string_view take(std::size_t size) noexcept
    {
        next_ += size;
        return bytes_.substr(next_ - size, size);
    }

    std::int64_t take_time(std::size_t size) noexcept
    {
        const std::uint64_t number = big_endian(take(size));
        return size == 4 ? static_cast<std::int32_t>(number) : static_cast<std::int64_t>(number);
    }

    char read_header()
    {
        if (fault_)
            return '\0';
        const std::size_t start = next_;
        if (bytes_.substr(start, magic.size()) != magic)
            refuse("no tz file", start);
        if (!has(header_size)) {
            refuse("the file ends in a header", bytes_.size());
            return '\0';
        }
        take(magic.size());
        const char version = take(1)[0];
        if (version != '\0' && (version < '2' || '4' < version))
            refuse("a version other than 1 to 4", start + magic.size());
        take(15);
        for (std::uint64_t* count : {&counts_.universal, &counts_.standard, &counts_.leaps, &counts_.changes,
                                     &counts_.types, &counts_.characters})
            *count = big_endian(take(4));
        return version;
    }

    void read_block(std::size_t time_size)
    {
        if (fault_)
            return;
        const std::size_t counts_at = next_ - 24;
        if (!has(counts_.block_size(time_size)))
            return refuse("counts for more bytes than there are", counts_at);
        if (counts_.types == 0 || counts_.types > most_types)
            return refuse("a count of types other than 1 to 250", counts_at + 16);
        if (counts_.changes > most_changes)
            return refuse("more than 4096 changes", counts_at + 12);
        if ((counts_.universal != 0 && counts_.universal != counts_.types) ||
            (counts_.standard != 0 && counts_.standard != counts_.types))
            return refuse("a count of marks other than that of types", counts_at);
        read_times(time_size);
        read_types();
        take_out_leaps(time_size);
        take(static_cast<std::size_t>(counts_.standard + counts_.universal));
    }

    void read_times(std::size_t time_size)
    {
        const auto count = static_cast<std::size_t>(counts_.changes);
        data_.at.resize(count);
        std::int64_t last = INT64_MIN;
        for (std::size_t i = 0; i < count; ++i) {
            const std::int64_t time = take_time(time_size);
            if (i != 0 && time <= last)
                refuse("a change that is not after the one before", next_ - time_size);
            last = time;
            data_.at[i] = time;
        }
        data_.type_of.resize(count);
        for (unsigned char& type : data_.type_of) {
            type = static_cast<unsigned char>(take(1)[0]);
            if (type >= counts_.types)
                refuse("a change to a type that is not there", next_ - 1);
        }
    }

    void read_types()
    {
        const auto count = static_cast<std::size_t>(counts_.types);
        const std::size_t names_at = next_ + count * type_size;
        const std::string_view names = bytes_.substr(names_at, static_cast<std::size_t>(counts_.characters));
        data_.types.resize(count);
        for (local_type& type : data_.types) {
            const std::size_t start = next_;
            const auto offset = static_cast<std::int32_t>(big_endian(take(4)));
            const auto flag = static_cast<unsigned char>(take(1)[0]);
            const auto name = static_cast<unsigned char>(take(1)[0]);
            if (offset < lowest_offset || highest_offset < offset)
                refuse("an offset outside -25 to 26 hours", start);
            if (flag > 1)
                refuse("a mark other than 0 and 1", start + 4);
            const std::string_view found = names.substr(std::min<std::size_t>(name, names.size()));
            const std::size_t length = found.find('\0');
            // What has no end is longer than anything.
            if (length > longest_abbreviation)
                return refuse("a name that has no end", start + 5);
            type = {offset, flag != 0, std::string(found.substr(0, length))};
        }
        take(names.size());
    }

    /// Where leaps are counted, a change comes as many seconds late as there
    /// were leaps before it.
    void take_out_leaps(std::size_t time_size)
    {
        if (fault_)
            return;
        std::int64_t correction = 0;
        std::size_t change = 0;
        std::int64_t last = INT64_MIN;
        for (std::uint64_t i = 0; i < counts_.leaps; ++i) {
            const std::int64_t time = take_time(time_size);
            const auto next_correction = static_cast<std::int32_t>(big_endian(take(4)));
            if (i != 0 && time <= last)
                return refuse("a leap second that is not after the one before", next_ - time_size - 4);
            last = time;
            change = correct(change, time, correction);
            correction = next_correction;
        }
        correct(change, INT64_MAX, correction);
    }

    /// Corrects the changes from one on that come before a time; returns
    /// the first that is not.
    std::size_t correct(std::size_t change, std::int64_t until, std::int64_t correction) noexcept
    {
        for (; change < data_.at.size() && data_.at[change] < until; ++change)
            data_.at[change] = static_cast<std::int64_t>(static_cast<std::uint64_t>(data_.at[change]) -
                                                         static_cast<std::uint64_t>(correction));
        return change;
    }

    void read_footer()
    {
        if (fault_)
            return;
        const std::size_t start = next_;
        const std::string_view footer = bytes_.substr(start);
        if (footer.size() < 2 || footer.front() != '\n' || footer.find('\n', 1) != footer.size() - 1)
            return refuse("a footer that is no line, or not the end", start);
        if (footer.size() == 2)
            return;
        if (const auto wrong = read_posix_text(footer.substr(1, footer.size() - 2), data_.rules))
            return refuse(wrong->what, start + 1 + wrong->place);
        data_.has_rules = true;
    }

    std::string_view bytes_;
    zone_data& data_;
    std::size_t next_ = 0;
    counts counts_ = {};
    std::optional<fault> fault_;
};

}

bool is_tzif(std::string_view bytes) noexcept { return bytes.starts_with(magic); }

std::optional<fault> read_tzif(std::string_view bytes, zone_data& data)
{
    return tzif_reader(bytes, data).read();
}

}
