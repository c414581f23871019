#include "device/UMDDdiDevice.h"
#include "resources/UMDShaderPixel.h"
#include "resources/UMDShaderVertex.h"
#include "util/UMDUtilDebugTrace.h"

#include <memory>
#include <new>

namespace
{
UMDShaderPixel* ToShaderPixel(HANDLE hPixelShader)
{
    return static_cast<UMDShaderPixel*>(ToResource(hPixelShader));
}

UMDShaderVertex* ToShaderVertex(HANDLE hVertexShader)
{
    return static_cast<UMDShaderVertex*>(ToResource(hVertexShader));
}

static_assert(sizeof(D3DDDIVERTEXELEMENT) == sizeof(D3DVERTEXELEMENT9));
static_assert(offsetof(D3DDDIVERTEXELEMENT, Type) == offsetof(D3DVERTEXELEMENT9, Type));
static_assert(offsetof(D3DDDIVERTEXELEMENT, UsageIndex) == offsetof(D3DVERTEXELEMENT9, UsageIndex));

/// Elements as the delegated device takes them: ended by the marker that the runtime's list may lack.
/// @return false when the list is missing, or has more elements than a declaration may have.
bool CopyElements(D3DVERTEXELEMENT9 (&copy)[MAXD3DDECLLENGTH + 1], const D3DDDIVERTEXELEMENT* pElements, UINT count)
{
    if (!pElements && count != 0)
        return false;
    const D3DVERTEXELEMENT9 end = D3DDECL_END();
    UINT i = 0;
    for (; i < count && pElements[i].Stream != end.Stream; ++i)
    {
        if (i == MAXD3DDECLLENGTH)
            return false;
        const D3DDDIVERTEXELEMENT& element = pElements[i];
        copy[i] = {element.Stream, element.Offset, element.Type, element.Method, element.Usage, element.UsageIndex};
    }
    copy[i] = end;
    return true;
}
}  // namespace

HRESULT UMDDdiDevice::CreatePixelShader(D3DDDIARG_CREATEPIXELSHADER* pCreate, const UINT* pCode)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::CreatePixelShader\n");
    std::unique_ptr<UMDShaderPixel> pPixelShader(new (std::nothrow) UMDShaderPixel(this));
    if (!pPixelShader)
        return UMDFail(E_FAIL, L"UMDDdiDevice::CreatePixelShader NULL == pPixelShader\n");
    if (HRESULT hr = pPixelShader->Create(pCode); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::CreatePixelShader Create failed! 0x%x\n", hr);
    pCreate->ShaderHandle = ToHandle(pPixelShader.release());
    UMD_TRACE(
        UMDTRACE_LEAVE, L"<<< UMDDdiDevice::CreatePixelShader ShaderHandle:0x%x\n", UMDLow32(pCreate->ShaderHandle));
    return S_OK;
}

