#include "resources/UMDRscFactory.h"

#include "kernel/UMDAllocationPrivateData.h"
#include "resources/UMDRscCubeTexture.h"
#include "resources/UMDRscIndexBuffer.h"
#include "resources/UMDRscSurface.h"
#include "resources/UMDRscVertexBuffer.h"
#include "resources/UMDRscZBuffer.h"
#include "util/UMDMakeUnique.h"
#include "util/UMDUtilDebugTrace.h"

namespace
{
D3DPOOL DelegatedPool(const D3DDDIARG_CREATERESOURCE* pCreate)
{
    return pCreate->Pool == D3DDDIPOOL_SYSTEMMEM ? D3DPOOL_SYSTEMMEM : D3DPOOL_DEFAULT;
}

DWORD DelegatedUsage(D3DDDI_RESOURCEFLAGS flags)
{
    if (flags.VertexBuffer || flags.IndexBuffer)
        return (flags.Dynamic ? D3DUSAGE_DYNAMIC : 0) | (flags.WriteOnly ? D3DUSAGE_WRITEONLY : 0);
    return flags.Texture && flags.Dynamic ? D3DUSAGE_DYNAMIC : 0;
}
}  // namespace

std::unique_ptr<UMDRscBase> UMDRscFactoryNew(UMDDdiDevice* pDevice, const D3DDDIARG_CREATERESOURCE* pCreate)
{
    const D3DDDI_RESOURCEFLAGS flags = pCreate->Flags;
    const HANDLE hResourceOS = pCreate->hResource;
    const DWORD usage = DelegatedUsage(flags);
    const D3DPOOL pool = DelegatedPool(pCreate);

    // The first match decides: a render target that is also a texture becomes a texture.
    if (flags.VertexBuffer)
        return UMDMakeUnique<UMDRscVertexBuffer>(pDevice, hResourceOS, pCreate, FALSE, usage, pool);
    if (flags.IndexBuffer)
        return UMDMakeUnique<UMDRscIndexBuffer>(pDevice, hResourceOS, pCreate, FALSE, usage, pool);
    if (flags.ZBuffer)
        return UMDMakeUnique<UMDRscZBuffer>(pDevice, hResourceOS, pCreate, FALSE);
    if (flags.CubeMap)
        return UMDMakeUnique<UMDRscCubeTexture>(pDevice, hResourceOS, pCreate, FALSE, usage, pool);
    if (flags.Texture)
        return UMDMakeUnique<UMDRscTexture>(
            pDevice, hResourceOS, pCreate, UMDRscTextureTraits{FALSE, usage, pool, UMDRESOURCETYPE_TEXTURE});
    if (flags.RenderTarget)
        return UMDMakeUnique<UMDRscSurface>(pDevice, hResourceOS, pCreate, FALSE, pool, false);
    if (!flags.Value || flags.DecodeRenderTarget)
        return UMDMakeUnique<UMDRscSurface>(pDevice, hResourceOS, pCreate, FALSE, pool, true);

    UMD_TRACE(UMDTRACE_ERROR, L"UMDDdiCreateResource unhandled resource\n");
    return UMDMakeUnique<UMDRscBase>(pDevice, hResourceOS, UMDRESOURCETYPE_UNKNOWN);
}

HRESULT UMDRscFactoryCreate(
    UMDDdiDevice* pDevice, const D3DDDIARG_CREATERESOURCE* pCreate, std::unique_ptr<UMDRscBase>* ppResource)
{
    std::unique_ptr<UMDRscBase> pResource = UMDRscFactoryNew(pDevice, pCreate);
    if (!pResource)
        return UMDFail(E_OUTOFMEMORY, L"UMDDdiCreateResource error! E_OUTOFMEMORY\n");
    const bool mirrored = pResource->GetType() != UMDRESOURCETYPE_UNKNOWN;
    if (mirrored && FAILED(pResource->Create()))
    {
        pResource->Destroy();
        return E_FAIL;
    }
    *ppResource = std::move(pResource);
    return S_OK;
}

HRESULT UMDRscFactoryOpen(
    UMDDdiDevice* pDevice, const D3DDDIARG_OPENRESOURCE* pOpen, std::unique_ptr<UMDRscBase>* ppResource)
{
    ppResource->reset();
    if (!pOpen->NumAllocations || !pOpen->pOpenAllocationInfo)
        return S_OK;
    const D3DDDI_OPENALLOCATIONINFO& allocation = pOpen->pOpenAllocationInfo[0];
    UMDAllocationPrivateData record = {};
    if (!UMDReadAllocationPrivateData(allocation.pPrivateDriverData, allocation.PrivateDriverDataSize, &record))
        return S_OK;
    if (record.TextureKind != UMDRESOURCETYPE_TEXTURE)
        return UMDFail(E_FAIL, L"OpenResource failed! Type:%d\n", record.TextureKind);

    auto pTexture = UMDMakeUnique<UMDRscTexture>(pDevice, pOpen->hResource, pOpen,
        UMDRscTextureTraits{TRUE, D3DUSAGE_RENDERTARGET, D3DPOOL_DEFAULT, UMDRESOURCETYPE_TEXTURE});
    if (!pTexture)
        return S_OK;
    if (FAILED(pTexture->Open()))
    {
        pTexture->Destroy();
        return E_FAIL;
    }
    *ppResource = std::move(pTexture);
    return S_OK;
}
