// A surface of the fake device, alone or as a level of a texture.
#pragma once

#include "FakeMethods.h"
#include "FakePixels.h"

namespace tesslo::test
{

class FakeSurface : public FakeSurfaceMethods
{
public:
    /// @param pContainer the texture whose references a level shares; null for a surface of its own.
    FakeSurface(FakeObjects& objects, const std::string& name, const D3DSURFACE_DESC& desc, FakeRows rows,
        IUnknown* pContainer = nullptr);

    const D3DSURFACE_DESC& Desc() const { return m_Desc; }
    FakePixels& Pixels() { return m_Pixels; }

    bool IsPart() const override { return m_pContainer != nullptr; }
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetDesc(D3DSURFACE_DESC* pDesc) override;
    HRESULT STDMETHODCALLTYPE LockRect(D3DLOCKED_RECT* pLockedRect, const RECT* pRect, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE UnlockRect() override;
    D3DRESOURCETYPE STDMETHODCALLTYPE GetType() override { return D3DRTYPE_SURFACE; }

protected:
    void LastRelease() override;

private:
    D3DSURFACE_DESC m_Desc;
    FakePixels m_Pixels;
    IUnknown* m_pContainer;
};

}  // namespace tesslo::test
