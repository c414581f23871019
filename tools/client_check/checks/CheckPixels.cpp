#include "tools/client_check/checks/CheckPixels.h"

#include "tools/client_check/CheckConnection.h"

#include <memory>

namespace
{

struct Size
{
    UINT m_Width, m_Height;
};

constexpr Size kSizes[] = {{1, 1}, {3, 2}, {33, 21}, {640, 480}, {1023, 767}, {1280, 720}};

/// Frames of one layout, a connection a size. They last as long as the connection.
void SendAll(CheckRun& run, CheckLayout layout)
{
    const CheckClient client(run.m_Options.m_Library, run.m_Board);
    for (const Size& size : kSizes)
        run.OnThread([&] {
            const CheckFrame frame(0, size.m_Width, size.m_Height, layout);
            CheckConnection connection(client, 0);
            connection.Send(frame);
            connection.Send(frame);
            connection.Close();
        });
}

}  // namespace

void CheckPitch(CheckRun& run)
{
    SendAll(run, CheckLayout::Gapped);
}

void CheckGuard(CheckRun& run)
{
    SendAll(run, CheckLayout::Guarded);
}

void CheckConst(CheckRun& run)
{
    SendAll(run, CheckLayout::ReadOnly);
}

void CheckLifetime(CheckRun& run)
{
    const CheckClient client(run.m_Options.m_Library, run.m_Board);
    run.OnThread([&] {
        std::vector<std::unique_ptr<CheckFrame>> frames;  // their addresses are not given out again
        CheckConnection connection(client, 0);
        for (int round = 0; round < 5; ++round)
            for (const Size& size : kSizes)
            {
                frames.push_back(std::make_unique<CheckFrame>(0, size.m_Width, size.m_Height));
                connection.Send(*frames.back());
                frames.back()->TakeAway();
                Sleep(5);  // for a thread of the library's that comes late
            }
        connection.Close();
    });
}
