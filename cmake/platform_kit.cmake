# With TESSLO_USE_PLATFORM_KIT: the kit's header in place of the records of src/ddi, which still prove its layout.
set(TESSLO_PLATFORM_KIT_INCLUDE "" CACHE STRING
    "Folder of the platform kit's d3dumddi.h; stand-in: one that is made of src/ddi; empty: where the compiler looks")
set(kit ${TESSLO_PLATFORM_KIT_INCLUDE})
if(kit STREQUAL "stand-in")
    set(kit ${PROJECT_BINARY_DIR}/stand-in)
    execute_process(COMMAND_ERROR_IS_FATAL ANY
        COMMAND ${CMAKE_COMMAND} -DHEADER=${kit}/d3dumddi.h -P ${PROJECT_SOURCE_DIR}/tests/kit/stand_in.cmake)
endif()
if(kit AND NOT EXISTS ${kit}/d3dumddi.h)
    message(FATAL_ERROR "TESSLO_PLATFORM_KIT_INCLUDE: there is no d3dumddi.h in ${kit}")
endif()
target_compile_definitions(tesslo_options INTERFACE TESSLO_USE_PLATFORM_KIT)
target_include_directories(tesslo_options SYSTEM INTERFACE ${kit})

# What the headers of src/ddi prove of each record, asked of the kit's.
file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/ddi/ddi_*.h)
list(FILTER headers EXCLUDE REGEX "ddi_layout.h$")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${headers})
set(DDI_PROOFS "")
foreach(header IN LISTS headers)
    file(READ ${header} text)
    string(REGEX MATCHALL "(UMD_LAYOUT|UMD_OFFSET)\\([^)]*\\)|static_assert\\(sizeof[^;]*\\)" proofs "${text}")
    foreach(proof IN LISTS proofs)
        string(APPEND DDI_PROOFS "${proof};\n")
    endforeach()
endforeach()
configure_file(${PROJECT_SOURCE_DIR}/src/ddi/ddi_proofs.h.in ${PROJECT_BINARY_DIR}/kit/ddi/ddi_proofs.h @ONLY)
target_include_directories(tesslo_options INTERFACE ${PROJECT_BINARY_DIR}/kit)
