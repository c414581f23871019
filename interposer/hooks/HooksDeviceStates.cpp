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

constexpr auto kTransform = [](CarryDevice& device, D3DTRANSFORMSTATETYPE type, auto) {
    device.State().Transform(type);
};

void FixedPipeline(Device* pDevice)
{
    const HookRow rows[] = {
        SetSamplerState::Row(OnSetSamplerState),
        Set<&Device::SetRenderState, kHookState<&CarryState::RenderState>>(),
        Set<&Device::SetTextureStageState, kHookState<&CarryState::StageState>>(),
        Set<&Device::SetTexture, kHookState<&CarryState::Texture>>(),
        Set<&Device::SetTransform, kTransform>(),
        Set<&Device::MultiplyTransform, kTransform>(),
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

template <auto kSet>
constexpr auto kVertexConstants =
    [](CarryDevice& device, auto... values) { (device.State().VertexConstants().*kSet)(values...); };
template <auto kSet>
constexpr auto kPixelConstants =
    [](CarryDevice& device, auto... values) { (device.State().PixelConstants().*kSet)(values...); };

void Shaders(Device* pDevice)
{
    const HookRow rows[] = {
        Set<&Device::SetFVF, [](CarryDevice& device, DWORD) { device.State().Declaration(); }>(),
        Set<&Device::SetVertexDeclaration,
            [](CarryDevice& device, IDirect3DVertexDeclaration9*) { device.State().Declaration(); }>(),
        Set<&Device::SetVertexShader, kHookState<&CarryState::VertexShader>>(),
        Set<&Device::SetPixelShader, kHookState<&CarryState::PixelShader>>(),
        Set<&Device::SetVertexShaderConstantF, kVertexConstants<&CarryConstants::Floats>>(),
        Set<&Device::SetVertexShaderConstantI, kVertexConstants<&CarryConstants::Integers>>(),
        Set<&Device::SetVertexShaderConstantB, kVertexConstants<&CarryConstants::Booleans>>(),
        Set<&Device::SetPixelShaderConstantF, kPixelConstants<&CarryConstants::Floats>>(),
        Set<&Device::SetPixelShaderConstantI, kPixelConstants<&CarryConstants::Integers>>(),
        Set<&Device::SetPixelShaderConstantB, kPixelConstants<&CarryConstants::Booleans>>(),
    };
    HookInstall(pDevice, rows);
}

void Targets(Device* pDevice)
{
    const HookRow rows[] = {
        HookRowCarried<&Device::SetRenderTarget, kHookState<&CarryState::Target>>(),
        HookRowCarried<&Device::SetDepthStencilSurface, kHookState<&CarryState::Depth>>(),
        Set<&Device::SetStreamSource, kHookDraws<&CarryDraws::Stream>>(),
        Set<&Device::SetStreamSourceFreq, kHookDraws<&CarryDraws::StreamFrequency>>(),
        Set<&Device::SetIndices, kHookDraws<&CarryDraws::Indices>>(),
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
