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

ULONG STDMETHODCALLTYPE OnRelease(Device* pThis)
{
    const HookDepth depth;
    const ULONG left = Release::Platform(pThis);
    if (left == 0)
        CarryEnd(pThis);
    return left;
}

// The picture is carried first: what the back buffer holds behind a present is nobody's promise.
template <auto kPresent>
HookRow PresentRow()
{
    return HookMethod<kPresent>::template RowAround<[](Device* pThis, auto...) {
        HooksPresenting(pThis, [](CarryDevice& device) { device.Output().PresentAll(); });
    },
        [](auto...) { HooksPresented(); }>();
}

void Reset(Device* pThis)
{
    CarryFor(pThis, [](CarryDevice& device) { device.Reset(); });
}

}  // namespace

void HooksDevice(IDirect3DDevice9* pDevice)
{
    const HookRow presents[] = {PresentRow<&Device::Present>()};
    HookInstall(pDevice, presents);
    UMDComPtr<DeviceEx> pEx;
    const bool bEx = SUCCEEDED(pDevice->QueryInterface(IID_IDirect3DDevice9Ex, reinterpret_cast<void**>(pEx.Put())));
    if (bEx)
    {
        const HookRow exPresents[] = {PresentRow<&DeviceEx::PresentEx>()};
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
