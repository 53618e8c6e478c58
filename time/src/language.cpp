#include <time/language.h>

#include <cstddef>
#include <utility>

#include <time/date.h>

#include "platform/platform.h"
#include "text/language.h"
#include "text/layouts.h"
#include "text/translate.h"
#include "throw.h"

namespace {

/// The texts of a language that is not the user's, and where they stand.
class own_texts {
public:
    enum place {
        month_names = 0,
        month_abbreviations = 12,
        weekday_names = 24,
        weekday_abbreviations = 31,
        am = 38,
        pm,
        ad,
        bc,
        timedate,
        date,
        time,
        count
    };

    own_texts()
    {
        for (int i = 0; i < count; ++i)
            places_[i] = &texts_[i];
    }
    own_texts(const own_texts&) = delete;
    own_texts& operator=(const own_texts&) = delete;

    std::string& operator[](int at) { return texts_[at]; }

    void alternates(const alternate_numbers& numbers)
    {
        alternates_ = numbers;
        view_.alternates = &alternates_;
    }

    const ka_language_texts& view() const { return view_; }

private:
    std::string texts_[count];
    const std::string* places_[count];
    alternate_numbers alternates_;
    ka_language_texts view_ = {places_ + month_names,
                               places_ + month_abbreviations,
                               places_ + weekday_names,
                               places_ + weekday_abbreviations,
                               places_ + am,
                               places_ + pm,
                               places_ + ad,
                               places_ + bc,
                               places_ + timedate,
                               places_ + date,
                               places_ + time};
};

std::shared_ptr<const ka_language_texts> shared(const std::shared_ptr<const own_texts>& texts)
{
    return {texts, &texts->view()};
}

std::shared_ptr<const ka_language_texts> english_texts()
{
    const auto texts = std::make_shared<own_texts>();
    for (int i = 0; i < 12; ++i) {
        (*texts)[own_texts::month_names + i] = english.month_names[i];
        (*texts)[own_texts::month_abbreviations + i] = english.month_abbreviations[i];
    }
    for (int i = 0; i < 7; ++i) {
        (*texts)[own_texts::weekday_names + i] = english.weekday_names[i];
        (*texts)[own_texts::weekday_abbreviations + i] = english.weekday_abbreviations[i];
    }
    (*texts)[own_texts::am] = english.am;
    (*texts)[own_texts::pm] = english.pm;
    (*texts)[own_texts::ad] = english.ad;
    (*texts)[own_texts::bc] = english.bc;
    (*texts)[own_texts::timedate] = english.timedate;
    (*texts)[own_texts::date] = english.date;
    (*texts)[own_texts::time] = english.time;
    return shared(texts);
}

/// Where the runtime tells no layouts, they are read back from what it prints.
void find_layouts(const platform::named_locale& locale, own_texts& texts)
{
    constexpr int places[] = {own_texts::timedate, own_texts::date, own_texts::time};
    constexpr const char* conversions[] = {"%c", "%x", "%X"};
    const probe_names names = {texts[own_texts::month_names + 6], texts[own_texts::month_abbreviations + 6],
                               texts[own_texts::weekday_names + 5],
                               texts[own_texts::weekday_abbreviations + 5], texts[own_texts::pm]};
    locale_layouts layouts;
    for (std::size_t i = 0; i < layouts.texts.size(); ++i)
        layouts.texts[i] = layout_of_probe(locale_text(locale, conversions[i], layout_probe()), names);
    layouts.end_circles();
    for (std::size_t i = 0; i < layouts.texts.size(); ++i)
        texts[places[i]] = std::move(layouts.texts[i]);
}

std::shared_ptr<const ka_language_texts> texts_of(const std::string& name)
{
    const platform::named_locale locale(name.c_str());
    if (!locale.is_known())
        throw_error(ka_failure, {KA_SOURCE, __LINE__}, "Unknown locale: ", std::string_view(name));

    const auto text = [&](const char* code, const std::tm& fields) {
        return locale_text(locale, code, fields);
    };
    const auto texts = std::make_shared<own_texts>();
    std::tm fields = {};
    fields.tm_mday = 1;
    for (int i = 0; i < 12; ++i) {
        fields.tm_mon = i;
        (*texts)[own_texts::month_names + i] = text("%B", fields);
        (*texts)[own_texts::month_abbreviations + i] = text("%b", fields);
    }
    for (int i = 0; i < 7; ++i) {
        fields.tm_wday = i;
        (*texts)[own_texts::weekday_names + i] = text("%A", fields);
        (*texts)[own_texts::weekday_abbreviations + i] = text("%a", fields);
    }
    fields.tm_hour = 8;
    (*texts)[own_texts::am] = text("%p", fields);
    fields.tm_hour = 18;
    (*texts)[own_texts::pm] = text("%p", fields);
    (*texts)[own_texts::ad] = english.ad;
    (*texts)[own_texts::bc] = english.bc;
    if (locale.layout('c') == nullptr) {
        find_layouts(locale, *texts);
        return shared(texts);
    }
    (*texts)[own_texts::timedate] = translated_layout(locale, 'c');
    (*texts)[own_texts::date] = translated_layout(locale, 'x');
    (*texts)[own_texts::time] = translated_layout(locale, 'X');
    texts->alternates(alternates_of(locale));
    return shared(texts);
}

}

ka_language::ka_language(const std::string& locale) : texts_(texts_of(locale)) {}

// They are the library's and need no count.
ka_language ka_language::user() noexcept
{
    return ka_language(
        std::shared_ptr<const ka_language_texts>(std::shared_ptr<void>(), &ka_locale_text::user));
}

const ka_language& ka_language::english()
{
    static const ka_language language(english_texts());
    return language;
}

const std::string& ka_language::month_name(unsigned short month) const
{
    if (!ka_date::is_month(month))
        throw_error(ka_invalid_month, {KA_SOURCE, __LINE__}, month);
    return *texts_->month_names[month - 1];
}

const std::string& ka_language::month_abbreviation(unsigned short month) const
{
    if (!ka_date::is_month(month))
        throw_error(ka_invalid_month, {KA_SOURCE, __LINE__}, month);
    return *texts_->month_abbreviations[month - 1];
}

const std::string& ka_language::weekday_name(unsigned short weekday) const
{
    if (!ka_date::is_weekday(weekday))
        throw_error(ka_invalid_weekday, {KA_SOURCE, __LINE__}, weekday);
    return *texts_->weekday_names[weekday - 1];
}

const std::string& ka_language::weekday_abbreviation(unsigned short weekday) const
{
    if (!ka_date::is_weekday(weekday))
        throw_error(ka_invalid_weekday, {KA_SOURCE, __LINE__}, weekday);
    return *texts_->weekday_abbreviations[weekday - 1];
}

const std::string& ka_language::am_name() const noexcept { return **texts_->am; }

const std::string& ka_language::pm_name() const noexcept { return **texts_->pm; }

const std::string& ka_language::time_and_date_layout() const noexcept { return **texts_->timedate; }

const std::string& ka_language::date_layout() const noexcept { return **texts_->date; }

const std::string& ka_language::time_layout() const noexcept { return **texts_->time; }
