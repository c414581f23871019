#include "DllImport.h"

#include <cstring>

namespace
{
/// The slot of the module's import table that holds the function; null when there is none.
void** FindSlot(HMODULE hModule, const char* pName)
{
    auto* pBase = reinterpret_cast<BYTE*>(hModule);
    auto* pHeaders = reinterpret_cast<IMAGE_NT_HEADERS*>(pBase + reinterpret_cast<IMAGE_DOS_HEADER*>(pBase)->e_lfanew);
    const IMAGE_DATA_DIRECTORY& directory = pHeaders->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    auto* pImport = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(pBase + directory.VirtualAddress);
    for (; pImport->Name; ++pImport)
    {
        auto* pNames = reinterpret_cast<IMAGE_THUNK_DATA*>(pBase + pImport->OriginalFirstThunk);
        auto* pSlots = reinterpret_cast<void**>(pBase + pImport->FirstThunk);
        for (; pNames->u1.AddressOfData; ++pNames, ++pSlots)
        {
            if (IMAGE_SNAP_BY_ORDINAL(pNames->u1.Ordinal))
                continue;
            auto* pByName = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(pBase + pNames->u1.AddressOfData);
            if (!std::strcmp(reinterpret_cast<const char*>(pByName->Name), pName))
                return pSlots;
        }
    }
    return nullptr;
}
}  // namespace

DllImport::DllImport(HMODULE hModule, const char* pName, void* pReplacement, int)
    : m_pSlot(FindSlot(hModule, pName)), m_pOriginal(m_pSlot ? *m_pSlot : nullptr)
{
    Write(pReplacement);
}

DllImport::~DllImport()
{
    Write(m_pOriginal);
}

void DllImport::Write(void* pFunction)
{
    DWORD protection;
    if (!m_pSlot || !VirtualProtect(m_pSlot, sizeof(*m_pSlot), PAGE_READWRITE, &protection))
        return;
    *m_pSlot = pFunction;
    VirtualProtect(m_pSlot, sizeof(*m_pSlot), protection, &protection);
}
