#pragma once

#include <string>

/// The words of a language, where they stand now: names that are set later show.
struct language_texts {
    using text = const std::string* const*;

    /// Of 12 and of 7, from January and from Sunday on.
    text month_names, month_abbreviations;
    text weekday_names, weekday_abbreviations;
    text am, pm, ad, bc;
    /// The layouts for `%c`, `%x` and `%X`.
    text timedate, date, time;
};

/// What start has found for the user.
extern const language_texts user_texts;
