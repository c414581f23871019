#include "Devices.h"

#include "StressDriver.h"
#include "StressOutput.h"
#include "StressRun.h"
#include "StressTeam.h"
#include "StressText.h"

#include <latch>
#include <list>
#include <memory>
#include <string>
#include <vector>

namespace tesslo::test
{

namespace
{

constexpr size_t kFewestDevices = 2, kMostDevices = 4;
constexpr UINT kSources = 6;  ///< of a device
constexpr uint64_t kMostPrimaries = 3, kMostFrames = 8;
constexpr StressShape kShapes[] = {{16, 8, D3DDDI_ROTATION_IDENTITY}, {24, 12, D3DDDI_ROTATION_90},
    {8, 8, D3DDDI_ROTATION_180}, {12, 30, D3DDDI_ROTATION_270}};
static_assert(kMostDevices * kSources <= StressFrames::kSources);

/// One device with its adapter, whose life is a list of steps, each on a thread of the team's.
class Device
{
public:
    Device(StressRun& run, StressTeam& team, StressFrames& frames, UINT index)
        : m_Team(team), m_Name("device " + std::to_string(index)),
          m_Output(m_Driver, m_Kernel, frames, index * kSources)
    {
        InternalPlan(run);
        for (Step& step : m_Steps)
            step.m_Member = run.Below(team.Size());
    }

    /// Begins with the first step; each asks for the next one. The latch hears of the end.
    void Begin(std::latch& end) { InternalAsk(0, end); }

    /// Behind the end.
    void Tell(StressRun& run) const
    {
        for (const Step& step : m_Steps)
            run.Expect(step.m_hResult == step.m_hExpected,
                m_Name + ": " + step.m_pWhat + " answers " + StressHex(step.m_hResult));
        run.Expect(
            m_Kernel.AllocationCount() + m_Kernel.ContextCount() == 0, m_Name + ": allocations or contexts live on");
    }

private:
    struct Step
    {
        const char* m_pWhat;
        std::function<HRESULT()> m_Take;
        HRESULT m_hExpected;
        size_t m_Member = 0;
        HRESULT m_hResult = E_PENDING;
    };

    void InternalPlan(StressRun& run)
    {
        m_Steps.push_back({"the opening", [this] { return m_Output.Open(); }, S_OK});
        m_Primaries.resize(1 + run.Below(kMostPrimaries));
        for (UINT i = 0; i < m_Primaries.size(); ++i)
        {
            const StressShape& shape = kShapes[run.Below(std::size(kShapes))];
            m_Steps.push_back(
                {"a primary", [=, this] { return m_Output.CreatePrimary(i, shape, &m_Primaries[i]); }, S_OK});
        }
        for (uint64_t frames = run.Below(kMostFrames + 1); frames > 0; --frames)
        {
            const size_t i = run.Below(m_Primaries.size());
            m_Steps.push_back({"a flip", [=, this] { return m_Output.Flip(m_Primaries[i]); }, S_OK});
        }
        for (size_t i = 0; i < m_Primaries.size(); ++i)
            m_Steps.push_back({"a primary's end", [=, this] { return m_Output.Destroy(m_Primaries[i]); }, E_FAIL});
        m_Steps.push_back({"the device's end", [this] { return m_Output.DestroyDevice(); }, S_OK});
        m_Steps.push_back({"the adapter's end", [this] { return m_Output.Close(); }, S_OK});
    }

    void InternalAsk(size_t index, std::latch& end)
    {
        m_Team.Ask(m_Steps[index].m_Member, [this, index, &end] {
            Step& step = m_Steps[index];
            step.m_hResult = step.m_Take();
            // What does not exist is not used.
            if (index + 1 == m_Steps.size() || step.m_hResult != step.m_hExpected)
                end.count_down();
            else
                InternalAsk(index + 1, end);
        });
    }

    StressTeam& m_Team;
    const std::string m_Name;
    FakeKernel m_Kernel;
    DriverDll m_Driver;
    StressOutput m_Output;
    std::vector<StressPrimary> m_Primaries;
    std::vector<Step> m_Steps;
};

}  // namespace

void StressDevices(StressRun& run)
{
    StressDriver driver;
    const auto pFrames = std::make_unique<StressFrames>();
    driver.m_Client.SetOnFrame([&](const TessloVirtualMonitorFrame& frame) { pFrames->Judge(frame); });
    StressTeam team(kMostDevices + 1);
    while (run.Next())
    {
        const size_t count = kFewestDevices + run.Below(kMostDevices - kFewestDevices + 1);
        std::list<Device> devices;
        for (UINT i = 0; i < count; ++i)
            devices.emplace_back(run, team, *pFrames, i);
        std::latch end(static_cast<ptrdiff_t>(count));
        for (Device& device : devices)
            device.Begin(end);
        end.wait();
        for (const Device& device : devices)
            device.Tell(run);
        const uint64_t left = driver.Leftovers();
        run.Expect(left == 0, std::to_string(left) + " objects or references live on");
        run.Expect(driver.m_Client.Calls("Plug") == driver.m_Client.Calls("Unplug"), "a connection stays open");
        run.SetReferences(left);
        pFrames->Restart(run);
        driver.Clean();
    }
    run.SetNote(std::to_string(pFrames->Arrived()) + " frames arrived");
}

}  // namespace tesslo::test
