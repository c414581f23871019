// A vertex shader or a vertex declaration of the delegated device: the one that was created. Binding the other one
// does nothing. Constants are device state: that operation takes the device. Runtime's thread only.
#pragma once

#include "resources/UMDRscBase.h"
#include "util/UMDComPtr.h"

class UMDShaderVertex : public UMDRscBase
{
public:
    explicit UMDShaderVertex(UMDDdiDevice* pDevice);
    ~UMDShaderVertex() override;

    using UMDRscBase::Create;
    /// @param pCode shader byte code, with its end token.
    HRESULT Create(const UINT* pCode);
    void Delete();
    HRESULT Set();

    /// @param pElements passed on as it is: with the end marker that the caller has put behind it.
    HRESULT CreateDecl(const D3DVERTEXELEMENT9* pElements);
    void DeleteDecl();
    HRESULT SetDecl();

    /// Releases whatever the object holds. Binding it then does nothing.
    void ReleaseDelegated();

    /// Without data nothing is set.
    static HRESULT SetConst(UMDDdiDevice* pDevice, const D3DDDIARG_SETVERTEXSHADERCONST* pSetConst, const void* pData);

private:
    UMDComPtr<IDirect3DVertexDeclaration9> m_pVertexDeclaration;
    UMDComPtr<IDirect3DVertexShader9> m_pVertexShader;
};
