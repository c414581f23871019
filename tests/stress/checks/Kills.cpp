#include "Kills.h"

#include "MachineLog.h"
#include "StressDriver.h"
#include "StressOutput.h"
#include "StressPauses.h"
#include "StressProcess.h"
#include "StressRun.h"
#include "StressShortLife.h"
#include "Waiting.h"

#include <algorithm>
#include <list>
#include <memory>
#include <random>
#include <string>

namespace tesslo::test
{

namespace
{

constexpr UINT kSources = 6;
constexpr uint64_t kMostFlips = 40;          ///< of one of the presenter's lives
constexpr uint64_t kMostVictims = 3;         ///< of one run
constexpr uint64_t kMostMilliseconds = 150;  ///< behind the beginning, or the first flip
constexpr uint64_t kEarly = 4;               ///< one of so many is ended before it presents
constexpr StressShape kShape{64, 32, D3DDDI_ROTATION_90};

/// A process that is to be ended.
class Victim
{
public:
    explicit Victim(const std::string& name)
        : m_hPresents(CreateEventA(nullptr, TRUE, FALSE, name.c_str())), m_Process("presenter", name)
    {
    }
    ~Victim()
    {
        m_Process.Kill();
        RegistryOverride::Forget(m_Process.Id());
        CloseHandle(m_hPresents);
    }
    Victim(const Victim&) = delete;
    Victim& operator=(const Victim&) = delete;

    bool WaitUntilItPresents() const { return WaitForSingleObject(m_hPresents, kLong) == WAIT_OBJECT_0; }

private:
    HANDLE m_hPresents;
    StressProcess m_Process;
};

void EndSome(StressRun& run)
{
    std::list<Victim> victims;
    for (uint64_t i = 1 + run.Below(kMostVictims); i > 0; --i)
        victims.emplace_back("TessloStress-" + std::to_string(run.Seed()) + "-" + std::to_string(run.Number()) + "-" +
                             std::to_string(i));
    if (run.Below(kEarly) != 0)
        for (const Victim& victim : victims)
            run.Expect(victim.WaitUntilItPresents(), "a process does not present");
    for (; !victims.empty(); victims.pop_back())
        Sleep(static_cast<DWORD>(run.Below(kMostMilliseconds)));
}

void Live(StressDriver& driver, StressFrames& frames, std::mt19937_64& random, HANDLE hPresents)
{
    StressOutput output(*driver.m_Dll, driver.m_Kernel, frames);
    output.Open();
    StressPrimary primaries[kSources];
    for (UINT source = 0; source < kSources; ++source)
        output.CreatePrimary(source, kShape, &primaries[source]);
    for (uint64_t flips = 1 + random() % kMostFlips; flips > 0; --flips)
    {
        output.Flip(primaries[random() % kSources]);
        SetEvent(hPresents);
    }
    for (const StressPrimary& primary : primaries)
        output.Destroy(primary);
    output.DestroyDevice();
    output.Close();
}

}  // namespace

void StressPresenter(const std::string& name)
{
    const HANDLE hPresents = OpenEventA(EVENT_MODIFY_STATE, FALSE, name.c_str());
    std::seed_seq seed(name.begin(), name.end());
    std::mt19937_64 random(seed);
    StressDriver driver(kStressTraceMask);
    StressPauses pauses;
    pauses.Begin(random(), 0);
    const auto pFrames = std::make_unique<StressFrames>();
    driver.m_Client.SetOnFrame([&](const TessloVirtualMonitorFrame&) { pauses.Pause(); });
    for (;;)
    {
        Live(driver, *pFrames, random, hPresents);
        pFrames->Restart();
        driver.Clean();
    }
}

void StressKills(StressRun& run)
{
    while (run.Next())
    {
        const MachineLog log;
        EndSome(run);
        const Lines lines = log.Lines();
        run.Expect(std::ranges::all_of(lines, [](const std::string& line) { return line.starts_with("UMD: ["); }),
            "a line of the log file is cut");
        RegistryOverride registry;
        registry.SetTraceMask(kStressTraceMask);
        StressTracedLife next;
        next.Live();
        const std::string wrong = next.Judge(true);
        run.Expect(wrong.empty(), "the next process: " + wrong);
        run.Expect(registry.ClientDllName() == L"TessloClientDllSample.dll", "the registry keeps no name");
    }
}

}  // namespace tesslo::test
