// Memory running out: every allocation of the driver's own, one by one, in every create and open.
#include "FailNthAllocation.h"
#include "OpenRequestFixture.h"

#include "resources/UMDRscSurface.h"
#include "resources/UMDRscTexture.h"

using namespace tesslo::test;

namespace
{

class UMDResourceMemoryTest : public OpenRequestFixture
{
};
}  // namespace

TEST_F(UMDResourceMemoryTest, ObjectItself_EveryClass_AnswersOutOfMemory)
{
    for (UINT flags : kEveryClass)
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
            pResource = CreateAny(request);
            EXPECT_GE(fail.Count(), 2U);
        }
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
        DestroyAll();
        ExpectNothingLeft();
    }
}

TEST_F(UMDResourceMemoryTest, Open_WithoutMemoryForTheObject_AnswersOkWithANullHandle)
{
    const TraceMask quiet(0);
    {
        const FailNthAllocation fail(1);
        EXPECT_EQ(UMDDdiOpenResource(DeviceHandle(), &m_Open), S_OK);
    }
    EXPECT_EQ(m_Open.hResource, nullptr);
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDResourceMemoryTest, Open_WithoutMemoryForTheList_OpensWithoutIt)
{
    const TraceMask quiet(0);
    UMDRscBase* pResource = nullptr;
    {
        const FailNthAllocation fail(2);
        pResource = OpenAny(m_Open);
        EXPECT_GE(fail.Count(), 2U);
    }
    ASSERT_NE(pResource, nullptr);
    EXPECT_EQ(dynamic_cast<UMDRscTexture*>(pResource)->WriteToDelegated(0, nullptr), E_FAIL);
}
