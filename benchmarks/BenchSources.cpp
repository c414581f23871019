#include "BenchImage.h"

#include "BenchMemory.h"
#include "BenchTimer.h"
#include "ddi/ddi.h"
#include "output/UMDImgProc.h"

#include <thread>

namespace
{
constexpr UINT kWidth = 1920;
constexpr UINT kHeight = 1080;
constexpr size_t kBytes = size_t{kWidth} * kHeight * 4;
constexpr UINT kSources = 6;
constexpr UINT kFrames = 8;  ///< of each source in a round
constexpr UINT kRounds = 15;

struct Source
{
    BenchMemory m_pSrc = BenchMakeMemory(kBytes);
    BenchMemory m_pDst = BenchMakeMemory(kBytes);
};

void Turn(const Source& source)
{
    UINT pitch = kWidth * 4, width = kWidth, height = kHeight;
    UMDImgProcRotation(source.m_pDst.get(), source.m_pSrc.get(), &pitch, &width, &height, 4, D3DDDI_ROTATION_90);
}

void Copy(const Source& source)
{
    UMDImgProcCopy(source.m_pDst.get(), kWidth * 4, source.m_pSrc.get(), kWidth * 4, kWidth, kHeight, 4);
}

/// Two cores of those that the process may use, while it lives.
class TwoCores
{
public:
    TwoCores()
    {
        DWORD_PTR all = 0;
        GetProcessAffinityMask(GetCurrentProcess(), &m_Own, &all);
        const DWORD_PTR first = m_Own & (0 - m_Own), rest = m_Own & ~first;
        SetProcessAffinityMask(GetCurrentProcess(), first | (rest & (0 - rest)));
    }
    ~TwoCores() { SetProcessAffinityMask(GetCurrentProcess(), m_Own); }
    TwoCores(const TwoCores&) = delete;
    TwoCores& operator=(const TwoCores&) = delete;

private:
    DWORD_PTR m_Own = 0;
};

/// A thread for each source, as the driver has one; all begin at once.
/// @return seconds until the last of them has done its frames.
double Run(const Source (&sources)[kSources], void (*pWork)(const Source&))
{
    const HANDLE hBegin = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::vector<std::thread> threads;
    for (const Source& source : sources)
        threads.emplace_back([=, &source] {
            WaitForSingleObject(hBegin, INFINITE);
            for (UINT frame = 0; frame < kFrames; ++frame)
                pWork(source);
        });
    const double begin = BenchNow();
    SetEvent(hBegin);
    for (std::thread& thread : threads)
        thread.join();
    const double end = BenchNow();
    CloseHandle(hBegin);
    return end - begin;
}
}  // namespace

void BenchSources(BenchReport& report)
{
    const std::string name = "six sources at once 1920x1080";
    if (!report.Wants(name))
        return;
    const TwoCores cores;
    const Source sources[kSources];
    std::vector<double> turns, copies;
    for (UINT round = 0; round <= kRounds; ++round)
    {
        const double turn = Run(sources, Turn), copy = Run(sources, Copy);
        if (round == 0)
            continue;
        turns.push_back(turn);
        copies.push_back(copy);
    }
    constexpr double kAll = kSources * kFrames;
    report.AddRate(name, kAll / BenchMedian(turns), "packed copies", kAll / BenchMedian(copies), 0.70, 0.85);
}
