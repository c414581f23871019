// The dumps of the video records. Every field holds a value of its own, so that no two can change places.
#include "util/UMDUtilDebugTracePrint.h"

#include "TraceCapture.h"
#include "TraceMask.h"

#include <gtest/gtest.h>

using namespace tesslo::test;

namespace
{
/// Lines at the dump's own level; with every other level on there must be none.
template <typename Print, typename Argument>
Lines Printed(UINT level, Print* pPrint, const Argument& argument)
{
    TraceCapture trace;
    {
        TraceMask mask(~(level | UMDTRACE_LOGFILE));
        pPrint(&argument);
        EXPECT_EQ(trace.Lines(), Lines{});
    }
    TraceMask mask(level);
    pPrint(&argument);
    return trace.Lines();
}

DXVADDI_FIXED32 Fixed(USHORT fraction, SHORT value)
{
    DXVADDI_FIXED32 fixed = {};
    fixed.Fraction = fraction;
    fixed.Value = value;
    return fixed;
}

DXVADDI_EXTENDEDFORMAT ExtendedFormat(UINT sampleFormat)
{
    return {{{sampleFormat, 15, 1, 4, 5, 6, 7}}};
}

DXVADDI_VIDEODESC Description()
{
    DXVADDI_VIDEODESC description = {};
    description.SampleWidth = 720;
    description.SampleHeight = 576;
    description.SampleFormat = ExtendedFormat(2);
    description.Format = static_cast<D3DDDIFORMAT>(22);
    description.InputSampleFreq = {25, 1};
    description.OutputFrameFreq = {50, 3};
    description.UABProtectionLevel = 8;
    description.Reserved = 99;
    return description;
}

const Lines kDescriptionLines = {
    "UMDUtilDebugTracePrintVideoDesc\n",
    "SampleWidth: 720  SampleHeight: 576  Format: 22\n",
    "[SampleFormat: 966139650]  SampleFormat:2  VideoChromaSubsampling:15  NominalRange:1  VideoTransferMatrix:4  VideoLighting:5  VideoPrimaries:6  VideoTransferFunction:7\n",
    "InputSampleFreq: 25 1  OutputFrameFreq: 50 3  UABProtectionLevel: 8\n",
};

DXVADDI_VIDEOSAMPLE Sample()
{
    DXVADDI_VIDEOSAMPLE sample = {};
    sample.Start = 0x100000001AB;
    sample.End = 0x200000002CD;
    sample.SampleFormat = ExtendedFormat(2);
    sample.SampleFlags.Value = 0x1234 << 16 | 0x2AA << 5 | 0x15;
    sample.SrcResource = reinterpret_cast<HANDLE>(0x123456789ABCDEF0);
    sample.SrcSubResourceIndex = 98;
    sample.SrcRect = {1, 2, 3, 4};
    sample.DstRect = {-5, 6, 7, 8};
    for (UCHAR i = 0; i < ARRAYSIZE(sample.Pal); ++i)
        sample.Pal[i] = {i, static_cast<UCHAR>(0x10 + i), static_cast<UCHAR>(0x20 + i), static_cast<UCHAR>(0xF0 + i)};
    sample.PlanarAlpha = Fixed(9, 1);
    return sample;
}

TEST(UMDUtilDebugTracePrintVideoDesc, Record_EachField_StandsInItsPlace)
{
    EXPECT_EQ(Printed(UMDTRACE_CAPS, UMDUtilDebugTracePrintVideoDesc, Description()), kDescriptionLines);
}

TEST(UMDUtilDebugTracePrintGUID, Bytes_LastEight_ReadAsTwoWords)
{
    const GUID guid = {0xFFFFFFFF, 0xFFFE, 3, {1, 0, 0, 0, 0, 0, 0, 0x80}};
    EXPECT_EQ(Printed(UMDTRACE_CAPS, UMDUtilDebugTracePrintGUID, guid),
        (Lines{"UMDUtilDebugTracePrintGUID\n", "pGUID: 4294967295 65534 3 1 2147483648\n"}));
}

TEST(UMDUtilDebugTracePrintVideoProcessorInput, Record_Description_StandsBetweenNameAndTarget)
{
    DXVADDI_VIDEOPROCESSORINPUT input = {};
    input.VideoDesc = Description();
    input.RenderTargetFormat = static_cast<D3DDDIFORMAT>(21);
    Lines expected = {"UMDUtilDebugTracePrintVideoProcessorInput\n"};
    expected.insert(expected.end(), kDescriptionLines.begin(), kDescriptionLines.end());
    expected.push_back("RenderTargetFormat: 21\n");
    EXPECT_EQ(Printed(UMDTRACE_CAPS, UMDUtilDebugTracePrintVideoProcessorInput, input), expected);
}

TEST(UMDUtilDebugTracePrintValueRange, Fields_Each_PrintAsRawUnsignedWords)
{
    DXVADDI_VALUERANGE range = {};
    range.MinValue = Fixed(0, -1);
    range.MaxValue = Fixed(0, 1);
    range.DefaultValue = Fixed(2, 0);
    range.StepSize = Fixed(3, 0);
    EXPECT_EQ(Printed(UMDTRACE_CAPS, UMDUtilDebugTracePrintValueRange, range),
        (Lines{"UMDUtilDebugTracePrintValueRange\n", ">>> 4294901760 65536 2 3\n"}));
}

TEST(UMDUtilDebugTracePrintVideoProcessorCaps, Fields_Nine_PrintInTheRecordsOrder)
{
    DXVADDI_VIDEOPROCESSORCAPS caps = {};
    caps.InputPool = D3DDDIPOOL_VIDEOMEMORY;
    caps.NumForwardRefSamples = 11;
    caps.NumBackwardRefSamples = 12;
    caps.OutputFormat = static_cast<D3DDDIFORMAT>(13);
    caps.DeinterlaceTechnology = 14;
    caps.ProcAmpControlCaps = 15;
    caps.VideoProcessorOperations = 16;
    caps.NoiseFilterTechnology = 17;
    caps.DetailFilterTechnology = static_cast<UINT>(-18);
    EXPECT_EQ(Printed(UMDTRACE_CAPS, UMDUtilDebugTracePrintVideoProcessorCaps, caps),
        Lines{">>> 2 11 12 13 14 15 16 17 -18\n"});
}

TEST(UMDUtilDebugTracePrintVideoProcessBlt, Record_EachGroup_HasItsLineInAlphabeticalOrder)
{
    D3DDDIARG_VIDEOPROCESSBLT blt = {};
    blt.TargetFrame = 0x300000003EF;
    blt.TargetRect = {1, -2, 3, 4};
    blt.ConstrictionSize = {5, 6};
    blt.StreamingFlags = 7;
    blt.BackgroundColor = {8, 9, 10, 11};
    blt.DestFormat = ExtendedFormat(2);
    blt.DestFlags.Value = 0xABCD << 16 | 0xFFFF;
    blt.ProcAmpValues = {Fixed(1, 0), Fixed(2, 1), Fixed(3, -1), Fixed(4, 0)};
    blt.Alpha = Fixed(5, 1);
    blt.NoiseFilterLuma = {Fixed(10, 0), Fixed(11, 1), Fixed(12, 0)};
    blt.NoiseFilterChroma = {Fixed(20, 0), Fixed(21, 1), Fixed(22, 0)};
    blt.DetailFilterLuma = {Fixed(30, 0), Fixed(31, 1), Fixed(32, 0)};
    blt.DetailFilterChroma = {Fixed(40, 0), Fixed(41, 1), Fixed(42, 0)};
    EXPECT_EQ(Printed(UMDTRACE_DETAIL, UMDUtilDebugTracePrintVideoProcessBlt, blt),
        (Lines{
            "Alpha: 5 1 65541\n",
            "BackgroundColor: 8 9 10 11\n",
            "ConstrictionSize: 5 6\n",
            "DestData: 43981\n",
            "SampleFormat: 966139650 2 15 1 4 5 6 7\n",
            "DetailFilterChroma: 40 0 40  41 1 65577  42 0 42\n",
            "DetailFilterLuma: 30 0 30  31 1 65567  32 0 32\n",
            "NoiseFilterChroma: 20 0 20  21 1 65557  22 0 22\n",
            "NoiseFilterLuma: 10 0 10  11 1 65547  12 0 12\n",
            "ProcAmpValues: 1 0 1  2 1 65538  3 -1 -65533  4 0 4\n",
            "StreamingFlags: 7\n",
            "TargetFrame: 0x3ef\n",
            "TargetRect: 1 -2 3 4\n",
        }));
}

TEST(UMDUtilDebugTracePrintVideoSample, Record_EachGroup_HasItsLineAndThePaletteSixteen)
{
    EXPECT_EQ(Printed(UMDTRACE_DETAIL, UMDUtilDebugTracePrintVideoSample, Sample()),
        (Lines{
            "Start: 0x1ab\n",
            "End: 0x2cd\n",
            "SrcRect: 1 2 3 4\n",
            "DstRect: -5 6 7 8\n",
            "Pal[00]: 0x00 0x10 0x20 0xf0\n",
            "Pal[01]: 0x01 0x11 0x21 0xf1\n",
            "Pal[02]: 0x02 0x12 0x22 0xf2\n",
            "Pal[03]: 0x03 0x13 0x23 0xf3\n",
            "Pal[04]: 0x04 0x14 0x24 0xf4\n",
            "Pal[05]: 0x05 0x15 0x25 0xf5\n",
            "Pal[06]: 0x06 0x16 0x26 0xf6\n",
            "Pal[07]: 0x07 0x17 0x27 0xf7\n",
            "Pal[08]: 0x08 0x18 0x28 0xf8\n",
            "Pal[09]: 0x09 0x19 0x29 0xf9\n",
            "Pal[10]: 0x0a 0x1a 0x2a 0xfa\n",
            "Pal[11]: 0x0b 0x1b 0x2b 0xfb\n",
            "Pal[12]: 0x0c 0x1c 0x2c 0xfc\n",
            "Pal[13]: 0x0d 0x1d 0x2d 0xfd\n",
            "Pal[14]: 0x0e 0x1e 0x2e 0xfe\n",
            "Pal[15]: 0x0f 0x1f 0x2f 0xff\n",
            "PlanarAlpha: 9 1 65545\n",
            "SampleFormat: 966139650 2 15 1 4 5 6 7\n",
            "SampleFlags: 1 0 1 0 1 682 4660\n",
            "SrcResource: 0x9abcdef0\n",
        }));
}
}  // namespace
