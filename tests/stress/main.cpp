// The program behind ./stress: puts the driver under load, check by check.
#include "StressChild.h"
#include "StressProcess.h"
#include "StressReport.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>
#include <cinttypes>
#include <cstdio>

namespace
{

using namespace tesslo::test;

constexpr double kTellEvery = 10;  ///< seconds

struct Options
{
    StressSettings m_Settings;
    double m_Minutes = 10;
    std::vector<std::string> m_Only;
    std::string m_Json;
    std::string m_Child;
    std::string m_Role, m_Argument;
};

const StressCheck* Find(const std::string& name)
{
    const auto& checks = StressChecks();
    const auto found = std::ranges::find(checks, name, &StressCheck::m_pName);
    return found == checks.end() ? nullptr : &*found;
}

std::vector<const StressCheck*> Selected(const std::vector<std::string>& names)
{
    std::vector<const StressCheck*> checks;
    for (const StressCheck& check : StressChecks())
        if (names.empty() || std::ranges::find(names, check.m_pName) != names.end())
            checks.push_back(&check);
    return checks;
}

double Now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

StressResult RunOne(const StressCheck& check, const StressSettings& settings)
{
    std::printf("%s: %s\n", check.m_pName, check.m_pWhat);
    std::fflush(stdout);
    double told = Now();
    return StressStartChild(check, settings, [&](uint64_t done, uint64_t all) {
        if (Now() < told + kTellEvery)
            return;
        told = Now();
        std::printf("  %s: %" PRIu64 " of %" PRIu64 " runs\n", check.m_pName, done, all);
        std::fflush(stdout);
    });
}

/// @return whether nothing was found.
bool RunCampaign(const Options& options)
{
    const auto checks = Selected(options.m_Only);
    const double end = Now() + options.m_Minutes * 60;
    std::vector<StressResult> results;
    for (size_t i = 0; i < checks.size(); ++i)
    {
        // What one leaves of its share goes to those behind it.
        StressSettings settings = options.m_Settings;
        settings.m_Seconds = std::max(1.0, (end - Now()) / static_cast<double>(checks.size() - i));
        results.push_back(RunOne(*checks[i], settings));
    }
    StressPrint(results, options.m_Settings);
    if (!options.m_Json.empty())
        StressWriteJson(results, options.m_Json);
    return std::ranges::all_of(results, [](const StressResult& result) { return result.m_FindingCount == 0; });
}

void AddOptions(CLI::App& app, Options& options)
{
    app.add_option("--minutes", options.m_Minutes, "Time for all checks together")->check(CLI::Range(0.1, 100000.0));
    app.add_option("--seed", options.m_Settings.m_Seed, "Decides what chance does");
    app.add_option("--only", options.m_Only, "Only this check; may be given several times")
        ->check([](const std::string& name) { return Find(name) ? "" : "there is no check " + name; });
    app.add_option("--from", options.m_Settings.m_From, "The first run");
    app.add_option("--runs", options.m_Settings.m_Runs, "So many runs a check at most; 0 for its own number");
    app.add_flag("--short", options.m_Settings.m_bShort, "The form that belongs to ./test");
    app.add_flag("--cuzz", options.m_Settings.m_bCuzz, "Random delays where threads hand over to each other");
    app.add_option("--json", options.m_Json, "Write the results to this file, too");
    app.add_option("--child", options.m_Child)->group("");
    app.add_option("--role", options.m_Role)->group("");
    app.add_option("--argument", options.m_Argument)->group("");
    app.add_option("--seconds", options.m_Settings.m_Seconds)->group("");
    app.add_option("--number", options.m_Settings.m_hNumber)->group("");
}

}  // namespace

int main(int argc, char** argv)
try
{
    Options options;
    CLI::App app("Puts the driver under load, check by check.", "./stress");
    AddOptions(app, options);
    CLI11_PARSE(app, argc, argv);
    if (const StressRole* pRole = StressFindRole(options.m_Role))
    {
        pRole->m_pRun(options.m_Argument);
        return 0;
    }
    if (const StressCheck* pCheck = Find(options.m_Child))
    {
        StressRunChild(*pCheck, options.m_Settings);
        return 0;
    }
    return RunCampaign(options) ? 0 : 1;
}
catch (const std::exception& error)
{
    std::fprintf(stderr, "stress: %s\n", error.what());
    return 2;
}
