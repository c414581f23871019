// Replaces a function that a loaded module imports, for as long as the patch lives.
#pragma once

#include <windows.h>

#include <string>
#include <type_traits>

namespace tesslo::test
{

class ImportPatch
{
public:
    /// @param hModule    whose import is replaced; null for the executable.
    /// @param dll        file name of the imported library, in any case.
    /// @param ppOriginal receives the replaced function before the first call of its replacement; may be null.
    /// Throws std::runtime_error when the module does not import that function by name.
    template <typename Function>
    ImportPatch(HMODULE hModule, const std::string& dll, const std::string& function, Function* pReplacement,
        std::type_identity_t<Function>** ppOriginal = nullptr)
        : m_ppSlot(InternalFindSlot(hModule, dll, function)), m_pOriginal(*m_ppSlot)
    {
        if (ppOriginal)
            *ppOriginal = reinterpret_cast<Function*>(m_pOriginal);
        InternalStore(reinterpret_cast<void*>(pReplacement));
    }
    ~ImportPatch() { InternalStore(m_pOriginal); }
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;

private:
    static void** InternalFindSlot(HMODULE hModule, const std::string& dll, const std::string& function);
    void InternalStore(void* pFunction);

    void** m_ppSlot;
    void* m_pOriginal;
};

/// Makes the module's calls of one function answer a value, without calling it.
class FailingImport
{
public:
    /// @param value what every call answers, as a pointer-sized number: 0 for a null handle or FALSE.
    /// @param error the last error that the call sets.
    /// One at a time in a process.
    FailingImport(HMODULE hModule, const std::string& dll, const std::string& function, UINT_PTR value, DWORD error);

private:
    ImportPatch m_Patch;
};

}  // namespace tesslo::test
