// A texture of the fake device: a chain of levels, each a surface that shares the texture's references.
#pragma once

#include "FakeSurface.h"

#include <memory>
#include <vector>

namespace tesslo::test
{

class FakeTexture : public FakeTextureMethods
{
public:
    /// @param desc of level 0. @param levels 0 for the whole chain.
    FakeTexture(FakeObjects& objects, const std::string& name, const D3DSURFACE_DESC& desc, UINT levels, FakeRows rows);

    FakeSurface& Level(UINT level) { return *m_Levels.at(level); }

    HRESULT STDMETHODCALLTYPE GetLevelDesc(UINT level, D3DSURFACE_DESC* pDesc) override;
    HRESULT STDMETHODCALLTYPE GetSurfaceLevel(UINT level, IDirect3DSurface9** ppSurface) override;
    HRESULT STDMETHODCALLTYPE LockRect(
        UINT level, D3DLOCKED_RECT* pLockedRect, const RECT* pRect, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE UnlockRect(UINT level) override;
    DWORD STDMETHODCALLTYPE GetLevelCount() override;
    D3DRESOURCETYPE STDMETHODCALLTYPE GetType() override { return D3DRTYPE_TEXTURE; }

private:
    std::vector<std::unique_ptr<FakeSurface>> m_Levels;
};

/// The levels of one chain, named "owner[level]". @param levels 0 for the whole chain.
std::vector<std::unique_ptr<FakeSurface>> MakeFakeLevels(FakeObjects& objects, const std::string& owner,
    const D3DSURFACE_DESC& desc, UINT levels, FakeRows rows, IUnknown* pContainer);

}  // namespace tesslo::test
