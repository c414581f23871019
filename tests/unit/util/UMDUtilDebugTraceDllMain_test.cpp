// The loader's notifications: reading the mask, banner, reasons.
#include "util/UMDUtilDebugTrace.h"
#include "util/UMDVersion.h"

#include "ImportPatch.h"
#include "RegistryOverride.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

#include <regex>

using namespace tesslo::test;

namespace
{
constexpr wchar_t kServiceKey[] = L"System\\CurrentControlSet\\Services\\TessloWddmKmode";

void WINAPI AnswerMarch(SYSTEMTIME* pTime)
{
    *pTime = {};
    pTime->wYear = 2012;
    pTime->wMonth = 3;
    pTime->wDay = 5;
    pTime->wHour = 9;
    pTime->wMinute = 7;
    pTime->wSecond = 3;
}

class UMDUtilDebugTraceDllMainTest : public testing::Test
{
protected:
    void ExpectSilentAttach()
    {
        UMDUtilDebugTraceDllMainReason(DLL_PROCESS_ATTACH);
        EXPECT_EQ(g_DebugLevelUMD, 0u);
        EXPECT_EQ(m_Trace.Lines(), Lines{});
    }

    RegistryOverride m_Registry;
    TraceMask m_Mask{0};
    TraceCapture m_Trace;
    ImportPatch m_Time{nullptr, "kernel32.dll", "GetLocalTime", AnswerMarch};
};

TEST_F(UMDUtilDebugTraceDllMainTest, Attach_NoValue_KeepsTracingOff)
{
    ExpectSilentAttach();
}

TEST_F(UMDUtilDebugTraceDllMainTest, Attach_ValueZero_KeepsTracingOff)
{
    m_Registry.SetTraceMask(0);
    ExpectSilentAttach();
}

TEST_F(UMDUtilDebugTraceDllMainTest, Attach_ValueLongerThanTheMask_KeepsTracingOff)
{
    const ULONGLONG value = 0x1;
    ASSERT_EQ(RegSetKeyValueW(HKEY_LOCAL_MACHINE, kServiceKey, L"DebugLevelUMD", REG_QWORD, &value, sizeof(value)),
        ERROR_SUCCESS);
    ExpectSilentAttach();
}

TEST_F(UMDUtilDebugTraceDllMainTest, Attach_AnyMask_PrintsTheBannerLineByLine)
{
    m_Registry.SetTraceMask(0x40000000);
    UMDUtilDebugTraceDllMainReason(DLL_PROCESS_ATTACH);
    EXPECT_EQ(g_DebugLevelUMD, 0x40000000u);
    const Lines lines = m_Trace.Lines();
    ASSERT_EQ(lines.size(), 12u);
    EXPECT_NE(lines[4].find(UMD_VERSION_TEXT), std::string::npos) << "the logo names the version";
    EXPECT_EQ(lines[5], "\n");
    EXPECT_EQ(lines[6], " -----------------------------------------------\n");
    EXPECT_EQ(lines[7], "| Tesslo WDDM Umode DllMain\n");
    EXPECT_TRUE(std::regex_match(
        lines[8], std::regex("\\| Build: [A-Z][a-z]{2} [ 1-3][0-9] (1970|20[0-9]{2}) [0-9]{2}:[0-9]{2}:[0-9]{2}\n")))
        << lines[8];
    EXPECT_EQ(lines[9], "| Call:  03.05. 2012  09:07:03\n");
    EXPECT_EQ(lines[10], " -----------------------------------------------\n");
    EXPECT_EQ(lines[11], "DLL_PROCESS_ATTACH\n");
}

TEST_F(UMDUtilDebugTraceDllMainTest, Version_InTheBuild_HasTwoDigitsInItsThirdPart)
{
    EXPECT_TRUE(std::regex_match(UMD_VERSION_TEXT, std::regex("[0-9]+\\.[0-9]+\\.[0-9]{2}\\.[0-9]{4}")));
}

TEST_F(UMDUtilDebugTraceDllMainTest, Reason_OtherThanAttach_PrintsItsNameAndLeavesTheMask)
{
    struct Row
    {
        DWORD m_Reason;
        const char* m_pLine;
    };
    const Row rows[] = {
        {0, "DLL_PROCESS_DETACH\n"},
        {2, "DLL_THREAD_ATTACH\n"},
        {3, "DLL_THREAD_DETACH\n"},
        {4, "DllMain unknown reason! 4\n"},
        {0xFFFFFFFF, "DllMain unknown reason! -1\n"},
    };
    m_Registry.SetTraceMask(0x2FF);
    TraceMask mask(UMDTRACE_GPU);
    for (const Row& row : rows)
    {
        m_Trace.Clear();
        UMDUtilDebugTraceDllMainReason(row.m_Reason);
        EXPECT_EQ(m_Trace.Lines(), Lines{row.m_pLine});
        EXPECT_EQ(g_DebugLevelUMD, UMDTRACE_GPU);
    }
}

TEST_F(UMDUtilDebugTraceDllMainTest, Reason_MaskOff_PrintsNothing)
{
    for (const DWORD reason : {0u, 2u, 3u, 4u})
        UMDUtilDebugTraceDllMainReason(reason);
    EXPECT_TRUE(m_Trace.Lines().empty());
}
}  // namespace
