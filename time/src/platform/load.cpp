#include "load.h"

#include <time/start_stop.h>

void ka_start_at_load() { ka_init_time_varnel(); }

namespace {

// Before the objects of static storage that a program makes, and after they are
// gone: the first of the priorities that are free.

[[gnu::constructor(101)]] void on_load() { ka_start_at_load(); }

[[gnu::destructor(101)]] void on_unload() { ka_exit_time_varnel(); }

}
