#include "host/program/HostOptions.h"

#include "host/runtime/HostText.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include <CLI/CLI.hpp>

namespace
{

constexpr size_t kSourcesMax = 6;  // the driver runs that many outputs a device

// A whole number of the text, or an error that names the option.
UINT ParseNumber(std::string_view text, int base, const std::string& what)
{
    UINT value = 0;
    const char* pEnd = text.data() + text.size();
    const auto [pRead, error] = std::from_chars(text.data(), pEnd, value, base);
    if (text.empty() || error != std::errc() || pRead != pEnd)
        throw HostError(what);
    return value;
}

HostSource ParseSource(const std::string& text)
{
    const std::string what = "--source " + text + ": expected WIDTHxHEIGHT, each " + std::to_string(kHostSizeMin) +
                             " to " + std::to_string(kHostSizeMax) + " pixels";
    const size_t cross = text.find('x');
    if (cross == std::string::npos)
        throw HostError(what);
    const std::string_view view = text;
    HostSource source;
    source.m_Width = ParseNumber(view.substr(0, cross), 10, what);
    source.m_Height = ParseNumber(view.substr(cross + 1), 10, what);
    if (std::min(source.m_Width, source.m_Height) < kHostSizeMin ||
        std::max(source.m_Width, source.m_Height) > kHostSizeMax)
        throw HostError(what);
    return source;
}

DWORD ParseMask(const std::string& text)
{
    const std::string what = "--trace " + text + ": expected a bit mask, for example 0x1 or 255";
    const bool bHex = text.starts_with("0x") || text.starts_with("0X");
    return ParseNumber(std::string_view(text).substr(bHex ? 2 : 0), bHex ? 16 : 10, what);
}

UINT ParseRotation(const std::string& text)
{
    if (text != "0" && text != "90" && text != "180" && text != "270")
        throw HostError("--rotation " + text + ": expected 0, 90, 180 or 270");
    return ParseNumber(text, 10, text);
}

constexpr struct
{
    const char* m_pName;
    HostSceneKind m_Kind;
} kScenes[] = {{"turning", HostSceneKind::Turning}, {"fill", HostSceneKind::Fill}, {"video", HostSceneKind::Video},
    {"card", HostSceneKind::Card}};

HostSceneKind ParseScene(const std::string& text)
{
    for (const auto& scene : kScenes)
        if (text == scene.m_pName)
            return scene.m_Kind;
    throw HostError("--scene " + text + ": expected turning, fill, video or card");
}

// What the user typed, or what stands in its place. Checked when all of it is known.
struct Texts
{
    // Of options that may be given once for each source.
    std::vector<std::string> m_Sizes = {"1280x720"};
    std::vector<std::string> m_Rotations;
    std::vector<std::string> m_Scenes;
    // Of options with one value.
    std::string m_Frames = "120";
    std::string m_FramesPerSecond = "0";
    std::string m_ChangeEvery = "0";
    std::string m_Output;
    std::string m_Mask = "0";
    std::string m_Client = "TessloClientDllSample.dll";
    std::string m_Driver = "TessloWddmUmode.dll";
    std::optional<std::string> m_Report;
};

std::vector<HostSource> MakeSources(const Texts& texts)
{
    std::vector<HostSource> sources;
    for (const std::string& size : texts.m_Sizes)
        sources.push_back(ParseSource(size));
    if (sources.size() > kSourcesMax)
        throw HostError("more than " + std::to_string(kSourcesMax) + " sources");
    if (texts.m_Rotations.size() > sources.size())
        throw HostError("more --rotation than --source");
    if (texts.m_Scenes.size() > sources.size())
        throw HostError("more --scene than --source");
    for (size_t i = 0; i < texts.m_Rotations.size(); ++i)
        sources[i].m_Degrees = ParseRotation(texts.m_Rotations[i]);
    for (size_t i = 0; i < texts.m_Scenes.size(); ++i)
        sources[i].m_Scene = ParseScene(texts.m_Scenes[i]);
    return sources;
}

UINT ParseCount(const std::string& option, const std::string& text, UINT highest)
{
    const std::string what = option + " " + text + ": expected 0 to " + std::to_string(highest);
    const UINT count = ParseNumber(text, 10, what);
    if (count > highest)
        throw HostError(what);
    return count;
}

// Each may be given once for each source.
void AddSourceOptions(CLI::App& app, Texts& texts)
{
    app.add_option("--source", texts.m_Sizes, "A virtual monitor's size; once for each, six at most (1280x720)")
        ->type_name("WxH")
        ->allow_extra_args(false);
    app.add_option("--rotation", texts.m_Rotations, "Rotation of the source in the same place: 0, 90, 180 or 270 (0)")
        ->type_name("DEGREES")
        ->allow_extra_args(false);
    app.add_option(
           "--scene", texts.m_Scenes, "What the source in the same place shows: turning, fill, video or card (turning)")
        ->type_name("NAME")
        ->allow_extra_args(false);
}

void AddOptions(CLI::App& app, Texts& texts, bool& bEveryFrame)
{
    AddSourceOptions(app, texts);
    // Where one value is wanted, the last one given wins: a script's own stand before those of its user.
    app.option_defaults()->take_last();
    app.add_option("--frames", texts.m_Frames, "Frames for each source; 0: until Ctrl-C, without recording (120)")
        ->type_name("N");
    app.add_option("--fps", texts.m_FramesPerSecond, "Frames a second of each source; 0: as fast as it goes (0)")
        ->type_name("N");
    app.add_option("--change-every", texts.m_ChangeEvery,
           "Change rotation and mode of a source, each in its turn, every N frames; 0: never (0)")
        ->type_name("N");
    app.add_flag(
        "--every-frame", bEveryFrame, "Present the next frame of a source when the client library has the one before");
    app.add_option(
           "--out", texts.m_Output, "Folder that overview.png and the sample client library's pictures go to (none)")
        ->type_name("FOLDER");
    app.add_option("--trace", texts.m_Mask, "The driver's trace mask; lines go to trace.log in the output folder (0)")
        ->type_name("MASK");
    app.add_option("--client", texts.m_Client, "Client library, up to 127 characters (" + texts.m_Client + ")")
        ->type_name("DLL");
    app.add_option("--driver", texts.m_Driver, "The driver (" + texts.m_Driver + ", beside this program)")
        ->type_name("DLL");
    app.add_option("--report", texts.m_Report,
           "Show nothing; write a report of this machine for those who help: versions, registry, adapters, log")
        ->type_name("FILE");
}

void Parse(CLI::App& app, std::vector<std::string> arguments)
{
    try
    {
        std::ranges::reverse(arguments);  // as the parser wants them
        app.parse(arguments);
    }
    catch (const CLI::CallForHelp&)
    {
        throw HostHelp(app.help());
    }
    catch (const CLI::ParseError& error)
    {
        throw HostError(error.what());
    }
}

// A report shows nothing: what says how to show would go unheard.
void CheckReport(const CLI::App& app, const Texts& texts)
{
    if (!texts.m_Report)
        return;
    if (texts.m_Report->empty())
        throw HostError("--report needs the name of a file");
    for (const CLI::Option* pOption : app.get_options())
        if (pOption->count() != 0 && pOption->get_name() != "--report" && pOption->get_name() != "--driver")
            throw HostError("--report shows nothing: leave " + pOption->get_name() + " out");
}

}  // namespace

