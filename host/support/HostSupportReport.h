// What a support engineer asks for first, in one text: versions, registry values, adapters, client library, last trace.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

/// Where the report looks.
struct HostSupportPlaces
{
    std::wstring m_Driver;                        ///< file name or path
    std::optional<DWORD> m_TraceMask;             ///< as the registry holds it
    std::optional<std::wstring> m_ClientLibrary;  ///< as the registry holds it; without it the driver's default
    std::wstring m_Log;                           ///< the driver's log file
};

/// The report, without private data, its lines ended by line feeds. What cannot be found out is told in its place.
std::string HostSupportText(const HostSupportPlaces& places);

/// Writes the report of this machine. Throws HostError with one line if the file cannot be written.
void HostWriteSupportReport(const std::wstring& path, const std::wstring& driver);
