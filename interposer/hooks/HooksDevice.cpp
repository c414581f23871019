// IDirect3DDevice9 and IDirect3DDevice9Ex.
#include "interposer/hooks/HookCarried.h"
#include "interposer/hooks/Hooks.h"
#include "interposer/hooks/HooksPresent.h"
#include "interposer/run/RunLedger.h"
#include "util/UMDComPtr.h"

namespace
{

using Device = IDirect3DDevice9;
using DeviceEx = IDirect3DDevice9Ex;
using Release = HookMethod<&Device::Release>;
using Present = HookMethod<&Device::Present>;
using PresentEx = HookMethod<&DeviceEx::PresentEx>;

ULONG STDMETHODCALLTYPE OnRelease(Device* pThis)
{
    const HookDepth depth;
    const ULONG left = Release::Platform(pThis);
    if (left == 0)
        CarryEnd(pThis);
    return left;
}

// The picture is carried first: what the back buffer holds behind a present is nobody's promise.
HRESULT STDMETHODCALLTYPE OnPresent(Device* pThis, const RECT* pFrom, const RECT* pTo, HWND hWnd, const RGNDATA* pDirty)
{
    const HookDepth depth;
    if (depth.IsOuter() && pThis->TestCooperativeLevel() == D3D_OK)
        CarryFor(pThis, [](CarryDevice& device) { device.Output().PresentAll(); });
    const HRESULT hr = Present::Platform(pThis, pFrom, pTo, hWnd, pDirty);
    if (depth.IsOuter() && SUCCEEDED(hr))
        HooksFramePresented();
    return hr;
}

HRESULT STDMETHODCALLTYPE OnPresentEx(
    DeviceEx* pThis, const RECT* pFrom, const RECT* pTo, HWND hWnd, const RGNDATA* pDirty, DWORD flags)
{
    const HookDepth depth;
    if (depth.IsOuter() && pThis->TestCooperativeLevel() == D3D_OK)
        CarryFor(static_cast<Device*>(pThis), [](CarryDevice& device) { device.Output().PresentAll(); });
    const HRESULT hr = PresentEx::Platform(pThis, pFrom, pTo, hWnd, pDirty, flags);
    if (depth.IsOuter() && SUCCEEDED(hr))
        HooksFramePresented();
    return hr;
}

template <auto kMethod, auto kCarry>
HookRow Row()
{
    return HookRowCarried<kMethod, kCarry>();
}

}  // namespace

void HooksDevice(IDirect3DDevice9* pDevice)
{
    const HookRow presents[] = {Present::Row(OnPresent)};
    HookInstall(pDevice, presents);
    UMDComPtr<DeviceEx> pEx;
    if (SUCCEEDED(pDevice->QueryInterface(IID_IDirect3DDevice9Ex, reinterpret_cast<void**>(pEx.Put()))))
    {
        const HookRow exRows[] = {PresentEx::Row(OnPresentEx)};
        HookInstall(pDevice, exRows);
    }
    if (RunOf().m_Mode == RunMode::Off)
        return;
    const HookRow rows[] = {
        Release::Row(OnRelease),
        Row<&Device::Clear, [](CarryDevice& device, DWORD count, const D3DRECT* pRects, DWORD flags, D3DCOLOR color,
                                float z, DWORD stencil) { device.Clear(count, pRects, flags, color, z, stencil); }>(),
    };
    HookInstall(pDevice, rows);
}
