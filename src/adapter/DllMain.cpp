#include "output/UMDClientLibrary.h"
#include "util/UMDUtilDebugTrace.h"

extern "C" BOOL APIENTRY DllMain(HINSTANCE, DWORD reason, LPVOID)
{
    // First of all: it reads the trace mask, which everything below obeys.
    UMDUtilDebugTraceDllMainReason(reason);
    if (reason == DLL_PROCESS_ATTACH)
    {
        UMDClientLibraryLoad();
    }
    else if (reason == DLL_PROCESS_DETACH)
    {
        UMDClientLibraryFree();
        UMD_TRACE(UMDTRACE_DETAIL, L"DLL_PROCESS_DETACH PID:%d\n", GetCurrentProcessId());
    }
    return TRUE;
}
