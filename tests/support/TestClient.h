// A scripted client library: the test's side of TessloTestClient*.dll.
//
// Records what the driver calls and the frames that it sends, and answers what the test says. Name it to the driver
// with RegistryOverride::SetClientDllName(client.DllName()) before the driver loads its client library.
#pragma once

#include "FakeRecorder.h"

#include "tesslo/client.h"

#include <vector>

namespace tesslo::test
{

class TestClient : public FakeRecorder
{
public:
    /// One delivered frame, pixels copied.
    struct Frame
    {
        TessloVirtualMonitorFrame m_Record;  ///< pBits is null
        std::vector<BYTE> m_Bytes;           ///< Pitch times Height
        DWORD m_ThreadId;
    };

    /// @param variant "" for the library with all five exports, else the name of the one that is missing:
    ///                "Plug", "Update", "Unplug", "Reserved1" or "Reserved2".
    /// One at a time in a process and variant. Throws std::runtime_error when the library is not there.
    explicit TestClient(const std::string& variant = "");
    /// The driver must have freed the library, or have ended its threads.
    ~TestClient() override;

    /// Bare file name; it lies beside the test program.
    const std::wstring& DllName() const { return m_DllName; }
    HMODULE Module() const { return m_hModule; }

    /// What Reserved1 hands out, with a new reference; null, as at first, makes it decline.
    void SetDevice(IDirect3DDevice9Ex* pDevice) { m_pDevice = pDevice; }
    /// What Plug stores in the connection's slot.
    void SetConnection(void* pConnection) { m_pConnection = pConnection; }

    // Recorded as "Plug(slot, 3)" (slot: what the connection's slot holds on entry), "Update(slot, 3, 4x2)",
    // "Unplug(slot, 3)", "Reserved1()", "Reserved2()". Fail("Plug", E_FAIL) makes the call answer false.

    std::vector<Frame> Frames() const;
    /// Waits until so many frames have come in all; false when they do not within 30 s.
    bool WaitForFrames(size_t count) const;
    /// Waits until the method has been called so often.
    bool WaitForCalls(const std::string& method, size_t count) const;

private:
    static BOOLEAN InternalPlug(void* pContext, void** ppConnection, UINT VidPnSourceId);
    static BOOLEAN InternalUpdate(void* pContext, void** ppConnection, const TessloVirtualMonitorFrame* pFrame);
    static BOOLEAN InternalUnplug(void* pContext, void** ppConnection, UINT VidPnSourceId);
    static BOOLEAN InternalReserved1(void* pContext, HWND hWnd, IDirect3DDevice9Ex** ppDevice);
    static BOOLEAN InternalReserved2(void* pContext, IDirect3DDevice9Ex* pDevice, IDirect3DSurface9* pSurface);
    bool InternalCall(const char* pExport, const std::string& arguments);
    bool InternalWait(const std::function<bool()>& condition) const;

    std::wstring m_DllName;
    HMODULE m_hModule = nullptr;
    HANDLE m_hEventCalled = nullptr;  ///< auto-reset, set behind every call
    IDirect3DDevice9Ex* m_pDevice = nullptr;
    void* m_pConnection = nullptr;
    std::vector<Frame> m_Frames;
};

}  // namespace tesslo::test
