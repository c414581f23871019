// What a process that loads and unloads the driver again and again keeps of it.
#include "RegistryOverride.h"
#include "tools/process/HeapUse.h"

#include <gtest/gtest.h>

#include <windows.h>

using namespace tesslo::test;

namespace
{
void LoadAndUnload()
{
    const HMODULE hModule = LoadLibraryW(L"TessloWddmUmode.dll");
    ASSERT_NE(hModule, nullptr);
    ASSERT_TRUE(FreeLibrary(hModule));
}

TEST(DllMainLoads, LoadAndUnload_TwoHundredTimes_LeaveNothingInTheHeap)
{
    RegistryOverride registry;
    registry.SetClientDllName(L"NoSuchClient.dll");  // the driver alone
    // The first rounds also load what the platform keeps.
    for (int i = 0; i < 3; ++i)
        LoadAndUnload();
    const HeapUse before = HeapUse::Now();
    constexpr size_t kLoads = 200;
    for (size_t i = 0; i < kLoads; ++i)
        LoadAndUnload();
    const HeapUse after = HeapUse::Now();
    EXPECT_LT(after.m_Blocks, before.m_Blocks + kLoads / 10);
    EXPECT_LT(after.m_Bytes, before.m_Bytes + kLoads * 100);
}
}  // namespace
