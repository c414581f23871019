// What the driver is known not to do. Each function touches one of its limits.
#include "ProgramCanvas.h"
#include "ProgramScene.h"
#include "host/scenes/HostShaderCode.h"

namespace
{

constexpr RECT kPart = {10, 10, 50, 40};
constexpr RECT kOther = {60, 30, 150, 110};

UMDComPtr<IDirect3DSurface9> Target(ProgramCanvas& canvas, D3DMULTISAMPLE_TYPE samples = D3DMULTISAMPLE_NONE)
{
    UMDComPtr<IDirect3DSurface9> pTarget;
    PROGRAM_CALL(canvas, CreateRenderTarget, 64, 64, D3DFMT_X8R8G8B8, samples, 0, FALSE, pTarget.Put(), nullptr);
    return pTarget;
}

UMDComPtr<IDirect3DSurface9> BackBuffer(ProgramCanvas& canvas)
{
    UMDComPtr<IDirect3DSurface9> pBackBuffer;
    PROGRAM_CALL(canvas, GetBackBuffer, 0, 0, D3DBACKBUFFER_TYPE_MONO, pBackBuffer.Put());
    return pBackBuffer;
}

UMDComPtr<IDirect3DVertexBuffer9> Buffer(ProgramCanvas& canvas, DWORD fvf)
{
    UMDComPtr<IDirect3DVertexBuffer9> pBuffer;
    PROGRAM_CALL(
        canvas, CreateVertexBuffer, 3 * sizeof(ProgramVertex), 0, fvf, D3DPOOL_MANAGED, pBuffer.Put(), nullptr);
    return pBuffer;
}

void BackBufferOf16Bits(ProgramCanvas& canvas)
{
    canvas.m_Parameters.BackBufferFormat = D3DFMT_R5G6B5;
    PROGRAM_CALL(canvas, Reset, &canvas.m_Parameters);
    canvas.Prepare();
    canvas.Clear();
}

void BlitFilter(ProgramCanvas& canvas)
{
    PROGRAM_CALL(canvas, StretchRect, Target(canvas).Get(), nullptr, BackBuffer(canvas).Get(), &kPart, D3DTEXF_LINEAR);
}

void BlitPart(ProgramCanvas& canvas)
{
    const auto pTexture = canvas.Texture(64, 64, 1, D3DUSAGE_RENDERTARGET, D3DFMT_X8R8G8B8, D3DPOOL_DEFAULT);
    UMDComPtr<IDirect3DSurface9> pLevel;
    PROGRAM_CALL(pTexture, GetSurfaceLevel, 0, pLevel.Put());
    PROGRAM_CALL(canvas, StretchRect, pLevel.Get(), &kPart, BackBuffer(canvas).Get(), &kPart, D3DTEXF_NONE);
}

void CubesAndVolumes(ProgramCanvas& canvas)
{
    UMDComPtr<IDirect3DCubeTexture9> pCube;
    UMDComPtr<IDirect3DVolumeTexture9> pVolume;
    PROGRAM_CALL(canvas, CreateCubeTexture, 16, 1, 0, D3DFMT_X8R8G8B8, D3DPOOL_MANAGED, pCube.Put(), nullptr);
    PROGRAM_CALL(
        canvas, CreateVolumeTexture, 16, 16, 4, 1, 0, D3DFMT_X8R8G8B8, D3DPOOL_MANAGED, pVolume.Put(), nullptr);
    PROGRAM_CALL(canvas, SetTexture, 0, pCube.Get());
    PROGRAM_CALL(canvas, SetTexture, 0, nullptr);
}

void DepthBlit(ProgramCanvas& canvas)
{
    UMDComPtr<IDirect3DSurface9> depths[2];
    for (UMDComPtr<IDirect3DSurface9>& pDepth : depths)
        PROGRAM_CALL(canvas, CreateDepthStencilSurface, 64, 64, D3DFMT_D24S8, D3DMULTISAMPLE_NONE, 0, FALSE,
            pDepth.Put(), nullptr);
    PROGRAM_CALL(canvas, StretchRect, depths[0].Get(), nullptr, depths[1].Get(), nullptr, D3DTEXF_NONE);
}

void DepthRange(ProgramCanvas& canvas)
{
    const D3DVIEWPORT9 viewport = {0, 0, ProgramCanvas::kWidth, ProgramCanvas::kHeight, 0.25f, 0.75f};
    PROGRAM_CALL(canvas, SetViewport, &viewport);
}

void DepthTexture(ProgramCanvas& canvas)
{
    canvas.Texture(64, 64, 1, D3DUSAGE_DEPTHSTENCIL, D3DFMT_D24S8, D3DPOOL_DEFAULT);
}

void GeneratedLevels(ProgramCanvas& canvas)
{
    const auto pTexture = canvas.Texture(64, 64, 0, D3DUSAGE_AUTOGENMIPMAP, D3DFMT_X8R8G8B8);
    ProgramPattern(pTexture.Get(), 0, 3);
    pTexture->GenerateMipSubLevels();
}

void Instances(ProgramCanvas& canvas)
{
    PROGRAM_CALL(canvas, SetStreamSourceFreq, 0, D3DSTREAMSOURCE_INDEXEDDATA | 2);
    PROGRAM_CALL(canvas, SetStreamSourceFreq, 0, 1);
}

void LevelAsTarget(ProgramCanvas& canvas)
{
    const auto pTexture = canvas.Texture(64, 64, 2, D3DUSAGE_RENDERTARGET, D3DFMT_X8R8G8B8, D3DPOOL_DEFAULT);
    UMDComPtr<IDirect3DSurface9> pLevel;
    PROGRAM_CALL(pTexture, GetSurfaceLevel, 1, pLevel.Put());
    PROGRAM_CALL(canvas, SetRenderTarget, 0, pLevel.Get());
    PROGRAM_CALL(canvas, SetRenderTarget, 0, BackBuffer(canvas).Get());
}

void ManyLevels(ProgramCanvas& canvas)
{
    canvas.Texture(2048, 2, 0, 0, D3DFMT_X8R8G8B8);
}

// A triangle that only light shows.
void Lights(ProgramCanvas& canvas)
{
    struct Corner
    {
        float m_X, m_Y, m_Z, m_NormalX, m_NormalY, m_NormalZ;
    };
    static constexpr Corner kCorners[] = {
        {-0.8f, -0.7f, 0.2f, 0, 0, -1}, {0.1f, 0.9f, 0.5f, 0, 0, -1}, {0.7f, -0.4f, 0.7f, 0, 0, -1}};
    D3DLIGHT9 light{};
    light.Type = D3DLIGHT_DIRECTIONAL;
    light.Diffuse = {1, 1, 0, 1};
    light.Direction = {0, 0, 1};
    PROGRAM_CALL(canvas, SetLight, 0, &light);
    PROGRAM_CALL(canvas, LightEnable, 0, TRUE);
    D3DMATERIAL9 material{};
    material.Diffuse = {1, 1, 1, 1};
    PROGRAM_CALL(canvas, SetMaterial, &material);
    canvas.State(D3DRS_LIGHTING, TRUE);
    PROGRAM_CALL(canvas, SetFVF, D3DFVF_XYZ | D3DFVF_NORMAL);
    PROGRAM_CALL(canvas, DrawPrimitiveUP, D3DPT_TRIANGLELIST, 1, kCorners, sizeof(Corner));
}

void Multisampling(ProgramCanvas& canvas)
{
    Target(canvas, D3DMULTISAMPLE_4_SAMPLES);
}

void NoPixelShader(ProgramCanvas& canvas)
{
    UMDComPtr<IDirect3DPixelShader9> pShader;
    PROGRAM_CALL(canvas, CreatePixelShader, reinterpret_cast<const DWORD*>(kHostPixelShader), pShader.Put());
    PROGRAM_CALL(canvas, SetPixelShader, pShader.Get());
    canvas.Quad(kPart, 0xFFFFFFFF);
    PROGRAM_CALL(canvas, SetPixelShader, nullptr);
    canvas.Quad(kOther, 0xFFFF8000);
}

void NoVertexShader(ProgramCanvas& canvas)
{
    UMDComPtr<IDirect3DVertexShader9> pShader;
    PROGRAM_CALL(canvas, CreateVertexShader, reinterpret_cast<const DWORD*>(kHostVertexShader), pShader.Put());
    PROGRAM_CALL(canvas, SetVertexShader, pShader.Get());
    PROGRAM_CALL(canvas, SetVertexShader, nullptr);
    canvas.Quad(kOther, 0xFFFF8000);
}

void Palettes(ProgramCanvas& canvas)
{
    PALETTEENTRY entries[256]{};
    PROGRAM_CALL(canvas, SetPaletteEntries, 0, entries);
    PROGRAM_CALL(canvas, SetCurrentTexturePalette, 0);
}

void Patches(ProgramCanvas& canvas)
{
    const float segments[4] = {1, 1, 1, 1};
    PROGRAM_CALL(canvas, DrawRectPatch, 1, segments, nullptr);
    PROGRAM_CALL(canvas, DrawTriPatch, 2, segments, nullptr);
}

// A maker's own compression of two channels.
void VendorTexture(ProgramCanvas& canvas)
{
    canvas.Texture(64, 64, 1, 0, static_cast<D3DFORMAT>(MAKEFOURCC('A', 'T', 'I', '2')));
}

void PlanarTexture(ProgramCanvas& canvas)
{
    UMDComPtr<IDirect3DSurface9> pSurface;
    PROGRAM_CALL(canvas, CreateOffscreenPlainSurface, 64, 64, static_cast<D3DFORMAT>(MAKEFOURCC('Y', 'V', '1', '2')),
        D3DPOOL_SYSTEMMEM, pSurface.Put(), nullptr);
}

void ProcessedVertices(ProgramCanvas& canvas)
{
    constexpr DWORD kFvf = D3DFVF_XYZ | D3DFVF_DIFFUSE;
    const auto pFrom = Buffer(canvas, kFvf), pTo = Buffer(canvas, ProgramVertex::kFvf);
    PROGRAM_CALL(canvas, SetFVF, kFvf);
    PROGRAM_CALL(canvas, SetStreamSource, 0, pFrom.Get(), 0, 16);
    PROGRAM_CALL(canvas, ProcessVertices, 0, 0, 3, pTo.Get(), nullptr, 0);
}

void Queries(ProgramCanvas& canvas)
{
    UMDComPtr<IDirect3DQuery9> pQuery;
    PROGRAM_CALL(canvas, CreateQuery, D3DQUERYTYPE_EVENT, pQuery.Put());
}

void SeveralTargets(ProgramCanvas& canvas)
{
    PROGRAM_CALL(canvas, SetRenderTarget, 1, Target(canvas).Get());
    PROGRAM_CALL(canvas, SetRenderTarget, 1, nullptr);
}

void SeveralStreams(ProgramCanvas& canvas)
{
    PROGRAM_CALL(canvas, SetStreamSource, 1, Buffer(canvas, 0).Get(), 0, 16);
    PROGRAM_CALL(canvas, SetStreamSource, 1, nullptr, 0, 0);
}

void TextureLod(ProgramCanvas& canvas)
{
    canvas.Texture(64, 64, 0, 0, D3DFMT_X8R8G8B8)->SetLOD(1);
}

void VertexConstants(ProgramCanvas& canvas)
{
    constexpr INT kIntegers[4] = {3, 0, 1, 0};
    constexpr BOOL kTrue = TRUE;
    PROGRAM_CALL(canvas, SetVertexShaderConstantI, 0, kIntegers, 1);
    PROGRAM_CALL(canvas, SetVertexShaderConstantB, 0, &kTrue, 1);
}

void VertexTexture(ProgramCanvas& canvas)
{
    const auto pTexture = canvas.Texture(16, 16, 1, 0, D3DFMT_A32B32G32R32F);
    PROGRAM_CALL(canvas, SetTexture, D3DVERTEXTEXTURESAMPLER0, pTexture.Get());
    PROGRAM_CALL(canvas, SetTexture, D3DVERTEXTEXTURESAMPLER0, nullptr);
}

// What a touch leaves behind stays: a shader that the driver keeps is counted with each draw, so that those come last.
constexpr void (*kTouches[])(ProgramCanvas&) = {BlitFilter, BlitPart, CubesAndVolumes, DepthBlit, DepthRange,
    DepthTexture, GeneratedLevels, Instances, LevelAsTarget, ManyLevels, Multisampling, Palettes, Patches,
    PlanarTexture, ProcessedVertices, Queries, SeveralTargets, SeveralStreams, TextureLod, VendorTexture,
    VertexConstants, VertexTexture, Lights, NoPixelShader, NoVertexShader, BackBufferOf16Bits};

void AllLimits()
{
    ProgramCanvas canvas;
    for (const auto touch : kTouches)
    {
        canvas.Prepare();
        canvas.Clear();
        touch(canvas);
        canvas.Present();
    }
}

/// Fails unless the middle of the target is lit.
void ReadLit(ProgramCanvas& canvas)
{
    UMDComPtr<IDirect3DSurface9> pTarget, pMemory;
    PROGRAM_CALL(canvas, GetRenderTarget, 0, pTarget.Put());
    PROGRAM_CALL(canvas, CreateOffscreenPlainSurface, ProgramCanvas::kWidth, ProgramCanvas::kHeight, D3DFMT_X8R8G8B8,
        D3DPOOL_SYSTEMMEM, pMemory.Put(), nullptr);
    PROGRAM_CALL(canvas, GetRenderTargetData, pTarget.Get(), pMemory.Get());
    D3DLOCKED_RECT locked;
    PROGRAM_CALL(pMemory, LockRect, &locked, nullptr, D3DLOCK_READONLY);
    const DWORD middle = static_cast<const DWORD*>(
        locked.pBits)[ProgramCanvas::kHeight / 2 * locked.Pitch / 4 + ProgramCanvas::kWidth / 2];
    PROGRAM_CALL(pMemory, UnlockRect);
    if ((middle & 0xFFFFFF) != 0xFFFF00)
        throw HostError("the light is off");
}

// The program reads what it has drawn.
void OnlyLights()
{
    ProgramCanvas canvas;
    canvas.Clear();
    Lights(canvas);
    ReadLit(canvas);
    canvas.Present();
}

void OnlyQueries()
{
    ProgramCanvas canvas;
    Queries(canvas);
    canvas.Clear();
    canvas.Quad(kPart, 0xFFFF8000);
    canvas.Present();
}

}  // namespace

std::vector<ProgramScene> ProgramLimitScenes()
{
    return {{"AllLimits", AllLimits}, {"Lights", OnlyLights}, {"Queries", OnlyQueries}};
}
