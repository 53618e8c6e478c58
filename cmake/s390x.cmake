# IBM Z with glibc, big-endian. What it builds is run by qemu, which looks for files
# in a root of its own first: there are the runtime, and locales of that byte order.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR s390x)
set(CMAKE_CXX_COMPILER s390x-linux-gnu-g++)
set(CMAKE_C_COMPILER s390x-linux-gnu-gcc)
cmake_path(SET s390x_root NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../build/s390x/root)
set(CMAKE_CROSSCOMPILING_EMULATOR "qemu-s390x;-L;${s390x_root}")
set(CMAKE_FIND_ROOT_PATH /usr/s390x-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
