// What happens to a pixel: depth, stencil, fog, alpha, sprites; and reads of what was drawn.
#include "ProgramCanvas.h"
#include "ProgramScene.h"

#include <bit>

namespace
{

constexpr RECT kLeft = {10, 10, 90, 100};
constexpr RECT kRight = {60, 30, 150, 110};
constexpr RECT kAll = {0, 0, ProgramCanvas::kWidth, ProgramCanvas::kHeight};

void DepthOfItsOwn()
{
    ProgramCanvas canvas(true);
    for (D3DCMPFUNC function : {D3DCMP_LESSEQUAL, D3DCMP_GREATER})
    {
        canvas.Clear();
        canvas.Quad(kLeft, 0xFFFF2020, 0.3f);
        canvas.State(D3DRS_ZFUNC, function);
        canvas.Quad(kRight, 0xFF20FF20, 0.4f);
        canvas.State(D3DRS_ZWRITEENABLE, FALSE);
        canvas.Quad({0, 50, 160, 70}, 0xFF2020FF, 0.35f);
        canvas.State(D3DRS_ZWRITEENABLE, TRUE);
        canvas.State(D3DRS_ZFUNC, D3DCMP_LESSEQUAL);
        canvas.Present();
    }
}

void Stencil()
{
    ProgramCanvas canvas(true);
    canvas.State(D3DRS_STENCILENABLE, TRUE);
    for (DWORD reference : {1, 2})
    {
        canvas.Clear();
        canvas.State(D3DRS_STENCILFUNC, D3DCMP_ALWAYS);
        canvas.State(D3DRS_STENCILPASS, D3DSTENCILOP_INCR);
        canvas.Quad(kLeft, 0xFF303030);
        canvas.Quad(kRight, 0xFF606060);
        canvas.State(D3DRS_STENCILPASS, D3DSTENCILOP_KEEP);
        canvas.State(D3DRS_STENCILFUNC, D3DCMP_EQUAL);
        canvas.State(D3DRS_STENCILREF, reference);
        canvas.Quad(kAll, 0xFF004080 << reference | 0xFF000000);
        canvas.Present();
    }
}

void Fog()
{
    ProgramCanvas canvas(true);
    canvas.State(D3DRS_FOGENABLE, TRUE);
    canvas.State(D3DRS_FOGCOLOR, 0xFFE0E0C0);
    canvas.State(D3DRS_FOGTABLEMODE, D3DFOG_LINEAR);
    canvas.State(D3DRS_FOGSTART, std::bit_cast<DWORD>(0.1f));
    canvas.State(D3DRS_FOGEND, std::bit_cast<DWORD>(0.9f));
    canvas.Clear();
    canvas.Quad(kLeft, 0xFF202080, 0.2f);
    canvas.Quad(kRight, 0xFF802020, 0.7f);
    canvas.Present();
}

void Alpha()
{
    ProgramCanvas canvas;
    canvas.State(D3DRS_ALPHABLENDENABLE, TRUE);
    canvas.State(D3DRS_SRCBLEND, D3DBLEND_SRCALPHA);
    canvas.State(D3DRS_DESTBLEND, D3DBLEND_INVSRCALPHA);
    canvas.Clear();
    canvas.Quad(kLeft, 0x40FFFFFF, 0xC0FF0000, 0.5f);
    canvas.Quad(kRight, 0x8000FF00);
    canvas.Present();
    canvas.Clear();
    canvas.State(D3DRS_ALPHATESTENABLE, TRUE);
    canvas.State(D3DRS_ALPHAREF, 0x80);
    canvas.State(D3DRS_ALPHAFUNC, D3DCMP_GREATER);
    canvas.Quad({0, 50, 160, 70}, 0x00FFFFFF, 0xFFFFFFFF, 0.5f);
    canvas.Present();
}

void Scissor()
{
    ProgramCanvas canvas;
    for (LONG i = 0; i < 3; ++i)
    {
        canvas.State(D3DRS_SCISSORTESTENABLE, FALSE);
        canvas.Clear();
        canvas.State(D3DRS_SCISSORTESTENABLE, TRUE);
        const RECT rect = {i * 20, i * 15, i * 20 + 60, i * 15 + 50};
        PROGRAM_CALL(canvas, SetScissorRect, &rect);
        canvas.Quad(kAll, 0xFF4020FF + static_cast<D3DCOLOR>(i) * 0x4000);
        canvas.Present();
    }
}

void Sprites()
{
    ProgramCanvas canvas;
    const auto pSprite = canvas.Texture(16, 16, 1, 0, D3DFMT_A8R8G8B8);
    ProgramPattern(pSprite.Get(), 0, 40);
    PROGRAM_CALL(canvas, SetTexture, 0, pSprite.Get());
    canvas.State(D3DRS_ALPHABLENDENABLE, TRUE);
    canvas.State(D3DRS_SRCBLEND, D3DBLEND_SRCALPHA);
    canvas.State(D3DRS_DESTBLEND, D3DBLEND_ONE);
    for (LONG frame = 0; frame < 3; ++frame)
    {
        canvas.Clear();
        for (LONG i = 0; i < 30; ++i)
        {
            const LONG x = (i * 37 + frame * 5) % 140, y = (i * 23 + frame * 3) % 100;
            canvas.Quad({x, y, x + 12 + i % 9, y + 12 + i % 5}, 0xFF808080 + static_cast<D3DCOLOR>(i) * 0x010203);
        }
        canvas.Present();
    }
}

void Transforms()
{
    struct Corner
    {
        float m_X, m_Y, m_Z;
        D3DCOLOR m_Color;
    };
    static constexpr Corner kCorners[] = {
        {-0.8f, -0.7f, 0.2f, 0xFFFF0000}, {0.1f, 0.9f, 0.5f, 0xFF00FF00}, {0.7f, -0.4f, 0.7f, 0xFF0000FF}};
    ProgramCanvas canvas(true);
    PROGRAM_CALL(canvas, SetFVF, D3DFVF_XYZ | D3DFVF_DIFFUSE);
    D3DMATRIX turn = {{{0.8f, 0.6f, 0, 0, -0.6f, 0.8f, 0, 0, 0, 0, 1, 0, 0.1f, 0, 0, 1}}};
    for (int frame = 0; frame < 3; ++frame)
    {
        PROGRAM_CALL(canvas, MultiplyTransform, D3DTS_WORLD, &turn);
        canvas.Clear();
        PROGRAM_CALL(canvas, DrawPrimitiveUP, D3DPT_TRIANGLELIST, 1, kCorners, sizeof(Corner));
        canvas.Present();
    }
}

void Reads()
{
    ProgramCanvas canvas;
    UMDComPtr<IDirect3DSurface9> pTarget, pMemory, pLockable;
    PROGRAM_CALL(canvas, GetRenderTarget, 0, pTarget.Put());
    PROGRAM_CALL(canvas, CreateOffscreenPlainSurface, ProgramCanvas::kWidth, ProgramCanvas::kHeight, D3DFMT_X8R8G8B8,
        D3DPOOL_SYSTEMMEM, pMemory.Put(), nullptr);
    PROGRAM_CALL(
        canvas, CreateRenderTarget, 64, 64, D3DFMT_A8R8G8B8, D3DMULTISAMPLE_NONE, 0, TRUE, pLockable.Put(), nullptr);
    canvas.Clear();
    canvas.Quad(kLeft, 0xFF8040FF, 0xFFFFFF00, 0.5f);
    PROGRAM_CALL(canvas, GetRenderTargetData, pTarget.Get(), pMemory.Get());
    PROGRAM_CALL(canvas, ColorFill, pLockable.Get(), nullptr, 0xFF00C000);
    const RECT part = {10, 5, 40, 30};
    D3DLOCKED_RECT locked;
    PROGRAM_CALL(pLockable, LockRect, &locked, &part, 0);
    for (LONG y = 0; y < 25; ++y)
        for (LONG x = 0; x < 30; ++x)
            static_cast<DWORD*>(locked.pBits)[y * locked.Pitch / 4 + x] = 0xFF000000u + static_cast<DWORD>(x * 8 + y);
    PROGRAM_CALL(pLockable, UnlockRect);
    const RECT corner = {90, 50, 154, 114};
    PROGRAM_CALL(canvas, StretchRect, pLockable.Get(), nullptr, pTarget.Get(), &corner, D3DTEXF_NONE);
    canvas.Present();
}

}  // namespace

std::vector<ProgramScene> ProgramPixelScenes()
{
    return {{"DepthOfItsOwn", DepthOfItsOwn}, {"Stencils", Stencil}, {"Fogs", Fog}, {"Alpha", Alpha},
        {"Scissors", Scissor}, {"Sprites", Sprites}, {"Turning", Transforms}, {"Reads", Reads}};
}
