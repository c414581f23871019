// Buffers, states, swap chains and devices as programs use them.
#include "ProgramCanvas.h"
#include "ProgramScene.h"

#include <cstring>

namespace
{

constexpr RECT kLeft = {10, 10, 90, 100};
constexpr RECT kRight = {60, 30, 150, 110};

void Clears()
{
    ProgramCanvas canvas;
    const D3DRECT part = {20, 30, 90, 100};
    for (D3DCOLOR color : {0xFF204060, 0xFF802010, 0xFF10F040})
    {
        PROGRAM_CALL(canvas, Clear, 0, nullptr, D3DCLEAR_TARGET, color, 1, 0);
        PROGRAM_CALL(canvas, Clear, 1, &part, D3DCLEAR_TARGET, ~color, 1, 0);
        canvas.Present();
    }
}

void DynamicBuffers()
{
    constexpr UINT kQuads = 8;
    constexpr UINT kQuadBytes = 4 * sizeof(ProgramVertex);
    ProgramCanvas canvas;
    UMDComPtr<IDirect3DVertexBuffer9> pBuffer;
    PROGRAM_CALL(canvas, CreateVertexBuffer, kQuads * kQuadBytes, D3DUSAGE_DYNAMIC | D3DUSAGE_WRITEONLY,
        ProgramVertex::kFvf, D3DPOOL_DEFAULT, pBuffer.Put(), nullptr);
    PROGRAM_CALL(canvas, SetStreamSource, 0, pBuffer.Get(), 0, sizeof(ProgramVertex));
    for (LONG frame = 0; frame < 3; ++frame)
    {
        canvas.Clear();
        for (UINT quad = 0; quad < kQuads; ++quad)
        {
            const LONG x = static_cast<LONG>(quad) * 18 + frame * 4, y = frame * 20 + static_cast<LONG>(quad) * 5;
            ProgramVertex corners[4];
            ProgramCorners({x, y, x + 16, y + 30}, 0xFF4080FF + quad * 0x201000, 0xFFFFFF00, 0.5f, corners);
            void* pMemory = nullptr;
            PROGRAM_CALL(pBuffer, Lock, quad * kQuadBytes, kQuadBytes, &pMemory,
                quad == 0 ? D3DLOCK_DISCARD : D3DLOCK_NOOVERWRITE);
            std::memcpy(pMemory, corners, kQuadBytes);
            PROGRAM_CALL(pBuffer, Unlock);
            PROGRAM_CALL(canvas, DrawPrimitive, D3DPT_TRIANGLESTRIP, quad * 4, 2);
        }
        canvas.Present();
    }
}

void IndexedBuffers()
{
    ProgramCanvas canvas;
    UMDComPtr<IDirect3DVertexBuffer9> pVertices;
    UMDComPtr<IDirect3DIndexBuffer9> pIndices;
    PROGRAM_CALL(
        canvas, CreateVertexBuffer, 8 * sizeof(ProgramVertex), 0, 0, D3DPOOL_MANAGED, pVertices.Put(), nullptr);
    PROGRAM_CALL(
        canvas, CreateIndexBuffer, 24, D3DUSAGE_WRITEONLY, D3DFMT_INDEX16, D3DPOOL_MANAGED, pIndices.Put(), nullptr);
    ProgramVertex corners[2][4];
    ProgramCorners(kLeft, 0xFFFF8000, 0xFF0080FF, 0.5f, corners[0]);
    ProgramCorners(kRight, 0xFF00FF80, 0xFF8000FF, 0.5f, corners[1]);
    constexpr WORD kOrder[] = {0, 1, 2, 2, 1, 3, 4, 5, 6, 6, 5, 7};
    void* pMemory = nullptr;
    PROGRAM_CALL(pVertices, Lock, 0, 0, &pMemory, 0);
    std::memcpy(pMemory, corners, sizeof(corners));
    PROGRAM_CALL(pVertices, Unlock);
    PROGRAM_CALL(pIndices, Lock, 0, 0, &pMemory, 0);
    std::memcpy(pMemory, kOrder, sizeof(kOrder));
    PROGRAM_CALL(pIndices, Unlock);
    PROGRAM_CALL(canvas, SetStreamSource, 0, pVertices.Get(), 0, sizeof(ProgramVertex));
    PROGRAM_CALL(canvas, SetIndices, pIndices.Get());
    for (UINT first : {0, 6})
    {
        canvas.Clear();
        PROGRAM_CALL(canvas, DrawIndexedPrimitive, D3DPT_TRIANGLELIST, 0, 0, 8, first, 2);
        canvas.Present();
    }
    canvas.Clear();
    PROGRAM_CALL(canvas, DrawIndexedPrimitive, D3DPT_TRIANGLELIST, 4, 0, 4, 0, 2);
    // A draw from memory takes both bindings away: they are made anew.
    canvas.Quad({0, 0, 20, 20}, 0xFFFFFFFF);
    PROGRAM_CALL(canvas, SetStreamSource, 0, pVertices.Get(), 0, sizeof(ProgramVertex));
    PROGRAM_CALL(canvas, DrawIndexedPrimitive, D3DPT_TRIANGLELIST, 0, 0, 4, 0, 1);
    canvas.Present();
}

void UserMemory()
{
    ProgramCanvas canvas;
    ProgramVertex corners[4];
    ProgramCorners(kLeft, 0xFFFF0000, 0xFF00FF00, 0.5f, corners);
    constexpr WORD kShort[] = {0, 1, 2, 2, 1, 3};
    constexpr DWORD kLong[] = {0, 1, 3};
    canvas.Clear();
    PROGRAM_CALL(canvas, DrawIndexedPrimitiveUP, D3DPT_TRIANGLELIST, 0, 4, 2, kShort, D3DFMT_INDEX16, corners,
        sizeof(ProgramVertex));
    canvas.Present();
    ProgramCorners(kRight, 0xFF0000FF, 0xFFFFFFFF, 0.5f, corners);
    PROGRAM_CALL(canvas, DrawIndexedPrimitiveUP, D3DPT_TRIANGLELIST, 0, 4, 1, kLong, D3DFMT_INDEX32, corners,
        sizeof(ProgramVertex));
    PROGRAM_CALL(canvas, DrawPrimitiveUP, D3DPT_LINESTRIP, 3, corners, sizeof(ProgramVertex));
    canvas.Present();
}

void StateBlocks()
{
    ProgramCanvas canvas;
    UMDComPtr<IDirect3DStateBlock9> pAll, pRecorded;
    PROGRAM_CALL(canvas, CreateStateBlock, D3DSBT_ALL, pAll.Put());
    PROGRAM_CALL(canvas, BeginStateBlock);
    canvas.State(D3DRS_ALPHABLENDENABLE, TRUE);
    canvas.State(D3DRS_SRCBLEND, D3DBLEND_ONE);
    canvas.State(D3DRS_DESTBLEND, D3DBLEND_ONE);
    PROGRAM_CALL(canvas, EndStateBlock, pRecorded.Put());
    const auto draw = [&] {
        canvas.Clear();
        canvas.Quad(kLeft, 0xFF804020);
        canvas.Quad(kRight, 0xFF208040);
        canvas.Present();
    };
    draw();
    PROGRAM_CALL(pRecorded, Apply);
    draw();
    canvas.State(D3DRS_SCISSORTESTENABLE, TRUE);
    const RECT scissor = {30, 20, 100, 90};
    PROGRAM_CALL(canvas, SetScissorRect, &scissor);
    draw();
    PROGRAM_CALL(pAll, Apply);
    draw();
}

void TwoSwapChains()
{
    ProgramCanvas canvas;
    D3DPRESENT_PARAMETERS parameters = canvas.m_Parameters;
    parameters.BackBufferWidth = 100;
    parameters.BackBufferHeight = 80;
    UMDComPtr<IDirect3DSwapChain9> pChain;
    PROGRAM_CALL(canvas, CreateAdditionalSwapChain, &parameters, pChain.Put());
    UMDComPtr<IDirect3DSurface9> pFirst, pSecond;
    PROGRAM_CALL(canvas, GetRenderTarget, 0, pFirst.Put());
    PROGRAM_CALL(pChain, GetBackBuffer, 0, D3DBACKBUFFER_TYPE_MONO, pSecond.Put());
    for (D3DCOLOR color : {0xFFFF8040, 0xFF4080FF})
    {
        PROGRAM_CALL(canvas, SetRenderTarget, 0, pFirst.Get());
        canvas.Clear();
        canvas.Quad(kLeft, color);
        PROGRAM_CALL(canvas, SetRenderTarget, 0, pSecond.Get());
        canvas.Clear();
        canvas.Quad({5, 40, 95, 70}, ~color | 0xFF000000);
        canvas.Present();
        PROGRAM_CALL(pChain, Present, nullptr, nullptr, nullptr, nullptr, 0);
    }
}

void WindowedRects()
{
    ProgramWindow window(ProgramCanvas::kWidth, ProgramCanvas::kHeight);
    window.m_Parameters.SwapEffect = D3DSWAPEFFECT_COPY;
    IDirect3DDevice9* pDevice = window.CreateDevice();
    const D3DRECT part = {20, 30, 90, 100};
    const RECT from = {10, 10, 110, 90}, to = {0, 0, 50, 40};
    PROGRAM_CALL(pDevice, Clear, 0, nullptr, D3DCLEAR_TARGET, 0xFF336699, 1, 0);
    PROGRAM_CALL(pDevice, Clear, 1, &part, D3DCLEAR_TARGET, 0xFFCC9933, 1, 0);
    PROGRAM_CALL(pDevice, Present, &from, &to, nullptr, nullptr);
    PROGRAM_CALL(pDevice, Clear, 1, &part, D3DCLEAR_TARGET, 0xFF00FF00, 1, 0);
    PROGRAM_CALL(pDevice, Present, nullptr, &to, nullptr, nullptr);
}

void Reset()
{
    ProgramCanvas canvas(true);
    const auto pTexture = canvas.Texture(16, 16, 1, 0, D3DFMT_A8R8G8B8);
    ProgramPattern(pTexture.Get(), 0, 5);
    for (UINT width : {200u, 120u, 200u})
    {
        canvas.Clear();
        canvas.Quad(kLeft, 0xFF40C0C0);
        canvas.Present();
        canvas.m_Parameters.BackBufferWidth = width;
        PROGRAM_CALL(canvas, Reset, &canvas.m_Parameters);
        canvas.Prepare();
        canvas.Clear();
        PROGRAM_CALL(canvas, SetTexture, 0, pTexture.Get());
        canvas.Quad(kRight, 0xFFFFFFFF);
        PROGRAM_CALL(canvas, SetTexture, 0, nullptr);
        canvas.Present();
    }
}

void DeviceTwice()
{
    for (D3DCOLOR color : {0xFFFF0000, 0xFF00FF00})
    {
        ProgramCanvas canvas;
        canvas.State(D3DRS_SHADEMODE, color == 0xFFFF0000 ? D3DSHADE_FLAT : D3DSHADE_GOURAUD);
        canvas.Clear();
        canvas.Quad(kLeft, color, 0xFFFFFFFF, 0.5f);
        canvas.Present();
    }
}

void TwoDevices()
{
    ProgramCanvas first, second;
    for (D3DCOLOR color : {0xFFFF0000, 0xFF00FF00})
    {
        first.Clear();
        second.Clear();
        first.Quad(kLeft, color);
        second.Quad(kRight, ~color | 0xFF000000);
        first.Present();
        second.Present();
    }
}

}  // namespace

std::vector<ProgramScene> ProgramFrameScenes()
{
    return {{"Clears", Clears}, {"DynamicBuffers", DynamicBuffers}, {"IndexedBuffers", IndexedBuffers},
        {"UserMemory", UserMemory}, {"StateBlocks", StateBlocks}, {"TwoSwapChains", TwoSwapChains},
        {"WindowedRects", WindowedRects}, {"Reset", Reset}, {"DeviceTwice", DeviceTwice}, {"TwoDevices", TwoDevices}};
}
