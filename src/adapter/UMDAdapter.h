// The adapter object and the driver's one export.
//
// Its address is the adapter handle that the runtime holds. It answers capability queries from fixed tables, creates
// the device and, when it is closed, ends it. Runtime's threads; the runtime does not create devices on one adapter
// concurrently.
#pragma once

#include "ddi/ddi.h"

#include <memory>

class UMDDdiDevice;

class UMDAdapter
{
public:
    /// @param hRTAdapter the runtime's adapter handle.
    /// @param version    interface version of the runtime, handed to every device.
    /// @param pCallbacks copied.
    UMDAdapter(HANDLE hRTAdapter, UINT version, const D3DDDI_ADAPTERCALLBACKS* pCallbacks);
    ~UMDAdapter();

    UMDAdapter(const UMDAdapter&) = delete;
    UMDAdapter& operator=(const UMDAdapter&) = delete;

    // Adapter entries, in slot order; no exception guard.
    static HRESULT APIENTRY DdiGetCaps(HANDLE hAdapter, const D3DDDIARG_GETCAPS* pGetCaps);
    static HRESULT APIENTRY DdiCreateDevice(HANDLE hAdapter, D3DDDIARG_CREATEDEVICE* pCreateDevice);

    /// Answers one capability query: UMDAdapterGetCaps.cpp.
    HRESULT GetCaps(const D3DDDIARG_GETCAPS* pGetCaps);
    HRESULT CreateDevice(D3DDDIARG_CREATEDEVICE* pCreateDevice);
    /// Stops the threads of the device created last and frees it.
    void CloseDevice();

    /// The device created last, null before the first. Owned by the adapter.
    UMDDdiDevice* Device() const { return m_pDevice.get(); }

private:
    HANDLE m_hRTAdapter;
    std::unique_ptr<UMDDdiDevice> m_pDevice;
    UINT m_Version;
    D3DDDI_ADAPTERCALLBACKS m_AdapterCallbacks;  ///< never called
    LONG m_InstanceNumber;                       ///< 1 for the first adapter of the process
};

/// The driver's one export: opens an adapter. Any interface and version are accepted.
extern "C" HRESULT APIENTRY OpenAdapter(D3DDDIARG_OPENADAPTER* pOpenAdapter);

/// Closes an adapter: its last device's threads are stopped, device and adapter are freed.
HRESULT APIENTRY CloseAdapter(HANDLE hAdapter);
