// Opening a texture that another process shares.
#include "EntryTrace.h"
#include "OpenRequestFixture.h"
#include "TraceLevels.h"

#include "resources/UMDRscTexture.h"

using namespace tesslo::test;

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

    HRESULT Open() { return UMDDdiOpenResource(DeviceHandle(), &m_Open); }
};
}  // namespace

TEST_F(UMDDdiOpenResourceTest, SharedTexture_BecomesATextureOfTheRecordsValues)
{
    const auto* pTexture = dynamic_cast<UMDRscTexture*>(OpenAny(m_Open));
    ASSERT_NE(pTexture, nullptr);
    EXPECT_EQ(DeviceLines(), (Lines{"CreateTexture(64, 32, 2, 1, 21, 0, out, out)", "texture#1.GetSurfaceLevel(0, out)",
                                 "texture#1.GetSurfaceLevel(1, out)"}));
    EXPECT_EQ(KernelLines(), Lines{});
    EXPECT_EQ(pTexture->GetType(), UMDRESOURCETYPE_TEXTURE);
    EXPECT_EQ(pTexture->GetFormat(), D3DDDIFMT_A8R8G8B8);
    EXPECT_TRUE(pTexture->IsRenderTarget());
}

TEST_F(UMDDdiOpenResourceTest, SharedTexture_TracesItsEntryTheTextureAndTheHandle)
{
    auto* pTexture = dynamic_cast<UMDRscTexture*>(OpenAny(m_Open));
    ASSERT_NE(pTexture, nullptr);
    const Lines lines = Trace();
    EXPECT_EQ(lines.front(), "=> UMDDdiOpenResource \n");
    EXPECT_EQ(Containing(lines, "UMDRscTexture::Open"),
        Lines{"UMDRscTexture::Open Resource:" + Low(pTexture) + " m_pTexture " + Low(pTexture->GetTexture()) +
              " Width:64 Height:32 Format:21 SharedHandle:0xc0001234 hAllocation:0x40000080\n"});
    EXPECT_EQ(lines.back(), "   Handle:" + Low(pTexture) + "\n");
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
        OpenAny(m_Open);
        EXPECT_EQ(reinterpret_cast<UINT64>(m_Fake.LastSharedHandle()), row.Expected);
        DestroyAll();
    }
}

TEST_F(UMDDdiOpenResourceTest, Destroy_Opened_FreesNoAllocationOfTheOther)
{
    OpenAny(m_Open);
    DestroyAll();
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
    EXPECT_NE(OpenAny(m_Open), nullptr);
    EXPECT_EQ(DeviceLines().front(), "CreateTexture(128, 64, 4, 1, 22, 0, out, out)");
    EXPECT_EQ(m_Trace.LinesContaining("SharedHandle:0x40000042 hAllocation:0x40000080\n").size(), 1U);
}

TEST_F(UMDDdiOpenResourceTest, MemoryOfAnOpenedTexture_UploadsNothingAndDoesNotFault)
{
    auto* pTexture = dynamic_cast<UMDRscTexture*>(OpenAny(m_Open));
    ForgetCalls();
    EXPECT_EQ(pTexture->WriteToDelegated(0, nullptr), S_OK);
    EXPECT_EQ(pTexture->WriteFromDelegated(1), S_OK);
    EXPECT_EQ(pTexture->WriteToDelegated(2, nullptr), E_FAIL);
    EXPECT_EQ(DeviceLines(), Lines{});
}

TEST_F(UMDDdiOpenResourceTest, DriversRecord_IsDumpedBehindTheEntry)
{
    m_Open.hResource = reinterpret_cast<HANDLE>(UINT_PTR{0x99});
    m_Record.Width = 16;
    m_Record.Height = 8;
    m_Record.Levels = 1;
    m_Record.DriverHandle = 0x77;
    m_Allocation.hAllocation = 0x88;
    UMDRscBase* pResource = nullptr;
    const Lines lines = EntryLines([&] { pResource = OpenAny(m_Open); });
    EXPECT_EQ(Named(lines, {{"object", pResource}}),
        (Lines{"=> UMDDdiOpenResource \n",
            "   OpenResource hResource: 0x99 hKMResource: 0x0 PrivateDriverDataSize: 0 Flags: 0x0\n",
            "   - Allocation 0: hAllocation:0x88 PrivateDriverDataSize:76\n", "   ResourceHandle: 0x77\n",
            "   D3DDDIPOOL_VIDEOMEMORY Format:21 MultisampleType:0 MultisampleQuality:0 SurfCount:1\n",
            "   - Surface 0: width=16 height=8 depth=1 pSysMem=0x0 SysMemPitch=0 SysMemSlicePitch=0\n",
            "   Flags: RenderTarget |  Texture | \n",
            "   hResource driver:object (own) <==> hResource OS:0x99 (saved)\n", "   Handle:object\n"}));
}

TEST_F(UMDDdiOpenResourceTest, TheHandle_IsOfTheEntryAndTheResourceLevel)
{
    const Lines lines = LevelledTrace([&] { Destroy(OpenAny(m_Open)); });
    EXPECT_EQ(Containing(lines, "   Handle:"), Lines{"0x22    Handle:0x#\n"});
}
