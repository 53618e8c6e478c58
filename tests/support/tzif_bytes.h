#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// A tz file as its parts: RFC 9636. What is put together need not be right.
struct tzif_bytes {
    struct change {
        long long at;
        int type;
    };
    struct type {
        int east;
        bool is_dst;
        std::string name;
    };
    struct leap {
        long long at;
        int total;
    };

    char version = '2';
    std::vector<change> changes;
    std::vector<type> types{{0, false, "UTC"}};
    std::vector<leap> leaps;
    std::string footer = "\n\n";

    static std::string number(long long value, int bytes)
    {
        std::string text;
        while (bytes-- > 0)
            text += static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * bytes) & 0xff);
        return text;
    }

    std::string header() const
    {
        std::size_t characters = 0;
        for (const type& one : types)
            characters += one.name.size() + 1;
        std::string text = "TZif";
        text.append(1, version).append(15, '\0');
        for (const std::size_t count :
             {std::size_t{0}, std::size_t{0}, leaps.size(), changes.size(), types.size(), characters})
            text += number(static_cast<long long>(count), 4);
        return text;
    }

    std::string block(int time_size) const
    {
        std::string text, names;
        for (const change& one : changes)
            text += number(one.at, time_size);
        for (const change& one : changes)
            text += number(one.type, 1);
        for (const type& one : types) {
            text +=
                number(one.east, 4) + number(one.is_dst, 1) + number(static_cast<long long>(names.size()), 1);
            names.append(one.name).append(1, '\0');
        }
        text += names;
        for (const leap& one : leaps)
            text += number(one.at, time_size) + number(one.total, 4);
        return text;
    }

    /// All of the file. The first block of a later version has one type and nothing else.
    std::string file() const
    {
        if (version == '\0')
            return header() + block(4);
        tzif_bytes first;
        first.version = version;
        return first.header() + first.block(4) + header() + block(8) + footer;
    }
};
