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

std::string Name(const Size& size)
{
    return "present " + std::to_string(size.m_Width) + "x" + std::to_string(size.m_Height);
}

// A device each: when a primary goes, its device sends no more frames.
void Present(BenchReport& report, const Size& size)
{
    BenchSides sides;
    DifferentialDriverPainter& driver = sides.Driver();
    DifferentialPlainPainter& plain = sides.Plain();
    const PainterHandle pPrimary = driver.CreatePrimary(size.m_Width, size.m_Height);
    const PainterHandle pTarget =
        plain.CreateSurface(PainterSurface::Target, size.m_Width, size.m_Height, D3DFMT_X8R8G8B8);
    const PainterHandle pCopy = plain.CreateMemorySurface({size.m_Width, size.m_Height, D3DFMT_X8R8G8B8});
    IDirect3DSurface9* pTargetSurface = DifferentialPlainPainter::Surface(*pTarget);
    IDirect3DSurface9* pCopySurface = DifferentialPlainPainter::Surface(*pCopy);
    driver.SetTarget(*pPrimary);
    plain.SetTarget(*pTarget);
    std::vector<double> ours, other;
    for (UINT round = 0; round < kRounds; ++round)
    {
        const D3DCOLOR color = 0xFF000000 + round * 7;
        driver.Clear(D3DCLEAR_TARGET, color, 0, 0);
        ours.push_back(driver.Host().Flip(DifferentialDriverPainter::Handle(*pPrimary)).m_Work / 1000);
        // The frame-buffer thread still turns and sends the frame; it must not share the machine with what follows.
        Sleep(30);
        plain.Clear(D3DCLEAR_TARGET, color, 0, 0);
        const double begin = BenchNow();
        D3DLOCKED_RECT locked;
        HostCheck(plain.Device()->GetRenderTargetData(pTargetSurface, pCopySurface), "GetRenderTargetData");
        HostCheck(pCopySurface->LockRect(&locked, nullptr, D3DLOCK_READONLY), "LockRect");
        other.push_back(BenchNow() - begin);
        pCopySurface->UnlockRect();
    }
    report.AddCost(Name(size), BenchMedian(ours), "readback", BenchMedian(other), 1.05);
}
} // namespace

void BenchPresent(BenchReport& report)
{
    for (const Size& size : kSizes)
        if (report.Wants(Name(size)))
            Present(report, size);
}
