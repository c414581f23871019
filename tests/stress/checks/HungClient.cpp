#include "HungClient.h"

#include "Gate.h"
#include "StressFlipDevice.h"
#include "StressRun.h"

#include <algorithm>
#include <cstdio>
#include <limits>

namespace tesslo::test
{

namespace
{

constexpr size_t kPresents = 500;  ///< of a batch
constexpr size_t kStretch = 100;   ///< presents that are judged together
constexpr size_t kBatches = 40;    ///< of a run at most, beside either
constexpr double kLimit = 1;       ///< milliseconds that the percentile may move

constexpr wchar_t kNone[] = L"TessloNoSuchClient.dll";

void WINAPI NoPause(DWORD) {}

double Now()
{
    LARGE_INTEGER ticks, frequency;
    QueryPerformanceCounter(&ticks);
    QueryPerformanceFrequency(&frequency);
    return 1000.0 * static_cast<double>(ticks.QuadPart) / static_cast<double>(frequency.QuadPart);
}

/// The 99th percentile of a batch of presents in its calmest stretch, milliseconds. A machine with more to do than it
/// has cores interrupts, and five interruptions are the percentile of a whole batch, but hardly one falls into each
/// stretch; a present that waits for the client, be it one of a hundred, is in every stretch.
double Measure(StressFlipDevice& output)
{
    double calmest = std::numeric_limits<double>::max();
    for (size_t stretch = 0; stretch < kPresents / kStretch; ++stretch)
    {
        double slowest = 0;
        for (size_t i = 0; i < kStretch; ++i)
        {
            const double begin = Now();
            output.Flip();
            slowest = std::max(slowest, Now() - begin);
        }
        calmest = std::min(calmest, slowest);
    }
    return calmest;
}

/// A batch in a life of its own, begun when the worker is in its client library, or has ended for want of one.
double Live(StressRun& run, bool hung)
{
    Gate update;
    StressDriver driver(0, hung ? StressDriver::kTestClient : kNone);
    const ImportPatch pause(driver.Module(), "kernel32.dll", "Sleep", NoPause);
    driver.m_Client.SetOnFrame([&](const TessloVirtualMonitorFrame&) { update.Pass(); });
    StressFlipDevice output(driver);
    output.Flip();
    run.Expect(hung ? update.WaitForOne() : WaitUntil([&] { return FAILED(output.Flip()); }),
        hung ? "no frame comes" : "flips go on beside no client");
    const double percentile = Measure(output);
    run.Expect(hung == SUCCEEDED(output.Flip()), "the last flip answers as if the client were another");
    run.Expect(driver.m_Client.Updates().empty(), "the client has come back");
    update.Open();
    output.Close();
    return percentile;
}

struct Pair
{
    double m_None, m_Hung;
    double Moved() const { return m_Hung - m_None; }
};

}  // namespace

void StressHungClient(StressRun& run)
{
    Pair best{};
    while (run.Next())
    {
        // The best batch tells. What else runs on the machine moves many of them; a present that waits for the client
        // moves each.
        best = {Live(run, false), Live(run, true)};
        for (size_t batch = 1; batch < kBatches && best.Moved() > kLimit; ++batch)
            best = std::min(best, {Live(run, false), Live(run, true)},
                [](const Pair& a, const Pair& b) { return a.Moved() < b.Moved(); });
        run.Expect(best.Moved() <= kLimit,
            "the 99th percentile of a present moves by " + std::to_string(best.Moved()) + " ms");
    }
    char note[96];
    std::snprintf(note, sizeof(note), "present p99 %.3f ms beside no client, %.3f ms beside a hung one", best.m_None,
        best.m_Hung);
    run.SetNote(note);
}

}  // namespace tesslo::test
