#include "tools/client_check/CheckRun.h"

#include <system_error>

namespace
{

struct Worker
{
    CheckRun* m_pRun;
    const std::function<void()>* m_pWork;
    HANDLE m_hThread;
    bool m_bDone;  ///< of its own accord
};

DWORD WINAPI Work(void* pParameter)
{
    auto* pWorker = static_cast<Worker*>(pParameter);
    try
    {
        (*pWorker->m_pWork)();
    }
    catch (const CheckFailure& failure)
    {
        pWorker->m_pRun->Find(failure.what());
    }
    pWorker->m_bDone = true;
    return 0;
}

}  // namespace

void CheckRun::Find(const std::string& what)
{
    const std::lock_guard lock(m_Mutex);
    std::fprintf(m_pStream, "%s%s\n", kFinding, what.c_str());
    std::fflush(m_pStream);
}

void CheckRun::Tell(const char* pName, double value)
{
    const std::lock_guard lock(m_Mutex);
    std::fprintf(m_pStream, "%s%s %.3f\n", kFigure, pName, value);
}

void CheckRun::End()
{
    const std::lock_guard lock(m_Mutex);
    std::fprintf(m_pStream, "%s\n", kEnd);
    std::fflush(m_pStream);
}

void CheckRun::OnThreads(const std::vector<std::function<void()>>& works)
{
    std::vector<Worker> workers;
    for (const std::function<void()>& work : works)
        workers.push_back({this, &work, nullptr, false});
    for (Worker& worker : workers)
    {
        worker.m_hThread = CreateThread(nullptr, 0, Work, &worker, 0, nullptr);
        if (!worker.m_hThread)
            throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "no thread");
    }
    for (const Worker& worker : workers)
    {
        WaitForSingleObject(worker.m_hThread, INFINITE);
        CloseHandle(worker.m_hThread);
    }
    for (const Worker& worker : workers)
        if (!worker.m_bDone)
            return Find(m_Board.Unfinished() + " ended the thread that it was called on");
}
