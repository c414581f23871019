// The exception guard of the entry functions: a fault of ours must not end somebody else's program.
#pragma once

#include "util/UMDUtilDebugTrace.h"

#include <windows.h>

#include <type_traits>

/// Traces that an entry faulted, and answers for it: the runtime never sees a failure from a faulting call.
HRESULT UMDGuardAnswerFault(const char* pEntryName);

/// The work of a guard. Never inlined: a fault in the __try block's own frame would not be caught by every compiler.
template <typename Work>
__declspec(noinline) HRESULT UMDGuardWork(const Work& work)
{
    return work();
}

// The C++ library takes this name for a macro of its own.
#pragma push_macro("__try")
#undef __try

/// Guards the body of one entry function. A structured exception is traced with its name and the entry's name, and
/// answered with S_OK. Small enough to become part of its entry, which then costs one call more than its work.
/// @param pEntryName the entry's name, for the trace.
/// @param work       a callable without arguments that returns HRESULT; owns nothing that a fault would leak.
template <typename Work>
HRESULT UMDGuard(const char* pEntryName, Work work)
{
    static_assert(std::is_trivially_destructible_v<Work>, "a fault would destroy it twice");
    __try
    {
        return UMDGuardWork(work);
    }
    __except (UMDUtilDebugTraceException(GetExceptionCode()))
    {
        return UMDGuardAnswerFault(pEntryName);
    }
}

#pragma pop_macro("__try")
