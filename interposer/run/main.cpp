// tesslo_run: starts a program that draws with Direct3D 9, beside which the interposer's d3d9.dll lies, and tells how
// many of its frames the driver has drawn as the platform has. ./run makes the folder and calls it.
#include "host/runtime/HostError.h"
#include "host/runtime/HostText.h"
#include "interposer/run/RunReport.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <map>

namespace
{

struct Options
{
    RunRecord m_Settings{};
    UINT m_Seconds = 0;
    std::wstring m_Json;
    std::wstring m_Program;
    std::vector<std::wstring> m_Arguments;
};

void Store(wchar_t (&field)[RunRecord::kPath], const std::string& text)
{
    HostWide(text).copy(field, RunRecord::kPath - 1);
}

/// Takes the program and its arguments off the end: the first word that is neither an option nor the value of one.
void TakeProgram(std::vector<std::string>& words, Options& options)
{
    auto program = words.begin();
    while (program != words.end() && program->starts_with("--"))
        program += *program == "--point" || program + 1 == words.end() ? 1 : 2;
    if (program == words.end())
        throw HostError("no program is named");
    options.m_Program = HostWide(*program);
    for (auto argument = program + 1; argument != words.end(); ++argument)
        options.m_Arguments.push_back(HostWide(*argument));
    words.erase(program, words.end());
}

/// Throws CLI::ParseError and HostError.
Options Parse(int argc, wchar_t** ppArguments)
{
    Options options;
    std::string driver, client, pictures, json;
    std::vector<std::string> words;
    for (int i = 1; i < argc; ++i)
        words.push_back(HostUtf8(ppArguments[i]));
    TakeProgram(words, options);
    bool bPoint = false;
    CLI::App app("Starts a program and judges what the driver draws of it.");
    const std::map<std::string, RunMode> modes = {
        {"compare", RunMode::Compare}, {"answer", RunMode::Answer}, {"carry", RunMode::Carry}, {"off", RunMode::Off}};
    app.add_option("--frames", options.m_Settings.m_FrameLimit);
    app.add_option("--seconds", options.m_Seconds);
    app.add_option("--source", options.m_Settings.m_SourceId)->check(CLI::Range(0, 5));
    app.add_option("--mode", options.m_Settings.m_Mode)->transform(CLI::CheckedTransformer(modes));
    app.add_option("--pictures", pictures);
    app.add_option("--client", client);
    app.add_option("--driver", driver);
    app.add_option("--json", json);
    app.add_flag("--point", bPoint);
    std::ranges::reverse(words);  // as the parser wants them
    app.parse(words);
    Store(options.m_Settings.m_Driver, driver);
    Store(options.m_Settings.m_Client, client);
    Store(options.m_Settings.m_Pictures, pictures);
    options.m_Settings.m_bPoint = bPoint;
    options.m_Json = HostWide(json);
    return options;
}

int Run(const Options& options)
{
    const DWORD limit = options.m_Seconds != 0 ? options.m_Seconds * 1000 : INFINITE;
    const RunResult result = RunProgram(options.m_Settings, options.m_Program, options.m_Arguments, limit);
    std::fputs(RunReportText(result).c_str(), stdout);
    if (!options.m_Json.empty())
    {
        std::ofstream file(HostUtf8(options.m_Json), std::ios::binary);
        if (!(file << RunReportJson(result)))
            throw HostError("cannot write " + HostUtf8(options.m_Json));
    }
    return RunIsDefective(result) || result.m_End == RunEnd::Crash ? 1 : 0;
}

}  // namespace

int wmain(int argc, wchar_t** ppArguments)
{
    try
    {
        return Run(Parse(argc, ppArguments));
    }
    catch (const CLI::ParseError& error)
    {
        std::fprintf(stderr, "tesslo_run: %s\n", error.what());
    }
    catch (const HostError& error)
    {
        std::fprintf(stderr, "tesslo_run: %s\n", error.what());
    }
    return 2;
}
