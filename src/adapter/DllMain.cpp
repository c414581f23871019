#include "output/UMDClientLibrary.h"
#include "util/UMDUtilDebugTrace.h"

namespace __gnu_cxx
{
/// The C++ library's own: frees the memory that it has set aside on attach for exceptions thrown while memory is short.
void __freeres();
}  // namespace __gnu_cxx

extern "C" BOOL APIENTRY DllMain(HINSTANCE, DWORD reason, LPVOID pProcessEnds)
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
        // A process that loads and unloads the driver would lose a block a time. One that ends loses nothing, and its
        // heap may be locked by a thread that is no more.
        if (!pProcessEnds)
            __gnu_cxx::__freeres();
    }
    return TRUE;
}
