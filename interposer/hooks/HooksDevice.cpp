// IDirect3DDevice9 and IDirect3DDevice9Ex: what is presented, reset and released. What is drawn and set:
// HooksDeviceDraws.cpp, HooksDeviceStates.cpp; what is created: HooksDeviceObjects.cpp.
#include "interposer/carry/CarryDevice.h"
#include "interposer/hooks/HookMethod.h"
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
    if (depth.IsOuter())
        HooksPresenting(pThis, [](CarryDevice& device) { device.Output().PresentAll(); });
    const HRESULT hr = Present::Platform(pThis, pFrom, pTo, hWnd, pDirty);
    if (depth.IsOuter() && SUCCEEDED(hr))
        HooksPresented();
    return hr;
}

HRESULT STDMETHODCALLTYPE OnPresentEx(
    DeviceEx* pThis, const RECT* pFrom, const RECT* pTo, HWND hWnd, const RGNDATA* pDirty, DWORD flags)
{
    const HookDepth depth;
    if (depth.IsOuter())
        HooksPresenting(pThis, [](CarryDevice& device) { device.Output().PresentAll(); });
    const HRESULT hr = PresentEx::Platform(pThis, pFrom, pTo, hWnd, pDirty, flags);
    if (depth.IsOuter() && SUCCEEDED(hr))
        HooksPresented();
    return hr;
}

void Reset(Device* pThis)
{
    CarryFor(pThis, [](CarryDevice& device) { device.Reset(); });
}

}  // namespace

void HooksDevice(IDirect3DDevice9* pDevice)
{
    const HookRow presents[] = {Present::Row(OnPresent)};
    HookInstall(pDevice, presents);
    UMDComPtr<DeviceEx> pEx;
    const bool bEx = SUCCEEDED(pDevice->QueryInterface(IID_IDirect3DDevice9Ex, reinterpret_cast<void**>(pEx.Put())));
    if (bEx)
    {
        const HookRow exPresents[] = {PresentEx::Row(OnPresentEx)};
        HookInstall(pDevice, exPresents);
    }
    UMDComPtr<IDirect3DSwapChain9> pChain;
    if (SUCCEEDED(pDevice->GetSwapChain(0, pChain.Put())))
        HooksSwapChain(pChain.Get());
    if (RunOf().m_Mode == RunMode::Off)
        return;
    const HookRow rows[] = {
        Release::Row(OnRelease),
        HookMethod<&Device::Reset>::RowBehind<[](Device* pThis, auto...) { Reset(pThis); }>(),
    };
    HookInstall(pDevice, rows);
    HooksDeviceDraws(pDevice);
    HooksDeviceStates(pDevice);
    HooksDeviceObjects(pDevice);
    if (!bEx)
        return;
    const HookRow exRows[] = {
        HookMethod<&DeviceEx::ResetEx>::RowBehind<[](Device* pThis, auto...) { Reset(pThis); }>()};
    HookInstall(pDevice, exRows);
    HooksDeviceObjectsEx(pEx.Get());
}
