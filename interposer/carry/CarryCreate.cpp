#include "interposer/carry/CarryCreate.h"

#include "interposer/carry/CarryDevice.h"
#include "interposer/run/RunLedger.h"
#include "interposer/run/RunLimits.h"
#include "util/UMDComPtr.h"

#include <algorithm>

namespace
{

// Of a texture of the driver's.
constexpr UINT kLevels = 11;

HostResourceDescription Describe(const CarryResource& resource)
{
    const D3DSURFACE_DESC& desc = resource.m_Desc;
    HostResourceDescription description{.m_Width = desc.Width,
        .m_Height = desc.Height,
        .m_Format = static_cast<UINT>(desc.Format),
        .m_MipLevels = resource.Levels()};
    description.m_Flags.Texture = resource.m_Kind == CarryKind::Texture;
    description.m_Flags.RenderTarget = resource.IsTarget();
    description.m_Flags.ZBuffer = resource.m_Kind == CarryKind::Depth;
    description.m_Flags.Dynamic = (desc.Usage & D3DUSAGE_DYNAMIC) != 0;
    return description;
}

/// What uploads are made from.
std::shared_ptr<HostResource> MakeSystem(const CarryResource& resource)
{
    HostResourceDescription description = Describe(resource);
    description.m_Pool = D3DDDIPOOL_SYSTEMMEM;
    description.m_Flags.Dynamic = 0;
    for (UINT level = 0; level < resource.Levels(); ++level)
    {
        const RECT rect = resource.Rect(level);
        const HostLevelMemory memory =
            CarryMemoryOf(resource.m_Desc.Format, static_cast<UINT>(rect.right), static_cast<UINT>(rect.bottom));
        if (memory.m_Rows == 0)
        {
            RunLimit(CarryIsPlanar(resource.m_Desc.Format) ? kLimitPlanarFormat : kLimitVendorFormat);
            return nullptr;
        }
        description.m_LevelMemory.push_back(memory);
    }
    return resource.Device().Create(description);
}

CarryKind KindOf(const D3DSURFACE_DESC& desc)
{
    if (desc.Usage & D3DUSAGE_DEPTHSTENCIL)
        return CarryKind::Depth;
    if (desc.Usage & D3DUSAGE_RENDERTARGET)
        return CarryKind::Target;
    return desc.Pool == D3DPOOL_DEFAULT ? CarryKind::Plain : CarryKind::Memory;
}

template <typename Buffer, typename Desc>
void CreateBuffer(CarryDevice& device, Buffer* pBuffer, CarryKind kind)
{
    Desc desc;
    HostCheck(pBuffer->GetDesc(&desc), "GetDesc");
    const D3DSURFACE_DESC size = {desc.Format, desc.Type, desc.Usage, desc.Pool, D3DMULTISAMPLE_NONE, 0, desc.Size, 1};
    auto pResource = std::make_shared<CarryResource>(device, kind, size, 1);
    HostResourceDescription description{.m_Width = desc.Size, .m_Format = static_cast<UINT>(desc.Format)};
    description.m_Flags.VertexBuffer = kind == CarryKind::VertexBuffer;
    description.m_Flags.IndexBuffer = kind == CarryKind::IndexBuffer;
    description.m_Flags.Dynamic = (desc.Usage & D3DUSAGE_DYNAMIC) != 0;
    description.m_Flags.WriteOnly = (desc.Usage & D3DUSAGE_WRITEONLY) != 0;
    pResource->m_pVideo = device.Create(description);
    pResource->m_Shadow.resize(desc.Size);
    CarryHang(pBuffer, std::move(pResource));
}

}  // namespace

void CarryCreateTexture(CarryDevice& device, IDirect3DTexture9* pTexture)
{
    D3DSURFACE_DESC desc;
    HostCheck(pTexture->GetLevelDesc(0, &desc), "GetLevelDesc");
    if (desc.Usage & D3DUSAGE_DEPTHSTENCIL)
        return RunLimit(kLimitDepthTexture);
    if (desc.Pool == D3DPOOL_SCRATCH)
        return;
    if (desc.Usage & D3DUSAGE_AUTOGENMIPMAP)
        RunLimit(kLimitGeneratedLevels);
    if (pTexture->GetLevelCount() > kLevels)
        RunLimit(kLimitLevels);
    const UINT levels = std::min(kLevels, static_cast<UINT>(pTexture->GetLevelCount()));
    std::vector<IDirect3DSurface9*> surfaces;
    for (UINT level = 0; level < levels; ++level)
    {
        UMDComPtr<IDirect3DSurface9> pSurface;
        HostCheck(pTexture->GetSurfaceLevel(level, pSurface.Put()), "GetSurfaceLevel");
        surfaces.push_back(pSurface.Get());
    }
    auto pResource = std::make_shared<CarryResource>(device, CarryKind::Texture, desc, levels);
    if (!pResource->IsTarget())
        pResource->m_pSystem = MakeSystem(*pResource);
    if (desc.Pool != D3DPOOL_SYSTEMMEM)
        pResource->m_pVideo = device.Create(Describe(*pResource));
    CarryHang(pTexture, std::move(pResource), surfaces);
}

void CarryCreateSurface(CarryDevice& device, IDirect3DSurface9* pSurface)
{
    D3DSURFACE_DESC desc;
    HostCheck(pSurface->GetDesc(&desc), "GetDesc");
    if (desc.Pool == D3DPOOL_SCRATCH)
        return;
    if (desc.MultiSampleType != D3DMULTISAMPLE_NONE)
        RunLimit(kLimitMultisampling);
    auto pResource = std::make_shared<CarryResource>(device, KindOf(desc), desc, 1);
    if (pResource->m_Kind == CarryKind::Memory)
        pResource->m_pSystem = MakeSystem(*pResource);
    else
        pResource->m_pVideo = device.Create(Describe(*pResource));
    CarryHang(pSurface, std::move(pResource));
}

void CarryCreateVertexBuffer(CarryDevice& device, IDirect3DVertexBuffer9* pBuffer)
{
    CreateBuffer<IDirect3DVertexBuffer9, D3DVERTEXBUFFER_DESC>(device, pBuffer, CarryKind::VertexBuffer);
}

void CarryCreateIndexBuffer(CarryDevice& device, IDirect3DIndexBuffer9* pBuffer)
{
    CreateBuffer<IDirect3DIndexBuffer9, D3DINDEXBUFFER_DESC>(device, pBuffer, CarryKind::IndexBuffer);
}
