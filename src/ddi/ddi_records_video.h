// Direct3D 9 user-mode display driver interface: video-processing and decoding records.
// Published names and values of the binary interface, version 0x2003 (64-bit).
#pragma once

#include "ddi/ddi_records_common.h"

#include <dxva2api.h>  // REFERENCE_TIME

UMD_DDI_RECORDS_BEGIN

struct DXVADDI_EXTENDEDFORMAT
{
    union
    {
        struct
        {
            UINT SampleFormat : 8;  // progressive, interlaced or substream; the others describe the colours
            UINT VideoChromaSubsampling : 4;
            UINT NominalRange : 3;
            UINT VideoTransferMatrix : 3;
            UINT VideoLighting : 4;
            UINT VideoPrimaries : 5;
            UINT VideoTransferFunction : 5;
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(DXVADDI_EXTENDEDFORMAT, 4, 4);
UMD_OFFSET(DXVADDI_EXTENDEDFORMAT, Value, 0);

struct DXVADDI_FREQUENCY
{
    UINT Numerator;    // samples or frames in Denominator seconds
    UINT Denominator;  // seconds; the rate in hertz is the quotient
};
UMD_LAYOUT(DXVADDI_FREQUENCY, 8, 4);
UMD_OFFSET(DXVADDI_FREQUENCY, Numerator, 0);
UMD_OFFSET(DXVADDI_FREQUENCY, Denominator, 4);

struct DXVADDI_VIDEODESC
{
    UINT SampleWidth;                     // pixels
    UINT SampleHeight;                    // pixels
    DXVADDI_EXTENDEDFORMAT SampleFormat;  // interlacing and colour description
    D3DDDIFORMAT Format;                  // of the pixels
    DXVADDI_FREQUENCY InputSampleFreq;    // samples a second, as a fraction
    DXVADDI_FREQUENCY OutputFrameFreq;    // frames a second, as a fraction
    UINT UABProtectionLevel;              // 1: protect the content on a bus that users can reach; 0: no need
    UINT Reserved;                        // zero
};
UMD_LAYOUT(DXVADDI_VIDEODESC, 40, 4);
UMD_OFFSET(DXVADDI_VIDEODESC, SampleWidth, 0);
UMD_OFFSET(DXVADDI_VIDEODESC, SampleHeight, 4);
UMD_OFFSET(DXVADDI_VIDEODESC, SampleFormat, 8);
UMD_OFFSET(DXVADDI_VIDEODESC, Format, 12);
UMD_OFFSET(DXVADDI_VIDEODESC, InputSampleFreq, 16);
UMD_OFFSET(DXVADDI_VIDEODESC, OutputFrameFreq, 24);
UMD_OFFSET(DXVADDI_VIDEODESC, UABProtectionLevel, 32);
UMD_OFFSET(DXVADDI_VIDEODESC, Reserved, 36);

struct DXVAHDDDI_SURFACE
{
    HANDLE hResource;       // resource handle
    UINT SubResourceIndex;  // level, or face x levels + level
};
UMD_LAYOUT(DXVAHDDDI_SURFACE, 16, 8);
UMD_OFFSET(DXVAHDDDI_SURFACE, hResource, 0);
UMD_OFFSET(DXVAHDDDI_SURFACE, SubResourceIndex, 8);

struct DXVADDI_AYUVSAMPLE16
{
    USHORT Cr;     // red-difference chroma
    USHORT Cb;     // blue-difference chroma
    USHORT Y;      // luma
    USHORT Alpha;  // 0, transparent, to 65535, opaque
};
UMD_LAYOUT(DXVADDI_AYUVSAMPLE16, 8, 2);
UMD_OFFSET(DXVADDI_AYUVSAMPLE16, Cr, 0);
UMD_OFFSET(DXVADDI_AYUVSAMPLE16, Cb, 2);
UMD_OFFSET(DXVADDI_AYUVSAMPLE16, Y, 4);
UMD_OFFSET(DXVADDI_AYUVSAMPLE16, Alpha, 6);

struct DXVADDI_VIDEOPROCESSBLTFLAGS
{
    union
    {
        struct
        {
            UINT BackgroundChanged : 1;  // this and the next three: since the last blit
            UINT TargetRectChanged : 1;
            UINT ColorDataChanged : 1;
            UINT AlphaChanged : 1;
            UINT Reserved : 12;
            UINT DestData : 16;  // DXVADDI_DESTDATA bits
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(DXVADDI_VIDEOPROCESSBLTFLAGS, 4, 4);
UMD_OFFSET(DXVADDI_VIDEOPROCESSBLTFLAGS, Value, 0);

struct DXVADDI_FIXED32
{
    union
    {
        struct
        {
            USHORT Fraction;  // 65536ths, added to Value
            SHORT Value;      // the whole part, rounded down
        };
        LONG ll;  // the number times 65536: both as one word
    };
};
UMD_LAYOUT(DXVADDI_FIXED32, 4, 4);
UMD_OFFSET(DXVADDI_FIXED32, Fraction, 0);
UMD_OFFSET(DXVADDI_FIXED32, Value, 2);
UMD_OFFSET(DXVADDI_FIXED32, ll, 0);

struct DXVADDI_PROCAMPVALUES
{
    DXVADDI_FIXED32 Brightness;
    DXVADDI_FIXED32 Contrast;
    DXVADDI_FIXED32 Hue;  // degrees
    DXVADDI_FIXED32 Saturation;
};
UMD_LAYOUT(DXVADDI_PROCAMPVALUES, 16, 4);
UMD_OFFSET(DXVADDI_PROCAMPVALUES, Brightness, 0);
UMD_OFFSET(DXVADDI_PROCAMPVALUES, Contrast, 4);
UMD_OFFSET(DXVADDI_PROCAMPVALUES, Hue, 8);
UMD_OFFSET(DXVADDI_PROCAMPVALUES, Saturation, 12);

struct DXVADDI_FILTERVALUES
{
    DXVADDI_FIXED32 Level;
    DXVADDI_FIXED32 Threshold;
    DXVADDI_FIXED32 Radius;
};
UMD_LAYOUT(DXVADDI_FILTERVALUES, 12, 4);
UMD_OFFSET(DXVADDI_FILTERVALUES, Level, 0);
UMD_OFFSET(DXVADDI_FILTERVALUES, Threshold, 4);
UMD_OFFSET(DXVADDI_FILTERVALUES, Radius, 8);

struct DXVADDI_AYUVSAMPLE8
{
    UCHAR Cr;     // red-difference chroma
    UCHAR Cb;     // blue-difference chroma
    UCHAR Y;      // luma
    UCHAR Alpha;  // 0, transparent, to 255, opaque
};
UMD_LAYOUT(DXVADDI_AYUVSAMPLE8, 4, 1);
UMD_OFFSET(DXVADDI_AYUVSAMPLE8, Cr, 0);
UMD_OFFSET(DXVADDI_AYUVSAMPLE8, Cb, 1);
UMD_OFFSET(DXVADDI_AYUVSAMPLE8, Y, 2);
UMD_OFFSET(DXVADDI_AYUVSAMPLE8, Alpha, 3);

struct DXVADDI_CONFIGPICTUREDECODE
{
    GUID guidConfigBitstreamEncryption;
    GUID guidConfigMBcontrolEncryption;
    GUID guidConfigResidDiffEncryption;
    UINT ConfigBitstreamRaw;
    UINT ConfigMBcontrolRasterOrder;
    UINT ConfigResidDiffHost;
    UINT ConfigSpatialResid8;
    UINT ConfigResid8Subtraction;
    UINT ConfigSpatialHost8or9Clipping;
    UINT ConfigSpatialResidInterleaved;
    UINT ConfigIntraResidUnsigned;
    UINT ConfigResidDiffAccelerator;
    UINT ConfigHostInverseScan;
    UINT ConfigSpecificIDCT;
    UINT Config4GroupedCoefs;
    USHORT ConfigMinRenderTargetBuffCount;
    USHORT ConfigDecoderSpecific;
};
UMD_LAYOUT(DXVADDI_CONFIGPICTUREDECODE, 100, 4);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, guidConfigBitstreamEncryption, 0);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, guidConfigMBcontrolEncryption, 16);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, guidConfigResidDiffEncryption, 32);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, ConfigBitstreamRaw, 48);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, ConfigMBcontrolRasterOrder, 52);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, ConfigResidDiffHost, 56);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, ConfigSpatialResid8, 60);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, ConfigResid8Subtraction, 64);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, ConfigSpatialHost8or9Clipping, 68);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, ConfigSpatialResidInterleaved, 72);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, ConfigIntraResidUnsigned, 76);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, ConfigResidDiffAccelerator, 80);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, ConfigHostInverseScan, 84);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, ConfigSpecificIDCT, 88);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, Config4GroupedCoefs, 92);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, ConfigMinRenderTargetBuffCount, 96);
UMD_OFFSET(DXVADDI_CONFIGPICTUREDECODE, ConfigDecoderSpecific, 98);

