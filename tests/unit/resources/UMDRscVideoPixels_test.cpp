// Plain surfaces of video formats on a real device: into video memory whole and by rectangle, and as colours. The
// device has no textures of these formats and no render targets.
#include "ExactRequest.h"
#include "RealPixels.h"

#include "resources/UMDRscSurface.h"
#include "util/UMDComPtr.h"
#include "util/UMDFourCC.h"

#include <algorithm>

using namespace tesslo::test;

namespace
{
constexpr D3DDDIFORMAT kVideoFormats[] = {D3DDDIFMT_UYVY, D3DDDIFMT_YUY2, UMDFourCC("NV12"), UMDFourCC("YV12")};

struct Size
{
    UINT Width, Height;
};
constexpr Size kSizes[] = {{62, 36}, {13, 7}, {16, 8}};

class VideoPixels : public RealPixels
{
protected:
    /// Calls the work with the bytes of a locked surface and their shape.
    template <typename Work>
    static void WithLocked(IDirect3DSurface9* pSurface, D3DDDIFORMAT format, const Size& size, Work work)
    {
        D3DLOCKED_RECT locked = {};
        ASSERT_EQ(pSurface->LockRect(&locked, nullptr, 0), S_OK);
        const ImageShape shape = {format, size.Width, size.Height, static_cast<UINT>(locked.Pitch)};
        work(static_cast<BYTE*>(locked.pBits), shape);
        EXPECT_EQ(pSurface->UnlockRect(), S_OK);
    }

    static Bytes BytesOf(IDirect3DSurface9* pSurface, D3DDDIFORMAT format, const Size& size)
    {
        Bytes bytes;
        WithLocked(pSurface, format, size,
            [&](BYTE* pBits, const ImageShape& shape) { bytes.assign(pBits, pBits + ImageBytes(shape)); });
        return bytes;
    }

    /// What a surface in system memory shows, which goes to video memory and from there onto a render target.
    Bytes ShownOf(ExactRequest& memory, const Size& size)
    {
        const RECT whole = {0, 0, static_cast<LONG>(size.Width), static_cast<LONG>(size.Height)};
        CreateRequest video(0, kVideo, memory.m_Arg.Format, size.Width, size.Height);
        CreateRequest target(kFlagRenderTarget, kVideo, D3DDDIFMT_A8R8G8B8, size.Width, size.Height);
        auto* pMemory = Create<UMDRscSurface>(memory);
        auto* pVideo = Create<UMDRscSurface>(video);
        auto* pTarget = Create<UMDRscSurface>(target);
        EXPECT_EQ(Blt(pMemory, whole, pVideo, whole), S_OK);
        EXPECT_EQ(Blt(pVideo, whole, pTarget, whole), S_OK);
        return PixelsOf(pTarget->GetSurface(0, 0), 4);
    }

    /// What the surface shows when it is stretched onto a render target of its size.
    Bytes ColoursOf(IDirect3DSurface9* pSurface, const Size& size)
    {
        UMDComPtr<IDirect3DSurface9> pTarget;
        EXPECT_EQ(Delegated()->CreateRenderTarget(
                      size.Width, size.Height, D3DFMT_A8R8G8B8, D3DMULTISAMPLE_NONE, 0, FALSE, pTarget.Put(), nullptr),
            S_OK);
        EXPECT_EQ(Delegated()->StretchRect(pSurface, nullptr, pTarget.Get(), nullptr, D3DTEXF_NONE), S_OK);
        return PixelsOf(pTarget.Get(), 4);
    }

    /// The same of a surface of the device's own that was filled pixel by pixel.
    Bytes ColoursOf(const ExactImage& image, D3DDDIFORMAT format, const Size& size)
    {
        UMDComPtr<IDirect3DSurface9> pOwn;
        EXPECT_EQ(Delegated()->CreateOffscreenPlainSurface(
                      size.Width, size.Height, static_cast<D3DFORMAT>(format), D3DPOOL_DEFAULT, pOwn.Put(), nullptr),
            S_OK);
        WithLocked(pOwn.Get(), format, size, [&](BYTE* pBits, const ImageShape& shape) {
            const Bytes bytes = WithPixels(Bytes(ImageBytes(shape)), shape, image.Bits(), image.Shape, nullptr);
            std::ranges::copy(bytes, pBits);
        });
        return ColoursOf(pOwn.Get(), size);
    }
};
}  // namespace

