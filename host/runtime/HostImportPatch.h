// Replaces a function that a loaded module imports, for as long as the patch lives.
#pragma once

#include <windows.h>

#include <string>
#include <type_traits>

class HostImportPatch
{
public:
    /// @param hModule    whose import is replaced; null for the executable.
    /// @param dll        file name of the imported library, in any case.
    /// @param ppOriginal receives the replaced function before the first call of its replacement; may be null.
    /// Throws HostError when the module does not import that function by name.
    template <typename Function>
    HostImportPatch(HMODULE hModule, const std::string& dll, const std::string& function, Function* pReplacement,
        std::type_identity_t<Function>** ppOriginal = nullptr)
        : m_ppSlot(FindSlot(hModule, dll, function)), m_pOriginal(*m_ppSlot)
    {
        if (ppOriginal != nullptr)
            *ppOriginal = reinterpret_cast<Function*>(m_pOriginal);
        Store(reinterpret_cast<void*>(pReplacement));
    }
    ~HostImportPatch() { Store(m_pOriginal); }
    HostImportPatch(const HostImportPatch&) = delete;
    HostImportPatch& operator=(const HostImportPatch&) = delete;

private:
    static void** FindSlot(HMODULE hModule, const std::string& dll, const std::string& function);
    void Store(void* pFunction);

    void** m_ppSlot;
    void* m_pOriginal;
};
