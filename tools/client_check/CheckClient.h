// The library that is checked, loaded and called as the driver does it.
#pragma once

#include "tools/client_check/CheckBoard.h"
#include "tools/client_check/CheckFailure.h"

#include <tesslo/client.h>

class CheckClient
{
public:
    /// Throws CheckFailure when the library does not load, or lacks one of the three exports.
    CheckClient(const std::wstring& path, CheckBoard& board);
    /// Frees the library, unless that is done.
    ~CheckClient();
    CheckClient(const CheckClient&) = delete;
    CheckClient& operator=(const CheckClient&) = delete;

    void Free();

    // Each throws CheckFailure when the library answers false.
    void Plug(void** ppConnection, UINT source) const;
    /// @return milliseconds that it took.
    double Update(void** ppConnection, const TessloVirtualMonitorFrame& frame) const;
    void Unplug(void** ppConnection, UINT source) const;

    /// An export that need not be there; null when it is not.
    template <typename Function>
    Function Find(const char* pName) const
    {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(m_hModule, pName)));
    }

private:
    template <typename Function>
    Function Need(const char* pName) const;

    CheckBoard& m_Board;
    HMODULE m_hModule;
    TessloVirtualMonitorPlugFunction m_pPlug;
    TessloVirtualMonitorUpdateFunction m_pUpdate;
    TessloVirtualMonitorUnplugFunction m_pUnplug;
};
