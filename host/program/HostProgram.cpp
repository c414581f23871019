#include "host/program/HostProgram.h"

#include "host/program/HostProgress.h"
#include "host/program/HostStatistics.h"
#include "host/program/HostTraceFile.h"
#include "host/runtime/HostCapabilities.h"
#include "host/runtime/HostSession.h"
#include "host/runtime/HostText.h"
#include "host/scenes/HostFillScene.h"
#include "host/scenes/HostTurningScene.h"
#include "host/scenes/HostVideoScene.h"

#include <cstdio>
#include <optional>

namespace
{

// Generous: a software rasteriser on a busy machine still delivers within it.
constexpr DWORD kDeliveryMilliseconds = 30'000;

/// One virtual monitor and what was measured on it.
struct Output
{
    UINT m_SourceId;
    HostSource m_Source;
    std::unique_ptr<HostScene> m_pScene;
    std::unique_ptr<HostResource> m_pPrimary;
    std::vector<double> m_Work;  ///< milliseconds, one a frame
    std::vector<double> m_Pause;
};

void MakeFolder(const std::wstring& folder)
{
    if (CreateDirectoryW(folder.c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS)
        if (GetFileAttributesW(folder.c_str()) & FILE_ATTRIBUTE_DIRECTORY)
            return;
    HostThrowSystemError("cannot make the folder " + HostUtf8(folder), GetLastError());
}

std::unique_ptr<HostScene> MakeScene(HostSceneKind kind)
{
    switch (kind)
    {
    case HostSceneKind::Fill:
        return std::make_unique<HostFillScene>();
    case HostSceneKind::Video:
        return std::make_unique<HostVideoScene>();
    default:
        return std::make_unique<HostTurningScene>();
    }
}

std::vector<Output> MakeOutputs(HostDevice& device, const std::vector<HostSource>& sources)
{
    std::vector<Output> outputs;
    for (const HostSource& source : sources)
    {
        const UINT id = static_cast<UINT>(outputs.size());
        const auto rotation = static_cast<D3DDDI_ROTATION>(D3DDDI_ROTATION_IDENTITY + source.m_Degrees / 90);
        outputs.push_back({id, source, MakeScene(source.m_Scene),
            device.CreatePrimary(source.m_Width, source.m_Height, id, rotation), {}, {}});
        device.SetDisplayMode(*outputs.back().m_pPrimary);
    }
    return outputs;
}

void ShowFrame(HostSession& session, Output& output, UINT frame, bool bEveryFrame)
{
    output.m_pScene->Draw(session.Device(), *output.m_pPrimary, frame);
    session.Device().Flush();
    const HostFlipTime time = session.Device().Flip(*output.m_pPrimary);
    output.m_Work.push_back(time.m_Work);
    output.m_Pause.push_back(time.m_Pause);
    if (bEveryFrame && !session.Delivery().WaitReceived(output.m_SourceId, frame + 1, kDeliveryMilliseconds))
        throw HostError("source " + std::to_string(output.m_SourceId) + ": frame " + std::to_string(frame) +
                        " did not reach the client library");
}

void PrintTable(const std::vector<Output>& outputs, const HostDelivery& delivery)
{
    std::printf("\n%-7s %-10s %9s %10s %10s %8s %9s   %s\n", "source", "size", "rotation", "presented", "delivered",
        "dropped", "recorded", "present ms: median   99 %    pause");
    for (const Output& output : outputs)
    {
        const std::string size =
            std::to_string(output.m_Source.m_Width) + "x" + std::to_string(output.m_Source.m_Height);
        const auto counters = delivery.Counters(output.m_SourceId);
        const auto count = [&](UINT64 value) { return counters ? std::to_string(value) : std::string("-"); };
        const UINT64 presented = output.m_Work.size();
        const TessloSampleCounters known = counters.value_or(TessloSampleCounters{});
        std::printf("%-7u %-10s %9u %10u %10s %8s %9s   %18.2f %6.2f %8.2f\n", output.m_SourceId, size.c_str(),
            output.m_Source.m_Degrees, static_cast<UINT>(presented), count(known.Received).c_str(),
            count(presented - known.Received).c_str(), count(known.Recorded).c_str(), HostPercentile(output.m_Work, 50),
            HostPercentile(output.m_Work, 99), HostPercentile(output.m_Pause, 50));
    }
    std::printf("\nThe pause is the driver's own 10 ms behind each flip; the times before it are without it.\n");
}

// Pictures that are missing although the client library had the frame.
void PrintNotRecorded(const std::vector<Output>& outputs, const HostDelivery& delivery)
{
    for (const Output& output : outputs)
    {
        const TessloSampleCounters counters = delivery.Counters(output.m_SourceId).value_or(TessloSampleCounters{});
        if (counters.Dropped != 0)
            std::printf("Source %u: %u delivered frames were not recorded, because writing pictures took longer.\n",
                output.m_SourceId, static_cast<UINT>(counters.Dropped));
        if (counters.Failed != 0)
            std::printf("Source %u: %u delivered frames could not be recorded.\n", output.m_SourceId,
                static_cast<UINT>(counters.Failed));
    }
}

// Everything that is made with the device is gone when it returns.
std::vector<Output> ShowFrames(HostSession& session, const HostOptions& options)
{
    std::vector<Output> outputs = MakeOutputs(session.Device(), options.m_Sources);
    HostProgress progress(options.m_Frames);
    for (UINT frame = 0; frame < options.m_Frames; ++frame)
    {
        for (Output& output : outputs)
            ShowFrame(session, output, frame, options.m_bEveryFrame);
        progress.Update(frame + 1);
    }
    for (Output& output : outputs)
    {
        output.m_pScene.reset();
        output.m_pPrimary.reset();
    }
    return outputs;
}

void ReportViolations(const HostKernel& kernel)
{
    const std::vector<std::string> violations = kernel.Violations();
    if (!violations.empty())
        throw HostError("the driver broke the contract " + std::to_string(violations.size()) +
                        " times, first: " + violations.front());
}

}  // namespace

void HostRunProgram(const HostOptions& options)
{
    std::optional<HostTraceFile> trace;
    if (!options.m_Output.empty())
    {
        MakeFolder(options.m_Output);
        SetEnvironmentVariableW(TESSLO_SAMPLE_RECORD_DIR, options.m_Output.c_str());
        if (options.m_Driver.m_TraceMask != 0)
            trace.emplace(options.m_Output + L"\\trace.log");
    }
    HostSession session(options.m_Driver);
    HostAskCapabilities(session.Adapter());
    const std::vector<Output> outputs = ShowFrames(session, options);
    session.Close();
    PrintTable(outputs, session.Delivery());
    PrintNotRecorded(outputs, session.Delivery());
    ReportViolations(session.Kernel());
}
