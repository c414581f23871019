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
        ASSERT_EQ(m_Kernel.Violations().size(), 1u);
        EXPECT_EQ(m_Kernel.Violations()[0], pText);
    }

    HostKernel m_Kernel;
    const D3DDDI_DEVICECALLBACKS& m_Callbacks = HostKernel::Callbacks();
    D3DDDI_ALLOCATIONINFO m_Info{};
};

}  // namespace

TEST_F(HostKernelTest, Allocate_ProperRecord_IsKeptUntilDeallocated)
{
    UMDAllocationPrivateData data = Data(UMDALLOCATIONKIND_PRIMARY);
    ASSERT_EQ(Allocate(data), S_OK);
    const auto allocation = m_Kernel.FindAllocation(this);
    ASSERT_TRUE(allocation.has_value());
    EXPECT_EQ(allocation->m_hAllocation, m_Info.hAllocation);
    EXPECT_TRUE(allocation->m_bPrimary);
    EXPECT_EQ(allocation->m_Memory.size(), 8u * 4 * 4);
    EXPECT_EQ(Deallocate(m_Info.hAllocation, this), S_OK);
    EXPECT_EQ(m_Kernel.AllocationCount(), 0u);
    EXPECT_TRUE(m_Kernel.Violations().empty());
}

TEST_F(HostKernelTest, Allocate_RecordOfAnotherSize_IsRefused)
{
    UMDAllocationPrivateData data = Data(UMDALLOCATIONKIND_OTHER);
    EXPECT_EQ(Allocate(data, 72), E_INVALIDARG);
    ExpectViolation("pfnAllocateCb: private data of 72 bytes");
}

TEST_F(HostKernelTest, Allocate_UnknownKind_IsRefused)
{
    UMDAllocationPrivateData data = Data(7);
    EXPECT_EQ(Allocate(data), E_INVALIDARG);
    ExpectViolation("pfnAllocateCb: kind 7");
}

TEST_F(HostKernelTest, Deallocate_OfAnotherResource_IsRefused)
{
    UMDAllocationPrivateData data = Data(UMDALLOCATIONKIND_OTHER);
    ASSERT_EQ(Allocate(data), S_OK);
    EXPECT_EQ(Deallocate(m_Info.hAllocation, nullptr), E_INVALIDARG);
    ExpectViolation("pfnDeallocateCb: allocation of another resource");
    EXPECT_EQ(m_Kernel.AllocationCount(), 1u);
}

TEST_F(HostKernelTest, Lock_Twice_IsRefused)
{
    UMDAllocationPrivateData data = Data(UMDALLOCATIONKIND_OTHER);
    ASSERT_EQ(Allocate(data), S_OK);
    void* pData = nullptr;
    ASSERT_EQ(Lock(m_Info.hAllocation, &pData), S_OK);
    EXPECT_NE(pData, nullptr);
    EXPECT_EQ(Lock(m_Info.hAllocation, &pData), E_INVALIDARG);
    ExpectViolation("pfnLockCb: locked allocation");
    EXPECT_EQ(Unlock(m_Info.hAllocation), S_OK);
}

TEST_F(HostKernelTest, Unlock_NotLocked_IsRefused)
{
    UMDAllocationPrivateData data = Data(UMDALLOCATIONKIND_OTHER);
    ASSERT_EQ(Allocate(data), S_OK);
    EXPECT_EQ(Unlock(m_Info.hAllocation), E_INVALIDARG);
    ExpectViolation("pfnUnlockCb: allocation that is not locked");
}

TEST_F(HostKernelTest, Render_Succeeds_HandsOutTheOtherBuffers)
{
    D3DDDICB_CREATECONTEXT context{};
    ASSERT_EQ(m_Callbacks.pfnCreateContextCb(m_Kernel.DeviceHandle(), &context), S_OK);
    D3DDDICB_RENDER render{};
    render.hContext = context.hContext;
    render.CommandLength = context.CommandBufferSize;
    ASSERT_EQ(m_Callbacks.pfnRenderCb(m_Kernel.DeviceHandle(), &render), S_OK);
    EXPECT_NE(render.pNewCommandBuffer, context.pCommandBuffer);
    EXPECT_NE(render.pNewAllocationList, context.pAllocationList);
    EXPECT_NE(render.pNewPatchLocationList, context.pPatchLocationList);
    ASSERT_EQ(m_Callbacks.pfnRenderCb(m_Kernel.DeviceHandle(), &render), S_OK);
    EXPECT_EQ(render.pNewCommandBuffer, context.pCommandBuffer);
}

TEST_F(HostKernelTest, Render_MoreThanTheBuffer_IsRefused)
{
    D3DDDICB_CREATECONTEXT context{};
    ASSERT_EQ(m_Callbacks.pfnCreateContextCb(m_Kernel.DeviceHandle(), &context), S_OK);
    D3DDDICB_RENDER render{};
    render.hContext = context.hContext;
    render.CommandLength = context.CommandBufferSize + 1;
    EXPECT_EQ(m_Callbacks.pfnRenderCb(m_Kernel.DeviceHandle(), &render), E_INVALIDARG);
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
    EXPECT_EQ(m_Callbacks.pfnEscapeCb(m_Kernel.AdapterHandle(), &arg), S_OK);
    EXPECT_EQ(record.VidPnSourceId, 9u);
}

TEST_F(HostKernelTest, Escape_DeviceHandle_IsRefused)
{
    UMDESCAPE_VIDPNSOURCE record{};
    D3DDDICB_ESCAPE arg{};
    arg.pPrivateDriverData = &record;
    arg.PrivateDriverDataSize = sizeof(record);
    EXPECT_EQ(m_Callbacks.pfnEscapeCb(m_Kernel.DeviceHandle(), &arg), E_INVALIDARG);
    ExpectViolation("pfnEscapeCb: called with the device's handle");
}

TEST_F(HostKernelTest, SetResult_Failure_IsAnsweredAndNothingDone)
{
    m_Kernel.SetResult("pfnAllocateCb", D3DERR_OUTOFVIDEOMEMORY);
    UMDAllocationPrivateData data = Data(UMDALLOCATIONKIND_OTHER);
    EXPECT_EQ(Allocate(data), D3DERR_OUTOFVIDEOMEMORY);
    EXPECT_EQ(m_Kernel.AllocationCount(), 0u);
    EXPECT_EQ(m_Kernel.Calls("pfnAllocateCb"), 1u);
    EXPECT_TRUE(m_Kernel.Violations().empty());
}

TEST_F(HostKernelTest, Callbacks_AllTwentyTwo_AreThere)
{
    void* const* ppSlots = reinterpret_cast<void* const*>(&m_Callbacks);
    for (size_t i = 0; i < sizeof(m_Callbacks) / sizeof(void*); ++i)
        EXPECT_NE(ppSlots[i], nullptr) << "slot " << i;
    EXPECT_EQ(m_Callbacks.pfnSetAsyncCallbacksCb(m_Kernel.DeviceHandle(), TRUE), E_NOTIMPL);
    EXPECT_EQ(m_Kernel.Calls("pfnSetAsyncCallbacksCb"), 1u);
}