struct DXVADDI_DECODEBUFFERDESC
{
    HANDLE hBuffer;
    D3DDDIFORMAT CompressedBufferType;
    UINT BufferIndex;
    UINT DataOffset;      // bytes
    UINT DataSize;        // bytes
    UINT FirstMBaddress;  // of a macroblock
    UINT NumMBsInBuffer;  // macroblocks
    UINT Width;           // pixels
    UINT Height;          // pixels
    UINT Stride;          // bytes from row to row
    UINT ReservedBits;
    DXVADDI_PVP_HW_IV* pCipherCounter;
};
UMD_LAYOUT(DXVADDI_DECODEBUFFERDESC, 56, 8);
UMD_OFFSET(DXVADDI_DECODEBUFFERDESC, hBuffer, 0);
UMD_OFFSET(DXVADDI_DECODEBUFFERDESC, CompressedBufferType, 8);
UMD_OFFSET(DXVADDI_DECODEBUFFERDESC, BufferIndex, 12);
UMD_OFFSET(DXVADDI_DECODEBUFFERDESC, DataOffset, 16);
UMD_OFFSET(DXVADDI_DECODEBUFFERDESC, DataSize, 20);
UMD_OFFSET(DXVADDI_DECODEBUFFERDESC, FirstMBaddress, 24);
UMD_OFFSET(DXVADDI_DECODEBUFFERDESC, NumMBsInBuffer, 28);
UMD_OFFSET(DXVADDI_DECODEBUFFERDESC, Width, 32);
UMD_OFFSET(DXVADDI_DECODEBUFFERDESC, Height, 36);
UMD_OFFSET(DXVADDI_DECODEBUFFERDESC, Stride, 40);
UMD_OFFSET(DXVADDI_DECODEBUFFERDESC, ReservedBits, 44);
UMD_OFFSET(DXVADDI_DECODEBUFFERDESC, pCipherCounter, 48);

