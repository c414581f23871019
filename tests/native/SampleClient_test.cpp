// The sample client library's exports as two worker threads of the driver call them, with the pictures that it writes.
#include "PictureFolder.h"
#include "SampleCounts.h"
#include "exact_memory.h"

#include <tesslo/client.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

namespace
{
using tesslo::test::Picture;
using tesslo::test::PictureFolder;

constexpr UINT kFrames = 6;  // fewer than the queue holds, so that none is dropped

struct Frame
{
    UINT Width, Height, Pitch;

    ExactBytes Bits(UINT seed) const
    {
        ExactBytes bits((Height - 1) * Pitch + Width * 4);
        bits.FillWithNoise(seed);
        return bits;
    }
};

/// One source's life: each frame's memory ends with the call that delivers it.
void Deliver(UINT source, const Frame& frame)
{
    void* pSlot = nullptr;
    ASSERT_TRUE(TessloVirtualMonitorPlug(&pSlot, source));
    for (UINT number = 0; number < kFrames; ++number)
    {
        const ExactBytes bits = frame.Bits(source * 100 + number);
        const TessloVirtualMonitorFrame record = {0, source, frame.Width, frame.Height, frame.Pitch, 0, bits.Get()};
        EXPECT_TRUE(TessloVirtualMonitorUpdate(&pSlot, &record));
    }
    EXPECT_TRUE(TessloVirtualMonitorUnplug(&pSlot, source));
    EXPECT_EQ(pSlot, nullptr);
}

/// The frame's pixels as a picture shows them.
Picture Expected(const Frame& frame, const ExactBytes& bits)
{
    Picture picture = {frame.Width, frame.Height, {}};
    for (UINT y = 0; y < frame.Height; ++y)
    {
        for (UINT x = 0; x < frame.Width; ++x)
        {
            const BYTE* pPixel = bits.Get() + y * frame.Pitch + x * 4;
            picture.m_Rgb.insert(picture.m_Rgb.end(), {pPixel[2], pPixel[1], pPixel[0]});
        }
    }
    return picture;
}

class SampleClientTest : public testing::Test
{
protected:
    SampleClientTest() { setenv("TESSLO_RECORD_DIR", m_Folder.Path().c_str(), 1); }
    ~SampleClientTest() override { unsetenv("TESSLO_RECORD_DIR"); }

    void ExpectPictures(UINT source, const Frame& frame) const
    {
        for (UINT number = 0; number < kFrames; ++number)
        {
            const std::string name = "source" + std::to_string(source) + "-frame00000" + std::to_string(number);
            EXPECT_EQ(m_Folder.Read(name + ".png"), Expected(frame, frame.Bits(source * 100 + number))) << name;
        }
    }

    PictureFolder m_Folder;
};
}  // namespace

TEST_F(SampleClientTest, TwoSources_OnThreadsOfTheirOwn_EveryFrameIsAPicture)
{
    const Frame first = {33, 17, 33 * 4 + 12};
    const Frame second = {64, 5, 64 * 4};
    std::thread other(Deliver, 4, second);
    Deliver(3, first);
    other.join();

    ExpectPictures(3, first);
    ExpectPictures(4, second);
    EXPECT_EQ(SampleCounts(3).Recorded, kFrames);
    EXPECT_EQ(SampleCounts(4).Recorded, kFrames);
}

TEST_F(SampleClientTest, TwoConnectionsOfOneSource_AtOnce_NumberTheirFramesTogether)
{
    const Frame frame = {16, 9, 16 * 4};
    std::thread other(Deliver, 7, frame);
    Deliver(7, frame);
    other.join();

    EXPECT_EQ(SampleCounts(7).Recorded, 2 * kFrames);
    for (UINT number = 0; number < 2 * kFrames; ++number)
    {
        const std::string digits = std::to_string(1000000 + number).substr(1);
        EXPECT_EQ(m_Folder.Read("source7-frame" + digits + ".png").m_Width, frame.Width) << number;
    }
}

TEST_F(SampleClientTest, FolderIsGone_FramesAreCountedAsFailed)
{
    m_Folder.Remove();
    Deliver(5, {8, 8, 32});
    EXPECT_EQ(SampleCounts(5).Received, kFrames);
    EXPECT_EQ(SampleCounts(5).Failed, kFrames);
}

TEST_F(SampleClientTest, PitchSmallerThanARow_IsNotRead)
{
    const BYTE pixels[4] = {};
    const TessloVirtualMonitorFrame record = {0, 6, 2, 1, 4, 0, pixels};
    void* pSlot = nullptr;
    ASSERT_TRUE(TessloVirtualMonitorPlug(&pSlot, 6));
    EXPECT_TRUE(TessloVirtualMonitorUpdate(&pSlot, &record));
    EXPECT_TRUE(TessloVirtualMonitorUnplug(&pSlot, 6));
    EXPECT_EQ(SampleCounts(6).Failed, 1u);
}
