// Frames that tell which they are: each pixel holds the frame's number and its own place before the rotation.
#pragma once

#include "FakeSurface.h"

#include "tesslo/client.h"

#include <array>
#include <atomic>
#include <mutex>
#include <string>
#include <vector>

namespace tesslo::test
{

class StressRun;

struct StressShape
{
    UINT m_Width, m_Height;  ///< pixels, before the rotation
    UINT m_Rotation;         ///< a D3DDDI_ROTATION
};

class StressFrames
{
public:
    static constexpr UINT kSources = 24;
    static constexpr UINT kPixels = 1 << 12;     ///< of a frame, at most
    static constexpr UINT kNumbers = (1 << 16);  ///< of frames, until Restart

    /// Paints the next number. Presenting threads; throws std::runtime_error when numbers or pixels are too many.
    void Paint(FakeSurface& target, UINT source, const StressShape& shape);
    /// Takes an arrived frame and notes what is wrong with it: other than it was painted, of two frames, in another
    /// rotation than its own, of another source, or older than the one before. The source's thread.
    void Judge(const TessloVirtualMonitorFrame& frame);

    /// Waits until each source's last frame has arrived, and notes those whose one does not.
    void Await();
    uint64_t Arrived() const { return m_Arrived; }
    /// Counts from 1 again. Nobody paints or judges.
    void Restart();
    /// Behind a run: the same, and passes on what was noted.
    void Restart(StressRun& run);

private:
    struct Painted
    {
        UINT m_Source;
        StressShape m_Shape;
    };

    void InternalNote(UINT source, const std::string& wrong);
    std::string InternalWrong(const TessloVirtualMonitorFrame& frame);

    std::array<Painted, kNumbers> m_Painted{};  ///< by number
    std::atomic<UINT> m_Next = 1;
    std::array<UINT, kSources> m_Last{};                 ///< number that was painted last, by source
    std::array<std::atomic<UINT>, kSources> m_Newest{};  ///< number that arrived last, by source
    std::atomic<uint64_t> m_Arrived = 0;                 ///< since the beginning
    std::mutex m_Mutex;
    std::vector<std::string> m_Wrong;
};

}  // namespace tesslo::test
