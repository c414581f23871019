# Writes a file that tells the date of the source, in UTC, as the driver's banner and the INF do:
# cmake -DTEMPLATE=UMDBuildStamp.h.in -DOUTPUT=... [-DNEWLINE=CRLF] [-DNAME=VALUE...] -P build_stamp.cmake
# A file that stays as it is is not written.
include(${CMAKE_CURRENT_LIST_DIR}/source_date.cmake)
set(epoch $ENV{SOURCE_DATE_EPOCH})
set(ENV{SOURCE_DATE_EPOCH} ${TESSLO_SOURCE_DATE})
# As the compiler's own __DATE__ and __TIME__ have it: a blank before a day of one digit.
string(TIMESTAMP BUILD_DATE "%b %d %Y" UTC)
string(REPLACE " 0" "  " BUILD_DATE "${BUILD_DATE}")
string(TIMESTAMP BUILD_TIME "%H:%M:%S" UTC)
string(TIMESTAMP INF_DATE "%m/%d/%Y" UTC)
set(ENV{SOURCE_DATE_EPOCH} ${epoch})
if(NOT NEWLINE)
    set(NEWLINE LF)
endif()
configure_file(${TEMPLATE} ${OUTPUT} @ONLY NEWLINE_STYLE ${NEWLINE})
