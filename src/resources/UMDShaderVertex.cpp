#include "resources/UMDShaderVertex.h"

#include "device/UMDDdiDevice.h"
#include "util/UMDUtilDebugTrace.h"

UMDShaderVertex::UMDShaderVertex(UMDDdiDevice* pDevice) : UMDRscBase(pDevice, nullptr, UMDRESOURCETYPE_VERTEXSHADER) {}

UMDShaderVertex::~UMDShaderVertex() = default;

HRESULT UMDShaderVertex::Create(const UINT* pCode)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderVertex::Create\n");
    if (!m_pDeviceDelegated)
        return UMDFail(E_FAIL, L"UMDShaderVertex::Create failed! m_pDeviceDelegated = NULL\n");
    const auto* pFunction = reinterpret_cast<const DWORD*>(pCode);
    if (HRESULT hr = m_pDeviceDelegated->CreateVertexShader(pFunction, m_pVertexShader.Put()); FAILED(hr))
        return UMDFail(hr, L"UMDShaderVertex::Create CreateVertexShader failed! 0x%x\n", hr);
    return S_OK;
}

void UMDShaderVertex::Delete()
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderVertex::Delete\n");
    m_pVertexShader.Reset();
}

HRESULT UMDShaderVertex::Set()
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderVertex::Set\n");
    // An object that holds only a declaration leaves the delegated shader as it is; a pixel shader object unbinds.
    if (!m_pVertexShader)
        return S_OK;
    if (HRESULT hr = m_pDeviceDelegated->SetVertexShader(m_pVertexShader.Get()); FAILED(hr))
        return UMDFail(hr, L"UMDShaderVertex::Create SetVertexShader failed! 0x%x\n", hr);
    return S_OK;
}

HRESULT UMDShaderVertex::CreateDecl(const D3DVERTEXELEMENT9* pElements)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderVertex::CreateDecl\n");
    if (!m_pDeviceDelegated)
        return UMDFail(E_FAIL, L"UMDShaderVertex::CreateDecl failed! m_pDeviceDelegated = NULL\n");
    if (HRESULT hr = m_pDeviceDelegated->CreateVertexDeclaration(pElements, m_pVertexDeclaration.Put()); FAILED(hr))
        return UMDFail(hr, L"UMDShaderVertex::CreateDecl CreateVertexDeclaration failed! 0x%x\n", hr);
    return S_OK;
}

void UMDShaderVertex::DeleteDecl()
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderVertex::DeleteDecl\n");
    m_pVertexDeclaration.Reset();
}

HRESULT UMDShaderVertex::SetDecl()
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderVertex::SetDecl\n");
    if (!m_pVertexDeclaration)
        return S_OK;
    if (HRESULT hr = m_pDeviceDelegated->SetVertexDeclaration(m_pVertexDeclaration.Get()); FAILED(hr))
        return UMDFail(hr, L"UMDShaderVertex::SetDecl SetVertexDeclaration failed! 0x%x\n", hr);
    return S_OK;
}

void UMDShaderVertex::ReleaseDelegated()
{
    m_pVertexShader.Reset();
    m_pVertexDeclaration.Reset();
}

HRESULT UMDShaderVertex::SetConst(
    UMDDdiDevice* pDevice, const D3DDDIARG_SETVERTEXSHADERCONST* pSetConst, const void* pData)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderVertex::SetConst\n");
    if (!pData)
        return S_OK;
    const HRESULT hr = pDevice->GetDevice()->SetVertexShaderConstantF(
        pSetConst->Register, static_cast<const FLOAT*>(pData), pSetConst->Count);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDShaderVertex::SetConst SetVertexShaderConstantF failed! 0x%x\n", hr);
    return S_OK;
}
