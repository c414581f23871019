#include "BenchImage.h"

#include "BenchPlainLoops.h"
#include "BenchTimer.h"
#include "ddi/ddi.h"
#include "output/UMDImgProc.h"

#include <emmintrin.h>

#include <cstring>
#include <memory>

namespace
{
struct Size
{
    UINT Width;
    UINT Height;
};

constexpr Size kSizes[] = {{1280, 720}, {1366, 768}, {1920, 1080}, {1919, 1079}, {3840, 2160}};
constexpr UINT kWarmRounds = 101;
constexpr UINT kColdRounds = 61;

struct Freed
{
    void operator()(BYTE* pMemory) const { VirtualFree(pMemory, 0, MEM_RELEASE); }
};
using Memory = std::unique_ptr<BYTE, Freed>;

/// Whole pages, written once so that none is missing when the clock runs.
Memory MakeMemory(size_t bytes)
{
    Memory memory(static_cast<BYTE*>(VirtualAlloc(nullptr, bytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE)));
    std::memset(memory.get(), 0x5A, bytes);
    return memory;
}

void Evict(const BYTE* pMemory, size_t bytes)
{
    for (size_t i = 0; i < bytes; i += 64)
        _mm_clflush(pMemory + i);
}

/// Reads each line, so that it is in the cache if there is room for it.
void Fetch(const BYTE* pMemory, size_t bytes)
{
    for (size_t i = 0; i < bytes; i += 64)
        static_cast<void>(*static_cast<const volatile BYTE*>(pMemory + i));
}

/// One size, one state of the caches: both frames and everything that is run on them.
class Frame
{
public:
    Frame(Size size, bool cold)
        : m_Size(size), m_Bytes(size_t{size.Width} * size.Height * 4), m_bCold(cold),
          m_Room((m_Bytes + 15) / 16 * 16 + size.Height * kPadding), m_pSrc(MakeMemory(m_Room)),
          m_pDst(MakeMemory(m_Room))
    {
    }

    void Run(BenchReport& report)
    {
        RunTurns(report, D3DDDI_ROTATION_90, "rotation 2", BenchScatteredTurn90);
        RunTurns(report, D3DDDI_ROTATION_270, "rotation 4", BenchScatteredTurn270);
        RunAgainstMemcpy(report, "rotation 3", RotationWork(D3DDDI_ROTATION_180), 0.90, IsLarge() ? 0.95 : 1.10);
        RunAgainstMemcpy(report, "rotation 1", RotationWork(D3DDDI_ROTATION_IDENTITY), 0.98, 1.10);
        const auto [width, height] = m_Size;
        BYTE* pDst = m_pDst.get();
        const BYTE* pSrc = m_pSrc.get();
        RunAgainstMemcpy(
            report, "packed copy", [=] { UMDImgProcCopy(pDst, width * 4, pSrc, width * 4, width, height, 4); }, 0.98,
            1.10);
        RunAgainstMemcpy(
            report, "pitched copy",
            [=] { UMDImgProcCopy(pDst, width * 4, pSrc, width * 4 + kPadding, width, height, 4); }, 0.90, 0);
        RunYardstick(report);
    }

private:
    static constexpr UINT kPadding = 64;  ///< bytes behind each row of the pitched copy

    bool IsLarge() const { return m_Size.Width >= 3840; }
    bool IsOdd() const { return m_Size.Height % 16 != 0 && m_Size.Width % 2 != 0; }

    std::string Name(const char* pWhat) const
    {
        return std::string(pWhat) + " " + std::to_string(m_Size.Width) + "x" + std::to_string(m_Size.Height) +
               (m_bCold ? " cold" : " warm");
    }

    std::function<void()> RotationWork(UINT rotation)
    {
        return [=, this] {
            UINT pitch = m_Size.Width * 4;
            UINT width = m_Size.Width;
            UINT height = m_Size.Height;
            UMDImgProcRotation(m_pDst.get(), m_pSrc.get(), &pitch, &width, &height, 4, rotation);
        };
    }

    /// Brings the caches into the same state before each run, whatever ran before.
    BenchWork Work(std::function<void()> run)
    {
        return {std::move(run), [this] {
                    for (BYTE* pMemory : {m_pSrc.get(), m_pDst.get()})
                        m_bCold ? Evict(pMemory, m_Room) : Fetch(pMemory, m_Room);
                    _mm_mfence();
                }};
    }

    BenchWork Memcpy()
    {
        return Work([this] { std::memcpy(m_pDst.get(), m_pSrc.get(), m_Bytes); });
    }

    void RunTurns(BenchReport& report, UINT rotation, const char* pName, decltype(&BenchScatteredTurn90) pPlain)
    {
        const std::string name = Name(pName);
        if (!report.Wants(name))
            return;
        const auto plain = [=, this] { pPlain(m_pDst.get(), m_pSrc.get(), m_Size.Width, m_Size.Height); };
        const std::vector<double> times =
            BenchCompare({Work(RotationWork(rotation)), Memcpy(), Work(plain)}, m_bCold ? kColdRounds : kWarmRounds);
        if (!m_bCold)
            report.AddSpeed(name, times[0], "memcpy", times[1], 0.45);
        else if (IsLarge() || IsOdd())
            report.AddSpeed(name, times[0], "memcpy", times[1], 0.50, 0.80);
        else
            report.AddSpeed(name, times[0], "memcpy", times[1], 0.65, 0.90);
        if (m_bCold && m_Size.Width >= 1919)
            report.AddSpeed(name, times[0], "plain loop", times[2], 8);
        else
            report.Add({name, "us", times[0] * 1e6, "plain loop", times[2] * 1e6, times[2] / times[0]});
    }

    void RunAgainstMemcpy(BenchReport& report, const char* pName, std::function<void()> run, double must, double aim)
    {
        const std::string name = Name(pName);
        if (!report.Wants(name))
            return;
        const std::vector<double> times =
            BenchCompare({Work(std::move(run)), Memcpy()}, m_bCold ? kColdRounds : kWarmRounds);
        report.AddSpeed(name, times[0], "memcpy", times[1], must, aim);
    }

    /// How good the C library's copy is itself.
    void RunYardstick(BenchReport& report)
    {
        const std::string name = Name("memcpy");
        if (!report.Wants(name))
            return;
        const size_t bytes = m_Bytes / 16 * 16;
        const auto vector = [=, this] { BenchVectorCopy(m_pDst.get(), m_pSrc.get(), bytes); };
        const std::vector<double> times = BenchCompare({Memcpy(), Work(vector)}, m_bCold ? kColdRounds : kWarmRounds);
        report.Add({name, "us", times[0] * 1e6, "vector loop", times[1] * 1e6, times[1] / times[0]});
    }

    Size m_Size;
    size_t m_Bytes;
    bool m_bCold;
    size_t m_Room;
    Memory m_pSrc;
    Memory m_pDst;
};
}  // namespace

void BenchImage(BenchReport& report)
{
    for (const Size& size : kSizes)
    {
        for (const bool cold : {true, false})
            Frame(size, cold).Run(report);
    }
}
