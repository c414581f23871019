// Entries that bind vertex and index data.
#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiEntries.h"
#include "device/entries/UMDGuard.h"
#include "util/UMDUtilDebugTrace.h"

HRESULT APIENTRY UMDDdiSetStreamSourceUM(
    HANDLE hDevice, const D3DDDIARG_SETSTREAMSOURCEUM* pSetUMStream, const void* pData)
{
    return UMDGuard(__func__, [=] {
        const D3DDDIARG_SETSTREAMSOURCEUM shown = pSetUMStream ? *pSetUMStream : D3DDDIARG_SETSTREAMSOURCEUM{};
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetStreamSourceUM Stream:%d Stride:%d pData:0x%x\n", shown.Stream,
            shown.Stride, UMDLow32(pData));
        return ToDevice(hDevice).SetStreamSourceUM(pSetUMStream, pData);
    });
}

HRESULT APIENTRY UMDDdiSetIndices(HANDLE hDevice, const D3DDDIARG_SETINDICES* pSetIndices)
{
    return UMDGuard(__func__, [=] {
        const D3DDDIARG_SETINDICES shown = pSetIndices ? *pSetIndices : D3DDDIARG_SETINDICES{};
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetIndices pSetIndices:0x%x Stride:%d hIndexBuffer:0x%x\n",
            UMDLow32(pSetIndices), shown.Stride, UMDLow32(shown.hIndexBuffer));
        return ToDevice(hDevice).SetIndices(pSetIndices);
    });
}

HRESULT APIENTRY UMDDdiSetStreamSource(HANDLE hDevice, const D3DDDIARG_SETSTREAMSOURCE* pSetStreamSource)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI | UMDTRACE_RESOURCE,
            L"=> UMDDdiSetStreamSource hVertexBuffer:0x%x Stream:%d Offset:%d Stride:%d \n",
            UMDLow32(pSetStreamSource->hVertexBuffer), pSetStreamSource->Stream, pSetStreamSource->Offset,
            pSetStreamSource->Stride);
        return ToDevice(hDevice).SetStreamSource(pSetStreamSource);
    });
}
