#include "device/UMDDdiDevice.h"
#include "resources/UMDShaderPixel.h"
#include "resources/UMDShaderVertex.h"
#include "util/UMDMakeUnique.h"
#include "util/UMDUtilDebugTrace.h"

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

/// What the creation of one kind of object prints.
struct CreateTexts
{
    const wchar_t* pNoMemory;
    const wchar_t* pFailed;   ///< takes the result
    const wchar_t* pCreated;  ///< takes the handle's low 32 bits
};

/// What setting one kind of pixel shader constant prints.
struct ConstTexts
{
    const wchar_t* pEnter;
    const wchar_t* pFailed;  ///< takes the result
    const wchar_t* pLeave;
};

template <typename Argument, typename Data>
HRESULT SetPixelConst(UMDDdiDevice* pDevice, const ConstTexts& texts,
    HRESULT (*pSet)(UMDDdiDevice*, const Argument*, const Data*), const Argument* pSetConst, const Data* pData)
{
    UMD_TRACE(UMDTRACE_ENTER, texts.pEnter);
    if (HRESULT hr = pSet(pDevice, pSetConst, pData); FAILED(hr))
        return UMDFail(hr, texts.pFailed, hr);
    UMD_TRACE(UMDTRACE_LEAVE, texts.pLeave);
    return S_OK;
}

/// Makes an object, lets it create its delegated one from the data, and hands it out.
template <typename Shader, typename Data>
HRESULT CreateShader(UMDDdiDevice* pDevice, HANDLE* phShader, const CreateTexts& texts,
    HRESULT (Shader::*pCreate)(const Data*), const Data* pData)
{
    auto pShader = UMDMakeUnique<Shader>(pDevice);
    if (!pShader)
        return UMDFail(E_FAIL, texts.pNoMemory);
    if (HRESULT hr = (pShader.get()->*pCreate)(pData); FAILED(hr))
        return UMDFail(hr, texts.pFailed, hr);
    *phShader = ToHandle(pShader.release());
    UMD_TRACE(UMDTRACE_LEAVE, texts.pCreated, UMDLow32(*phShader));
    return S_OK;
}

/// Releases what the object holds, and frees it. Null is nothing to delete. @return S_OK, always.
template <typename Shader>
HRESULT DeleteShader(Shader* pFreed, void (Shader::*pDelete)(), const wchar_t* pLeave)
{
    if (const std::unique_ptr<Shader> pShader{pFreed})
        (pShader.get()->*pDelete)();
    UMD_TRACE(UMDTRACE_LEAVE, pLeave);
    return S_OK;
}

/// What binding a vertex shader or declaration prints.
struct SetTexts
{
    const wchar_t* pFailed;  ///< takes the result
    const wchar_t* pLeave;
};

/// Binds a vertex shader or declaration; null leaves what is bound. One that cannot be bound lets go of what it holds
/// on the delegated device. It stays itself, empty: the runtime has its handle still, and deletes it as any other.
HRESULT SetOrRelease(UMDShaderVertex* pShader, HRESULT (UMDShaderVertex::*pSet)(), const SetTexts& texts)
{
    if (!pShader)
        return S_OK;
    if (HRESULT hr = (pShader->*pSet)(); FAILED(hr))
    {
        pShader->ReleaseDelegated();
        return UMDFail(hr, texts.pFailed, hr);
    }
    UMD_TRACE(UMDTRACE_LEAVE, texts.pLeave);
    return S_OK;
}
}  // namespace

HRESULT UMDDdiDevice::CreatePixelShader(D3DDDIARG_CREATEPIXELSHADER* pCreate, const UINT* pCode)
{
    static constexpr CreateTexts kTexts = {L"UMDDdiDevice::CreatePixelShader NULL == pPixelShader\n",
        L"UMDDdiDevice::CreatePixelShader Create failed! 0x%x\n",
        L"<<< UMDDdiDevice::CreatePixelShader ShaderHandle:0x%x\n"};
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::CreatePixelShader\n");
    return CreateShader<UMDShaderPixel>(this, &pCreate->ShaderHandle, kTexts, &UMDShaderPixel::Create, pCode);
}

HRESULT UMDDdiDevice::DeletePixelShader(HANDLE hPixelShader)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DeletePixelShader\n");
    return DeleteShader(ToShaderPixel(hPixelShader), &UMDShaderPixel::Delete, L"<<< UMDDdiDevice::DeletePixelShader\n");
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
    static constexpr ConstTexts kTexts = {L">>> UMDDdiDevice::SetPixelShaderConst\n",
        L"UMDDdiDevice::SetPixelShaderConst SetConst failed! 0x%x\n", L"<<< UMDDdiDevice::SetPixelShaderConst\n"};
    return SetPixelConst(this, kTexts, &UMDShaderPixel::SetConst, pSetConst, pData);
}

