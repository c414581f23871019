# Writes a d3dumddi.h that stands in for the platform kit's: cmake -DHEADER=... -P stand_in.cmake
#
# It has the records of src/ddi without their proofs, in the manner of the platform's headers: a structure is the
# typedef of one whose name begins with an underscore, an enumeration has no fixed type, and a constant is a macro.
cmake_minimum_required(VERSION 3.25)
cmake_path(SET ddi NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../src/ddi)
set(header "#pragma once\n\n#include <d3d9.h>\n#include <dxva2api.h>\n#include <windows.h>\n\n")
foreach(name IN ITEMS
        constants enums functions records_common records_video records_arguments records_callbacks records_tables)
    file(READ ${ddi}/ddi_${name}.h text)
    string(REGEX REPLACE "//[^\n]*|#[^\n]*|UMD_DDI_RECORDS_[A-Z]*" "" text "${text}")
    string(REGEX REPLACE "(UMD_LAYOUT|UMD_OFFSET|static_assert)\\([^;]*\\);" "" text "${text}")
    string(REGEX REPLACE "inline constexpr UINT ([A-Za-z0-9_]+) = ([^;]*);" "#define \\1 (\\2)" text "${text}")
    string(REGEX REPLACE "\nstruct ([A-Za-z0-9_]+);" "\ntypedef struct _\\1 \\1;" text "${text}")
    set(opening "\n(struct|enum) (alignas.16. |)([A-Za-z0-9_]+)( : UINT|)\n{")
    string(REGEX REPLACE "${opening}([^}]|}[^;]|\n +};)*\n}" "\\0 \\3" text "${text}")
    string(REGEX REPLACE "${opening}" "\ntypedef \\1 \\2_\\3\n{" text "${text}")
    string(REGEX REPLACE "\n(\n)+" "\n\n" text "${text}")
    string(APPEND header "${text}")
endforeach()
file(WRITE ${HEADER} "${header}")
