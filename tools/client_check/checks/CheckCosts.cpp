#include "tools/client_check/checks/CheckCosts.h"

#include "host/program/HostStatistics.h"
#include "tools/client_check/CheckConnection.h"
#include "tools/client_check/CheckHoldings.h"

#include <algorithm>

namespace
{

constexpr DWORD kFrameInterval = 16;  ///< milliseconds from frame to frame, as of a monitor of 60 Hz

/// Frames as a monitor of 60 Hz shows them: what a library does behind its Update has its time.
std::vector<double> MeasureUpdates(const CheckClient& client, const CheckOptions& options)
{
    const CheckFrame even(0, options.m_Width, options.m_Height);
    const CheckFrame odd(0, options.m_Width, options.m_Height);
    CheckConnection connection(client, 0);
    std::vector<double> times;
    for (UINT i = 0; i < options.m_Frames; ++i)
    {
        const double time = connection.Send(i % 2 ? odd : even);
        times.push_back(time);
        if (time < kFrameInterval)
            Sleep(static_cast<DWORD>(kFrameInterval - time));
    }
    connection.Close();
    return times;
}

std::string LimitText(const CheckOptions& options)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%g", options.m_Limit);
    return text;
}

void ConnectOnce(CheckRun& run, const CheckClient& client)
{
    run.OnThread([&] {
        const CheckFrame frame(0, 64, 48);
        CheckConnection connection(client, 0);
        connection.Send(frame);
        connection.Close();
    });
}

}  // namespace

void CheckTime(CheckRun& run)
{
    const CheckOptions& options = run.m_Options;
    const CheckClient client(options.m_Library, run.m_Board);
    run.OnThread([&] {
        const std::vector<double> times = MeasureUpdates(client, options);
        const double most = HostPercentile(times, 99);
        run.Tell("median_ms", HostPercentile(times, 50));
        run.Tell("percentile_99_ms", most);
        run.Tell("longest_ms", std::ranges::max(times));
        if (most > options.m_Limit)
            run.Find("one Update in a hundred takes longer than " + LimitText(options) + " ms");
    });
}

void CheckLeaks(CheckRun& run)
{
    const CheckClient client(run.m_Options.m_Library, run.m_Board);
    CheckHoldings::Watch(run, run.m_Options.m_Connections, "connections", [&] { ConnectOnce(run, client); });
}

void CheckLoads(CheckRun& run)
{
    CheckHoldings::Watch(run, run.m_Options.m_Loads, "loads", [&run] {
        CheckClient client(run.m_Options.m_Library, run.m_Board);
        ConnectOnce(run, client);
        client.Free();
    });
}
