// Resources of the driver on a real Direct3D 9Ex device, and their pixels: what lies in the runtime's memory, and what
// the device holds in either pool. Order and failures of the calls are asked of the fake device elsewhere.
#pragma once

#include "ResourceFixture.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace tesslo::test
{

using Bytes = std::vector<BYTE>;

// Eleven levels: 1057x35, 528x17, 264x8, 132x4, 66x2, 33x1, and on to 1x1.
inline constexpr UINT kWidth = 1057;
inline constexpr UINT kHeight = 35;
inline constexpr UINT kLevels = 11;

struct FormatRow
{
    D3DDDIFORMAT Format;
    UINT BytesPerPixel;
    UINT Padding;  ///< bytes behind each row of the runtime's memory
};

// With and without padding, on either side: the device pads rows to four bytes.
inline constexpr FormatRow kFormats[] = {
    {D3DDDIFMT_A8R8G8B8, 4, 0},
    {D3DDDIFMT_A8R8G8B8, 4, 7},
    {D3DDDIFMT_X8R8G8B8, 4, 4},
    {D3DDDIFMT_R5G6B5, 2, 0},
    {D3DDDIFMT_R5G6B5, 2, 1},
    {D3DDDIFMT_R5G6B5, 2, 64},
    {D3DDDIFMT_X1R5G5B5, 2, 0},
    {D3DDDIFMT_L8, 1, 0},
    {D3DDDIFMT_L8, 1, 5},
    {D3DDDIFMT_A16B16G16R16, 8, 0},
};

/// Inside kWidth x kHeight.
inline constexpr RECT kRects[] = {
    {0, 0, 1, 1},
    {3, 2, 10, 9},
    {1, 1, 2, 35},
    {1050, 34, 1057, 35},
    {0, 0, 1057, 35},
};

/// A request in system memory, with numbered bytes as the row says.
class MemoryRequest : public CreateRequest
{
public:
    MemoryRequest(UINT flags, const FormatRow& row, UINT width, UINT height, UINT levels = 1)
        : CreateRequest(flags, kSystem, row.Format, width, height, levels)
    {
        WithMemory(row.BytesPerPixel, row.Padding);
    }
};

std::string NameOf(const FormatRow& row);

/// The runtime's pixels of a sub-resource, row behind row without padding.
Bytes MemoryOf(CreateRequest& request, UINT index, UINT bytesPerPixel);

/// Memory behind the driver's copy of a locked surface, row by row.
Bytes Landed(Bytes memory, UINT pitch, const Bytes& pixels, UINT rowBytes);

/// What a device keeps of the pixels: bits that the format has no use for read as set from video memory.
Bytes Kept(Bytes pixels, D3DDDIFORMAT format);

/// Pixels of one image, and those of a rectangle of another in their place.
Bytes Overlaid(Bytes below, UINT belowWidth, POINT point, const Bytes& above, UINT aboveWidth, const RECT& rect,
    UINT bytesPerPixel);

/// The driver's device and resources as in the runtime's hands, on the platform's own Direct3D.
class RealPixels : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    IDirect3DDevice9Ex* Delegated() { return m_pDevice->GetDevice(); }
    HANDLE DeviceHandle() { return m_pDevice.get(); }
    UINT AllocationCount() const { return static_cast<UINT>(m_Kernel.AllocationCount()); }

    template <typename Resource>
    Resource* Create(CreateRequest& request)
    {
        EXPECT_EQ(UMDDdiCreateResource(m_pDevice.get(), &request.m_Arg), S_OK);
        m_Resources.push_back(request.m_Arg.hResource);
        return dynamic_cast<Resource*>(ToResource(request.m_Arg.hResource));
    }
    /// Gives back what Create made so far.
    void DestroyAll();

    /// Calls the case with each row of the formats; what it creates is given back behind it.
    template <typename Case>
    void EachFormat(Case run)
    {
        for (const FormatRow& row : kFormats)
        {
            SCOPED_TRACE(NameOf(row));
            run(row);
            DestroyAll();
        }
    }
    /// The same with each rectangle too.
    template <typename Case>
    void EachOf(std::span<const FormatRow> rows, std::span<const RECT> rects, Case run)
    {
        for (const FormatRow& row : rows)
            for (const RECT& rect : rects)
            {
                SCOPED_TRACE(NameOf(row) + " right " + std::to_string(rect.right));
                run(row, rect);
                DestroyAll();
            }
    }

    HRESULT TexBlt(UMDRscBase* pSrc, UMDRscBase* pDst, const RECT& rect, POINT point);
    HRESULT Blt(UMDRscBase* pSrc, const RECT& srcRect, UMDRscBase* pDst, const RECT& dstRect);

    /// The pixels of a delegated surface in either pool, row behind row without padding.
    Bytes PixelsOf(IDirect3DSurface9* pSurface, UINT bytesPerPixel);
    /// Gives a system-memory surface pixels that nothing else has, and tells them as PixelsOf does.
    Bytes Scribble(IDirect3DSurface9* pSurface, UINT bytesPerPixel, BYTE seed);

private:
    FakeKernel m_Kernel;
    D3DDDI_ADAPTERCALLBACKS m_AdapterCallbacks{};
    D3DDDI_DEVICECALLBACKS m_Callbacks{};
    std::unique_ptr<UMDAdapter> m_pAdapter;
    std::unique_ptr<UMDDdiDevice> m_pDevice;
    std::vector<HANDLE> m_Resources;
};

}  // namespace tesslo::test
