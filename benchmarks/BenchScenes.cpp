#include "BenchDriver.h"

#include "BenchSides.h"
#include "BenchTimer.h"
#include "BenchTurningScene.h"

namespace
{
constexpr UINT kWidth = 1280;
constexpr UINT kHeight = 720;
constexpr UINT kFrames = 61;
}  // namespace

// A plain device's frame ends in the readback without which no frame could be sent anywhere.
void BenchScenes(BenchReport& report)
{
    const std::string name = "demo scene 1280x720";
    if (!report.Wants(name))
        return;
    BenchSides& sides = BenchSides::Make();
    DifferentialDriverPainter& driver = sides.Driver();
    DifferentialPlainPainter& plain = sides.Plain();
    BenchTurningScene ourScene(driver, kWidth, kHeight), otherScene(plain, kWidth, kHeight);
    const PainterHandle pPrimary = driver.CreatePrimary(kWidth, kHeight);
    const PainterHandle pTarget = plain.CreateSurface(PainterSurface::Target, kWidth, kHeight, D3DFMT_X8R8G8B8);
    const PainterHandle pCopy = plain.CreateMemorySurface({kWidth, kHeight, D3DFMT_X8R8G8B8});
    IDirect3DSurface9* pTargetSurface = DifferentialPlainPainter::Surface(*pTarget);
    IDirect3DSurface9* pCopySurface = DifferentialPlainPainter::Surface(*pCopy);
    std::vector<double> ours, other;
    for (UINT frame = 0; frame < kFrames; ++frame)
    {
        const double begin = BenchNow();
        ourScene.Draw(*pPrimary, frame);
        const double drawn = BenchNow();
        const HostFlipTime flip = driver.Host().Flip(DifferentialDriverPainter::Handle(*pPrimary));
        ours.push_back(drawn - begin + flip.m_Work / 1000);
        // The frame-buffer thread still turns and sends the frame.
        Sleep(10);

        const double otherBegin = BenchNow();
        otherScene.Draw(*pTarget, frame);
        D3DLOCKED_RECT locked;
        HostCheck(plain.Device()->GetRenderTargetData(pTargetSurface, pCopySurface), "GetRenderTargetData");
        HostCheck(pCopySurface->LockRect(&locked, nullptr, D3DLOCK_READONLY), "LockRect");
        other.push_back(BenchNow() - otherBegin);
        pCopySurface->UnlockRect();
    }
    const DifferentialPicture ourPicture = driver.ReadBack(*pPrimary), otherPicture = plain.ReadBack(*pTarget);
    if (ourPicture != otherPicture)
        throw HostError("the driver's picture of the demo scene differs from the plain device's");
    report.AddRate(name, 1 / BenchMedian(ours), "plain device", 1 / BenchMedian(other), 0.98);
}
