// Whether a picture of the driver is what the platform has drawn.
#pragma once

#include "host/runtime/HostImage.h"

#include <d3d9.h>

/// What the platform has drawn on a render target.
HostImage JudgeReadPlatform(IDirect3DDevice9* pDevice, IDirect3DSurface9* pTarget, const D3DSURFACE_DESC& desc);

struct JudgeDifference
{
    UINT64 m_Pixels = 0;  ///< that differ
    UINT m_Channel = 0;   ///< greatest difference of a channel, 0 to 255
};

JudgeDifference JudgeCompare(const HostImage& fromDriver, const HostImage& expected);

/// Rows of pixels, from the first one of the picture.
struct JudgePixels
{
    const void* m_pFirst;
    UINT m_Pitch;
};

/// Compares a part of what the program has read with the driver's, and writes down what comes of it.
void JudgeRead(D3DFORMAT format, const RECT& rect, JudgePixels fromDriver, JudgePixels expected);

/// Compares and writes down what comes of it.
void JudgeFrame(const HostImage& fromDriver, const HostImage& expected);
