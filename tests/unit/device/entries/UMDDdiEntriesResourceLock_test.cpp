// Locks and unlocks through their entries: the flags that go on, and what the runtime gets back.
#include "EntryTrace.h"
#include "ResourceFixture.h"

using namespace tesslo::test;

namespace
{
class UMDDdiLockResourceTest : public ResourceFixture
{
};
}  // namespace

TEST_F(UMDDdiLockResourceTest, EveryFlagAloneAndInPairs_OnlyFourGoOn)
{
    const TraceMask quiet(0);
    CreateRequest request(kFlagIndexBuffer, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_INDEX16, 64, 1);
    UMDRscBase* pBuffer = CreateAny(request);
    const struct
    {
        UINT Bit;
        UINT LockFlag;
    } known[] = {{0x1, 0x10}, {0x4, 0x1000}, {0x8, 0x2000}, {0x200, 0x4000}};
    for (UINT i = 0; i < 32; i++)
    {
        for (UINT j = i; j < 32; j++)
        {
            D3DDDIARG_LOCK lock = {};
            lock.hResource = ToHandle(pBuffer);
            lock.SubResourceIndex = 3;
            lock.Range.Offset = 4;
            lock.Range.Size = 12;
            lock.Flags.Value = 1U << i | 1U << j;
            UINT expected = 0;
            for (const auto& flag : known)
                expected |= lock.Flags.Value & flag.Bit ? flag.LockFlag : 0;
            ForgetCalls();
            ASSERT_EQ(UMDDdiLock(DeviceHandle(), &lock), S_OK);
            ASSERT_EQ(DeviceLines(), Lines{"indexbuffer#1.Lock(4, 12, out, " + std::to_string(expected) + ")"});
            D3DDDIARG_UNLOCK unlock = {};
            unlock.hResource = ToHandle(pBuffer);
            ASSERT_EQ(UMDDdiUnlock(DeviceHandle(), &unlock), S_OK);
        }
    }
}

TEST_F(UMDDdiLockResourceTest, AreaFlag_DecidesForTextures_OutputsReachTheRuntime)
{
    CreateRequest request(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, 8, 8);
    UMDRscBase* pTexture = CreateAny(request);
    D3DDDIARG_LOCK lock = {};
    lock.hResource = ToHandle(pTexture);
    EXPECT_EQ(UMDDdiLock(DeviceHandle(), &lock), S_OK);
    EXPECT_EQ(lock.pSurfData, nullptr);
    lock.Flags.AreaValid = 1;
    lock.Area = {1, 2, 3, 4};
    ForgetCalls();
    EXPECT_EQ(UMDDdiLock(DeviceHandle(), &lock), S_OK);
    EXPECT_EQ(lock.pSurfData, m_Fake.Find<FakeTexture>("texture#1").Level(0).Pixels().Bytes().data());
    EXPECT_EQ(lock.Pitch, 32U);
    EXPECT_EQ(m_Trace.Lines().front(), "=> UMDDdiLock hResource:" + Low(pTexture) + "\n");
    D3DDDIARG_UNLOCK unlock = {};
    unlock.hResource = ToHandle(pTexture);
    m_Trace.Clear();
    EXPECT_EQ(UMDDdiUnlock(DeviceHandle(), &unlock), S_OK);
    EXPECT_EQ(m_Trace.Lines().front(), "=> UMDDdiUnlock hResource:" + Low(pTexture) + "\n");
}

TEST_F(UMDDdiLockResourceTest, NullHandle_TheGuardAnswersOk)
{
    D3DDDIARG_LOCK lock = {};
    D3DDDIARG_UNLOCK unlock = {};
    const Lines fault = {"EXCEPTION_ACCESS_VIOLATION\n", "Exception in DDI function! UMDDdiLock failed!\n"};
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(UMDDdiLock(DeviceHandle(), &lock), S_OK); }), fault);
    EXPECT_EQ(ErrorsOf([&] { EXPECT_EQ(UMDDdiUnlock(DeviceHandle(), &unlock), S_OK); }),
        (Lines{"EXCEPTION_ACCESS_VIOLATION\n", "Exception in DDI function! UMDDdiUnlock failed!\n"}));
}

TEST_F(UMDDdiLockResourceTest, Lock_EveryClass_TellsTheKindAmongItsFlags)
{
    const struct
    {
        HANDLE hResource;
        const char* pFlags;
    } rows[] = {{CreateTexture(), "TEXTURE |  ReadOnly |          "},
        {CreateTarget(), "RENDERTARGET |  ReadOnly |          "},
        {CreateVertices(), "VERTEXBUFFER |  ReadOnly |          "},
        {CreateIndices(), "INDEXBUFFER |  ReadOnly |          "}, {CreateDepth(), "ReadOnly |           "},
        {CreateCube(), "ReadOnly |           "}};
    for (const auto& row : rows)
    {
        D3DDDIARG_LOCK arg = {};
        arg.hResource = row.hResource;
        arg.SubResourceIndex = 2;
        arg.Flags.ReadOnly = 1;
        Lines lines = EntryLines({{"object", row.hResource}}, [&] { UMDDdiLock(DeviceHandle(), &arg); });
        ASSERT_GE(lines.size(), 3u);
        lines.resize(3);
        EXPECT_EQ(
            lines, (Lines{"=> UMDDdiLock hResource:object\n",
                       "   Lock: hResource:object SubResourceIndex:2 Offset:0 Size:0 left:0 right:0 top:0 bottom:0\n",
                       std::string("   Flags: ") + row.pFlags + "\n"}));
        const D3DDDIARG_UNLOCK unlock = {row.hResource, 2, {}};
        EXPECT_EQ(EntryLines({{"object", row.hResource}}, [&] { UMDDdiUnlock(DeviceHandle(), &unlock); }).front(),
            "=> UMDDdiUnlock hResource:object\n");
    }
}
