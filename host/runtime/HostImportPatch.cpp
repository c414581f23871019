#include "host/runtime/HostImportPatch.h"

#include "host/runtime/HostError.h"

namespace
{

/// The slot of a module's import table that holds the function's address; null when it is not imported by name.
void** Find(HMODULE hModule, const std::string& dll, const std::string& function)
{
    BYTE* pBase = reinterpret_cast<BYTE*>(hModule);
    const auto* pDos = reinterpret_cast<const IMAGE_DOS_HEADER*>(pBase);
    const auto* pHeaders = reinterpret_cast<const IMAGE_NT_HEADERS*>(pBase + pDos->e_lfanew);
    const DWORD offset = pHeaders->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    auto* pLibrary = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(pBase + offset);
    for (; pLibrary->Name != 0; pLibrary++)
    {
        if (_stricmp(reinterpret_cast<const char*>(pBase + pLibrary->Name), dll.c_str()) != 0)
            continue;
        const auto* pName = reinterpret_cast<const IMAGE_THUNK_DATA*>(pBase + pLibrary->OriginalFirstThunk);
        auto* pSlot = reinterpret_cast<void**>(pBase + pLibrary->FirstThunk);
        for (; pName->u1.AddressOfData != 0; pName++, pSlot++)
        {
            const auto* pImport = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(pBase + pName->u1.AddressOfData);
            if (!IMAGE_SNAP_BY_ORDINAL(pName->u1.Ordinal) && function == reinterpret_cast<const char*>(pImport->Name))
                return pSlot;
        }
    }
    return nullptr;
}

}  // namespace

void** HostImportPatch::FindSlot(HMODULE hModule, const std::string& dll, const std::string& function)
{
    void** ppSlot = Find(hModule != nullptr ? hModule : GetModuleHandleW(nullptr), dll, function);
    if (ppSlot == nullptr)
        throw HostError("the module does not import " + function + " of " + dll);
    return ppSlot;
}

void HostImportPatch::Store(void* pFunction)
{
    DWORD protection = 0;
    VirtualProtect(m_ppSlot, sizeof(*m_ppSlot), PAGE_READWRITE, &protection);
    InterlockedExchangePointer(m_ppSlot, pFunction);
    VirtualProtect(m_ppSlot, sizeof(*m_ppSlot), protection, &protection);
}
