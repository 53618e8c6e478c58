// A first program of somebody who has installed the library. It leaves with 0 where all is well.
#include <cstdio>
#include <string>

#include <time/time_varnel.h>

namespace {

template <typename Error>
bool catches()
{
    try {
        ka_date(2, 30, 2025);
    } catch (const Error& error) {
        return std::string(error.what()).starts_with("invalid_date: Month( 2 ), day( 30 )");
    }
    return false;
}

}

int main()
{
    const ka_time_and_date call(ka_time(18, 0, 0), ka_date(7, 4, 2024), ka_time_zone::eastern());
    const std::string text = call.to_string("%Y-%m-%d %H:%M %Z");
    std::puts(text.c_str());
    const bool holds =
        text == "2024-07-04 18:00 EDT4" && catches<ka_varnel_error>() && catches<ka_time_varnel_error>();
    return holds ? 0 : 1;
}
