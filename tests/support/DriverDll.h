// The built driver DLL as the runtime uses it: loaded, opened, one device at a time.
//
// The registry is read while it is loaded: have a RegistryOverride before.
#pragma once

#include "FakeKernel.h"

#include "ddi/ddi.h"

namespace tesslo::test
{

class DriverDll
{
public:
    /// Loads the DLL that lies beside the test program. Throws std::runtime_error when it does not load.
    DriverDll();
    /// Closes the adapter if it is open, and unloads.
    ~DriverDll();
    DriverDll(const DriverDll&) = delete;
    DriverDll& operator=(const DriverDll&) = delete;

    HMODULE Module() const { return m_hModule; }

    /// Calls the export; on success the adapter's functions and handle are kept.
    HRESULT OpenAdapter(FakeKernel& kernel, UINT interface_ = 9, UINT version = 0x2003);
    /// Creates a device with these callbacks; on success the device's functions and handle are kept.
    HRESULT CreateDevice(FakeKernel& kernel, const D3DDDI_DEVICECALLBACKS& callbacks = FakeKernel::Callbacks());
    HRESULT CloseAdapter();
    /// Calls the DLL's own entry, as the loader does.
    BOOL DllMain(DWORD reason);
    /// Unloads now. The adapter must be closed.
    void Unload();

    HANDLE m_hAdapter = nullptr;  ///< the driver's, null while closed
    HANDLE m_hDevice = nullptr;   ///< the driver's, null before CreateDevice
    UINT m_DriverVersion = 0;     ///< told by OpenAdapter
    D3DDDI_ADAPTERFUNCS m_AdapterFuncs{};
    D3DDDI_DEVICEFUNCS m_DeviceFuncs{};
    D3DDDI_ADAPTERCALLBACKS m_AdapterCallbacks{};

private:
    HMODULE m_hModule;
};

}  // namespace tesslo::test
