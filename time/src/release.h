#pragma once

#include <cstddef>

/// Deletes an object of the library's own and clears the pointer to it, so that
/// a stop can follow a start that did not get to its end.
template <typename Object>
void release(Object*& object) noexcept
{
    delete object;
    object = nullptr;
}

template <typename Object, std::size_t Count>
void release(Object* (&objects)[Count]) noexcept
{
    for (Object*& object : objects)
        release(object);
}
