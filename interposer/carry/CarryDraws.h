// What is drawn, and from where: streams, indices, draws from buffers and from the program's memory.
#pragma once

#include "host/runtime/HostDevice.h"
#include "interposer/carry/CarryObjects.h"

#include <d3d9.h>

#include <functional>

class CarryDevice;

class CarryDraws
{
public:
    /// Borrows the device.
    explicit CarryDraws(CarryDevice& device) : m_Device(device) {}

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
    void BindStream(std::shared_ptr<CarryResource> pStream, UINT offset, UINT stride);
    void BindIndices(std::shared_ptr<CarryResource> pIndices);
    /// @param draw called with what the program has written into the buffers; draws from there.
    void DrawLongFan(const std::function<void(const BYTE* pVertices, const BYTE* pIndices)>& draw);

    CarryDevice& m_Device;
    // What the driver has; null where the next binding is carried in any case.
    std::shared_ptr<CarryResource> m_pStream;
    UINT m_Offset = 0;
    UINT m_Stride = 0;
    std::shared_ptr<CarryResource> m_pIndices;
};
