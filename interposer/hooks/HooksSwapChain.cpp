// IDirect3DSwapChain9.
#include "interposer/hooks/HookMethod.h"
#include "interposer/hooks/Hooks.h"
#include "interposer/hooks/HooksPresent.h"
#include "util/UMDComPtr.h"

namespace
{

using Present = HookMethod<&IDirect3DSwapChain9::Present>;

HRESULT STDMETHODCALLTYPE OnPresent(
    IDirect3DSwapChain9* pThis, const RECT* pFrom, const RECT* pTo, HWND hWnd, const RGNDATA* pDirty, DWORD flags)
{
    const HookDepth depth;
    UMDComPtr<IDirect3DDevice9> pDevice;
    if (depth.IsOuter() && SUCCEEDED(pThis->GetDevice(pDevice.Put())))
        HooksPresenting(pDevice.Get(), [&](CarryDevice& device) { device.Output().Present(pThis); });
    const HRESULT hr = Present::Platform(pThis, pFrom, pTo, hWnd, pDirty, flags);
    if (depth.IsOuter() && SUCCEEDED(hr))
        HooksPresented();
    return hr;
}

void OnFrontBuffer(IDirect3DSwapChain9* pThis, IDirect3DSurface9* pMemory)
{
    CarryFor(pThis, [&](CarryDevice& device) { device.Output().AnswerFront(pThis, pMemory); });
}

}  // namespace

void HooksSwapChain(IDirect3DSwapChain9* pChain)
{
    const HookRow rows[] = {
        Present::Row(OnPresent), HookMethod<&IDirect3DSwapChain9::GetFrontBufferData>::RowBehind<OnFrontBuffer>()};
    HookInstall(pChain, rows);
}
