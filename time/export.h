#pragma once

#if __cplusplus <= 201703L
#error "ka_time_varnel needs C++20: -std=c++20 or later"
#endif

/// Marks what the shared library exports. Everything in the library is built
/// with hidden visibility, so a class without this mark stays inside it. So do
/// all of a static one, which each program or shared library has to itself. A DLL
/// has no visibility: it exports by the list alone, and mingw's linker finds
/// data in it without a mark. KA_TIME_VARNEL_STATIC is set by the CMake target of a
/// static library.
#if defined(__GNUC__) && !defined(_WIN32) && !defined(KA_TIME_VARNEL_STATIC)
#define KA_TIME_VARNEL_API __attribute__((visibility("default")))
#else
#define KA_TIME_VARNEL_API
#endif
