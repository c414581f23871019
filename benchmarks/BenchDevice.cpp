#include "BenchDevice.h"

#include "BenchTimer.h"
#include "HostSession.h"
#include "util/UMDComPtr.h"

#include <d3d9.h>

#include <functional>

namespace
{
/// A device of the platform's own, made as the driver makes its delegated one.
class PlainDevice
{
public:
    PlainDevice()
    {
        m_hWindow = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 64, 64, nullptr, nullptr, nullptr, nullptr);
        HostCheck(Direct3DCreate9Ex(D3D_SDK_VERSION, m_pD3D.Put()), "Direct3DCreate9Ex");
        D3DPRESENT_PARAMETERS parameters = {};
        parameters.Windowed = TRUE;
        parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
        parameters.hDeviceWindow = m_hWindow;
        HostCheck(m_pD3D->CreateDeviceEx(D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, m_hWindow,
                      D3DCREATE_HARDWARE_VERTEXPROCESSING | D3DCREATE_MULTITHREADED | D3DCREATE_FPU_PRESERVE,
                      &parameters, nullptr, m_pDevice.Put()), "CreateDeviceEx");
    }
    ~PlainDevice() { DestroyWindow(m_hWindow); }
    PlainDevice(const PlainDevice&) = delete;
    PlainDevice& operator=(const PlainDevice&) = delete;

    IDirect3DDevice9Ex* operator->() const { return m_pDevice.Get(); }

private:
    HWND m_hWindow;
    UMDComPtr<IDirect3D9Ex> m_pD3D;
    UMDComPtr<IDirect3DDevice9Ex> m_pDevice;
};

/// Flips without the driver's fixed pause, beside the readback that they cannot do without.
void Present(BenchReport& report, HostSession& session, PlainDevice& plain, UINT width, UINT height)
{
    const std::string name = "present " + std::to_string(width) + "x" + std::to_string(height);
    if (!report.Wants(name))
        return;
    const auto pPrimary = session.Device().CreatePrimary(width, height, 0, D3DDDI_ROTATION_IDENTITY);
    session.Device().SetRenderTarget(*pPrimary);
    UMDComPtr<IDirect3DSurface9> pTarget, pCopy;
    HostCheck(plain->CreateRenderTarget(width, height, D3DFMT_X8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE, pTarget.Put(),
                  nullptr), "CreateRenderTarget");
    HostCheck(plain->CreateOffscreenPlainSurface(
                  width, height, D3DFMT_X8R8G8B8, D3DPOOL_SYSTEMMEM, pCopy.Put(), nullptr), "CreateOffscreenPlainSurface");
    HostCheck(plain->SetRenderTarget(0, pTarget.Get()), "SetRenderTarget");
    std::vector<double> ours, other;
    for (UINT round = 0; round < 31; ++round)
    {
        session.Device().Clear(0xFF000000 + round);
        ours.push_back(session.Device().Flip(*pPrimary).m_Work / 1000);
        // The frame-buffer thread still turns and sends the frame; it must not share the machine with what follows.
        Sleep(30);
        HostCheck(plain->Clear(0, nullptr, D3DCLEAR_TARGET, 0xFF000000 + round, 0, 0), "Clear");
        const double begin = BenchNow();
        D3DLOCKED_RECT locked;
        HostCheck(plain->GetRenderTargetData(pTarget.Get(), pCopy.Get()), "GetRenderTargetData");
        HostCheck(pCopy->LockRect(&locked, nullptr, D3DLOCK_READONLY), "LockRect");
        other.push_back(BenchNow() - begin);
        pCopy->UnlockRect();
    }
    report.AddCost(name, BenchMedian(ours), "readback", BenchMedian(other), 1.05);
}

/// One call of a state, driver beside plain device.
void Calls(BenchReport& report, HostSession& session, PlainDevice& plain)
{
    const D3DDDI_DEVICEFUNCS& entries = session.Device().Functions();
    const HANDLE hDevice = session.Device().Handle();
    const auto compare = [&](const std::string& name, const std::function<void()>& ours, const std::function<void()>& other) {
        if (!report.Wants(name))
            return;
        const std::vector<double> times = BenchCompare({{ours}, {other}}, 31, 2000);
        report.AddFigure(name, times[0], "plain device", times[1]);
    };
    UINT value = 0;
    compare("SetRenderState",
        [&] {
            const D3DDDIARG_RENDERSTATE arg = {static_cast<D3DDDIRENDERSTATETYPE>(D3DRS_TEXTUREFACTOR), ++value};
            entries.pfnSetRenderState(hDevice, &arg);
        },
        [&] { plain->SetRenderState(D3DRS_TEXTUREFACTOR, ++value); });
    for (const UINT count : {1u, 32u})
    {
        std::vector<float> registers(count * 4);
        compare("SetPixelShaderConst of " + std::to_string(count),
            [&] {
                registers[0] += 1;
                D3DDDIARG_SETPIXELSHADERCONST arg = {};
                arg.Count = count;
                entries.pfnSetPixelShaderConst(hDevice, &arg, registers.data());
            },
            [&] {
                registers[0] += 1;
                plain->SetPixelShaderConstantF(0, registers.data(), count);
            });
    }
    compare("SetTexture", [&] { entries.pfnSetTexture(hDevice, 0, nullptr); }, [&] { plain->SetTexture(0, nullptr); });
}

/// Loading and freeing the driver, beside its client library alone.
void Attach(BenchReport& report)
{
    const std::string name = "attach and detach";
    if (!report.Wants(name))
        return;
    // The platform's own DLLs stay loaded, as they are in a process that uses Direct3D: their start is not the driver's.
    for (const wchar_t* pName : {L"d3d9.dll", L"dxva2.dll", L"shell32.dll"})
        LoadLibraryW(pName);
    const auto load = [](const wchar_t* pName) {
        return [=] {
            if (const HMODULE hModule = LoadLibraryW(pName))
                FreeLibrary(hModule);
        };
    };
    const std::vector<double> times =
        BenchCompare({{load(L"TessloWddmUmode.dll")}, {load(L"TessloClientDllSample.dll")}}, 31);
    report.AddCost(name, times[0], "client library", times[1], 1.2);
}
} // namespace

void BenchDevice(BenchReport& report)
{
    Attach(report);
    HostDriverSettings settings;
    settings.m_Path = L"TessloWddmUmode.dll";
    settings.m_ClientLibrary = L"TessloClientDllSample.dll";
    HostSession session(settings);
    PlainDevice plain;
    Calls(report, session, plain);
    Present(report, session, plain, 1280, 720);
    Present(report, session, plain, 1920, 1080);
}
