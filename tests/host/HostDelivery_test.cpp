// What is counted of a client library's calls, as the watch tells of them.
#include "Waiting.h"
#include "host/runtime/HostDelivery.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>

using namespace tesslo::test;

namespace
{

constexpr UINT kSource = 3;

TessloVirtualMonitorFrame Frame(UINT source = kSource)
{
    static constexpr UINT kPixel = 0;
    return {0, source, 1, 1, 4, 0, &kPixel};
}

void Deliver(HostDelivery& delivery, const TessloVirtualMonitorFrame& frame, bool bTaken = true)
{
    delivery.UpdateBegins(frame);
    delivery.UpdateEnded(frame, bTaken);
}

}  // namespace

TEST(HostDelivery, Counters_SourceThatNobodySpokeOf_AreZero)
{
    const HostDeliveryCounters counters = HostDelivery().Counters(kSource);
    EXPECT_EQ(counters.m_Presented, 0u);
    EXPECT_EQ(counters.m_Delivered, 0u);
    EXPECT_EQ(counters.m_Late, 0u);
    EXPECT_EQ(counters.Dropped(), 0u);
    EXPECT_FALSE(counters.m_bRefused);
}

TEST(HostDelivery, Counters_EachFrameTaken_NoneDroppedNoneLate)
{
    HostDelivery delivery;
    for (UINT i = 0; i < 5; ++i)
    {
        delivery.Presenting(kSource);
        Deliver(delivery, Frame());
    }
    const HostDeliveryCounters counters = delivery.Counters(kSource);
    EXPECT_EQ(counters.m_Presented, 5u);
    EXPECT_EQ(counters.m_Delivered, 5u);
    EXPECT_EQ(counters.Dropped(), 0u);
    EXPECT_EQ(counters.m_Late, 0u);
}

TEST(HostDelivery, Counters_NextOnesPresentedDuringUpdate_ThatFrameIsLateAndAllButTheNewestAreDropped)
{
    HostDelivery delivery;
    delivery.Presenting(kSource);
    delivery.UpdateBegins(Frame());
    delivery.Presenting(kSource);
    delivery.Presenting(kSource);
    delivery.UpdateEnded(Frame(), true);
    Deliver(delivery, Frame());
    const HostDeliveryCounters counters = delivery.Counters(kSource);
    EXPECT_EQ(counters.m_Delivered, 2u);
    EXPECT_EQ(counters.m_Late, 1u);
    EXPECT_EQ(counters.Dropped(), 1u);
}

TEST(HostDelivery, Counters_FrameOfAnotherSourcePresentedDuringUpdate_IsNotLate)
{
    HostDelivery delivery;
    delivery.Presenting(kSource);
    delivery.UpdateBegins(Frame());
    delivery.Presenting(kSource + 1);
    delivery.UpdateEnded(Frame(), true);
    EXPECT_EQ(delivery.Counters(kSource).m_Late, 0u);
    EXPECT_EQ(delivery.Counters(kSource + 1).m_Delivered, 0u);
}

TEST(HostDelivery, Counters_FrameRefused_IsNotDelivered)
{
    HostDelivery delivery;
    delivery.Presenting(kSource);
    Deliver(delivery, Frame(), false);
    EXPECT_EQ(delivery.Counters(kSource).m_Delivered, 0u);
    EXPECT_EQ(delivery.Counters(kSource).Dropped(), 1u);
    EXPECT_TRUE(delivery.Counters(kSource).m_bRefused);
}

TEST(HostDelivery, Counters_UpdateThatNeverCameBack_IsStillInIt)
{
    HostDelivery delivery;
    delivery.UpdateBegins(Frame());
    EXPECT_TRUE(delivery.Counters(kSource).m_bInUpdate);
    delivery.UpdateEnded(Frame(), true);
    EXPECT_FALSE(delivery.Counters(kSource).m_bInUpdate);
}

TEST(HostDelivery, WaitDelivered_FrameComesLater_IsWokenByIt)
{
    HostDelivery delivery;
    EXPECT_FALSE(delivery.WaitDelivered(kSource, 1, 0));
    // The pause lets the wait begin first. Without it the test would still hold, and see less.
    std::thread worker([&] {
        Sleep(50);
        Deliver(delivery, Frame());
    });
    EXPECT_TRUE(delivery.WaitDelivered(kSource, 1, INFINITE - 1));
    worker.join();
    EXPECT_FALSE(delivery.WaitDelivered(kSource, 2, 20));
}

TEST(HostDelivery, WaitDelivered_PlugOrUpdateRefused_DoesNotWaitForTheTime)
{
    HostDelivery plug, update;
    plug.PlugEnded(kSource, false);
    Deliver(update, Frame(), false);
    const ULONGLONG start = GetTickCount64();
    EXPECT_FALSE(plug.WaitDelivered(kSource, 1, kLong));
    EXPECT_FALSE(update.WaitDelivered(kSource, 1, kLong));
    EXPECT_LT(GetTickCount64() - start, kLong);
}

TEST(HostDelivery, LastFrame_PaddedRowsAndGarbageAlpha_IsThePictureOfTheNewestTaken)
{
    constexpr std::array<UINT, 6> kPixels = {0xA5000001, 0xA5000002, 0x5A5A5A5A, 0xA5000003, 0xA5000004, 0x5A5A5A5A};
    const TessloVirtualMonitorFrame frame = {0, kSource, 2, 2, 12, 0, kPixels.data()};
    HostDelivery delivery;
    Deliver(delivery, frame);
    EXPECT_EQ(delivery.LastFrame(kSource), HostImage()) << "nobody asked to keep it";
    delivery.KeepFrames();
    Deliver(delivery, Frame());
    Deliver(delivery, frame);
    Deliver(delivery, Frame(), false);
    HostImage expected(2, 2);
    expected.m_Pixels = {1, 2, 3, 4};
    EXPECT_EQ(delivery.LastFrame(kSource), expected);
    EXPECT_EQ(delivery.LastFrame(kSource + 1), HostImage());
}
