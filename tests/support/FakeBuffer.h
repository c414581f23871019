// The vertex and index buffers of the fake device: real memory, one lock at a time.
#pragma once

#include "FakeMethods.h"
#include "Fences.h"

#include <vector>

namespace tesslo::test
{

/// @tparam Methods the recorded methods of the interface. @tparam Desc its description.
template <typename Methods, typename Desc>
class FakeBuffer : public Methods
{
public:
    /// @param fenced whether the memory ends at a page without access.
    FakeBuffer(FakeObjects& objects, const std::string& name, const Desc& desc, bool fenced = false)
        : Methods(objects, name), m_Desc(desc), m_Fenced(fenced ? desc.Size : 0), m_Bytes(fenced ? 0 : desc.Size)
    {
    }

    /// None when they are fenced.
    std::vector<BYTE>& Bytes() { return m_Bytes; }
    bool IsLocked() const { return m_bLocked; }

    /// Locks from an offset on; a size of 0 means all.
    HRESULT STDMETHODCALLTYPE Lock(UINT offset, UINT size, void** ppData, DWORD flags) override
    {
        if (HRESULT hr = Methods::Lock(offset, size, ppData, flags); FAILED(hr))
            return hr;
        const size_t all = m_Fenced.Get() ? m_Fenced.Size() : m_Bytes.size();
        if (m_bLocked || offset > all || size > all - offset)
            return D3DERR_INVALIDCALL;
        m_bLocked = true;
        *ppData = (m_Fenced.Get() ? m_Fenced.Get() : m_Bytes.data()) + offset;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE Unlock() override
    {
        if (HRESULT hr = Methods::Unlock(); FAILED(hr))
            return hr;
        if (!m_bLocked)
            return D3DERR_INVALIDCALL;
        m_bLocked = false;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetDesc(Desc* pDesc) override
    {
        if (HRESULT hr = Methods::GetDesc(pDesc); FAILED(hr))
            return hr;
        *pDesc = m_Desc;
        return S_OK;
    }

    D3DRESOURCETYPE STDMETHODCALLTYPE GetType() override { return m_Desc.Type; }

private:
    Desc m_Desc;
    FencedBytes m_Fenced;
    std::vector<BYTE> m_Bytes;
    bool m_bLocked = false;
};

using FakeVertexBuffer = FakeBuffer<FakeVertexBufferMethods, D3DVERTEXBUFFER_DESC>;
using FakeIndexBuffer = FakeBuffer<FakeIndexBufferMethods, D3DINDEXBUFFER_DESC>;

}  // namespace tesslo::test
