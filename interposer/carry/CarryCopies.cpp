#include "interposer/carry/CarryCopies.h"

#include "interposer/carry/CarryDevice.h"
#include "interposer/judge/JudgeFrame.h"
#include "interposer/run/RunLedger.h"
#include "interposer/run/RunLimits.h"
#include "util/UMDComPtr.h"

namespace
{

bool IsWhole(const RECT* pRect, const RECT& whole)
{
    return pRect == nullptr || EqualRect(pRect, &whole);
}

/// A surface in system memory of the resource's format.
std::shared_ptr<HostResource> MakeMemory(const CarryResource& like, UINT width, UINT height)
{
    HostResourceDescription description{.m_Width = width,
        .m_Height = height,
        .m_Format = like.m_pVideo ? like.m_pVideo->Description().m_Format : static_cast<UINT>(like.m_Desc.Format),
        .m_Pool = D3DDDIPOOL_SYSTEMMEM};
    description.m_LevelMemory = {CarryMemoryOf(static_cast<D3DFORMAT>(description.m_Format), width, height)};
    return like.Device().Create(description);
}

/// Calls the reader with the driver's pixels of a target.
void ReadDriver(CarryResource& target, const std::function<void(const void* pBits, UINT pitch)>& reader)
{
    const RECT all = target.Rect(0);
    const auto pCopy = MakeMemory(target, target.m_Desc.Width, target.m_Desc.Height);
    D3DDDIARG_LOCK lock{};
    lock.hResource = pCopy->Handle();
    lock.Flags.ReadOnly = 1;
    target.Device().Do([&](HostDevice& driver) {
        driver.Blt(*target.m_pVideo, all, *pCopy, all);
        driver.WithLock(lock, [&](const D3DDDIARG_LOCK& locked) { reader(locked.pSurfData, locked.Pitch); });
    });
}

}  // namespace

void CarryStretch(CarryDevice& device, IDirect3DSurface9* pFrom, const RECT* pFromRect, IDirect3DSurface9* pTo,
    const RECT* pToRect, D3DTEXTUREFILTERTYPE filter)
{
    const CarryPlace from = CarryFind(pFrom), to = CarryFind(pTo);
    if (!from || !to)
        throw HostError("a blit of what the driver does not have");
    if (from->m_Kind == CarryKind::Depth)
        return RunLimit(kLimitDepthBlit);
    if (from.m_Level + to.m_Level > 0)
        RunLimit(kLimitLevelTarget);
    const RECT fromRect = pFromRect != nullptr ? *pFromRect : from->Rect(from.m_Level);
    const RECT toRect = pToRect != nullptr ? *pToRect : to->Rect(to.m_Level);
    const bool bStretched = fromRect.right - fromRect.left != toRect.right - toRect.left ||
                            fromRect.bottom - fromRect.top != toRect.bottom - toRect.top;
    if (bStretched && filter == D3DTEXF_LINEAR)
        RunLimit(kLimitBlitFilter);
    if (from->m_Kind == CarryKind::Texture &&
        (!IsWhole(pFromRect, from->Rect(from.m_Level)) || !IsWhole(pToRect, to->Rect(to.m_Level))))
        RunLimit(kLimitBlitPart);
    from->Upload();
    device.Post([pFrom = from->m_pVideo, fromRect, pTo = to->m_pVideo, toRect](
                    HostDevice& driver) { driver.Blt(*pFrom, fromRect, *pTo, toRect); });
}

void CarryUpdateSurface(
    CarryDevice&, IDirect3DSurface9* pFrom, const RECT* pRect, IDirect3DSurface9* pTo, const POINT* pPoint)
{
    const CarryPlace from = CarryFind(pFrom), to = CarryFind(pTo);
    if (!from || !to || from->m_pSystem == nullptr)
        throw HostError("an update of what the driver does not have");
    const RECT rect = pRect != nullptr ? *pRect : from->Rect(from.m_Level);
    const POINT point = pPoint != nullptr ? *pPoint : POINT{0, 0};
    const UINT pitch = from->m_pSystem->Description().m_LevelMemory[from.m_Level].m_Pitch;
    // The source's pixels as if the whole of it had been moved so that they lie where they go to.
    const HostLevelMemory corner =
        CarryMemoryOf(from->m_Desc.Format, static_cast<UINT>(rect.left), static_cast<UINT>(rect.top));
    BYTE* pSource = from->m_pSystem->SystemMemory(from.m_Level) + corner.m_Pitch + size_t{corner.m_Rows} * pitch;
    const BYTE* pMoved = CarryFirst(from->m_Desc.Format, pSource, pitch, point.x, point.y);
    const RECT target = {point.x, point.y, point.x + rect.right - rect.left, point.y + rect.bottom - rect.top};
    if (to->m_pSystem != nullptr)
        to->Write(to.m_Level, target, pMoved, pitch);
    else
        CarryWriteVideo(*to.m_pResource, target, pMoved, pitch);
}

