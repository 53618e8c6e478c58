#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

/// Numbers that layouts of some languages write in a way of their own. Such a
/// layout has, behind the "%", the place in `letters` from 1 on for the code, and
/// behind all of these the places in `unpadded`.
struct alternate_numbers {
    /// Codes whose number is written in `digits`, and last the year of the era.
    static constexpr std::string_view letters = "deHImMSyCY";
    /// Codes whose number is written without a zero in front.
    static constexpr std::string_view unpadded = "dHIjmMSy";

    /// What stands behind the "%" for such a code.
    static constexpr char unpadded_letter(std::size_t place)
    {
        return static_cast<char>(letters.size() + place + 1);
    }
    /// The code that such a letter stands for, or NUL.
    static constexpr char unpadded_code(char letter)
    {
        const auto place = static_cast<std::size_t>(static_cast<unsigned char>(letter)) - letters.size() - 1;
        return place < unpadded.size() ? unpadded[place] : '\0';
    }

    std::array<std::string, 100> digits;
    /// From the year to that of the era.
    int era_offset = 0;
};

/// The words of a language, where they stand now: of the user's, names that are
/// set later show.
struct ka_language_texts {
    using text = const std::string* const*;

    /// Of 12 and of 7, from January and from Sunday on.
    text month_names, month_abbreviations;
    text weekday_names, weekday_abbreviations;
    text am, pm, ad, bc;
    /// The layouts for `%c`, `%x` and `%X`.
    text timedate, date, time;
    const alternate_numbers* alternates = nullptr;
};

/// What start has found.
struct ka_locale_text {
    /// The user's language.
    static const ka_language_texts user;
};

/// English, which every reader understands beside its language.
struct english_words {
    std::string_view month_names[12] = {"January",   "February", "March",    "April",
                                        "May",       "June",     "July",     "August",
                                        "September", "October",  "November", "December"};
    std::string_view month_abbreviations[12] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::string_view weekday_names[7] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                         "Thursday", "Friday", "Saturday"};
    std::string_view weekday_abbreviations[7] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    std::string_view am = "AM", pm = "PM", ad = "A.D.", bc = "B.C.";
    std::string_view timedate = "%a %b %e %H:%M:%S %f", date = "%m/%d/%y", time = "%H:%M:%S";
};
inline constexpr english_words english;
