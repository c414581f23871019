// The client library: the DLL, named in the registry, that carries frames to the virtual monitor.
#pragma once

#include <windows.h>

/// Loads the library that the registry names, at process attach. Without a name the default one is written
/// to the registry and used. Failures are traced and leave the process without a client library.
void UMDClientLibraryLoad();

/// Frees the library at process detach.
void UMDClientLibraryFree();

/// The library's module, null while none is loaded. Borrowed: it lives from attach to detach.
HMODULE UMDClientLibraryModule();

/// Looks up one export. Null, with the last error set, when it is missing or there is no library: a null module would
/// otherwise stand for the program that loaded the driver.
template <typename Function>
Function UMDClientLibraryExport(HMODULE hClientDll, const char* pName)
{
    if (!hClientDll)
    {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(hClientDll, pName)));
}
