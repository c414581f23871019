# Sets TESSLO_SOURCE_DATE, the date of the source in seconds since 1970, which stands in for the clock wherever what is
# built is dated: SOURCE_DATE_EPOCH, else what `git archive` has written beside this file, else the last commit, also
# when files have been changed since. A source that tells none of them is dated 1970. As a script it prints the date.
cmake_minimum_required(VERSION 3.25)
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/source_date.txt TESSLO_SOURCE_DATE)
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    set(TESSLO_SOURCE_DATE $ENV{SOURCE_DATE_EPOCH})
elseif(NOT TESSLO_SOURCE_DATE MATCHES "^[0-9]+$")
    # A copy of the source inside another repository is not dated by that one's commits.
    execute_process(COMMAND git rev-parse --show-prefix WORKING_DIRECTORY ${CMAKE_CURRENT_LIST_DIR}
        OUTPUT_VARIABLE prefix OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(prefix STREQUAL "cmake/")
        execute_process(COMMAND git log -1 --format=%ct WORKING_DIRECTORY ${CMAKE_CURRENT_LIST_DIR}
            OUTPUT_VARIABLE TESSLO_SOURCE_DATE OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    endif()
endif()
if(NOT TESSLO_SOURCE_DATE MATCHES "^[0-9]+$")
    set(TESSLO_SOURCE_DATE 0)
endif()
if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
    execute_process(COMMAND ${CMAKE_COMMAND} -E echo ${TESSLO_SOURCE_DATE})
endif()
