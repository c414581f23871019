#include "util/UMDUtilDebugTrace.h"

#include "util/UMDBuildStamp.h"
#include "util/UMDUtilRegistry.h"
#include "util/UMDVersion.h"

namespace
{
/// The kernel-mode driver's service key.
constexpr wchar_t kServiceKey[] = L"System\\CurrentControlSet\\Services\\TessloWddmKmode";

void PrintBanner()
{
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    UMDUtilDebugTrace(UMDTRACE_ALWAYS, L"  _____ ___ ___ ___ _    ___\n");
    UMDUtilDebugTrace(UMDTRACE_ALWAYS, L" |_   _| __/ __/ __| |  / _ \\\n");
    UMDUtilDebugTrace(UMDTRACE_ALWAYS, L"   | | | _|\\__ \\__ \\ |_| (_) |\n");
    UMDUtilDebugTrace(UMDTRACE_ALWAYS, L"   |_| |___|___/___/____\\___/\n");
    UMDUtilDebugTrace(UMDTRACE_ALWAYS, L"   virtual monitor   %S\n", UMD_VERSION_TEXT);
    UMDUtilDebugTrace(UMDTRACE_ALWAYS, L"\n");
    UMDUtilDebugTrace(UMDTRACE_ALWAYS, L" -----------------------------------------------\n");
    UMDUtilDebugTrace(UMDTRACE_ALWAYS, L"| Tesslo WDDM Umode DllMain\n");
    UMDUtilDebugTrace(UMDTRACE_ALWAYS, L"| Build: %S %S\n", UMD_BUILD_DATE, UMD_BUILD_TIME);
    UMDUtilDebugTrace(UMDTRACE_ALWAYS, L"| Call:  %.02d.%.02d. %d  %.02d:%.02d:%.02d\n", now.wMonth, now.wDay,
        now.wYear, now.wHour, now.wMinute, now.wSecond);
    UMDUtilDebugTrace(UMDTRACE_ALWAYS, L" -----------------------------------------------\n");
}
}  // namespace

void UMDUtilDebugTraceDllMainReason(DWORD reason)
{
    if (reason == DLL_PROCESS_ATTACH)
    {
        UINT mask = 0;
        if (UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kServiceKey, L"DebugLevelUMD", &mask, sizeof(mask)))
            g_DebugLevelUMD = mask;
    }
    if (g_DebugLevelUMD == 0)
        return;
    switch (reason)
    {
    case DLL_PROCESS_ATTACH:
        PrintBanner();
        UMDUtilDebugTrace(UMDTRACE_ALWAYS, L"DLL_PROCESS_ATTACH\n");
        break;
    case DLL_THREAD_ATTACH:
        UMDUtilDebugTrace(UMDTRACE_ALWAYS, L"DLL_THREAD_ATTACH\n");
        break;
    case DLL_PROCESS_DETACH:
        UMDUtilDebugTrace(UMDTRACE_ALWAYS, L"DLL_PROCESS_DETACH\n");
        break;
    case DLL_THREAD_DETACH:
        UMDUtilDebugTrace(UMDTRACE_ALWAYS, L"DLL_THREAD_DETACH\n");
        break;
    default:
        UMDUtilDebugTrace(UMDTRACE_ALWAYS, L"DllMain unknown reason! %d\n", reason);
        break;
    }
}
