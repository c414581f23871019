// IDirect3DDevice9: what is set. While a state block is recorded nothing of it is.
#include "interposer/hooks/HookCarried.h"
#include "interposer/hooks/Hooks.h"
#include "interposer/run/RunLedger.h"
#include "interposer/run/RunLimits.h"

namespace
{

using Device = IDirect3DDevice9;

/// A row of what a state block records.
template <auto kMethod, auto kCarry>
HookRow Set()
{
    return HookRowCarried<kMethod, [](CarryDevice& device, auto... arguments) {
        if (!device.IsRecording())
            kCarry(device, arguments...);
    }>();
}

/// Whether a value of a sampler state asks for more than a point.
bool IsFilter(D3DSAMPLERSTATETYPE state, DWORD value)
{
    const bool bMip = state == D3DSAMP_MIPFILTER;
    return (state == D3DSAMP_MAGFILTER || state == D3DSAMP_MINFILTER || bMip) && value > D3DTEXF_POINT;
}

using SetSamplerState = HookMethod<&Device::SetSamplerState>;

// Where the run says so, both sides sample by point.
HRESULT STDMETHODCALLTYPE OnSetSamplerState(Device* pThis, DWORD sampler, D3DSAMPLERSTATETYPE state, DWORD value)
{
    const HookDepth depth;
    if (depth.IsOuter() && RunOf().m_bPoint && IsFilter(state, value))
        value = D3DTEXF_POINT;
    const HRESULT hr = SetSamplerState::Platform(pThis, sampler, state, value);
    if (depth.IsOuter() && SUCCEEDED(hr))
        CarryFor(pThis, [&](CarryDevice& device) {
            if (!device.IsRecording())
                device.State().SamplerState(sampler, state, value);
        });
    return hr;
}

void FixedPipeline(Device* pDevice)
{
    const HookRow rows[] = {
        SetSamplerState::Row(OnSetSamplerState),
        Set<&Device::SetRenderState, [](CarryDevice& device, D3DRENDERSTATETYPE state,
                                         DWORD value) { device.State().RenderState(state, value); }>(),
        Set<&Device::SetTextureStageState, [](CarryDevice& device, DWORD stage, D3DTEXTURESTAGESTATETYPE state,
                                               DWORD value) { device.State().StageState(stage, state, value); }>(),
        Set<&Device::SetTexture, [](CarryDevice& device, DWORD stage,
                                     IDirect3DBaseTexture9* pTexture) { device.State().Texture(stage, pTexture); }>(),
        Set<&Device::SetTransform, [](CarryDevice& device, D3DTRANSFORMSTATETYPE type,
                                       const D3DMATRIX*) { device.State().Transform(type); }>(),
        Set<&Device::MultiplyTransform, [](CarryDevice& device, D3DTRANSFORMSTATETYPE type,
                                            const D3DMATRIX*) { device.State().Transform(type); }>(),
        Set<&Device::SetViewport, [](CarryDevice& device, const D3DVIEWPORT9*) { device.State().Viewport(); }>(),
        Set<&Device::SetScissorRect, [](CarryDevice& device, const RECT*) { device.State().Scissor(); }>(),
        Set<&Device::SetClipPlane,
            [](CarryDevice& device, DWORD index, const float*) { device.State().ClipPlane(index); }>(),
        Set<&Device::SetLight, [](CarryDevice&, DWORD, const D3DLIGHT9*) { RunLimit(kLimitLights); }>(),
        Set<&Device::SetMaterial, [](CarryDevice&, const D3DMATERIAL9*) { RunLimit(kLimitMaterials); }>(),
        Set<&Device::SetCurrentTexturePalette, [](CarryDevice&, UINT) { RunLimit(kLimitPalettes); }>(),
    };
    HookInstall(pDevice, rows);
}

void Shaders(Device* pDevice)
{
    const HookRow rows[] = {
        Set<&Device::SetFVF, [](CarryDevice& device, DWORD) { device.State().Declaration(); }>(),
        Set<&Device::SetVertexDeclaration,
            [](CarryDevice& device, IDirect3DVertexDeclaration9*) { device.State().Declaration(); }>(),
        Set<&Device::SetVertexShader,
            [](CarryDevice& device, IDirect3DVertexShader9* pShader) { device.State().VertexShader(pShader); }>(),
        Set<&Device::SetPixelShader,
            [](CarryDevice& device, IDirect3DPixelShader9* pShader) { device.State().PixelShader(pShader); }>(),
        Set<&Device::SetVertexShaderConstantF,
            [](CarryDevice& device, UINT first, const float* pValues, UINT count) {
                device.State().VertexConstants().Floats(first, pValues, count);
            }>(),
        Set<&Device::SetVertexShaderConstantI,
            [](CarryDevice& device, UINT first, const int* pValues, UINT count) {
                device.State().VertexConstants().Integers(first, pValues, count);
            }>(),
        Set<&Device::SetVertexShaderConstantB,
            [](CarryDevice& device, UINT first, const BOOL* pValues, UINT count) {
                device.State().VertexConstants().Booleans(first, pValues, count);
            }>(),
        Set<&Device::SetPixelShaderConstantF,
            [](CarryDevice& device, UINT first, const float* pValues, UINT count) {
                device.State().PixelConstants().Floats(first, pValues, count);
            }>(),
        Set<&Device::SetPixelShaderConstantI,
            [](CarryDevice& device, UINT first, const int* pValues, UINT count) {
                device.State().PixelConstants().Integers(first, pValues, count);
            }>(),
        Set<&Device::SetPixelShaderConstantB,
            [](CarryDevice& device, UINT first, const BOOL* pValues, UINT count) {
                device.State().PixelConstants().Booleans(first, pValues, count);
            }>(),
    };
    HookInstall(pDevice, rows);
}

void Targets(Device* pDevice)
{
    const HookRow rows[] = {
        HookRowCarried<&Device::SetRenderTarget,
            [](CarryDevice& device, DWORD index, IDirect3DSurface9* pTarget) {
                device.State().Target(index, pTarget);
            }>(),
        HookRowCarried<&Device::SetDepthStencilSurface,
            [](CarryDevice& device, IDirect3DSurface9* pDepth) { device.State().Depth(pDepth); }>(),
        Set<&Device::SetStreamSource, [](CarryDevice& device, UINT stream, IDirect3DVertexBuffer9* pBuffer, UINT offset,
                                          UINT stride) { device.Draws().Stream(stream, pBuffer, offset, stride); }>(),
        Set<&Device::SetStreamSourceFreq,
            [](CarryDevice& device, UINT stream, UINT divider) { device.Draws().StreamFrequency(stream, divider); }>(),
        Set<&Device::SetIndices,
            [](CarryDevice& device, IDirect3DIndexBuffer9* pBuffer) { device.Draws().Indices(pBuffer); }>(),
    };
    HookInstall(pDevice, rows);
}

}  // namespace

void HooksDeviceStates(IDirect3DDevice9* pDevice)
{
    FixedPipeline(pDevice);
    Shaders(pDevice);
    Targets(pDevice);
}
