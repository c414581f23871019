#include "resources/UMDShaderPixel.h"

#include "device/UMDDdiDevice.h"
#include "util/UMDUtilDebugTrace.h"

namespace
{
/// Sets the registers of one kind. @param pFailed takes the result.
template <auto Setter, typename Argument, typename Data>
HRESULT SetConstants(UMDDdiDevice* pDevice, const Argument* pSetConst, const Data* pData, const wchar_t* pFailed)
{
    const HRESULT hr = (pDevice->GetDevice()->*Setter)(pSetConst->Register, pData, pSetConst->Count);
    if (FAILED(hr))
        return UMDFail(hr, pFailed, hr);
    return S_OK;
}
}  // namespace

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
    return SetConstants<&IDirect3DDevice9Ex::SetPixelShaderConstantF>(
        pDevice, pSetConst, pData, L"UMDShaderPixel::SetConst SetPixelShaderConstantF failed! 0x%x\n");
}

HRESULT UMDShaderPixel::SetConstI(
    UMDDdiDevice* pDevice, const D3DDDIARG_SETPIXELSHADERCONSTI* pSetConst, const INT* pData)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderPixel::SetConstI\n");
    return SetConstants<&IDirect3DDevice9Ex::SetPixelShaderConstantI>(
        pDevice, pSetConst, pData, L"UMDShaderPixel::SetConstI SetPixelShaderConstantI failed! 0x%x\n");
}

HRESULT UMDShaderPixel::SetConstB(
    UMDDdiDevice* pDevice, const D3DDDIARG_SETPIXELSHADERCONSTB* pSetConst, const BOOL* pData)
{
    UMD_TRACE(UMDTRACE_DETAIL, L">>> UMDShaderPixel::SetConstB\n");
    return SetConstants<&IDirect3DDevice9Ex::SetPixelShaderConstantB>(
        pDevice, pSetConst, pData, L"UMDShaderPixel::SetConstB SetPixelShaderConstantB failed! 0x%x\n");
}
