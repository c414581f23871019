#include "Lives.h"

#include "StressDriver.h"
#include "StressOutput.h"
#include "StressRun.h"
#include "StressText.h"

#include <memory>
#include <string>
#include <vector>

namespace tesslo::test
{

namespace
{

constexpr UINT kSources = 6;
constexpr uint64_t kMostFrames = 8;  ///< of one life
constexpr StressShape kShape{16, 8, D3DDDI_ROTATION_IDENTITY};

/// Reads a frame, slowly enough for it to be on its way when its device is closed.
void Read(const TessloVirtualMonitorFrame& frame)
{
    const auto* pPixels = static_cast<const volatile UINT*>(frame.pBits);
    UINT sum = 0;
    for (UINT i = 0; i < frame.Width * frame.Height; ++i)
    {
        if (i % frame.Width == 0)
            SwitchToThread();
        sum += pPixels[i];
    }
    static_cast<void>(sum);
}

class Life
{
public:
    Life(StressRun& run, StressDriver& driver, StressFrames& frames)
        : m_Run(run), m_Output(*driver.m_Dll, driver.m_Kernel, frames)
    {
    }

    /// Presents a few frames of a few sources, and ends at once.
    void Live()
    {
        if (!InternalExpect("the opening", m_Output.Open(), S_OK))
            return;
        std::vector<StressPrimary> primaries(1 + m_Run.Below(kSources));
        const UINT first = static_cast<UINT>(m_Run.Below(kSources));
        for (UINT i = 0; i < primaries.size(); ++i)
            InternalExpect("a primary", m_Output.CreatePrimary((first + i) % kSources, kShape, &primaries[i]), S_OK);
        for (uint64_t frames = m_Run.Below(kMostFrames + 1); frames > 0; --frames)
            InternalExpect("a flip", m_Output.Flip(primaries[m_Run.Below(primaries.size())]), S_OK);
        for (const StressPrimary& primary : primaries)
            InternalExpect("a primary's end", m_Output.Destroy(primary), E_FAIL);
        InternalExpect("the device's end", m_Output.DestroyDevice(), S_OK);
        InternalExpect("the adapter's end", m_Output.Close(), S_OK);
    }

private:
    bool InternalExpect(const char* pWhat, HRESULT hr, HRESULT hExpected)
    {
        return m_Run.Expect(hr == hExpected, std::string(pWhat) + " answers " + StressHex(hr));
    }

    StressRun& m_Run;
    StressOutput m_Output;
};

}  // namespace

void StressLives(StressRun& run)
{
    StressDriver driver;
    const auto pFrames = std::make_unique<StressFrames>();
    driver.m_Client.SetOnFrame([&](const TessloVirtualMonitorFrame& frame) {
        Read(frame);
        pFrames->Judge(frame);
    });
    while (run.Next())
    {
        Life(run, driver, *pFrames).Live();
        const uint64_t left = driver.Leftovers() + driver.m_Kernel.AllocationCount() + driver.m_Kernel.ContextCount();
        run.Expect(left == 0, std::to_string(left) + " objects, references, allocations or contexts live on");
        run.Expect(driver.m_Client.Calls("Plug") == driver.m_Client.Calls("Unplug"), "a connection stays open");
        run.SetReferences(left);
        pFrames->Restart(run);
        driver.Clean();
    }
    run.Expect(pFrames->Arrived() > 0, "no frame arrives");
    run.SetNote(std::to_string(pFrames->Arrived()) + " frames arrived");
}

}  // namespace tesslo::test
