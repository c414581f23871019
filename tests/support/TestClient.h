// A scripted client library: the test's side of TessloTestClient*.dll.
//
// Records what the driver calls and the frames that it sends, and answers what the test says. Name it to the driver
// with RegistryOverride::SetClientDllName(client.DllName()) before the driver loads its client library, or hand the
// driver's own parts client.Module().
#pragma once

#include "FakeRecorder.h"

#include "tesslo/client.h"

namespace tesslo::test
{

class TestClient : public FakeRecorder
{
public:
    /// One call of Plug, Update or Unplug.
    struct Call
    {
        std::string m_Name;
        void** m_ppSlot;
        void* m_pSlotValue;  ///< on entry
        UINT m_VidPnSourceId;
        DWORD m_ThreadId;
        TessloVirtualMonitorFrame m_Frame;  ///< of an Update
        std::vector<UINT> m_Pixels;         ///< of an Update, as they were when the call ended
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
    /// Called as each Update begins.
    void SetOnFrame(std::function<void(const TessloVirtualMonitorFrame&)> onFrame) { m_OnFrame = std::move(onFrame); }

    // Recorded as "Plug(slot, 3)" (slot: what the connection's slot holds on entry), "Update(slot, 3, 4x2)",
    // "Unplug(slot, 3)", "Reserved1(window)", "Reserved2(device, surface)". Fail("Plug", E_FAIL) makes the call answer
    // false; a Reserved1 that does so stores its device all the same. With S_FALSE it answers true and stores nothing.

    /// The calls that have ended, in order.
    std::vector<Call> History() const;
    std::vector<Call> Updates() const;
    std::vector<std::string> Names() const;
    /// Forgets the calls, lines included.
    void Forget();
    /// Waits until so many calls have ended in all; false when they do not within 30 s.
    bool WaitForCalls(size_t count) const;
    bool WaitForUpdates(size_t count) const;

private:
    static BOOLEAN InternalPlug(void* pContext, void** ppConnection, UINT VidPnSourceId);
    static BOOLEAN InternalUpdate(void* pContext, void** ppConnection, const TessloVirtualMonitorFrame* pFrame);
    static BOOLEAN InternalUnplug(void* pContext, void** ppConnection, UINT VidPnSourceId);
    static BOOLEAN InternalReserved1(void* pContext, HWND hWnd, IDirect3DDevice9Ex** ppDevice);
    static BOOLEAN InternalReserved2(void* pContext, IDirect3DDevice9Ex* pDevice, IDirect3DSurface9* pSurface);
    bool InternalBegin(const Call& call, const std::string& moreArguments = "");
    void InternalEnd(Call&& call);
    bool InternalWait(const std::function<bool()>& condition) const;

    std::wstring m_DllName;
    HMODULE m_hModule = nullptr;
    HANDLE m_hEventCalled = nullptr;  ///< auto-reset, set behind every call
    IDirect3DDevice9Ex* m_pDevice = nullptr;
    void* m_pConnection = nullptr;
    std::function<void(const TessloVirtualMonitorFrame&)> m_OnFrame;
    std::vector<Call> m_History;
};

}  // namespace tesslo::test
