// The built driver on a real Direct3D 9Ex device: what compressed textures show, and what a blit present of a target
// of 16 bits a pixel leaves in the kernel-mode allocation.
#include "CompressedBlocks.h"
#include "DriverPixels.h"
#include "ExactImage.h"

#include <algorithm>
#include <cstring>

using namespace tesslo::test;

namespace
{
class FormatsOfTheDriver : public DriverPixels
{
protected:
    /// The 32-bit pixels of a surface in system memory.
    std::vector<UINT> PixelsOf(HANDLE hResource, UINT width, UINT height)
    {
        D3DDDIARG_LOCK lock = {};
        lock.hResource = hResource;
        EXPECT_EQ(Functions().pfnLock(Device(), &lock), S_OK);
        std::vector<UINT> pixels(size_t{width} * height);
        for (UINT y = 0; y < height; ++y)
            std::memcpy(&pixels[size_t{y} * width], static_cast<const BYTE*>(lock.pSurfData) + size_t{y} * lock.Pitch,
                size_t{width} * 4);
        D3DDDIARG_UNLOCK unlock = {};
        unlock.hResource = hResource;
        EXPECT_EQ(Functions().pfnUnlock(Device(), &unlock), S_OK);
        return pixels;
    }
};
}  // namespace

TEST_F(FormatsOfTheDriver, CompressedTexture_WholeAndByRectangle_ShowsItsColours)
{
    constexpr UINT kWidth = 24, kHeight = 12;
    const RECT whole = {0, 0, kWidth, kHeight};
    const RECT part = {8, 4, 20, 12};
    const D3DDDI_SURFACEINFO size = {kWidth, kHeight, 0, nullptr, 0, 0};
    for (D3DDDIFORMAT format : {D3DDDIFMT_DXT1, D3DDDIFMT_DXT3, D3DDDIFMT_DXT5})
    {
        SCOPED_TRACE(FormatName(format));
        const ExactImage first(format, kWidth, kHeight, 0, 1), second(format, kWidth, kHeight, 8, 2);
        for (const ExactImage* pImage : {&first, &second})
            KeepPureColours(pImage->Shape, pImage->Bits());
        HANDLE hFirst = Create(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, format, {first.Info()});
        HANDLE hSecond = Create(kFlagTexture, D3DDDIPOOL_SYSTEMMEM, format, {second.Info()});
        HANDLE hVideo = Create(kFlagTexture, D3DDDIPOOL_LOCALVIDMEM, format, {size});
        HANDLE hTarget = Create(kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, D3DDDIFMT_A8R8G8B8, {size});
        HANDLE hCopy = Create(0, D3DDDIPOOL_SYSTEMMEM, D3DDDIFMT_A8R8G8B8, {size});
        EXPECT_EQ(TexBlt(hFirst, hVideo, whole), S_OK);
        EXPECT_EQ(TexBlt(hSecond, hVideo, part), S_OK);
        EXPECT_EQ(Blt(hVideo, hTarget, whole), S_OK);
        EXPECT_EQ(Blt(hTarget, hCopy, whole), S_OK);
        const std::vector<UINT> pixels = PixelsOf(hCopy, kWidth, kHeight);
        for (UINT y = 0; y < kHeight; ++y)
            for (UINT x = 0; x < kWidth; ++x)
            {
                const POINT point = {static_cast<LONG>(x), static_cast<LONG>(y)};
                const ExactImage& image = PtInRect(&part, point) ? second : first;
                ASSERT_EQ(pixels[size_t{y} * kWidth + x], PureColourOf(image.Shape, image.Bits(), x, y))
                    << x << ' ' << y;
            }
    }
}

TEST_F(FormatsOfTheDriver, BltPresentOf16Bits_AllocationHoldsThePixelsAndNothingBeyond)
{
    constexpr UINT kWidth = 13, kHeight = 7;
    constexpr BYTE kUntouched = 0xC3;
    const RECT whole = {0, 0, kWidth, kHeight};
    for (D3DDDIFORMAT format : {D3DDDIFMT_X1R5G5B5, D3DDDIFMT_R5G6B5})
    {
        SCOPED_TRACE(FormatName(format));
        const ExactImage image(format, kWidth, kHeight, 0, 5);
        for (size_t i = 1; i < image.Size; i += 2)
            image.Bits()[i] |= 0x80;  // a bit that X1R5G5B5 has no use for reads as set
        const D3DDDI_SURFACEINFO size = {kWidth, kHeight, 0, nullptr, 0, 0};
        HANDLE hMemory = Create(0, D3DDDIPOOL_SYSTEMMEM, format, {image.Info()});
        HANDLE hTarget = Create(kFlagRenderTarget, D3DDDIPOOL_LOCALVIDMEM, format, {size});
        FakeKernel::Allocation& allocation =
            m_Kernel.FindAllocation(static_cast<D3DKMT_HANDLE>(m_Kernel.Calls("pfnAllocateCb")));
        std::ranges::fill(allocation.m_Memory, kUntouched);
        EXPECT_EQ(Blt(hMemory, hTarget, whole), S_OK);
        D3DDDIARG_SETRENDERTARGET setTarget = {};
        setTarget.hRenderTarget = hTarget;
        EXPECT_EQ(Functions().pfnSetRenderTarget(Device(), &setTarget), S_OK);
        D3DDDIARG_PRESENT present = {};
        present.hSrcResource = hTarget;
        present.Flags.Blt = 1;
        EXPECT_EQ(Functions().pfnPresent(Device(), &present), S_OK);
        std::vector<BYTE> expected(allocation.m_Memory.size(), kUntouched);
        std::ranges::copy(image.Bytes(), expected.begin());
        EXPECT_TRUE(allocation.m_Memory == expected);
    }
}
