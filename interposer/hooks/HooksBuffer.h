// Locks of vertex and index buffers, which are alike.
#pragma once

#include "interposer/carry/CarryLocks.h"
#include "interposer/hooks/HookCarried.h"

template <typename Buffer>
struct HooksBuffer
{
    using Lock = HookMethod<&Buffer::Lock>;
    using Unlock = HookMethod<&Buffer::Unlock>;

    static HRESULT STDMETHODCALLTYPE OnLock(Buffer* pThis, UINT offset, UINT size, void** ppData, DWORD flags)
    {
        const HookDepth depth;
        const HRESULT hr = Lock::Platform(pThis, offset, size, ppData, flags);
        if (SUCCEEDED(hr) && depth.IsOuter())
            if (const CarryPlace place = CarryFind(pThis))
                *ppData = CarryBufferLocked(*place.m_pResource, *ppData, offset, size, flags);
        return hr;
    }

    static HRESULT STDMETHODCALLTYPE OnUnlock(Buffer* pThis)
    {
        const HookDepth depth;
        if (depth.IsOuter())
            if (const CarryPlace place = CarryFind(pThis))
                CarryFor(pThis, [&](CarryDevice&) { CarryBufferUnlocking(*place.m_pResource); });
        return Unlock::Platform(pThis);
    }

    static void Install(Buffer* pBuffer)
    {
        const HookRow rows[] = {Lock::Row(OnLock), Unlock::Row(OnUnlock)};
        HookInstall(pBuffer, rows);
    }
};
