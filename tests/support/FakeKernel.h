// The runtime's device callbacks and the kernel-mode driver behind them, as far as the driver uses them.
//
// Every callback records a line ("pfnPresentCb(src:1 dst:0 context:7000)") and follows the script of its name
// (kernel.Fail("pfnAllocateCb", E_FAIL)). The runtime's handles of the adapter and the device are the kernel's own
// address, so callbacks find their kernel by the handle that they get.
#pragma once

#include "FakeRecorder.h"

#include "ddi/ddi.h"

#include <vector>

namespace tesslo::test
{

class FakeKernel : public FakeRecorder
{
public:
    /// One living kernel-mode allocation.
    struct Allocation
    {
        HANDLE m_hResource;               ///< the runtime's handle of the resource
        std::vector<BYTE> m_PrivateData;  ///< the driver's private record, copied
        UINT m_VidPnSourceId;
        UINT m_Flags;  ///< of D3DDDI_ALLOCATIONINFO
        bool m_bLocked;
        std::vector<BYTE> m_Memory;  ///< what a lock hands out
    };

    FakeKernel();

    /// The runtime's handle of the device, and of the adapter.
    HANDLE RuntimeHandle() { return this; }
    /// All ten callbacks that the driver calls; the others are null. Tests may change their copy.
    static D3DDDI_DEVICECALLBACKS Callbacks();

    /// What the escape answers for a source index; the index itself at first.
    void SetVidPnSourceId(UINT index, UINT vidPnSourceId);
    /// The living allocation of this handle; throws std::out_of_range when there is none. Handles count from 1.
    Allocation& FindAllocation(D3DKMT_HANDLE hAllocation);
    /// The handle that was given out last; 0 before the first.
    D3DKMT_HANDLE LastAllocation() const;
    size_t AllocationCount() const;
    size_t ContextCount() const;

    /// Handle of the context; its buffers have these sizes.
    static constexpr UINT_PTR kContext = 0x7000;
    static constexpr UINT kCommandBufferSize = 4096;
    static constexpr UINT kListSize = 16;
    /// Bytes that a lock hands out.
    static constexpr size_t kAllocationSize = 64 * 1024;

    /// One set of the runtime's buffers; a render answers the other one.
    struct Buffers
    {
        std::vector<BYTE> m_Command;
        std::vector<D3DDDI_ALLOCATIONLIST> m_Allocations;
        std::vector<D3DDDI_PATCHLOCATIONLIST> m_PatchLocations;
    };
    Buffers m_Buffers[2];

private:
    static HRESULT APIENTRY InternalAllocate(HANDLE hDevice, D3DDDICB_ALLOCATE* pAllocate);
    static HRESULT APIENTRY InternalDeallocate(HANDLE hDevice, const D3DDDICB_DEALLOCATE* pDeallocate);
    static HRESULT APIENTRY InternalSetDisplayMode(HANDLE hDevice, D3DDDICB_SETDISPLAYMODE* pSetDisplayMode);
    static HRESULT APIENTRY InternalPresent(HANDLE hDevice, D3DDDICB_PRESENT* pPresent);
    static HRESULT APIENTRY InternalRender(HANDLE hDevice, D3DDDICB_RENDER* pRender);
    static HRESULT APIENTRY InternalLock(HANDLE hDevice, D3DDDICB_LOCK* pLock);
    static HRESULT APIENTRY InternalUnlock(HANDLE hDevice, const D3DDDICB_UNLOCK* pUnlock);
    static HRESULT APIENTRY InternalEscape(HANDLE hAdapter, const D3DDDICB_ESCAPE* pEscape);
    static HRESULT APIENTRY InternalCreateContext(HANDLE hDevice, D3DDDICB_CREATECONTEXT* pCreate);
    static HRESULT APIENTRY InternalDestroyContext(HANDLE hDevice, const D3DDDICB_DESTROYCONTEXT* pDestroy);

    /// A runtime faults on what is no handle of its own. The fakes could throw over it, which nothing catches: between
    /// them and the test lie frames of the driver.
    static FakeKernel& InternalFrom(HANDLE hRuntime);
    HRESULT InternalRecord(const char* pCallback, const char* pFormat, ...);

    const FakeKernel* const m_pSelf = this;
    std::map<D3DKMT_HANDLE, Allocation> m_Allocations;
    D3DKMT_HANDLE m_LastAllocation = 0;
    size_t m_ContextCount = 0;
    UINT m_RenderCount = 0;
    std::map<UINT, UINT> m_VidPnSourceIds;
};

}  // namespace tesslo::test
