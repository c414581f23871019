// An index buffer: locks go to the delegated buffer, whatever the pool. Runtime's thread only.
#pragma once

#include "resources/UMDRscBase.h"
#include "util/UMDComPtr.h"

class UMDRscIndexBuffer : public UMDRscBase
{
public:
    /// @param openResource non-zero leaves the object empty: buffers are not shared.
    UMDRscIndexBuffer(UMDDdiDevice* pDevice, HANDLE hResourceOS, const D3DDDIARG_CREATERESOURCE* pCreate,
        BOOL openResource, DWORD usage, D3DPOOL pool);
    ~UMDRscIndexBuffer() override;

    HRESULT Lock(UINT areaValid, UINT offset, UINT size, void** ppData, UINT* pPitch, DWORD flags) override;
    HRESULT Unlock() override;
    HRESULT Create() override;
    void Destroy() override;

    /// The delegated buffer, borrowed; null until Create.
    IDirect3DIndexBuffer9* GetIndexBuffer() const { return m_pIndexBuffer.Get(); }

private:
    UINT m_Length;  ///< bytes
    D3DPOOL m_IBPool;
    D3DDDIFORMAT m_IBFormat;  ///< D3DDDIFMT_INDEX16 or D3DDDIFMT_INDEX32
    DWORD m_IBUsage;          ///< D3DUSAGE
    UMDComPtr<IDirect3DIndexBuffer9> m_pIndexBuffer;
    void* m_pLocked;    ///< address of the newest lock
    UINT m_LockedSize;  ///< bytes of the newest lock
    UINT m_SurfCount;   ///< entries of the runtime's list
};
