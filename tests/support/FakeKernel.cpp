#include "FakeKernel.h"

#include "FailNthAllocation.h"

#include "kernel/UMDEscape.h"

#include <cstdarg>
#include <cstdio>

namespace tesslo::test
{

namespace
{

/// Handles print as small numbers.
UINT Low(HANDLE handle)
{
    return static_cast<UINT>(reinterpret_cast<UINT_PTR>(handle));
}

}  // namespace

FakeKernel::FakeKernel()
{
    for (Buffers& buffers : m_Buffers)
    {
        buffers.m_Command.resize(kCommandBufferSize);
        buffers.m_Allocations.resize(kListSize);
        buffers.m_PatchLocations.resize(kListSize);
    }
}

D3DDDI_DEVICECALLBACKS FakeKernel::Callbacks()
{
    D3DDDI_DEVICECALLBACKS callbacks{};
    callbacks.pfnAllocateCb = InternalAllocate;
    callbacks.pfnDeallocateCb = InternalDeallocate;
    callbacks.pfnSetDisplayModeCb = InternalSetDisplayMode;
    callbacks.pfnPresentCb = InternalPresent;
    callbacks.pfnRenderCb = InternalRender;
    callbacks.pfnLockCb = InternalLock;
    callbacks.pfnUnlockCb = InternalUnlock;
    callbacks.pfnEscapeCb = InternalEscape;
    callbacks.pfnCreateContextCb = InternalCreateContext;
    callbacks.pfnDestroyContextCb = InternalDestroyContext;
    return callbacks;
}

void FakeKernel::SetVidPnSourceId(UINT index, UINT vidPnSourceId)
{
    std::lock_guard lock(m_Mutex);
    m_VidPnSourceIds[index] = vidPnSourceId;
}

FakeKernel::Allocation& FakeKernel::FindAllocation(D3DKMT_HANDLE hAllocation)
{
    std::lock_guard lock(m_Mutex);
    return m_Allocations.at(hAllocation);
}

D3DKMT_HANDLE FakeKernel::LastAllocation() const
{
    std::lock_guard lock(m_Mutex);
    return m_LastAllocation;
}

size_t FakeKernel::AllocationCount() const
{
    std::lock_guard lock(m_Mutex);
    return m_Allocations.size();
}

size_t FakeKernel::ContextCount() const
{
    std::lock_guard lock(m_Mutex);
    return m_ContextCount;
}

FakeKernel& FakeKernel::InternalFrom(HANDLE hRuntime)
{
    auto* pKernel = static_cast<FakeKernel*>(hRuntime);
    if (pKernel->m_pSelf != pKernel)
        RaiseException(static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION), 0, 0, nullptr);
    return *pKernel;
}

HRESULT FakeKernel::InternalRecord(const char* pCallback, const char* pFormat, ...)
{
    FailNthAllocation::Pause pause;
    char text[256];
    va_list arguments;
    va_start(arguments, pFormat);
    vsnprintf(text, sizeof text, pFormat, arguments);
    va_end(arguments);
    return RecordCall("", pCallback, text);
}

HRESULT FakeKernel::InternalAllocate(HANDLE hDevice, D3DDDICB_ALLOCATE* pAllocate)
{
    FakeKernel& kernel = InternalFrom(hDevice);
    if (HRESULT hr = kernel.InternalRecord(
            "pfnAllocateCb", "resource:%x count:%u", Low(pAllocate->hResource), pAllocate->NumAllocations);
        FAILED(hr))
        return hr;
    FailNthAllocation::Pause pause;
    std::lock_guard lock(kernel.m_Mutex);
    for (UINT i = 0; i < pAllocate->NumAllocations; i++)
    {
        D3DDDI_ALLOCATIONINFO& info = pAllocate->pAllocationInfo[i];
        const auto* pData = static_cast<const BYTE*>(info.pPrivateDriverData);
        info.hAllocation = ++kernel.m_LastAllocation;
        kernel.m_Allocations[info.hAllocation] = {pAllocate->hResource, {pData, pData + info.PrivateDriverDataSize},
            info.VidPnSourceId, info.Flags.Value, false, std::vector<BYTE>(kAllocationSize)};
    }
    pAllocate->hKMResource = kernel.m_LastAllocation;
    return S_OK;
}

