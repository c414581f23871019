#include "BenchImage.h"

#include "BenchMemory.h"
#include "BenchPlainLoops.h"
#include "BenchTimer.h"
#include "ddi/ddi.h"
#include "output/UMDImgProc.h"

#include <emmintrin.h>

#include <cstring>

namespace
{
/// Speeds, as parts of memcpy's.
struct Target
{
    double Must;
    double Aim;  ///< 0: none
};

struct Size
{
    UINT Width;
    UINT Height;
    Target ColdTurn;  ///< of turns by 90 and 270 degrees
    Target WarmTurn;
};

constexpr Target kOddHeightTurn = {0.82, 0.90};
constexpr Size kSizes[] = {
    {1280, 720, {0.65, 0.90}, {0.60, 0.75}},
    {1366, 768, {0.88, 0.95}, {0.50, 0.75}},  // turned, its rows lie a multiple of 1024 bytes apart
    {1680, 1050, kOddHeightTurn, {0.60, 0.75}},
    {1920, 1080, {0.88, 0.95}, {0.60, 0.75}},
    {1919, 1079, kOddHeightTurn, {0.60, 0.75}},
    {3840, 2160, {0.50, 0.80}, {0.45, 0}},
};
constexpr UINT kPlainRounds = 7;  ///< it takes up to ten times as long, and has nothing to meet

/// One size, one state of the caches: both frames and everything that is run on them.
class Frame
{
public:
    Frame(const Size& size, bool cold)
        : m_Size(size), m_Bytes(size_t{size.Width} * size.Height * 4), m_bCold(cold),
          m_Room((m_Bytes + 15) / 16 * 16 + size.Height * kPadding), m_pSrc(BenchMakeMemory(m_Room)),
          m_pDst(BenchMakeMemory(m_Room))
    {
    }

    void Run(BenchReport& report)
    {
        RunTurns(report, D3DDDI_ROTATION_90, "rotation 2", BenchScatteredTurn90);
        RunTurns(report, D3DDDI_ROTATION_270, "rotation 4", BenchScatteredTurn270);
        RunPaddedTurns(report);
        RunAgainstMemcpy(report, "rotation 3", RotationWork(D3DDDI_ROTATION_180), {0.90, IsLarge() ? 0.95 : 1.10});
        RunAgainstMemcpy(report, "rotation 1", RotationWork(D3DDDI_ROTATION_IDENTITY), PackedTarget());
        const UINT width = m_Size.Width, height = m_Size.Height;
        BYTE* pDst = m_pDst.get();
        const BYTE* pSrc = m_pSrc.get();
        RunAgainstMemcpy(
            report, "packed copy", [=] { UMDImgProcCopy(pDst, width * 4, pSrc, width * 4, width, height, 4); },
            PackedTarget());
        RunAgainstMemcpy(report, "pitched copy",
            [=] { UMDImgProcCopy(pDst, width * 4, pSrc, width * 4 + kPadding, width, height, 4); }, {0.90, 0});
        RunYardstick(report);
    }

private:
    static constexpr UINT kPadding = 64;  ///< bytes behind each row of the pitched copy and the padded turns

    bool IsLarge() const { return m_Size.Width >= 3840; }
    // Those of large frames differ less, and take four times as long.
    UINT Rounds() const { return IsLarge() ? 21 : m_bCold ? 41 : 61; }
    Target PackedTarget() const { return m_bCold && !IsLarge() ? Target{1.00, 1.15} : Target{0.98, 1.10}; }

    std::string Name(const std::string& what) const
    {
        return what + " " + std::to_string(m_Size.Width) + "x" + std::to_string(m_Size.Height) +
               (m_bCold ? " cold" : " warm");
    }

    std::function<void()> RotationWork(UINT rotation, UINT padding = 0)
    {
        return [=, this] {
            UINT pitch = m_Size.Width * 4 + padding;
            UINT width = m_Size.Width;
            UINT height = m_Size.Height;
            UMDImgProcRotation(m_pDst.get(), m_pSrc.get(), &pitch, &width, &height, 4, rotation);
        };
    }

    /// Brings the caches into the same state before each run, whatever ran before. Warm frames are as the same work
    /// left them: to stream over lines that another one's stores have changed in the caches takes twice the time.
    BenchWork Work(const std::function<void()>& run)
    {
        const auto prepare = [this, run] {
            if (!m_bCold)
                run();
            for (const BYTE* pMemory : {m_pSrc.get(), m_pDst.get()})
                m_bCold ? BenchEvict(pMemory, m_Room) : BenchFetch(pMemory, m_Room);
            _mm_mfence();
        };
        return {run, prepare};
    }

    BenchWork Memcpy()
    {
        return Work([this] { std::memcpy(m_pDst.get(), m_pSrc.get(), m_Bytes); });
    }

    void RunTurns(BenchReport& report, UINT rotation, const char* pName, decltype(&BenchScatteredTurn90) pPlain)
    {
        RunAgainstMemcpy(report, pName, RotationWork(rotation), m_bCold ? m_Size.ColdTurn : m_Size.WarmTurn);
        const std::string name = Name(pName);
        if (!report.Wants(name))
            return;
        const auto plain = [=, this] { pPlain(m_pDst.get(), m_pSrc.get(), m_Size.Width, m_Size.Height); };
        const std::vector<double> times = BenchCompare({Work(RotationWork(rotation)), Work(plain)}, kPlainRounds);
        report.Add({name, "us", times[0] * 1e6, "plain loop", times[1] * 1e6, times[1] / times[0]});
    }

    // Rows of a source that do not follow each other begin on other lines than those of a packed one.
    void RunPaddedTurns(BenchReport& report)
    {
        if (!m_bCold || IsLarge() || m_Size.Height < 1050)
            return;
        RunAgainstMemcpy(report, "padded rotation 2", RotationWork(D3DDDI_ROTATION_90, kPadding), kOddHeightTurn);
        RunAgainstMemcpy(report, "padded rotation 4", RotationWork(D3DDDI_ROTATION_270, kPadding), kOddHeightTurn);
    }

    void RunAgainstMemcpy(
        BenchReport& report, const char* pName, const std::function<void()>& run, const Target& target)
    {
        const std::string name = Name(pName);
        if (!report.Wants(name))
            return;
        const std::vector<double> times = BenchCompare({Work(run), Memcpy()}, Rounds());
        report.AddSpeed(name, times[0], "memcpy", times[1], target.Must, target.Aim);
    }

    /// How good the C library's copy is itself.
    void RunYardstick(BenchReport& report)
    {
        const std::string name = Name("memcpy");
        if (!report.Wants(name))
            return;
        const size_t bytes = m_Bytes / 16 * 16;
        const auto vector = [=, this] { BenchVectorCopy(m_pDst.get(), m_pSrc.get(), bytes); };
        const std::vector<double> times = BenchCompare({Memcpy(), Work(vector)}, Rounds());
        report.Add({name, "us", times[0] * 1e6, "vector loop", times[1] * 1e6, times[1] / times[0]});
    }

    Size m_Size;
    size_t m_Bytes;
    bool m_bCold;
    size_t m_Room;
    BenchMemory m_pSrc;
    BenchMemory m_pDst;
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
