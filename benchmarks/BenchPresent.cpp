#include "BenchDriver.h"

#include "BenchSides.h"
#include "BenchTimer.h"

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

/// Seconds that a plain device's target needs to be in system memory, in reach of the processor.
double ReadBack(DifferentialPlainPainter& plain, PainterObject& target, PainterObject& copy)
{
    IDirect3DSurface9* pCopy = DifferentialPlainPainter::Surface(copy);
    const double begin = BenchNow();
    D3DLOCKED_RECT locked;
    HostCheck(
        plain.Device()->GetRenderTargetData(DifferentialPlainPainter::Surface(target), pCopy), "GetRenderTargetData");
    HostCheck(pCopy->LockRect(&locked, nullptr, D3DLOCK_READONLY), "LockRect");
    const double end = BenchNow();
    pCopy->UnlockRect();
    return end - begin;
}

// A device each: when a primary goes, its device sends no more frames.
void Present(BenchReport& report, const Size& size)
{
    constexpr UINT kRing = 3;  // as many frames as the driver holds
    BenchSides& sides = BenchSides::Make();
    DifferentialDriverPainter& driver = sides.Driver();
    DifferentialPlainPainter& plain = sides.Plain();
    const auto [width, height] = size;
    const PainterHandle pPrimary = driver.CreatePrimary(width, height);
    const PainterHandle pTarget = plain.CreateSurface(PainterSurface::Target, width, height, D3DFMT_X8R8G8B8);
    const PainterHandle pCopy = plain.CreateMemorySurface({width, height, D3DFMT_X8R8G8B8});
    PainterHandle ring[kRing];
    for (PainterHandle& pSlot : ring)
        pSlot = plain.CreateMemorySurface({width, height, D3DFMT_X8R8G8B8});
    driver.SetTarget(*pPrimary);
    plain.SetTarget(*pTarget);
    std::vector<double> ours, single, inRing;
    const auto flip = [&](D3DCOLOR color) {
        driver.Clear(D3DCLEAR_TARGET, color, 0, 0);
        const double work = driver.Host().Flip(DifferentialDriverPainter::Handle(*pPrimary)).m_Work / 1000;
        // The frame-buffer thread still turns and sends the frame; it must not share the machine with what follows.
        Sleep(kPause);
        return work;
    };
    const auto readBack = [&](D3DCOLOR color, PainterObject& copy) {
        plain.Clear(D3DCLEAR_TARGET, color, 0, 0);
        const double time = ReadBack(plain, *pTarget, copy);
        Sleep(kPause);
        return time;
    };
    for (UINT round = 0; round < kRounds; ++round)
    {
        // The first call after the other device's pays for the change of the thread's GL context: only the next counts.
        const D3DCOLOR color = 0xFF000000 + round * 7;
        flip(color);
        ours.push_back(flip(color + 1));
        readBack(color, *pCopy);
        single.push_back(readBack(color + 1, *pCopy));
        inRing.push_back(readBack(color + 2, *ring[round % kRing]));
    }
    report.AddCost(Name(size), BenchMedian(ours), "readback", BenchMedian(single), 1.05);
    report.AddCostFigure(Name(size), BenchMedian(ours), "into one of three", BenchMedian(inRing));
}
}  // namespace

void BenchPresent(BenchReport& report)
{
    for (const Size& size : kSizes)
        if (report.Wants(Name(size)))
            Present(report, size);
}
