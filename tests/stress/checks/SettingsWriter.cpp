#include "SettingsWriter.h"

#include "DriverDll.h"
#include "RegistryOverride.h"
#include "StressShortLife.h"
#include "TraceCapture.h"

#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

namespace tesslo::test
{

namespace
{

constexpr int kAttaches = 10, kThreads = 2, kOpenings = 20;

void OpenAndClose(int times)
{
    FakeKernel kernel;
    DriverDll driver;
    for (int i = 0; i < times; ++i)
    {
        driver.OpenAdapter(kernel);
        driver.CloseAdapter();
    }
}

}  // namespace

void StressTraceOnThreads(int threads, int times)
{
    std::vector<std::thread> all;
    for (int i = 0; i < threads; ++i)
        all.emplace_back(OpenAndClose, times);
    for (std::thread& thread : all)
        thread.join();
}

void StressSettingsWriter(const std::string& folder)
{
    RegistryOverride registry;
    registry.SetTraceMask(kStressTraceMask);
    registry.SetClientDllName(L"NoSuchLibrary.dll");
    const TraceCapture trace;
    for (int i = 0; i < kAttaches; ++i)
        DriverDll();
    {
        const DriverDll driver;
        StressTraceOnThreads(kThreads, kOpenings);
    }
    std::ofstream file(std::filesystem::path(folder) / std::to_string(GetCurrentProcessId()), std::ios::binary);
    for (const std::string& line : trace.Lines())
        file << line;
}

}  // namespace tesslo::test
