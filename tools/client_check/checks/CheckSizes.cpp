#include "tools/client_check/checks/CheckSizes.h"

#include "tools/client_check/CheckConnection.h"

namespace
{

struct Size
{
    UINT m_Width, m_Height;
};

constexpr Size kSizes[] = {
    {1, 1},
    {2, 1},
    {3, 2},
    {17, 5},
    {255, 33},
    {641, 479},
    {800, 600},
    {1023, 767},
    {1366, 768},
    {1920, 1080},
    {3840, 2160},
    {7680, 4320},
};

constexpr Size kModes[] = {{640, 480}, {1366, 768}, {1921, 1080}, {7680, 4320}};

/// Each connection has frames of one size.
void SendAlone(const CheckClient& client, UINT width, UINT height)
{
    const CheckFrame frame(0, width, height);
    CheckConnection connection(client, 0);
    connection.Send(frame);
    connection.Close();
}

}  // namespace

void CheckSizes(CheckRun& run)
{
    const CheckClient client(run.m_Options.m_Library, run.m_Board);
    for (const Size& size : kSizes)
        run.OnThread([&] { SendAlone(client, size.m_Width, size.m_Height); });
}

void CheckRotations(CheckRun& run)
{
    const CheckClient client(run.m_Options.m_Library, run.m_Board);
    for (const Size& mode : kModes)
        run.OnThread([&] {
            const CheckFrame upright(0, mode.m_Width, mode.m_Height);
            const CheckFrame onItsSide(0, mode.m_Height, mode.m_Width);
            // A monitor that hangs on its side from the first frame on, and is turned once around.
            CheckConnection connection(client, 0);
            for (const CheckFrame* pFrame : {&onItsSide, &upright, &onItsSide, &upright})
                connection.Send(*pFrame);
            connection.Close();
        });
}

void CheckResize(CheckRun& run)
{
    const CheckClient client(run.m_Options.m_Library, run.m_Board);
    run.OnThread([&] {
        CheckConnection connection(client, 0);
        // Small first: what was made for it is too small for all behind.
        for (int round = 0; round < 2; ++round)
            for (const Size size : {Size{64, 48}, Size{1280, 720}, Size{33, 21}, Size{1920, 1080}, Size{1, 1}})
                connection.Send(CheckFrame(0, size.m_Width, size.m_Height));
        connection.Close();
    });
}
