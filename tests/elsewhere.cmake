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

# On Windows the runtimes of the compiler lie beside the programs.
if(WIN32)
    file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    foreach(runtime IN ITEMS libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime}.dll
                        OUTPUT_VARIABLE place OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        file(CREATE_LINK ${place} ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${runtime}.dll SYMBOLIC)
    endforeach()
endif()
