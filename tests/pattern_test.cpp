#include <string>
#include <system_error>

#include <gtest/gtest.h>

#include <time/pattern.h>
#include <time/time_varnel.h>

#include "expect_error.h"

namespace {

const ka_time_and_date moment(ka_time(18, 28, 38, 123), ka_date(7, 4, 2024), ka_time_zone::eastern());

TEST(pattern, prints_what_to_string_prints)
{
    EXPECT_EQ(ka_pattern("%A %c %Z").to_string(moment), moment.to_string("%A %c %Z"));
    EXPECT_EQ(ka_pattern("%H%Y%Z").to_string(moment.time()), "180");
    expect_error("invalid_month", "0", "time/src/date", [] { ka_pattern("%B").to_string(ka_time()); });
    char none = '#';
    const ka_pattern endless(std::string("%18446744073709551615d"));
    EXPECT_EQ(endless.to_chars(&none, &none, moment).ec, std::errc::value_too_large);
    EXPECT_EQ(none, '#');
}

TEST(pattern, refuses_what_is_no_code)
{
    const struct {
        std::string format, place;
    } rows[] = {{"%Y-%Q", "3"}, {"100 %", "4"}, {"%-12", "0"}, {"%5z", "0"}, {std::string("a\0%E", 4), "2"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.format);
        try {
            ka_pattern{row.format};
            ADD_FAILURE() << "nothing was thrown";
        } catch (const ka_time_varnel_error& error) {
            EXPECT_EQ(error.code(), ka_failure);
            EXPECT_NE(std::string(error.what()).find("at " + row.place + " in "), std::string::npos);
        }
    }
}

TEST(language, names_and_layouts)
{
    const ka_language& english = ka_language::english();
    EXPECT_EQ(english.month_name(7), "July");
    EXPECT_EQ(english.month_abbreviation(12), "Dec");
    EXPECT_EQ(english.weekday_name(1), "Sunday");
    EXPECT_EQ(english.weekday_abbreviation(7), "Sat");
    EXPECT_EQ(english.date_layout(), "%m/%d/%y");
    EXPECT_EQ(&ka_language::user().pm_name(), &ka_time::pm_name());
    expect_error("invalid_month", "13", "time/src/language", [&] { english.month_name(13); });
    expect_error("invalid_weekday", "0", "time/src/language", [&] { english.weekday_abbreviation(0); });
    expect_error("failure", "Unknown locale: xx_XX.UTF-8", "time/src/language",
                 [] { ka_language("xx_XX.UTF-8"); });

    const struct {
        const char *locale, *text;
    } rows[] = {
#ifdef _WIN32
        // The regional settings of that system, read back from what they print.
        {"C", "Thu Jul   4 18:28:38 2024|07/04/24|18:28:38|Thursday July"},
        {"German_Germany.1252", " 4.07.2024 18:28:38| 4.07.2024|18:28:38|Donnerstag Juli"},
        {"de_DE.UTF-8", " 4.07.2024 18:28:38| 4.07.2024|18:28:38|Donnerstag Juli"},
        {"en_US.UTF-8", "07/ 4/2024  6:28:38 PM|07/ 4/2024| 6:28:38 PM|Thursday July"},
        {"fr_FR.UTF-8", "04/07/2024 18:28:38|04/07/2024|18:28:38|jeudi juillet"},
        {"ja_JP.UTF-8", "2024/07/ 4 18:28:38|2024/07/ 4|18:28:38|木曜日 7月"},
#else
        {"C", "Thu Jul  4 18:28:38 2024|07/04/24|18:28:38|Thursday July"},
        {"de_DE.UTF-8", "Do 04 Jul 2024 18:28:38 EDT4|04.07.2024|18:28:38|Donnerstag Juli"},
        {"en_US.UTF-8", "Thu 04 Jul 2024 06:28:38 PM EDT4|07/04/2024|06:28:38 PM|Thursday July"},
        {"fr_FR.UTF-8", "jeu. 04 juil. 2024 18:28:38|04/07/2024|18:28:38|jeudi juillet"},
        {"ja_JP.UTF-8", "2024年07月04日 18時28分38秒|2024年07月04日|18時28分38秒|木曜日 7月"},
#endif
    };
    for (const auto& row : rows)
        EXPECT_EQ(ka_pattern("%c|%x|%X|%A %B", ka_language(row.locale)).to_string(moment), row.text);
}

TEST(language, lives_as_long_as_a_pattern_of_it)
{
    const ka_pattern pattern("%B", [] { return ka_language("fr_FR.UTF-8"); }());
    const ka_pattern copy = pattern;
    EXPECT_EQ(copy.to_string(moment), "juillet");
}

}
