// Memory running out: every allocation of the driver's own, one by one, in every create and open.
#include "FailNthAllocation.h"
#include "ResourceFixture.h"

#include "kernel/UMDAllocationPrivateData.h"
#include "resources/UMDRscSurface.h"
#include "resources/UMDRscTexture.h"

using namespace tesslo::test;
using Lines = std::vector<std::string>;

namespace
{
constexpr D3DDDI_POOL kSystem = D3DDDIPOOL_SYSTEMMEM;

class UMDResourceMemoryTest : public ResourceFixture
{
};
}  // namespace

TEST_F(UMDResourceMemoryTest, ObjectItself_EveryClass_AnswersOutOfMemory)
{
    for (UINT flags :
        {kFlagVertexBuffer, kFlagIndexBuffer, kFlagZBuffer, kFlagCubeMap, kFlagTexture, kFlagRenderTarget, 0U})
    {
        CreateRequest request(flags, kSystem, D3DDDIFMT_A8R8G8B8, 16, 16);
        ForgetCalls();
        HRESULT hr = S_OK;
        const Lines errors = ErrorsOf([&] {
            const FailNthAllocation fail(1);
            hr = UMDDdiCreateResource(DeviceHandle(), &request.m_Arg);
        });
        EXPECT_EQ(errors, Lines{"UMDDdiCreateResource error! E_OUTOFMEMORY\n"});
        EXPECT_EQ(hr, E_OUTOFMEMORY) << flags;
        EXPECT_EQ(DeviceLines(), Lines{});
        EXPECT_EQ(KernelLines(), Lines{});
    }
}

TEST_F(UMDResourceMemoryTest, SurfaceList_Missing_TheObjectWorksWithoutUploads)
{
    const RECT rect = {0, 0, 4, 4};
    for (UINT flags : {0U, kFlagTexture, kFlagCubeMap})
    {
        CreateRequest request(flags, kSystem, D3DDDIFMT_A8R8G8B8, 16, 16);
        request.WithMemory(4, 0);
        UMDRscBase* pResource = nullptr;
        {
            const TraceMask quiet(0);
            const FailNthAllocation fail(2);
            ASSERT_EQ(UMDDdiCreateResource(DeviceHandle(), &request.m_Arg), S_OK);
            EXPECT_GE(fail.Count(), 2U);
        }
        pResource = ToResource(request.m_Arg.hResource);
        if (auto* pSurface = dynamic_cast<UMDRscSurface*>(pResource))
        {
            EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pSurface->WriteToDelegated(0, &rect), E_FAIL); }),
                Lines{"UMDRscSurface::WriteToDelegated failed! m_SurfCount = 1\n"});
        }
        if (auto* pTexture = dynamic_cast<UMDRscTexture*>(pResource))
        {
            EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pTexture->WriteToDelegated(0, &rect), E_FAIL); }),
                Lines{"UMDRscTexture::WriteToDelegated failed! m_SurfCount >= StreamOffset\n"});
            EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(pTexture->WriteFromDelegated(0), E_FAIL); }),
                Lines{"UMDRscTexture::WriteFromDelegated failed! m_SurfCount >= StreamOffset\n"});
            EXPECT_NE(pTexture->GetSurface(0, 0), nullptr);
        }
        EXPECT_EQ(UMDDdiDestroyResource(DeviceHandle(), request.m_Arg.hResource), E_FAIL);
        EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
        EXPECT_EQ(m_Kernel.AllocationCount(), 0U);
    }
}

TEST_F(UMDResourceMemoryTest, Open_WithoutMemory_AnswersOkWithANullHandle)
{
    UMDAllocationPrivateData record = {};
    record.Kind = 6;
    record.TextureKind = 6;
    record.Width = record.Height = 16;
    record.Format = 21;
    record.Levels = 2;
    D3DDDI_OPENALLOCATIONINFO allocation = {};
    allocation.pPrivateDriverData = &record;
    allocation.PrivateDriverDataSize = sizeof record;
    D3DDDIARG_OPENRESOURCE open = {};
    open.NumAllocations = 1;
    open.pOpenAllocationInfo = &allocation;
    open.hResource = this;
    const TraceMask quiet(0);
    {
        const FailNthAllocation fail(1);
        EXPECT_EQ(UMDDdiOpenResource(DeviceHandle(), &open), S_OK);
    }
    EXPECT_EQ(open.hResource, nullptr);
    EXPECT_EQ(DeviceLines(), Lines{});
    {
        const FailNthAllocation fail(2);  // the list: the texture opens without it
        EXPECT_EQ(UMDDdiOpenResource(DeviceHandle(), &open), S_OK);
    }
    ASSERT_NE(open.hResource, nullptr);
    EXPECT_EQ(dynamic_cast<UMDRscTexture*>(ToResource(open.hResource))->WriteToDelegated(0, nullptr), E_FAIL);
    UMDDdiDestroyResource(DeviceHandle(), open.hResource);
}
