#include "host/kernel/HostKernel.h"

#include "kernel/UMDEscape.h"

#include <algorithm>
#include <cstring>

namespace
{

// Bytes of a pixel in a kernel-mode allocation; 4 for whatever is not told here.
UINT BytesPerPixel(UINT format)
{
    switch (format)
    {
    case D3DFMT_R5G6B5:
    case D3DFMT_X1R5G5B5:
    case D3DFMT_A1R5G5B5:
    case D3DFMT_A4R4G4B4:
    case D3DFMT_YUY2:
    case D3DFMT_UYVY:
        return 2;
    case D3DFMT_A16B16G16R16:
    case D3DFMT_A16B16G16R16F:
    case D3DFMT_G32R32F:
        return 8;
    case D3DFMT_A32B32G32R32F:
        return 16;
    default:
        return 4;
    }
}

}  // namespace

HostKernel::HostKernel() = default;
HostKernel::~HostKernel() = default;

void HostKernel::SetSourceId(UINT index, UINT sourceId)
{
    std::lock_guard lock(m_Mutex);
    m_SourceIds[index] = sourceId;
}

void HostKernel::SetResult(const std::string& callback, HRESULT hResult)
{
    std::lock_guard lock(m_Mutex);
    m_Results[callback] = hResult;
}

UINT HostKernel::Calls(const std::string& callback) const
{
    std::lock_guard lock(m_Mutex);
    const auto found = m_Calls.find(callback);
    return found != m_Calls.end() ? found->second : 0;
}

std::optional<HostAllocation> HostKernel::FindAllocation(HANDLE hResource) const
{
    std::lock_guard lock(m_Mutex);
    for (const auto& [handle, allocation] : m_Allocations)
        if (allocation.m_hResource == hResource)
            return allocation;
    return std::nullopt;
}

HRESULT HostKernel::Enter(const Tag& handle, const Tag& expected, const char* pCallback)
{
    ++m_Calls[pCallback];
    if (&handle != &expected)
        return Violation(std::string(pCallback) + ": called with the " + handle.m_pName + "'s handle");
    const auto found = m_Results.find(pCallback);
    return found != m_Results.end() ? found->second : S_OK;
}

HRESULT HostKernel::Violation(const std::string& text)
{
    m_Violations.push_back(text);
    return E_INVALIDARG;
}

HostAllocation* HostKernel::Find(D3DKMT_HANDLE hAllocation)
{
    const auto found = m_Allocations.find(hAllocation);
    return found != m_Allocations.end() ? &found->second : nullptr;
}

HostKernel::Context* HostKernel::FindContext(HANDLE hContext)
{
    for (const auto& pContext : m_Contexts)
        if (pContext.get() == hContext)
            return pContext.get();
    return nullptr;
}

HRESULT HostKernel::Allocate(D3DDDICB_ALLOCATE* pArg)
{
    if (pArg->NumAllocations == 0 || pArg->pAllocationInfo == nullptr)
        return Violation("pfnAllocateCb: no allocations");
    const D3DKMT_HANDLE hKMResource = pArg->hResource != nullptr ? m_NextHandle++ : 0;
    for (UINT i = 0; i < pArg->NumAllocations; ++i)
        if (HRESULT hr = AllocateOne(*pArg, pArg->pAllocationInfo[i], hKMResource); FAILED(hr))
            return hr;
    pArg->hKMResource = hKMResource;
    return S_OK;
}

HRESULT HostKernel::AllocateOne(const D3DDDICB_ALLOCATE& arg, D3DDDI_ALLOCATIONINFO& info, D3DKMT_HANDLE hKMResource)
{
    HostAllocation allocation;
    if (info.pPrivateDriverData == nullptr || info.PrivateDriverDataSize != sizeof(allocation.m_PrivateData))
        return Violation("pfnAllocateCb: private data of " + std::to_string(info.PrivateDriverDataSize) + " bytes");
    UMDAllocationPrivateData& data = allocation.m_PrivateData;
    std::memcpy(&data, info.pPrivateDriverData, sizeof(data));
    if (data.Kind != UMDALLOCATIONKIND_PRIMARY && data.Kind != UMDALLOCATIONKIND_OTHER)
        return Violation("pfnAllocateCb: kind " + std::to_string(data.Kind));
    if (data.Width == 0 || data.Height == 0)
        return Violation("pfnAllocateCb: no size");
    if ((data.Kind == UMDALLOCATIONKIND_PRIMARY) != (info.Flags.Primary != 0))
        return Violation("pfnAllocateCb: kind and primary flag differ");
    allocation.m_hAllocation = m_NextHandle++;
    allocation.m_hKMResource = hKMResource;
    allocation.m_hResource = arg.hResource;
    allocation.m_bPrimary = info.Flags.Primary != 0;
    allocation.m_VidPnSourceId = info.VidPnSourceId;
    allocation.m_Memory.resize(static_cast<size_t>(data.Width) * data.Height * BytesPerPixel(data.Format));
    info.hAllocation = allocation.m_hAllocation;
    m_Allocations.emplace(info.hAllocation, std::move(allocation));
    return S_OK;
}

