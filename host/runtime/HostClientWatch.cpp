#include "host/runtime/HostClientWatch.h"

#include "host/runtime/HostDelivery.h"
#include "host/runtime/HostError.h"

#include <cstring>

/// What the driver is given to call, of one watch.
template <size_t Index>
struct HostClientWatch::Functions
{
    static FARPROC WINAPI GetProcAddress(HMODULE hModule, LPCSTR pName)
    {
        return s_pWatches[Index].load()->LookUp(hModule, pName);
    }
    static BOOLEAN Plug(void** ppConnection, UINT VidPnSourceId)
    {
        return s_pWatches[Index].load()->Plug(ppConnection, VidPnSourceId);
    }
    static BOOLEAN Update(void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
    {
        return s_pWatches[Index].load()->Update(ppConnection, pFrame);
    }
    static constexpr FunctionTable kTable = {GetProcAddress, Plug, Update};
};

const HostClientWatch::FunctionTable HostClientWatch::kTables[kWatches] = {
    Functions<0>::kTable, Functions<1>::kTable, Functions<2>::kTable, Functions<3>::kTable};
std::atomic<HostClientWatch*> HostClientWatch::s_pWatches[kWatches];

HostClientWatch::HostClientWatch(HMODULE hDriver, HMODULE hClientLibrary, HostDelivery& delivery)
    : m_hClientLibrary(hClientLibrary), m_Delivery(delivery), m_Place(this),
      m_Patch(hDriver, "kernel32.dll", "GetProcAddress", kTables[m_Place.m_Index].m_pGetProcAddress, &m_pGetProcAddress)
{
}

HostClientWatch::Place::Place(HostClientWatch* pWatch)
{
    for (; m_Index < kWatches; ++m_Index)
        if (HostClientWatch* pNone = nullptr; s_pWatches[m_Index].compare_exchange_strong(pNone, pWatch))
            return;
    throw HostError("more than " + std::to_string(kWatches) + " drivers at once");
}

FARPROC HostClientWatch::LookUp(HMODULE hModule, const char* pName)
{
    const FARPROC pFound = m_pGetProcAddress(hModule, pName);
    if (pFound == nullptr || hModule != m_hClientLibrary || IS_INTRESOURCE(pName))
        return pFound;
    void* pExport = reinterpret_cast<void*>(pFound);
    if (std::strcmp(pName, TESSLO_CLIENT_PLUG) == 0)
    {
        m_pPlug = reinterpret_cast<TessloVirtualMonitorPlugFunction>(pExport);
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(kTables[m_Place.m_Index].m_pPlug));
    }
    if (std::strcmp(pName, TESSLO_CLIENT_UPDATE) == 0)
    {
        m_pUpdate = reinterpret_cast<TessloVirtualMonitorUpdateFunction>(pExport);
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(kTables[m_Place.m_Index].m_pUpdate));
    }
    return pFound;
}

// A library may fault in both, or raise what the driver's guard catches: nothing here waits to be undone.

BOOLEAN HostClientWatch::Plug(void** ppConnection, UINT VidPnSourceId)
{
    const BOOLEAN answer = m_pPlug.load()(ppConnection, VidPnSourceId);
    m_Delivery.PlugEnded(VidPnSourceId, answer);
    return answer;
}

BOOLEAN HostClientWatch::Update(void** ppConnection, const TessloVirtualMonitorFrame* pFrame)
{
    m_Delivery.UpdateBegins(*pFrame);
    const BOOLEAN answer = m_pUpdate.load()(ppConnection, pFrame);
    m_Delivery.UpdateEnded(*pFrame, answer);
    return answer;
}
