// The runtime's side of one device: created on an adapter, driven through the table of entries that the driver filled.
//
// The operations below are the runtime's everyday calls, with their results checked: each throws HostError with the
// entry's name. Whatever they do not offer is called through Functions().
#pragma once

#include "host/runtime/HostAdapter.h"
#include "host/runtime/HostImage.h"
#include "host/runtime/HostResource.h"

#include <functional>
#include <memory>
#include <span>

/// How long a flip took, in milliseconds.
struct HostFlipTime
{
    double m_Work;   ///< until the driver told the kernel-mode driver: the copy of the frame
    double m_Pause;  ///< from there on: the driver's fixed pause behind each flip
};

class HostDevice
{
public:
    explicit HostDevice(HostAdapter& adapter);
    /// Destroys it. Resources go first.
    ~HostDevice();
    HostDevice(const HostDevice&) = delete;
    HostDevice& operator=(const HostDevice&) = delete;

    HANDLE Handle() const { return m_hDevice; }
    const D3DDDI_DEVICEFUNCS& Functions() const { return m_Functions; }
    HostKernel& Kernel() const { return m_Adapter.Kernel(); }

    /// Calls an entry that has no operation below. Throws HostError with its name. HOST_CALL fills the name in.
    template <typename Entry, typename... Arguments>
    void Call(Entry D3DDDI_DEVICEFUNCS::* pEntry, const char* pName, Arguments... arguments)
    {
        if (m_OnCall)
            m_OnCall(pName);
        HostCheck((m_Functions.*pEntry)(m_hDevice, arguments...), pName);
    }
    /// From now on each call through an operation or Call is told, by the name of its entry.
    void WatchCalls(std::function<void(const char*)> onCall) { m_OnCall = std::move(onCall); }

    std::unique_ptr<HostResource> CreatePrimary(UINT width, UINT height, UINT sourceId, D3DDDI_ROTATION rotation);
    std::unique_ptr<HostResource> CreateRenderTarget(UINT width, UINT height);
    /// A texture that can be drawn into.
    std::unique_ptr<HostResource> CreateRenderTargetTexture(UINT width, UINT height);
    /// A texture with a picture, brought there as the runtime does: from a copy in its own memory, by a blit.
    std::unique_ptr<HostResource> CreateTexture(const HostImage& image);
    std::unique_ptr<HostResource> CreateDepthStencil(UINT width, UINT height);

    /// Binds target 0, and the viewport to all of it, as the runtime does.
    void SetRenderTarget(const HostResource& target);
    /// Null for none.
    void SetDepthStencil(const HostResource* pDepthStencil);
    void Clear(UINT color, std::span<const RECT> rects = {});
    /// Colour and depth of the whole target.
    void ClearAll(UINT color, float depth);
    void ColorFill(const HostResource& target, const RECT& rect, UINT color);
    void Blt(const HostResource& source, const RECT& from, const HostResource& target, const RECT& to);
    /// Locks, lets the work at the memory, unlocks.
    /// @param lock what is locked, and how; the work gets it with the driver's answer in it.
    void WithLock(D3DDDIARG_LOCK lock, const std::function<void(const D3DDDIARG_LOCK&)>& work);
    /// Fills a vertex or index buffer from its start.
    void WriteBuffer(const HostResource& buffer, const void* pData, UINT bytes);
    /// Writes a part of it. @param flags ranges apart; Discard and NoOverwrite as the application said.
    void WriteBuffer(const HostResource& buffer, UINT offset, const void* pData, UINT bytes, D3DDDI_LOCKFLAGS flags);
    void Flush();
    void SetDisplayMode(const HostResource& primary);
    HostFlipTime Flip(const HostResource& primary) { return Flip(primary.Handle()); }
    /// @param hPrimary the driver's handle.
    HostFlipTime Flip(HANDLE hPrimary);
    /// Copies a render target back through a blit into system memory and a lock.
    HostImage ReadBack(const HostResource& target);

private:
    HostAdapter& m_Adapter;
    HANDLE m_hDevice = nullptr;
    D3DDDI_DEVICEFUNCS m_Functions{};
    std::function<void(const char*)> m_OnCall;
};

#define HOST_CALL(device, entry, ...) (device).Call(&D3DDDI_DEVICEFUNCS::entry, #entry, __VA_ARGS__)