struct DXVADDI_PRIVATEBUFFER
{
    HANDLE hResource;       // resource handle
    UINT SubResourceIndex;  // level, or face x levels + level
    UINT DataOffset;        // bytes
    UINT DataSize;          // bytes
};
UMD_LAYOUT(DXVADDI_PRIVATEBUFFER, 24, 8);
UMD_OFFSET(DXVADDI_PRIVATEBUFFER, hResource, 0);
UMD_OFFSET(DXVADDI_PRIVATEBUFFER, SubResourceIndex, 8);
UMD_OFFSET(DXVADDI_PRIVATEBUFFER, DataOffset, 12);
UMD_OFFSET(DXVADDI_PRIVATEBUFFER, DataSize, 16);

struct DXVADDI_PRIVATEDATA
{
    void* pData;    // DataSize bytes, input or output as the record that holds this one says
    UINT DataSize;  // bytes
};
UMD_LAYOUT(DXVADDI_PRIVATEDATA, 16, 8);
UMD_OFFSET(DXVADDI_PRIVATEDATA, pData, 0);
UMD_OFFSET(DXVADDI_PRIVATEDATA, DataSize, 8);

struct alignas(16) DXVADDI_PVP_BLOCK128
{
    BYTE Data[16];
};
UMD_LAYOUT(DXVADDI_PVP_BLOCK128, 16, 16);
UMD_OFFSET(DXVADDI_PVP_BLOCK128, Data, 0);

struct alignas(16) DXVADDI_PVP_HW_IV
{
    ULONGLONG IV;     // initialisation vector
    ULONGLONG Count;  // block counter
};
UMD_LAYOUT(DXVADDI_PVP_HW_IV, 16, 16);
UMD_OFFSET(DXVADDI_PVP_HW_IV, IV, 0);
UMD_OFFSET(DXVADDI_PVP_HW_IV, Count, 8);

struct DXVADDI_PVP_SETKEY
{
    DXVADDI_PVP_BLOCK128 ContentKey;
};
UMD_LAYOUT(DXVADDI_PVP_SETKEY, 16, 16);
UMD_OFFSET(DXVADDI_PVP_SETKEY, ContentKey, 0);

struct DXVADDI_QUERYPROCAMPINPUT
{
    const GUID* pVideoProcGuid;       // the video processor
    DXVADDI_VIDEODESC VideoDesc;      // of the main stream
    D3DDDIFORMAT RenderTargetFormat;  // of the output
    UINT ProcAmpCap;                  // one DXVADDI_PROCAMP bit
};
UMD_LAYOUT(DXVADDI_QUERYPROCAMPINPUT, 56, 8);
UMD_OFFSET(DXVADDI_QUERYPROCAMPINPUT, pVideoProcGuid, 0);
UMD_OFFSET(DXVADDI_QUERYPROCAMPINPUT, VideoDesc, 8);
UMD_OFFSET(DXVADDI_QUERYPROCAMPINPUT, RenderTargetFormat, 48);
UMD_OFFSET(DXVADDI_QUERYPROCAMPINPUT, ProcAmpCap, 52);

