#pragma once

/// Starts the library as it is loaded, or before `main` where it is part of a
/// program, and stops it at the end.
///
/// A linker takes those parts of a static library alone that something refers
/// to. So the sources that hold what start makes refer to the start.
void ka_start_at_load();

namespace {

[[gnu::used]] void (*const comes_along)() = ka_start_at_load;

}
