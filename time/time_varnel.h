#pragma once

/// All of the library: dates, times of day, moments, durations and time zones.
///
/// The library starts as it is loaded and stops as it is unloaded, so a program
/// that is linked with it calls neither function of `time/start_stop.h`.
///
///     #include <time/time_varnel.h>
///
///     const ka_time_and_date call(ka_time(18, 0, 0), ka_date(7, 4, 2024), ka_time_zone::pacific());
///     call.utc_time().hours();    // 1
///
/// Apart stand, for those who ask for them: `columns.h`, `chrono.h`, `exchange.h`,
/// `format.h`, `hash.h`, `io.h`, `local.h`, `months.h`, `pattern.h`, `read.h` and
/// `world.h`.

#include <time/calendar.h>
#include <time/date.h>
#include <time/error.h>
#include <time/export.h>
#include <time/start_stop.h>
#include <time/stopwatch.h>
#include <time/time_of_day.h>
#include <time/timedate.h>
#include <time/tperiod.h>
#include <time/version.h>
#include <time/wint.h>
#include <time/zone.h>
#include <time/zone_rule.h>