struct DXVADDI_VALUERANGE
{
    DXVADDI_FIXED32 MinValue;
    DXVADDI_FIXED32 MaxValue;
    DXVADDI_FIXED32 DefaultValue;
    DXVADDI_FIXED32 StepSize;
};
UMD_LAYOUT(DXVADDI_VALUERANGE, 16, 4);
UMD_OFFSET(DXVADDI_VALUERANGE, MinValue, 0);
UMD_OFFSET(DXVADDI_VALUERANGE, MaxValue, 4);
UMD_OFFSET(DXVADDI_VALUERANGE, DefaultValue, 8);
UMD_OFFSET(DXVADDI_VALUERANGE, StepSize, 12);

struct DXVADDI_VIDEOPROCESSORCAPS
{
    D3DDDI_POOL InputPool;       // where source surfaces should lie
    UINT NumForwardRefSamples;   // needed samples after the current one
    UINT NumBackwardRefSamples;  // needed samples before the current one
    D3DDDIFORMAT OutputFormat;
    UINT DeinterlaceTechnology;     // DXVADDI_DEINTERLACETECH bits
    UINT ProcAmpControlCaps;        // DXVADDI_PROCAMP bits
    UINT VideoProcessorOperations;  // DXVADDI_VIDEOPROCESS bits
    UINT NoiseFilterTechnology;     // DXVADDI_NOISEFILTERTECH bits
    UINT DetailFilterTechnology;    // DXVADDI_DETAILFILTERTECH bits
};
UMD_LAYOUT(DXVADDI_VIDEOPROCESSORCAPS, 36, 4);
UMD_OFFSET(DXVADDI_VIDEOPROCESSORCAPS, InputPool, 0);
UMD_OFFSET(DXVADDI_VIDEOPROCESSORCAPS, NumForwardRefSamples, 4);
UMD_OFFSET(DXVADDI_VIDEOPROCESSORCAPS, NumBackwardRefSamples, 8);
UMD_OFFSET(DXVADDI_VIDEOPROCESSORCAPS, OutputFormat, 12);
UMD_OFFSET(DXVADDI_VIDEOPROCESSORCAPS, DeinterlaceTechnology, 16);
UMD_OFFSET(DXVADDI_VIDEOPROCESSORCAPS, ProcAmpControlCaps, 20);
UMD_OFFSET(DXVADDI_VIDEOPROCESSORCAPS, VideoProcessorOperations, 24);
UMD_OFFSET(DXVADDI_VIDEOPROCESSORCAPS, NoiseFilterTechnology, 28);
UMD_OFFSET(DXVADDI_VIDEOPROCESSORCAPS, DetailFilterTechnology, 32);

struct DXVADDI_VIDEOPROCESSORINPUT
{
    const GUID* pVideoProcGuid;       // the video processor
    DXVADDI_VIDEODESC VideoDesc;      // of the main stream
    D3DDDIFORMAT RenderTargetFormat;  // of the output
};
UMD_LAYOUT(DXVADDI_VIDEOPROCESSORINPUT, 56, 8);
UMD_OFFSET(DXVADDI_VIDEOPROCESSORINPUT, pVideoProcGuid, 0);
UMD_OFFSET(DXVADDI_VIDEOPROCESSORINPUT, VideoDesc, 8);
UMD_OFFSET(DXVADDI_VIDEOPROCESSORINPUT, RenderTargetFormat, 48);

struct DXVADDI_VIDEOSAMPLEFLAGS
{
    union
    {
        struct
        {
            UINT PaletteChanged : 1;  // this and the next four: since the last blit
            UINT SrcRectChanged : 1;
            UINT DstRectChanged : 1;
            UINT ColorDataChanged : 1;
            UINT PlanarAlphaChanged : 1;
            UINT Reserved : 11;
            UINT SampleData : 16;  // DXVADDI_SAMPLEDATA bits
        };
        UINT Value;  // all bits as one word
    };
};
UMD_LAYOUT(DXVADDI_VIDEOSAMPLEFLAGS, 4, 4);
UMD_OFFSET(DXVADDI_VIDEOSAMPLEFLAGS, Value, 0);

