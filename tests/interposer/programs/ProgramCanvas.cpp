#include "ProgramCanvas.h"

ProgramCanvas::ProgramCanvas(bool bDepth) : ProgramWindow(kWidth, kHeight)
{
    m_Parameters.EnableAutoDepthStencil = bDepth;
    m_Parameters.AutoDepthStencilFormat = bDepth ? D3DFMT_D24S8 : D3DFMT_UNKNOWN;
    CreateDevice();
    Prepare();
}

void ProgramCanvas::Prepare()
{
    State(D3DRS_LIGHTING, FALSE);
    State(D3DRS_CULLMODE, D3DCULL_NONE);
    PROGRAM_CALL(m_pDevice, SetFVF, ProgramVertex::kFvf);
}

void ProgramCanvas::Clear()
{
    const DWORD depth = m_Parameters.EnableAutoDepthStencil ? D3DCLEAR_ZBUFFER | D3DCLEAR_STENCIL : 0;
    PROGRAM_CALL(m_pDevice, Clear, 0, nullptr, D3DCLEAR_TARGET | depth, kBackground, 1, 0);
}

void ProgramCanvas::Quad(const RECT& rect, D3DCOLOR left, D3DCOLOR right, float z)
{
    ProgramVertex corners[4];
    ProgramCorners(rect, left, right, z, corners);
    PROGRAM_CALL(m_pDevice, DrawPrimitiveUP, D3DPT_TRIANGLESTRIP, 2, corners, sizeof(ProgramVertex));
}

UMDComPtr<IDirect3DTexture9> ProgramCanvas::Texture(
    UINT width, UINT height, UINT levels, DWORD usage, D3DFORMAT format, D3DPOOL pool)
{
    UMDComPtr<IDirect3DTexture9> pTexture;
    PROGRAM_CALL(m_pDevice, CreateTexture, width, height, levels, usage, format, pool, pTexture.Put(), nullptr);
    return pTexture;
}

void ProgramCorners(const RECT& rect, D3DCOLOR left, D3DCOLOR right, float z, ProgramVertex (&corners)[4])
{
    const float l = static_cast<float>(rect.left) - 0.5f, t = static_cast<float>(rect.top) - 0.5f;
    const float r = static_cast<float>(rect.right) - 0.5f, b = static_cast<float>(rect.bottom) - 0.5f;
    corners[0] = {l, t, z, 1, left, 0, 0};
    corners[1] = {r, t, z, 1, right, 1, 0};
    corners[2] = {l, b, z, 1, left, 0, 1};
    corners[3] = {r, b, z, 1, right, 1, 1};
}

void ProgramPattern(IDirect3DTexture9* pTexture, UINT level, UINT seed, const RECT* pRect, DWORD flags)
{
    D3DSURFACE_DESC desc;
    D3DLOCKED_RECT locked;
    PROGRAM_CALL(pTexture, GetLevelDesc, level, &desc);
    PROGRAM_CALL(pTexture, LockRect, level, &locked, pRect, flags);
    const bool bBlocks = desc.Format == D3DFMT_DXT1 || desc.Format == D3DFMT_DXT3 || desc.Format == D3DFMT_DXT5;
    const UINT all = pRect != nullptr ? static_cast<UINT>(pRect->bottom - pRect->top) : desc.Height;
    const UINT rows = bBlocks ? (all + 3) / 4 : all;
    const UINT width = pRect != nullptr ? static_cast<UINT>(pRect->right - pRect->left) : desc.Width;
    const UINT bytes = pRect != nullptr ? width * 4 : static_cast<UINT>(locked.Pitch);
    for (UINT y = 0; y < rows; ++y)
        for (UINT x = 0; x < bytes; ++x)
            static_cast<BYTE*>(locked.pBits)[size_t{y} * locked.Pitch + x] =
                static_cast<BYTE>(seed * 37 + (y / 2) * 61 + x * 29 + (x * y) % 23);
    PROGRAM_CALL(pTexture, UnlockRect, level);
}
