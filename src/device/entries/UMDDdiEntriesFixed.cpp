// Entries whose operations give a fixed answer.
#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiEntries.h"
#include "device/entries/UMDGuard.h"
#include "util/UMDUtilDebugTrace.h"

HRESULT APIENTRY UMDDdiUpdateWInfo(HANDLE hDevice, const D3DDDIARG_WINFO* pWInfo)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiUpdateWInfo\n");
        return ToDevice(hDevice).UpdateWInfo(pWInfo);
    });
}

HRESULT APIENTRY UMDDdiMultiplyTransform(HANDLE hDevice, const D3DDDIARG_MULTIPLYTRANSFORM* pTransform)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiMultiplyTransform\n");
        return ToDevice(hDevice).MultiplyTransform(pTransform);
    });
}

HRESULT APIENTRY UMDDdiSetZRange(HANDLE hDevice, const D3DDDIARG_ZRANGE* pZRange)
{
    return UMDGuard(__func__, [=] {
        // Whole numbers: the range's ends are 0 and 1 in all but rare cases.
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetZRange MinZ:%d MaxZ:%d\n", static_cast<int>(pZRange->MinZ),
            static_cast<int>(pZRange->MaxZ));
        return ToDevice(hDevice).SetZRange(pZRange);
    });
}

HRESULT APIENTRY UMDDdiSetMaterial(HANDLE hDevice, const D3DDDIARG_SETMATERIAL* pMaterial)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetMaterial\n");
        return ToDevice(hDevice).SetMaterial(pMaterial);
    });
}

HRESULT APIENTRY UMDDdiSetLight(HANDLE hDevice, const D3DDDIARG_SETLIGHT* pSetLight, const D3DDDI_LIGHT* pLight)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetLight\n");
        return ToDevice(hDevice).SetLight(pSetLight, pLight);
    });
}

HRESULT APIENTRY UMDDdiCreateLight(HANDLE hDevice, const D3DDDIARG_CREATELIGHT* pCreateLight)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiCreateLight\n");
        return ToDevice(hDevice).CreateLight(pCreateLight);
    });
}

HRESULT APIENTRY UMDDdiDestroyLight(HANDLE hDevice, const D3DDDIARG_DESTROYLIGHT* pDestroyLight)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiDestroyLight\n");
        return ToDevice(hDevice).DestroyLight(pDestroyLight);
    });
}

HRESULT APIENTRY UMDDdiGetInfo(HANDLE hDevice, UINT infoId, void* pInfo, UINT infoSize)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiGetInfo\n");
        return ToDevice(hDevice).GetInfo(infoId, pInfo, infoSize);
    });
}

HRESULT APIENTRY UMDDdiSetConvolutionKernelMono(HANDLE hDevice, const D3DDDIARG_SETCONVOLUTIONKERNELMONO* pKernel)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetConvolutionKernelMono\n");
        return ToDevice(hDevice).SetConvolutionKernelMono(pKernel);
    });
}

HRESULT APIENTRY UMDDdiSetStreamSourceFreq(HANDLE hDevice, const D3DDDIARG_SETSTREAMSOURCEFREQ* pFreq)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetStreamSourceFreq\n");
        return ToDevice(hDevice).SetStreamSourceFreq(pFreq);
    });
}

HRESULT APIENTRY UMDDdiComposeRects(HANDLE hDevice, const D3DDDIARG_COMPOSERECTS* pComposeRects)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiComposeRects\n");
        return ToDevice(hDevice).ComposeRects(pComposeRects);
    });
}

HRESULT APIENTRY UMDDdiDepthFill(HANDLE hDevice, const D3DDDIARG_DEPTHFILL* pDepthFill)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiDepthFill\n");
        return ToDevice(hDevice).DepthFill(pDepthFill);
    });
}

HRESULT APIENTRY UMDDdiGenerateMipSubLevels(HANDLE hDevice, const D3DDDIARG_GENERATEMIPSUBLEVELS* pGenerate)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiGenerateMipSubLevels\n");
        return ToDevice(hDevice).GenerateMipSubLevels(pGenerate);
    });
}

HRESULT APIENTRY UMDDdiQueryResourceResidency(HANDLE hDevice, const D3DDDIARG_QUERYRESOURCERESIDENCY* pQuery)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiQueryResourceResidency %d\n", pQuery->NumResources);
        return ToDevice(hDevice).QueryResourceResidency(pQuery);
    });
}
