# What g++ is told beside the rest. It knows no structured exceptions (__try), without which there is no driver: what
# guards the driver's entries and threads is not compiled, and what links that is not linked.
set(TESSLO_HAS_STRUCTURED_EXCEPTIONS OFF)

# Left off: the complaint of this version about designated initialisers, which leave out members on purpose, and
# -Wrestrict, which takes the C++ library's own strings for overlapping.
target_compile_options(tesslo_options INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wno-missing-field-initializers -Wno-restrict)

# Its linker writes no PDB.
function(tesslo_pdb target)
endfunction()
