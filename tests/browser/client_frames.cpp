// Plays the driver for one client library, as told by lines on its standard input, and answers each with a line:
// client_frames LIBRARY
//
//   plug SOURCE                         opens a connection
//   frame SOURCE WIDTH HEIGHT SEED      delivers a frame, with garbage where its alpha would be and behind its rows
//   ramp SOURCE WIDTH HEIGHT BLUE       the same of a picture that no compression harms much
//   patch SOURCE SEED X Y               delivers the frame before with one pixel of the seed's
//   unplug SOURCE                       closes the connection
//   reload                              frees the library and loads it again
//
// The answer is "ok MILLISECONDS", what the library took, or "refused". The end of the input ends the program without
// a further word to the library, as a process that is killed would.
#include <tesslo/client.h>

#include <chrono>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace
{

constexpr UINT kRowPadding = 3;  // pixels
constexpr UINT kGarbage = 0x5A000000;

// Both are the same in browser_frames.py.
UINT Pixel(UINT x, UINT y, UINT seed)
{
    return ((x ^ y) * 2654435761u + seed * 40503u) & 0xFFFFFF;
}

UINT RampPixel(UINT x, UINT y, UINT blue)
{
    return (x & 0xFF) << 16 | (y & 0xFF) << 8 | (blue & 0xFF);
}

struct Connection
{
    void* m_pSlot = nullptr;
    UINT m_Width = 0;
    UINT m_Height = 0;
    std::vector<UINT> m_Bits;
};

class Driver
{
public:
    explicit Driver(const char* pLibrary) : m_pLibrary(pLibrary) { Load(); }

    bool Obey(const std::string& line)
    {
        std::istringstream words(line);
        std::string command;
        UINT source = 0;
        words >> command >> source;
        if (command == "reload")
            return FreeLibrary(m_hLibrary) && Load();
        if (command == "plug")
            return m_pPlug(&m_Connections[source].m_pSlot, source);
        if (command == "unplug")
            return m_pUnplug(&m_Connections[source].m_pSlot, source);
        if (command == "frame")
            return Draw(words, m_Connections[source], Pixel) && Send(source);
        if (command == "ramp")
            return Draw(words, m_Connections[source], RampPixel) && Send(source);
        return command == "patch" && Patch(words, m_Connections[source]) && Send(source);
    }

private:
    template <typename Function>
    void Find(const char* pName, Function* pFunction)
    {
        *pFunction = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(m_hLibrary, pName)));
    }

    bool Load()
    {
        m_hLibrary = LoadLibraryA(m_pLibrary);
        if (m_hLibrary == nullptr)
            return false;
        Find(TESSLO_CLIENT_PLUG, &m_pPlug);
        Find(TESSLO_CLIENT_UPDATE, &m_pUpdate);
        Find(TESSLO_CLIENT_UNPLUG, &m_pUnplug);
        return true;
    }

    static bool Draw(std::istringstream& words, Connection& connection, UINT (*pPixel)(UINT x, UINT y, UINT seed))
    {
        UINT seed = 0;
        if (!(words >> connection.m_Width >> connection.m_Height >> seed))
            return false;
        const UINT pitch = connection.m_Width + kRowPadding;
        connection.m_Bits.assign(size_t{pitch} * connection.m_Height, 0xA5A5A5A5);
        for (UINT y = 0; y < connection.m_Height; ++y)
            for (UINT x = 0; x < connection.m_Width; ++x)
                connection.m_Bits[size_t{y} * pitch + x] = pPixel(x, y, seed) | kGarbage;
        return true;
    }

    static bool Patch(std::istringstream& words, Connection& connection)
    {
        UINT seed = 0, x = 0, y = 0;
        if (!(words >> seed >> x >> y) || x >= connection.m_Width || y >= connection.m_Height)
            return false;
        connection.m_Bits[size_t{y} * (connection.m_Width + kRowPadding) + x] = Pixel(x, y, seed);
        return true;
    }

    bool Send(UINT source)
    {
        Connection& connection = m_Connections[source];
        const TessloVirtualMonitorFrame frame = {0, source, connection.m_Width, connection.m_Height,
            (connection.m_Width + kRowPadding) * 4, 0, connection.m_Bits.data()};
        return m_pUpdate(&connection.m_pSlot, &frame);
    }

    const char* m_pLibrary;
    HMODULE m_hLibrary = nullptr;
    TessloVirtualMonitorPlugFunction m_pPlug = nullptr;
    TessloVirtualMonitorUpdateFunction m_pUpdate = nullptr;
    TessloVirtualMonitorUnplugFunction m_pUnplug = nullptr;
    std::map<UINT, Connection> m_Connections;
};

}  // namespace

int main(int argc, char** argv)
{
    Driver driver(argc > 1 ? argv[1] : "TessloClientDllBrowser.dll");
    std::string line;
    while (std::getline(std::cin, line))
    {
        const auto begin = std::chrono::steady_clock::now();
        const bool bDone = driver.Obey(line);
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begin;
        if (bDone)
            std::cout << "ok " << time.count() << std::endl;
        else
            std::cout << "refused" << std::endl;
    }
    TerminateProcess(GetCurrentProcess(), 0);
}
