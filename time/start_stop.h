#pragma once

#include <time/export.h>

/// Start and stop, for a program that wants the library read its surroundings
/// anew. The load and the unload of the library start and stop it once.
///
///     ka_exit_time_varnel();
///     ka_init_time_varnel();
///     ka_date::month_name(7);    // "July", in the language of the environment

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
