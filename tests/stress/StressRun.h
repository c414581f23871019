// What a check gets: when to go on, chance that can be repeated, and where to tell what it has found.
#pragma once

#include "StressCheck.h"
#include "StressGauge.h"
#include "StressSettings.h"

#include <chrono>
#include <functional>
#include <random>

namespace tesslo::test
{

class StressRun
{
public:
    /// @param onProgress called now and then with the runs that are done and all that there will be.
    StressRun(const StressCheck& check, const StressSettings& settings,
        std::function<void(uint64_t done, uint64_t all)> onProgress);

    /// From now on the number of the current run stands there, too.
    void ShowNumber(volatile uint64_t* pNumber) { m_pNumber = pNumber; }

    /// How many cases the short form takes.
    enum class Share
    {
        Third,
        All,
    };
    /// For checks that go through cases: how many there are. Called before the first Next.
    void SetCases(uint64_t count, Share ofShortForm = Share::Third);
    /// Ends the current run and begins the next one. @return false when there is none.
    bool Next();
    /// The current run, or case, from 0. With the seed it decides all that a run does.
    uint64_t Number() const { return m_Number; }
    /// Chance of the current run.
    std::mt19937_64& Random() { return m_Random; }
    /// A number below a limit, which is at least 1.
    uint64_t Below(uint64_t limit) { return m_Random() % limit; }

    /// Tells of a broken promise. The check goes on.
    void Find(const std::string& what);
    /// Tells of one unless the condition holds. @return the condition.
    bool Expect(bool condition, const std::string& what);
    bool HasFindings() const { return m_Result.m_FindingCount > 0; }

    /// What lives on behind the current run, where nothing should: references, objects.
    void SetReferences(uint64_t count) { m_References = count; }
    /// A figure for the table.
    void SetNote(const std::string& note) { m_Result.m_Note = note; }

    bool IsShort() const { return m_Settings.m_bShort; }
    bool IsCuzz() const { return m_Settings.m_bCuzz; }
    uint64_t Seed() const { return m_Settings.m_Seed; }

    /// Behind the last run: what came of all.
    StressResult Result();

private:
    uint64_t InternalStep() const;
    double InternalSeconds() const;
    void InternalBegin(uint64_t number);

    const StressSettings m_Settings;
    const std::function<void(uint64_t, uint64_t)> m_OnProgress;
    const std::chrono::steady_clock::time_point m_Begin = std::chrono::steady_clock::now();
    double m_Told = 0;     ///< seconds: when progress was last told
    uint64_t m_Cases = 0;  ///< of a check that goes through cases, else 0
    Share m_Share = Share::Third;
    uint64_t m_First;     ///< number of the first run
    uint64_t m_All;       ///< runs that there will be
    uint64_t m_Done = 0;  ///< runs that are over
    bool m_bRunning = false;
    uint64_t m_Number = 0;
    volatile uint64_t* m_pNumber = nullptr;
    uint64_t m_References = 0;
    std::mt19937_64 m_Random;
    StressGauge m_Gauge;
    StressResult m_Result;
};

}  // namespace tesslo::test
