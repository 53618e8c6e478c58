#include <clocale>
#include <ctime>
#include <iostream>
#include <string>
#include <time/time_varnel.h>

// Tells, for the locale of the environment, how far the texts of `%x`, `%X` and `%c`
// are those of the C runtime: a line each of code, kind and an example of both.

namespace {

std::string text_of_runtime(const char* format, const ka_time_and_date& moment)
{
    std::tm fields = static_cast<std::tm>(moment);
    fields.tm_zone = "UTC0"; // as the library calls it
    char text[256];
    return std::string(text, std::strftime(text, sizeof text, format, &fields));
}

/// Without what pads a number: blanks, and zeros in front of a digit.
std::string without_padding(const std::string& text)
{
    std::string rest;
    bool is_in_number = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool is_digit = '0' <= text[at] && text[at] <= '9';
        const bool is_last = at + 1 == text.size() || text[at + 1] < '0' || text[at + 1] > '9';
        if (text[at] != ' ' && (text[at] != '0' || is_in_number || is_last))
            rest += text[at];
        is_in_number = is_digit && (is_in_number || text[at] != '0');
    }
    return rest;
}

struct comparison {
    const char* kind = "same";
    std::string here;
    std::string there;
};

comparison compared_over_a_year(const char* format)
{
    comparison worst;
    for (int day = 0; day < 366; ++day) {
        const ka_date date = ka_date(1, 1, 2024) + ka_time_period(day, 0, 0, 0);
        const ka_time time(day * 7 % 24 * 3600 + day * 13 % 60 * 60 + day % 60);
        const ka_time_and_date moment(time, date, ka_time_zone::utc());
        const std::string here = moment.to_string(format);
        const std::string there = text_of_runtime(format, moment);
        if (here == there)
            continue;
        if (without_padding(here) != without_padding(there))
            return {"otherwise", here, there};
        worst = {"padding", here, there};
    }
    return worst;
}

}

int main()
{
    std::setlocale(LC_ALL, "");
    for (const char* format : {"%x", "%X", "%c"}) {
        const comparison found = compared_over_a_year(format);
        std::cout << format << '|' << found.kind << '|' << found.here << '|' << found.there << '\n';
    }
}
