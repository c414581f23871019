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
        HookRowCarried<&Device::Clear,
            [](CarryDevice& device, DWORD count, const D3DRECT* pRects, DWORD flags, D3DCOLOR color, float z,
                DWORD stencil) { device.Clear(count, pRects, flags, color, z, stencil); }>(),
        HookRowCarried<&Device::DrawPrimitive, [](CarryDevice& device, D3DPRIMITIVETYPE type, UINT first,
                                                   UINT count) { device.Draws().Draw(type, first, count); }>(),
        HookRowCarried<&Device::DrawIndexedPrimitive,
            [](CarryDevice& device, D3DPRIMITIVETYPE type, INT base, UINT least, UINT vertices, UINT first,
                UINT count) { device.Draws().DrawIndexed(type, base, least, vertices, first, count); }>(),
        HookRowCarried<&Device::DrawPrimitiveUP,
            [](CarryDevice& device, D3DPRIMITIVETYPE type, UINT count, const void* pVertices, UINT stride) {
                device.Draws().DrawMemory(type, count, pVertices, stride);
            }>(),
        HookRowCarried<&Device::DrawIndexedPrimitiveUP,
            [](CarryDevice& device, D3DPRIMITIVETYPE type, UINT least, UINT vertices, UINT count, const void* pIndices,
                D3DFORMAT format, const void* pVertices, UINT stride) {
                device.Draws().DrawIndexedMemory(type, least, vertices, count, pIndices, format, pVertices, stride);
            }>(),
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