struct DXVADDI_VIDEOSAMPLE
{
    REFERENCE_TIME Start;                 // 100 ns units
    REFERENCE_TIME End;                   // 100 ns units
    DXVADDI_EXTENDEDFORMAT SampleFormat;  // interlacing and colour description
    DXVADDI_VIDEOSAMPLEFLAGS SampleFlags;
    HANDLE SrcResource;           // resource handle
    UINT SrcSubResourceIndex;     // level, or face x levels + level
    RECT SrcRect;                 // pixels
    RECT DstRect;                 // pixels
    DXVADDI_AYUVSAMPLE8 Pal[16];  // of palettised formats
    DXVADDI_FIXED32 PlanarAlpha;  // 0.0, transparent, to 1.0, opaque
};
UMD_LAYOUT(DXVADDI_VIDEOSAMPLE, 136, 8);
UMD_OFFSET(DXVADDI_VIDEOSAMPLE, Start, 0);
UMD_OFFSET(DXVADDI_VIDEOSAMPLE, End, 8);
UMD_OFFSET(DXVADDI_VIDEOSAMPLE, SampleFormat, 16);
UMD_OFFSET(DXVADDI_VIDEOSAMPLE, SampleFlags, 20);
UMD_OFFSET(DXVADDI_VIDEOSAMPLE, SrcResource, 24);
UMD_OFFSET(DXVADDI_VIDEOSAMPLE, SrcSubResourceIndex, 32);
UMD_OFFSET(DXVADDI_VIDEOSAMPLE, SrcRect, 36);
UMD_OFFSET(DXVADDI_VIDEOSAMPLE, DstRect, 52);
UMD_OFFSET(DXVADDI_VIDEOSAMPLE, Pal, 68);
UMD_OFFSET(DXVADDI_VIDEOSAMPLE, PlanarAlpha, 132);

struct DXVAHDDDI_BLT_STATE_PRIVATE_DATA
{
    GUID Guid;
    UINT DataSize;  // bytes
    void* pData;    // DataSize bytes
};
UMD_LAYOUT(DXVAHDDDI_BLT_STATE_PRIVATE_DATA, 32, 8);
UMD_OFFSET(DXVAHDDDI_BLT_STATE_PRIVATE_DATA, Guid, 0);
UMD_OFFSET(DXVAHDDDI_BLT_STATE_PRIVATE_DATA, DataSize, 16);
UMD_OFFSET(DXVAHDDDI_BLT_STATE_PRIVATE_DATA, pData, 24);

struct DXVAHDDDI_STREAM_DATA
{
    BOOL Enable;
    UINT OutputIndex;
    UINT InputFrameOrField;
    UINT PastFrames;    // entries of pPastSurfaces
    UINT FutureFrames;  // entries of pFutureSurfaces
    DXVAHDDDI_SURFACE* pPastSurfaces;
    DXVAHDDDI_SURFACE InputSurface;
    DXVAHDDDI_SURFACE* pFutureSurfaces;
};
UMD_LAYOUT(DXVAHDDDI_STREAM_DATA, 56, 8);
UMD_OFFSET(DXVAHDDDI_STREAM_DATA, Enable, 0);
UMD_OFFSET(DXVAHDDDI_STREAM_DATA, OutputIndex, 4);
UMD_OFFSET(DXVAHDDDI_STREAM_DATA, InputFrameOrField, 8);
UMD_OFFSET(DXVAHDDDI_STREAM_DATA, PastFrames, 12);
UMD_OFFSET(DXVAHDDDI_STREAM_DATA, FutureFrames, 16);
UMD_OFFSET(DXVAHDDDI_STREAM_DATA, pPastSurfaces, 24);
UMD_OFFSET(DXVAHDDDI_STREAM_DATA, InputSurface, 32);
UMD_OFFSET(DXVAHDDDI_STREAM_DATA, pFutureSurfaces, 48);

struct DXVAHDDDI_STREAM_STATE_PRIVATE_DATA
{
    GUID Guid;
    UINT DataSize;  // bytes
    void* pData;    // DataSize bytes
};
UMD_LAYOUT(DXVAHDDDI_STREAM_STATE_PRIVATE_DATA, 32, 8);
UMD_OFFSET(DXVAHDDDI_STREAM_STATE_PRIVATE_DATA, Guid, 0);
UMD_OFFSET(DXVAHDDDI_STREAM_STATE_PRIVATE_DATA, DataSize, 16);
UMD_OFFSET(DXVAHDDDI_STREAM_STATE_PRIVATE_DATA, pData, 24);

UMD_DDI_RECORDS_END
