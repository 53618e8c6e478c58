#pragma once

#if __cplusplus <= 201703L
#error "ka_time_varnel needs C++20: -std=c++20 or later"
#endif

/// Marks what the shared library exports. Everything in the library is built
/// with hidden visibility, so a class without this mark stays inside it.
#if defined(__GNUC__)
#define KA_TIME_VARNEL_API __attribute__((visibility("default")))
#else
#define KA_TIME_VARNEL_API
#endif
