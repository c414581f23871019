// IDirect3D9 and IDirect3D9Ex: the program's devices begin here.
#include "interposer/carry/CarryDevice.h"
#include "interposer/carry/CarryDriver.h"
#include "interposer/dll/Platform.h"
#include "interposer/hooks/HookMethod.h"
#include "interposer/hooks/Hooks.h"
#include "interposer/run/RunLedger.h"
#include "util/UMDComPtr.h"

#include <mutex>
#include <set>

namespace
{

std::mutex g_Mutex;
std::set<IDirect3D9*> g_Factories;  // the program's

/// The factory has made a device.
void Begin(IDirect3D9* pFactory, IDirect3DDevice9* pDevice)
{
    if (std::lock_guard lock(g_Mutex); !g_Factories.contains(pFactory))
        return;
    // The driver's device is made before the first hook: its methods stay the platform's.
    if (RunOf().m_Mode != RunMode::Off)
    {
        HooksExit();
        CarryBegin(pDevice);
    }
    HooksDevice(pDevice);
}

/// A factory may lie where one that has gone lay: only its maker tells whose it is.
void Made(IDirect3D9* pFactory, bool bProgram)
{
    {
        std::lock_guard lock(g_Mutex);
        if (bProgram)
            g_Factories.insert(pFactory);
        else
            g_Factories.erase(pFactory);
    }
    if (bProgram)
        HooksFactory(pFactory);
}

}  // namespace

void HooksFactory(IDirect3D9* pFactory)
{
    const HookRow rows[] = {
        HookMethod<&IDirect3D9::CreateDevice>::RowBehind<[](IDirect3D9* pThis, UINT, D3DDEVTYPE, HWND, DWORD,
                                                             D3DPRESENT_PARAMETERS*, IDirect3DDevice9** ppDevice) {
            Begin(pThis, *ppDevice);
        }>()};
    HookInstall(pFactory, rows);
    UMDComPtr<IDirect3D9Ex> pEx;
    if (SUCCEEDED(pFactory->QueryInterface(IID_IDirect3D9Ex, reinterpret_cast<void**>(pEx.Put()))))
    {
        const HookRow exRows[] = {HookMethod<&IDirect3D9Ex::CreateDeviceEx>::RowBehind<
            [](IDirect3D9* pThis, UINT, D3DDEVTYPE, HWND, DWORD, D3DPRESENT_PARAMETERS*, D3DDISPLAYMODEEX*,
                IDirect3DDevice9Ex** ppDevice) { Begin(pThis, *ppDevice); }>()};
        HookInstall(pEx.Get(), exRows);
    }
}

extern "C" IDirect3D9* WINAPI InterposerDirect3DCreate9(UINT version)
{
    const bool bProgram = !CarryDriver::IsOwnCode(__builtin_return_address(0));
    const auto pCreate = reinterpret_cast<PlatformCreate9Function>(PlatformExport("Direct3DCreate9"));
    IDirect3D9* pFactory = pCreate(version);
    if (pFactory != nullptr)
        Made(pFactory, bProgram);
    return pFactory;
}

extern "C" HRESULT WINAPI InterposerDirect3DCreate9Ex(UINT version, IDirect3D9Ex** ppFactory)
{
    const bool bProgram = !CarryDriver::IsOwnCode(__builtin_return_address(0));
    const auto pCreate = reinterpret_cast<PlatformCreate9ExFunction>(PlatformExport("Direct3DCreate9Ex"));
    const HRESULT hr = pCreate(version, ppFactory);
    if (SUCCEEDED(hr))
        Made(*ppFactory, bProgram);
    return hr;
}
