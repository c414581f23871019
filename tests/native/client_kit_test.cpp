// The client kit's headers in C and C++, by a client library in C that is driven as the driver does.
#include "client_in_c.h"

#include "exact_memory.h"

#include <gtest/gtest.h>

#include <numeric>

TEST(ClientKit, Records_InBothLanguages_AreTheSame)
{
    EXPECT_EQ(ClientInCOffsetOfBits(), offsetof(TessloVirtualMonitorFrame, pBits));
    EXPECT_EQ(ClientInCOffsetOfFailed(), offsetof(TessloSampleCounters, Failed));
}

TEST(ClientKit, ClientInC_Connection_SeesTheFramesItWasGiven)
{
    constexpr UINT kWidth = 5, kHeight = 3, kPitch = 24;
    ExactBytes bits((kHeight - 1) * kPitch + kWidth * 4);
    bits.FillWithNoise(1);
    UINT64 sum = 0;
    for (UINT y = 0; y < kHeight; ++y)
        sum = std::accumulate(bits.Get() + y * kPitch, bits.Get() + y * kPitch + kWidth * 4, sum);
    const TessloVirtualMonitorFrame frame = {0, 9, kWidth, kHeight, kPitch, 0, bits.Get()};

    void* pSlot = nullptr;
    ASSERT_TRUE(g_ClientInC.pPlug(&pSlot, 9));
    EXPECT_TRUE(g_ClientInC.pUpdate(&pSlot, &frame));
    EXPECT_TRUE(g_ClientInC.pUpdate(&pSlot, &frame));

    const auto* pConnection = static_cast<const ClientInCConnection*>(pSlot);
    EXPECT_EQ(pConnection->Frames, 2u);
    EXPECT_EQ(pConnection->Sum, 2 * sum);
    EXPECT_TRUE(g_ClientInC.pUnplug(&pSlot, 9));
    EXPECT_EQ(pSlot, nullptr);
}
