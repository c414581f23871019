// The kernel-mode half of the driver, and the part of the runtime that stands between the two halves: contexts,
// allocations with their memory, escapes, presents. Knows nothing of the driver but what comes through the callbacks.
//
// Everything that the driver does against the contract (an unknown handle, a double lock, a private record of the
// wrong size) is refused and kept as a line of Violations(). Any thread may call.
#pragma once

#include "ddi/ddi.h"
#include "kernel/UMDAllocationPrivateData.h"

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

/// One kernel-mode allocation.
struct HostAllocation
{
    D3DKMT_HANDLE m_hAllocation = 0;
    D3DKMT_HANDLE m_hKMResource = 0;
    HANDLE m_hResource = nullptr;  ///< the runtime's handle of the resource
    bool m_bPrimary = false;
    UINT m_VidPnSourceId = 0;  ///< of a primary
    UMDAllocationPrivateData m_PrivateData{};
    std::vector<BYTE> m_Memory;  ///< what pfnLockCb hands out
    bool m_bLocked = false;
};

/// One call of pfnPresentCb.
struct HostPresentCall
{
    D3DKMT_HANDLE m_hSrcAllocation;
    HANDLE m_hContext;
    LONGLONG m_Time;  ///< of the performance counter
};

class HostKernel
{
public:
    HostKernel();
    ~HostKernel();
    HostKernel(const HostKernel&) = delete;
    HostKernel& operator=(const HostKernel&) = delete;

    /// The runtime's handles of the one adapter and the one device.
    HANDLE AdapterHandle() { return &m_AdapterTag; }
    HANDLE DeviceHandle() { return &m_DeviceTag; }
    /// All 22 callbacks. Those that this driver has no use for answer E_NOTIMPL and are counted.
    static const D3DDDI_DEVICECALLBACKS& Callbacks();

    /// The video-present source id that the escape answers for an index; the index itself at first.
    void SetSourceId(UINT index, UINT sourceId);
    /// From now on the callback of this name ("pfnAllocateCb") answers this result; S_OK makes it work again.
    void SetResult(const std::string& callback, HRESULT hResult);

    std::vector<std::string> Violations() const { return Read(m_Violations); }
    /// How often the callback of this name was called, refused calls included.
    UINT Calls(const std::string& callback) const;
    size_t ContextCount() const { return Count(m_Contexts); }
    size_t AllocationCount() const { return Count(m_Allocations); }
    std::optional<HostAllocation> FindAllocation(HANDLE hResource) const;
    size_t PresentCount() const { return Read(m_PresentCount); }
    /// Only after a present.
    HostPresentCall LastPresent() const { return Read(m_LastPresent); }
    /// The allocation that pfnSetDisplayModeCb named last, 0 before.
    D3DKMT_HANDLE DisplayModeAllocation() const { return Read(m_hDisplayMode); }

private:
    friend struct HostKernelCallbacks;

    /// What a runtime handle points to.
    struct Tag
    {
        HostKernel* m_pKernel;
        const char* m_pName;
    };

    /// A context with two sets of buffers: pfnRenderCb hands out the other one each time.
    struct Context
    {
        static constexpr UINT kCommandBytes = 4096;
        static constexpr UINT kAllocations = 64;
        static constexpr UINT kPatchLocations = 64;
        struct Buffers
        {
            BYTE m_Commands[kCommandBytes];
            D3DDDI_ALLOCATIONLIST m_Allocations[kAllocations];
            D3DDDI_PATCHLOCATIONLIST m_PatchLocations[kPatchLocations];
        };
        /// What pfnCreateContextCb and pfnRenderCb answer: each memory and its size, in the order of their records.
        using HandedOut = std::tuple<void*, UINT, D3DDDI_ALLOCATIONLIST*, UINT, D3DDDI_PATCHLOCATIONLIST*, UINT>;
        HandedOut HandOut()
        {
            Buffers& current = m_Buffers[m_Current];
            return {current.m_Commands, kCommandBytes, current.m_Allocations, kAllocations, current.m_PatchLocations,
                kPatchLocations};
        }

        Buffers m_Buffers[2];
        UINT m_Current = 0;
    };

    /// A copy of a member, taken under the mutex.
    template <typename Member>
    Member Read(const Member& member) const
    {
        std::lock_guard lock(m_Mutex);
        return member;
    }
    /// How many a container holds, asked under the mutex.
    template <typename Container>
    size_t Count(const Container& container) const
    {
        std::lock_guard lock(m_Mutex);
        return container.size();
    }

    HRESULT Allocate(D3DDDICB_ALLOCATE* pArg);
    HRESULT Deallocate(const D3DDDICB_DEALLOCATE* pArg);
    HRESULT SetDisplayMode(D3DDDICB_SETDISPLAYMODE* pArg);
    HRESULT Present(D3DDDICB_PRESENT* pArg);
    HRESULT Render(D3DDDICB_RENDER* pArg);
    HRESULT Lock(D3DDDICB_LOCK* pArg);
    HRESULT Unlock(const D3DDDICB_UNLOCK* pArg);
    HRESULT Escape(const D3DDDICB_ESCAPE* pArg);
    HRESULT CreateContext(D3DDDICB_CREATECONTEXT* pArg);
    HRESULT DestroyContext(const D3DDDICB_DESTROYCONTEXT* pArg);

    /// Counts the call; the result that SetResult asked for, or S_OK.
    HRESULT Enter(const Tag& handle, const Tag& expected, const char* pCallback);
    HRESULT Violation(const std::string& text);
    HostAllocation* Find(D3DKMT_HANDLE hAllocation);
    Context* FindContext(HANDLE hContext);
    HRESULT AllocateOne(const D3DDDICB_ALLOCATE& arg, D3DDDI_ALLOCATIONINFO& info, D3DKMT_HANDLE hKMResource);

    Tag m_AdapterTag = {this, "adapter"};
    Tag m_DeviceTag = {this, "device"};
    mutable std::recursive_mutex m_Mutex;  ///< guards all below
    UINT m_SourceIds[6] = {0, 1, 2, 3, 4, 5};
    std::map<std::string, HRESULT> m_Results;
    std::map<std::string, UINT> m_Calls;
    std::vector<std::string> m_Violations;
    std::map<D3DKMT_HANDLE, HostAllocation> m_Allocations;
    std::vector<std::unique_ptr<Context>> m_Contexts;
    size_t m_PresentCount = 0;
    HostPresentCall m_LastPresent{};
    D3DKMT_HANDLE m_hDisplayMode = 0;
    D3DKMT_HANDLE m_NextHandle = 0x40000000;
};
