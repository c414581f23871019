#include "host/runtime/HostDevice.h"

#include <cstring>

HostDevice::HostDevice(HostAdapter& adapter) : m_Adapter(adapter)
{
    D3DDDIARG_CREATEDEVICE arg{};
    arg.hDevice = Kernel().DeviceHandle();
    arg.Interface = HostAdapter::kInterface;
    arg.Version = HostAdapter::kVersion;
    arg.pCallbacks = &HostKernel::Callbacks();
    arg.pDeviceFuncs = &m_Functions;
    HostCheck(adapter.Functions().pfnCreateDevice(adapter.Handle(), &arg), "pfnCreateDevice");
    m_hDevice = arg.hDevice;
}

HostDevice::~HostDevice()
{
    m_Functions.pfnDestroyDevice(m_hDevice);
}

std::unique_ptr<HostResource> HostDevice::CreatePrimary(
    UINT width, UINT height, UINT sourceId, D3DDDI_ROTATION rotation)
{
    HostResourceDescription description{
        .m_Width = width, .m_Height = height, .m_VidPnSourceId = sourceId, .m_Rotation = rotation};
    description.m_Flags.RenderTarget = 1;
    description.m_Flags.Primary = 1;
    return std::make_unique<HostResource>(*this, description);
}

std::unique_ptr<HostResource> HostDevice::CreateRenderTarget(UINT width, UINT height)
{
    HostResourceDescription description{.m_Width = width, .m_Height = height};
    description.m_Flags.RenderTarget = 1;
    return std::make_unique<HostResource>(*this, description);
}

std::unique_ptr<HostResource> HostDevice::CreateRenderTargetTexture(UINT width, UINT height)
{
    HostResourceDescription description{.m_Width = width, .m_Height = height};
    description.m_Flags.RenderTarget = 1;
    description.m_Flags.Texture = 1;
    return std::make_unique<HostResource>(*this, description);
}

std::unique_ptr<HostResource> HostDevice::CreateTexture(const HostImage& image)
{
    HostResourceDescription description{.m_Width = image.m_Width, .m_Height = image.m_Height};
    description.m_Flags.Texture = 1;
    auto pTexture = std::make_unique<HostResource>(*this, description);
    description.m_Pool = D3DDDIPOOL_SYSTEMMEM;
    description.m_SystemMemoryPitch = image.m_Width * 4;
    HostResource copy(*this, description);
    std::memcpy(copy.SystemMemory(), image.m_Pixels.data(), image.m_Pixels.size() * sizeof(UINT));
    D3DDDIARG_TEXBLT arg{};
    arg.hDstResource = pTexture->Handle();
    arg.hSrcResource = copy.Handle();
    arg.SrcRect = copy.Rect();
    HOST_CALL(*this, pfnTexBlt, &arg);
    return pTexture;
}

std::unique_ptr<HostResource> HostDevice::CreateDepthStencil(UINT width, UINT height)
{
    HostResourceDescription description{.m_Width = width, .m_Height = height, .m_Format = D3DFMT_D24S8};
    description.m_Flags.ZBuffer = 1;
    return std::make_unique<HostResource>(*this, description);
}

void HostDevice::SetRenderTarget(const HostResource& target)
{
    D3DDDIARG_SETRENDERTARGET arg{};
    arg.hRenderTarget = target.Handle();
    HOST_CALL(*this, pfnSetRenderTarget, &arg);
    D3DDDIARG_VIEWPORTINFO viewport{};
    viewport.Width = target.Description().m_Width;
    viewport.Height = target.Description().m_Height;
    HOST_CALL(*this, pfnSetViewport, &viewport);
}

void HostDevice::SetDepthStencil(const HostResource* pDepthStencil)
{
    D3DDDIARG_SETDEPTHSTENCIL arg{};
    arg.hZBuffer = pDepthStencil != nullptr ? pDepthStencil->Handle() : nullptr;
    HOST_CALL(*this, pfnSetDepthStencil, &arg);
}

void HostDevice::Clear(UINT color, std::span<const RECT> rects)
{
    D3DDDIARG_CLEAR arg{};
    arg.Flags = D3DCLEAR_TARGET;
    arg.FillColor = color;
    HOST_CALL(*this, pfnClear, &arg, static_cast<UINT>(rects.size()), rects.data());
}

void HostDevice::ClearAll(UINT color, float depth)
{
    D3DDDIARG_CLEAR arg{};
    arg.Flags = D3DCLEAR_TARGET | D3DCLEAR_ZBUFFER;
    arg.FillColor = color;
    arg.FillDepth = depth;
    HOST_CALL(*this, pfnClear, &arg, 0, nullptr);
}

