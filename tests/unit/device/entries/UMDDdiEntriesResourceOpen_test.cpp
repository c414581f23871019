// Opening a texture that another process shares.
#include "OpenRequestFixture.h"

#include "resources/UMDRscTexture.h"

#include <cstring>

using namespace tesslo::test;
using Lines = std::vector<std::string>;

namespace
{
class UMDDdiOpenResourceTest : public OpenRequestFixture
{
protected:
    UMDDdiOpenResourceTest()
    {
        m_Record.Format = 21;
        m_Record.ResourceFlags = 0x10801;
        m_Record.DriverHandle = 0x11223344;
        m_Record.SharedHandle = 0xC0001234;
        m_Allocation.hAllocation = 0x40000080;
        m_Open.hResource = reinterpret_cast<HANDLE>(0x55660000);
    }

    void TearDown() override
    {
        m_Fake.ClearScripts();
        if (m_pOpened)
        {
            EXPECT_EQ(UMDDdiDestroyResource(DeviceHandle(), ToHandle(m_pOpened)), E_FAIL);
        }
        ResourceFixture::TearDown();
    }

    HRESULT Open() { return UMDDdiOpenResource(DeviceHandle(), &m_Open); }

    UMDRscTexture* m_pOpened = nullptr;
};
}  // namespace

TEST_F(UMDDdiOpenResourceTest, SharedTexture_BecomesATextureOfTheRecordsValues)
{
    EXPECT_EQ(Open(), S_OK);
    m_pOpened = dynamic_cast<UMDRscTexture*>(ToResource(m_Open.hResource));
    ASSERT_NE(m_pOpened, nullptr);
    EXPECT_EQ(DeviceLines(), (Lines{"CreateTexture(64, 32, 2, 1, 21, 0, out, out)", "texture#1.GetSurfaceLevel(0, out)",
                                 "texture#1.GetSurfaceLevel(1, out)"}));
    EXPECT_EQ(KernelLines(), Lines{});
    EXPECT_EQ(m_pOpened->GetType(), UMDRESOURCETYPE_TEXTURE);
    EXPECT_EQ(m_pOpened->GetFormat(), D3DDDIFMT_A8R8G8B8);
    EXPECT_TRUE(m_pOpened->IsRenderTarget());

    char opened[200];
    snprintf(opened, sizeof opened,
        "UMDRscTexture::Open Resource:0x%x m_pTexture 0x%x Width:64 Height:32 Format:21 SharedHandle:0xc0001234 hAllocation:0x40000080\n",
        UMDLow32(m_pOpened), UMDLow32(m_pOpened->GetTexture()));
    EXPECT_EQ(m_Trace.Count(opened), 1U);
    EXPECT_EQ(m_Trace.Lines().front(), "=> UMDDdiOpenResource \n");
    char handle[32];
    snprintf(handle, sizeof handle, "   Handle:0x%x\n", UMDLow32(m_pOpened));
    EXPECT_EQ(m_Trace.Lines().back(), handle);
}

TEST_F(UMDDdiOpenResourceTest, SharedHandle_EitherSign_ReachesTheDeviceSignExtended)
{
    const struct
    {
        UINT Record;
        UINT64 Expected;
    } rows[] = {{0x40001234, 0x40001234}, {0xC0001234, 0xFFFFFFFFC0001234}, {0xFFFFFFFF, 0xFFFFFFFFFFFFFFFF}};
    for (const auto& row : rows)
    {
        m_Record.SharedHandle = row.Record;
        ASSERT_EQ(Open(), S_OK);
        EXPECT_EQ(reinterpret_cast<UINT64>(m_Fake.LastSharedHandle()), row.Expected);
        UMDDdiDestroyResource(DeviceHandle(), m_Open.hResource);
    }
}

TEST_F(UMDDdiOpenResourceTest, Destroy_Opened_FreesNoAllocationOfTheOther)
{
    ASSERT_EQ(Open(), S_OK);
    UMDDdiDestroyResource(DeviceHandle(), m_Open.hResource);
    EXPECT_EQ(KernelLines(), Lines{});
    EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
}

