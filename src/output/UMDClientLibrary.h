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
