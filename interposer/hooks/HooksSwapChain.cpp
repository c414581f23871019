// IDirect3DSwapChain9.
#include "interposer/hooks/HookMethod.h"
#include "interposer/hooks/Hooks.h"
#include "interposer/hooks/HooksPresent.h"
#include "util/UMDComPtr.h"

void HooksSwapChain(IDirect3DSwapChain9* pChain)
{
    using Chain = IDirect3DSwapChain9;
    const HookRow rows[] = {
        HookMethod<&Chain::Present>::RowAround<[](Chain* pThis, auto...) {
            UMDComPtr<IDirect3DDevice9> pDevice;
            if (SUCCEEDED(pThis->GetDevice(pDevice.Put())))
                HooksPresenting(pDevice.Get(), [&](CarryDevice& device) { device.Output().Present(pThis); });
        },
            [](auto...) { HooksPresented(); }>(),
        HookMethod<&Chain::GetFrontBufferData>::RowBehind<[](Chain* pThis, IDirect3DSurface9* pMemory) {
            CarryFor(pThis, [&](CarryDevice& device) { device.Output().AnswerFront(pThis, pMemory); });
        }>(),
    };
    HookInstall(pChain, rows);
}
