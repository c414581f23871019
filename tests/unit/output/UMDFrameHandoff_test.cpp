#include "output/UMDFrameHandoff.h"

#include "FakeDevice.h"

#include <gtest/gtest.h>

#include <thread>

using namespace tesslo::test;

namespace
{
class UMDFrameHandoffTest : public testing::Test
{
protected:
    UMDComPtr<IDirect3DSurface9> MakeSurface()
    {
        UMDComPtr<IDirect3DSurface9> pSurface;
        m_Device.CreateOffscreenPlainSurface(4, 4, D3DFMT_X8R8G8B8, D3DPOOL_SYSTEMMEM, pSurface.Put(), nullptr);
        return pSurface;
    }

    void Publish(IDirect3DSurface9* pSurface, UINT width)
    {
        UMDFrame& frame = m_Handoff.Prepare();
        frame.m_pSurface.Share(pSurface);
        frame.m_Width = width;
        m_Handoff.Publish();
    }

    static ULONG References(IUnknown* pObject)
    {
        pObject->AddRef();
        return pObject->Release();
    }

    FakeDevice m_Device;
    UMDFrameHandoff m_Handoff;
};

TEST_F(UMDFrameHandoffTest, Take_NothingPublished_AnswersNull)
{
    EXPECT_EQ(m_Handoff.Take(), nullptr);
}

TEST_F(UMDFrameHandoffTest, Take_OnePublished_GivesItOnce)
{
    const auto pSurface = MakeSurface();
    Publish(pSurface.Get(), 7);

    UMDFrame* pFrame = m_Handoff.Take();
    ASSERT_NE(pFrame, nullptr);
    EXPECT_EQ(pFrame->m_pSurface.Get(), pSurface.Get());
    EXPECT_EQ(pFrame->m_Width, 7u);
    m_Handoff.Done();
    EXPECT_EQ(m_Handoff.Take(), nullptr);
}

TEST_F(UMDFrameHandoffTest, Take_SeveralPublished_GivesTheNewestAlone)
{
    const auto pSurface = MakeSurface();
    for (UINT width = 1; width <= 5; ++width)
        Publish(pSurface.Get(), width);

    UMDFrame* pFrame = m_Handoff.Take();
    ASSERT_NE(pFrame, nullptr);
    EXPECT_EQ(pFrame->m_Width, 5u);
    m_Handoff.Done();
    EXPECT_EQ(m_Handoff.Take(), nullptr);
}

TEST_F(UMDFrameHandoffTest, Publish_WhileAFrameIsTaken_LeavesTheTakenOneAlone)
{
    const auto pTaken = MakeSurface();
    const auto pOther = MakeSurface();
    Publish(pTaken.Get(), 1);
    UMDFrame* pFrame = m_Handoff.Take();
    ASSERT_NE(pFrame, nullptr);
    for (UINT width = 2; width <= 6; ++width)
        Publish(pOther.Get(), width);

    EXPECT_EQ(pFrame->m_pSurface.Get(), pTaken.Get());
    EXPECT_EQ(pFrame->m_Width, 1u);
    EXPECT_EQ(References(pTaken.Get()), 2u);
    m_Handoff.Done();
    EXPECT_EQ(References(pTaken.Get()), 1u);
    pFrame = m_Handoff.Take();
    ASSERT_NE(pFrame, nullptr);
    EXPECT_EQ(pFrame->m_Width, 6u);
}

TEST_F(UMDFrameHandoffTest, Prepare_AfterAFrameWasReplaced_HasGivenItUp)
{
    const auto pReplaced = MakeSurface();
    const auto pNewest = MakeSurface();
    Publish(pReplaced.Get(), 1);
    Publish(pNewest.Get(), 2);

    EXPECT_FALSE(m_Handoff.Prepare().m_pSurface);
    EXPECT_EQ(References(pReplaced.Get()), 1u);
    EXPECT_EQ(References(pNewest.Get()), 2u);
}

TEST_F(UMDFrameHandoffTest, Discard_AfterPublishing_LeavesNothingToTake)
{
    const auto pReplaced = MakeSurface();
    const auto pNewest = MakeSurface();
    Publish(pReplaced.Get(), 1);
    Publish(pNewest.Get(), 2);

    m_Handoff.Discard();

    EXPECT_EQ(m_Handoff.Take(), nullptr);
    EXPECT_EQ(References(pReplaced.Get()), 1u);
    EXPECT_EQ(References(pNewest.Get()), 1u);
}

TEST_F(UMDFrameHandoffTest, Discard_WhileAFrameIsTaken_LeavesItReadable)
{
    const auto pTaken = MakeSurface();
    Publish(pTaken.Get(), 9);
    UMDFrame* pFrame = m_Handoff.Take();
    ASSERT_NE(pFrame, nullptr);

    m_Handoff.Discard();

    EXPECT_EQ(pFrame->m_pSurface.Get(), pTaken.Get());
    EXPECT_EQ(References(pTaken.Get()), 2u);
    m_Handoff.Done();
    EXPECT_EQ(References(pTaken.Get()), 1u);
}

TEST_F(UMDFrameHandoffTest, Publish_AfterDiscard_IsTakenAgain)
{
    const auto pSurface = MakeSurface();
    Publish(pSurface.Get(), 1);
    m_Handoff.Discard();
    Publish(pSurface.Get(), 2);

    UMDFrame* pFrame = m_Handoff.Take();
    ASSERT_NE(pFrame, nullptr);
    EXPECT_EQ(pFrame->m_Width, 2u);
}

TEST_F(UMDFrameHandoffTest, Destructor_WithFramesInEveryRecord_ReleasesThem)
{
    const auto pSurface = MakeSurface();
    {
        UMDFrameHandoff handoff;
        for (int i = 0; i < 3; ++i)
        {
            handoff.Prepare().m_pSurface.Share(pSurface.Get());
            handoff.Publish();
            if (i == 0)
            {
                ASSERT_NE(handoff.Take(), nullptr);
            }
        }
        EXPECT_EQ(References(pSurface.Get()), 4u);
    }
    EXPECT_EQ(References(pSurface.Get()), 1u);
}

// The worker sees each frame whole, never an older one than before, and the last one always.
TEST_F(UMDFrameHandoffTest, PublishAndTake_OnTwoThreads_FramesAreWholeAndInOrder)
{
    constexpr UINT kFrames = 200000;
    const auto pSurface = MakeSurface();
    UINT torn = 0;
    UINT outOfOrder = 0;
    std::thread worker([&] {
        UINT last = 0;
        while (last != kFrames)
        {
            UMDFrame* pFrame = m_Handoff.Take();
            if (!pFrame)
                continue;
            const UINT number = pFrame->m_Width;
            torn += pFrame->m_Height != number || pFrame->m_Pitch != number || pFrame->m_Rotation != number ||
                    pFrame->m_pSurface.Get() != pSurface.Get();
            outOfOrder += number <= last;
            last = number;
            m_Handoff.Done();
        }
    });
    for (UINT number = 1; number <= kFrames; ++number)
    {
        UMDFrame& frame = m_Handoff.Prepare();
        frame.m_pSurface.Share(pSurface.Get());
        frame.m_Width = frame.m_Height = frame.m_Pitch = frame.m_Rotation = number;
        m_Handoff.Publish();
    }
    worker.join();
    m_Handoff.Discard();

    EXPECT_EQ(torn, 0u);
    EXPECT_EQ(outOfOrder, 0u);
    EXPECT_EQ(References(pSurface.Get()), 1u);
}
}  // namespace
