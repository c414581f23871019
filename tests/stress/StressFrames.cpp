#include "StressFrames.h"

#include "StressRun.h"
#include "Waiting.h"

#include "ddi/ddi.h"

#include <stdexcept>
#include <utility>

namespace tesslo::test
{

namespace
{

/// The pixel of the painted frame that a rotation brings to this place of the arrived one.
UINT PlaceOf(const StressShape& shape, UINT x, UINT y)
{
    const UINT right = shape.m_Width - 1, bottom = shape.m_Height - 1;
    switch (shape.m_Rotation)
    {
    case D3DDDI_ROTATION_90:
        return x * shape.m_Width + (right - y);
    case D3DDDI_ROTATION_180:
        return (bottom - y) * shape.m_Width + (right - x);
    case D3DDDI_ROTATION_270:
        return (bottom - x) * shape.m_Width + y;
    default:
        return y * shape.m_Width + x;
    }
}

std::string SizeText(UINT width, UINT height)
{
    return std::to_string(width) + "x" + std::to_string(height);
}

}  // namespace

void StressFrames::Paint(FakeSurface& target, UINT source, const StressShape& shape)
{
    const UINT number = m_Next++;
    if (number >= kNumbers || shape.m_Width * shape.m_Height > kPixels || source >= kSources)
        throw std::runtime_error("the frame cannot be told from others");
    m_Painted[number] = {source, shape};
    m_Last[source] = number;
    auto* pPixels = reinterpret_cast<UINT*>(target.Pixels().Bytes().data());
    for (UINT i = 0; i < shape.m_Width * shape.m_Height; ++i)
        pPixels[i] = number * kPixels + i;
}

void StressFrames::Judge(const TessloVirtualMonitorFrame& frame)
{
    ++m_Arrived;
    if (const std::string wrong = InternalWrong(frame); !wrong.empty())
        InternalNote(frame.VidPnSourceId, wrong);
}

void StressFrames::InternalNote(UINT source, const std::string& wrong)
{
    const std::lock_guard lock(m_Mutex);
    m_Wrong.push_back("source " + std::to_string(source) + ": " + wrong);
}

void StressFrames::Await()
{
    for (UINT source = 0; source < kSources; ++source)
        if (!WaitUntil([&] { return m_Newest[source] >= m_Last[source]; }))
            InternalNote(source, "the last frame, " + std::to_string(m_Last[source]) + ", never arrives");
}

std::string StressFrames::InternalWrong(const TessloVirtualMonitorFrame& frame)
{
    const auto* pPixels = static_cast<const UINT*>(frame.pBits);
    const UINT number = pPixels[0] / kPixels;
    const std::string name = "frame " + std::to_string(number);
    if (number == 0 || number >= m_Next)
        return name + " was never painted";
    const auto& [source, shape] = m_Painted[number];
    if (frame.VidPnSourceId != source)
        return name + " is of source " + std::to_string(source);
    const bool turned = shape.m_Rotation == D3DDDI_ROTATION_90 || shape.m_Rotation == D3DDDI_ROTATION_270;
    const UINT width = turned ? shape.m_Height : shape.m_Width, height = turned ? shape.m_Width : shape.m_Height;
    if (frame.Width != width || frame.Height != height || frame.Pitch != width * sizeof(UINT))
        return name + " is " + SizeText(frame.Width, frame.Height) + " instead of " + SizeText(width, height);
    for (UINT y = 0; y < height; ++y)
        for (UINT x = 0; x < width; ++x)
        {
            const UINT pixel = pPixels[y * width + x];
            if (pixel == number * kPixels + PlaceOf(shape, x, y))
                continue;
            return name + " has at " + std::to_string(x) + "," + std::to_string(y) + " pixel " +
                   std::to_string(pixel % kPixels) + " of frame " + std::to_string(pixel / kPixels);
        }
    const UINT before = m_Newest[source].exchange(number);
    return number >= before ? "" : name + " arrives behind frame " + std::to_string(before);
}

void StressFrames::Restart(StressRun& run)
{
    for (const std::string& wrong : std::exchange(m_Wrong, {}))
        run.Find(wrong);
    Restart();
}

void StressFrames::Restart()
{
    m_Next = 1;
    m_Last.fill(0);
    for (std::atomic<UINT>& newest : m_Newest)
        newest = 0;
}

}  // namespace tesslo::test
