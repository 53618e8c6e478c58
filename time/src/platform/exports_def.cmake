# exports_def.cmake: writes the module definition of a DLL, the names of
# exports.map as the objects spell them.
#
#   cmake -D NM=... -D MAP=exports.map -D OUT=exports.def -D IS_COMPLETE=ON -P exports_def.cmake -- OBJECTS
cmake_policy(VERSION 3.25)
set(objects)
set(is_object FALSE)
foreach(i RANGE ${CMAKE_ARGC})
    if(is_object AND NOT "${CMAKE_ARGV${i}}" STREQUAL "")
        list(APPEND objects "${CMAKE_ARGV${i}}")
    elseif("${CMAKE_ARGV${i}}" STREQUAL "--")
        set(is_object TRUE)
    endif()
endforeach()

# In the same order, as they are in the objects and in the words of the map.
execute_process(COMMAND ${NM} -p -g --defined-only --format=posix ${objects}
                OUTPUT_VARIABLE spelt COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${NM} -p -g -C --defined-only --format=posix ${objects}
                OUTPUT_VARIABLE told COMMAND_ERROR_IS_FATAL ANY)
file(READ "${MAP}" map)
# Brackets and semicolons mean something in lists.
foreach(text IN ITEMS spelt told map)
    string(REPLACE "[" "<" ${text} "${${text}}")
    string(REPLACE "]" ">" ${text} "${${text}}")
    string(REPLACE ";" "" ${text} "${${text}}")
    string(REPLACE "\n" ";" ${text} "${${text}}")
endforeach()

set(lines)
set(found)
foreach(line other IN ZIP_LISTS spelt told)
    if(NOT line MATCHES "^([^ ]+) ([A-Z])( |$)")
        continue()
    endif()
    set(name "${CMAKE_MATCH_1}")
    set(kind "${CMAKE_MATCH_2}")
    string(REGEX REPLACE " [A-Z]( [0-9a-f]+)*[ ]*$" "" words "${other}")
    if("            \"${words}\"" IN_LIST map)
        list(APPEND found "            \"${words}\"")
        if(kind STREQUAL T)
            list(APPEND lines "    ${name}")
        else()
            list(APPEND lines "    ${name} DATA")
        endif()
    endif()
endforeach()

# Copies of inline operations are there where the compiler makes them.
list(FILTER map INCLUDE REGEX "^            \"")
list(REMOVE_ITEM map ${found})
if(IS_COMPLETE AND map)
    list(JOIN map "\n" map)
    message(FATAL_ERROR "The objects hold nothing of these names:\n${map}")
endif()
list(REMOVE_DUPLICATES lines)
list(SORT lines)
list(JOIN lines "\n" lines)
file(WRITE "${OUT}" "EXPORTS\n${lines}\n")
