# What clang is told beside the rest: the compiler that the driver is shipped from.
set(TESSLO_HAS_STRUCTURED_EXCEPTIONS ON)

target_compile_options(tesslo_options INTERFACE
    -Wall -Wextra -Wpedantic -Werror -fms-extensions -Wno-language-extension-token -g -gcodeview)

# Writes NAME.pdb beside the target and names it in the image without a path.
function(tesslo_pdb target)
    target_link_options(${target} PRIVATE
        "-Wl,--strip-debug" "-Wl,--pdb=$<TARGET_FILE_DIR:${target}>/${target}.pdb" "-Wl,-Xlink=-pdbaltpath:${target}.pdb")
endfunction()
