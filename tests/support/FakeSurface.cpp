#include "FakeSurface.h"

namespace tesslo::test
{

FakeSurface::FakeSurface(
    FakeObjects& objects, const std::string& name, const D3DSURFACE_DESC& desc, FakeRows rows, IUnknown* pContainer)
    : FakeSurfaceMethods(objects, name), m_Desc(desc), m_Pixels(desc.Format, desc.Width, desc.Height, rows),
      m_pContainer(pContainer)
{
}

ULONG FakeSurface::AddRef()
{
    if (m_pContainer)
        m_pContainer->AddRef();
    return FakeSurfaceMethods::AddRef();
}

ULONG FakeSurface::Release()
{
    // Taken first: the last reference takes this object with it.
    IUnknown* pContainer = m_pContainer;
    const ULONG references = FakeSurfaceMethods::Release();
    if (pContainer)
        pContainer->Release();
    return references;
}

void FakeSurface::LastRelease()
{
    if (!m_pContainer)
        delete this;
}

HRESULT FakeSurface::GetDesc(D3DSURFACE_DESC* pDesc)
{
    if (HRESULT hr = FakeSurfaceMethods::GetDesc(pDesc); FAILED(hr))
        return hr;
    *pDesc = m_Desc;
    return S_OK;
}

HRESULT FakeSurface::LockRect(D3DLOCKED_RECT* pLockedRect, const RECT* pRect, DWORD flags)
{
    if (HRESULT hr = FakeSurfaceMethods::LockRect(pLockedRect, pRect, flags); FAILED(hr))
        return hr;
    return m_Pixels.Lock(pLockedRect, pRect);
}

HRESULT FakeSurface::UnlockRect()
{
    if (HRESULT hr = FakeSurfaceMethods::UnlockRect(); FAILED(hr))
        return hr;
    return m_Pixels.Unlock();
}

}  // namespace tesslo::test
