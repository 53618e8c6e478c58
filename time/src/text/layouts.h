#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include <time/inline/codes.h>

/// The layouts behind %c, %x and %X, as they are found at start.
///
/// A "%" that a locale prints stays in its layout and is read as the start of
/// a code there, so that one layout can hold another. None may come round to
/// itself, as printing it would never end.
struct locale_layouts {
    static constexpr std::string_view letters = "cxX";

    /// In the order of the letters.
    std::array<std::string, letters.size()> texts;

    /// Makes plain text of each code that leads a layout back to itself.
    void end_circles()
    {
        const locale_layouts found = *this;
        for (std::size_t layout = 0; layout < texts.size(); ++layout) {
            std::string& text = texts[layout];
            text.clear();
            for (std::string_view rest = found.texts[layout]; !rest.empty();) {
                const ka_format_piece piece = ka_next_piece(rest);
                const std::size_t held = layout_of(piece);
                if (held != letters.npos && (held == layout || found.reaches(held, layout)))
                    text += '%';
                text += piece.text;
            }
        }
    }

private:
    static std::size_t layout_of(const ka_format_piece& piece)
    {
        return piece.is_code && piece.letter != '\0' ? letters.find(piece.letter) : letters.npos;
    }

    bool holds(std::size_t layout, std::size_t other) const
    {
        for (std::string_view rest = texts[layout]; !rest.empty();)
            if (layout_of(ka_next_piece(rest)) == other)
                return true;
        return false;
    }

    /// Directly, or by the third layout.
    bool reaches(std::size_t from, std::size_t to) const
    {
        const std::size_t third = 3 - from - to;
        return holds(from, to) || (holds(from, third) && holds(third, to));
    }
};
