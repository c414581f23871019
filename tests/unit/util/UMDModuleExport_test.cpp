#include "util/UMDModuleExport.h"

#include <gtest/gtest.h>

namespace
{
TEST(UMDModuleExportTest, Export_NoModule_IsNullWithALastError)
{
    SetLastError(0);
    EXPECT_EQ(UMDModuleExport<FARPROC>(nullptr, "TessloVirtualMonitorPlug"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
}

TEST(UMDModuleExportTest, Export_MissingName_IsNullWithALastError)
{
    SetLastError(0);
    EXPECT_EQ(UMDModuleExport<FARPROC>(GetModuleHandleW(L"kernel32.dll"), "TessloVirtualMonitorPlug"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_PROC_NOT_FOUND});
}

TEST(UMDModuleExportTest, Export_PresentName_IsTheFunction)
{
    const auto pGetCurrentProcessId =
        UMDModuleExport<decltype(&GetCurrentProcessId)>(GetModuleHandleW(L"kernel32.dll"), "GetCurrentProcessId");
    ASSERT_NE(pGetCurrentProcessId, nullptr);
    EXPECT_EQ(pGetCurrentProcessId(), GetCurrentProcessId());
}
}  // namespace
