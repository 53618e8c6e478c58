#pragma once

#include <time/export.h>

/// The version of these headers: `KA_TIME_VARNEL_VERSION` is one number to
/// compare, 10203 for 1.2.3. docs/guarantees.md tells what each part promises.
///
///     ka_time_varnel_version() >= KA_TIME_VARNEL_VERSION;    // true
#define KA_TIME_VARNEL_VERSION_MAJOR 1
#define KA_TIME_VARNEL_VERSION_MINOR 1
#define KA_TIME_VARNEL_VERSION_PATCH 0
#define KA_TIME_VARNEL_VERSION                                                                               \
    (KA_TIME_VARNEL_VERSION_MAJOR * 10000 + KA_TIME_VARNEL_VERSION_MINOR * 100 + KA_TIME_VARNEL_VERSION_PATCH)

/// The version of the library that is loaded, counted like `KA_TIME_VARNEL_VERSION`:
/// lower than that where a program was compiled with headers that are newer.
/// Any thread, any time, also before the library starts.
KA_TIME_VARNEL_API int ka_time_varnel_version() noexcept;
