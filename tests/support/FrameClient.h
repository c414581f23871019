// A client library of the test program's own: its exports are functions of the program, found through a replaced
// GetProcAddress, so that a test sees the very addresses and memory that the driver passes.
#pragma once

#include "ImportPatch.h"

#include "tesslo/client.h"

#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <vector>

/// One call of the driver.
struct FrameClientCall
{
    std::string m_Name;  ///< "Plug", "Update" or "Unplug"
    void** m_ppSlot;
    void* m_pSlotValue;  ///< on entry
    UINT m_VidPnSourceId;
    DWORD m_ThreadId;
    TessloVirtualMonitorFrame m_Frame;  ///< of an Update
    std::vector<UINT> m_Pixels;         ///< of an Update
};

class FrameClient
{
public:
    /// One at a time in a process.
    FrameClient();
    ~FrameClient();
    FrameClient(const FrameClient&) = delete;
    FrameClient& operator=(const FrameClient&) = delete;

    /// What the driver gets as the library's module.
    HMODULE Module() const { return reinterpret_cast<HMODULE>(0x5000); }
    /// The calls that have ended.
    std::vector<FrameClientCall> Calls() const;
    std::vector<FrameClientCall> Calls(const std::string& name) const;
    std::vector<std::string> Names() const;
    /// Waits until so many calls have ended; false when they do not within 30 s.
    bool WaitForCalls(size_t count) const;

    /// Makes one call of this name block until Release: the next one.
    void Hold(const std::string& name);
    /// Waits until the held call has come; false when it does not within 30 s.
    bool WaitUntilHeld() const;
    void Release();

    std::set<std::string> m_Missing;                                      ///< names of exports that there are not
    std::set<std::string> m_Refusing;                                     ///< names of calls that answer false
    void* m_pConnection = nullptr;                                        ///< what Plug stores
    std::function<void(const TessloVirtualMonitorFrame&)> m_OnFrame;      ///< called as an Update begins
    std::function<void(const TessloVirtualMonitorFrame&)> m_OnHeldFrame;  ///< called behind the hold of an Update

private:
    static FARPROC WINAPI InternalLookUp(HMODULE hModule, const char* pName);
    static BOOLEAN InternalPlug(void** ppConnection, UINT VidPnSourceId);
    static BOOLEAN InternalUpdate(void** ppConnection, const TessloVirtualMonitorFrame* pFrame);
    static BOOLEAN InternalUnplug(void** ppConnection, UINT VidPnSourceId);
    bool InternalHold(const std::string& name);
    BOOLEAN InternalEnd(FrameClientCall&& call);

    mutable std::mutex m_Mutex;
    std::vector<FrameClientCall> m_Calls;
    std::string m_HeldName;
    HANDLE m_hHeld;
    HANDLE m_hRelease;
    HANDLE m_hCalled;
    tesslo::test::ImportPatch m_Patch;
};
