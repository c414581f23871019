// The display adapters of this machine, and which of them the driver draws on.
#pragma once

#include <windows.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

struct HostGraphicsAdapter
{
    std::string m_Description;
    std::string m_Driver;      ///< file name
    std::string m_DeviceName;  ///< "\\.\DISPLAY1"
    LONGLONG m_DriverVersion;  ///< four parts of 16 bits
    DWORD m_VendorId;
    DWORD m_DeviceId;
    LUID m_Luid;
};

/// In the order of Direct3D. Throws HostError if Direct3D 9Ex cannot be had, or does not answer.
std::vector<HostGraphicsAdapter> HostListAdapters();

/// The adapter that the driver delegates to, by its own rule: the first that is not its own. No value if there is none.
std::optional<size_t> HostDelegatedAdapter(std::span<const HostGraphicsAdapter> adapters);
