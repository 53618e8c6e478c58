// The operations that are inline in the headers, for those who ask the library
// for them by name. With g++, -fkeep-inline-functions makes this source emit a
// copy of each; the linker keeps those that are exported.
#include <time/time_varnel.h>
