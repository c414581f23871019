#include "Loads.h"

#include "DriverDll.h"
#include "FakeFactory.h"
#include "RegistryOverride.h"
#include "StressRun.h"
#include "TestClient.h"
#include "tools/process/HeapUse.h"

#include <algorithm>
#include <string>
#include <thread>

namespace tesslo::test
{

namespace
{

constexpr uint64_t kWarmUp = 8;  ///< runs in which the platform loads what it keeps: one of each kind, twice

// Growth over all loads that the lists of this program explain.
constexpr double kBlocks = 10;
constexpr double kBytes = 32 << 10;

/// A library of the platform's that nothing else in the process loads, in the place of a client library.
constexpr wchar_t kNobodyElses[] = L"msimg32.dll";

/// What a process does between load and unload.
enum class Use
{
    Nothing,
    Threads,  ///< some that know nothing of the driver begin and end
    Adapter,
    Device,
    Count
};

class Loads
{
public:
    void Load(Use use)
    {
        m_Registry.SetClientDllName(use == Use::Nothing   ? L"NoSuchClient.dll"
                                    : use == Use::Threads ? kNobodyElses
                                                          : m_Client.DllName());
        DriverDll driver;
        if (use == Use::Threads)
            for (int i = 0; i < 3; ++i)
                std::thread([] {}).join();
        if (use == Use::Adapter || use == Use::Device)
            driver.OpenAdapter(m_Kernel);
        if (use == Use::Device)
        {
            const FakeFactory factory(m_Fake, driver.Module());
            driver.CreateDevice(m_Kernel);
            driver.m_DeviceFuncs.pfnDestroyDevice(driver.m_hDevice);
            driver.CloseAdapter();
        }
        m_Fake.ClearLines();
        m_Kernel.ClearLines();
        m_Client.Forget();
    }

private:
    RegistryOverride m_Registry;
    TestClient m_Client;
    FakeDevice m_Fake;
    FakeKernel m_Kernel;
};

void ExpectNoGrowth(StressRun& run, const HeapUse& first, const HeapUse& last, double loads)
{
    const double blocks = static_cast<double>(last.m_Blocks) - static_cast<double>(first.m_Blocks);
    const double bytes = static_cast<double>(last.m_Bytes) - static_cast<double>(first.m_Bytes);
    const std::string note =
        std::to_string(blocks / loads) + " blocks, " + std::to_string(bytes / loads) + " bytes a load";
    run.Expect(blocks <= kBlocks && bytes <= kBytes, "the heap grows: " + note);
    run.SetNote(note);
}

}  // namespace

void StressLoads(StressRun& run)
{
    Loads loads;
    for (uint64_t i = 0; i < kWarmUp; ++i)
        loads.Load(static_cast<Use>(i % static_cast<uint64_t>(Use::Count)));
    const HeapUse first = HeapUse::Now();
    HeapUse last = first;
    uint64_t count = 0;
    while (run.Next())
    {
        loads.Load(static_cast<Use>(run.Below(static_cast<uint64_t>(Use::Count))));
        run.Expect(GetModuleHandleW(L"TessloWddmUmode.dll") == nullptr, "the DLL stays");
        run.Expect(GetModuleHandleW(kNobodyElses) == nullptr, "the client library stays");
        last = HeapUse::Now();
        ++count;
    }
    ExpectNoGrowth(run, first, last, static_cast<double>(std::max<uint64_t>(count, 1)));
}

}  // namespace tesslo::test
