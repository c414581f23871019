// A device that presents, with its primaries.
#pragma once

#include "StressFrames.h"

#include "DriverDll.h"

namespace tesslo::test
{

/// A primary of some source, and the render target that mirrors it.
struct StressPrimary
{
    HANDLE m_hResource = nullptr;
    FakeSurface* m_pTarget = nullptr;
    UINT m_Source = 0;      ///< index
    UINT m_SourceName = 0;  ///< as the client library is told it
    StressShape m_Shape{};
};

/// Each step may be taken on another thread, one at a time.
class StressOutput
{
public:
    /// @param firstSource how the kernel names the device's first source to the client library; the others follow.
    StressOutput(DriverDll& driver, FakeKernel& kernel, StressFrames& frames, UINT firstSource = 0);

    HRESULT Open();
    HRESULT CreatePrimary(UINT source, const StressShape& shape, StressPrimary* pPrimary);
    /// Paints the next frame, and presents it.
    HRESULT Flip(const StressPrimary& primary);
    /// Answers E_FAIL, as ever.
    HRESULT Destroy(const StressPrimary& primary);
    HRESULT DestroyDevice();
    HRESULT Close();

private:
    DriverDll& m_Driver;
    FakeKernel& m_Kernel;
    StressFrames& m_Frames;
    UINT m_FirstSource;
};

}  // namespace tesslo::test
