// The entries that a program calls for each draw and each frame, and what each may cost while nothing is traced.
#pragma once

#include "ddi/ddi.h"

#include <map>
#include <string>
#include <vector>

/// What the entries name: made before, on a started device.
struct HotObjects
{
    const D3DDDI_DEVICEFUNCS& m_Functions;
    HANDLE m_hDevice;
    HANDLE m_hPrimary;
    HANDLE m_hTexture;
    HANDLE m_hVertexBuffer;
    HANDLE m_hIndexBuffer;
    HANDLE m_hPixelShader;
    HANDLE m_hVertexShader;
    HANDLE m_hDeclaration;
};

struct HotEntry
{
    const char* m_pName;                              ///< of the entry, and of the case where it has several
    UINT m_MostInstructions;                          ///< of the driver itself, optimised; 0: not counted
    std::map<std::string, UINT64> m_Calls;            ///< of the platform's functions; none allocates or traces
    HRESULT (*m_pCall)(const HotObjects& objects);    ///< answers S_OK
    void (*m_pPrepare)(const HotObjects&) = nullptr;  ///< what was set before; not counted
};

const std::vector<HotEntry>& HotEntries();
