#include "FakeTexture.h"

#include <algorithm>

namespace tesslo::test
{

std::vector<std::unique_ptr<FakeSurface>> MakeFakeLevels(FakeObjects& objects, const std::string& owner,
    const D3DSURFACE_DESC& desc, UINT levels, FakeRows rows, IUnknown* pContainer)
{
    std::vector<std::unique_ptr<FakeSurface>> chain;
    D3DSURFACE_DESC level = desc;
    for (;;)
    {
        const std::string name = owner + "[" + std::to_string(chain.size()) + "]";
        chain.push_back(std::make_unique<FakeSurface>(objects, name, level, rows, pContainer));
        if (chain.size() == levels || (level.Width <= 1 && level.Height <= 1))
            return chain;
        level.Width = std::max(level.Width / 2, 1U);
        level.Height = std::max(level.Height / 2, 1U);
    }
}

FakeTexture::FakeTexture(
    FakeObjects& objects, const std::string& name, const D3DSURFACE_DESC& desc, UINT levels, FakeRows rows)
    : FakeTextureMethods(objects, name),
      m_Levels(MakeFakeLevels(objects, name, desc, levels, rows, static_cast<IDirect3DTexture9*>(this)))
{
}

HRESULT FakeTexture::GetLevelDesc(UINT level, D3DSURFACE_DESC* pDesc)
{
    if (HRESULT hr = FakeTextureMethods::GetLevelDesc(level, pDesc); FAILED(hr))
        return hr;
    if (level >= m_Levels.size())
        return D3DERR_INVALIDCALL;
    *pDesc = m_Levels[level]->Desc();
    return S_OK;
}

HRESULT FakeTexture::GetSurfaceLevel(UINT level, IDirect3DSurface9** ppSurface)
{
    if (HRESULT hr = FakeTextureMethods::GetSurfaceLevel(level, ppSurface); FAILED(hr))
        return hr;
    if (level >= m_Levels.size())
        return D3DERR_INVALIDCALL;
    m_Levels[level]->AddRef();
    *ppSurface = m_Levels[level].get();
    return S_OK;
}

HRESULT FakeTexture::LockRect(UINT level, D3DLOCKED_RECT* pLockedRect, const RECT* pRect, DWORD flags)
{
    if (HRESULT hr = FakeTextureMethods::LockRect(level, pLockedRect, pRect, flags); FAILED(hr))
        return hr;
    return level < m_Levels.size() ? m_Levels[level]->Pixels().Lock(pLockedRect, pRect) : D3DERR_INVALIDCALL;
}

HRESULT FakeTexture::UnlockRect(UINT level)
{
    if (HRESULT hr = FakeTextureMethods::UnlockRect(level); FAILED(hr))
        return hr;
    return level < m_Levels.size() ? m_Levels[level]->Pixels().Unlock() : D3DERR_INVALIDCALL;
}

DWORD FakeTexture::GetLevelCount()
{
    FakeTextureMethods::GetLevelCount();
    return static_cast<DWORD>(m_Levels.size());
}

}  // namespace tesslo::test
