#include "util/UMDFormatBytes.h"

#include "util/UMDFourCC.h"
#include "util/UMDUtilDebugTrace.h"

namespace
{
struct FormatBytes
{
    D3DDDIFORMAT Format;
    UINT Bytes;  // a pixel
};

// What the driver reckons with, which is not always the format's true size.
// clang-format off: a row a line
constexpr FormatBytes kFormatBytes[] = {
    {D3DDDIFMT_A8R8G8B8, 4},
    {D3DDDIFMT_X8R8G8B8, 4},
    {D3DDDIFMT_R8G8B8, 3},
    {D3DDDIFMT_R5G6B5, 2},
    {UMDFourCC("UYVY"), 2},
    {D3DDDIFMT_L8, 1},
    {UMDFourCC("YUY2"), 1},
    {UMDFourCC("NV12"), 1},  // the luma plane's byte
    {UMDFourCC("DXT1"), 0},
};
// clang-format on
}  // namespace

HRESULT UMDGetFormatBytes(D3DDDIFORMAT format, UINT* pBytes)
{
    for (const FormatBytes& row : kFormatBytes)
    {
        if (row.Format == format)
        {
            *pBytes = row.Bytes;
            return S_OK;
        }
    }
    return UMDFail(E_FAIL, L"UMDGetFormatBytes failed! Format:%d unhandled!\n", format);
}
