// Entries for blits, fills and clears.
#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiEntries.h"
#include "device/entries/UMDGuard.h"
#include "resources/UMDRscBase.h"
#include "util/UMDUtilDebugTrace.h"
#include "util/UMDUtilDebugTracePrint.h"

#include <bit>

HRESULT APIENTRY UMDDdiBlt(HANDLE hDevice, const D3DDDIARG_BLT* pBlt)
{
    return UMDGuard(__func__, [=] {
        const RECT& dst = pBlt->DstRect;
        const RECT& src = pBlt->SrcRect;
        UMD_TRACE(UMDTRACE_DDI,
            L"=> UMDDdiBlt Color:%d Flags:%d DST l:%d t:%d r:%d b:%d Rsc:0x%x [Type:%d Pool:%d] SRC l:%d t:%d r:%d b:%d Rsc:0x%x [Type:%d Pool:%d]\n",
            pBlt->ColorKey, pBlt->Flags.Value, dst.left, dst.top, dst.right, dst.bottom, UMDLow32(pBlt->hDstResource),
            ResourceTypeOrZero(pBlt->hDstResource), ResourcePoolOrZero(pBlt->hDstResource), src.left, src.top,
            src.right, src.bottom, UMDLow32(pBlt->hSrcResource), ResourceTypeOrZero(pBlt->hSrcResource),
            ResourcePoolOrZero(pBlt->hSrcResource));
        UMDUtilDebugTracePrintResourceType(ResourceTypeOrNone(pBlt->hDstResource));
        UMDUtilDebugTracePrintResourceType(ResourceTypeOrNone(pBlt->hSrcResource));
        return ToDevice(hDevice).Blt(pBlt);
    });
}

HRESULT APIENTRY UMDDdiTexBlt(HANDLE hDevice, const D3DDDIARG_TEXBLT* pTexBlt)
{
    return UMDGuard(__func__, [=] {
        const RECT& src = pTexBlt->SrcRect;
        UMD_TRACE(UMDTRACE_DDI,
            L"=> UMDDdiTexBlt hSrcResource:0x%x [Type:%d Pool:%d] hDstResource:0x%x [Type:%d Pool:%d] SrcRect l:%d t:%d r:%d b:%d DstPoint x:%d y:%d\n",
            UMDLow32(pTexBlt->hSrcResource), ResourceTypeOrZero(pTexBlt->hSrcResource),
            ResourcePoolOrZero(pTexBlt->hSrcResource), UMDLow32(pTexBlt->hDstResource),
            ResourceTypeOrZero(pTexBlt->hDstResource), ResourcePoolOrZero(pTexBlt->hDstResource), src.left, src.top,
            src.right, src.bottom, pTexBlt->DstPoint.x, pTexBlt->DstPoint.y);
        UMDUtilDebugTracePrintResourceType(ResourceTypeOrNone(pTexBlt->hSrcResource));
        UMDUtilDebugTracePrintResourceType(ResourceTypeOrNone(pTexBlt->hDstResource));
        return ToDevice(hDevice).TexBlt(pTexBlt);
    });
}

HRESULT APIENTRY UMDDdiBufBlt(HANDLE hDevice, const D3DDDIARG_BUFFERBLT* pBufBlt)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI,
            L"=> UMDDdiBufBlt hDstResource:0x%x hSrcResource:0x%x Offset:%d SrcRange.Offset:%d SrcRange.Size:%d\n",
            UMDLow32(pBufBlt->hDstResource), UMDLow32(pBufBlt->hSrcResource), pBufBlt->Offset, pBufBlt->SrcRange.Offset,
            pBufBlt->SrcRange.Size);
        UMDUtilDebugTracePrintResourceType(ResourceTypeOrNone(pBufBlt->hDstResource));
        UMDUtilDebugTracePrintResourceType(ResourceTypeOrNone(pBufBlt->hSrcResource));
        return ToDevice(hDevice).BufBlt(pBufBlt);
    });
}

HRESULT APIENTRY UMDDdiClear(HANDLE hDevice, const D3DDDIARG_CLEAR* pClear, UINT rectCount, const RECT* pRects)
{
    return UMDGuard(__func__, [=] {
        // The depth shows as the word that holds it.
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiClear ClrCount: %d Flags:%x FillColor:%x FillDepth:%x FillStencil:%x \n",
            rectCount, pClear->Flags, pClear->FillColor, std::bit_cast<UINT>(pClear->FillDepth), pClear->FillStencil);
        if (g_DebugLevelUMD & UMDTRACE_DDI)
        {
            for (UINT i = 0; i < rectCount; ++i)
                UMD_TRACE(UMDTRACE_DDI, L"Rectangle index:%d left:%d top:%d right:%d bottom:%d\n", i, pRects[i].left,
                    pRects[i].top, pRects[i].right, pRects[i].bottom);
        }
        return ToDevice(hDevice).Clear(pClear, rectCount, pRects);
    });
}

HRESULT APIENTRY UMDDdiColorFill(HANDLE hDevice, const D3DDDIARG_COLORFILL* pColorFill)
{
    return UMDGuard(__func__, [=] {
        const RECT& dst = pColorFill->DstRect;
        UMD_TRACE(UMDTRACE_DDI,
            L"=> UMDDdiColorFill hResource:0x%x SubResourceIndex:0x%x Color:0x%x l:%d r:%d  t:%d b:%d\n",
            UMDLow32(pColorFill->hResource), pColorFill->SubResourceIndex, pColorFill->Color, dst.left, dst.right,
            dst.top, dst.bottom);
        return ToDevice(hDevice).ColorFill(pColorFill);
    });
}
