// The host's kernel-mode half keeps the driver to the contract.
#include "host/kernel/HostKernel.h"
#include "kernel/UMDEscape.h"

#include <gtest/gtest.h>

namespace
{

class HostKernelTest : public testing::Test
{
protected:
    HRESULT Allocate(UMDAllocationPrivateData& data, UINT bytes = sizeof(UMDAllocationPrivateData))
    {
        m_Info = {};
        m_Info.pPrivateDriverData = &data;
        m_Info.PrivateDriverDataSize = bytes;
        m_Info.Flags.Primary = data.Kind == UMDALLOCATIONKIND_PRIMARY;
        D3DDDICB_ALLOCATE arg{};
        arg.hResource = this;
        arg.NumAllocations = 1;
        arg.pAllocationInfo = &m_Info;
        return m_Callbacks.pfnAllocateCb(m_Kernel.DeviceHandle(), &arg);
    }

    static UMDAllocationPrivateData Data(UINT kind)
    {
        UMDAllocationPrivateData data{};
        data.Kind = kind;
        data.Width = 8;
        data.Height = 4;
        data.Format = D3DFMT_X8R8G8B8;
        return data;
    }

    HRESULT Lock(D3DKMT_HANDLE hAllocation, void** ppData)
    {
        D3DDDICB_LOCK arg{};
        arg.hAllocation = hAllocation;
        const HRESULT hr = m_Callbacks.pfnLockCb(m_Kernel.DeviceHandle(), &arg);
        *ppData = arg.pData;
        return hr;
    }

    HRESULT Unlock(D3DKMT_HANDLE hAllocation)
    {
        const D3DDDICB_UNLOCK arg = {1, &hAllocation};
        return m_Callbacks.pfnUnlockCb(m_Kernel.DeviceHandle(), &arg);
    }

    HRESULT Deallocate(D3DKMT_HANDLE hAllocation, HANDLE hResource)
    {
        const D3DDDICB_DEALLOCATE arg = {hResource, 1, &hAllocation};
        return m_Callbacks.pfnDeallocateCb(m_Kernel.DeviceHandle(), &arg);
    }

    void ExpectViolation(const char* pText)
    {
        ASSERT_EQ(1u, m_Kernel.Violations().size());
        EXPECT_EQ(pText, m_Kernel.Violations()[0]);
    }

    HostKernel m_Kernel;
    const D3DDDI_DEVICECALLBACKS& m_Callbacks = HostKernel::Callbacks();
    D3DDDI_ALLOCATIONINFO m_Info{};
};

}  // namespace

TEST_F(HostKernelTest, Allocate_ProperRecord_IsKeptUntilDeallocated)
{
    UMDAllocationPrivateData data = Data(UMDALLOCATIONKIND_PRIMARY);
    ASSERT_EQ(S_OK, Allocate(data));
    const auto allocation = m_Kernel.FindAllocation(this);
    ASSERT_TRUE(allocation.has_value());
    EXPECT_EQ(m_Info.hAllocation, allocation->m_hAllocation);
    EXPECT_TRUE(allocation->m_bPrimary);
    EXPECT_EQ(8u * 4 * 4, allocation->m_Memory.size());
    EXPECT_EQ(S_OK, Deallocate(m_Info.hAllocation, this));
    EXPECT_EQ(0u, m_Kernel.AllocationCount());
    EXPECT_TRUE(m_Kernel.Violations().empty());
}

TEST_F(HostKernelTest, Allocate_RecordOfAnotherSize_IsRefused)
{
    UMDAllocationPrivateData data = Data(UMDALLOCATIONKIND_OTHER);
    EXPECT_EQ(E_INVALIDARG, Allocate(data, 72));
    ExpectViolation("pfnAllocateCb: private data of 72 bytes");
}

TEST_F(HostKernelTest, Allocate_UnknownKind_IsRefused)
{
    UMDAllocationPrivateData data = Data(7);
    EXPECT_EQ(E_INVALIDARG, Allocate(data));
    ExpectViolation("pfnAllocateCb: kind 7");
}

TEST_F(HostKernelTest, Deallocate_OfAnotherResource_IsRefused)
{
    UMDAllocationPrivateData data = Data(UMDALLOCATIONKIND_OTHER);
    ASSERT_EQ(S_OK, Allocate(data));
    EXPECT_EQ(E_INVALIDARG, Deallocate(m_Info.hAllocation, nullptr));
    ExpectViolation("pfnDeallocateCb: allocation of another resource");
    EXPECT_EQ(1u, m_Kernel.AllocationCount());
}

