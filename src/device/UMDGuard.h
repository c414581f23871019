// The exception guard of the entry functions: a fault of ours must not end somebody else's program.
#pragma once

#include <windows.h>

/// Calls pWork(pContext) and gives back its result. A structured exception is traced with its name and the entry's
/// name, and answered with S_OK: the runtime never sees a failure from a faulting call.
HRESULT UMDGuardCall(const char* pEntryName, HRESULT (*pWork)(void*), void* pContext);

/// Guards the body of one entry function.
/// @param pEntryName the entry's name, for the trace.
/// @param work       a callable without arguments that returns HRESULT; owns nothing that a fault would leak.
template <typename Work>
HRESULT UMDGuard(const char* pEntryName, Work work)
{
    return UMDGuardCall(pEntryName, [](void* pContext) { return (*static_cast<Work*>(pContext))(); }, &work);
}
