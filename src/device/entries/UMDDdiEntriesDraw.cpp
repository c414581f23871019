// Entries for draws.
#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiEntries.h"
#include "device/entries/UMDGuard.h"
#include "util/UMDUtilDebugTrace.h"

HRESULT APIENTRY UMDDdiDrawPrimitive(HANDLE hDevice, const D3DDDIARG_DRAWPRIMITIVE* pDraw, const UINT* pEdgeFlags)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI,
            L"=> UMDDdiDrawPrimitive pEdgeFlags:0x%x PrimitiveCount:%d PrimitiveType:%d VStart:%d\n",
            UMDLow32(pEdgeFlags), pDraw->PrimitiveCount, pDraw->PrimitiveType, pDraw->VStart);
        return ToDevice(hDevice).DrawPrimitive(pDraw);
    });
}

HRESULT APIENTRY UMDDdiDrawIndexedPrimitive(HANDLE hDevice, const D3DDDIARG_DRAWINDEXEDPRIMITIVE* pDraw)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI,
            L"=> UMDDdiDrawIndexedPrimitive PrimitiveType:%d BaseVertexIndex:%d MinIndex:%d NumVertices:%d StartIndex:%d PrimitiveCount:%d\n",
            pDraw->PrimitiveType, pDraw->BaseVertexIndex, pDraw->MinIndex, pDraw->NumVertices, pDraw->StartIndex,
            pDraw->PrimitiveCount);
        return ToDevice(hDevice).DrawIndexedPrimitive(pDraw);
    });
}

HRESULT APIENTRY UMDDdiDrawPrimitive2(HANDLE hDevice, const D3DDDIARG_DRAWPRIMITIVE2* pDraw)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiDrawPrimitive2 PrimitiveType:0x%x FirstVertexOffset:%d PrimitiveCount:%d\n",
            pDraw->PrimitiveType, pDraw->FirstVertexOffset, pDraw->PrimitiveCount);
        return ToDevice(hDevice).DrawPrimitive2(pDraw);
    });
}

HRESULT APIENTRY UMDDdiDrawIndexedPrimitive2(
    HANDLE hDevice, const D3DDDIARG_DRAWINDEXEDPRIMITIVE2* pDraw, UINT indexSize, const void* pIndices, const UINT*)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI,
            L"=> UMDDdiDrawIndexedPrimitive2 PrimitiveType:0x%x BaseVertexOffset:%d NumVertices:%d PrimitiveCount:%d pIndices:0x%x\n",
            pDraw->PrimitiveType, pDraw->BaseVertexOffset, pDraw->NumVertices, pDraw->PrimitiveCount,
            UMDLow32(pIndices));
        return ToDevice(hDevice).DrawIndexedPrimitive2(pDraw, indexSize, pIndices);
    });
}
