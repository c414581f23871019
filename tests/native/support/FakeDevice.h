// What the hand-off's cases need of the delegated device: surfaces that count their references and end with the last,
// so that a use behind it is found.
#pragma once

#include <d3d9.h>

#include <atomic>

namespace tesslo::test
{

class FakeSurface final : public IDirect3DSurface9
{
public:
    ULONG AddRef() override { return ++m_References; }
    ULONG Release() override
    {
        const ULONG references = --m_References;
        if (references == 0)
            delete this;
        return references;
    }

private:
    ~FakeSurface() = default;

    std::atomic<ULONG> m_References = 1;
};

class FakeDevice
{
public:
    HRESULT CreateOffscreenPlainSurface(UINT, UINT, D3DFORMAT, D3DPOOL, IDirect3DSurface9** ppSurface, HANDLE*)
    {
        *ppSurface = new FakeSurface;
        return S_OK;
    }
};

}  // namespace tesslo::test
