// IDirect3DTexture9.
#include "interposer/carry/CarryLocks.h"
#include "interposer/hooks/HookCarried.h"
#include "interposer/hooks/Hooks.h"
#include "interposer/run/RunLedger.h"
#include "interposer/run/RunLimits.h"

namespace
{

using Texture = IDirect3DTexture9;

CarryPlace PlaceOf(Texture* pTexture, UINT level)
{
    CarryPlace place = CarryFind(pTexture);
    place.m_Level = level;
    return place;
}

}  // namespace

void HooksTexture(IDirect3DTexture9* pTexture)
{
    const HookRow rows[] = {
        HookMethod<&Texture::LockRect>::RowBehind<[](Texture* pThis, UINT level, D3DLOCKED_RECT* pLocked,
                                                      const RECT* pRect, DWORD flags) {
            if (const CarryPlace place = PlaceOf(pThis, level))
                CarryFor(pThis, [&](CarryDevice&) { CarryLocked(place, *pLocked, pRect, flags); });
        }>(),
        HookMethod<&Texture::UnlockRect>::RowAround<[](Texture* pThis, UINT level) {
            if (const CarryPlace place = PlaceOf(pThis, level))
                CarryFor(pThis, [&](CarryDevice&) { CarryUnlocking(place); });
        }>(),
        HookMethod<&Texture::GenerateMipSubLevels>::RowBehind<[](auto...) { RunLimit(kLimitGeneratedLevels); }>(),
        HookMethod<&Texture::SetLOD>::RowBehind<[](Texture*, DWORD lod) {
            if (lod != 0)
                RunLimit(kLimitTextureLod);
        }>(),
    };
    HookInstall(pTexture, rows);
}
