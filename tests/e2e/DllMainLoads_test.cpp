// What a process that loads and unloads the driver again and again keeps of it.
#include "RegistryOverride.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace
{
struct HeapUse
{
    size_t m_Blocks = 0;
    size_t m_Bytes = 0;
};

/// What the C library's heap, which all modules of the process share, has given out.
HeapUse UsedOfHeap()
{
    const auto hHeap = reinterpret_cast<HANDLE>(
        reinterpret_cast<intptr_t (*)()>(GetProcAddress(GetModuleHandleW(L"msvcrt.dll"), "_get_heap_handle"))());
    HeapUse use;
    PROCESS_HEAP_ENTRY entry = {};
    HeapLock(hHeap);
    while (HeapWalk(hHeap, &entry))
    {
        if (!(entry.wFlags & PROCESS_HEAP_ENTRY_BUSY))
            continue;
        ++use.m_Blocks;
        use.m_Bytes += entry.cbData;
    }
    HeapUnlock(hHeap);
    return use;
}

void LoadAndUnload()
{
    const HMODULE hModule = LoadLibraryW(L"TessloWddmUmode.dll");
    ASSERT_NE(hModule, nullptr);
    ASSERT_TRUE(FreeLibrary(hModule));
}

TEST(DllMainLoads, LoadAndUnload_TwoHundredTimes_LeaveNothingInTheHeap)
{
    tesslo::test::RegistryOverride registry;
    registry.SetClientDllName(L"NoSuchClient.dll");  // the driver alone
    // The first rounds also load what the platform keeps.
    for (int i = 0; i < 3; ++i)
        LoadAndUnload();
    const HeapUse before = UsedOfHeap();
    constexpr size_t kLoads = 200;
    for (size_t i = 0; i < kLoads; ++i)
        LoadAndUnload();
    const HeapUse after = UsedOfHeap();
    EXPECT_LT(after.m_Blocks, before.m_Blocks + kLoads / 10);
    EXPECT_LT(after.m_Bytes, before.m_Bytes + kLoads * 100);
}
}  // namespace
