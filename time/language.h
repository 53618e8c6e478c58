#pragma once

#include <memory>
#include <string>
#include <utility>

#include <time/export.h>

struct ka_language_texts;

/// The names and layouts of a language, for patterns that print and read in it.
///
///     #include <time/pattern.h>
///
///     const ka_pattern stamp("%d %B %Y", ka_language::english());
///     stamp.to_string(ka_date(7, 4, 2024));   // "04 July 2024", whatever the user's language
///
/// An object is a handle of texts that never change, copied like a pointer and
/// shared by threads; what was made with it keeps them alive.
class KA_TIME_VARNEL_API ka_language {
public:
    /// The language of one of the machine's locales, such as "fr_FR.UTF-8", in
    /// the encoding of that locale. Throws `failure` for one that the machine
    /// has not. The locale of the process and of its threads stays as it is.
    explicit ka_language(const std::string& locale);

    /// What the library has found for the user when it started, as all texts of
    /// dates and times have it. Names that are set later show (`ka_time::pm_name`
    /// and the like), under the same rule for threads.
    static ka_language user() noexcept;
    /// English, with the layouts of the C locale: for logs and protocols.
    static const ka_language& english();

    // Names. A number out of its range throws `invalid_month` or `invalid_weekday`.

    /// 1 (January) to 12.
    const std::string& month_name(unsigned short month) const;
    const std::string& month_abbreviation(unsigned short month) const;
    /// 1 (Sunday) to 7.
    const std::string& weekday_name(unsigned short weekday) const;
    const std::string& weekday_abbreviation(unsigned short weekday) const;
    /// Empty in a language that has no texts for the halves of a day.
    const std::string& am_name() const noexcept;
    const std::string& pm_name() const noexcept;

    // The formats behind `%c`, `%x` and `%X`.

    const std::string& time_and_date_layout() const noexcept;
    const std::string& date_layout() const noexcept;
    const std::string& time_layout() const noexcept;

private:
    friend struct ka_language_access;

    explicit ka_language(std::shared_ptr<const ka_language_texts> texts) noexcept : texts_(std::move(texts))
    {}

    std::shared_ptr<const ka_language_texts> texts_;
};