TEST_F(UMDDdiOpenResourceTest, NotTheDriversRecord_AnswersOkWithANullHandle)
{
    const std::function<void()> changes[] = {
        [&] { m_Allocation.PrivateDriverDataSize = 75; },
        [&] { m_Allocation.PrivateDriverDataSize = 80; },
        [&] { m_Allocation.PrivateDriverDataSize = 0; },
        [&] { m_Allocation.pPrivateDriverData = nullptr; },
        [&] { m_Record.Kind = 5; },
        [&] { m_Record.Kind = 0; },
        [&] { m_Open.NumAllocations = 0; },
        [&] {
            m_Open.pOpenAllocationInfo = nullptr;
            m_Open.NumAllocations = 0;
        },
    };
    ForEachChange(changes, [&] {
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(Open(), S_OK); }), Lines{});
        EXPECT_EQ(m_Open.hResource, nullptr);
    });
    ForEachChange(changes, [&] {
        m_Trace.Clear();
        Open();
        EXPECT_EQ(m_Trace.Count("   Handle:0x0\n"), 1U);
    });
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDDdiOpenResourceTest, NoList_WhateverTheCount_AnswersOkWithANullHandle)
{
    m_Open.pOpenAllocationInfo = nullptr;
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(Open(), S_OK); }), Lines{});
    EXPECT_EQ(m_Open.hResource, nullptr);
}

TEST_F(UMDDdiOpenResourceTest, OtherTextureKind_FailsAndSaysWhich)
{
    for (UINT kind : {0U, 5U, 7U, 0x100U})
    {
        m_Record.TextureKind = kind;
        const HANDLE hBefore = m_Open.hResource;
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(Open(), E_FAIL); }),
            Lines{"OpenResource failed! Type:" + std::to_string(kind) + "\n"});
        EXPECT_EQ(m_Open.hResource, hBefore);
    }
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDDdiOpenResourceTest, LevelsOutsideTheTable_AreRefused)
{
    for (UINT levels : {0U, 12U, 54U, 0x7FFFFFFFU, 0xFFFFFFFFU})
    {
        m_Record.Levels = levels;
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(Open(), E_FAIL); }),
            Lines{"UMDRscTexture::Open failed! m_SurfCount = " + std::to_string(static_cast<INT>(levels)) + "\n"});
    }
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDDdiOpenResourceTest, DelegatedCallsFail_AnswersFailAndLeavesNothing)
{
    const struct
    {
        const char* pCall;
        unsigned Nth;
        const char* pError;
    } rows[] = {{"CreateTexture", 1, "UMDRscTexture::Open CreateTexture failed! 0x8876086a\n"},
        {"texture.GetSurfaceLevel", 1, "UMDRscTexture::Open GetSurfaceLevel failed! 0x8876086a\n"},
        {"texture.GetSurfaceLevel", 2, "UMDRscTexture::Open GetSurfaceLevel failed! 0x8876086a\n"}};
    for (const auto& row : rows)
    {
        m_Fake.Fail(row.pCall, kRefused, row.Nth);
        EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(Open(), E_FAIL); }), Lines{row.pError});
        EXPECT_EQ(m_Fake.LiveObjects(), Lines{});
        EXPECT_EQ(KernelLines(), Lines{});
        m_Trace.Clear();
        m_Fake.Fail(row.pCall, kRefused, row.Nth);
        EXPECT_EQ(Open(), E_FAIL);
        EXPECT_EQ(m_Trace.LinesContaining("   ~hResource driver:").size(), 1U) << "the object is destroyed";
    }
}

TEST_F(UMDDdiOpenResourceTest, WhatCreateWrote_OpensAgain)
{
    m_Fake.SetSharedHandle(reinterpret_cast<HANDLE>(0x40000042));
    CreateRequest request(
        kFlagTexture | kFlagRenderTarget | kFlagSharedResource, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_X8R8G8B8, 128, 64, 4);
    CreateAny(request);
    const std::vector<BYTE> data = m_Kernel.FindAllocation(1).m_PrivateData;
    m_Allocation.pPrivateDriverData = data.data();
    m_Allocation.PrivateDriverDataSize = static_cast<UINT>(data.size());
    ForgetCalls();
    ASSERT_EQ(Open(), S_OK);
    m_pOpened = dynamic_cast<UMDRscTexture*>(ToResource(m_Open.hResource));
    EXPECT_EQ(DeviceLines().front(), "CreateTexture(128, 64, 4, 1, 22, 0, out, out)");
    EXPECT_EQ(m_Trace.LinesContaining("SharedHandle:0x40000042 hAllocation:0x40000080\n").size(), 1U);
}

TEST_F(UMDDdiOpenResourceTest, MemoryOfAnOpenedTexture_UploadsNothingAndDoesNotFault)
{
    ASSERT_EQ(Open(), S_OK);
    m_pOpened = dynamic_cast<UMDRscTexture*>(ToResource(m_Open.hResource));
    ForgetCalls();
    EXPECT_EQ(m_pOpened->WriteToDelegated(0, nullptr), S_OK);
    EXPECT_EQ(m_pOpened->WriteFromDelegated(1), S_OK);
    EXPECT_EQ(m_pOpened->WriteToDelegated(2, nullptr), E_FAIL);
    EXPECT_EQ(DeviceLines(), Lines{});
}
