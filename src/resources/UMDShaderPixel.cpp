#include "resources/UMDShaderPixel.h"

#include "device/UMDDdiDevice.h"
#include "util/UMDUtilDebugTrace.h"

UMDShaderPixel::UMDShaderPixel(UMDDdiDevice* pDevice) : UMDRscBase(pDevice, nullptr, UMDRESOURCETYPE_PIXELSHADER) {}

UMDShaderPixel::~UMDShaderPixel() = default;

HRESULT UMDShaderPixel::Create(const UINT* pCode)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderPixel::Create\n");
    if (!m_pDeviceDelegated)
        return UMDFail(E_FAIL, L"UMDShaderPixel::Create failed! m_pDeviceDelegated = NULL\n");
    const auto* pFunction = reinterpret_cast<const DWORD*>(pCode);
    if (HRESULT hr = m_pDeviceDelegated->CreatePixelShader(pFunction, m_pPixelShader.Put()); FAILED(hr))
        return UMDFail(hr, L"UMDShaderPixel::Create CreatePixelShader failed! 0x%x\n", hr);
    return S_OK;
}

void UMDShaderPixel::Delete()
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderPixel::Delete\n");
    m_pPixelShader.Reset();
}

HRESULT UMDShaderPixel::Set()
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderPixel::Set\n");
    if (HRESULT hr = m_pDeviceDelegated->SetPixelShader(m_pPixelShader.Get()); FAILED(hr))
        return UMDFail(hr, L"UMDShaderPixel::Set SetPixelShader failed! 0x%x\n", hr);
    return S_OK;
}

HRESULT UMDShaderPixel::SetConst(
    UMDDdiDevice* pDevice, const D3DDDIARG_SETPIXELSHADERCONST* pSetConst, const FLOAT* pData)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderPixel::SetConst\n");
    const HRESULT hr = pDevice->GetDevice()->SetPixelShaderConstantF(pSetConst->Register, pData, pSetConst->Count);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDShaderPixel::SetConst SetPixelShaderConstantF failed! 0x%x\n", hr);
    return S_OK;
}

HRESULT UMDShaderPixel::SetConstI(
    UMDDdiDevice* pDevice, const D3DDDIARG_SETPIXELSHADERCONSTI* pSetConst, const INT* pData)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderPixel::SetConstI\n");
    const HRESULT hr = pDevice->GetDevice()->SetPixelShaderConstantI(pSetConst->Register, pData, pSetConst->Count);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDShaderPixel::SetConstI SetPixelShaderConstantI failed! 0x%x\n", hr);
    return S_OK;
}

HRESULT UMDShaderPixel::SetConstB(
    UMDDdiDevice* pDevice, const D3DDDIARG_SETPIXELSHADERCONSTB* pSetConst, const BOOL* pData)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderPixel::SetConstB\n");
    const HRESULT hr = pDevice->GetDevice()->SetPixelShaderConstantB(pSetConst->Register, pData, pSetConst->Count);
    if (FAILED(hr))
        return UMDFail(hr, L"UMDShaderPixel::SetConstB SetPixelShaderConstantB failed! 0x%x\n", hr);
    return S_OK;
}