TEST_F(VideoPixels, WriteToDelegated_WholeAndByRectangle_EveryPlaneHoldsItsPixels)
{
    const RECT rects[] = {{0, 0, 1, 1}, {4, 2, 10, 6}, {5, 3, 9, 7}, {0, 0, 1000, 1000}};
    for (D3DDDIFORMAT format : kVideoFormats)
        for (const Size& size : kSizes)
            for (UINT padding : {0U, 4U})
                for (const RECT& rect : rects)
                {
                    SCOPED_TRACE(FormatName(format) + " " + std::to_string(size.Width) + " right " +
                                 std::to_string(rect.right) + " padding " + std::to_string(padding));
                    ExactRequest request(0, kSystem, format, size.Width, size.Height, 1, padding);
                    auto* pSurface = Create<UMDRscSurface>(request);
                    Bytes expected;
                    WithLocked(pSurface->GetSurface(0, 0), format, size, [&](BYTE* pBits, const ImageShape& shape) {
                        FillWithNoise(pBits, ImageBytes(shape), 9);
                        expected = WithPixels(Bytes(pBits, pBits + ImageBytes(shape)), shape, request.Image(0).Bits(),
                            request.Image(0).Shape, &rect);
                    });
                    EXPECT_EQ(pSurface->WriteToDelegated(0, &rect), S_OK);
                    EXPECT_EQ(BytesOf(pSurface->GetSurface(0, 0), format, size), expected);
                    DestroyAll();
                }
}

TEST_F(VideoPixels, Blt_ToVideoMemoryAndOn_ShowsTheColours)
{
    for (D3DDDIFORMAT format : kVideoFormats)
        for (UINT padding : {0U, 4U})
        {
            SCOPED_TRACE(FormatName(format) + " padding " + std::to_string(padding));
            const Size size = {64, 36};
            ExactRequest memory(0, kSystem, format, size.Width, size.Height, 1, padding);
            const Bytes shown = ShownOf(memory, size);
            EXPECT_EQ(shown, ColoursOf(memory.Image(0), format, size));
            EXPECT_NE(shown, Bytes(shown.size(), shown[0]));
            DestroyAll();
        }
}

TEST_F(VideoPixels, Blt_Grey_ShowsEachPixelsLuma)
{
    // The device takes luma without colour for grey as it is, give or take what its matrix rounds.
    const Size size = {16, 8};
    for (D3DDDIFORMAT format : kVideoFormats)
    {
        SCOPED_TRACE(FormatName(format));
        ExactRequest memory(0, kSystem, format, size.Width, size.Height, 1, 0);
        ExactImage& image = memory.Image(0);
        std::fill_n(image.Bits(), image.Size, BYTE{128});
        const auto luma = [](UINT x, UINT y) { return static_cast<BYTE>(20 + x * 6 + y * 14); };
        for (UINT y = 0; y < size.Height; ++y)
            for (UINT x = 0; x < size.Width; ++x)
            {
                const ByteRun run = BytesOfPixel(image.Shape, x, y).First();
                const UINT inPair = format == D3DDDIFMT_YUY2 ? x % 2 * 2 : format == D3DDDIFMT_UYVY ? x % 2 * 2 + 1 : 0;
                image.Bits()[run.Offset + inPair] = luma(x, y);
            }
        const Bytes shown = ShownOf(memory, size);
        for (UINT y = 0; y < size.Height; ++y)
            for (UINT x = 0; x < size.Width; ++x)
                for (UINT channel = 0; channel < 3; ++channel)
                    EXPECT_NEAR(shown[(y * size.Width + x) * 4 + channel], luma(x, y), 4) << x << ' ' << y;
        DestroyAll();
    }
}
