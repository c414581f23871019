// IDirect3DDevice9: what is drawn, filled and copied.
#include "interposer/carry/CarryCopies.h"
#include "interposer/hooks/HookCarried.h"
#include "interposer/hooks/Hooks.h"
#include "interposer/run/RunLedger.h"
#include "interposer/run/RunLimits.h"
#include "util/UMDComPtr.h"

namespace
{

using Device = IDirect3DDevice9;

void Draws(Device* pDevice)
{
    const HookRow rows[] = {
        HookRowCarried<&Device::BeginScene, [](CarryDevice& device) { device.Scene(true); }>(),
        HookRowCarried<&Device::EndScene, [](CarryDevice& device) { device.Scene(false); }>(),
        HookRowCarried<&Device::Clear, [](CarryDevice& device, auto... values) { device.Clear(values...); }>(),
        HookRowCarried<&Device::DrawPrimitive, kHookDraws<&CarryDraws::Draw>>(),
        HookRowCarried<&Device::DrawIndexedPrimitive, kHookDraws<&CarryDraws::DrawIndexed>>(),
        HookRowCarried<&Device::DrawPrimitiveUP, kHookDraws<&CarryDraws::DrawMemory>>(),
        HookRowCarried<&Device::DrawIndexedPrimitiveUP, kHookDraws<&CarryDraws::DrawIndexedMemory>>(),
        HookMethod<&Device::ProcessVertices>::RowBehind<[](auto...) { RunLimit(kLimitProcessVertices); }>(),
        HookMethod<&Device::DrawRectPatch>::RowBehind<[](auto...) { RunLimit(kLimitPatches); }>(),
        HookMethod<&Device::DrawTriPatch>::RowBehind<[](auto...) { RunLimit(kLimitPatches); }>(),
    };
    HookInstall(pDevice, rows);
}

void Copies(Device* pDevice)
{
    const HookRow rows[] = {
        HookRowCarried<&Device::StretchRect, CarryStretch>(),
        HookRowCarried<&Device::UpdateSurface, CarryUpdateSurface>(),
        HookRowCarried<&Device::UpdateTexture, CarryUpdateTexture>(),
        HookRowCarried<&Device::ColorFill, CarryFill>(),
        HookRowCarried<&Device::GetRenderTargetData, CarryTargetData>(),
        HookRowCarried<&Device::GetFrontBufferData,
            [](CarryDevice& device, UINT chain, IDirect3DSurface9* pMemory) {
                UMDComPtr<IDirect3DSwapChain9> pChain;
                HostCheck(device.Platform()->GetSwapChain(chain, pChain.Put()), "GetSwapChain");
                device.Output().AnswerFront(pChain.Get(), pMemory);
            }>(),
    };
    HookInstall(pDevice, rows);
}

}  // namespace

void HooksDeviceDraws(IDirect3DDevice9* pDevice)
{
    Draws(pDevice);
    Copies(pDevice);
}
