// Textures as programs use them: managed, dynamic, compressed, drawn into, updated.
#include "ProgramCanvas.h"
#include "ProgramScene.h"

namespace
{

constexpr RECT kBig = {0, 0, 96, 96};
constexpr RECT kMiddle = {98, 4, 130, 36};
constexpr RECT kSmall = {98, 40, 108, 50};

void FillLevels(IDirect3DTexture9* pTexture, UINT seed)
{
    for (DWORD level = 0; level < pTexture->GetLevelCount(); ++level)
        ProgramPattern(pTexture, level, seed + level * 5);
}

void DrawSizes(ProgramCanvas& canvas, IDirect3DTexture9* pTexture)
{
    canvas.Clear();
    PROGRAM_CALL(canvas, SetTexture, 0, pTexture);
    canvas.Quad(kBig, 0xFFFFFFFF);
    canvas.Quad(kMiddle, 0xFFFFFFFF);
    canvas.Quad(kSmall, 0xFFFFFFFF);
    PROGRAM_CALL(canvas, SetTexture, 0, nullptr);
}

void SetFilters(ProgramCanvas& canvas, DWORD filter, DWORD mip)
{
    canvas.Sampler(D3DSAMP_MAGFILTER, filter);
    canvas.Sampler(D3DSAMP_MINFILTER, filter);
    canvas.Sampler(D3DSAMP_MIPFILTER, mip);
}

bool IsOffered(ProgramCanvas& canvas, D3DFORMAT format)
{
    return SUCCEEDED(canvas.m_pFactory->CheckDeviceFormat(
        D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, D3DFMT_X8R8G8B8, 0, D3DRTYPE_TEXTURE, format));
}

void ManagedFormats()
{
    ProgramCanvas canvas;
    SetFilters(canvas, D3DTEXF_LINEAR, D3DTEXF_POINT);
    UINT seed = 0;
    for (D3DFORMAT format :
        {D3DFMT_A8R8G8B8, D3DFMT_X8R8G8B8, D3DFMT_R5G6B5, D3DFMT_X1R5G5B5, D3DFMT_A1R5G5B5, D3DFMT_A4R4G4B4, D3DFMT_L8,
            D3DFMT_A8, D3DFMT_A8L8, D3DFMT_L16, D3DFMT_A8B8G8R8, D3DFMT_A2R10G10B10, D3DFMT_G16R16})
    {
        if (!IsOffered(canvas, format))
            continue;
        const auto pTexture = canvas.Texture(32, 16, 0, 0, format);
        FillLevels(pTexture.Get(), ++seed);
        DrawSizes(canvas, pTexture.Get());
        canvas.Present();
    }
}

void ManagedFilters()
{
    ProgramCanvas canvas;
    const auto pTexture = canvas.Texture(64, 64, 0, 0, D3DFMT_A8R8G8B8);
    FillLevels(pTexture.Get(), 3);
    for (DWORD filter : {D3DTEXF_POINT, D3DTEXF_LINEAR})
        for (DWORD mip : {D3DTEXF_NONE, D3DTEXF_POINT, D3DTEXF_LINEAR})
        {
            SetFilters(canvas, filter, mip);
            DrawSizes(canvas, pTexture.Get());
            canvas.Present();
        }
    canvas.Sampler(D3DSAMP_MAXMIPLEVEL, 2);
    DrawSizes(canvas, pTexture.Get());
    canvas.Present();
}

void Addresses()
{
    ProgramCanvas canvas;
    const auto pTexture = canvas.Texture(16, 16, 1, 0, D3DFMT_A8R8G8B8);
    FillLevels(pTexture.Get(), 8);
    PROGRAM_CALL(canvas, SetTexture, 0, pTexture.Get());
    canvas.Sampler(D3DSAMP_BORDERCOLOR, 0xFFFF00FF);
    for (DWORD address : {D3DTADDRESS_WRAP, D3DTADDRESS_MIRROR, D3DTADDRESS_CLAMP, D3DTADDRESS_BORDER})
    {
        canvas.Sampler(D3DSAMP_ADDRESSU, address);
        canvas.Sampler(D3DSAMP_ADDRESSV, address);
        canvas.Clear();
        ProgramVertex corners[4];
        ProgramCorners({8, 8, 150, 110}, 0xFFFFFFFF, 0xFFFFFFFF, 0.5f, corners);
        for (ProgramVertex& corner : corners)
        {
            corner.m_U = corner.m_U * 3 - 1;
            corner.m_V = corner.m_V * 2 - 0.5f;
        }
        PROGRAM_CALL(canvas, DrawPrimitiveUP, D3DPT_TRIANGLESTRIP, 2, corners, sizeof(ProgramVertex));
        canvas.Present();
    }
}

void Compressed()
{
    ProgramCanvas canvas;
    for (D3DFORMAT format : {D3DFMT_DXT1, D3DFMT_DXT3, D3DFMT_DXT5})
    {
        const auto pTexture = canvas.Texture(64, 32, 0, 0, format);
        FillLevels(pTexture.Get(), 11);
        SetFilters(canvas, D3DTEXF_LINEAR, D3DTEXF_LINEAR);
        DrawSizes(canvas, pTexture.Get());
        canvas.Present();
    }
}

void ManagedParts()
{
    ProgramCanvas canvas;
    const auto pTexture = canvas.Texture(32, 32, 1, 0, D3DFMT_A8R8G8B8);
    FillLevels(pTexture.Get(), 1);
    DrawSizes(canvas, pTexture.Get());
    canvas.Present();
    const RECT parts[] = {{4, 4, 12, 9}, {20, 16, 32, 32}, {0, 30, 3, 32}};
    for (const RECT& part : parts)
    {
        ProgramPattern(pTexture.Get(), 0, static_cast<UINT>(part.left) + 70, &part);
        DrawSizes(canvas, pTexture.Get());
        canvas.Present();
    }
}

void DynamicTextures()
{
    ProgramCanvas canvas;
    const auto pTexture = canvas.Texture(32, 32, 1, D3DUSAGE_DYNAMIC, D3DFMT_A8R8G8B8, D3DPOOL_DEFAULT);
    for (UINT seed = 0; seed < 4; ++seed)
    {
        ProgramPattern(pTexture.Get(), 0, seed * 9, nullptr, D3DLOCK_DISCARD);
        DrawSizes(canvas, pTexture.Get());
        canvas.Present();
    }
}

void Updates()
{
    ProgramCanvas canvas;
    const auto pMemory = canvas.Texture(32, 32, 0, 0, D3DFMT_A8R8G8B8, D3DPOOL_SYSTEMMEM);
    const auto pTexture = canvas.Texture(32, 32, 0, 0, D3DFMT_A8R8G8B8, D3DPOOL_DEFAULT);
    FillLevels(pMemory.Get(), 21);
    PROGRAM_CALL(canvas, UpdateTexture, pMemory.Get(), pTexture.Get());
    SetFilters(canvas, D3DTEXF_LINEAR, D3DTEXF_LINEAR);
    DrawSizes(canvas, pTexture.Get());
    canvas.Present();
    UMDComPtr<IDirect3DSurface9> pFrom, pTo;
    PROGRAM_CALL(pMemory, GetSurfaceLevel, 1, pFrom.Put());
    PROGRAM_CALL(pTexture, GetSurfaceLevel, 0, pTo.Put());
    const RECT part = {2, 3, 14, 12};
    const POINT point = {9, 16};
    PROGRAM_CALL(canvas, UpdateSurface, pFrom.Get(), &part, pTo.Get(), &point);
    DrawSizes(canvas, pTexture.Get());
    canvas.Present();
}

void RenderToTexture()
{
    ProgramCanvas canvas;
    const auto pTexture = canvas.Texture(64, 64, 1, D3DUSAGE_RENDERTARGET, D3DFMT_A8R8G8B8, D3DPOOL_DEFAULT);
    UMDComPtr<IDirect3DSurface9> pTarget, pBackBuffer;
    PROGRAM_CALL(pTexture, GetSurfaceLevel, 0, pTarget.Put());
    PROGRAM_CALL(canvas, GetRenderTarget, 0, pBackBuffer.Put());
    for (D3DCOLOR color : {0xFF40FF80, 0x80FF4020})
    {
        PROGRAM_CALL(canvas, SetRenderTarget, 0, pTarget.Get());
        canvas.Clear();
        canvas.Quad({8, 8, 50, 40}, color, 0xFF0000FF, 0.5f);
        PROGRAM_CALL(canvas, SetRenderTarget, 0, pBackBuffer.Get());
        DrawSizes(canvas, pTexture.Get());
        canvas.Present();
    }
}

void Text()
{
    ProgramCanvas canvas;
    const auto pAtlas = canvas.Texture(64, 64, 1, 0, D3DFMT_A8R8G8B8);
    canvas.State(D3DRS_ALPHABLENDENABLE, TRUE);
    canvas.State(D3DRS_SRCBLEND, D3DBLEND_SRCALPHA);
    canvas.State(D3DRS_DESTBLEND, D3DBLEND_INVSRCALPHA);
    for (LONG glyph = 0; glyph < 6; ++glyph)
    {
        const RECT cell = {glyph * 10, glyph * 8, glyph * 10 + 9, glyph * 8 + 11};
        ProgramPattern(pAtlas.Get(), 0, static_cast<UINT>(glyph) * 13, &cell);
        DrawSizes(canvas, pAtlas.Get());
        canvas.Present();
    }
}

void SurfaceContext()
{
    ProgramCanvas canvas;
    const auto pTexture = canvas.Texture(48, 48, 1, 0, D3DFMT_X8R8G8B8);
    FillLevels(pTexture.Get(), 2);
    UMDComPtr<IDirect3DSurface9> pSurface;
    PROGRAM_CALL(pTexture, GetSurfaceLevel, 0, pSurface.Put());
    HDC hContext = nullptr;
    PROGRAM_CALL(pSurface, GetDC, &hContext);
    const RECT box = {6, 10, 30, 40};
    HBRUSH hBrush = CreateSolidBrush(RGB(255, 200, 0));
    FillRect(hContext, &box, hBrush);
    DeleteObject(hBrush);
    PROGRAM_CALL(pSurface, ReleaseDC, hContext);
    DrawSizes(canvas, pTexture.Get());
    canvas.Present();
}

}  // namespace

std::vector<ProgramScene> ProgramTextureScenes()
{
    return {{"ManagedFormats", ManagedFormats}, {"ManagedFilters", ManagedFilters}, {"Addresses", Addresses},
        {"Compressed", Compressed}, {"ManagedParts", ManagedParts}, {"DynamicTextures", DynamicTextures},
        {"Updates", Updates}, {"RenderToTexture", RenderToTexture}, {"Text", Text}, {"SurfaceContext", SurfaceContext}};
}
