// The private record of kernel-mode allocations, byte by byte, as each class writes it and as it is read back.
#include "ResourceFixture.h"

#include "kernel/UMDAllocationPrivateData.h"

#include <cstring>

using namespace tesslo::test;

namespace
{
using Words = std::vector<UINT>;

class UMDAllocationPrivateDataTest : public ResourceFixture
{
protected:
    /// The newest allocation's record as 19 words.
    Words RecordWords(D3DKMT_HANDLE hAllocation)
    {
        const std::vector<BYTE>& data = m_Kernel.FindAllocation(hAllocation).m_PrivateData;
        EXPECT_EQ(data.size(), 76U);
        Words words(19);
        for (size_t i = 0; i < words.size(); i++)
            words[i] = data[i * 4] | data[i * 4 + 1] << 8 | data[i * 4 + 2] << 16 | data[i * 4 + 3] << 24;
        return words;
    }
};

CreateRequest& FillEveryField(CreateRequest& request)
{
    request.m_Arg.MultisampleType = D3DDDIMULTISAMPLE_4_SAMPLES;
    request.m_Arg.MultisampleQuality = 0x31;
    request.m_Arg.MipLevels = 0x32;
    request.m_Arg.VidPnSourceId = 4;
    request.m_Arg.RefreshRate.Numerator = 59940;
    request.m_Arg.RefreshRate.Denominator = 1001;
    request.m_Arg.Rotation = D3DDDI_ROTATION_270;
    return request;
}
}  // namespace

TEST_F(UMDAllocationPrivateDataTest, Surface_Primary_WritesItsColumn)
{
    const UINT flags = kFlagPrimary | kFlagRenderTarget | kFlagVideoProcessRenderTarget | 0x80000000;
    CreateRequest request(flags, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 0x700, 0x3F0);
    CreateAny(FillEveryField(request));
    EXPECT_EQ(
        RecordWords(1), (Words{5, 0x700, 0x3F0, 21, 0, 0, 0, 0, 0x31, 0x32, 4, 59940, 1001, flags, 4, 0, 0, 0, 0}));
    const FakeKernel::Allocation& allocation = m_Kernel.FindAllocation(1);
    EXPECT_EQ(allocation.m_Flags, 1U);
    EXPECT_EQ(allocation.m_VidPnSourceId, 4U);
    EXPECT_EQ(allocation.m_hResource, request.m_Arg.hResource);
}

TEST_F(UMDAllocationPrivateDataTest, Surface_NoPrimary_IsOfTheOtherKindAndNamesNoSourceToTheKernel)
{
    CreateRequest request(0, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_R5G6B5, 33, 7);
    CreateAny(FillEveryField(request));
    EXPECT_EQ(RecordWords(1), (Words{6, 33, 7, 23, 0, 0, 0, 0, 0x31, 0x32, 4, 59940, 1001, 0, 4, 0, 0, 0, 0}));
    EXPECT_EQ(m_Kernel.FindAllocation(1).m_Flags, 0U);
    EXPECT_EQ(m_Kernel.FindAllocation(1).m_VidPnSourceId, 0U);
}

TEST_F(UMDAllocationPrivateDataTest, Texture_SharedRenderTarget_WritesItsColumn)
{
    m_Fake.SetSharedHandle(reinterpret_cast<HANDLE>(0x00000000C0001234));
    CreateRequest request(kFlagTexture | kFlagRenderTarget | kFlagSharedResource | kFlagDynamic, D3DDDIPOOL_SYSTEMMEM,
        D3DDDIFMT_X8R8G8B8, 64, 32, 3);
    UMDRscBase* pTexture = CreateAny(FillEveryField(request));
    EXPECT_EQ(RecordWords(1),
        (Words{6, 64, 32, 22, 0, 1, 3, 0, 0, 0, 0, 0, 0, 0x10801, 0, 6, 0, UMDLow32(pTexture), 0xC0001234}));
}

TEST_F(UMDAllocationPrivateDataTest, Cube_EveryFlagAndPool_WritesItsColumn)
{
    const struct
    {
        UINT Flags;
        D3DDDI_POOL Pool;
        UINT RecordPool, RecordUsage, RecordFlags;
    } rows[] = {{0, D3DDDIPOOL_SYSTEMMEM, 2, 0, 0}, {kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, 0, 0, 1},
        {kFlagSharedResource, D3DDDIPOOL_LOCALVIDMEM, 0, 0, 0x800},
        {kFlagRenderTarget | kFlagSharedResource, D3DDDIPOOL_VIDEOMEMORY, 0, 0, 0x801},
        {kFlagTexture | kFlagDynamic, D3DDDIPOOL_NONLOCALVIDMEM, 0, 0x200, 0}};
    D3DKMT_HANDLE hAllocation = 0;
    for (const auto& row : rows)
    {
        CreateRequest request(kFlagCubeMap | row.Flags, row.Pool, D3DDDIFMT_A8R8G8B8, 16, 16, 2);
        UMDRscBase* pCube = CreateAny(FillEveryField(request));
        EXPECT_EQ(RecordWords(++hAllocation), (Words{6, 16, 16, 21, row.RecordPool, row.RecordUsage, 2, 0, 0, 0, 0, 0,
                                                  0, row.RecordFlags, 0, 7, 0, UMDLow32(pCube), 0}));
    }
}

TEST_F(UMDAllocationPrivateDataTest, Texture_NotSharedOrNoRenderTarget_HasNoAllocation)
{
    for (UINT flags : {kFlagTexture, kFlagTexture | kFlagSharedResource, kFlagTexture | kFlagRenderTarget})
    {
        CreateRequest request(flags, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, 16, 16);
        CreateAny(request);
    }
    EXPECT_EQ(KernelLines(), Lines{});
    DestroyAll();
    EXPECT_EQ(KernelLines(), Lines{});
}

TEST(UMDReadAllocationPrivateData, SizeKindAndNull_OnlyTheDriversOwnRecordIsTaken)
{
    UMDAllocationPrivateData written;
    auto* pBytes = reinterpret_cast<BYTE*>(&written);
    for (size_t i = 0; i < sizeof written; i++)
        pBytes[i] = static_cast<BYTE>(i + 1);
    written.Kind = 6;
    UMDAllocationPrivateData read = {};
    for (UINT size : {0U, 4U, 72U, 75U, 77U, 80U, 0xFFFFFFFFU})
        EXPECT_FALSE(UMDReadAllocationPrivateData(&written, size, &read)) << size;
    EXPECT_FALSE(UMDReadAllocationPrivateData(nullptr, 76, &read));
    EXPECT_TRUE(UMDReadAllocationPrivateData(&written, 76, &read));
    EXPECT_EQ(memcmp(&written, &read, sizeof written), 0);
    for (UINT kind : {0U, 5U, 7U, 0x106U, 0x80000006U})
    {
        written.Kind = kind;
        EXPECT_FALSE(UMDReadAllocationPrivateData(&written, 76, &read)) << kind;
    }
}
