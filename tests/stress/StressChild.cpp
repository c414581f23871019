#include "StressChild.h"

#include "StressRun.h"
#include "tools/process/ChildCrash.h"
#include "tools/process/ChildMemory.h"
#include "tools/process/ChildProcess.h"

#include <atomic>
#include <cinttypes>
#include <cstdio>
#include <thread>

namespace tesslo::test
{

namespace
{

constexpr char kProgress[] = "@progress ";
constexpr char kResult[] = "@result ";
constexpr double kGrace = 120;  ///< seconds beyond its time after which a child counts as hung

std::wstring CommandLineOf(const StressCheck& check, const StressSettings& settings, const ChildMemory& number)
{
    std::string arguments = std::string(" --child ") + check.m_pName + " --seed " + std::to_string(settings.m_Seed) +
                            " --from " + std::to_string(settings.m_From) + " --runs " +
                            std::to_string(settings.m_Runs) + " --seconds " + std::to_string(settings.m_Seconds) +
                            " --number " + std::to_string(number.Handle());
    if (settings.m_bShort)
        arguments += " --short";
    if (settings.m_bCuzz)
        arguments += " --cuzz";
    return ChildProcess::OwnPath() + std::wstring(arguments.begin(), arguments.end());
}

std::string EndOf(DWORD code, bool hung, double limit)
{
    char text[64];
    if (hung)
        std::snprintf(text, sizeof(text), "did not end within %.0f s", limit);
    else
        std::snprintf(text, sizeof(text), "the process ended with code 0x%08lX", code);
    return text;
}

}  // namespace

void StressRunChild(const StressCheck& check, const StressSettings& settings)
{
    ChildReportCrashes(stdout);
    StressRun run(check, settings, [](uint64_t done, uint64_t all) {
        std::printf("%s%" PRIu64 " %" PRIu64 "\n", kProgress, done, all);
        std::fflush(stdout);
    });
    if (settings.m_hNumber)
        run.ShowNumber(static_cast<volatile uint64_t*>(ChildMemory::View(settings.m_hNumber, sizeof(uint64_t))));
    check.m_pRun(run);
    std::printf("%s%s\n", kResult, StressToJson(run.Result()).c_str());
    std::fflush(stdout);
}

StressResult StressStartChild(const StressCheck& check, const StressSettings& settings,
    const std::function<void(uint64_t done, uint64_t all)>& onProgress)
{
    const ChildMemory number(sizeof(uint64_t));
    ChildProcess child(CommandLineOf(check, settings, number));
    const double limit = settings.m_Seconds + kGrace;
    std::atomic<bool> hung = false;
    std::thread watch([&] {
        hung = !child.Wait(limit);
        if (hung)
            child.Kill();
    });
    StressResult result;
    result.m_Name = check.m_pName;
    result.m_Seed = settings.m_Seed;
    bool complete = false;
    std::string crash;
    child.ReadLines([&](const std::string& line) {
        uint64_t done = 0, all = 0;
        if (std::sscanf(line.c_str(), "@progress %" SCNu64 " %" SCNu64, &done, &all) == 2)
        {
            result.m_Runs = done;
            onProgress(done, all);
        }
        else if (line.starts_with(kChildCrash))
            crash = ": " + line.substr(sizeof(kChildCrash) - 1);
        else if (line.starts_with(kResult))
        {
            result = StressFromJson(line.substr(sizeof(kResult) - 1));
            complete = true;
        }
    });
    watch.join();
    if (!complete || hung || child.ExitCode() != 0)
    {
        ++result.m_FindingCount;
        result.m_bComplete = false;
        result.m_Findings.push_back(
            {*static_cast<volatile const uint64_t*>(number.Get()), EndOf(child.ExitCode(), hung, limit) + crash});
    }
    return result;
}

}  // namespace tesslo::test