HRESULT FakeKernel::InternalDeallocate(HANDLE hDevice, const D3DDDICB_DEALLOCATE* pDeallocate)
{
    FakeKernel& kernel = InternalFrom(hDevice);
    const D3DKMT_HANDLE first = pDeallocate->NumAllocations ? pDeallocate->HandleList[0] : 0;
    if (HRESULT hr = kernel.InternalRecord("pfnDeallocateCb", "resource:%x count:%u first:%u",
            Low(pDeallocate->hResource), pDeallocate->NumAllocations, first);
        FAILED(hr))
        return hr;
    std::lock_guard lock(kernel.m_Mutex);
    for (UINT i = 0; i < pDeallocate->NumAllocations; i++)
        if (kernel.m_Allocations.erase(pDeallocate->HandleList[i]) == 0)
            return E_INVALIDARG;
    if (pDeallocate->hResource)
        std::erase_if(kernel.m_Allocations,
            [&](const auto& entry) { return entry.second.m_hResource == pDeallocate->hResource; });
    return S_OK;
}

HRESULT FakeKernel::InternalSetDisplayMode(HANDLE hDevice, D3DDDICB_SETDISPLAYMODE* pSetDisplayMode)
{
    return InternalFrom(hDevice).InternalRecord(
        "pfnSetDisplayModeCb", "allocation:%u", pSetDisplayMode->hPrimaryAllocation);
}

HRESULT FakeKernel::InternalPresent(HANDLE hDevice, D3DDDICB_PRESENT* pPresent)
{
    return InternalFrom(hDevice).InternalRecord("pfnPresentCb", "src:%u dst:%u context:%x", pPresent->hSrcAllocation,
        pPresent->hDstAllocation, Low(pPresent->hContext));
}

HRESULT FakeKernel::InternalRender(HANDLE hDevice, D3DDDICB_RENDER* pRender)
{
    FakeKernel& kernel = InternalFrom(hDevice);
    if (HRESULT hr = kernel.InternalRecord("pfnRenderCb", "length:%u offset:%u allocations:%u patches:%u context:%x",
            pRender->CommandLength, pRender->CommandOffset, pRender->NumAllocations, pRender->NumPatchLocations,
            Low(pRender->hContext));
        FAILED(hr))
        return hr;
    std::lock_guard lock(kernel.m_Mutex);
    Buffers& next = kernel.m_Buffers[++kernel.m_RenderCount % 2];
    pRender->pNewCommandBuffer = next.m_Command.data();
    pRender->NewCommandBufferSize = kCommandBufferSize;
    pRender->pNewAllocationList = next.m_Allocations.data();
    pRender->NewAllocationListSize = kListSize;
    pRender->pNewPatchLocationList = next.m_PatchLocations.data();
    pRender->NewPatchLocationListSize = kListSize;
    return S_OK;
}

HRESULT FakeKernel::InternalLock(HANDLE hDevice, D3DDDICB_LOCK* pLock)
{
    FakeKernel& kernel = InternalFrom(hDevice);
    if (HRESULT hr =
            kernel.InternalRecord("pfnLockCb", "allocation:%u flags:0x%x", pLock->hAllocation, pLock->Flags.Value);
        FAILED(hr))
        return hr;
    std::lock_guard lock(kernel.m_Mutex);
    auto found = kernel.m_Allocations.find(pLock->hAllocation);
    if (found == kernel.m_Allocations.end() || found->second.m_bLocked)
        return E_INVALIDARG;
    found->second.m_bLocked = true;
    pLock->pData = found->second.m_Memory.data();
    return S_OK;
}

