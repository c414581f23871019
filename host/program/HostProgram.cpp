#include "host/program/HostProgram.h"

#include "host/program/HostOutput.h"
#include "host/program/HostPacer.h"
#include "host/program/HostProgress.h"
#include "host/program/HostReport.h"
#include "host/program/HostStop.h"
#include "host/program/HostTraceFile.h"
#include "host/runtime/HostCapabilities.h"
#include "host/runtime/HostSession.h"
#include "host/runtime/HostText.h"

#include <optional>

namespace
{

constexpr DWORD kFirstFrameMilliseconds = 30'000;

void MakeFolder(const std::wstring& folder)
{
    if (CreateDirectoryW(folder.c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS)
        if (GetFileAttributesW(folder.c_str()) & FILE_ATTRIBUTE_DIRECTORY)
            return;
    HostThrowSystemError("cannot make the folder " + HostUtf8(folder), GetLastError());
}

// The driver would find out at the first frame, and only trace it.
void CheckClientLibrary(HMODULE hClientLibrary, const HostOptions& options)
{
    for (const char* pExport : {TESSLO_CLIENT_PLUG, TESSLO_CLIENT_UPDATE, TESSLO_CLIENT_UNPLUG})
        if (GetProcAddress(hClientLibrary, pExport) == nullptr)
            throw HostError(HostUtf8(options.m_Driver.m_ClientLibrary.value_or(TESSLO_CLIENT_DEFAULT_DLL)) +
                            " does not export " + pExport + ": it is no client library");
}

void ShowFrame(HostOutput& output, UINT frame, const HostOptions& options)
{
    output.Show(frame);
    if (!options.m_bEveryFrame)
        return;
    output.WaitDelivered();
    if (options.Records())
        output.WaitRecordable();
}

// Everything that is made with the device is gone when it returns.
std::vector<HostOutput> ShowFrames(HostSession& session, const HostOptions& options, const HostStop& stop)
{
    std::vector<HostOutput> outputs;
    for (const HostSource& source : options.m_Sources)
        outputs.emplace_back(session, static_cast<UINT>(outputs.size()), source);
    HostProgress progress(options.m_Frames);
    HostPacer pacer(options.m_FramesPerSecond);
    for (UINT frame = 0; (options.m_Frames == 0 || frame < options.m_Frames) && !stop.IsAsked(); ++frame)
    {
        pacer.Wait(stop);
        if (options.m_ChangeEvery != 0 && frame != 0 && frame % options.m_ChangeEvery == 0)
            outputs[frame / options.m_ChangeEvery % outputs.size()].ChangeMode();
        for (HostOutput& output : outputs)
            ShowFrame(output, frame, options);
        progress.Update(frame + 1);
    }
    for (HostOutput& output : outputs)
    {
        // A run of a few frames can be over before the first one is through.
        if (session.Delivery().Counters(output.SourceId()).m_Presented != 0)
            session.Delivery().WaitDelivered(output.SourceId(), 1, kFirstFrameMilliseconds);
        output.Release();
    }
    return outputs;
}

void Report(const std::vector<HostOutput>& outputs, HostSession& session, const HostOptions& options,
    const std::optional<HostTraceFile>& trace)
{
    const HostReport report(outputs, session, options);
    report.PrintTable();
    report.PrintClosing();
    std::vector<std::string> complaints = report.Complaints();
    const std::vector<std::string> violations = session.Kernel().Violations();
    if (!violations.empty())
        complaints.push_back("the driver broke the contract " + std::to_string(violations.size()) +
                             " times, first: " + violations.front());
    if (trace && !trace->Complaint().empty())
        complaints.push_back(trace->Complaint());
    try
    {
        if (!options.m_Output.empty())
            report.WriteOverview();
    }
    catch (const HostError& error)
    {
        complaints.push_back(error.what());
    }
    if (complaints.empty())
        return;
    std::string text = complaints.front();
    for (size_t i = 1; i < complaints.size(); ++i)
        text += "\n" + complaints[i];
    throw HostError(text);
}

}  // namespace

void HostRunProgram(const HostOptions& options)
{
    const HostStop stop;
    std::optional<HostTraceFile> trace;
    if (!options.m_Output.empty())
    {
        MakeFolder(options.m_Output);
        if (options.Records())
            SetEnvironmentVariableW(TESSLO_SAMPLE_RECORD_DIR, options.m_Output.c_str());
        if (options.m_Driver.m_TraceMask != 0)
            trace.emplace(options.m_Output + L"\\trace.log");
    }
    HostSession session(options.m_Driver);
    if (!options.m_Output.empty())
        session.Delivery().KeepFrames();
    CheckClientLibrary(session.Driver().ClientLibrary(), options);
    HostAskCapabilities(session.Adapter());
    const std::vector<HostOutput> outputs = ShowFrames(session, options, stop);
    session.Close();
    Report(outputs, session, options, trace);
}
