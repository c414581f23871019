#include "FrameClient.h"

namespace
{
constexpr DWORD kLong = 30000;  ///< milliseconds; reached only by a failing test

FrameClient* g_pClient;
}  // namespace

FrameClient::FrameClient()
    : m_hHeld(CreateEventW(nullptr, FALSE, FALSE, nullptr)), m_hRelease(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      m_hCalled(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      m_Patch(nullptr, "kernel32.dll", "GetProcAddress", reinterpret_cast<void*>(&FrameClient::InternalLookUp))
{
    g_pClient = this;
}

FrameClient::~FrameClient()
{
    g_pClient = nullptr;
    CloseHandle(m_hHeld);
    CloseHandle(m_hRelease);
    CloseHandle(m_hCalled);
}

std::vector<FrameClientCall> FrameClient::Calls() const
{
    std::lock_guard lock(m_Mutex);
    return m_Calls;
}

std::vector<FrameClientCall> FrameClient::Calls(const std::string& name) const
{
    std::vector<FrameClientCall> calls = Calls();
    std::erase_if(calls, [&](const FrameClientCall& call) { return call.m_Name != name; });
    return calls;
}

std::vector<std::string> FrameClient::Names() const
{
    std::vector<std::string> names;
    for (const FrameClientCall& call : Calls())
        names.push_back(call.m_Name);
    return names;
}

bool FrameClient::WaitForCalls(size_t count) const
{
    while (Calls().size() < count)
    {
        if (WaitForSingleObject(m_hCalled, kLong) != WAIT_OBJECT_0)
            return false;
    }
    return true;
}

void FrameClient::Hold(const std::string& name)
{
    std::lock_guard lock(m_Mutex);
    m_HeldName = name;
}

bool FrameClient::WaitUntilHeld() const
{
    return WaitForSingleObject(m_hHeld, kLong) == WAIT_OBJECT_0;
}

void FrameClient::Release()
{
    SetEvent(m_hRelease);
}

FARPROC WINAPI FrameClient::InternalLookUp(HMODULE hModule, const char* pName)
{
    if (hModule != g_pClient->Module())
        return g_pClient->m_Patch.Original<decltype(&GetProcAddress)>()(hModule, pName);
    const std::string name = pName;
    void* pFunction = nullptr;
    if (name == TESSLO_CLIENT_PLUG)
        pFunction = reinterpret_cast<void*>(&InternalPlug);
    else if (name == TESSLO_CLIENT_UPDATE)
        pFunction = reinterpret_cast<void*>(&InternalUpdate);
    else if (name == TESSLO_CLIENT_UNPLUG)
        pFunction = reinterpret_cast<void*>(&InternalUnplug);
    if (!pFunction || g_pClient->m_Missing.contains(name))
    {
        SetLastError(ERROR_PROC_NOT_FOUND);
        return nullptr;
    }
    return reinterpret_cast<FARPROC>(pFunction);
}

BOOLEAN FrameClient::InternalPlug(void** ppConnection, UINT VidPnSourceId)
{
    g_pClient->InternalHold("Plug");
    void* const pEntryValue = *ppConnection;
    *ppConnection = g_pClient->m_pConnection;
    return g_pClient->InternalEnd({"Plug", ppConnection, pEntryValue, VidPnSourceId, GetCurrentThreadId(), {}, {}});
}

BOOLEAN FrameClient::InternalUpdate(void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
{
    if (g_pClient->m_OnFrame)
        g_pClient->m_OnFrame(*pFrame);
    if (g_pClient->InternalHold("Update") && g_pClient->m_OnHeldFrame)
        g_pClient->m_OnHeldFrame(*pFrame);
    const auto* pPixels = static_cast<const UINT*>(pFrame->pBits);
    return g_pClient->InternalEnd({"Update", ppConnection, *ppConnection, pFrame->VidPnSourceId, GetCurrentThreadId(),
        *pFrame, {pPixels, pPixels + size_t{pFrame->Width} * pFrame->Height}});
}

BOOLEAN FrameClient::InternalUnplug(void** ppConnection, UINT VidPnSourceId)
{
    g_pClient->InternalHold("Unplug");
    return g_pClient->InternalEnd({"Unplug", ppConnection, *ppConnection, VidPnSourceId, GetCurrentThreadId(), {}, {}});
}

bool FrameClient::InternalHold(const std::string& name)
{
    {
        std::lock_guard lock(m_Mutex);
        if (m_HeldName != name)
            return false;
        m_HeldName.clear();
    }
    SetEvent(m_hHeld);
    WaitForSingleObject(m_hRelease, INFINITE);
    return true;
}

BOOLEAN FrameClient::InternalEnd(FrameClientCall&& call)
{
    const bool refused = m_Refusing.contains(call.m_Name);
    {
        std::lock_guard lock(m_Mutex);
        m_Calls.push_back(std::move(call));
    }
    SetEvent(m_hCalled);
    return !refused;
}