HRESULT FakeKernel::InternalUnlock(HANDLE hDevice, const D3DDDICB_UNLOCK* pUnlock)
{
    FakeKernel& kernel = InternalFrom(hDevice);
    const D3DKMT_HANDLE first = pUnlock->NumAllocations ? pUnlock->phAllocations[0] : 0;
    if (HRESULT hr = kernel.InternalRecord("pfnUnlockCb", "count:%u first:%u", pUnlock->NumAllocations, first);
        FAILED(hr))
        return hr;
    std::lock_guard lock(kernel.m_Mutex);
    for (UINT i = 0; i < pUnlock->NumAllocations; i++)
    {
        auto found = kernel.m_Allocations.find(pUnlock->phAllocations[i]);
        if (found == kernel.m_Allocations.end() || !found->second.m_bLocked)
            return E_INVALIDARG;
        found->second.m_bLocked = false;
    }
    return S_OK;
}

HRESULT FakeKernel::InternalEscape(HANDLE hAdapter, const D3DDDICB_ESCAPE* pEscape)
{
    FakeKernel& kernel = InternalFrom(hAdapter);
    auto* pSource = static_cast<UMDESCAPE_VIDPNSOURCE*>(pEscape->pPrivateDriverData);
    if (HRESULT hr = kernel.InternalRecord("pfnEscapeCb", "size:%u device:%x flags:0x%x context:%x command:%u index:%u",
            pEscape->PrivateDriverDataSize, Low(pEscape->hDevice), pEscape->Flags.Value, Low(pEscape->hContext),
            pSource->Command, pSource->Index);
        FAILED(hr))
        return hr;
    std::lock_guard lock(kernel.m_Mutex);
    auto found = kernel.m_VidPnSourceIds.find(pSource->Index);
    pSource->VidPnSourceId = found == kernel.m_VidPnSourceIds.end() ? pSource->Index : found->second;
    return S_OK;
}

HRESULT FakeKernel::InternalCreateContext(HANDLE hDevice, D3DDDICB_CREATECONTEXT* pCreate)
{
    FakeKernel& kernel = InternalFrom(hDevice);
    if (HRESULT hr = kernel.InternalRecord("pfnCreateContextCb", "node:%u affinity:%u flags:0x%x data:%u",
            pCreate->NodeOrdinal, pCreate->EngineAffinity, pCreate->Flags.Value, pCreate->PrivateDriverDataSize);
        FAILED(hr))
        return hr;
    std::lock_guard lock(kernel.m_Mutex);
    kernel.m_ContextCount++;
    pCreate->hContext = reinterpret_cast<HANDLE>(kContext);
    pCreate->pCommandBuffer = kernel.m_Buffers[0].m_Command.data();
    pCreate->CommandBufferSize = kCommandBufferSize;
    pCreate->pAllocationList = kernel.m_Buffers[0].m_Allocations.data();
    pCreate->AllocationListSize = kListSize;
    pCreate->pPatchLocationList = kernel.m_Buffers[0].m_PatchLocations.data();
    pCreate->PatchLocationListSize = kListSize;
    return S_OK;
}

HRESULT FakeKernel::InternalDestroyContext(HANDLE hDevice, const D3DDDICB_DESTROYCONTEXT* pDestroy)
{
    FakeKernel& kernel = InternalFrom(hDevice);
    if (HRESULT hr = kernel.InternalRecord("pfnDestroyContextCb", "context:%x", Low(pDestroy->hContext)); FAILED(hr))
        return hr;
    std::lock_guard lock(kernel.m_Mutex);
    if (pDestroy->hContext != reinterpret_cast<HANDLE>(kContext) || kernel.m_ContextCount == 0)
        return E_INVALIDARG;
    kernel.m_ContextCount--;
    return S_OK;
}

}  // namespace tesslo::test
