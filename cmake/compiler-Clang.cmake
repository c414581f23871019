# What clang is told beside the rest: the compiler that the driver is shipped from.
set(TESSLO_HAS_STRUCTURED_EXCEPTIONS ON)

target_compile_options(tesslo_options INTERFACE
    -Wall -Wextra -Wpedantic -Werror -fms-extensions -Wno-language-extension-token -g -gcodeview)

# The same source gives the same bytes, whatever the folder and the clock: paths are told from the project's root, what
# the compiler was told is not, and the image's stamp is a hash of its content, by which symbol servers tell builds
# apart.
target_compile_options(tesslo_options INTERFACE -gno-codeview-command-line
    -ffile-compilation-dir=. -ffile-prefix-map=${PROJECT_BINARY_DIR}/=build/ -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
target_link_options(tesslo_options INTERFACE "-Wl,-Xlink=-Brepro" "-Wl,-Xlink=-pdbsourcepath:.")

# Writes NAME.pdb beside the target, which linkers begun in the build folder know as bin/, and names it in the image
# without a path. A PDB also tells how the linker was called: with a list of exports from the build folder, not by its
# full path, and without the folders that a user's environment adds.
function(tesslo_pdb target)
    target_link_options(${target} PRIVATE
        "-Wl,--strip-debug" "-Wl,--pdb=bin/${target}.pdb" "-Wl,-Xlink=-pdbaltpath:${target}.pdb")
    get_target_property(sources ${target} SOURCES)
    get_target_property(folder ${target} SOURCE_DIR)
    get_target_property(copies ${target} BINARY_DIR)
    foreach(source IN LISTS sources)
        if(source MATCHES "\\.def$")
            configure_file(${folder}/${source} ${copies}/${source} COPYONLY)
            list(TRANSFORM sources REPLACE "^${source}$" ${copies}/${source})
        endif()
    endforeach()
    set_target_properties(${target} PROPERTIES
        SOURCES "${sources}" RULE_LAUNCH_LINK "${CMAKE_COMMAND} -E env --unset=LIBRARY_PATH")
endfunction()
