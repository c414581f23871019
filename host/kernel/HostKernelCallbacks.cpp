// The table of callbacks that the driver gets, and the way from a runtime handle to its HostKernel.
#include "host/kernel/HostKernel.h"

struct HostKernelCallbacks
{
    using Tag = HostKernel::Tag;

    // A callback that works: counted, checked, then the kernel's own function.
    template <auto kFunction, typename Argument>
    static HRESULT Serve(HANDLE handle, Tag HostKernel::* pExpected, const char* pName, Argument* pArgument)
    {
        const Tag& tag = *static_cast<const Tag*>(handle);
        HostKernel& kernel = *tag.m_pKernel;
        std::lock_guard lock(kernel.m_Mutex);
        if (HRESULT hr = kernel.Enter(tag, kernel.*pExpected, pName); FAILED(hr))
            return hr;
        if (pArgument == nullptr)
            return kernel.Violation(std::string(pName) + ": no argument");
        return (kernel.*kFunction)(pArgument);
    }

    static HRESULT Refuse(HANDLE handle, const char* pName)
    {
        HostKernel& kernel = *static_cast<const Tag*>(handle)->m_pKernel;
        std::lock_guard lock(kernel.m_Mutex);
        kernel.Enter(kernel.m_DeviceTag, kernel.m_DeviceTag, pName);
        return E_NOTIMPL;
    }

    static const D3DDDI_DEVICECALLBACKS kTable;
};

#define HOST_SERVE(name, function, tag)                                                                      \
    [](HANDLE handle, auto* pArgument) -> HRESULT {                                                          \
        return HostKernelCallbacks::Serve<&HostKernel::function>(handle, &HostKernel::tag, name, pArgument); \
    }
#define HOST_REFUSE(name) [](HANDLE handle, auto) -> HRESULT { return HostKernelCallbacks::Refuse(handle, name); }

const D3DDDI_DEVICECALLBACKS HostKernelCallbacks::kTable = {
    .pfnAllocateCb = HOST_SERVE("pfnAllocateCb", Allocate, m_DeviceTag),
    .pfnDeallocateCb = HOST_SERVE("pfnDeallocateCb", Deallocate, m_DeviceTag),
    .pfnSetPriorityCb = HOST_REFUSE("pfnSetPriorityCb"),
    .pfnQueryResidencyCb = HOST_REFUSE("pfnQueryResidencyCb"),
    .pfnSetDisplayModeCb = HOST_SERVE("pfnSetDisplayModeCb", SetDisplayMode, m_DeviceTag),
    .pfnPresentCb = HOST_SERVE("pfnPresentCb", Present, m_DeviceTag),
    .pfnRenderCb = HOST_SERVE("pfnRenderCb", Render, m_DeviceTag),
    .pfnLockCb = HOST_SERVE("pfnLockCb", Lock, m_DeviceTag),
    .pfnUnlockCb = HOST_SERVE("pfnUnlockCb", Unlock, m_DeviceTag),
    // The one callback that names the adapter, not the device.
    .pfnEscapeCb = HOST_SERVE("pfnEscapeCb", Escape, m_AdapterTag),
    .pfnCreateOverlayCb = HOST_REFUSE("pfnCreateOverlayCb"),
    .pfnUpdateOverlayCb = HOST_REFUSE("pfnUpdateOverlayCb"),
    .pfnFlipOverlayCb = HOST_REFUSE("pfnFlipOverlayCb"),
    .pfnDestroyOverlayCb = HOST_REFUSE("pfnDestroyOverlayCb"),
    .pfnCreateContextCb = HOST_SERVE("pfnCreateContextCb", CreateContext, m_DeviceTag),
    .pfnDestroyContextCb = HOST_SERVE("pfnDestroyContextCb", DestroyContext, m_DeviceTag),
    .pfnCreateSynchronizationObjectCb = HOST_REFUSE("pfnCreateSynchronizationObjectCb"),
    .pfnDestroySynchronizationObjectCb = HOST_REFUSE("pfnDestroySynchronizationObjectCb"),
    .pfnWaitForSynchronizationObjectCb = HOST_REFUSE("pfnWaitForSynchronizationObjectCb"),
    .pfnSignalSynchronizationObjectCb = HOST_REFUSE("pfnSignalSynchronizationObjectCb"),
    .pfnSetAsyncCallbacksCb = HOST_REFUSE("pfnSetAsyncCallbacksCb"),
    .pfnSetDisplayPrivateDriverFormatCb = HOST_REFUSE("pfnSetDisplayPrivateDriverFormatCb"),
};

const D3DDDI_DEVICECALLBACKS& HostKernel::Callbacks()
{
    return HostKernelCallbacks::kTable;
}
