#include "device/entries/UMDGuard.h"

HRESULT UMDGuardAnswerFault(const char* pEntryName)
{
    UMD_TRACE(UMDTRACE_ERROR, L"Exception in DDI function! %S failed!\n", pEntryName);
    return S_OK;
}
