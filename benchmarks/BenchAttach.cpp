#include "BenchDriver.h"

#include "BenchTimer.h"

#include <windows.h>

#include <initializer_list>

namespace
{
void ReadValue(const wchar_t* pPath, const wchar_t* pName)
{
    BYTE data[256] = {};
    DWORD size = sizeof(data);
    HKEY hKey = nullptr;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, pPath, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_READ, nullptr, &hKey, nullptr);
    RegQueryValueExW(hKey, pName, nullptr, nullptr, data, &size);
    RegCloseKey(hKey);
}

/// The values that the driver reads each time it is loaded.
void ReadValues()
{
    ReadValue(L"System\\CurrentControlSet\\Services\\TessloWddmKmode", L"DebugLevelUMD");
    ReadValue(L"Software\\Zembrilo\\Tesslo", L"DllNameInterface");
}

/// Loads images one behind the other, then frees them.
/// @param read what is done while they are loaded.
BenchWork Load(std::initializer_list<const wchar_t*> names, const std::function<void()>& read = [] {})
{
    return {[names = std::vector<const wchar_t*>(names), read] {
        std::vector<HMODULE> modules;
        for (const wchar_t* pName : names)
            modules.push_back(LoadLibraryW(pName));
        read();
        for (; !modules.empty(); modules.pop_back())
            FreeLibrary(modules.back());
    }};
}
}  // namespace

// The driver's own image is mapped first, then its client library's; all else that it imports is there. Beside it stand
// the same two images, the driver's without its DllMain.
void BenchAttach(BenchReport& report)
{
    const std::string name = "attach and detach";
    if (!report.Wants(name))
        return;
    // The platform's own DLLs stay loaded, as in any process that uses Direct3D: their start is not the driver's.
    for (const wchar_t* pName : {L"d3d9.dll", L"dxva2.dll", L"shell32.dll"})
        LoadLibraryW(pName);
    const std::initializer_list<const wchar_t*> images = {L"TessloBenchIdleDriver.dll", L"TessloClientDllSample.dll"};
    const std::vector<double> times =
        BenchCompare({Load({L"TessloWddmUmode.dll"}), Load(images), Load(images, ReadValues)}, 101);
    report.AddCost(name, times[0], "its two images", times[1], 1.10, 1.05);
    report.AddCostFigure(name, times[0], "and two values", times[2]);
}
