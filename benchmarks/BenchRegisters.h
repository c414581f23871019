// TESSLO_MAX_ISA, by which a run measures the kernels of a lesser CPU.
#pragma once

/// Limits the image routines to what the environment names: sse2, avx2 or avx512.
/// @return false behind one line on stderr for another name, or for registers that this machine does not have.
bool BenchLimitRegisters();
