#include "BenchDriver.h"

#include "BenchSides.h"
#include "BenchTimer.h"

#include <atomic>
#include <cstring>
#include <thread>
#include <vector>

namespace
{
struct Size
{
    UINT m_Width;
    UINT m_Height;
};

constexpr Size kSizes[] = {{1280, 720}, {1920, 1080}};
constexpr UINT kRounds = 41;
constexpr DWORD kPause = 30;  ///< milliseconds

std::string Name(const Size& size)
{
    return "present " + std::to_string(size.m_Width) + "x" + std::to_string(size.m_Height);
}

/// A thread that waits for an event and copies the frame that came with it, as the driver's frame-buffer thread does:
/// on two cores it may get the one that its waker needs, and one that had nothing to do would give it back at once.
class FrameTaker
{
public:
    explicit FrameTaker(const Size& size)
        : m_Frame(size_t{size.m_Width} * size.m_Height * 4), m_Thread([this] {
              while (WaitForSingleObject(m_hEvent, INFINITE) == WAIT_OBJECT_0 && !m_bEnd)
                  Copy();
          })
    {
    }
    ~FrameTaker()
    {
        m_bEnd = true;
        SetEvent(m_hEvent);
        m_Thread.join();
        CloseHandle(m_hEvent);
    }
    FrameTaker(const FrameTaker&) = delete;
    FrameTaker& operator=(const FrameTaker&) = delete;

    /// @param pFrame stays as it is until the next but one.
    void Take(IDirect3DSurface9* pFrame)
    {
        m_pFrame = pFrame;
        SetEvent(m_hEvent);
    }

private:
    void Copy()
    {
        IDirect3DSurface9* pFrame = m_pFrame;
        D3DLOCKED_RECT locked = {};
        if (FAILED(pFrame->LockRect(&locked, nullptr, D3DLOCK_READONLY)))
            return;
        std::memcpy(m_Frame.data(), locked.pBits, m_Frame.size());
        pFrame->UnlockRect();
    }

    HANDLE m_hEvent = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    std::atomic<bool> m_bEnd = false;
    std::atomic<IDirect3DSurface9*> m_pFrame = nullptr;
    std::vector<BYTE> m_Frame;
    std::thread m_Thread;
};

/// Seconds from the beginning, of a frame that a plain device hands to a thread.
struct HandOver
{
    double m_Read;  ///< the frame is in system memory
    double m_Told;  ///< the thread that takes it is told
};

HandOver ReadBackAndTell(DifferentialPlainPainter& plain, PainterObject& target, PainterObject& copy, FrameTaker& taker)
{
    IDirect3DSurface9* pTarget = DifferentialPlainPainter::Surface(target);
    IDirect3DSurface9* pCopy = DifferentialPlainPainter::Surface(copy);
    const double begin = BenchNow();
    HostCheck(plain.Device()->GetRenderTargetData(pTarget, pCopy), "GetRenderTargetData");
    const double read = BenchNow();
    taker.Take(pCopy);
    return {read - begin, BenchNow() - begin};
}

// A device each: when a primary goes, its device sends no more frames. Each round is compared by itself, so that what
// else the machine does falls on both sides.
void Present(BenchReport& report, const Size& size)
{
    constexpr UINT kRing = 3;  // as many frames as the driver holds
    BenchSides& sides = BenchSides::Make();
    DifferentialDriverPainter& driver = sides.Driver();
    DifferentialPlainPainter& plain = sides.Plain();
    const auto [width, height] = size;
    const PainterHandle pPrimary = driver.CreatePrimary(width, height);
    const PainterHandle pTarget = plain.CreateSurface(PainterSurface::Target, width, height, D3DFMT_X8R8G8B8);
    PainterHandle ring[kRing];
    for (PainterHandle& pSlot : ring)
        pSlot = plain.CreateMemorySurface({width, height, D3DFMT_X8R8G8B8});
    driver.SetTarget(*pPrimary);
    plain.SetTarget(*pTarget);
    FrameTaker taker(size);
    std::vector<double> ours, read, told, ratios;
    const auto flip = [&](D3DCOLOR color) {
        driver.Clear(D3DCLEAR_TARGET, color, 0, 0);
        const double work = driver.Host().Flip(DifferentialDriverPainter::Handle(*pPrimary)).m_Work / 1000;
        // The frame-buffer thread still turns and sends the frame; it must not share the machine with what follows.
        Sleep(kPause);
        return work;
    };
    const auto handOver = [&](D3DCOLOR color, PainterObject& copy) {
        plain.Clear(D3DCLEAR_TARGET, color, 0, 0);
        const HandOver times = ReadBackAndTell(plain, *pTarget, copy, taker);
        Sleep(kPause);
        return times;
    };
    for (UINT round = 0; round < kRounds; ++round)
    {
        // The first call after the other device's pays for the change of the thread's GL context: only the next counts.
        const D3DCOLOR color = 0xFF000000 + round * 7;
        flip(color);
        ours.push_back(flip(color + 1));
        handOver(color, *ring[2 * round % kRing]);
        const HandOver times = handOver(color + 1, *ring[(2 * round + 1) % kRing]);
        read.push_back(times.m_Read);
        told.push_back(times.m_Told);
        ratios.push_back(ours.back() / times.m_Told);
    }
    report.Add({Name(size), "us", BenchMedian(ours) * 1e6, "readback, event", BenchMedian(told) * 1e6,
        BenchMedian(ratios), BenchTarget::AtMost, 1.03, 1.00});
    report.AddCostFigure(Name(size), BenchMedian(ours), "into one of three", BenchMedian(read));
}
}  // namespace

void BenchPresent(BenchReport& report)
{
    for (const Size& size : kSizes)
        if (report.Wants(Name(size)))
            Present(report, size);
}
