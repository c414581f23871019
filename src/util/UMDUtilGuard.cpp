#include "util/UMDUtilGuard.h"

#include "util/UMDUtilDebugTrace.h"

#include <malloc.h>

// The C++ library takes this name for a macro of its own.
#undef __try

// Alone with its __try: beside objects that have destructors it would destroy them twice.
bool UMDUtilGuardCall(void (*pFunction)(const void* pArgument), const void* pArgument)
{
    DWORD code = 0;
    __try
    {
        pFunction(pArgument);
        return true;
    }
    __except (code = GetExceptionCode(), EXCEPTION_EXECUTE_HANDLER)
    {
        // Neither in the filter, which runs on what an overflow has left of the stack. The page that tells of one is
        // gone with the first; the next would end the process without a word.
        if (code == EXCEPTION_STACK_OVERFLOW)
            _resetstkoflw();
        UMDUtilDebugTraceException(code);
        return false;
    }
}
