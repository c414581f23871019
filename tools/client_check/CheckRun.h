// What a check has at hand: the library, the threads that call it, and a place for what comes of it.
#pragma once

#include "tools/client_check/CheckClient.h"
#include "tools/client_check/CheckOptions.h"

#include <cstdio>
#include <functional>
#include <mutex>

class CheckRun
{
public:
    /// What the parent reads, a line each.
    static constexpr char kFinding[] = "@finding ";
    static constexpr char kFigure[] = "@figure ";  ///< name, blank, number
    static constexpr char kEnd[] = "@end";         ///< the check has come to its end

    CheckRun(const CheckOptions& options, CheckBoard& board, FILE* pStream)
        : m_Options(options), m_Board(board), m_pStream(pStream)
    {
    }

    /// Any thread.
    void Find(const std::string& what);
    void Tell(const char* pName, double value);
    void End();

    /// Does each work on a thread of its own, as the driver's workers are, and waits for all. What ends in a
    /// CheckFailure, or ends its thread, is a finding.
    void OnThreads(const std::vector<std::function<void()>>& works);
    void OnThread(const std::function<void()>& work) { OnThreads({work}); }

    const CheckOptions& m_Options;
    CheckBoard& m_Board;

private:
    std::mutex m_Mutex;
    FILE* m_pStream;
};
