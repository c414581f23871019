// The driver's only access to configuration: one registry value a call.
#pragma once

#include <windows.h>

/// Reads one value into the caller's buffer. A missing key is created empty; the value's type is not checked.
/// @param size bytes of the buffer; how many were read is not told.
/// @return true when the value was read. Failures are traced; the buffer then keeps what it held.
bool UMDUtilRegistryValueGet(HKEY hRoot, const wchar_t* pPath, const wchar_t* pValueName, void* pData, DWORD size);

/// Writes one value, creating its key if it is missing.
/// @param type registry type; for REG_SZ the data is a wide string with its terminating null.
/// @param size bytes of the data.
/// @return true when the value was written. Failures are traced.
bool UMDUtilRegistryValueSet(
    HKEY hRoot, const wchar_t* pPath, const wchar_t* pValueName, DWORD type, const void* pData, DWORD size);
