// Forces the image routines to registers of one width, for as long as this lives.
#pragma once

#include "output/UMDImgProcKernels.h"

#include <ostream>

inline constexpr UMDCpuIsa kImageRegisters[] = {UMDCpuIsa::Sse2, UMDCpuIsa::Avx2, UMDCpuIsa::Avx512};

class ImageRegisters
{
public:
    explicit ImageRegisters(UMDCpuIsa wanted) : m_bUsed(UMDImgProcLimit(wanted) == wanted) {}
    ~ImageRegisters() { UMDImgProcLimit(UMDCpuIsa::Avx512); }
    ImageRegisters(const ImageRegisters&) = delete;
    ImageRegisters& operator=(const ImageRegisters&) = delete;

    /// Whether this machine has them.
    bool IsUsed() const { return m_bUsed; }

private:
    bool m_bUsed;
};

/// The names that ctest shows.
inline void PrintTo(UMDCpuIsa isa, std::ostream* pOut)
{
    constexpr const char* kNames[] = {"Sse2", "Avx2", "Avx512"};
    *pOut << kNames[static_cast<int>(isa)];
}
