#include "BenchDriver.h"

#include "BenchTimer.h"
#include "BenchViewer.h"
#include "host/program/HostStatistics.h"
#include "host/runtime/HostSession.h"
#include "host/scenes/HostTurningScene.h"
#include "util/UMDModuleExport.h"

#include <tesslo/browser_client.h>
#include <tesslo/client.h>

#include <algorithm>
#include <exception>
#include <functional>
#include <iterator>
#include <optional>
#include <thread>

namespace
{
constexpr wchar_t kLibrary[] = L"TessloClientDllBrowser.dll";
constexpr u_short kPort = 7699;
constexpr UINT kPictures = 24;  ///< of the scene, shown again and again
constexpr UINT kShown = 120;    ///< pictures whose ages are taken: one in a hundred is a figure
constexpr UINT kStill = 30;     ///< pictures of an idle desktop: none sends a byte, however many they are
constexpr double kSeconds = 2;  ///< of one core's work, and of plain sockets'
constexpr UINT kRounds = 16;    ///< of a presenter, of two turns with a page and two without
constexpr UINT kTurnFrames = 4;
const std::string kIdle = "bytes for an idle desktop 1280x720";

struct Size
{
    UINT m_Width;
    UINT m_Height;
};

std::string Text(const Size& size)
{
    return std::to_string(size.m_Width) + "x" + std::to_string(size.m_Height);
}

std::string AgeName(const Size& size, UINT rate)
{
    return "age at a browser " + Text(size) + ", " + std::to_string(rate) + " a second";
}

std::string OneCoreName(const Size& size)
{
    return "frames that one core carries " + Text(size);
}

std::string PresenterName(const Size& size)
{
    return "present with a viewer " + Text(size);
}

/// The demo's scene on a device of the driver's.
class Scene
{
public:
    Scene(HostDevice& device, const Size& size)
        : m_Device(device), m_pPrimary(device.CreatePrimary(size.m_Width, size.m_Height, 0, D3DDDI_ROTATION_IDENTITY))
    {
        device.SetDisplayMode(*m_pPrimary);
    }

    void Draw(UINT frame) { m_Scene.Draw(m_Device, *m_pPrimary, frame); }

    HostImage Picture(UINT frame)
    {
        Draw(frame);
        return m_Device.ReadBack(*m_pPrimary);
    }

