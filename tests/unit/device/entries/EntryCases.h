// Every entry of the device function table: its slot, its name, and for the forwarding ones a call with its trace line.
#pragma once

#include "ddi/ddi.h"

#include <string>
#include <vector>

namespace tesslo::test
{

/// An entry that hands its call on.
struct ForwardedEntry
{
    UINT m_Slot;
    const char* m_pName;   ///< of the entry function
    const void* m_pEntry;  ///< the entry function
    UINT m_Level;          ///< of its trace line; 0 for no line
    /// Calls the slot with the device's handle; stores the line that it must trace.
    /// @param hVideo a video process device, or null; the entry that destroys one frees it.
    HRESULT (*m_pCall)(const D3DDDI_DEVICEFUNCS& funcs, HANDLE hDevice, HANDLE hVideo, std::string& line);
};

/// An entry that answers E_NOTIMPL.
struct RefusedEntry
{
    UINT m_Slot;
    const char* m_pName;
    const void* m_pEntry;
};

const std::vector<ForwardedEntry>& ForwardedEntries();
const std::vector<RefusedEntry>& RefusedEntries();

}  // namespace tesslo::test
