# Writes the header with the date that the driver's banner tells:
# cmake -DTEMPLATE=UMDBuildStamp.h.in -DHEADER=... -P build_stamp.cmake
# The same source gives the same bytes at any time: the date is that of SOURCE_DATE_EPOCH, else of the last commit, in
# UTC. Only a source that stands under no version control is dated by the clock. A header that stays as it is is not
# written.
cmake_minimum_required(VERSION 3.25)
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(COMMAND git log -1 --format=%ct WORKING_DIRECTORY ${CMAKE_CURRENT_LIST_DIR}
        OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(commit MATCHES "^[0-9]+$")
        set(ENV{SOURCE_DATE_EPOCH} ${commit})
        set(forget TRUE)
    endif()
endif()
# As the compiler's own __DATE__ and __TIME__ have it: a blank before a day of one digit.
string(TIMESTAMP UMD_BUILD_DATE "%b %d %Y" UTC)
string(REPLACE " 0" "  " UMD_BUILD_DATE "${UMD_BUILD_DATE}")
string(TIMESTAMP UMD_BUILD_TIME "%H:%M:%S" UTC)
if(forget)
    unset(ENV{SOURCE_DATE_EPOCH})
endif()
configure_file(${TEMPLATE} ${HEADER} @ONLY)