TEST_F(HostKernelTest, Lock_Twice_IsRefused)
{
    UMDAllocationPrivateData data = Data(UMDALLOCATIONKIND_OTHER);
    ASSERT_EQ(S_OK, Allocate(data));
    void* pData = nullptr;
    ASSERT_EQ(S_OK, Lock(m_Info.hAllocation, &pData));
    EXPECT_NE(nullptr, pData);
    EXPECT_EQ(E_INVALIDARG, Lock(m_Info.hAllocation, &pData));
    ExpectViolation("pfnLockCb: locked allocation");
    EXPECT_EQ(S_OK, Unlock(m_Info.hAllocation));
}

TEST_F(HostKernelTest, Unlock_NotLocked_IsRefused)
{
    UMDAllocationPrivateData data = Data(UMDALLOCATIONKIND_OTHER);
    ASSERT_EQ(S_OK, Allocate(data));
    EXPECT_EQ(E_INVALIDARG, Unlock(m_Info.hAllocation));
    ExpectViolation("pfnUnlockCb: allocation that is not locked");
}

TEST_F(HostKernelTest, Render_Succeeds_HandsOutTheOtherBuffers)
{
    D3DDDICB_CREATECONTEXT context{};
    ASSERT_EQ(S_OK, m_Callbacks.pfnCreateContextCb(m_Kernel.DeviceHandle(), &context));
    D3DDDICB_RENDER render{};
    render.hContext = context.hContext;
    render.CommandLength = context.CommandBufferSize;
    ASSERT_EQ(S_OK, m_Callbacks.pfnRenderCb(m_Kernel.DeviceHandle(), &render));
    EXPECT_NE(context.pCommandBuffer, render.pNewCommandBuffer);
    EXPECT_NE(context.pAllocationList, render.pNewAllocationList);
    EXPECT_NE(context.pPatchLocationList, render.pNewPatchLocationList);
    ASSERT_EQ(S_OK, m_Callbacks.pfnRenderCb(m_Kernel.DeviceHandle(), &render));
    EXPECT_EQ(context.pCommandBuffer, render.pNewCommandBuffer);
}

TEST_F(HostKernelTest, Render_MoreThanTheBuffer_IsRefused)
{
    D3DDDICB_CREATECONTEXT context{};
    ASSERT_EQ(S_OK, m_Callbacks.pfnCreateContextCb(m_Kernel.DeviceHandle(), &context));
    D3DDDICB_RENDER render{};
    render.hContext = context.hContext;
    render.CommandLength = context.CommandBufferSize + 1;
    EXPECT_EQ(E_INVALIDARG, m_Callbacks.pfnRenderCb(m_Kernel.DeviceHandle(), &render));
    ExpectViolation("pfnRenderCb: commands beyond the buffer");
}

TEST_F(HostKernelTest, Escape_KnownIndex_AnswersItsSource)
{
    m_Kernel.SetSourceId(4, 9);
    UMDESCAPE_VIDPNSOURCE record{};
    record.Index = 4;
    D3DDDICB_ESCAPE arg{};
    arg.pPrivateDriverData = &record;
    arg.PrivateDriverDataSize = sizeof(record);
    EXPECT_EQ(S_OK, m_Callbacks.pfnEscapeCb(m_Kernel.AdapterHandle(), &arg));
    EXPECT_EQ(9u, record.VidPnSourceId);
}

TEST_F(HostKernelTest, Escape_DeviceHandle_IsRefused)
{
    UMDESCAPE_VIDPNSOURCE record{};
    D3DDDICB_ESCAPE arg{};
    arg.pPrivateDriverData = &record;
    arg.PrivateDriverDataSize = sizeof(record);
    EXPECT_EQ(E_INVALIDARG, m_Callbacks.pfnEscapeCb(m_Kernel.DeviceHandle(), &arg));
    ExpectViolation("pfnEscapeCb: called with the device's handle");
}

TEST_F(HostKernelTest, SetResult_Failure_IsAnsweredAndNothingDone)
{
    m_Kernel.SetResult("pfnAllocateCb", D3DERR_OUTOFVIDEOMEMORY);
    UMDAllocationPrivateData data = Data(UMDALLOCATIONKIND_OTHER);
    EXPECT_EQ(D3DERR_OUTOFVIDEOMEMORY, Allocate(data));
    EXPECT_EQ(0u, m_Kernel.AllocationCount());
    EXPECT_EQ(1u, m_Kernel.Calls("pfnAllocateCb"));
    EXPECT_TRUE(m_Kernel.Violations().empty());
}

TEST_F(HostKernelTest, Callbacks_AllTwentyTwo_AreThere)
{
    void* const* ppSlots = reinterpret_cast<void* const*>(&m_Callbacks);
    for (size_t i = 0; i < sizeof(m_Callbacks) / sizeof(void*); ++i)
        EXPECT_NE(nullptr, ppSlots[i]) << "slot " << i;
    EXPECT_EQ(E_NOTIMPL, m_Callbacks.pfnSetAsyncCallbacksCb(m_Kernel.DeviceHandle(), TRUE));
    EXPECT_EQ(1u, m_Kernel.Calls("pfnSetAsyncCallbacksCb"));
}
