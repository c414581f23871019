// Queries and fences: none is offered.
#include "ImportPatch.h"
#include "OperationTraceFixture.h"

using namespace tesslo::test;

namespace
{
class UMDDdiDeviceQueryTest : public OperationTraceFixture
{
};

void* volatile g_pWatched = nullptr;  ///< null once it was freed: the address may serve another allocation then
void (*g_pFree)(void*) = nullptr;

void WatchFree(void* pMemory)
{
    if (pMemory == g_pWatched)
        g_pWatched = nullptr;
    g_pFree(pMemory);
}
}  // namespace

TEST_F(UMDDdiDeviceQueryTest, WhatIsNotOffered_Called_TracesItsEntryAlone)
{
    D3DDDIARG_CREATEQUERY query = {};
    ExpectDeclined({
        {E_NOTIMPL, [&] { return Device().CreateFence(); }, {"0x4 >>> UMDDdiDevice::CreateFence\n"}},
        {E_NOTIMPL, [&] { return Device().IssueQuery(nullptr); }, {"0x4 >>> UMDDdiDevice::IssueQuery\n"}},
        {E_NOTIMPL, [&] { return Device().GetQueryData(nullptr); }, {"0x4 >>> UMDDdiDevice::GetQueryData\n"}},
        {E_FAIL, [&] { return Device().CreateQuery(&query); },
            {"0x4 >>> UMDDdiDevice::CreateQuery\n", "0x4 >>> UMDDdiDevice::CreateFence\n"}},
    });
}

TEST_F(UMDDdiDeviceQueryTest, CreateQuery_EveryType_IsRefusedForWantOfAFence)
{
    for (int type = 0; type < 20; ++type)
    {
        m_Trace.Clear();
        D3DDDIARG_CREATEQUERY arg = {static_cast<D3DDDIQUERYTYPE>(type), this};
        EXPECT_EQ(UMDDdiCreateQuery(DeviceHandle(), &arg), E_FAIL);
        EXPECT_EQ(arg.hQuery, this) << "left alone";
        EXPECT_EQ(Trace(),
            (Lines{"=> UMDDdiCreateQuery\n", ">>> UMDDdiDevice::CreateQuery\n", ">>> UMDDdiDevice::CreateFence\n"}));
    }
}

TEST_F(UMDDdiDeviceQueryTest, DeleteQuery_Null_EntersAndLeaves)
{
    EXPECT_EQ(DeviceTrace([&] { EXPECT_EQ(UMDDdiDeleteQuery(DeviceHandle(), nullptr), S_OK); }),
        (Lines{"0x4 >>> UMDDdiDevice::DeleteQuery\n", "0x8 <<< UMDDdiDevice::DeleteQuery\n"}));
}

TEST_F(UMDDdiDeviceQueryTest, DeleteQuery_Allocated_FreesIt)
{
    g_pWatched = new UINT(0xDEADBEEF);
    {
        const ImportPatch patch(nullptr, "msvcrt.dll", "free", WatchFree, &g_pFree);
        EXPECT_EQ(UMDDdiDeleteQuery(DeviceHandle(), g_pWatched), S_OK);
    }
    EXPECT_EQ(g_pWatched, nullptr);
    EXPECT_EQ(m_Trace.Count("<<< UMDDdiDevice::DeleteQuery\n"), 1u);
}
