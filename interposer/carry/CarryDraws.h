// What is drawn, and from where: streams, indices, draws from buffers and from the program's memory.
#pragma once

#include "host/runtime/HostDevice.h"
#include "interposer/carry/CarryObjects.h"

#include <d3d9.h>

class CarryState;

class CarryDraws
{
public:
    /// All are borrowed.
    CarryDraws(IDirect3DDevice9* pPlatform, HostDevice& driver, CarryState& state)
        : m_pPlatform(pPlatform), m_Driver(driver), m_State(state)
    {
    }

    void Sync();
    void Stream(UINT stream, IDirect3DVertexBuffer9* pBuffer, UINT offset, UINT stride);
    void StreamFrequency(UINT stream, UINT divider);
    void Indices(IDirect3DIndexBuffer9* pBuffer);
    void Draw(D3DPRIMITIVETYPE type, UINT first, UINT count);
    void DrawIndexed(D3DPRIMITIVETYPE type, INT base, UINT least, UINT vertices, UINT first, UINT count);
    void DrawMemory(D3DPRIMITIVETYPE type, UINT count, const void* pVertices, UINT stride);
    void DrawIndexedMemory(D3DPRIMITIVETYPE type, UINT least, UINT vertices, UINT count, const void* pIndices,
        D3DFORMAT format, const void* pVertices, UINT stride);
    /// The resource is about to go.
    void Forget(const CarryResource& resource);

private:
    IDirect3DDevice9* m_pPlatform;
    HostDevice& m_Driver;
    CarryState& m_State;
    // What the driver has; null where the next binding is carried in any case.
    std::shared_ptr<CarryResource> m_pStream;
    UINT m_Offset = 0;
    UINT m_Stride = 0;
    std::shared_ptr<CarryResource> m_pIndices;
};
