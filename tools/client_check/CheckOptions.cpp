#include "tools/client_check/CheckOptions.h"

#include "host/runtime/HostError.h"
#include "host/runtime/HostText.h"
#include "tools/client_check/CheckTable.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace
{

constexpr UINT kWidthMax = 16384;

/// Options that the parser takes as text.
struct Texts
{
    std::string m_Library;
    std::string m_Json;
    std::string m_Size;
};

std::string HelpOfTheChecks()
{
    std::string text = "Checks:\n";
    for (const CheckRow& row : CheckTable())
        text += "  " + std::string(row.m_pName) + std::string(12 - std::string_view(row.m_pName).size(), ' ') +
                row.m_pWhat + "\n";
    return text + "\nEnds with code 0 when all have passed, 1 when one has failed, 2 when it could not be asked.";
}

void AddOptions(CLI::App& app, CheckOptions& options, Texts& texts)
{
    app.add_option("library", texts.m_Library, "The client library")->required()->type_name("LIBRARY.dll");
    app.add_option("--only", options.m_Only, "Only this check; may be given several times")
        ->type_name("NAME")
        ->allow_extra_args(false)
        ->check([](const std::string& name) { return CheckFindRow(name) ? "" : "there is no check " + name; });
    app.add_option("--json", texts.m_Json, "Write the results to this file, too")->type_name("FILE");
    app.add_option("--limit", options.m_Limit, "Milliseconds that 99 of 100 Updates have (33)")
        ->type_name("MS")
        ->check(CLI::Range(0.001, 1e6));
    app.add_option("--size", texts.m_Size, "Size of the frames whose Updates are timed (1920x1080)")->type_name("WxH");
    app.add_option("--frames", options.m_Frames, "Frames whose Updates are timed (120)")
        ->type_name("N")
        ->check(CLI::Range(1, 1'000'000));
    app.add_option("--connections", options.m_Connections, "Connections behind which nothing may be left (1000)")
        ->type_name("N")
        ->check(CLI::Range(10, 1'000'000));
    app.add_option("--loads", options.m_Loads, "Loads of the library behind which nothing may be left (200)")
        ->type_name("N")
        ->check(CLI::Range(10, 1'000'000));
    app.add_option("--patience", options.m_Patience, "Seconds in which a call must return (30)")
        ->type_name("S")
        ->check(CLI::Range(1.0, 3600.0));
    app.add_option("--child", options.m_Child)->group("");
    app.add_option("--board", options.m_hBoard)->group("");
}

void ParseSize(const std::string& text, CheckOptions* pOptions)
{
    char behind = 0;
    if (std::sscanf(text.c_str(), "%ux%u%c", &pOptions->m_Width, &pOptions->m_Height, &behind) != 2 ||
        pOptions->m_Width - 1 >= kWidthMax || pOptions->m_Height - 1 >= kWidthMax)
        throw HostError("--size " + text + ": expected WIDTHxHEIGHT, each 1 to " + std::to_string(kWidthMax));
}

std::wstring FullPath(const std::string& path)
{
    const std::filesystem::path full = std::filesystem::absolute(HostWide(path));
    if (!std::filesystem::is_regular_file(full))
        throw HostError(path + ": there is no such file");
    return full.wstring();
}

}  // namespace

CheckOptions CheckParseOptions(std::vector<std::string> arguments)
{
    CheckOptions options;
    Texts texts;
    CLI::App app("Proves a client library without a driver: calls it as the driver does, check by check.",
        "tesslo_client_check");
    app.get_formatter()->column_width(34);
    app.footer(HelpOfTheChecks());
    AddOptions(app, options, texts);
    try
    {
        std::ranges::reverse(arguments);  // as the parser wants them
        app.parse(arguments);
    }
    catch (const CLI::CallForHelp&)
    {
        throw CheckHelp(app.help());
    }
    catch (const CLI::ParseError& error)
    {
        throw HostError(error.what());
    }
    if (!texts.m_Size.empty())
        ParseSize(texts.m_Size, &options);
    options.m_Library = FullPath(texts.m_Library);
    options.m_Json = HostWide(texts.m_Json);
    return options;
}

std::wstring CheckChildArguments(const CheckOptions& options)
{
    const std::string arguments = " --child " + options.m_Child + " --board " + std::to_string(options.m_hBoard) +
                                  " --limit " + std::to_string(options.m_Limit) + " --size " +
                                  std::to_string(options.m_Width) + "x" + std::to_string(options.m_Height) +
                                  " --frames " + std::to_string(options.m_Frames) + " --connections " +
                                  std::to_string(options.m_Connections) + " --loads " + std::to_string(options.m_Loads);
    return L" \"" + options.m_Library + L"\"" + HostWide(arguments);
}
