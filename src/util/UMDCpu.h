// Which vector registers this process may use: what the CPU has and the operating system saves.
#pragma once

#include <windows.h>

/// Each has what those before it have.
enum class UMDCpuIsa
{
    Sse2,  ///< every x64 CPU
    Avx2,
    Avx512  ///< the foundation alone
};

/// What the CPU answers when it is asked, bare.
struct UMDCpuAnswers
{
    UINT Leaf1Ecx;  ///< CPUID 1
    UINT Leaf7Ebx;  ///< CPUID 7; 0 from a CPU that does not know the question
    UINT64 Xcr0;    ///< XGETBV 0, the registers that the system saves; 0 where the system has not enabled it
};

/// Asks the CPU. Touches nothing else and calls nobody, so that any time will do.
UMDCpuAnswers UMDCpuAsk();

/// @return the most that can be used behind such answers.
UMDCpuIsa UMDCpuIsaOf(const UMDCpuAnswers& answers);
