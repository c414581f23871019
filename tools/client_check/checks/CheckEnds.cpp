#include "tools/client_check/checks/CheckEnds.h"

#include "tools/client_check/CheckConnection.h"
#include "tools/process/ResourceCounts.h"

#include <atomic>
#include <thread>

namespace
{

constexpr UINT kSources = 6;
constexpr int kLives = 20;
constexpr DWORD kMoment = 200;       ///< milliseconds for threads that are about to run into what is gone
constexpr DWORD kThreadsEnd = 2000;  ///< milliseconds for threads that are about to end

/// The library's whole stay.
void Live(CheckRun& run)
{
    CheckClient client(run.m_Options.m_Library, run.m_Board);
    std::vector<std::function<void()>> works;
    for (const UINT source : {0U, 1U})
        works.emplace_back([&client, source] {
            const CheckFrame frame(source, 64, 48);
            CheckConnection connection(client, source);
            connection.Send(frame);
            connection.Send(frame);
            connection.Close();
        });
    run.OnThreads(works);
    client.Free();
}

/// Never returns.
void StayConnected(CheckRun& run, const CheckClient& client, UINT source, std::atomic<UINT>& ready)
{
    const CheckFrame frame(source, 320, 200);
    try
    {
        const CheckConnection connection(client, source);
        for (int i = 0; i < 5; ++i)
            connection.Send(frame);
    }
    catch (const CheckFailure& failure)
    {
        run.Find(failure.what());
    }
    ++ready;
    Sleep(INFINITE);
}

unsigned ThreadsAtRest(unsigned expected)
{
    unsigned threads = ResourceCounts::Now().m_Threads;
    for (DWORD waited = 0; threads > expected && waited < kThreadsEnd; waited += 50)
    {
        Sleep(50);
        threads = ResourceCounts::Now().m_Threads;
    }
    return threads;
}

}  // namespace

void CheckExit(CheckRun& run)
{
    const CheckClient client(run.m_Options.m_Library, run.m_Board);
    std::atomic<UINT> ready = 0;
    for (UINT source = 0; source < kSources; ++source)
        std::thread([&, source] { StayConnected(run, client, source, ready); }).detach();
    while (ready < kSources)
        Sleep(1);
    run.End();
    const CheckStep step(run.m_Board, "the end of the process (DllMain, DLL_PROCESS_DETACH)");
    ExitProcess(0);
}

void CheckUnload(CheckRun& run)
{
    Live(run);  // what the platform makes on its first need is there behind it
    const unsigned threads = ThreadsAtRest(1);
    for (int i = 0; i < kLives; ++i)
    {
        Live(run);
        if (GetModuleHandleW(run.m_Options.m_Library.c_str()))
            return run.Find("the library is still loaded when it was freed as often as loaded");
    }
    Sleep(kMoment);
    if (const unsigned now = ThreadsAtRest(threads); now > threads)
        run.Find(std::to_string(now - threads) + " threads live on behind " + std::to_string(kLives) + " lives");
}
