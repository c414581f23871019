// A vertex buffer. One in system memory is never locked on the delegated device by the runtime: the runtime writes into
// its own memory, and a draw uploads it (WriteToDelegated). Runtime's thread only.
#pragma once

#include "resources/UMDRscBase.h"
#include "util/UMDComPtr.h"

class UMDRscVertexBuffer : public UMDRscBase
{
public:
    /// @param openResource non-zero leaves the object empty: buffers are not shared.
    UMDRscVertexBuffer(UMDDdiDevice* pDevice, HANDLE hResourceOS, const D3DDDIARG_CREATERESOURCE* pCreate,
        BOOL openResource, DWORD usage, D3DPOOL pool);
    ~UMDRscVertexBuffer() override;

    HRESULT Lock(UINT areaValid, UINT offset, UINT size, void** ppData, UINT* pPitch, DWORD flags) override;
    HRESULT Unlock() override;
    HRESULT Create() override;
    void Destroy() override;

    /// Uploads the runtime's memory, from its start and whole. Without such memory there is nothing to do.
    /// @param offset bytes, where it goes in the delegated buffer.
    HRESULT WriteToDelegated(UINT offset);

    /// The delegated buffer, borrowed; null until Create.
    IDirect3DVertexBuffer9* GetVertexBuffer() const { return m_pVertexBuffer.Get(); }
    /// The runtime's memory, null when it has none.
    const BYTE* SystemMemory() const { return m_pSysMem; }

private:
    UINT m_Length;     ///< bytes
    DWORD m_VBUsage;   ///< D3DUSAGE
    DWORD m_Fvf;       ///< flexible vertex format bits
    D3DPOOL m_VBPool;  ///< D3DPOOL_DEFAULT or D3DPOOL_SYSTEMMEM
    UMDComPtr<IDirect3DVertexBuffer9> m_pVertexBuffer;
    void* m_pLocked;     ///< address of the newest lock
    UINT m_LockedSize;   ///< bytes of the newest lock; of a row for system memory
    BYTE* m_pSysMem;     ///< the runtime's
    UINT m_SysMemPitch;  ///< bytes from row to row
    UINT m_SurfCount;    ///< entries of the runtime's list
};