void CarryUpdateTexture(CarryDevice& device, IDirect3DBaseTexture9* pFrom, IDirect3DBaseTexture9* pTo)
{
    const CarryPlace from = CarryFind(pFrom), to = CarryFind(pTo);
    if (!from || !to || pFrom->GetType() != D3DRTYPE_TEXTURE)
        return RunLimit(kLimitCubeVolume);
    // A smaller texture takes the smaller levels.
    const DWORD skipped = pFrom->GetLevelCount() - pTo->GetLevelCount();
    for (UINT level = 0; level < to->Levels(); ++level)
    {
        UMDComPtr<IDirect3DSurface9> pFromLevel, pToLevel;
        HostCheck(static_cast<IDirect3DTexture9*>(pFrom)->GetSurfaceLevel(level + skipped, pFromLevel.Put()),
            "GetSurfaceLevel");
        HostCheck(static_cast<IDirect3DTexture9*>(pTo)->GetSurfaceLevel(level, pToLevel.Put()), "GetSurfaceLevel");
        CarryUpdateSurface(device, pFromLevel.Get(), nullptr, pToLevel.Get(), nullptr);
    }
}

void CarryFill(CarryDevice& device, IDirect3DSurface9* pSurface, const RECT* pRect, D3DCOLOR color)
{
    const CarryPlace place = CarryFind(pSurface);
    if (!place || place->m_pVideo == nullptr)
        throw HostError("a fill of what the driver does not have");
    if (place.m_Level > 0)
        RunLimit(kLimitLevelTarget);
    device.Post([pVideo = place->m_pVideo, rect = pRect != nullptr ? *pRect : place->Rect(0), color](
                    HostDevice& driver) { driver.ColorFill(*pVideo, rect, color); });
}

void CarryTargetData(CarryDevice&, IDirect3DSurface9* pTarget, IDirect3DSurface9* pMemory)
{
    const CarryPlace target = CarryFind(pTarget), memory = CarryFind(pMemory);
    if (!target || target->m_pVideo == nullptr)
        throw HostError("a read of a target that the driver does not have");
    D3DLOCKED_RECT locked;
    HostCheck(pMemory->LockRect(&locked, nullptr, 0), "LockRect");
    if (target.m_Level == 0)
        CarryTargetRead(*target.m_pResource, target->Rect(0), locked.pBits, static_cast<UINT>(locked.Pitch));
    // What the memory holds now may be where an update of a texture comes from.
    if (memory)
        memory->Write(memory.m_Level, memory->Rect(memory.m_Level), locked.pBits, static_cast<UINT>(locked.Pitch));
    pMemory->UnlockRect();
}

void CarryTargetRead(CarryResource& target, const RECT& rect, void* pFirst, UINT pitch)
{
    if (RunOf().m_Mode == RunMode::Carry)
        return;
    ReadDriver(target, [&](const void* pBits, UINT driverPitch) {
        JudgeRead(target.m_Desc.Format, rect, {pBits, driverPitch}, {pFirst, pitch});
        if (RunOf().m_Mode == RunMode::Answer)
            CarryCopyPixels(target.m_Desc.Format, rect, pFirst, pitch, pBits, driverPitch);
    });
}

void CarryWriteVideo(CarryResource& resource, const RECT& rect, const void* pFirst, UINT pitch)
{
    const auto pMemory = MakeMemory(resource, resource.m_Desc.Width, resource.m_Desc.Height);
    CarryCopyPixels(resource.m_Desc.Format, rect, pMemory->SystemMemory(),
        pMemory->Description().m_LevelMemory[0].m_Pitch, pFirst, pitch);
    resource.Device().Post(
        [pMemory, pVideo = resource.m_pVideo, rect](HostDevice& driver) { driver.Blt(*pMemory, rect, *pVideo, rect); });
}
