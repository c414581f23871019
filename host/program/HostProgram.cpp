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
            if (options.m_bEveryFrame)
                output.WaitDelivered();
        }
        progress.Update(frame + 1);
    }
    for (HostOutput& output : outputs)
        output.Release();
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
    const std::vector<HostOutput> outputs = ShowFrames(session, options);
    session.Close();
    HostPrintReport(outputs, session);
    ReportViolations(session.Kernel());
}