HRESULT UMDDdiDevice::SetPixelShaderConstI(const D3DDDIARG_SETPIXELSHADERCONSTI* pSetConst, const INT* pData)
{
    static constexpr ConstTexts kTexts = {L">>> UMDDdiDevice::SetPixelShaderConstI\n",
        L"UMDDdiDevice::SetPixelShaderConstI SetConstI failed! 0x%x\n", L"<<< UMDDdiDevice::SetPixelShaderConstI\n"};
    return SetPixelConst(this, kTexts, &UMDShaderPixel::SetConstI, pSetConst, pData);
}

HRESULT UMDDdiDevice::SetPixelShaderConstB(const D3DDDIARG_SETPIXELSHADERCONSTB* pSetConst, const BOOL* pData)
{
    static constexpr ConstTexts kTexts = {L">>> UMDDdiDevice::SetPixelShaderConstB\n",
        L"UMDDdiDevice::SetPixelShaderConstB SetConstB failed! 0x%x\n", L"<<< UMDDdiDevice::SetPixelShaderConstB\n"};
    return SetPixelConst(this, kTexts, &UMDShaderPixel::SetConstB, pSetConst, pData);
}

HRESULT UMDDdiDevice::CreateVertexShaderFunc(D3DDDIARG_CREATEVERTEXSHADERFUNC* pCreate, const UINT* pCode)
{
    static constexpr CreateTexts kTexts = {L"UMDDdiDevice::CreateVertexShaderFunc NULL == pShader\n",
        L"UMDDdiDevice::CreateVertexShaderFunc Create failed! 0x%x\n",
        L"<<< UMDDdiDevice::CreateVertexShaderFunc ShaderHandle:0x%x\n"};
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::CreateVertexShaderFunc\n");
    if (!pCreate)
        return S_OK;
    return CreateShader<UMDShaderVertex>(this, &pCreate->ShaderHandle, kTexts, &UMDShaderVertex::Create, pCode);
}

HRESULT UMDDdiDevice::DeleteVertexShaderFunc(HANDLE hVertexShaderFunc)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DeleteVertexShaderFunc\n");
    return DeleteShader(
        ToShaderVertex(hVertexShaderFunc), &UMDShaderVertex::Delete, L"<<< UMDDdiDevice::DeleteVertexShaderFunc\n");
}

HRESULT UMDDdiDevice::SetVertexShaderFunc(HANDLE hVertexShaderFunc)
{
    static constexpr SetTexts kTexts = {
        L"UMDDdiDevice::SetVertexShaderFunc Set failed! 0x%x\n", L"<<< UMDDdiDevice::SetVertexShaderFunc\n"};
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetVertexShaderFunc\n");
    return SetOrRelease(ToShaderVertex(hVertexShaderFunc), &UMDShaderVertex::Set, kTexts);
}

HRESULT UMDDdiDevice::CreateVertexShaderDecl(
    D3DDDIARG_CREATEVERTEXSHADERDECL* pCreate, const D3DDDIVERTEXELEMENT* pElements)
{
    static constexpr CreateTexts kTexts = {L"UMDDdiDevice::CreateVertexShaderDecl NULL == pShader\n",
        L"UMDDdiDevice::CreateVertexShaderDecl CreateDecl failed! 0x%x\n",
        L"<<< UMDDdiDevice::CreateVertexShaderDecl 0x%x\n"};
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::CreateVertexShaderDecl\n");
    if (!pCreate)
        return S_OK;
    D3DVERTEXELEMENT9 elements[MAXD3DDECLLENGTH + 1];
    if (!CopyElements(elements, pElements, pCreate->NumVertexElements))
        return UMDFail(
            E_FAIL, L"UMDDdiDevice::CreateVertexShaderDecl failed! NumVertexElements:%d\n", pCreate->NumVertexElements);
    return CreateShader<UMDShaderVertex, D3DVERTEXELEMENT9>(
        this, &pCreate->ShaderHandle, kTexts, &UMDShaderVertex::CreateDecl, elements);
}

HRESULT UMDDdiDevice::DeleteVertexShaderDecl(HANDLE hVertexShaderDecl)
{
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::DeleteVertexShaderDecl\n");
    return DeleteShader(
        ToShaderVertex(hVertexShaderDecl), &UMDShaderVertex::DeleteDecl, L"<<< UMDDdiDevice::DeleteVertexShaderDecl\n");
}

HRESULT UMDDdiDevice::SetVertexShaderDecl(HANDLE hVertexShaderDecl)
{
    // The first text names the function's setter.
    static constexpr SetTexts kTexts = {
        L"UMDDdiDevice::SetVertexShaderFunc SetDecl failed! 0x%x\n", L"<<< UMDDdiDevice::SetVertexShaderDecl\n"};
    UMD_TRACE(UMDTRACE_ENTER, L">>> UMDDdiDevice::SetVertexShaderDecl\n");
    return SetOrRelease(ToShaderVertex(hVertexShaderDecl), &UMDShaderVertex::SetDecl, kTexts);
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
