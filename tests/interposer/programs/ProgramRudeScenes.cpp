// Programs that end in other ways than they should, or do what few programs do.
#include "ProgramCanvas.h"
#include "ProgramScene.h"

#include <thread>

namespace
{

constexpr RECT kLeft = {10, 10, 90, 100};

void ShowOne(ProgramCanvas& canvas)
{
    canvas.Clear();
    canvas.Quad(kLeft, 0xFFFF8000);
    canvas.Present();
}

void Crashes()
{
    ProgramCanvas canvas;
    ShowOne(canvas);
    RaiseException(static_cast<DWORD>(EXCEPTION_ILLEGAL_INSTRUCTION), EXCEPTION_NONCONTINUABLE, 0, nullptr);
}

void IsKilled()
{
    ProgramCanvas canvas;
    ShowOne(canvas);
    TerminateProcess(GetCurrentProcess(), 7);
}

void LeavesItsDevice()
{
    ProgramCanvas canvas;
    ShowOne(canvas);
    canvas.Quad(kLeft, 0xFF0080FF);
    ExitProcess(5);
}

void NeverPresents()
{
    ProgramCanvas canvas;
    canvas.Clear();
    Sleep(INFINITE);
}

void ShowsForEver()
{
    ProgramCanvas canvas;
    for (;;)
    {
        ShowOne(canvas);
        Sleep(10);
    }
}

void PresentsFromThread()
{
    ProgramWindow window(ProgramCanvas::kWidth, ProgramCanvas::kHeight);
    window.CreateDevice();
    std::thread([&] {
        for (D3DCOLOR color : {0xFF112233, 0xFF445566})
        {
            PROGRAM_CALL(window.m_pDevice, Clear, 0, nullptr, D3DCLEAR_TARGET, color, 1, 0);
            window.Present();
        }
    }).join();
}

void SixteenChains()
{
    ProgramCanvas canvas;
    UMDComPtr<IDirect3DSwapChain9> chains[16];
    for (UMDComPtr<IDirect3DSwapChain9>& pChain : chains)
    {
        D3DPRESENT_PARAMETERS parameters = canvas.m_Parameters;
        PROGRAM_CALL(canvas, CreateAdditionalSwapChain, &parameters, pChain.Put());
    }
    D3DCOLOR color = 0xFF102030;
    for (UMDComPtr<IDirect3DSwapChain9>& pChain : chains)
    {
        UMDComPtr<IDirect3DSurface9> pBackBuffer;
        PROGRAM_CALL(pChain, GetBackBuffer, 0, D3DBACKBUFFER_TYPE_MONO, pBackBuffer.Put());
        PROGRAM_CALL(canvas, ColorFill, pBackBuffer.Get(), nullptr, color += 0x0A0503);
        PROGRAM_CALL(pChain, Present, nullptr, nullptr, nullptr, nullptr, 0);
    }
}

void LosesWindow()
{
    ProgramCanvas canvas;
    ShowOne(canvas);
    DestroyWindow(canvas.Window());
    canvas.Clear();
    canvas.m_pDevice->Present(nullptr, nullptr, nullptr, nullptr);
}

/// Fails if a texture of a black and a white half has any grey when it is read by a linear filter.
void LinearGreys()
{
    ProgramCanvas canvas;
    const auto pTexture = canvas.Texture(2, 1, 1, 0, D3DFMT_X8R8G8B8);
    D3DLOCKED_RECT locked;
    PROGRAM_CALL(pTexture, LockRect, 0, &locked, nullptr, 0);
    static_cast<DWORD*>(locked.pBits)[0] = 0;
    static_cast<DWORD*>(locked.pBits)[1] = 0xFFFFFF;
    PROGRAM_CALL(pTexture, UnlockRect, 0);
    PROGRAM_CALL(canvas, SetTexture, 0, pTexture.Get());
    canvas.Sampler(D3DSAMP_MAGFILTER, D3DTEXF_LINEAR);
    canvas.Clear();
    canvas.Quad({0, 0, 160, 120}, 0xFFFFFFFF);
    UMDComPtr<IDirect3DSurface9> pTarget, pMemory;
    PROGRAM_CALL(canvas, GetRenderTarget, 0, pTarget.Put());
    PROGRAM_CALL(canvas, CreateOffscreenPlainSurface, ProgramCanvas::kWidth, ProgramCanvas::kHeight, D3DFMT_X8R8G8B8,
        D3DPOOL_SYSTEMMEM, pMemory.Put(), nullptr);
    PROGRAM_CALL(canvas, GetRenderTargetData, pTarget.Get(), pMemory.Get());
    canvas.Present();
    PROGRAM_CALL(pMemory, LockRect, &locked, nullptr, D3DLOCK_READONLY);
    const DWORD middle = static_cast<const DWORD*>(locked.pBits)[ProgramCanvas::kWidth / 2 - 5] & 0xFF;
    PROGRAM_CALL(pMemory, UnlockRect);
    if (middle != 0 && middle != 0xFF)
        throw HostError("the texture has greys");
}

/// Fails unless the window shows the rectangle on the screen: its first pixel, and none before.
void CheckFront(ProgramCanvas& canvas, IDirect3DSurface9* pMemory)
{
    POINT corner = {kLeft.left, kLeft.top};
    ClientToScreen(canvas.Window(), &corner);
    D3DLOCKED_RECT locked;
    PROGRAM_CALL(pMemory, LockRect, &locked, nullptr, D3DLOCK_READONLY);
    const DWORD* pPixel = static_cast<const DWORD*>(locked.pBits) + corner.y * locked.Pitch / 4 + corner.x;
    const DWORD first = *pPixel, before = *(pPixel - 1), above = *(pPixel - locked.Pitch / 4);
    PROGRAM_CALL(pMemory, UnlockRect);
    if ((first & 0xFFFFFF) != 0xFF8000 || ((before | above) & 0xFFFFFF) != (ProgramCanvas::kBackground & 0xFFFFFF))
        throw HostError("the window shows something else");
}

void FrontBuffer()
{
    ProgramCanvas canvas;
    SetWindowPos(canvas.Window(), nullptr, 30, 20, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    ShowOne(canvas);
    D3DDISPLAYMODE mode;
    UMDComPtr<IDirect3DSwapChain9> pChain;
    UMDComPtr<IDirect3DSurface9> pByDevice, pByChain;
    PROGRAM_CALL(canvas, GetDisplayMode, 0, &mode);
    for (UMDComPtr<IDirect3DSurface9>* ppMemory : {&pByDevice, &pByChain})
        PROGRAM_CALL(canvas, CreateOffscreenPlainSurface, mode.Width, mode.Height, D3DFMT_A8R8G8B8, D3DPOOL_SYSTEMMEM,
            ppMemory->Put(), nullptr);
    PROGRAM_CALL(canvas, GetSwapChain, 0, pChain.Put());
    PROGRAM_CALL(canvas, GetFrontBufferData, 0, pByDevice.Get());
    PROGRAM_CALL(pChain, GetFrontBufferData, pByChain.Get());
    CheckFront(canvas, pByDevice.Get());
    CheckFront(canvas, pByChain.Get());
}

}  // namespace

std::vector<ProgramScene> ProgramRudeScenes()
{
    return {{"Crashes", Crashes}, {"IsKilled", IsKilled}, {"LeavesItsDevice", LeavesItsDevice},
        {"NeverPresents", NeverPresents}, {"ShowsForEver", ShowsForEver}, {"PresentsFromThread", PresentsFromThread},
        {"SixteenChains", SixteenChains}, {"LosesWindow", LosesWindow}, {"FrontBuffer", FrontBuffer},
        {"LinearGreys", LinearGreys}};
}
