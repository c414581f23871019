#include "BenchDriver.h"

#include "BenchTimer.h"

#include <windows.h>

#include <initializer_list>

namespace
{
/// Loads images one behind the other, then frees them.
BenchWork Load(std::initializer_list<const wchar_t*> names)
{
    return {[names = std::vector<const wchar_t*>(names)] {
        std::vector<HMODULE> modules;
        for (const wchar_t* pName : names)
            modules.push_back(LoadLibraryW(pName));
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
    const std::vector<double> times = BenchCompare(
        {Load({L"TessloWddmUmode.dll"}), Load({L"TessloBenchIdleDriver.dll", L"TessloClientDllSample.dll"})}, 101);
    report.AddCost(name, times[0], "its two images", times[1], 1.10, 1.05);
}
