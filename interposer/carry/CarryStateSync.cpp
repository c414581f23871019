// What CarryState reads back: the platform's whole state, read back.
#include "interposer/carry/CarryDevice.h"
#include "interposer/carry/CarryState.h"
#include "interposer/run/RunSamplers.h"
#include "util/UMDComPtr.h"

void CarryState::SyncRenderStates()
{
    // Between the two ranges lie the driver interface's own, of which the platform knows nothing.
    static constexpr UINT kRanges[][2] = {{D3DRS_ZENABLE, D3DRS_TEXTUREFACTOR}, {D3DRS_WRAP0, D3DRS_BLENDOPALPHA}};
    for (const auto& [first, last] : kRanges)
        for (UINT state = first; state <= last; ++state)
            if (DWORD value = 0;
                SUCCEEDED(m_Device.Platform()->GetRenderState(static_cast<D3DRENDERSTATETYPE>(state), &value)))
                RenderState(static_cast<D3DRENDERSTATETYPE>(state), value);
}

void CarryState::SyncTextures()
{
    // The fixed pipeline has eight stages, the shaders sixteen samplers.
    for (DWORD stage = 0; stage < kStages; ++stage)
    {
        for (UINT state = D3DTSS_COLOROP; stage < 8 && state <= D3DTSS_CONSTANT; ++state)
        {
            const auto type = static_cast<D3DTEXTURESTAGESTATETYPE>(state);
            // Among them lie the driver interface's sampler states, and behind the coordinates a number of nobody's.
            const bool bStage = RunSamplerOf(state) == 0 && state != D3DTSS_TEXCOORDINDEX + 1;
            if (DWORD value = 0; bStage && SUCCEEDED(m_Device.Platform()->GetTextureStageState(stage, type, &value)))
                StageState(stage, type, value);
        }
        for (UINT state = D3DSAMP_ADDRESSU; state <= D3DSAMP_DMAPOFFSET; ++state)
            if (DWORD value = 0;
                SUCCEEDED(m_Device.Platform()->GetSamplerState(stage, static_cast<D3DSAMPLERSTATETYPE>(state), &value)))
                SamplerState(stage, static_cast<D3DSAMPLERSTATETYPE>(state), value);
        UMDComPtr<IDirect3DBaseTexture9> pTexture;
        if (SUCCEEDED(m_Device.Platform()->GetTexture(stage, pTexture.Put())))
            Texture(stage, pTexture.Get());
    }
}

void CarryState::SyncTransforms()
{
    for (UINT type : {UINT{D3DTS_VIEW}, UINT{D3DTS_PROJECTION}})
        Transform(static_cast<D3DTRANSFORMSTATETYPE>(type));
    for (UINT stage = 0; stage < 8; ++stage)
        Transform(static_cast<D3DTRANSFORMSTATETYPE>(D3DTS_TEXTURE0 + stage));
    for (UINT index = 0; index < 4; ++index)
        Transform(D3DTS_WORLDMATRIX(index));
    for (DWORD index = 0; index < 6; ++index)
        ClipPlane(index);
}

void CarryState::SyncTargets()
{
    UMDComPtr<IDirect3DSurface9> pTarget, pDepth;
    if (SUCCEEDED(m_Device.Platform()->GetRenderTarget(0, pTarget.Put())))
        Target(0, pTarget.Get());
    if (FAILED(m_Device.Platform()->GetDepthStencilSurface(pDepth.Put())))
        pDepth.Reset();
    Depth(pDepth.Get());
}

void CarryState::SyncShaders()
{
    UMDComPtr<IDirect3DVertexShader9> pVertexShader;
    UMDComPtr<IDirect3DPixelShader9> pPixelShader;
    if (SUCCEEDED(m_Device.Platform()->GetVertexShader(pVertexShader.Put())))
        VertexShader(pVertexShader.Get());
    if (SUCCEEDED(m_Device.Platform()->GetPixelShader(pPixelShader.Put())))
        PixelShader(pPixelShader.Get());
    Declaration();
    m_VertexConstants.Sync();
    m_PixelConstants.Sync();
}
