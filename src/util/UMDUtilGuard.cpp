#include "util/UMDUtilGuard.h"

#include "util/UMDUtilDebugTrace.h"

#include <malloc.h>

void UMDUtilGuardCaught(DWORD code)
{
    // The page that tells of an overflow is gone with the first one; the next would end the process without a word.
    if (code == EXCEPTION_STACK_OVERFLOW)
        _resetstkoflw();
    UMDUtilDebugTraceException(code);
}