HRESULT HostKernel::Deallocate(const D3DDDICB_DEALLOCATE* pArg)
{
    for (UINT i = 0; i < pArg->NumAllocations; ++i)
    {
        const HostAllocation* pAllocation = Find(pArg->HandleList[i]);
        if (pAllocation == nullptr)
            return Violation("pfnDeallocateCb: unknown allocation");
        if (pAllocation->m_hResource != pArg->hResource)
            return Violation("pfnDeallocateCb: allocation of another resource");
        if (pAllocation->m_bLocked)
            return Violation("pfnDeallocateCb: locked allocation");
        m_Allocations.erase(pArg->HandleList[i]);
    }
    return S_OK;
}

HRESULT HostKernel::SetDisplayMode(D3DDDICB_SETDISPLAYMODE* pArg)
{
    const HostAllocation* pAllocation = Find(pArg->hPrimaryAllocation);
    if (pAllocation == nullptr || !pAllocation->m_bPrimary)
        return Violation("pfnSetDisplayModeCb: no primary allocation");
    m_hDisplayMode = pArg->hPrimaryAllocation;
    return S_OK;
}

HRESULT HostKernel::Present(D3DDDICB_PRESENT* pArg)
{
    LARGE_INTEGER time;
    QueryPerformanceCounter(&time);
    if (FindContext(pArg->hContext) == nullptr)
        return Violation("pfnPresentCb: unknown context");
    if (Find(pArg->hSrcAllocation) == nullptr)
        return Violation("pfnPresentCb: unknown allocation");
    ++m_PresentCount;
    m_LastPresent = {pArg->hSrcAllocation, pArg->hContext, time.QuadPart};
    return S_OK;
}

HRESULT HostKernel::Render(D3DDDICB_RENDER* pArg)
{
    Context* pContext = FindContext(pArg->hContext);
    if (pContext == nullptr)
        return Violation("pfnRenderCb: unknown context");
    if (pArg->CommandOffset > Context::kCommandBytes ||
        pArg->CommandLength > Context::kCommandBytes - pArg->CommandOffset)
        return Violation("pfnRenderCb: commands beyond the buffer");
    if (pArg->NumAllocations > Context::kAllocations || pArg->NumPatchLocations > Context::kPatchLocations)
        return Violation("pfnRenderCb: list beyond its end");
    pContext->m_Current ^= 1;
    std::tie(pArg->pNewCommandBuffer, pArg->NewCommandBufferSize, pArg->pNewAllocationList, pArg->NewAllocationListSize,
        pArg->pNewPatchLocationList, pArg->NewPatchLocationListSize) = pContext->HandOut();
    return S_OK;
}

HRESULT HostKernel::Lock(D3DDDICB_LOCK* pArg)
{
    HostAllocation* pAllocation = Find(pArg->hAllocation);
    if (pAllocation == nullptr)
        return Violation("pfnLockCb: unknown allocation");
    if (pAllocation->m_bLocked)
        return Violation("pfnLockCb: locked allocation");
    pAllocation->m_bLocked = true;
    pArg->pData = pAllocation->m_Memory.data();
    return S_OK;
}

HRESULT HostKernel::Unlock(const D3DDDICB_UNLOCK* pArg)
{
    for (UINT i = 0; i < pArg->NumAllocations; ++i)
    {
        HostAllocation* pAllocation = Find(pArg->phAllocations[i]);
        if (pAllocation == nullptr || !pAllocation->m_bLocked)
            return Violation("pfnUnlockCb: allocation that is not locked");
        pAllocation->m_bLocked = false;
    }
    return S_OK;
}

HRESULT HostKernel::Escape(const D3DDDICB_ESCAPE* pArg)
{
    if (pArg->pPrivateDriverData == nullptr || pArg->PrivateDriverDataSize != sizeof(UMDESCAPE_VIDPNSOURCE))
        return Violation("pfnEscapeCb: private data of " + std::to_string(pArg->PrivateDriverDataSize) + " bytes");
    UMDESCAPE_VIDPNSOURCE escape;
    std::memcpy(&escape, pArg->pPrivateDriverData, sizeof(escape));
    if (escape.Command != 0 || escape.Index >= std::size(m_SourceIds))
        return Violation("pfnEscapeCb: unknown command or index");
    escape.VidPnSourceId = m_SourceIds[escape.Index];
    std::memcpy(pArg->pPrivateDriverData, &escape, sizeof(escape));
    return S_OK;
}

HRESULT HostKernel::CreateContext(D3DDDICB_CREATECONTEXT* pArg)
{
    m_Contexts.push_back(std::make_unique<Context>());
    pArg->hContext = m_Contexts.back().get();
    std::tie(pArg->pCommandBuffer, pArg->CommandBufferSize, pArg->pAllocationList, pArg->AllocationListSize,
        pArg->pPatchLocationList, pArg->PatchLocationListSize) = m_Contexts.back()->HandOut();
    return S_OK;
}

HRESULT HostKernel::DestroyContext(const D3DDDICB_DESTROYCONTEXT* pArg)
{
    if (FindContext(pArg->hContext) == nullptr)
        return Violation("pfnDestroyContextCb: unknown context");
    std::erase_if(m_Contexts, [pArg](const auto& pContext) { return pContext.get() == pArg->hContext; });
    return S_OK;
}
