// A program of a thousand draws a frame, for the rows of the interposer: it knows nothing of it. Its exit code is the
// time that its frames took, in tenths of a millisecond.
#include "host/runtime/HostError.h"
#include "util/UMDComPtr.h"

#include <d3d9.h>

#include <cstdio>

namespace
{

constexpr UINT kWidth = 1280;
constexpr UINT kHeight = 720;
constexpr float kEdge = 64;  // pixels of a triangle
constexpr UINT kDraws = 1000;
constexpr UINT kWarmUp = 2;
constexpr UINT kFrames = 20;

struct Vertex
{
    float m_X, m_Y, m_Z, m_W;
    D3DCOLOR m_Color;
};

void DrawFrame(IDirect3DDevice9* pDevice, UINT frame)
{
    pDevice->Clear(0, nullptr, D3DCLEAR_TARGET, 0xFF102040, 1, 0);
    pDevice->BeginScene();
    for (UINT draw = 0; draw < kDraws; ++draw)
    {
        const auto x = static_cast<float>((draw * 37 + frame) % kWidth);
        const auto y = static_cast<float>((draw * 53 + frame) % kHeight);
        const D3DCOLOR color = 0xFF000000 + draw * 16001;
        const Vertex corners[] = {{x, y, 0, 1, color}, {x + kEdge, y, 0, 1, color}, {x, y + kEdge, 0, 1, ~color}};
        // A state for each draw, as programs have it.
        pDevice->SetRenderState(D3DRS_SHADEMODE, draw % 2 ? D3DSHADE_FLAT : D3DSHADE_GOURAUD);
        HostCheck(pDevice->DrawPrimitiveUP(D3DPT_TRIANGLELIST, 1, corners, sizeof(Vertex)), "DrawPrimitiveUP");
    }
    pDevice->EndScene();
    HostCheck(pDevice->Present(nullptr, nullptr, nullptr, nullptr), "Present");
}

DWORD Measure()
{
    HWND hWnd = CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, kWidth, kHeight, nullptr, nullptr, nullptr, nullptr);
    D3DPRESENT_PARAMETERS parameters{};
    parameters.BackBufferFormat = D3DFMT_X8R8G8B8;
    parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
    parameters.Windowed = TRUE;
    parameters.PresentationInterval = D3DPRESENT_INTERVAL_IMMEDIATE;
    UMDComPtr<IDirect3D9> pFactory;
    UMDComPtr<IDirect3DDevice9> pDevice;
    *pFactory.Put() = Direct3DCreate9(D3D_SDK_VERSION);
    HostCheck(pFactory ? pFactory->CreateDevice(D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, hWnd,
                             D3DCREATE_HARDWARE_VERTEXPROCESSING, &parameters, pDevice.Put())
                       : E_FAIL,
        "CreateDevice");
    pDevice->SetRenderState(D3DRS_LIGHTING, FALSE);
    pDevice->SetFVF(D3DFVF_XYZRHW | D3DFVF_DIFFUSE);
    // What the first flip makes for later ones it makes beside the second frame.
    for (UINT frame = 0; frame < kWarmUp; ++frame)
        DrawFrame(pDevice.Get(), frame);
    LARGE_INTEGER frequency, begin, end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&begin);
    for (UINT frame = 0; frame < kFrames; ++frame)
        DrawFrame(pDevice.Get(), kWarmUp + frame);
    QueryPerformanceCounter(&end);
    return static_cast<DWORD>((end.QuadPart - begin.QuadPart) * 10'000 / frequency.QuadPart);
}

}  // namespace

int main()
{
    try
    {
        return static_cast<int>(Measure());
    }
    catch (const HostError& error)
    {
        std::fprintf(stderr, "bench_program: %s\n", error.what());
        return 0;
    }
}
