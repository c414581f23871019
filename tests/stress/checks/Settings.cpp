#include "Settings.h"

#include "StressRun.h"

namespace tesslo::test
{

void StressSettingsOfAllKinds(StressRun& run)
{
    std::vector<StressSettingsCase> cases = StressRegistryCases();
    for (StressSettingsCase& logFile : StressLogFileCases())
        cases.push_back(std::move(logFile));
    run.SetCases(cases.size(), StressRun::Share::All);
    while (run.Next())
    {
        const StressSettingsCase& c = cases[run.Number()];
        c.m_Run([&](const std::string& wrong) { run.Expect(wrong.empty(), c.m_Name + ": " + wrong); });
    }
}

}  // namespace tesslo::test
