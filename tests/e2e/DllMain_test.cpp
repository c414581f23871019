// The built DLL as the loader drives it: attach, threads, detach.
#include "DriverDll.h"
#include "ImportPatch.h"
#include "MachineLog.h"
#include "RegistryOverride.h"
#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

using namespace tesslo::test;

namespace
{
constexpr wchar_t kClient[] = L"TessloTestClient.dll";

TraceCapture* s_pTrace;
Lines s_LinesAtFree;
BOOL(WINAPI* s_pFreeLibrary)(HMODULE);

BOOL WINAPI FreeAndRemember(HMODULE hModule)
{
    s_LinesAtFree = s_pTrace->Lines();
    return s_pFreeLibrary(hModule);
}

std::string Pid()
{
    return std::to_string(GetCurrentProcessId());
}

class DllAttachTest : public testing::Test
{
protected:
    DllAttachTest() { s_pTrace = &m_Trace; }

    /// The lines of an attach that finds no client library.
    Lines AttachWithoutClient(DWORD mask)
    {
        m_Registry.SetTraceMask(mask);
        m_Registry.SetClientDllName(L"NoSuchLibrary.dll");
        const DriverDll dll;
        return m_Trace.Lines();
    }

    RegistryOverride m_Registry;
    TraceCapture m_Trace;
};

TEST_F(DllAttachTest, Attach_NoMask_PrintsNothingFromLoadToUnload)
{
    {
        DriverDll dll;
        std::thread([] {}).join();
    }
    EXPECT_EQ(m_Trace.Lines(), Lines{});
}

TEST_F(DllAttachTest, Attach_LogFileBitAlone_PrintsTheLoadersLinesAlone)
{
    // Those are of every level, and so of this bit too; a failure is not.
    const Lines lines = AttachWithoutClient(0x800);
    ASSERT_EQ(lines.size(), 12u);
    EXPECT_EQ(lines.back(), "DLL_PROCESS_ATTACH\n");
}

TEST_F(DllAttachTest, Attach_MaskSet_ReadsItBeforeTheClientLibraryIsLoaded)
{
    const Lines lines = AttachWithoutClient(0x1);
    ASSERT_EQ(lines.size(), 13u);
    EXPECT_EQ(lines[7], "| Tesslo WDDM Umode DllMain\n");
    EXPECT_EQ(lines[11], "DLL_PROCESS_ATTACH\n");
    EXPECT_EQ(lines[12], "UMDUtilDebugTraceDllMain LoadLibrary failed! 126\n");
}

TEST_F(DllAttachTest, Attach_NoClientName_WritesTheSampleLibrarysNameAndLoadsIt)
{
    DriverDll dll;
    EXPECT_EQ(m_Registry.ClientDllName(), L"TessloClientDllSample.dll");
    EXPECT_NE(GetModuleHandleW(L"TessloClientDllSample.dll"), nullptr);
}

TEST_F(DllAttachTest, Attach_ClientNamedByPath_LoadsIt)
{
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, ARRAYSIZE(path));
    m_Registry.SetClientDllName((std::filesystem::path(path).parent_path() / kClient).wstring());
    DriverDll dll;
    EXPECT_NE(GetModuleHandleW(kClient), nullptr);
}

TEST_F(DllAttachTest, Detach_ClientLoaded_FreesItBetweenTheTwoDetachLines)
{
    m_Registry.SetClientDllName(kClient);
    for (UINT mask : {0x200u, kAllLevels})
    {
        SCOPED_TRACE(mask);
        m_Registry.SetTraceMask(mask);
        DriverDll dll;
        ASSERT_NE(GetModuleHandleW(kClient), nullptr);
        // Left alive: the table that it would put right again is gone with the DLL.
        new ImportPatch(dll.Module(), "kernel32.dll", "FreeLibrary", FreeAndRemember, &s_pFreeLibrary);
        m_Trace.Clear();
        dll.Unload();
        // The platform may start a thread of its own at any time.
        EXPECT_EQ(Without(s_LinesAtFree, "DLL_THREAD_"), Lines{"DLL_PROCESS_DETACH\n"});
        EXPECT_EQ(Without(m_Trace.Lines(), "DLL_THREAD_"),
            (Lines{"DLL_PROCESS_DETACH\n", "DLL_PROCESS_DETACH PID:" + Pid() + "\n"}));
        EXPECT_EQ(GetModuleHandleW(kClient), nullptr);
    }
}

TEST_F(DllAttachTest, Thread_StartsAndEnds_IsToldByTheThreadItself)
{
    m_Registry.SetTraceMask(0x80);
    DriverDll dll;
    m_Trace.Clear();
    std::thread([] {}).join();
    const auto lines = m_Trace.ThreadLines();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].m_Text, "DLL_THREAD_ATTACH\n");
    EXPECT_EQ(lines[1].m_Text, "DLL_THREAD_DETACH\n");
    EXPECT_EQ(lines[1].m_ThreadId, lines[0].m_ThreadId);
    EXPECT_NE(lines[0].m_ThreadId, GetCurrentThreadId());
}

TEST_F(DllAttachTest, Reason_Unknown_IsTracedAndAnsweredWithTrue)
{
    m_Registry.SetTraceMask(0x1);
    m_Registry.SetClientDllName(kClient);
    DriverDll dll;
    m_Trace.Clear();
    EXPECT_EQ(dll.DllMain(7), TRUE);
    EXPECT_EQ(m_Trace.Lines(), Lines{"DllMain unknown reason! 7\n"});
    EXPECT_NE(GetModuleHandleW(kClient), nullptr);
}

TEST_F(DllAttachTest, Reason_OfAThread_IsTracedAndAnsweredWithTrue)
{
    m_Registry.SetTraceMask(kAllLevels);
    DriverDll dll;
    m_Trace.Clear();
    EXPECT_EQ(dll.DllMain(DLL_THREAD_ATTACH), TRUE);
    EXPECT_EQ(dll.DllMain(DLL_THREAD_DETACH), TRUE);
    EXPECT_EQ(m_Trace.Lines(), (Lines{"DLL_THREAD_ATTACH\n", "DLL_THREAD_DETACH\n"}));
}

TEST_F(DllAttachTest, LogFile_ErrorsAndFileBit_HoldsWhatTheDebuggerGot)
{
    m_Registry.SetTraceMask(0x801);
    m_Registry.SetClientDllName(L"NoSuchLibrary.dll");
    const MachineLog log;
    {
        DriverDll dll;
    }
    EXPECT_EQ(m_Trace.Count("UMDUtilDebugTraceDllMain LoadLibrary failed! 126\n"), 1u);
    EXPECT_EQ(log.MessagesOf(GetCurrentProcessId()), m_Trace.Lines());
}
}  // namespace
