#include "util/UMDUtilDebugTrace.h"

#include "util/UMDUtilDebugTraceLine.h"

UINT g_DebugLevelUMD = 0;

void UMDUtilDebugTrace(UINT level, const wchar_t* pFormat, ...)
{
    if (!(g_DebugLevelUMD & level))
        return;
    va_list arguments;
    va_start(arguments, pFormat);
    UMDUtilDebugTraceLine(pFormat, arguments);
    va_end(arguments);
}

HRESULT UMDFail(HRESULT hResult, const wchar_t* pFormat, ...)
{
    if (g_DebugLevelUMD & UMDTRACE_ERROR)
    {
        va_list arguments;
        va_start(arguments, pFormat);
        UMDUtilDebugTraceLine(pFormat, arguments);
        va_end(arguments);
    }
    return hResult;
}