HRESULT UMDDdiDevice::DeletePixelShader(HANDLE hPixelShader)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DeletePixelShader\n");
    if (UMDShaderPixel* pPixelShader = ToShaderPixel(hPixelShader))
    {
        pPixelShader->Delete();
        delete pPixelShader;
    }
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::DeletePixelShader\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetPixelShader(HANDLE hPixelShader)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetPixelShader\n");
    if (!hPixelShader)
        return S_OK;
    if (HRESULT hr = ToShaderPixel(hPixelShader)->Set(); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetPixelShader Set failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetPixelShader\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetPixelShaderConst(const D3DDDIARG_SETPIXELSHADERCONST* pSetConst, const FLOAT* pData)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetPixelShaderConst\n");
    if (HRESULT hr = UMDShaderPixel::SetConst(this, pSetConst, pData); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetPixelShaderConst SetConst failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetPixelShaderConst\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetPixelShaderConstI(const D3DDDIARG_SETPIXELSHADERCONSTI* pSetConst, const INT* pData)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetPixelShaderConstI\n");
    if (HRESULT hr = UMDShaderPixel::SetConstI(this, pSetConst, pData); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetPixelShaderConstI SetConstI failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetPixelShaderConstI\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetPixelShaderConstB(const D3DDDIARG_SETPIXELSHADERCONSTB* pSetConst, const BOOL* pData)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetPixelShaderConstB\n");
    if (HRESULT hr = UMDShaderPixel::SetConstB(this, pSetConst, pData); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::SetPixelShaderConstB SetConstB failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetPixelShaderConstB\n");
    return S_OK;
}

HRESULT UMDDdiDevice::CreateVertexShaderFunc(D3DDDIARG_CREATEVERTEXSHADERFUNC* pCreate, const UINT* pCode)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::CreateVertexShaderFunc\n");
    if (!pCreate)
        return S_OK;
    std::unique_ptr<UMDShaderVertex> pShader(new (std::nothrow) UMDShaderVertex(this));
    if (!pShader)
        return UMDFail(E_FAIL, L"UMDDdiDevice::CreateVertexShaderFunc NULL == pShader\n");
    if (HRESULT hr = pShader->Create(pCode); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::CreateVertexShaderFunc Create failed! 0x%x\n", hr);
    pCreate->ShaderHandle = ToHandle(pShader.release());
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::CreateVertexShaderFunc ShaderHandle:0x%x\n",
        UMDLow32(pCreate->ShaderHandle));
    return S_OK;
}

HRESULT UMDDdiDevice::DeleteVertexShaderFunc(HANDLE hVertexShaderFunc)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DeleteVertexShaderFunc\n");
    if (UMDShaderVertex* pShader = ToShaderVertex(hVertexShaderFunc))
    {
        pShader->Delete();
        delete pShader;
    }
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::DeleteVertexShaderFunc\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetVertexShaderFunc(HANDLE hVertexShaderFunc)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetVertexShaderFunc\n");
    if (!hVertexShaderFunc)
        return S_OK;
    UMDShaderVertex* pShader = ToShaderVertex(hVertexShaderFunc);
    if (HRESULT hr = pShader->Set(); FAILED(hr))
    {
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::SetVertexShaderFunc Set failed! 0x%x\n", hr);
        delete pShader;
        return hr;
    }
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetVertexShaderFunc\n");
    return S_OK;
}

HRESULT UMDDdiDevice::CreateVertexShaderDecl(
    D3DDDIARG_CREATEVERTEXSHADERDECL* pCreate, const D3DDDIVERTEXELEMENT* pElements)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::CreateVertexShaderDecl\n");
    if (!pCreate)
        return S_OK;
    D3DVERTEXELEMENT9 elements[MAXD3DDECLLENGTH + 1];
    if (!CopyElements(elements, pElements, pCreate->NumVertexElements))
        return UMDFail(
            E_FAIL, L"UMDDdiDevice::CreateVertexShaderDecl failed! NumVertexElements:%d\n", pCreate->NumVertexElements);
    std::unique_ptr<UMDShaderVertex> pShader(new (std::nothrow) UMDShaderVertex(this));
    if (!pShader)
        return UMDFail(E_FAIL, L"UMDDdiDevice::CreateVertexShaderDecl NULL == pShader\n");
    if (HRESULT hr = pShader->CreateDecl(elements); FAILED(hr))
        return UMDFail(hr, L"UMDDdiDevice::CreateVertexShaderDecl CreateDecl failed! 0x%x\n", hr);
    pCreate->ShaderHandle = ToHandle(pShader.release());
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::CreateVertexShaderDecl 0x%x\n", UMDLow32(pCreate->ShaderHandle));
    return S_OK;
}

HRESULT UMDDdiDevice::DeleteVertexShaderDecl(HANDLE hVertexShaderDecl)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DeleteVertexShaderDecl\n");
    if (UMDShaderVertex* pShader = ToShaderVertex(hVertexShaderDecl))
    {
        pShader->DeleteDecl();
        delete pShader;
    }
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::DeleteVertexShaderDecl\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetVertexShaderDecl(HANDLE hVertexShaderDecl)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetVertexShaderDecl\n");
    if (!hVertexShaderDecl)
        return S_OK;
    UMDShaderVertex* pShader = ToShaderVertex(hVertexShaderDecl);
    if (HRESULT hr = pShader->SetDecl(); FAILED(hr))
    {
        // The text names the function's setter, as it always has.
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::SetVertexShaderFunc SetDecl failed! 0x%x\n", hr);
        delete pShader;
        return hr;
    }
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetVertexShaderDecl\n");
    return S_OK;
}

HRESULT UMDDdiDevice::SetVertexShaderConst(const D3DDDIARG_SETVERTEXSHADERCONST* pSetConst, const void* pData)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetVertexShaderConst\n");
    const HRESULT hr = UMDShaderVertex::SetConst(this, pSetConst, pData);
    if (FAILED(hr))
        UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiDevice::SetVertexShaderConst SetConst failed! 0x%x\n", hr);
    UMD_TRACE(UMDTRACE_LEAVE, L"<<< UMDDdiDevice::SetVertexShaderConst\n");  // after a failure too
    return hr;
}
