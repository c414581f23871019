// The driver's DLL, loaded by path and entered through its one export, and the client library that it brings along.
#pragma once

#include "ddi/ddi.h"

#include <optional>
#include <string>

using HostOpenAdapterFunction = HRESULT(APIENTRY*)(D3DDDIARG_OPENADAPTER*);

/// What the driver finds in the registry while it loads.
struct HostDriverSettings
{
    std::wstring m_Path;                          ///< of the driver; a bare name is looked for beside the program
    std::optional<std::wstring> m_ClientLibrary;  ///< without one the driver takes its default
    DWORD m_TraceMask = 0;                        ///< UMDTRACE_ bits
    bool m_bNeedsClientLibrary = true;            ///< false: one that was named and is not there is no error
};

class HostDriver
{
public:
    /// Loads the driver. Throws HostError if the file or its export is missing, or if it loads without its client
    /// library although one was named.
    explicit HostDriver(const HostDriverSettings& settings);
    ~HostDriver();
    HostDriver(const HostDriver&) = delete;
    HostDriver& operator=(const HostDriver&) = delete;

    HRESULT OpenAdapter(D3DDDIARG_OPENADAPTER& arg) const { return m_pOpenAdapter(&arg); }
    HMODULE Module() const { return m_hModule; }
    /// The client library that the driver loaded, null if it found none. The driver's own reference.
    HMODULE ClientLibrary() const { return m_hClientLibrary; }

private:
    HMODULE m_hModule = nullptr;
    HMODULE m_hClientLibrary = nullptr;
    HostOpenAdapterFunction m_pOpenAdapter = nullptr;
};