const char* HostSceneName(HostSceneKind kind)
{
    return std::ranges::find(kScenes, kind, [](const auto& scene) { return scene.m_Kind; })->m_pName;
}

HostOptions HostParseOptions(std::vector<std::string> arguments)
{
    CLI::App app("Runs the TessloWddmUmode display driver without its kernel-mode half: renders moving pictures on\n"
                 "virtual monitors, presents them, and tells what reached the client library.",
        "tesslo_host");
    app.get_formatter()->column_width(34);
    Texts texts;
    HostOptions options;
    AddOptions(app, texts, options.m_bEveryFrame);
    Parse(app, std::move(arguments));
    CheckReport(app, texts);
    options.m_Sources = MakeSources(texts);
    options.m_Frames = ParseCount("--frames", texts.m_Frames, 1'000'000);
    options.m_FramesPerSecond = ParseCount("--fps", texts.m_FramesPerSecond, 1000);
    options.m_ChangeEvery = ParseCount("--change-every", texts.m_ChangeEvery, 1'000'000);
    options.m_Driver.m_TraceMask = ParseMask(texts.m_Mask);
    options.m_Driver.m_Path = HostWide(texts.m_Driver);
    options.m_Driver.m_ClientLibrary = HostWide(texts.m_Client);
    options.m_Output = HostWide(texts.m_Output);
    options.m_Report = HostWide(texts.m_Report.value_or(""));
    if (options.m_Driver.m_TraceMask != 0 && texts.m_Output.empty())
        throw HostError("--trace needs --out: the trace is written there");
    return options;
}
