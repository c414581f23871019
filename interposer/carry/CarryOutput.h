// The back buffers of the program's swap chains and the frames that they become: each back buffer is a primary of the
// driver, which a present flips.
#pragma once

#include "host/runtime/HostImage.h"
#include "host/runtime/HostResource.h"

#include <d3d9.h>

#include <map>
#include <memory>
#include <vector>

class CarryDevice;

class CarryOutput
{
public:
    explicit CarryOutput(CarryDevice& device) : m_Device(device) {}

    /// Gives each back buffer of the device's swap chains its primary, and binds what the platform has bound.
    void Attach();
    /// A frame of the swap chain is about to be presented.
    void Present(IDirect3DSwapChain9* pChain);
    /// Of the device's own swap chains, which its Present shows.
    void PresentAll();

private:
    /// A primary that was flipped must live as long as the driver's device: flips fail for good without it. One whose
    /// back buffer has gone waits for the next of its size.
    HostResource& Primary(IDirect3DSurface9* pBackBuffer, const D3DSURFACE_DESC& desc);
    void Judge(IDirect3DSurface9* pBackBuffer, const D3DSURFACE_DESC& desc);

    CarryDevice& m_Device;
    std::map<IDirect3DSurface9*, std::unique_ptr<HostResource>> m_Primaries;
    UINT64 m_Flips = 0;
};
