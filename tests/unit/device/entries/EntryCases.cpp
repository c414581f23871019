// One row an entry, in slot order.
#include "EntryCases.h"

#include "TraceText.h"

#include "device/entries/UMDDdiEntries.h"
#include "util/UMDUtilDebugTrace.h"

namespace tesslo::test
{

namespace
{

constexpr UINT code[]{0xFFFE0200, 0x0000FFFF};  ///< the shortest shader

/// A handle that no entry looks behind before it has traced it.
HANDLE Handle(UINT_PTR value)
{
    return reinterpret_cast<HANDLE>(value);
}

}  // namespace

#define ENTRY(name) #name, reinterpret_cast<const void*>(name)
#define CALL \
    [](const D3DDDI_DEVICEFUNCS& funcs, HANDLE hDevice, [[maybe_unused]] HANDLE hVideo, std::string& line) -> HRESULT

// clang-format off: an entry is a row
const std::vector<ForwardedEntry>& ForwardedEntries()
{
    static const std::vector<ForwardedEntry> entries{
        {0, ENTRY(UMDDdiSetRenderState), 0, CALL {
            const D3DDDIARG_RENDERSTATE arg{D3DDDIRS_ZENABLE, 1};
            line.clear();
            return funcs.pfnSetRenderState(hDevice, &arg);
        }},
        {1, ENTRY(UMDDdiUpdateWInfo), UMDTRACE_DDI, CALL {
            const D3DDDIARG_WINFO arg{};
            line = "=> UMDDdiUpdateWInfo\n";
            return funcs.pfnUpdateWInfo(hDevice, &arg);
        }},
        {2, ENTRY(UMDDdiValidateDevice), UMDTRACE_DDI, CALL {
            D3DDDIARG_VALIDATETEXTURESTAGESTATE arg{3};
            line = Text("=> UMDDdiValidateDevice NumPasses:%d\n", 3);
            return funcs.pfnValidateDevice(hDevice, &arg);
        }},
        {3, ENTRY(UMDDdiSetTextureStageState), 0, CALL {
            const D3DDDIARG_TEXTURESTAGESTATE arg{1, D3DDDITSS_COLOROP, 2};
            line.clear();
            return funcs.pfnSetTextureStageState(hDevice, &arg);
        }},
        {4, ENTRY(UMDDdiSetTexture), UMDTRACE_DDI, CALL {
            line = Text("=> UMDDdiSetTexture Stage:%d hTexture:0x%x [Type:%d Pool:%d]\n", 5, 0, 0, 0);
            return funcs.pfnSetTexture(hDevice, 5, nullptr);
        }},
        {5, ENTRY(UMDDdiSetPixelShader), UMDTRACE_DDI, CALL {
            line = Text("=> UMDDdiSetPixelShader hPixelShader:0x%x\n", 0x51);
            return funcs.pfnSetPixelShader(hDevice, Handle(0x51));
        }},
        {6, ENTRY(UMDDdiSetPixelShaderConst), UMDTRACE_DDI, CALL {
            const D3DDDIARG_SETPIXELSHADERCONST arg{7, 1};
            const FLOAT data[4]{};
            line = Text("=> UMDDdiSetPixelShaderConst C:%d R:%d\n", 1, 7);
            return funcs.pfnSetPixelShaderConst(hDevice, &arg, data);
        }},
        {7, ENTRY(UMDDdiSetStreamSourceUM), UMDTRACE_DDI, CALL {
            const D3DDDIARG_SETSTREAMSOURCEUM arg{0, 20};
            static const BYTE data[20]{};
            line = Text("=> UMDDdiSetStreamSourceUM Stream:%d Stride:%d pData:0x%x\n", 0, 20, UMDLow32(data));
            return funcs.pfnSetStreamSourceUm(hDevice, &arg, data);
        }},
        {8, ENTRY(UMDDdiSetIndices), UMDTRACE_DDI, CALL {
            const D3DDDIARG_SETINDICES arg{nullptr, 2};
            line = Text("=> UMDDdiSetIndices pSetIndices:0x%x Stride:%d hIndexBuffer:0x%x\n", UMDLow32(&arg), 2, 0);
            return funcs.pfnSetIndices(hDevice, &arg);
        }},
        {10, ENTRY(UMDDdiDrawPrimitive), UMDTRACE_DDI, CALL {
            const D3DDDIARG_DRAWPRIMITIVE arg{D3DPT_TRIANGLELIST, 8, 9};
            line = Text(
                "=> UMDDdiDrawPrimitive pEdgeFlags:0x%x PrimitiveCount:%d PrimitiveType:%d VStart:%d\n",
                0, 9, 4, 8);
            return funcs.pfnDrawPrimitive(hDevice, &arg, nullptr);
        }},
        {11, ENTRY(UMDDdiDrawIndexedPrimitive), UMDTRACE_DDI, CALL {
            const D3DDDIARG_DRAWINDEXEDPRIMITIVE arg{D3DPT_TRIANGLELIST, -1, 2, 3, 5, 6};
            line = Text(
                "=> UMDDdiDrawIndexedPrimitive PrimitiveType:%d BaseVertexIndex:%d MinIndex:%d NumVertices:%d StartIndex:%d PrimitiveCount:%d\n",
                4, -1, 2, 3, 5, 6);
            return funcs.pfnDrawIndexedPrimitive(hDevice, &arg);
        }},
        {14, ENTRY(UMDDdiDrawPrimitive2), UMDTRACE_DDI, CALL {
            const D3DDDIARG_DRAWPRIMITIVE2 arg{D3DPT_TRIANGLESTRIP, 16, 3};
            line = Text(
                "=> UMDDdiDrawPrimitive2 PrimitiveType:0x%x FirstVertexOffset:%d PrimitiveCount:%d\n",
                5, 16, 3);
            return funcs.pfnDrawPrimitive2(hDevice, &arg);
        }},
        {15, ENTRY(UMDDdiDrawIndexedPrimitive2), UMDTRACE_DDI, CALL {
            const D3DDDIARG_DRAWINDEXEDPRIMITIVE2 arg{D3DPT_TRIANGLELIST, -32, 0, 3, 0, 1};
            static const USHORT indices[3]{0, 1, 2};
            line = Text(
                "=> UMDDdiDrawIndexedPrimitive2 PrimitiveType:0x%x BaseVertexOffset:%d NumVertices:%d PrimitiveCount:%d pIndices:0x%x\n",
                4, -32, 3, 1, UMDLow32(indices));
            return funcs.pfnDrawIndexedPrimitive2(hDevice, &arg, 2, indices, nullptr);
        }},
        {17, ENTRY(UMDDdiBufBlt), UMDTRACE_DDI, CALL {
            const D3DDDIARG_BUFFERBLT arg{nullptr, nullptr, 1, {2, 3}};
            line = Text(
                "=> UMDDdiBufBlt hDstResource:0x%x hSrcResource:0x%x Offset:%d SrcRange.Offset:%d SrcRange.Size:%d\n",
                0, 0, 1, 2, 3);
            return funcs.pfnBufBlt(hDevice, &arg);
        }},
        {18, ENTRY(UMDDdiTexBlt), UMDTRACE_DDI, CALL {
            const D3DDDIARG_TEXBLT arg{nullptr, nullptr, 0, {1, 2}, {3, 4, 5, 6}};
            line = Text(
                "=> UMDDdiTexBlt hSrcResource:0x%x [Type:%d Pool:%d] hDstResource:0x%x [Type:%d Pool:%d] SrcRect l:%d t:%d r:%d b:%d DstPoint x:%d y:%d\n",
                0, 0, 0, 0, 0, 0, 3, 4, 5, 6, 1, 2);
            return funcs.pfnTexBlt(hDevice, &arg);
        }},
        {21, ENTRY(UMDDdiClear), UMDTRACE_DDI, CALL {
            const D3DDDIARG_CLEAR arg{1, 0xFF102030, 1.0F, 4};
            const RECT rect{1, 2, 3, 4};
            line = Text(
                "=> UMDDdiClear ClrCount: %d Flags:%x FillColor:%x FillDepth:%x FillStencil:%x \n",
                1, 1, 0xFF102030, 0x3F800000, 4);
            return funcs.pfnClear(hDevice, &arg, 1, &rect);
        }},
        {24, ENTRY(UMDDdiSetVertexShaderConst), UMDTRACE_DDI, CALL {
            const D3DDDIARG_SETVERTEXSHADERCONST arg{7, 1};
            const FLOAT data[4]{};
            line = Text("=> UMDDdiSetVertexShaderConst pSetShaderConst:0x%x Count:%d Register:%d\n", UMDLow32(&arg), 1, 7);
            return funcs.pfnSetVertexShaderConst(hDevice, &arg, data);
        }},
        {25, ENTRY(UMDDdiMultiplyTransform), UMDTRACE_DDI, CALL {
            const D3DDDIARG_MULTIPLYTRANSFORM arg{};
            line = "=> UMDDdiMultiplyTransform\n";
            return funcs.pfnMultiplyTransform(hDevice, &arg);
        }},
        {26, ENTRY(UMDDdiSetTransform), UMDTRACE_DDI, CALL {
            const D3DDDIARG_SETTRANSFORM arg{};
            line = "=> UMDDdiSetTransform\n";
            return funcs.pfnSetTransform(hDevice, &arg);
        }},
        {27, ENTRY(UMDDdiSetViewport), UMDTRACE_DDI, CALL {
            const D3DDDIARG_VIEWPORTINFO arg{1, 2, 3, 4};
            line = Text("=> UMDDdiSetViewport Width:%d Height:%d X:%d Y:%d\n", 3, 4, 1, 2);
            return funcs.pfnSetViewport(hDevice, &arg);
        }},
        {28, ENTRY(UMDDdiSetZRange), UMDTRACE_DDI, CALL {
            const D3DDDIARG_ZRANGE arg{0, 1};
            line = Text("=> UMDDdiSetZRange MinZ:%d MaxZ:%d\n", 0, 1);
            return funcs.pfnSetZRange(hDevice, &arg);
        }},
        {29, ENTRY(UMDDdiSetMaterial), UMDTRACE_DDI, CALL {
            const D3DDDIARG_SETMATERIAL arg{};
            line = "=> UMDDdiSetMaterial\n";
            return funcs.pfnSetMaterial(hDevice, &arg);
        }},
        {30, ENTRY(UMDDdiSetLight), UMDTRACE_DDI, CALL {
            const D3DDDIARG_SETLIGHT arg{};
            const D3DDDI_LIGHT light{};
            line = "=> UMDDdiSetLight\n";
            return funcs.pfnSetLight(hDevice, &arg, &light);
        }},
        {31, ENTRY(UMDDdiCreateLight), UMDTRACE_DDI, CALL {
            const D3DDDIARG_CREATELIGHT arg{};
            line = "=> UMDDdiCreateLight\n";
            return funcs.pfnCreateLight(hDevice, &arg);
        }},
        {32, ENTRY(UMDDdiDestroyLight), UMDTRACE_DDI, CALL {
            const D3DDDIARG_DESTROYLIGHT arg{};
            line = "=> UMDDdiDestroyLight\n";
            return funcs.pfnDestroyLight(hDevice, &arg);
        }},
        {33, ENTRY(UMDDdiSetClipPlane), UMDTRACE_DDI, CALL {
            const D3DDDIARG_SETCLIPPLANE arg{2, {1, 2, 3, 4}};
            line = Text("=> UMDDdiSetClipPlane pSetClipPlane:0x%x Index:%d Plane:%d\n", UMDLow32(&arg), 2, UMDLow32(arg.Plane));
            return funcs.pfnSetClipPlane(hDevice, &arg);
        }},
        {34, ENTRY(UMDDdiGetInfo), UMDTRACE_DDI, CALL {
            UINT info = 0;
            line = "=> UMDDdiGetInfo\n";
            return funcs.pfnGetInfo(hDevice, 1, &info, sizeof info);
        }},
        {35, ENTRY(UMDDdiLock), UMDTRACE_DDI | UMDTRACE_RESOURCE, CALL {
            D3DDDIARG_LOCK arg{};
            line = Text("=> UMDDdiLock hResource:0x%x\n", 0);
            return funcs.pfnLock(hDevice, &arg);
        }},
        {36, ENTRY(UMDDdiUnlock), UMDTRACE_DDI | UMDTRACE_RESOURCE, CALL {
            const D3DDDIARG_UNLOCK arg{};
            line = Text("=> UMDDdiUnlock hResource:0x%x\n", 0);
            return funcs.pfnUnlock(hDevice, &arg);
        }},
        {37, ENTRY(UMDDdiCreateResource), UMDTRACE_DDI | UMDTRACE_RESOURCE, CALL {
            D3DDDIARG_CREATERESOURCE arg{};
            line = "=> UMDDdiCreateResource\n";
            return funcs.pfnCreateResource(hDevice, &arg);
        }},
        {38, ENTRY(UMDDdiDestroyResource), UMDTRACE_DDI | UMDTRACE_RESOURCE, CALL {
            line = Text("=> UMDDdiDestroyResource hResource:0x%x\n", 0);
            return funcs.pfnDestroyResource(hDevice, nullptr);
        }},
        {39, ENTRY(UMDDdiSetDisplayMode), UMDTRACE_DDI | UMDTRACE_RESOURCE, CALL {
            const D3DDDIARG_SETDISPLAYMODE arg{nullptr, 3};
            line = Text("=> UMDDdiSetDisplayMode hResource:0x%x SubResourceIndex:%d\n", 0, 3);
            return funcs.pfnSetDisplayMode(hDevice, &arg);
        }},
        {40, ENTRY(UMDDdiPresent), UMDTRACE_DDI, CALL {
            D3DDDIARG_PRESENT arg{};
            arg.SrcSubResourceIndex = 1;
            arg.DstSubResourceIndex = 2;
            arg.FlipInterval = static_cast<D3DDDI_FLIPINTERVAL_TYPE>(3);
            line = Text(
                "=> UMDDdiPresent hSrcResource:0x%x SrcSubResourceIndex:%d hDstResource:0x%x DstSubResourceIndex:%d Flags:0x%x FlipInterval:%d\n",
                0, 1, 0, 2, 0, 3);
            return funcs.pfnPresent(hDevice, &arg);
        }},
        {41, ENTRY(UMDDdiFlush), UMDTRACE_DDI, CALL {
            line = "=> UMDDdiFlush\n";
            return funcs.pfnFlush(hDevice);
        }},
        {42, ENTRY(UMDDdiCreateVertexShaderFunc), UMDTRACE_DDI, CALL {
            D3DDDIARG_CREATEVERTEXSHADERFUNC arg{sizeof code, nullptr};
            line = Text(
                "=> UMDDdiCreateVertexShaderFunc pCode:0x%x pDDICreateVSFunc:0x%x ShaderHandle:0x%x\n",
                UMDLow32(code), UMDLow32(&arg), 0);
            return funcs.pfnCreateVertexShaderFunc(hDevice, &arg, code);
        }},
        {43, ENTRY(UMDDdiDeleteVertexShaderFunc), UMDTRACE_DDI, CALL {
            line = Text("=> UMDDdiDeleteVertexShaderFunc hVSFunc:0x%x\n", 0);
            return funcs.pfnDeleteVertexShaderFunc(hDevice, nullptr);
        }},
        {44, ENTRY(UMDDdiSetVertexShaderFunc), UMDTRACE_DDI, CALL {
            line = Text("=> UMDDdiSetVertexShaderFunc hVSFunc:0x%x\n", 0);
            return funcs.pfnSetVertexShaderFunc(hDevice, nullptr);
        }},
        {45, ENTRY(UMDDdiCreateVertexShaderDecl), UMDTRACE_DDI, CALL {
            const D3DDDIVERTEXELEMENT element{1, 2, 3, 4, 5, 6};
            D3DDDIARG_CREATEVERTEXSHADERDECL arg{1, nullptr};
            line = Text(
                "=> UMDDdiCreateVertexShaderDecl M:%d O:%d S:%d T:%d U:%d I:%d N:%d S:0x%x\n",
                4, 2, 1, 3, 5, 6, 1, 0);
            return funcs.pfnCreateVertexShaderDecl(hDevice, &arg, &element);
        }},
        {46, ENTRY(UMDDdiDeleteVertexShaderDecl), UMDTRACE_DDI, CALL {
            line = Text("=> UMDDdiDeleteVertexShaderDecl hVSDecl:0x%x\n", 0);
            return funcs.pfnDeleteVertexShaderDecl(hDevice, nullptr);
        }},
        {47, ENTRY(UMDDdiSetVertexShaderDecl), UMDTRACE_DDI, CALL {
            line = Text("=> UMDDdiSetVertexShaderDecl hVSDecl:0x%x\n", 0);
            return funcs.pfnSetVertexShaderDecl(hDevice, nullptr);
        }},
        {50, ENTRY(UMDDdiSetScissorRect), UMDTRACE_DDI, CALL {
            const RECT rect{1, 2, 3, 4};
            line = Text(
                "=> UMDDdiSetScissorRect pRect:0x%x left:%d right:%d top:%d bottom:%d\n",
                UMDLow32(&rect), 1, 3, 2, 4);
            return funcs.pfnSetScissorRect(hDevice, &rect);
        }},
        {51, ENTRY(UMDDdiSetStreamSource), UMDTRACE_DDI | UMDTRACE_RESOURCE, CALL {
            const D3DDDIARG_SETSTREAMSOURCE arg{1, nullptr, 2, 3};
            line = Text("=> UMDDdiSetStreamSource hVertexBuffer:0x%x Stream:%d Offset:%d Stride:%d \n", 0, 1, 2, 3);
            return funcs.pfnSetStreamSource(hDevice, &arg);
        }},
        {52, ENTRY(UMDDdiSetStreamSourceFreq), UMDTRACE_DDI, CALL {
            const D3DDDIARG_SETSTREAMSOURCEFREQ arg{};
            line = "=> UMDDdiSetStreamSourceFreq\n";
            return funcs.pfnSetStreamSourceFreq(hDevice, &arg);
        }},
        {53, ENTRY(UMDDdiSetConvolutionKernelMono), UMDTRACE_DDI, CALL {
            const D3DDDIARG_SETCONVOLUTIONKERNELMONO arg{};
            line = "=> UMDDdiSetConvolutionKernelMono\n";
            return funcs.pfnSetConvolutionKernelMono(hDevice, &arg);
        }},
        {54, ENTRY(UMDDdiComposeRects), UMDTRACE_DDI, CALL {
            const D3DDDIARG_COMPOSERECTS arg{};
            line = "=> UMDDdiComposeRects\n";
            return funcs.pfnComposeRects(hDevice, &arg);
        }},
        {55, ENTRY(UMDDdiBlt), UMDTRACE_DDI, CALL {
            D3DDDIARG_BLT arg{};
            arg.SrcRect = {1, 2, 3, 4};
            arg.DstRect = {5, 6, 7, 8};
            arg.ColorKey = 9;
            line = Text(
                "=> UMDDdiBlt Color:%d Flags:%d DST l:%d t:%d r:%d b:%d Rsc:0x%x [Type:%d Pool:%d] SRC l:%d t:%d r:%d b:%d Rsc:0x%x [Type:%d Pool:%d]\n",
                9, 0, 5, 6, 7, 8, 0, 0, 0, 1, 2, 3, 4, 0, 0, 0);
            return funcs.pfnBlt(hDevice, &arg);
        }},
        {56, ENTRY(UMDDdiColorFill), UMDTRACE_DDI, CALL {
            D3DDDIARG_COLORFILL arg{};
            arg.SubResourceIndex = 10;
            arg.DstRect = {1, 2, 3, 4};
            arg.Color = 0xAABBCCDD;
            line = Text(
                "=> UMDDdiColorFill hResource:0x%x SubResourceIndex:0x%x Color:0x%x l:%d r:%d  t:%d b:%d\n",
                0, 10, 0xAABBCCDD, 1, 3, 2, 4);
            return funcs.pfnColorFill(hDevice, &arg);
        }},
        {57, ENTRY(UMDDdiDepthFill), UMDTRACE_DDI, CALL {
            const D3DDDIARG_DEPTHFILL arg{};
            line = "=> UMDDdiDepthFill\n";
            return funcs.pfnDepthFill(hDevice, &arg);
        }},
        {58, ENTRY(UMDDdiCreateQuery), UMDTRACE_DDI, CALL {
            D3DDDIARG_CREATEQUERY arg{};
            line = "=> UMDDdiCreateQuery\n";
            return funcs.pfnCreateQuery(hDevice, &arg);
        }},
        {59, ENTRY(UMDDdiDeleteQuery), UMDTRACE_DDI, CALL {
            line = "=> UMDDdiDeleteQuery\n";
            return funcs.pfnDestroyQuery(hDevice, nullptr);
        }},
        {60, ENTRY(UMDDdiIssueQuery), UMDTRACE_DDI, CALL {
            const D3DDDIARG_ISSUEQUERY arg{};
            line = "=> UMDDdiIssueQuery\n";
            return funcs.pfnIssueQuery(hDevice, &arg);
        }},
        {61, ENTRY(UMDDdiGetQueryData), UMDTRACE_DDI, CALL {
            const D3DDDIARG_GETQUERYDATA arg{};
            line = "=> UMDDdiGetQueryData\n";
            return funcs.pfnGetQueryData(hDevice, &arg);
        }},
        {62, ENTRY(UMDDdiSetRenderTarget), UMDTRACE_DDI | UMDTRACE_RESOURCE, CALL {
            const D3DDDIARG_SETRENDERTARGET arg{1, nullptr, 10};
            line = Text(
                "=> UMDDdiSetRenderTarget hRenderTarget:0x%x [Type:%d] RenderTargetIndex:%d SubResourceIndex:0x%x\n",
                0, 0, 1, 10);
            return funcs.pfnSetRenderTarget(hDevice, &arg);
        }},
        {63, ENTRY(UMDDdiSetDepthStencil), UMDTRACE_DDI, CALL {
            const D3DDDIARG_SETDEPTHSTENCIL arg{};
            line = Text("=> UMDDdiSetDepthStencil hZBuffer:0x%x\n", 0);
            return funcs.pfnSetDepthStencil(hDevice, &arg);
        }},
        {64, ENTRY(UMDDdiGenerateMipSubLevels), UMDTRACE_DDI, CALL {
            const D3DDDIARG_GENERATEMIPSUBLEVELS arg{};
            line = "=> UMDDdiGenerateMipSubLevels\n";
            return funcs.pfnGenerateMipSubLevels(hDevice, &arg);
        }},
        {65, ENTRY(UMDDdiSetPixelShaderConstI), UMDTRACE_DDI, CALL {
            const D3DDDIARG_SETPIXELSHADERCONSTI arg{7, 1};
            const INT data[4]{};
            line = Text(
                "=> UMDDdiSetPixelShaderConstI pConstI:0x%x pDP2SetPSConstI:0x%x Count:%d Register:%d\n",
                UMDLow32(data), UMDLow32(&arg), 1, 7);
            return funcs.pfnSetPixelShaderConstI(hDevice, &arg, data);
        }},
        {66, ENTRY(UMDDdiSetPixelShaderConstB), UMDTRACE_DDI, CALL {
            const D3DDDIARG_SETPIXELSHADERCONSTB arg{7, 1};
            const BOOL data[1]{};
            line = Text(
                "=> UMDDdiSetPixelShaderConstB pConstB:0x%x pDP2SetPSConstB:0x%x Count:%d Register:%d\n",
                UMDLow32(data), UMDLow32(&arg), 1, 7);
            return funcs.pfnSetPixelShaderConstB(hDevice, &arg, data);
        }},
        {67, ENTRY(UMDDdiCreatePixelShader), UMDTRACE_DDI, CALL {
            D3DDDIARG_CREATEPIXELSHADER arg{sizeof code, nullptr};
            line = Text(
                "=> UMDDdiCreatePixelShader pShader:0x%x pDDICreateShader:0x%x CodeSize:%d ShaderHandle:0x%x\n",
                UMDLow32(code), UMDLow32(&arg), 8, 0);
            return funcs.pfnCreatePixelShader(hDevice, &arg, code);
        }},
        {68, ENTRY(UMDDdiDeletePixelShader), UMDTRACE_DDI, CALL {
            line = Text("=> UMDDdiDeletePixelShader hPixelShader:0x%x\n", 0);
            return funcs.pfnDeletePixelShader(hDevice, nullptr);
        }},
        {76, ENTRY(UMDDdiCreateVideoProcessDevice), UMDTRACE_DDI | UMDTRACE_VIDEO, CALL {
            D3DDDIARG_CREATEVIDEOPROCESSDEVICE arg{};
            line = "=> UMDDdiCreateVideoProcessDevice\n";
            return funcs.pfnCreateVideoProcessDevice(hDevice, &arg);
        }},
        {77, ENTRY(UMDDdiDestroyVideoProcessDevice), UMDTRACE_DDI | UMDTRACE_VIDEO, CALL {
            line = "=> UMDDdiDestroyVideoProcessDevice\n";
            return funcs.pfnDestroyVideoProcessDevice(hDevice, hVideo);
        }},
        {78, ENTRY(UMDDdiVideoProcessBeginFrame), UMDTRACE_DDI | UMDTRACE_VIDEO, CALL {
            line = "=> UMDDdiVideoProcessBeginFrame\n";
            return funcs.pfnVideoProcessBeginFrame(hDevice, hVideo);
        }},
        {79, ENTRY(UMDDdiVideoProcessEndFrame), UMDTRACE_DDI | UMDTRACE_VIDEO, CALL {
            D3DDDIARG_VIDEOPROCESSENDFRAME arg{hVideo, nullptr};
            line = "=> UMDDdiVideoProcessEndFrame\n";
            return funcs.pfnVideoProcessEndFrame(hDevice, &arg);
        }},
        {80, ENTRY(UMDDdiVideoProcessSetRenderTarget), UMDTRACE_DDI | UMDTRACE_VIDEO, CALL {
            const D3DDDIARG_SETVIDEOPROCESSRENDERTARGET arg{hVideo, Handle(0x80), 0};
            line = Text("=> UMDDdiVideoProcessSetRenderTarget RT:0x%x\n", 0x80);
            return funcs.pfnSetVideoProcessRenderTarget(hDevice, &arg);
        }},
        {81, ENTRY(UMDDdiVideoProcessBlt), UMDTRACE_DDI | UMDTRACE_VIDEO, CALL {
            D3DDDIARG_VIDEOPROCESSBLT arg{};
            arg.hVideoProcess = hVideo;
            line = "=> UMDDdiVideoProcessBlt\n";
            return funcs.pfnVideoProcessBlt(hDevice, &arg);
        }},
        {91, ENTRY(UMDDdiDestroyDevice), UMDTRACE_DDI, CALL {
            line = "=> UMDDdiDestroyDevice\n";
            return funcs.pfnDestroyDevice(hDevice);
        }},
        {92, ENTRY(UMDDdiQueryResourceResidency), UMDTRACE_DDI, CALL {
            const D3DDDIARG_QUERYRESOURCERESIDENCY arg{nullptr, 2};
            line = Text("=> UMDDdiQueryResourceResidency %d\n", 2);
            return funcs.pfnQueryResourceResidency(hDevice, &arg);
        }},
        {93, ENTRY(UMDDdiOpenResource), UMDTRACE_DDI | UMDTRACE_RESOURCE, CALL {
            D3DDDIARG_OPENRESOURCE arg{};
            line = "=> UMDDdiOpenResource \n";
            return funcs.pfnOpenResource(hDevice, &arg);
        }},
    };
    return entries;
}
// clang-format on

const std::vector<RefusedEntry>& RefusedEntries()
{
    static const std::vector<RefusedEntry> entries{
        {9, ENTRY(UMDDdiSetIndicesUM)},
        {12, ENTRY(UMDDdiDrawRectPatch)},
        {13, ENTRY(UMDDdiDrawTriPatch)},
        {16, ENTRY(UMDDdiVolBlt)},
        {19, ENTRY(UMDDdiStateSet)},
        {20, ENTRY(UMDDdiSetPriority)},
        {22, ENTRY(UMDDdiUpdatePalette)},
        {23, ENTRY(UMDDdiSetPalette)},
        {48, ENTRY(UMDDdiSetVertexShaderConstI)},
        {49, ENTRY(UMDDdiSetVertexShaderConstB)},
        {69, ENTRY(UMDDdiCreateDecodeDevice)},
        {70, ENTRY(UMDDdiDestroyDecodeDevice)},
        {71, ENTRY(UMDDdiDecodeSetRenderTarget)},
        {72, ENTRY(UMDDdiDecodeBeginFrame)},
        {73, ENTRY(UMDDdiDecodeEndFrame)},
        {74, ENTRY(UMDDdiDecodeExecute)},
        {75, ENTRY(UMDDdiDecodeExtensionExecute)},
        {82, ENTRY(UMDDdiCreateExtensionDevice)},
        {83, ENTRY(UMDDdiDestroyExtensionDevice)},
        {84, ENTRY(UMDDdiExtensionExecute)},
        {85, ENTRY(UMDDdiCreateOverlay)},
        {86, ENTRY(UMDDdiUpdateOverlay)},
        {87, ENTRY(UMDDdiFlipOverlay)},
        {88, ENTRY(UMDDdiGetOverlayColorControls)},
        {89, ENTRY(UMDDdiSetOverlayColorControls)},
        {90, ENTRY(UMDDdiDestroyOverlay)},
        {94, ENTRY(UMDDdiGetCaptureAllocationHandle)},
        {95, ENTRY(UMDDdiCaptureToSysMem)},
        {99, ENTRY(UMDDdiCreateVideoProcessor)},
        {100, ENTRY(UMDDdiSetVideoProcessBltState)},
        {101, ENTRY(UMDDdiGetVideoProcessBltStatePrivate)},
        {102, ENTRY(UMDDdiSetVideoProcessStreamState)},
        {103, ENTRY(UMDDdiGetVideoProcessStreamStatePrivate)},
        {104, ENTRY(UMDDdiVideoProcessBltHD)},
        {105, ENTRY(UMDDdiDestroyVideoProcessor)},
        {106, ENTRY(UMDDdiCreateAuthenticatedChannel)},
        {107, ENTRY(UMDDdiAuthenticatedChannelKeyExchange)},
        {108, ENTRY(UMDDdiQueryAuthenticatedChannel)},
        {109, ENTRY(UMDDdiConfigureAuthenticatedChannel)},
        {110, ENTRY(UMDDdiDestroyAuthenticatedChannel)},
        {111, ENTRY(UMDDdiCreateCryptoSession)},
        {112, ENTRY(UMDDdiCryptoSessionKeyExchange)},
        {113, ENTRY(UMDDdiDestroyCryptoSession)},
        {114, ENTRY(UMDDdiEncryptionBlt)},
        {115, ENTRY(UMDDdiGetPitch)},
        {116, ENTRY(UMDDdiStartSessionKeyRefresh)},
        {117, ENTRY(UMDDdiFinishSessionKeyRefresh)},
        {118, ENTRY(UMDDdiGetEncryptionBltKey)},
        {119, ENTRY(UMDDdiDecryptionBlt)},
        {120, ENTRY(UMDDdiResolveSharedResource)},
    };
    return entries;
}

}  // namespace tesslo::test
