// Replaces a function that a loaded module imports, for as long as the patch lives.
#pragma once

#include <windows.h>

#include <string>

namespace tesslo::test
{

class ImportPatch
{
public:
    /// @param hModule whose import is replaced; null for the executable.
    /// @param dll     file name of the imported library, in any case.
    /// Throws std::runtime_error when the module does not import that function by name.
    ImportPatch(HMODULE hModule, const std::string& dll, const std::string& function, void* pReplacement);
    ~ImportPatch();
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;

    /// The replaced function, as the type that the caller knows.
    template <typename Function>
    Function Original() const
    {
        return reinterpret_cast<Function>(m_pOriginal);
    }

private:
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
