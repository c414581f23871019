#include "interposer/carry/CarryDevice.h"

#include "interposer/carry/CarryDriver.h"
#include "interposer/run/RunLedger.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <vector>

namespace
{

struct Devices
{
    /// One call is carried at a time, of all devices. Calls of the platform's are made with it held, so that nothing
    /// that the platform calls back under a lock of its own may wait for it.
    std::recursive_mutex m_Carrying;
    std::mutex m_Mutex;  ///< guards m_ByPlatform; held for no call
    std::map<IDirect3DDevice9*, std::shared_ptr<CarryDevice>> m_ByPlatform;
    /// Those whose platform devices have gone; guarded by m_Carrying. None is ever ended: a device of the platform's
    /// that is ended while this thread still draws on another takes the other's memory along, now and then.
    std::vector<std::shared_ptr<CarryDevice>> m_Idle;
};

// The process may end while other threads still draw.
Devices& All()
{
    static Devices& devices = *new Devices;
    return devices;
}

std::shared_ptr<CarryDevice> Find(IDirect3DDevice9* pPlatform)
{
    std::lock_guard lock(All().m_Mutex);
    const auto found = All().m_ByPlatform.find(pPlatform);
    return found != All().m_ByPlatform.end() ? found->second : nullptr;
}

/// One that is idle and as good as new, or a new one.
std::shared_ptr<CarryDevice> TakeDevice()
{
    std::vector<std::shared_ptr<CarryDevice>>& idle = All().m_Idle;
    const auto fresh = std::ranges::find_if(idle, [](const auto& pDevice) { return !pDevice->State().HasShaders(); });
    std::shared_ptr<CarryDevice> pDevice;
    if (fresh == idle.end())
    {
        CarryThread::Get().Do([&] { pDevice = std::make_shared<CarryDevice>(); });
        return pDevice;
    }
    pDevice = std::move(*fresh);
    idle.erase(fresh);
    return pDevice;
}

void Try(const std::function<void()>& work)
{
    try
    {
        std::lock_guard lock(All().m_Carrying);
        for (const std::shared_ptr<CarryResource>& pResource : CarryTakeDead())
            pResource->Device().Bury(*pResource);
        work();
    }
    catch (const HostError& error)
    {
        RunCountOne(RunOf().m_Failures, error.what());
    }
}

}  // namespace

CarryDevice::CarryDevice()
    : m_Adapter(CarryDriver::Get().Driver(), m_Kernel), m_Driver(m_Adapter), m_Output(*this), m_State(*this),
      m_Draws(*this)
{
    m_Driver.WatchCalls([this](const char* pEntry) {
        const auto [count, bNew] = m_CallCounts.try_emplace(pEntry);
        if (bNew)
            count->second = RunCountOf(RunOf().m_Calls, pEntry);
        if (count->second != nullptr)
            InterlockedIncrement64(count->second);
    });
}

std::shared_ptr<HostResource> CarryDevice::Create(const HostResourceDescription& description)
{
    std::unique_ptr<HostResource> pResource;
    Do([&](HostDevice& driver) { pResource = std::make_unique<HostResource>(driver, description); });
    return {pResource.release(), [](HostResource* pGone) { CarryThread::Get().Post([pGone] { delete pGone; }); }};
}

void CarryDevice::Sync()
{
    // What fails of one part is no reason to leave out another.
    Try([&] { m_State.SyncRenderStates(); });
    Try([&] { m_State.SyncTextures(); });
    Try([&] { m_State.SyncTransforms(); });
    Try([&] { m_State.SyncTargets(); });
    Try([&] { m_State.SyncShaders(); });
    Try([&] { m_Draws.Sync(); });
}

void CarryDevice::Scene(bool bBegins)
{
    const D3DDDIARG_RENDERSTATE arg = {D3DDDIRS_SCENECAPTURE, bBegins};
    Post([arg](HostDevice& driver) { HOST_CALL(driver, pfnSetRenderState, &arg); });
}

void CarryDevice::Bury(CarryResource& resource)
{
    m_State.Forget(resource);
    m_Draws.Forget(resource);
    resource.m_pVideo.reset();
    resource.m_pSystem.reset();
}

void CarryDevice::Clear(DWORD count, const D3DRECT* pRects, DWORD flags, D3DCOLOR color, float z, DWORD stencil)
{
    std::vector<RECT> rects;
    for (DWORD i = 0; i < count; ++i)
        rects.push_back({pRects[i].x1, pRects[i].y1, pRects[i].x2, pRects[i].y2});
    const D3DDDIARG_CLEAR arg = {.Flags = flags, .FillColor = color, .FillDepth = z, .FillStencil = stencil};
    Post([arg, rects = std::move(rects)](
             HostDevice& driver) { HOST_CALL(driver, pfnClear, &arg, static_cast<UINT>(rects.size()), rects.data()); });
}

void CarryBegin(IDirect3DDevice9* pPlatform)
{
    Try([&] {
        const std::shared_ptr<CarryDevice> pDevice = TakeDevice();
        pDevice->Begin(pPlatform);
        {
            std::lock_guard lock(All().m_Mutex);
            All().m_ByPlatform[pPlatform] = pDevice;
        }
        ++RunOf().m_Devices;
        pDevice->Reset();
    });
}

void CarryEnd(IDirect3DDevice9* pPlatform)
{
    Try([&] {
        {
            std::lock_guard lock(All().m_Mutex);
            if (auto node = All().m_ByPlatform.extract(pPlatform))
                All().m_Idle.push_back(std::move(node.mapped()));
        }
        // The program may end with its device: nothing of its last frame is left behind.
        CarryThread::Get().Do([] {});
    });
}

void CarryFor(IDirect3DDevice9* pPlatform, const std::function<void(CarryDevice&)>& work)
{
    if (const std::shared_ptr<CarryDevice> pDevice = Find(pPlatform))
        Try([&] { work(*pDevice); });
}
