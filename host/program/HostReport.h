// What the program says at its end, and whether all is well.
#pragma once

#include "host/program/HostOutput.h"

#include <string>
#include <vector>

class HostSession;

class HostReport
{
public:
    /// @param outputs, session borrowed. The driver's threads have ended: nothing is counted any more.
    HostReport(const std::vector<HostOutput>& outputs, HostSession& session, const HostOptions& options);

    /// A row for each output.
    void PrintTable() const;
    /// Writes overview.png: the last frame of each source side by side. Throws HostError.
    void WriteOverview() const;
    /// One line that compares what arrived with what was presented.
    void PrintClosing() const;
    /// What is wrong, a line each; none if all frames arrived that had to, and all their pictures are there.
    std::vector<std::string> Complaints() const;

private:
    /// Of all sources together.
    struct Sum
    {
        UINT64 m_Presented = 0;
        UINT64 m_Delivered = 0;
        UINT64 m_Recorded = 0;
        UINT64 m_Failed = 0;
        UINT64 m_FirstFrame = 0;    ///< of the first picture that failed; empty name: none did
        std::string m_FirstFailed;  ///< its file name
        DWORD m_FirstError = 0;
        bool m_bRecording = false;  ///< the client library says so
    };

    void AddRecording(const HostOutput& output);
    void PrintRow(const HostOutput& output) const;
    std::vector<std::string> Caption(const HostOutput& output) const;

    const std::vector<HostOutput>& m_Outputs;
    HostSession& m_Session;
    const HostOptions& m_Options;
    Sum m_Sum;
};
