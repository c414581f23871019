// The client library of a run: hands the frames on to the library that the run names, and supplies the delegated
// device. The driver carries sampler states as texture stage states 13 and up, which some implementations of
// Direct3D 9 take and drop: on the device that is supplied here they are set as what they are.
#include "interposer/dll/Platform.h"
#include "interposer/hooks/HookMethod.h"
#include "interposer/run/RunLedger.h"
#include "interposer/run/RunSamplers.h"
#include "util/UMDComPtr.h"

#include <tesslo/client.h>

#include <algorithm>

namespace
{

template <typename Function>
Function Find(const char* pName)
{
    static const HMODULE hLibrary =
        LoadLibraryW(*RunOf().m_Client != L'\0' ? RunOf().m_Client : TESSLO_CLIENT_DEFAULT_DLL);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(hLibrary, pName)));
}

using SetTextureStageState = HookMethod<&IDirect3DDevice9::SetTextureStageState>;

HRESULT STDMETHODCALLTYPE OnSetTextureStageState(
    IDirect3DDevice9* pThis, DWORD stage, D3DTEXTURESTAGESTATETYPE state, DWORD value)
{
    if (const D3DSAMPLERSTATETYPE sampler = RunSamplerOf(state))
        return pThis->SetSamplerState(stage, sampler, value);
    return SetTextureStageState::Platform(pThis, stage, state, value);
}

/// A table of its own for what is supplied here: that of the other devices stays as it is.
void SetSamplersByStage(IDirect3DDevice9Ex* pDevice)
{
    constexpr size_t kMethods = 134;
    void**& pTable = *reinterpret_cast<void***>(pDevice);
    static void* const* const pOwn = [&] {
        static void* table[kMethods];
        std::copy_n(pTable, kMethods, table);
        void* pCopy = table;
        const HookRow rows[] = {SetTextureStageState::Row(OnSetTextureStageState)};
        HookInstall(&pCopy, rows);
        return table;
    }();
    pTable = const_cast<void**>(pOwn);
}

HRESULT CreateDevice(HWND hWnd, IDirect3DDevice9Ex** ppDevice)
{
    // Never given back: a module that holds a device must not go before it.
    static const bool bLoaded = PlatformLoad();
    const auto pCreate =
        reinterpret_cast<PlatformCreate9ExFunction>(bLoaded ? PlatformExport("Direct3DCreate9Ex") : nullptr);
    UMDComPtr<IDirect3D9Ex> pFactory;
    if (pCreate == nullptr || FAILED(pCreate(D3D_SDK_VERSION, pFactory.Put())))
        return E_FAIL;
    D3DPRESENT_PARAMETERS parameters{};
    parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
    parameters.Windowed = TRUE;
    return pFactory->CreateDeviceEx(D3DADAPTER_DEFAULT, D3DDEVTYPE_HAL, hWnd,
        D3DCREATE_HARDWARE_VERTEXPROCESSING | D3DCREATE_MULTITHREADED | D3DCREATE_FPU_PRESERVE, &parameters, nullptr,
        ppDevice);
}

}  // namespace

extern "C" BOOLEAN TessloVirtualMonitorPlug(void** ppConnection, UINT VidPnSourceId)
{
    const auto pPlug = Find<TessloVirtualMonitorPlugFunction>(TESSLO_CLIENT_PLUG);
    return pPlug != nullptr && pPlug(ppConnection, VidPnSourceId);
}

extern "C" BOOLEAN TessloVirtualMonitorUpdate(void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
{
    const auto pUpdate = Find<TessloVirtualMonitorUpdateFunction>(TESSLO_CLIENT_UPDATE);
    return pUpdate != nullptr && pUpdate(ppConnection, pFrame);
}

extern "C" BOOLEAN TessloVirtualMonitorUnplug(void** ppConnection, UINT VidPnSourceId)
{
    const auto pUnplug = Find<TessloVirtualMonitorUnplugFunction>(TESSLO_CLIENT_UNPLUG);
    return pUnplug != nullptr && pUnplug(ppConnection, VidPnSourceId);
}

extern "C" BOOLEAN TessloVirtualMonitorReserved1(HWND hWnd, IDirect3DDevice9Ex** ppDevice)
{
    if (FAILED(CreateDevice(hWnd, ppDevice)))
        return FALSE;
    SetSamplersByStage(*ppDevice);
    return TRUE;
}
