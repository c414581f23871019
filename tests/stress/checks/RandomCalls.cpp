#include "RandomCalls.h"

#include "StressFenceWatch.h"
#include "StressHeap.h"
#include "StressRun.h"
#include "StressScenario.h"
#include "random/RandomEntries.h"
#include "random/RandomWorld.h"

#include <new>

namespace tesslo::test
{

namespace
{

constexpr int kCalls = 1000;         ///< of a run
constexpr uint64_t kLifeEvery = 10;  ///< runs from one undisturbed life to the next
constexpr uint64_t kHostileEvery = 3;
constexpr UINT kLargest = 4096;

/// Rows of delegated surfaces: tight, padded, now and then shorter than they can be.
FakeRows MakeRows(RandomWorld& world)
{
    constexpr UINT kPaddings[] = {0, 0, 4, 13};
    FakeRows rows(kPaddings[world.Below(std::size(kPaddings))]);
    if (world.Chance(15))
        rows.m_Shortage = 1 + world.Below(64);
    rows.m_bFenced = true;
    return rows;
}

const RandomEntry& Choose(RandomWorld& world)
{
    const std::vector<RandomEntry>& entries = RandomEntries();
    UINT all = 0;
    for (const RandomEntry& entry : entries)
        all += entry.m_Weight;
    UINT at = world.Below(all);
    for (const RandomEntry& entry : entries)
    {
        if (at < entry.m_Weight)
            return entry;
        at -= entry.m_Weight;
    }
    return entries.front();
}

/// A life of random calls. What a lie leads to counts only when it ends the process, or the device for good.
void Live(StressRun& run, StressDriver& driver, StressFenceWatch& watch, bool hostile)
{
    driver.m_Fake.SetLargest(kLargest);
    if (!run.Expect(SUCCEEDED(driver.m_Dll->OpenAdapter(driver.m_Kernel)) &&
                        SUCCEEDED(driver.m_Dll->CreateDevice(driver.m_Kernel)),
            "no device"))
        return;
    RandomWorld world(run, driver, hostile);
    for (int i = 0; i < kCalls; ++i)
    {
        if (i % 100 == 0)
            driver.m_Fake.SetRows(MakeRows(world));
        const RandomEntry& entry = Choose(world);
        watch.Enter(entry.m_pName);
        try
        {
            entry.m_pCall(world);
        }
        catch (const std::bad_alloc&)
        {
            // There is no fenced memory left for what the call would hand over: it was not made.
        }
        watch.Enter(nullptr);
        world.EndCall();
    }
    watch.Enter("the end");
    driver.m_Fake.ClearScripts();
    for (DWORD i = 0; i < FakeDevice::kRenderTargetCount; ++i)
        driver.m_Fake.SetRenderTarget(i, nullptr);
    world.RemoveAll();
    driver.Functions().pfnDestroyDevice(driver.Device());
    driver.m_Dll->CloseAdapter();
    watch.Enter(nullptr);
    driver.m_Fake.SetRows({});
    for (const std::string& touch : watch.Take())
        run.Expect(hostile, touch);
}

}  // namespace

void StressRandomCalls(StressRun& run)
{
    StressHeap heap;
    StressFenceWatch watch;
    std::optional<StressDriver> driver(std::in_place);
    run.Expect(heap.Failure().empty(), heap.Failure());
    size_t blocks = heap.Blocks();
    while (run.Next())
    {
        const bool hostile = run.Number() % kHostileEvery == kHostileEvery - 1;
        Live(run, *driver, watch, hostile);
        const Lines live = driver->m_Fake.LiveObjects();
        const uint64_t left = driver->Leftovers();
        run.Expect(left == 0 || hostile, std::to_string(left) + " objects or references live on" +
                                             (live.empty() ? "" : ", the first is " + live[0]));
        run.Expect(heap.Blocks() == blocks || hostile,
            std::to_string(heap.Blocks()) + " blocks of memory live on, " + std::to_string(blocks) + " lived before");
        if (left == 0 && heap.Blocks() == blocks)
            driver->Clean();
        else
        {
            driver.reset();
            heap.GiveBack();
            driver.emplace();
            blocks = heap.Blocks();
        }
        if (run.Number() % kLifeEvery == kLifeEvery - 1)
        {
            StressUndisturbedLife(run, *driver);
            driver->Clean();
        }
    }
}

}  // namespace tesslo::test
