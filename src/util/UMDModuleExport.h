// Looks up what another DLL exports.
#pragma once

#include <windows.h>

/// One export as a function pointer. Null, with the last error set, when it is missing or there is no module: a null
/// module would otherwise stand for the program that loaded the driver.
/// @param hModule borrowed: the pointer is good while the module is loaded.
template <typename Function>
Function UMDModuleExport(HMODULE hModule, const char* pName)
{
    if (!hModule)
    {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(hModule, pName)));
}