void HostDevice::ColorFill(const HostResource& target, const RECT& rect, UINT color)
{
    D3DDDIARG_COLORFILL arg{};
    arg.hResource = target.Handle();
    arg.DstRect = rect;
    arg.Color = color;
    HOST_CALL(*this, pfnColorFill, &arg);
}

void HostDevice::Blt(const HostResource& source, const RECT& from, const HostResource& target, const RECT& to)
{
    D3DDDIARG_BLT arg{};
    arg.hSrcResource = source.Handle();
    arg.SrcRect = from;
    arg.hDstResource = target.Handle();
    arg.DstRect = to;
    arg.Flags.Point = 1;
    HOST_CALL(*this, pfnBlt, &arg);
}

void HostDevice::WithLock(D3DDDIARG_LOCK lock, const std::function<void(const D3DDDIARG_LOCK&)>& work)
{
    HOST_CALL(*this, pfnLock, &lock);
    work(lock);
    D3DDDIARG_UNLOCK unlock{};
    unlock.hResource = lock.hResource;
    HOST_CALL(*this, pfnUnlock, &unlock);
}

void HostDevice::WriteBuffer(const HostResource& buffer, const void* pData, UINT bytes)
{
    WriteBuffer(buffer, 0, pData, bytes, {});
}

void HostDevice::WriteBuffer(
    const HostResource& buffer, UINT offset, const void* pData, UINT bytes, D3DDDI_LOCKFLAGS flags)
{
    D3DDDIARG_LOCK lock{};
    lock.hResource = buffer.Handle();
    lock.Range = {offset, bytes};
    lock.Flags = flags;
    lock.Flags.RangeValid = 1;
    WithLock(lock, [&](const D3DDDIARG_LOCK& locked) { std::memcpy(locked.pSurfData, pData, bytes); });
}

void HostDevice::Flush()
{
    Call(&D3DDDI_DEVICEFUNCS::pfnFlush, "pfnFlush");
}

void HostDevice::SetDisplayMode(const HostResource& primary)
{
    D3DDDIARG_SETDISPLAYMODE arg{};
    arg.hResource = primary.Handle();
    HOST_CALL(*this, pfnSetDisplayMode, &arg);
}

HostFlipTime HostDevice::Flip(HANDLE hPrimary)
{
    LARGE_INTEGER frequency, start, end;
    QueryPerformanceFrequency(&frequency);
    const size_t before = Kernel().PresentCount();
    D3DDDIARG_PRESENT arg{};
    arg.hSrcResource = hPrimary;
    arg.Flags.Flip = 1;
    arg.FlipInterval = D3DDDI_FLIPINTERVAL_ONE;
    QueryPerformanceCounter(&start);
    HOST_CALL(*this, pfnPresent, &arg);
    QueryPerformanceCounter(&end);
    if (Kernel().PresentCount() == before)
        throw HostError("pfnPresent succeeded without a present to the kernel-mode driver");
    const LONGLONG reported = Kernel().LastPresent().m_Time;
    const double milliseconds = 1000.0 / static_cast<double>(frequency.QuadPart);
    return {static_cast<double>(reported - start.QuadPart) * milliseconds,
        static_cast<double>(end.QuadPart - reported) * milliseconds};
}

HostImage HostDevice::ReadBack(const HostResource& target)
{
    HostImage image(target.Description().m_Width, target.Description().m_Height);
    HostResourceDescription description = target.Description();
    description.m_Flags.Value = 0;
    description.m_Pool = D3DDDIPOOL_SYSTEMMEM;
    description.m_SystemMemoryPitch = image.m_Width * 4;
    HostResource copy(*this, description);
    Blt(target, target.Rect(), copy, copy.Rect());

    D3DDDIARG_LOCK lock{};
    lock.hResource = copy.Handle();
    lock.Flags.ReadOnly = 1;
    WithLock(lock, [&image](const D3DDDIARG_LOCK& locked) {
        for (UINT y = 0; y < image.m_Height; ++y)
            std::memcpy(&image.m_Pixels[size_t{y} * image.m_Width],
                static_cast<const BYTE*>(locked.pSurfData) + size_t{y} * locked.Pitch, size_t{image.m_Width} * 4);
    });
    for (UINT& pixel : image.m_Pixels)
        pixel &= 0xFFFFFF;
    return image;
}
