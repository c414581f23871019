#include "device/UMDGuard.h"

#include "util/UMDUtilDebugTrace.h"

// The work is reached through a pointer, never inlined: a fault in the __try block's own frame would not be caught by
// every compiler. This function owns nothing that a fault would have to destroy.
HRESULT UMDGuardCall(const char* pEntryName, HRESULT (*pWork)(void*), void* pContext)
{
    __try
    {
        return pWork(pContext);
    }
    __except (UMDUtilDebugTraceException(GetExceptionCode()))
    {
        UMD_TRACE(UMDTRACE_ERROR, L"Exception in DDI function! %S failed!\n", pEntryName);
        return S_OK;
    }
}
