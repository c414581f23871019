// A cube texture: six faces, each with its levels. Sub-resources are counted face by face, level by level.
//
// Owns the delegated cube texture, the delegated surface of every face and level, and a kernel-mode allocation, shared
// or not. Runtime's thread only.
#pragma once

#include "resources/UMDRscTexture.h"

class UMDRscCubeTexture : public UMDRscTexture
{
public:
    UMDRscCubeTexture(UMDDdiDevice* pDevice, HANDLE hResourceOS, const D3DDDIARG_CREATERESOURCE* pCreate,
        BOOL openResource, DWORD usage, D3DPOOL pool);
    ~UMDRscCubeTexture() override;

    /// Locks face 0 level 0 whole, but only when areaValid is set.
    HRESULT Lock(UINT areaValid, UINT offset, UINT size, void** ppData, UINT* pPitch, DWORD flags) override;
    HRESULT Unlock() override;
    D3DPOOL GetPool() const override { return m_CubePool; }
    HRESULT Create() override;
    void Destroy() override;
    IDirect3DSurface9* GetSurface(UINT face, UINT level) override;
    /// Updates the whole of a video-memory cube; rectangles are ignored and the runtime's memory is not uploaded first.
    HRESULT TexBlt(const RECT* pSrcRect, UMDRscBase* pDst, const RECT* pDstPoint) override;

    /// The delegated cube texture, borrowed; null until Create.
    IDirect3DCubeTexture9* GetCubeTexture() const { return m_pCubeTexture.Get(); }

private:
    static constexpr UINT kFaces = 6;
    static constexpr UINT kMaxLevelsPerFace = 9;  ///< a largest edge of 256 pixels down to 1

    HRESULT InternalGetFaces();

    D3DPOOL m_CubePool;
    UINT m_LevelsPerFace;
    DWORD m_CubeUsage;  ///< D3DUSAGE
    UMDComPtr<IDirect3DCubeTexture9> m_pCubeTexture;
    UMDComPtr<IDirect3DSurface9> m_pFaceSurface[kFaces * kMaxLevelsPerFace];  ///< face * m_LevelsPerFace + level
    HANDLE m_CubeSharedHandle;  ///< always null: cubes are created unshared
};
