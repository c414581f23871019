// IDirect3DTexture9.
#include "interposer/carry/CarryLocks.h"
#include "interposer/hooks/HookCarried.h"
#include "interposer/hooks/Hooks.h"
#include "interposer/run/RunLedger.h"
#include "interposer/run/RunLimits.h"

namespace
{

using Texture = IDirect3DTexture9;
using LockRect = HookMethod<&Texture::LockRect>;
using UnlockRect = HookMethod<&Texture::UnlockRect>;

CarryPlace PlaceOf(Texture* pTexture, UINT level)
{
    CarryPlace place = CarryFind(pTexture);
    place.m_Level = level;
    return place;
}

HRESULT STDMETHODCALLTYPE OnLockRect(
    Texture* pThis, UINT level, D3DLOCKED_RECT* pLocked, const RECT* pRect, DWORD flags)
{
    const HookDepth depth;
    const HRESULT hr = LockRect::Platform(pThis, level, pLocked, pRect, flags);
    if (SUCCEEDED(hr) && depth.IsOuter())
        if (const CarryPlace place = PlaceOf(pThis, level))
            CarryFor(pThis, [&](CarryDevice&) { CarryLocked(place, *pLocked, pRect, flags); });
    return hr;
}

HRESULT STDMETHODCALLTYPE OnUnlockRect(Texture* pThis, UINT level)
{
    const HookDepth depth;
    if (depth.IsOuter())
        if (const CarryPlace place = PlaceOf(pThis, level))
            CarryFor(pThis, [&](CarryDevice&) { CarryUnlocking(place); });
    return UnlockRect::Platform(pThis, level);
}

}  // namespace

void HooksTexture(IDirect3DTexture9* pTexture)
{
    const HookRow rows[] = {
        LockRect::Row(OnLockRect),
        UnlockRect::Row(OnUnlockRect),
        HookMethod<&Texture::GenerateMipSubLevels>::RowBehind<[](auto...) { RunLimit(kLimitGeneratedLevels); }>(),
        HookMethod<&Texture::SetLOD>::RowBehind<[](Texture*, DWORD lod) {
            if (lod != 0)
                RunLimit(kLimitTextureLod);
        }>(),
    };
    HookInstall(pTexture, rows);
}
