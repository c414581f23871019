// The built driver with everything around it played: runtime callbacks, delegated device, video service, client
// library.
#pragma once

#include "CreateRequest.h"
#include "DriverDll.h"
#include "FakeDxva2.h"
#include "FakeFactory.h"
#include "RegistryOverride.h"
#include "StressCuzz.h"
#include "TestClient.h"

#include <memory>
#include <optional>

namespace tesslo::test
{

class StressDriver
{
public:
    /// Loads the DLL with the test client library. The fixed pause behind a flip is taken out; random ones come in
    /// where the campaign wants them. Throws std::runtime_error when the DLL does not load.
    /// @param pClient what the registry names in place of the test client library; null for no name.
    explicit StressDriver(DWORD traceMask = 0, const wchar_t* pClient = kTestClient);
    ~StressDriver();
    StressDriver(const StressDriver&) = delete;
    StressDriver& operator=(const StressDriver&) = delete;

    HMODULE Module() const { return m_Dll->Module(); }
    const D3DDDI_DEVICEFUNCS& Functions() const { return m_Dll->m_DeviceFuncs; }
    HANDLE Device() const { return m_Dll->m_hDevice; }

    /// Presents by a blit, and takes away the reference that this leaves on the delegated render target, as every
    /// caller of it knows.
    HRESULT PresentBlit(HANDLE hSource);

    /// What lives on the delegated device, counts as a reference too many, or is left in the kernel: 0 between lives.
    uint64_t Leftovers();
    /// Takes away what a life left, so that the next one begins as the first did. Forgets calls and scripts.
    void Clean();

    static constexpr wchar_t kTestClient[] = L"TessloTestClient.dll";

    RegistryOverride m_Registry;
    TestClient m_Client;
    FakeDevice m_Fake;
    FakeKernel m_Kernel;
    std::optional<DriverDll> m_Dll;
    std::optional<FakeFactory> m_Factory;  ///< patches the DLL: goes first
    std::optional<FakeDxva2> m_Dxva2;

private:
    std::unique_ptr<ImportPatch> m_pSleep;
    std::unique_ptr<StressCuzz> m_pCuzz;
};

}  // namespace tesslo::test
