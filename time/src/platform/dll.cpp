#include <windows.h>

#include <time/start_stop.h>

#include "load.h"

void ka_start_at_load() { ka_init_time_varnel(); }

/// The system tells of load and unload, and of threads, of which there is nothing to do.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH)
        ka_start_at_load();
    if (reason == DLL_PROCESS_DETACH)
        ka_exit_time_varnel();
    return TRUE;
}
