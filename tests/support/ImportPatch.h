// Replaces a function that a loaded module imports, for as long as the patch lives.
#pragma once

#include "host/runtime/HostImportPatch.h"

namespace tesslo::test
{

using ImportPatch = HostImportPatch;

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
