#pragma once

#include <string_view>

namespace exchange {

// The names in texts of mail and of HTTP, which are English in all countries.

inline constexpr std::string_view weekday_names[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
inline constexpr std::string_view month_names[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

}
