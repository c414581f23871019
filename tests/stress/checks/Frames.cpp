#include "Frames.h"

#include "StressDriver.h"
#include "StressOutput.h"
#include "StressPauses.h"
#include "StressRun.h"
#include "StressText.h"

#include <array>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <utility>

namespace tesslo::test
{

namespace
{

constexpr UINT kSources = 6;
constexpr int kFramesOfRun = 500;
constexpr uint64_t kSameMode = 20;  ///< frames until a source changes it, on average
constexpr std::pair<UINT, UINT> kSizes[] = {{16, 8}, {8, 16}, {33, 17}, {64, 48}};
constexpr uint64_t kRotations = 4;

/// One device that presents.
class Show
{
public:
    Show(StressRun& run, StressDriver& driver, StressFrames& frames)
        : m_Run(run), m_Output(*driver.m_Dll, driver.m_Kernel, frames), m_Frames(frames)
    {
    }

    void Run()
    {
        InternalExpect("the opening", m_Output.Open(), S_OK);
        for (UINT source = 0; source < kSources; ++source)
            m_Current[source] = &InternalMode(source);
        for (int i = 0; i < kFramesOfRun; ++i)
            InternalFlip(static_cast<UINT>(m_Run.Below(kSources)));
        m_Frames.Await();
        for (const auto& [mode, primary] : m_Primaries)
            InternalExpect("a primary's end", m_Output.Destroy(primary), E_FAIL);
        InternalExpect("the device's end", m_Output.DestroyDevice(), S_OK);
        InternalExpect("the adapter's end", m_Output.Close(), S_OK);
    }

private:
    /// The primary of some size and rotation of the source; made when it is first needed. Destroying one of them would
    /// end all workers.
    const StressPrimary& InternalMode(UINT source)
    {
        const uint64_t size = m_Run.Below(std::size(kSizes)), rotation = m_Run.Below(kRotations);
        StressPrimary& primary = m_Primaries[{source, size, rotation}];
        if (!primary.m_hResource)
        {
            const StressShape shape{
                kSizes[size].first, kSizes[size].second, static_cast<UINT>(D3DDDI_ROTATION_IDENTITY + rotation)};
            InternalExpect("a primary", m_Output.CreatePrimary(source, shape, &primary), S_OK);
        }
        return primary;
    }

    void InternalFlip(UINT source)
    {
        if (m_Run.Below(kSameMode) == 0)
            m_Current[source] = &InternalMode(source);
        InternalExpect("a flip", m_Output.Flip(*m_Current[source]), S_OK);
    }

    void InternalExpect(const char* pWhat, HRESULT hr, HRESULT hExpected)
    {
        m_Run.Expect(hr == hExpected, std::string(pWhat) + " answers " + StressHex(hr));
    }

    StressRun& m_Run;
    StressOutput m_Output;
    StressFrames& m_Frames;
    std::map<std::tuple<UINT, uint64_t, uint64_t>, StressPrimary> m_Primaries;  ///< by source, size and rotation
    std::array<const StressPrimary*, kSources> m_Current{};
};

}  // namespace

void StressManyFrames(StressRun& run)
{
    StressDriver driver;
    StressPauses pauses;
    const auto pFrames = std::make_unique<StressFrames>();
    driver.m_Client.SetOnFrame([&](const TessloVirtualMonitorFrame& frame) {
        pauses.Pause();
        pFrames->Judge(frame);
    });
    while (run.Next())
    {
        pauses.Begin(run.Seed(), run.Number());
        for (const char* pMethod : {"GetRenderTargetData", "surface.LockRect", "surface.UnlockRect"})
            driver.m_Fake.On(pMethod, [&] { pauses.Pause(); });
        Show(run, driver, *pFrames).Run();
        run.SetReferences(driver.Leftovers());
        pFrames->Restart(run);
        driver.Clean();
    }
    run.SetNote(std::to_string(pFrames->Arrived()) + " frames arrived");
}

}  // namespace tesslo::test
