#include "BenchDriver.h"

#include "BenchTimer.h"

#include <windows.h>

namespace
{
BenchWork Load(const wchar_t* pName)
{
    return {[=] {
        if (const HMODULE hModule = LoadLibraryW(pName))
            FreeLibrary(hModule);
    }};
}
}  // namespace

// The driver's image is mapped first, then its client library's. What mapping any image costs shows beside a library
// that does nothing.
void BenchAttach(BenchReport& report)
{
    const std::string name = "attach and detach";
    const std::string fairName = name + ", beside two loads";
    if (!report.WantsAny({name, fairName}))
        return;
    // The platform's own DLLs stay loaded, as in any process that uses Direct3D: their start is not the driver's.
    for (const wchar_t* pName : {L"d3d9.dll", L"dxva2.dll", L"shell32.dll"})
        LoadLibraryW(pName);
    const std::vector<double> times = BenchCompare(
        {Load(L"TessloWddmUmode.dll"), Load(L"TessloClientDllSample.dll"), Load(L"TessloTestClient.dll")}, 51);
    report.AddCost(name, times[0], "client library", times[1], 1.2);
    report.AddCostFigure(fairName, times[0], "it and an idle one", times[1] + times[2]);
}
