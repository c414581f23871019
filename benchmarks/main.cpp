// Measures the driver and prints what it should cost beside what it costs.
#include "BenchDriver.h"
#include "BenchImage.h"
#include "BenchOptions.h"
#include "BenchRegisters.h"
#include "BenchTimer.h"
#include "host/runtime/HostError.h"

#include <CLI/CLI.hpp>

#include <windows.h>

#include <cstdio>
#include <numeric>
#include <utility>

namespace
{
/// What is measured, in this order.
constexpr struct
{
    const char* m_pName;
    void (*m_pMeasure)(BenchReport&);
} kSections[] = {
    {"images", BenchImage},
    {"six sources", BenchSources},
    {"browser", BenchBrowser},
    {"attach", BenchAttach},
    {"added to calls", BenchOverhead},
    {"calls", BenchCalls},
    {"present", BenchPresent},
    {"scene", BenchScenes},
    {"interposer", BenchInterposer},
};

/// The last line: what took how long.
void PrintSeconds(const std::vector<double>& seconds)
{
    std::printf("%.0f s", std::accumulate(seconds.begin(), seconds.end(), 0.0));
    const char* pSeparator = ": ";
    for (size_t i = 0; i < seconds.size(); ++i)
        std::printf("%s%s %.0f", std::exchange(pSeparator, ", "), kSections[i].m_pName, seconds[i]);
    std::printf("\n");
}

/// @return the process's code: 0, or 1 behind one line that says what went wrong.
int Measure(const BenchOptions& options)
{
    BenchReport report(options.Filter);
    std::vector<double> seconds;
    try
    {
        for (const auto& [pName, pMeasure] : kSections)
        {
            const double begin = BenchNow();
            pMeasure(report);
            seconds.push_back(BenchNow() - begin);
        }
    }
    catch (const HostError& error)
    {
        std::fprintf(stderr, "tesslo_bench: %s\n", error.what());
        return 1;
    }
    if (report.Rows().empty())
    {
        std::fprintf(stderr, "tesslo_bench: no row has '%s' in its name\n", options.Filter.c_str());
        return 1;
    }
    report.PrintSummary();
    PrintSeconds(seconds);
    if (!options.Json.empty() && !report.WriteJson(options.Json))
    {
        std::fprintf(stderr, "tesslo_bench: cannot write %s\n", options.Json.c_str());
        return 1;
    }
    return 0;
}
}  // namespace

int main(int argc, char** argv)
{
    BenchOptions options;
    CLI::App app("Measures the driver: medians of interleaved runs, each beside what it is compared with.");
    app.add_option("--filter", options.Filter, "Measure only rows whose name contains this text");
    app.add_option("--json", options.Json, "Write the table to this file, too");
    CLI11_PARSE(app, argc, argv);
    if (!BenchLimitRegisters())
        return 1;

    const int code = Measure(options);
    std::fflush(nullptr);
    // Devices that were measured side by side are not ended one by one: BenchSides.h.
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
}
