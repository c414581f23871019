// Entries for shaders, vertex declarations and shader constants.
#include "device/UMDDdiDevice.h"
#include "device/entries/UMDDdiEntries.h"
#include "device/entries/UMDGuard.h"
#include "util/UMDUtilDebugTrace.h"

HRESULT APIENTRY UMDDdiSetPixelShader(HANDLE hDevice, HANDLE hPixelShader)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetPixelShader hPixelShader:0x%x\n", UMDLow32(hPixelShader));
        return ToDevice(hDevice).SetPixelShader(hPixelShader);
    });
}

HRESULT APIENTRY UMDDdiSetPixelShaderConst(
    HANDLE hDevice, const D3DDDIARG_SETPIXELSHADERCONST* pSetConst, const FLOAT* pData)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetPixelShaderConst C:%d R:%d\n", pSetConst->Count, pSetConst->Register);
        return ToDevice(hDevice).SetPixelShaderConst(pSetConst, pData);
    });
}

HRESULT APIENTRY UMDDdiSetPixelShaderConstI(
    HANDLE hDevice, const D3DDDIARG_SETPIXELSHADERCONSTI* pSetConst, const INT* pData)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI,
            L"=> UMDDdiSetPixelShaderConstI pConstI:0x%x pDP2SetPSConstI:0x%x Count:%d Register:%d\n", UMDLow32(pData),
            UMDLow32(pSetConst), pSetConst->Count, pSetConst->Register);
        return ToDevice(hDevice).SetPixelShaderConstI(pSetConst, pData);
    });
}

HRESULT APIENTRY UMDDdiSetPixelShaderConstB(
    HANDLE hDevice, const D3DDDIARG_SETPIXELSHADERCONSTB* pSetConst, const BOOL* pData)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI,
            L"=> UMDDdiSetPixelShaderConstB pConstB:0x%x pDP2SetPSConstB:0x%x Count:%d Register:%d\n", UMDLow32(pData),
            UMDLow32(pSetConst), pSetConst->Count, pSetConst->Register);
        return ToDevice(hDevice).SetPixelShaderConstB(pSetConst, pData);
    });
}

HRESULT APIENTRY UMDDdiCreatePixelShader(HANDLE hDevice, D3DDDIARG_CREATEPIXELSHADER* pCreate, const UINT* pCode)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI,
            L"=> UMDDdiCreatePixelShader pShader:0x%x pDDICreateShader:0x%x CodeSize:%d ShaderHandle:0x%x\n",
            UMDLow32(pCode), UMDLow32(pCreate), pCreate->CodeSize, UMDLow32(pCreate->ShaderHandle));
        return ToDevice(hDevice).CreatePixelShader(pCreate, pCode);
    });
}

HRESULT APIENTRY UMDDdiDeletePixelShader(HANDLE hDevice, HANDLE hPixelShader)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiDeletePixelShader hPixelShader:0x%x\n", UMDLow32(hPixelShader));
        return ToDevice(hDevice).DeletePixelShader(hPixelShader);
    });
}

HRESULT APIENTRY UMDDdiSetVertexShaderConst(
    HANDLE hDevice, const D3DDDIARG_SETVERTEXSHADERCONST* pSetConst, const void* pData)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetVertexShaderConst pSetShaderConst:0x%x Count:%d Register:%d\n",
            UMDLow32(pSetConst), pSetConst->Count, pSetConst->Register);
        return ToDevice(hDevice).SetVertexShaderConst(pSetConst, pData);
    });
}

HRESULT APIENTRY UMDDdiCreateVertexShaderFunc(
    HANDLE hDevice, D3DDDIARG_CREATEVERTEXSHADERFUNC* pCreate, const UINT* pCode)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiCreateVertexShaderFunc pCode:0x%x pDDICreateVSFunc:0x%x ShaderHandle:0x%x\n",
            UMDLow32(pCode), UMDLow32(pCreate), UMDLow32(pCreate ? pCreate->ShaderHandle : nullptr));
        return ToDevice(hDevice).CreateVertexShaderFunc(pCreate, pCode);
    });
}

HRESULT APIENTRY UMDDdiDeleteVertexShaderFunc(HANDLE hDevice, HANDLE hVSFunc)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiDeleteVertexShaderFunc hVSFunc:0x%x\n", UMDLow32(hVSFunc));
        return ToDevice(hDevice).DeleteVertexShaderFunc(hVSFunc);
    });
}

HRESULT APIENTRY UMDDdiSetVertexShaderFunc(HANDLE hDevice, HANDLE hVSFunc)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetVertexShaderFunc hVSFunc:0x%x\n", UMDLow32(hVSFunc));
        return ToDevice(hDevice).SetVertexShaderFunc(hVSFunc);
    });
}

HRESULT APIENTRY UMDDdiCreateVertexShaderDecl(
    HANDLE hDevice, D3DDDIARG_CREATEVERTEXSHADERDECL* pCreate, const D3DDDIVERTEXELEMENT* pElements)
{
    return UMDGuard(__func__, [=] {
        const D3DDDIARG_CREATEVERTEXSHADERDECL create = pCreate ? *pCreate : D3DDDIARG_CREATEVERTEXSHADERDECL{};
        const D3DDDIVERTEXELEMENT first = pElements && create.NumVertexElements ? *pElements : D3DDDIVERTEXELEMENT{};
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiCreateVertexShaderDecl M:%d O:%d S:%d T:%d U:%d I:%d N:%d S:0x%x\n",
            first.Method, first.Offset, first.Stream, first.Type, first.Usage, first.UsageIndex,
            create.NumVertexElements, UMDLow32(create.ShaderHandle));
        return ToDevice(hDevice).CreateVertexShaderDecl(pCreate, pElements);
    });
}

HRESULT APIENTRY UMDDdiDeleteVertexShaderDecl(HANDLE hDevice, HANDLE hVSDecl)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiDeleteVertexShaderDecl hVSDecl:0x%x\n", UMDLow32(hVSDecl));
        return ToDevice(hDevice).DeleteVertexShaderDecl(hVSDecl);
    });
}

HRESULT APIENTRY UMDDdiSetVertexShaderDecl(HANDLE hDevice, HANDLE hVSDecl)
{
    return UMDGuard(__func__, [=] {
        UMD_TRACE(UMDTRACE_DDI, L"=> UMDDdiSetVertexShaderDecl hVSDecl:0x%x\n", UMDLow32(hVSDecl));
        return ToDevice(hDevice).SetVertexShaderDecl(hVSDecl);
    });
}
