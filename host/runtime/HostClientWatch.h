// Sees each call that the driver makes of its client library, and tells a HostDelivery of it.
//
// The driver looks the library's exports up by name. While the watch lives, what it finds for Plug and Update are
// functions that pass the call on and count it: the library itself is loaded, entered and freed by the driver as ever,
// and its optional exports are not touched.
#pragma once

#include "host/runtime/HostImportPatch.h"

#include <tesslo/client.h>

#include <atomic>

class HostDelivery;

class HostClientWatch
{
public:
    /// @param hDriver        the driver, which has not looked up anything yet; must stay loaded as long as the watch.
    /// @param hClientLibrary the library that it has loaded; null for none: then there is nothing to see.
    /// @param delivery       borrowed. The driver's threads must have ended before either goes.
    /// Throws HostError for more than kWatches at once.
    HostClientWatch(HMODULE hDriver, HMODULE hClientLibrary, HostDelivery& delivery);
    HostClientWatch(const HostClientWatch&) = delete;
    HostClientWatch& operator=(const HostClientWatch&) = delete;

private:
    /// Drivers that a process can have watched at once. An export has no argument that told them apart: each watch has
    /// functions of its own.
    static constexpr size_t kWatches = 4;
    template <size_t Index>
    struct Functions;
    struct FunctionTable
    {
        decltype(&::GetProcAddress) m_pGetProcAddress;
        TessloVirtualMonitorPlugFunction m_pPlug;
        TessloVirtualMonitorUpdateFunction m_pUpdate;
    };
    static const FunctionTable kTables[kWatches];
    static std::atomic<HostClientWatch*> s_pWatches[kWatches];

    FARPROC LookUp(HMODULE hModule, const char* pName);
    BOOLEAN Plug(void** ppConnection, UINT VidPnSourceId);
    BOOLEAN Update(void** ppConnection, const TessloVirtualMonitorFrame* pFrame);

    /// One of the places of s_pWatches, taken and given back.
    class Place
    {
    public:
        explicit Place(HostClientWatch* pWatch);
        ~Place() { s_pWatches[m_Index] = nullptr; }
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;

        size_t m_Index = 0;
    };

    HMODULE m_hClientLibrary;
    HostDelivery& m_Delivery;
    std::atomic<TessloVirtualMonitorPlugFunction> m_pPlug{};  ///< the library's own; several threads look them up
    std::atomic<TessloVirtualMonitorUpdateFunction> m_pUpdate{};
    decltype(&::GetProcAddress) m_pGetProcAddress = nullptr;  ///< the platform's
    Place m_Place;
    HostImportPatch m_Patch;
};
