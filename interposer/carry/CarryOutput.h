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
    /// Borrows the device.
    explicit CarryOutput(CarryDevice& device) : m_Device(device) {}

    /// Gives the back buffers and the depth buffer of the device's own swap chains what the driver needs of them.
    void Attach();
    void AttachChain(IDirect3DSwapChain9* pChain);
    /// A frame of the swap chain is about to be presented.
    void Present(IDirect3DSwapChain9* pChain);
    /// Of the device's own swap chains, which its Present shows.
    void PresentAll() { ForEachChain(&CarryOutput::Present); }
    /// The program has read what a swap chain shows: in the answering mode it becomes the driver's last frame. What
    /// lies on the screen beside the frame, or over it, is not the driver's: nothing is compared.
    void AnswerFront(IDirect3DSwapChain9* pChain, IDirect3DSurface9* pMemory);

private:
    void ForEachChain(void (CarryOutput::*pWork)(IDirect3DSwapChain9*));
    std::shared_ptr<HostResource> TakePrimary(UINT width, UINT height, D3DFORMAT format);
    void Flip(std::shared_ptr<HostResource> pPrimary);
    void Judge(IDirect3DSwapChain9* pChain, IDirect3DSurface9* pBackBuffer, const D3DSURFACE_DESC& desc);

    CarryDevice& m_Device;
    /// A primary that was flipped must live as long as the driver's device: flips fail for good without it. One whose
    /// back buffer has gone waits here for the next of its kind.
    std::vector<std::shared_ptr<HostResource>> m_Primaries;
    /// What each swap chain shows, from the driver; none is kept where nothing is compared.
    std::map<IDirect3DSwapChain9*, HostImage> m_Fronts;
};
