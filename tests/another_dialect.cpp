// With the extensions of a compiler its 128 bits are an integer like any other
// to the standard library.
#include <time/chrono.h>
#include <time/format.h>
#include <time/hash.h>
#include <time/months.h>
#include <time/time_varnel.h>

static_assert(std::integral<__int128>);
static_assert(!std::is_constructible_v<ka_date, __int128> && !std::is_constructible_v<ka_time, __int128>);
static_assert(!std::is_constructible_v<ka_date, int, int, __int128>);
static_assert(!std::is_constructible_v<ka_time, __int128, int, int>);
static_assert(!std::is_constructible_v<ka_time_period, __int128>);
static_assert(!std::is_constructible_v<ka_time_period, int, __int128>);
static_assert(!std::is_constructible_v<ka_wint, __int128>);
