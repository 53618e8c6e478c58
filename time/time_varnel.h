#pragma once

/// All of the library: dates, times of day, moments, durations and time zones.
///
/// The library starts as it is loaded and stops as it is unloaded, so a program
/// that is linked with it calls neither of the two functions below.

#include <time/calendar.h>
#include <time/date.h>
#include <time/error.h>
#include <time/export.h>
#include <time/stopwatch.h>
#include <time/time_of_day.h>
#include <time/timedate.h>
#include <time/tperiod.h>
#include <time/version.h>
#include <time/wint.h>
#include <time/zone.h>
#include <time/zone_rule.h>

/// Counts one start. The first one, at load, reads the user's locale and the
/// machine's time zone and builds names, formats and zones; others only count.
/// Start and stop are not safe beside any other use of the library. A start for
/// which there is no memory throws `std::bad_alloc` and has counted: before
/// another is tried, a stop frees what it has built.
KA_TIME_VARNEL_API void ka_init_time_varnel();

/// Counts one stop. The last one, at unload, frees all that the first start
/// built: each stop balances a start. After one too many, the calendar of
/// `ka_date` still works, and names, zones, moments and texts must not be used
/// until the library is started again.
KA_TIME_VARNEL_API void ka_exit_time_varnel();
