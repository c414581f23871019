#include "host/program/HostProgram.h"

#include "host/program/HostOutput.h"
#include "host/program/HostProgress.h"
#include "host/program/HostReport.h"
#include "host/program/HostTraceFile.h"
#include "host/runtime/HostCapabilities.h"
#include "host/runtime/HostSession.h"
#include "host/runtime/HostText.h"

#include <optional>

namespace
{

void MakeFolder(const std::wstring& folder)
{
    if (CreateDirectoryW(folder.c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS)
        if (GetFileAttributesW(folder.c_str()) & FILE_ATTRIBUTE_DIRECTORY)
            return;
    HostThrowSystemError("cannot make the folder " + HostUtf8(folder), GetLastError());
}

// Everything that is made with the device is gone when it returns.
std::vector<HostOutput> ShowFrames(HostSession& session, const HostOptions& options)
{
    std::vector<HostOutput> outputs;
    for (const HostSource& source : options.m_Sources)
        outputs.emplace_back(session, static_cast<UINT>(outputs.size()), source);
    HostProgress progress(options.m_Frames);
    for (UINT frame = 0; frame < options.m_Frames; ++frame)
    {
        for (HostOutput& output : outputs)
        {
            output.Show(frame);
            if (!options.m_bEveryFrame)
                continue;
            output.WaitDelivered();
            if (!options.m_Output.empty())
                output.WaitRecordable();
        }
        progress.Update(frame + 1);
    }
    for (HostOutput& output : outputs)
        output.Release();
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
    std::optional<HostTraceFile> trace;
    if (!options.m_Output.empty())
    {
        MakeFolder(options.m_Output);
        SetEnvironmentVariableW(TESSLO_SAMPLE_RECORD_DIR, options.m_Output.c_str());
        if (options.m_Driver.m_TraceMask != 0)
            trace.emplace(options.m_Output + L"\\trace.log");
    }
    HostSession session(options.m_Driver);
    if (!options.m_Output.empty())
        session.Delivery().KeepFrames();
    HostAskCapabilities(session.Adapter());
    const std::vector<HostOutput> outputs = ShowFrames(session, options);
    session.Close();
    Report(outputs, session, options, trace);
}
