#include "tools/client_check/checks/CheckCalls.h"

#include "tools/client_check/CheckConnection.h"

#include <memory>

namespace
{

constexpr UINT kSources = 6;  ///< that a device of the driver's has
constexpr int kRounds = 20;

/// One connection with a few frames.
void Connect(const CheckClient& client, UINT source, int frames)
{
    const CheckFrame frame(source, 64, 48);
    CheckConnection connection(client, source);
    for (int i = 0; i < frames; ++i)
        connection.Send(frame);
    connection.Close();
}

}  // namespace

void CheckExports(CheckRun& run)
{
    run.OnThread([&] { const CheckClient client(run.m_Options.m_Library, run.m_Board); });
}

void CheckOrder(CheckRun& run)
{
    const CheckClient client(run.m_Options.m_Library, run.m_Board);
    for (UINT source = 0; source < kSources; ++source)
    {
        run.OnThread([&] { Connect(client, source, 3); });
        run.OnThread([&] { Connect(client, source, 0); });
        run.OnThread([&] { Connect(client, source, 1); });
    }
}

void CheckSources(CheckRun& run)
{
    const CheckClient client(run.m_Options.m_Library, run.m_Board);
    std::vector<std::function<void()>> works;
    // A process may have two devices, each of which shows the first source.
    for (const UINT source : {0U, 0U, 1U, 2U, 3U, 4U, 5U})
        works.emplace_back([&client, source] {
            const CheckFrame frame(source, 320 + source, 200);
            CheckConnection connection(client, source);
            for (int i = 0; i < kRounds; ++i)
            {
                connection.Send(frame);
                Sleep(1);
            }
            connection.Close();
        });
    run.OnThreads(works);
}

void CheckReplug(CheckRun& run)
{
    const CheckClient client(run.m_Options.m_Library, run.m_Board);
    run.OnThread([&] {
        const CheckFrame staying(0, 320, 200);
        const CheckFrame leaving(1, 64, 48);
        CheckConnection connection(client, 0);
        for (int i = 0; i < kRounds; ++i)
        {
            connection.Send(staying);
            CheckConnection other(client, 1);
            other.Send(leaving);
            connection.Send(staying);
            other.Close();
        }
        connection.Send(staying);
        connection.Close();
    });
}

void CheckSlots(CheckRun& run)
{
    const CheckClient client(run.m_Options.m_Library, run.m_Board);
    run.OnThread([&] {
        const CheckFrame frame(0, 64, 48);
        std::unique_ptr<CheckConnection> pLast;
        for (int i = 0; i < kRounds; ++i)
        {
            // The next one is opened while the last one is still open, and used when that is gone.
            auto pNext = std::make_unique<CheckConnection>(client, 0, CheckSlot::Where::Moving);
            pNext->Send(frame);
            if (pLast)
                pLast->Close();
            pNext->Send(frame);
            pLast = std::move(pNext);
        }
        pLast->Close();
    });
}
