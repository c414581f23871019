// IDirect3DDevice9 and IDirect3DDevice9Ex: what is created. The method tables of a kind of object are hooked when the
// first one is made.
#include "interposer/carry/CarryCreate.h"
#include "interposer/hooks/HookCarried.h"
#include "interposer/hooks/Hooks.h"
#include "interposer/hooks/HooksBuffer.h"
#include "interposer/run/RunLedger.h"
#include "interposer/run/RunLimits.h"
#include "util/UMDComPtr.h"

namespace
{

using Device = IDirect3DDevice9;
using DeviceEx = IDirect3DDevice9Ex;

void Texture(CarryDevice& device, IDirect3DTexture9* pTexture)
{
    HooksTexture(pTexture);
    UMDComPtr<IDirect3DSurface9> pSurface;
    if (SUCCEEDED(pTexture->GetSurfaceLevel(0, pSurface.Put())))
        HooksSurface(pSurface.Get());
    CarryCreateTexture(device, pTexture);
}

/// Finds the new surface among the arguments.
constexpr auto kOnSurface = [](CarryDevice& device, auto... arguments) {
    const auto take = [&](auto argument) {
        if constexpr (std::is_same_v<decltype(argument), IDirect3DSurface9**>)
        {
            HooksSurface(*argument);
            CarryCreateSurface(device, *argument);
        }
    };
    (take(arguments), ...);
};

void Resources(Device* pDevice)
{
    const HookRow rows[] = {
        HookRowCarried<&Device::CreateTexture,
            [](CarryDevice& device, UINT, UINT, UINT, DWORD, D3DFORMAT, D3DPOOL, IDirect3DTexture9** ppTexture,
                HANDLE*) { Texture(device, *ppTexture); }>(),
        HookRowCarried<&Device::CreateRenderTarget, kOnSurface>(),
        HookRowCarried<&Device::CreateDepthStencilSurface, kOnSurface>(),
        HookRowCarried<&Device::CreateOffscreenPlainSurface, kOnSurface>(),
        HookRowCarried<&Device::CreateVertexBuffer,
            [](CarryDevice& device, UINT, DWORD, DWORD, D3DPOOL, IDirect3DVertexBuffer9** ppBuffer, HANDLE*) {
                HooksBuffer<IDirect3DVertexBuffer9>::Install(*ppBuffer);
                CarryCreateVertexBuffer(device, *ppBuffer);
            }>(),
        HookRowCarried<&Device::CreateIndexBuffer,
            [](CarryDevice& device, UINT, DWORD, D3DFORMAT, D3DPOOL, IDirect3DIndexBuffer9** ppBuffer, HANDLE*) {
                HooksBuffer<IDirect3DIndexBuffer9>::Install(*ppBuffer);
                CarryCreateIndexBuffer(device, *ppBuffer);
            }>(),
        HookMethod<&Device::CreateCubeTexture>::RowBehind<[](auto...) { RunLimit(kLimitCubeVolume); }>(),
        HookMethod<&Device::CreateVolumeTexture>::RowBehind<[](auto...) { RunLimit(kLimitCubeVolume); }>(),
    };
    HookInstall(pDevice, rows);
}

void Others(Device* pDevice)
{
    const HookRow rows[] = {
        HookRowCarried<&Device::CreateAdditionalSwapChain,
            [](CarryDevice& device, D3DPRESENT_PARAMETERS*, IDirect3DSwapChain9** ppChain) {
                HooksSwapChain(*ppChain);
                device.Output().AttachChain(*ppChain);
            }>(),
        HookRowCarried<&Device::CreateStateBlock,
            [](CarryDevice&, D3DSTATEBLOCKTYPE, IDirect3DStateBlock9** ppBlock) { HooksStateBlock(*ppBlock); }>(),
        HookRowCarried<&Device::BeginStateBlock, [](CarryDevice& device) { device.Record(true); }>(),
        HookRowCarried<&Device::EndStateBlock,
            [](CarryDevice& device, IDirect3DStateBlock9** ppBlock) {
                device.Record(false);
                HooksStateBlock(*ppBlock);
            }>(),
        HookMethod<&Device::CreateQuery>::RowBehind<[](Device*, D3DQUERYTYPE, IDirect3DQuery9** ppQuery) {
            if (ppQuery != nullptr)
                RunLimit(kLimitQueries);
        }>(),
    };
    HookInstall(pDevice, rows);
}

}  // namespace

void HooksDeviceObjects(IDirect3DDevice9* pDevice)
{
    Resources(pDevice);
    Others(pDevice);
    UMDComPtr<IDirect3DSurface9> pBackBuffer;
    if (SUCCEEDED(pDevice->GetBackBuffer(0, 0, D3DBACKBUFFER_TYPE_MONO, pBackBuffer.Put())))
        HooksSurface(pBackBuffer.Get());
}

void HooksDeviceObjectsEx(IDirect3DDevice9Ex* pDevice)
{
    const HookRow rows[] = {
        HookRowCarried<&DeviceEx::CreateRenderTargetEx, kOnSurface>(),
        HookRowCarried<&DeviceEx::CreateDepthStencilSurfaceEx, kOnSurface>(),
        HookRowCarried<&DeviceEx::CreateOffscreenPlainSurfaceEx, kOnSurface>(),
    };
    HookInstall(pDevice, rows);
}
