#include "interposer/dll/Platform.h"

#include <string>

namespace
{

HMODULE g_hPlatform;

}  // namespace

bool PlatformLoad()
{
    wchar_t folder[MAX_PATH];
    GetSystemDirectoryW(folder, MAX_PATH);
    g_hPlatform = LoadLibraryW((std::wstring(folder) + L"\\d3d9.dll").c_str());
    return g_hPlatform != nullptr;
}

void* PlatformExport(const char* pName)
{
    return reinterpret_cast<void*>(GetProcAddress(g_hPlatform, pName));
}
