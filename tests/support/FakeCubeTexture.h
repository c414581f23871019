// A cube texture of the fake device: six chains of levels that share the texture's references.
#pragma once

#include "FakeTexture.h"

#include <array>

namespace tesslo::test
{

class FakeCubeTexture : public FakeCubeTextureMethods
{
public:
    /// @param desc of level 0 of any face. @param levels 0 for the whole chains.
    FakeCubeTexture(
        FakeObjects& objects, const std::string& name, const D3DSURFACE_DESC& desc, UINT levels, FakeRows rows);

    FakeSurface& Level(UINT face, UINT level) { return *m_Faces.at(face).at(level); }

    HRESULT STDMETHODCALLTYPE GetLevelDesc(UINT level, D3DSURFACE_DESC* pDesc) override;
    HRESULT STDMETHODCALLTYPE GetCubeMapSurface(
        D3DCUBEMAP_FACES face, UINT level, IDirect3DSurface9** ppSurface) override;
    HRESULT STDMETHODCALLTYPE LockRect(
        D3DCUBEMAP_FACES face, UINT level, D3DLOCKED_RECT* pLockedRect, const RECT* pRect, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE UnlockRect(D3DCUBEMAP_FACES face, UINT level) override;
    DWORD STDMETHODCALLTYPE GetLevelCount() override;
    D3DRESOURCETYPE STDMETHODCALLTYPE GetType() override { return D3DRTYPE_CUBETEXTURE; }

private:
    FakeSurface* InternalFind(UINT face, UINT level);

    static constexpr UINT kFaceCount = 6;
    std::array<std::vector<std::unique_ptr<FakeSurface>>, kFaceCount> m_Faces;
};

}  // namespace tesslo::test
