// A pixel shader of the delegated device. Its constants are device state: those operations take the device.
// Runtime's thread only.
#pragma once

#include "resources/UMDRscBase.h"
#include "util/UMDComPtr.h"

class UMDShaderPixel : public UMDRscBase
{
public:
    explicit UMDShaderPixel(UMDDdiDevice* pDevice);
    ~UMDShaderPixel() override;

    using UMDRscBase::Create;
    /// @param pCode shader byte code, with its end token.
    HRESULT Create(const UINT* pCode);
    void Delete();
    /// Binds the shader; an empty object unbinds.
    HRESULT Set();

    static HRESULT SetConst(UMDDdiDevice* pDevice, const D3DDDIARG_SETPIXELSHADERCONST* pSetConst, const FLOAT* pData);
    static HRESULT SetConstI(UMDDdiDevice* pDevice, const D3DDDIARG_SETPIXELSHADERCONSTI* pSetConst, const INT* pData);
    static HRESULT SetConstB(UMDDdiDevice* pDevice, const D3DDDIARG_SETPIXELSHADERCONSTB* pSetConst, const BOOL* pData);

private:
    UMDComPtr<IDirect3DPixelShader9> m_pPixelShader;
};
