# What tests use beside the library, where there are no packages of it:
# GoogleTest built from the sources that Debian's package holds, {fmt} from its
# headers alone.
set(INSTALL_GTEST OFF)
enable_language(C)
block()
    # In each test, whatever our library is built as.
    set(BUILD_SHARED_LIBS OFF)
    add_subdirectory(/usr/src/googletest/googletest googletest EXCLUDE_FROM_ALL SYSTEM)
endblock()

# The folder of all headers is of the machine that builds.
file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/headers)
file(CREATE_LINK /usr/include/fmt ${CMAKE_CURRENT_BINARY_DIR}/headers/fmt SYMBOLIC)
add_library(fmt INTERFACE)
add_library(fmt::fmt ALIAS fmt)
target_include_directories(fmt SYSTEM INTERFACE ${CMAKE_CURRENT_BINARY_DIR}/headers)
target_compile_definitions(fmt INTERFACE FMT_HEADER_ONLY)
