#include "output/UMDClientLibrary.h"

#include "tesslo/client.h"
#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilRegistry.h"

namespace
{
constexpr wchar_t kKeyPath[] = L"Software\\Zembrilo\\Tesslo";
constexpr wchar_t kValueName[] = L"DllNameInterface";
constexpr DWORD kNameLength = 128;  ///< characters of the name, terminating null included

HMODULE m_hClientDll = nullptr;
}  // namespace

void UMDClientLibraryLoad()
{
    // One character more than the registry may fill: a value stored without its terminating null still ends.
    wchar_t registered[kNameLength + 1] = {};
    const wchar_t* pName = registered;
    if (!UMDUtilRegistryValueGet(HKEY_LOCAL_MACHINE, kKeyPath, kValueName, registered, kNameLength * sizeof(wchar_t)))
    {
        pName = TESSLO_CLIENT_DEFAULT_DLL;
        if (!UMDUtilRegistryValueSet(
                HKEY_LOCAL_MACHINE, kKeyPath, kValueName, REG_SZ, pName, sizeof(TESSLO_CLIENT_DEFAULT_DLL)))
            UMD_TRACE(UMDTRACE_ERROR, L"UMDUtilDebugTraceDllMain UMDUtilRegistryValueSet failed! %d\n", GetLastError());
    }
    m_hClientDll = LoadLibraryW(pName);
    if (!m_hClientDll)
        UMD_TRACE(UMDTRACE_ERROR, L"UMDUtilDebugTraceDllMain LoadLibrary failed! %d\n", GetLastError());
}

void UMDClientLibraryFree()
{
    if (m_hClientDll)
    {
        FreeLibrary(m_hClientDll);
        m_hClientDll = nullptr;
    }
}

HMODULE UMDClientLibraryModule()
{
    return m_hClientDll;
}
