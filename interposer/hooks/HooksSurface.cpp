// IDirect3DSurface9: surfaces of their own, and levels of textures.
#include "interposer/carry/CarryLocks.h"
#include "interposer/hooks/HookCarried.h"
#include "interposer/hooks/Hooks.h"

namespace
{

using Surface = IDirect3DSurface9;
using LockRect = HookMethod<&Surface::LockRect>;
using UnlockRect = HookMethod<&Surface::UnlockRect>;
using ReleaseDC = HookMethod<&Surface::ReleaseDC>;

void OnLocked(Surface* pThis, D3DLOCKED_RECT* pLocked, const RECT* pRect, DWORD flags)
{
    if (const CarryPlace place = CarryFind(pThis))
        CarryFor(pThis, [&](CarryDevice&) { CarryLocked(place, *pLocked, pRect, flags); });
}

void OnUnlocking(Surface* pThis)
{
    if (const CarryPlace place = CarryFind(pThis))
        CarryFor(pThis, [&](CarryDevice&) { CarryUnlocking(place); });
}

// What was drawn with the system's own functions is read back, as if it had been written under a lock.
HRESULT STDMETHODCALLTYPE OnReleaseDC(Surface* pThis, HDC hDC)
{
    const HookDepth depth;
    const HRESULT hr = ReleaseDC::Platform(pThis, hDC);
    const CarryPlace place = CarryFind(pThis);
    D3DLOCKED_RECT locked;
    if (FAILED(hr) || !depth.IsOuter() || !place || FAILED(LockRect::Platform(pThis, &locked, nullptr, 0)))
        return hr;
    CarryFor(pThis, [&](CarryDevice&) {
        place->m_Locks[place.m_Level] = {
            static_cast<BYTE*>(locked.pBits), static_cast<UINT>(locked.Pitch), place->Rect(place.m_Level), 0};
        CarryUnlocking(place);
    });
    UnlockRect::Platform(pThis);
    return hr;
}

}  // namespace

void HooksSurface(IDirect3DSurface9* pSurface)
{
    const HookRow rows[] = {
        LockRect::RowBehind<OnLocked>(), UnlockRect::RowAround<OnUnlocking>(), ReleaseDC::Row(OnReleaseDC)};
    HookInstall(pSurface, rows);
}
