#include "FakeCubeTexture.h"

namespace tesslo::test
{

FakeCubeTexture::FakeCubeTexture(
    FakeObjects& objects, const std::string& name, const D3DSURFACE_DESC& desc, UINT levels, FakeRows rows)
    : FakeCubeTextureMethods(objects, name)
{
    for (UINT face = 0; face < kFaceCount; face++)
        m_Faces[face] = MakeFakeLevels(objects, name + "[" + std::to_string(face) + "]", desc, levels, rows,
            static_cast<IDirect3DCubeTexture9*>(this));
}

FakeSurface* FakeCubeTexture::InternalFind(UINT face, UINT level)
{
    return face < kFaceCount && level < m_Faces[face].size() ? m_Faces[face][level].get() : nullptr;
}

HRESULT FakeCubeTexture::GetLevelDesc(UINT level, D3DSURFACE_DESC* pDesc)
{
    if (HRESULT hr = FakeCubeTextureMethods::GetLevelDesc(level, pDesc); FAILED(hr))
        return hr;
    FakeSurface* pSurface = InternalFind(0, level);
    if (!pSurface)
        return D3DERR_INVALIDCALL;
    *pDesc = pSurface->Desc();
    return S_OK;
}

HRESULT FakeCubeTexture::GetCubeMapSurface(D3DCUBEMAP_FACES face, UINT level, IDirect3DSurface9** ppSurface)
{
    if (HRESULT hr = FakeCubeTextureMethods::GetCubeMapSurface(face, level, ppSurface); FAILED(hr))
        return hr;
    FakeSurface* pSurface = InternalFind(face, level);
    if (!pSurface)
        return D3DERR_INVALIDCALL;
    pSurface->AddRef();
    *ppSurface = pSurface;
    return S_OK;
}

HRESULT FakeCubeTexture::LockRect(
    D3DCUBEMAP_FACES face, UINT level, D3DLOCKED_RECT* pLockedRect, const RECT* pRect, DWORD flags)
{
    if (HRESULT hr = FakeCubeTextureMethods::LockRect(face, level, pLockedRect, pRect, flags); FAILED(hr))
        return hr;
    FakeSurface* pSurface = InternalFind(face, level);
    return pSurface ? pSurface->Pixels().Lock(pLockedRect, pRect) : D3DERR_INVALIDCALL;
}

HRESULT FakeCubeTexture::UnlockRect(D3DCUBEMAP_FACES face, UINT level)
{
    if (HRESULT hr = FakeCubeTextureMethods::UnlockRect(face, level); FAILED(hr))
        return hr;
    FakeSurface* pSurface = InternalFind(face, level);
    return pSurface ? pSurface->Pixels().Unlock() : D3DERR_INVALIDCALL;
}

DWORD FakeCubeTexture::GetLevelCount()
{
    FakeCubeTextureMethods::GetLevelCount();
    return static_cast<DWORD>(m_Faces[0].size());
}

}  // namespace tesslo::test
