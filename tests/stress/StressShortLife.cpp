#include "StressShortLife.h"

#include "FakeFactory.h"
#include "StressOutput.h"
#include "StressText.h"
#include "TraceCapture.h"

#include <algorithm>
#include <memory>

namespace tesslo::test
{

namespace
{

constexpr int kFlips = 3;
constexpr size_t kFewestLines = 20;  ///< of a traced life
constexpr StressShape kShape{16, 8, D3DDDI_ROTATION_90};

/// Takes one step. @return whether it answered as it should.
bool Expect(std::string* pWrong, const char* pWhat, HRESULT hr, HRESULT hExpected)
{
    if (hr != hExpected)
        *pWrong += std::string(pWhat) + " answers " + StressHex(hr) + ". ";
    return hr == hExpected;
}

}  // namespace

std::string StressShortLife(const std::function<void()>& whileOpen)
{
    FakeDevice fake;
    FakeKernel kernel;
    DriverDll driver;
    const FakeFactory factory(fake, driver.Module());
    const auto pFrames = std::make_unique<StressFrames>();
    StressOutput output(driver, kernel, *pFrames);
    StressPrimary primary;
    std::string wrong;
    if (!Expect(&wrong, "the opening", output.Open(), S_OK) ||
        !Expect(&wrong, "a primary", output.CreatePrimary(1, kShape, &primary), S_OK))
        return wrong;
    Expect(&wrong, "the first flip", output.Flip(primary), S_OK);
    for (int i = 1; i < kFlips; ++i)
        output.Flip(primary);
    if (whileOpen)
        whileOpen();
    Expect(&wrong, "a primary's end", output.Destroy(primary), E_FAIL);
    Expect(&wrong, "the device's end", output.DestroyDevice(), S_OK);
    Expect(&wrong, "the adapter's end", output.Close(), S_OK);
    if (!fake.LiveObjects().empty() || fake.ReferenceCount() != 1 || kernel.AllocationCount() + kernel.ContextCount())
        wrong += "something lives on";
    return wrong;
}

void StressTracedLife::Live()
{
    const TraceCapture trace;
    m_Wrong = StressShortLife();
    m_Debugger = trace.Lines();
}

std::string StressTracedLife::Judge(bool logged) const
{
    std::string wrong = m_Wrong;
    if (m_Debugger.size() < kFewestLines)
        wrong += "the debugger gets " + std::to_string(m_Debugger.size()) + " lines. ";
    // Threads may write their lines in another order than they told the debugger.
    Lines expected = logged ? m_Debugger : Lines(), found = m_Log.MessagesOf(GetCurrentProcessId());
    std::ranges::sort(expected);
    std::ranges::sort(found);
    if (found != expected)
        wrong += std::to_string(found.size()) + " lines of " + std::to_string(expected.size()) + " in the log file. ";
    if (m_Log.Lines().size() != found.size())
        wrong += "lines in the log file that are nobody's";
    return wrong;
}

}  // namespace tesslo::test
