#include "util/UMDUtilRegistry.h"

#include "util/UMDUtilDebugTrace.h"

namespace
{
/// Opens a key, made where it is missing. @param pFailed takes path and error. @return null when it failed, traced.
HKEY OpenKey(HKEY hRoot, const wchar_t* pPath, REGSAM access, const wchar_t* pFailed)
{
    HKEY hKey = nullptr;
    const LSTATUS error =
        RegCreateKeyExW(hRoot, pPath, 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr, &hKey, nullptr);
    if (error == ERROR_SUCCESS)
        return hKey;
    UMD_TRACE(UMDTRACE_ERROR, pFailed, pPath, error);
    return nullptr;
}
}  // namespace

bool UMDUtilRegistryValueGet(HKEY hRoot, const wchar_t* pPath, const wchar_t* pValueName, void* pData, DWORD size)
{
    HKEY hKey = OpenKey(hRoot, pPath, KEY_READ, L"UMDUtilRegistryValueGet  RegCreateKeyExW failed! %s %d\n");
    if (!hKey)
        return false;
    DWORD type = REG_NONE;
    const LSTATUS error = RegQueryValueExW(hKey, pValueName, nullptr, &type, static_cast<BYTE*>(pData), &size);
    RegCloseKey(hKey);
    if (error == ERROR_FILE_NOT_FOUND)
        UMD_TRACE(
            UMDTRACE_ERROR, L"UMDUtilRegistryValueGet RegQueryValueExW failed! %s ERROR_FILE_NOT_FOUND\n", pValueName);
    else if (error != ERROR_SUCCESS)
        UMD_TRACE(UMDTRACE_ERROR, L"UMDUtilRegistryValueGet RegQueryValueExW failed! %s %d\n", pValueName, error);
    else if (type == REG_SZ)
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDUtilRegistryValueGet RegQueryValueExW %s %s Data: %s\n", pPath, pValueName,
            static_cast<const wchar_t*>(pData));
    else
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDUtilRegistryValueGet RegQueryValueExW %s %s\n", pPath, pValueName);
    return error == ERROR_SUCCESS;
}

bool UMDUtilRegistryValueSet(
    HKEY hRoot, const wchar_t* pPath, const wchar_t* pValueName, DWORD type, const void* pData, DWORD size)
{
    if (type == REG_SZ)
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDUtilRegistryValueSet Path: %s Value: %s Data: %s\n", pPath, pValueName,
            static_cast<const wchar_t*>(pData));
    else
        UMD_TRACE(UMDTRACE_DETAIL, L"UMDUtilRegistryValueSet Path: %s Value: %s\n", pPath, pValueName);

    HKEY hKey = OpenKey(hRoot, pPath, KEY_WRITE, L"UMDUtilRegistryValueSet RegCreateKeyExW failed! %s %d\n");
    if (!hKey)
        return false;
    const LSTATUS error = RegSetValueExW(hKey, pValueName, 0, type, static_cast<const BYTE*>(pData), size);
    if (error != ERROR_SUCCESS)
        UMD_TRACE(UMDTRACE_ERROR, L"UMDUtilRegistryValueSet RegSetValueExW failed! %s %d\n", pValueName, error);
    RegCloseKey(hKey);
    return error == ERROR_SUCCESS;
}
