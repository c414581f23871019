// The reserved exports of a client library that is sound in all else, with one fault, which their build names.
#include <tesslo/client.h>

#include <d3d9.h>

namespace
{

/// What the library does wrong with them.
enum class DeviceFault
{
    SuppliesDevice,         ///< nothing, and is told of presents
    DeclinesDevice,         ///< nothing either; it answers false, and leaves something behind
    PromisesDevice,         ///< answers true and stores none
    StoresNoObject,         ///< but the address of something else
    StoresPlainDevice,      ///< of the interface without Ex
    StoresUnguardedDevice,  ///< for one thread
    StoresOneReference,     ///< for all that ask
    FaultsInSupply,
    FaultsInNotice,
    ReleasesSurface,  ///< which is lent
    KeepsDevice,      ///< a reference for each present
    HasNoSupply,      ///< and so is never told of presents
};

constexpr DeviceFault kFault = DeviceFault::TESSLO_DEVICE_FAULT;

constexpr bool Has(DeviceFault fault)
{
    return kFault == fault;
}

UINT64 g_NoObject[4];
volatile UINT_PTR g_Nowhere = 8;
IDirect3DDevice9Ex* g_pShared;

void Fault()
{
    *reinterpret_cast<volatile BYTE*>(g_Nowhere) = 0;
}

D3DPRESENT_PARAMETERS Windowed()
{
    D3DPRESENT_PARAMETERS parameters = {};
    parameters.SwapEffect = D3DSWAPEFFECT_DISCARD;
    parameters.Windowed = TRUE;
    return parameters;
}

IDirect3DDevice9Ex* Make(HWND hWnd)
{
    const DWORD flags = Has(DeviceFault::StoresUnguardedDevice) ? 0 : D3DCREATE_MULTITHREADED;
    D3DPRESENT_PARAMETERS parameters = Windowed();
    IDirect3D9Ex* pFactory = nullptr;
    IDirect3DDevice9Ex* pDevice = nullptr;
    if (FAILED(Direct3DCreate9Ex(D3D_SDK_VERSION, &pFactory)))
        return nullptr;
    pFactory->CreateDeviceEx(
        0, D3DDEVTYPE_HAL, hWnd, D3DCREATE_SOFTWARE_VERTEXPROCESSING | flags, &parameters, nullptr, &pDevice);
    pFactory->Release();
    return pDevice;
}

IDirect3DDevice9Ex* MakePlain(HWND hWnd)
{
    D3DPRESENT_PARAMETERS parameters = Windowed();
    IDirect3D9* pFactory = Direct3DCreate9(D3D_SDK_VERSION);
    IDirect3DDevice9* pDevice = nullptr;
    pFactory->CreateDevice(
        0, D3DDEVTYPE_HAL, hWnd, D3DCREATE_SOFTWARE_VERTEXPROCESSING | D3DCREATE_MULTITHREADED, &parameters, &pDevice);
    pFactory->Release();
    return static_cast<IDirect3DDevice9Ex*>(pDevice);
}

IDirect3DDevice9Ex* Supply(HWND hWnd)
{
    if (Has(DeviceFault::FaultsInSupply))
        Fault();
    if (Has(DeviceFault::PromisesDevice))
        return nullptr;
    if (Has(DeviceFault::StoresNoObject) || Has(DeviceFault::DeclinesDevice))
        return reinterpret_cast<IDirect3DDevice9Ex*>(g_NoObject);
    if (Has(DeviceFault::StoresPlainDevice))
        return MakePlain(hWnd);
    if (!Has(DeviceFault::StoresOneReference))
        return Make(hWnd);
    if (!g_pShared)
        g_pShared = Make(hWnd);
    return g_pShared;
}

}  // namespace

#ifndef TESSLO_DEVICE_FAULT_HasNoSupply
extern "C" BOOLEAN TessloVirtualMonitorReserved1(HWND hWnd, IDirect3DDevice9Ex** ppDevice)
{
    *ppDevice = Supply(hWnd);
    return !Has(DeviceFault::DeclinesDevice);
}
#else
[[maybe_unused]] static const auto kUnused = Supply;
#endif

extern "C" BOOLEAN TessloVirtualMonitorReserved2(IDirect3DDevice9Ex* pDevice, IDirect3DSurface9* pSurface)
{
    if (Has(DeviceFault::FaultsInNotice))
        Fault();
    if (Has(DeviceFault::ReleasesSurface))
        pSurface->Release();
    if (Has(DeviceFault::KeepsDevice))
        pDevice->AddRef();
    return FALSE;
}
