// An even pace, and what ends it early.
#include "host/program/HostPacer.h"
#include "host/program/HostStop.h"

#include <gtest/gtest.h>

namespace
{

double MillisecondsOf(const auto& work)
{
    LARGE_INTEGER frequency, start, end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&start);
    work();
    QueryPerformanceCounter(&end);
    return 1000.0 * static_cast<double>(end.QuadPart - start.QuadPart) / static_cast<double>(frequency.QuadPart);
}

}  // namespace

TEST(HostPacer, Wait_HundredTurnsASecond_ElevenTurnsTakeNoLessThanATenth)
{
    const HostStop stop;
    HostPacer pacer(100);
    const double time = MillisecondsOf([&] {
        for (UINT turn = 0; turn < 11; ++turn)
            pacer.Wait(stop);
    });
    EXPECT_GE(time, 99.0);
    EXPECT_LT(time, 5000.0);
}

TEST(HostPacer, Wait_NoPace_DoesNotWait)
{
    const HostStop stop;
    HostPacer pacer(0);
    EXPECT_LT(MillisecondsOf([&] {
        for (UINT turn = 0; turn < 100'000; ++turn)
            pacer.Wait(stop);
    }),
        1000.0);
}

TEST(HostPacer, Wait_TurnsThatCameTooLate_AreNotCaughtUpWith)
{
    const HostStop stop;
    HostPacer pacer(20);
    pacer.Wait(stop);
    Sleep(300);
    pacer.Wait(stop);
    EXPECT_GE(MillisecondsOf([&] {
        pacer.Wait(stop);
        pacer.Wait(stop);
    }),
        49.0)
        << "of five missed turns at most one is run at once";
}

TEST(HostPacer, Wait_StopIsAsked_EndsBeforeTheTime)
{
    const HostStop stop;
    HostPacer pacer(1);
    pacer.Wait(stop);
    EXPECT_FALSE(stop.IsAsked());
    stop.Ask();
    EXPECT_TRUE(stop.IsAsked());
    EXPECT_LT(MillisecondsOf([&] {
        for (UINT turn = 0; turn < 60; ++turn)
            pacer.Wait(stop);
    }),
        30'000.0);
}
