#pragma once

#include <array>
#include <cstddef>
#include <ctime>
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
            texts[layout].clear();
            for (ka_format_pieces pieces(found.texts[layout]); !pieces.is_at_end();) {
                const std::string_view rest = pieces.rest();
                const std::size_t held = layout_of(pieces.next());
                if (held != letters.npos && (held == layout || found.reaches(held, layout)))
                    texts[layout] += '%';
                texts[layout] += rest.substr(0, rest.size() - pieces.rest().size());
            }
        }
    }

private:
    static std::size_t layout_of(const ka_format_piece& piece)
    {
        return piece.is_code && !piece.is_cut_off ? letters.find(piece.letter) : letters.npos;
    }

    bool holds(std::size_t layout, std::size_t other) const
    {
        for (ka_format_pieces pieces(texts[layout]); !pieces.is_at_end();)
            if (layout_of(pieces.next()) == other)
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

/// The record that a locale's layouts are read back from. All of its fields
/// print differently; the weekday is not that of the date, and need not be.
std::tm layout_probe();

/// What the names of the probe are in the locale.
struct probe_names {
    const std::string& month;
    const std::string& month_abbreviation;
    const std::string& weekday;
    const std::string& weekday_abbreviation;
    const std::string& pm;
};

/// The layout that has printed the text of the probe.
std::string layout_of_probe(std::string text, const probe_names& names);

/// Puts the replacement where the text has the other first. What is empty is nowhere.
void replace_first(std::string& text, std::string_view search, std::string_view replacement);
