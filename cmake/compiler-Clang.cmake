# What clang is told beside the rest: the compiler that the driver is shipped from.
set(TESSLO_HAS_STRUCTURED_EXCEPTIONS ON)

target_compile_options(tesslo_options INTERFACE
    -Wall -Wextra -Wpedantic -Werror -fms-extensions -Wno-language-extension-token -g -gcodeview)

# The same source gives the same bytes, whatever the folder and the clock: paths are told from the project's root, what
# the compiler was told is not, and the image's stamp is a hash of its content, by which symbol servers tell builds apart.
target_compile_options(tesslo_options INTERFACE -gno-codeview-command-line
    -ffile-compilation-dir=. -ffile-prefix-map=${PROJECT_BINARY_DIR}/=build/ -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
target_link_options(tesslo_options INTERFACE "-Wl,-Xlink=-Brepro" "-Wl,-Xlink=-pdbsourcepath:.")

# Writes NAME.pdb beside the target, which linkers begun in the build folder know as bin/, and names it in the image
# without a path.
function(tesslo_pdb target)
    target_link_options(${target} PRIVATE
        "-Wl,--strip-debug" "-Wl,--pdb=bin/${target}.pdb" "-Wl,-Xlink=-pdbaltpath:${target}.pdb")
endfunction()
