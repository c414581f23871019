#include "HungClient.h"

#include "Gate.h"
#include "StressFlipDevice.h"
#include "StressRun.h"

#include <algorithm>
#include <cstdio>

namespace tesslo::test
{

namespace
{

constexpr size_t kPresents = 100;  ///< of a batch: its second slowest is the 99th percentile
constexpr size_t kBatches = 5;     ///< of a run, beside either
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

double Percentile(std::vector<double>& times)
{
    std::ranges::nth_element(times, times.end() - 2);
    return *(times.end() - 2);
}

/// The 99th percentile of a batch of presents, milliseconds.
double Measure(StressFlipDevice& output)
{
    std::vector<double> presents;
    for (size_t i = 0; i < kPresents; ++i)
    {
        const double begin = Now();
        output.Flip();
        presents.push_back(Now() - begin);
    }
    return Percentile(presents);
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
    Pair last{};
    while (run.Next())
    {
        std::vector<Pair> pairs;
        while (pairs.size() < kBatches)
            pairs.push_back({Live(run, false), Live(run, true)});
        // The best batch tells. What else runs on the machine only adds to one or the other; a present that waits for
        // the client does so in each.
        last = std::ranges::min(pairs, {}, &Pair::Moved);
        run.Expect(last.Moved() <= kLimit,
            "the 99th percentile of a present moves by " + std::to_string(last.Moved()) + " ms");
    }
    char note[96];
    std::snprintf(note, sizeof(note), "present p99 %.3f ms beside no client, %.3f ms beside a hung one", last.m_None,
        last.m_Hung);
    run.SetNote(note);
}

}  // namespace tesslo::test