    /// Seconds of a flip without its pause.
    double Flip()
    {
        m_Device.Flush();
        return m_Device.Flip(*m_pPrimary).m_Work / 1000;
    }

private:
    HostDevice& m_Device;
    std::unique_ptr<HostResource> m_pPrimary;
    HostTurningScene m_Scene;
};

/// Work with a scene on the driver and this client library, on a thread of its own: the GL context that Wine lends it
/// goes with the thread, before the device. A context that outlives its device is touched again by the thread's next
/// device, when its memory is somebody else's.
void WithScene(const Size& size, const std::function<void(Scene&)>& work)
{
    HostSession session({L"TessloWddmUmode.dll", kLibrary, 0});
    std::exception_ptr pFailure;
    std::thread thread([&] {
        try
        {
            Scene scene(session.Device(), size);
            work(scene);
        }
        catch (...)
        {
            pFailure = std::current_exception();
        }
    });
    thread.join();
    if (pFailure)
        std::rethrow_exception(pFailure);
}

std::vector<HostImage> DrawPictures(const Size& size)
{
    std::vector<HostImage> pictures;
    WithScene(size, [&](Scene& scene) {
        for (UINT frame = 0; frame < kPictures; ++frame)
            pictures.push_back(scene.Picture(frame));
    });
    return pictures;
}

/// The library, called as the driver's worker calls it, with one page that watches.
class Library
{
public:
    Library() : m_hModule(LoadLibraryW(kLibrary))
    {
        m_pUpdate = UMDModuleExport<TessloVirtualMonitorUpdateFunction>(m_hModule, TESSLO_CLIENT_UPDATE);
        m_pUnplug = UMDModuleExport<TessloVirtualMonitorUnplugFunction>(m_hModule, TESSLO_CLIENT_UNPLUG);
        UMDModuleExport<TessloVirtualMonitorPlugFunction>(m_hModule, TESSLO_CLIENT_PLUG)(&m_pSlot, 0);
        m_Viewer.emplace(kPort);
    }
    ~Library()
    {
        m_Viewer.reset();
        m_pUnplug(&m_pSlot, 0);
        FreeLibrary(m_hModule);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    BenchViewer& Viewer() { return *m_Viewer; }

    void Update(const HostImage& picture)
    {
        const TessloVirtualMonitorFrame frame = {
            0, 0, picture.m_Width, picture.m_Height, picture.m_Width * 4, 0, picture.m_Pixels.data()};
        m_pUpdate(&m_pSlot, &frame);
    }

private:
    HMODULE m_hModule;
    TessloVirtualMonitorUpdateFunction m_pUpdate;
    TessloVirtualMonitorUnplugFunction m_pUnplug;
    void* m_pSlot = nullptr;
    std::optional<BenchViewer> m_Viewer;
};

/// Delivers so many pictures at a rate. @return seconds that it took.
double Show(Library& library, const std::vector<HostImage>& pictures, UINT rate, UINT count)
{
    const double begin = BenchNow();
    for (UINT frame = 0; frame < count; ++frame)
    {
        library.Update(pictures[frame % pictures.size()]);
        const double left = begin + (frame + 1.0) / rate - BenchNow();
        if (left > 0)
            Sleep(static_cast<DWORD>(left * 1000));
    }
    return BenchNow() - begin;
}

void AddAge(BenchReport& report, const std::string& name, double age, double must, double aim)
{
    const double milliseconds = age * 1000;
    const BenchTarget kind = must > 0 ? BenchTarget::AtMost : BenchTarget::None;
    report.Add({name, "ms", milliseconds, "", 0, milliseconds, kind, must, aim});
}

void Ages(BenchReport& report, const Size& size, const std::vector<HostImage>& pictures, UINT rate)
{
    const std::string name = AgeName(size, rate);
    if (!report.Wants(name))
        return;
    const bool bTarget = size.m_Width == 1280 && rate == 30;
    Library library;
    Show(library, pictures, rate, rate / 2);
    library.Viewer().TakeAges();
    const UINT64 before = library.Viewer().Bytes();
    const double seconds = Show(library, pictures, rate, kShown);
    const double bytes = static_cast<double>(library.Viewer().Bytes() - before);
    const std::vector<double> ages = library.Viewer().TakeAges();
    AddAge(report, name + ", median", HostPercentile(ages, 50), bTarget ? 20 : 0, bTarget ? 8 : 0);
    AddAge(report, name + ", 99 %", HostPercentile(ages, 99), bTarget ? 50 : 0, bTarget ? 20 : 0);
    const double pixels = 4.0 * size.m_Width * size.m_Height * rate;
    report.Add(
        {name + ", sent a second", "KiB", bytes / seconds / 1024, "pixels", pixels / 1024, bytes / seconds / pixels});
}

// The same picture again and again.
void Idle(BenchReport& report, const std::vector<HostImage>& pictures)
{
    if (!report.Wants(kIdle))
        return;
    Library library;
    const std::vector<HostImage> still(1, pictures.front());
    Show(library, still, 30, 15);
    const UINT64 before = library.Viewer().Bytes();
    const double seconds = Show(library, still, 30, kStill);
    const double bytes = static_cast<double>(library.Viewer().Bytes() - before);
    report.Add({kIdle, "B/s", bytes / seconds, "", 0, bytes / seconds, BenchTarget::AtMost, 0});
}

/// Frames a second of that many bytes between two sockets of this machine.
double LoopbackRate(size_t bytes)
{
    const SOCKET hListener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int length = sizeof(address);
    bind(hListener, reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    listen(hListener, 1);
    getsockname(hListener, reinterpret_cast<sockaddr*>(&address), &length);
    const SOCKET hOut = socket(AF_INET, SOCK_STREAM, 0);
    connect(hOut, reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    const SOCKET hIn = accept(hListener, nullptr, nullptr);
    UINT64 received = 0;
    std::thread reader([&] {
        std::vector<char> buffer(bytes);
        for (int count; (count = recv(hIn, buffer.data(), static_cast<int>(bytes), 0)) > 0;)
            received += static_cast<UINT>(count);
    });
    const std::vector<char> frame(bytes, 'x');
    const double begin = BenchNow();
    while (BenchNow() - begin < kSeconds)
        send(hOut, frame.data(), static_cast<int>(bytes), 0);
    shutdown(hOut, SD_SEND);
    reader.join();
    const double rate = static_cast<double>(received) / static_cast<double>(bytes) / (BenchNow() - begin);
    for (const SOCKET hSocket : {hListener, hOut, hIn})
        closesocket(hSocket);
    return rate;
}

// As many frames as there can be: worker, library and viewer share one core.
void OneCore(BenchReport& report, const Size& size, const std::vector<HostImage>& pictures)
{
    const std::string name = OneCoreName(size);
    if (!report.Wants(name))
        return;
    DWORD_PTR own = 0, all = 0;
    GetProcessAffinityMask(GetCurrentProcess(), &own, &all);
    SetProcessAffinityMask(GetCurrentProcess(), 1);
    Library library;
    const UINT64 bytesBefore = library.Viewer().Bytes();
    const UINT before = library.Viewer().Updates();
    const double begin = BenchNow();
    UINT shown = 0;
    while (BenchNow() - begin < kSeconds)
    {
        library.Update(pictures[shown % pictures.size()]);
        ++shown;
        // The next when this one is there: nothing but frames that arrive is paid for.
        while (library.Viewer().Updates() - before < shown && BenchNow() - begin < kSeconds)
            Sleep(0);
    }
    const UINT updates = library.Viewer().Updates() - before;
    const double rate = updates / (BenchNow() - begin);
    const size_t bytes = static_cast<size_t>((library.Viewer().Bytes() - bytesBefore) / std::max(updates, 1u));
    const double loopback = LoopbackRate(bytes);
    SetProcessAffinityMask(GetCurrentProcess(), own);
    report.Add({name, "fps", rate, "loopback alone", loopback, rate / loopback});
}

/// A presenter's turn: seconds of each flip.
std::vector<double> Turn(Scene& scene, UINT turn, bool bWatched)
{
    std::optional<BenchViewer> viewer;
    scene.Draw(turn);
    scene.Flip();
    if (bWatched)
        viewer.emplace(kPort);
    Sleep(30);
    std::vector<double> flips;
    for (UINT frame = 0; frame < kTurnFrames; ++frame)
    {
        scene.Draw(turn * kTurnFrames + frame);
        flips.push_back(scene.Flip());
        // What the frame sets off has ended before the next is measured.
        Sleep(30);
    }
    return flips;
}

// What a page that watches costs whoever presents. Turns are short and each round is compared by itself, so that what
// else the machine does falls on both sides: most of a flip is a wait for the threads that draw.
void Presenter(BenchReport& report, const Size& size)
{
    const std::string name = PresenterName(size);
    if (!report.Wants(name))
        return;
    std::vector<double> with, without, ratios;
    WithScene(size, [&](Scene& scene) {
        for (UINT round = 0; round < kRounds; ++round)
        {
            std::vector<double> flips[2];
            const bool bFirst = round % 2 != 0;
            UINT turn = round * 4;
            for (const bool bWatched : {bFirst, !bFirst, !bFirst, bFirst})
                std::ranges::move(Turn(scene, turn++, bWatched), std::back_inserter(flips[bWatched]));
            without.push_back(BenchMedian(flips[0]));
            with.push_back(BenchMedian(flips[1]));
            ratios.push_back(with.back() / without.back());
        }
    });
    report.Add({name, "us", BenchMedian(with) * 1e6, "without", BenchMedian(without) * 1e6, BenchMedian(ratios),
        BenchTarget::AtMost, 1.02});
}
}  // namespace

void BenchBrowser(BenchReport& report)
{
    SetEnvironmentVariableW(TESSLO_BROWSER_PORT, std::to_wstring(kPort).c_str());
    for (const Size& size : {Size{1280, 720}, Size{1920, 1080}})
    {
        if (!report.WantsAny({AgeName(size, 30), AgeName(size, 60), kIdle, OneCoreName(size), PresenterName(size)}))
            continue;
        const std::vector<HostImage> pictures = DrawPictures(size);
        for (const UINT rate : {30u, 60u})
            Ages(report, size, pictures, rate);
        if (size.m_Width == 1280)
            Idle(report, pictures);
        else
            OneCore(report, size, pictures);
        Presenter(report, size);
    }
}
