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
constexpr size_t kAgain = 20;      ///< batches of a run that are repeated at most because the machine was busy
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

class Event
{
public:
    Event() : m_hEvent(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {}
    ~Event() { CloseHandle(m_hEvent); }
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;
    void Set() { SetEvent(m_hEvent); }

private:
    HANDLE m_hEvent;
};

/// 99th percentiles, milliseconds.
struct Batch
{
    double m_Present;
    /// Of a call of the platform that the driver has no part in, made between the presents: what the machine does to
    /// whoever runs on it.
    double m_Machine;
};

Batch Measure(StressFlipDevice& output)
{
    Event own;
    std::vector<double> presents, machine;
    for (size_t i = 0; i < kPresents; ++i)
    {
        const double begin = Now();
        output.Flip();
        const double middle = Now();
        own.Set();
        presents.push_back(middle - begin);
        machine.push_back(Now() - middle);
    }
    return {Percentile(presents), Percentile(machine)};
}

/// A batch in a life of its own, begun when the worker is in its client library, or has ended for want of one.
Batch Live(StressRun& run, bool hung)
{
    Gate update;
    StressDriver driver(0, hung ? StressDriver::kTestClient : kNone);
    const ImportPatch pause(driver.Module(), "kernel32.dll", "Sleep", NoPause);
    driver.m_Client.SetOnFrame([&](const TessloVirtualMonitorFrame&) { update.Pass(); });
    StressFlipDevice output(driver);
    output.Flip();
    run.Expect(hung ? update.WaitForOne() : WaitUntil([&] { return FAILED(output.Flip()); }),
        hung ? "no frame comes" : "flips go on beside no client");
    const Batch batch = Measure(output);
    run.Expect(hung == SUCCEEDED(output.Flip()), "the last flip answers as if the client were another");
    run.Expect(driver.m_Client.Updates().empty(), "the client has come back");
    update.Open();
    output.Close();
    return batch;
}

struct Pair
{
    Batch m_None, m_Hung;
    double Moved() const { return m_Hung.m_Present - m_None.m_Present; }
    bool IsDisturbed() const { return std::max(m_None.m_Machine, m_Hung.m_Machine) >= kLimit / 2; }
};

template <typename Of>
double Median(const std::vector<Pair>& pairs, Of of)
{
    std::vector<double> values;
    for (const Pair& pair : pairs)
        values.push_back(std::invoke(of, pair));
    std::ranges::nth_element(values, values.begin() + static_cast<ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

}  // namespace

void StressHungClient(StressRun& run)
{
    std::vector<Pair> all;
    while (run.Next())
    {
        std::vector<Pair> pairs;
        size_t disturbed = 0;
        while (pairs.size() < kBatches)
        {
            const Pair pair{Live(run, false), Live(run, true)};
            if (!pair.IsDisturbed() || disturbed++ >= kAgain)
                pairs.push_back(pair);
        }
        // On a machine that leaves no batch alone only the best one tells: a present that waits does so in each.
        const double moved =
            disturbed <= kAgain ? Median(pairs, &Pair::Moved) : std::ranges::min(pairs, {}, &Pair::Moved).Moved();
        run.Expect(moved <= kLimit, "the 99th percentile of a present moves by " + std::to_string(moved) + " ms");
        all.insert(all.end(), pairs.begin(), pairs.end());
    }
    if (all.empty())
        return;
    char note[96];
    std::snprintf(note, sizeof(note), "present p99 %.3f ms beside no client, %.3f ms beside a hung one",
        Median(all, [](const Pair& pair) { return pair.m_None.m_Present; }),
        Median(all, [](const Pair& pair) { return pair.m_Hung.m_Present; }));
    run.SetNote(note);
}

}  // namespace tesslo::test
