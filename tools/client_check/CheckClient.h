// The library that is checked, loaded and called as the driver does it.
#pragma once

#include "tools/client_check/CheckBoard.h"

#include <tesslo/client.h>

#include <stdexcept>

/// Ends a check: what the library did that it must not do.
class CheckFailure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

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

private:
    CheckBoard& m_Board;
    HMODULE m_hModule;
    TessloVirtualMonitorPlugFunction m_pPlug;
    TessloVirtualMonitorUpdateFunction m_pUpdate;
    TessloVirtualMonitorUnplugFunction m_pUnplug;
};
