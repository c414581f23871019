// Pixels of the resource classes on a real Direct3D 9Ex device: every level and face, rectangles, odd sizes, padded
// rows and every size of a pixel. Order and failures of the calls are asked of the fake device elsewhere.
#include "ResourceFixture.h"

#include "resources/UMDRscCubeTexture.h"
#include "resources/UMDRscSurface.h"
#include "util/UMDComPtr.h"
#include "util/UMDFourCC.h"

#include <algorithm>
#include <cstring>
#include <memory>

using namespace tesslo::test;

namespace
{
using Bytes = std::vector<BYTE>;

constexpr D3DDDI_POOL kVideo = D3DDDIPOOL_LOCALVIDMEM;
constexpr D3DDDI_POOL kSystem = D3DDDIPOOL_SYSTEMMEM;

// Eleven levels: 1057x35, 528x17, 264x8, 132x4, 66x2, 33x1, and on to 1x1.
constexpr UINT kWidth = 1057;
constexpr UINT kHeight = 35;
constexpr UINT kLevels = 11;

struct FormatRow
{
    D3DDDIFORMAT Format;
    UINT BytesPerPixel;
    UINT Padding;  ///< bytes behind each row of the runtime's memory
};

// Packed memory only where the device's rows are packed as well, else the rows land shifted.
const FormatRow kFormats[] = {
    {D3DDDIFMT_A8R8G8B8, 4, 0},
    {D3DDDIFMT_A8R8G8B8, 4, 7},
    {D3DDDIFMT_X8R8G8B8, 4, 4},
    {D3DDDIFMT_R5G6B5, 2, 1},
    {D3DDDIFMT_R5G6B5, 2, 64},
    {D3DDDIFMT_L8, 1, 5},
};

std::string NameOf(const FormatRow& row)
{
    return "format " + std::to_string(row.Format) + " padding " + std::to_string(row.Padding);
}

/// The driver's device and resources as in the runtime's hands, on the platform's own Direct3D.
class ResourceRealPixels : public testing::Test
{
protected:
    void SetUp() override
    {
        m_Callbacks = FakeKernel::Callbacks();
        m_pAdapter = std::make_unique<UMDAdapter>(m_Kernel.RuntimeHandle(), 0x2003, &m_AdapterCallbacks);
        m_pDevice = std::make_unique<UMDDdiDevice>(m_Kernel.RuntimeHandle(), 9, 0x2003, m_pAdapter.get(), &m_Callbacks);
        ASSERT_TRUE(m_pDevice->Initialize());
        ASSERT_NE(Delegated(), nullptr);
    }

    void TearDown() override
    {
        DestroyAll();
        EXPECT_EQ(m_Kernel.AllocationCount(), 0U);
        m_pDevice->DestroyThreads();
    }

    IDirect3DDevice9Ex* Delegated() { return m_pDevice->GetDevice(); }

    template <typename Resource>
    Resource* Create(CreateRequest& request)
    {
        EXPECT_EQ(UMDDdiCreateResource(m_pDevice.get(), &request.m_Arg), S_OK);
        m_Resources.push_back(request.m_Arg.hResource);
        return dynamic_cast<Resource*>(ToResource(request.m_Arg.hResource));
    }

    void DestroyAll()
    {
        for (HANDLE hResource : m_Resources)
            EXPECT_EQ(UMDDdiDestroyResource(m_pDevice.get(), hResource), E_FAIL);
        m_Resources.clear();
    }

    HRESULT TexBlt(UMDRscBase* pSrc, UMDRscBase* pDst, const RECT& rect, POINT point)
    {
        D3DDDIARG_TEXBLT blt = {};
        blt.hSrcResource = ToHandle(pSrc);
        blt.hDstResource = ToHandle(pDst);
        blt.SrcRect = rect;
        blt.DstPoint = point;
        return UMDDdiTexBlt(m_pDevice.get(), &blt);
    }

    HRESULT Blt(UMDRscBase* pSrc, const RECT& srcRect, UMDRscBase* pDst, const RECT& dstRect)
    {
        D3DDDIARG_BLT blt = {};
        blt.hSrcResource = ToHandle(pSrc);
        blt.SrcRect = srcRect;
        blt.hDstResource = ToHandle(pDst);
        blt.DstRect = dstRect;
        return UMDDdiBlt(m_pDevice.get(), &blt);
    }

    /// The pixels of a delegated surface in either pool, row behind row without padding.
    Bytes PixelsOf(IDirect3DSurface9* pSurface, UINT bytesPerPixel)
    {
        D3DSURFACE_DESC desc = {};
        EXPECT_EQ(pSurface->GetDesc(&desc), S_OK);
        UMDComPtr<IDirect3DSurface9> pCopy;
        if (desc.Pool == D3DPOOL_DEFAULT)
        {
            UMDComPtr<IDirect3DSurface9> pTarget;
            EXPECT_EQ(Delegated()->CreateRenderTarget(
                          desc.Width, desc.Height, desc.Format, D3DMULTISAMPLE_NONE, 0, FALSE, pTarget.Put(), nullptr),
                S_OK);
            EXPECT_EQ(Delegated()->StretchRect(pSurface, nullptr, pTarget.Get(), nullptr, D3DTEXF_NONE), S_OK);
            EXPECT_EQ(Delegated()->CreateOffscreenPlainSurface(
                          desc.Width, desc.Height, desc.Format, D3DPOOL_SYSTEMMEM, pCopy.Put(), nullptr),
                S_OK);
            EXPECT_EQ(Delegated()->GetRenderTargetData(pTarget.Get(), pCopy.Get()), S_OK);
            pSurface = pCopy.Get();
        }
        D3DLOCKED_RECT locked = {};
        EXPECT_EQ(pSurface->LockRect(&locked, nullptr, D3DLOCK_READONLY), S_OK);
        const UINT rowBytes = desc.Width * bytesPerPixel;
        Bytes pixels;
        for (UINT y = 0; y < desc.Height; y++)
        {
            const BYTE* pRow = static_cast<const BYTE*>(locked.pBits) + size_t{y} * static_cast<UINT>(locked.Pitch);
            pixels.insert(pixels.end(), pRow, pRow + rowBytes);
        }
        EXPECT_EQ(pSurface->UnlockRect(), S_OK);
        return pixels;
    }

    /// Bytes from row to row of a surface in system memory.
    UINT PitchOf(IDirect3DSurface9* pSurface)
    {
        D3DLOCKED_RECT locked = {};
        EXPECT_EQ(pSurface->LockRect(&locked, nullptr, D3DLOCK_READONLY), S_OK);
        EXPECT_EQ(pSurface->UnlockRect(), S_OK);
        return static_cast<UINT>(locked.Pitch);
    }

    /// Gives a system-memory surface pixels that nothing else has, and tells them as PixelsOf does.
    Bytes Scribble(IDirect3DSurface9* pSurface, UINT bytesPerPixel, BYTE seed)
    {
        D3DSURFACE_DESC desc = {};
        EXPECT_EQ(pSurface->GetDesc(&desc), S_OK);
        D3DLOCKED_RECT locked = {};
        EXPECT_EQ(pSurface->LockRect(&locked, nullptr, 0), S_OK);
        const UINT rowBytes = desc.Width * bytesPerPixel;
        Bytes pixels(size_t{rowBytes} * desc.Height);
        for (size_t i = 0; i < pixels.size(); i++)
            pixels[i] = static_cast<BYTE>(i * 7 + i / 251 + seed);
        for (UINT y = 0; y < desc.Height; y++)
            std::memcpy(static_cast<BYTE*>(locked.pBits) + size_t{y} * static_cast<UINT>(locked.Pitch),
                &pixels[size_t{y} * rowBytes], rowBytes);
        EXPECT_EQ(pSurface->UnlockRect(), S_OK);
        return pixels;
    }

    FakeKernel m_Kernel;
    D3DDDI_ADAPTERCALLBACKS m_AdapterCallbacks{};
    D3DDDI_DEVICECALLBACKS m_Callbacks{};
    std::unique_ptr<UMDAdapter> m_pAdapter;
    std::unique_ptr<UMDDdiDevice> m_pDevice;
    std::vector<HANDLE> m_Resources;
};

/// The runtime's pixels of a sub-resource, row behind row without padding.
Bytes MemoryOf(CreateRequest& request, UINT index, UINT bytesPerPixel)
{
    const D3DDDI_SURFACEINFO& surface = request.m_Surfaces.at(index);
    const Bytes& memory = request.Memory(index);
    Bytes pixels;
    for (UINT y = 0; y < surface.Height; y++)
    {
        const auto row = memory.begin() + static_cast<ptrdiff_t>(size_t{y} * surface.SysMemPitch);
        pixels.insert(pixels.end(), row, row + static_cast<ptrdiff_t>(surface.Width * bytesPerPixel));
    }
    return pixels;
}

/// Memory behind the driver's copy of a locked surface: row by row, but a surface without padding lands as one block.
Bytes Landed(Bytes memory, UINT pitch, const Bytes& pixels, UINT rowBytes, UINT surfacePitch)
{
    const UINT landingPitch = surfacePitch == rowBytes ? rowBytes : pitch;
    for (size_t y = 0; y < pixels.size() / rowBytes; y++)
        std::memcpy(&memory[y * landingPitch], &pixels[y * rowBytes], rowBytes);
    return memory;
}

/// What a device keeps of the pixels: a byte that the format has no use for reads as 0xFF from video memory.
Bytes Kept(Bytes pixels, D3DDDIFORMAT format)
{
    if (format == D3DDDIFMT_X8R8G8B8)
        for (size_t i = 3; i < pixels.size(); i += 4)
            pixels[i] = 0xFF;
    return pixels;
}

/// Pixels of one image, and those of a rectangle of another in their place.
Bytes Overlaid(Bytes below, UINT belowWidth, POINT point, const Bytes& above, UINT aboveWidth, const RECT& rect,
    UINT bytesPerPixel)
{
    for (LONG y = rect.top; y < rect.bottom; y++)
        for (LONG x = rect.left; x < rect.right; x++)
        {
            const LONG toX = point.x + x - rect.left;
            const LONG toY = point.y + y - rect.top;
            std::memcpy(&below[(static_cast<size_t>(toY) * belowWidth + static_cast<size_t>(toX)) * bytesPerPixel],
                &above[(static_cast<size_t>(y) * aboveWidth + static_cast<size_t>(x)) * bytesPerPixel], bytesPerPixel);
        }
    return below;
}

const RECT kRects[] = {
    {0, 0, 1, 1},
    {3, 2, 10, 9},
    {1, 1, 2, 35},
    {1050, 34, 1057, 35},
    {0, 0, 1057, 35},
};
}  // namespace

TEST_F(ResourceRealPixels, Texture_WriteToDelegated_EveryLevelHoldsTheRuntimesPixels)
{
    for (const FormatRow& row : kFormats)
    {
        SCOPED_TRACE(NameOf(row));
        CreateRequest request(kFlagTexture, kSystem, row.Format, kWidth, kHeight, kLevels);
        request.WithMemory(row.BytesPerPixel, row.Padding);
        auto* pTexture = Create<UMDRscTexture>(request);
        for (UINT level = 0; level < kLevels; level++)
            EXPECT_EQ(pTexture->WriteToDelegated(level, nullptr), S_OK);
        for (UINT level = 0; level < kLevels; level++)
            EXPECT_EQ(PixelsOf(pTexture->GetSurface(0, level), row.BytesPerPixel),
                MemoryOf(request, level, row.BytesPerPixel))
                << "level " << level;
        DestroyAll();
    }
}

TEST_F(ResourceRealPixels, Texture_WriteToDelegated_RectangleIsLevelZerosAlone)
{
    for (const FormatRow& row : kFormats)
    {
        for (const RECT& rect : kRects)
        {
            SCOPED_TRACE(NameOf(row) + " right " + std::to_string(rect.right));
            CreateRequest request(kFlagTexture, kSystem, row.Format, kWidth, kHeight, 2);
            request.WithMemory(row.BytesPerPixel, row.Padding);
            auto* pTexture = Create<UMDRscTexture>(request);
            const Bytes before = Scribble(pTexture->GetSurface(0, 0), row.BytesPerPixel, 3);
            EXPECT_EQ(pTexture->WriteToDelegated(0, &rect), S_OK);
            EXPECT_EQ(pTexture->WriteToDelegated(1, &rect), S_OK);
            const Bytes memory = MemoryOf(request, 0, row.BytesPerPixel);
            EXPECT_EQ(PixelsOf(pTexture->GetSurface(0, 0), row.BytesPerPixel),
                Overlaid(before, kWidth, {rect.left, rect.top}, memory, kWidth, rect, row.BytesPerPixel));
            EXPECT_EQ(PixelsOf(pTexture->GetSurface(0, 1), row.BytesPerPixel), MemoryOf(request, 1, row.BytesPerPixel));
            DestroyAll();
        }
    }
}

TEST_F(ResourceRealPixels, Texture_WriteFromDelegated_RefreshesThatLevelAndNoPadding)
{
    for (const FormatRow& row : kFormats)
    {
        SCOPED_TRACE(NameOf(row));
        CreateRequest request(kFlagTexture, kSystem, row.Format, kWidth, kHeight, kLevels);
        request.WithMemory(row.BytesPerPixel, row.Padding);
        auto* pTexture = Create<UMDRscTexture>(request);
        for (UINT level = 0; level < kLevels; level++)
        {
            const Bytes pixels =
                Scribble(pTexture->GetSurface(0, level), row.BytesPerPixel, static_cast<BYTE>(level * 17));
            std::vector<Bytes> expected;
            for (UINT other = 0; other < kLevels; other++)
                expected.push_back(request.Memory(other));
            const D3DDDI_SURFACEINFO& surface = request.m_Surfaces[level];
            expected[level] = Landed(expected[level], surface.SysMemPitch, pixels, surface.Width * row.BytesPerPixel,
                PitchOf(pTexture->GetSurface(0, level)));
            EXPECT_EQ(pTexture->WriteFromDelegated(level), S_OK);
            for (UINT other = 0; other < kLevels; other++)
                EXPECT_EQ(request.Memory(other), expected[other]) << "level " << level << " memory " << other;
        }
        DestroyAll();
    }
}

TEST_F(ResourceRealPixels, Texture_TexBlt_EveryLevelReachesVideoMemory)
{
    for (const FormatRow& row : kFormats)
    {
        SCOPED_TRACE(NameOf(row));
        CreateRequest source(kFlagTexture, kSystem, row.Format, kWidth, kHeight, kLevels);
        source.WithMemory(row.BytesPerPixel, row.Padding);
        CreateRequest destination(kFlagTexture, kVideo, row.Format, kWidth, kHeight, kLevels);
        auto* pSource = Create<UMDRscTexture>(source);
        auto* pDestination = Create<UMDRscTexture>(destination);
        EXPECT_EQ(TexBlt(pSource, pDestination, {0, 0, kWidth, kHeight}, {0, 0}), S_OK);
        for (UINT level = 0; level < kLevels; level++)
            EXPECT_EQ(PixelsOf(pDestination->GetSurface(0, level), row.BytesPerPixel),
                Kept(MemoryOf(source, level, row.BytesPerPixel), row.Format))
                << "level " << level;
        DestroyAll();
    }
}

TEST_F(ResourceRealPixels, Texture_TexBlt_RectangleGoesToItsPointOnLevelZeroAlone)
{
    const RECT rect = {5, 3, 18, 30};
    const POINT point = {1040, 1};
    for (const FormatRow& row : kFormats)
    {
        SCOPED_TRACE(NameOf(row));
        CreateRequest first(kFlagTexture, kSystem, row.Format, kWidth, kHeight, 3);
        first.WithMemory(row.BytesPerPixel, row.Padding);
        CreateRequest second(kFlagTexture, kSystem, row.Format, kWidth, kHeight, 3);
        second.WithMemory(row.BytesPerPixel, row.Padding);
        for (UINT level = 0; level < 3; level++)
            std::ranges::reverse(second.Memory(level));
        CreateRequest destination(kFlagTexture, kVideo, row.Format, kWidth, kHeight, 3);
        auto* pFirst = Create<UMDRscTexture>(first);
        auto* pSecond = Create<UMDRscTexture>(second);
        auto* pDestination = Create<UMDRscTexture>(destination);
        EXPECT_EQ(TexBlt(pFirst, pDestination, {0, 0, kWidth, kHeight}, {0, 0}), S_OK);
        const Bytes before = Scribble(pSecond->GetSurface(0, 0), row.BytesPerPixel, 5);
        EXPECT_EQ(TexBlt(pSecond, pDestination, rect, point), S_OK);
        const Bytes above = MemoryOf(second, 0, row.BytesPerPixel);
        EXPECT_EQ(PixelsOf(pSecond->GetSurface(0, 0), row.BytesPerPixel),
            Overlaid(before, kWidth, {rect.left, rect.top}, above, kWidth, rect, row.BytesPerPixel));
        const Bytes expected =
            Overlaid(MemoryOf(first, 0, row.BytesPerPixel), kWidth, point, above, kWidth, rect, row.BytesPerPixel);
        EXPECT_EQ(PixelsOf(pDestination->GetSurface(0, 0), row.BytesPerPixel), Kept(expected, row.Format));
        for (UINT level = 1; level < 3; level++)
            EXPECT_EQ(PixelsOf(pDestination->GetSurface(0, level), row.BytesPerPixel),
                Kept(MemoryOf(second, level, row.BytesPerPixel), row.Format))
                << "level " << level;
        DestroyAll();
    }
}

TEST_F(ResourceRealPixels, Texture_BltToSystemTexture_PixelsReachTheRuntimesMemory)
{
    for (const FormatRow& row : kFormats)
    {
        SCOPED_TRACE(NameOf(row));
        CreateRequest source(kFlagTexture, kSystem, row.Format, 61, kHeight);
        source.WithMemory(row.BytesPerPixel, row.Padding);
        CreateRequest target(kFlagTexture | kFlagRenderTarget, kVideo, row.Format, 61, kHeight);
        CreateRequest copy(kFlagTexture, kSystem, row.Format, 61, kHeight);
        copy.WithMemory(row.BytesPerPixel, 16);
        const RECT whole = {0, 0, 61, kHeight};
        auto* pSource = Create<UMDRscTexture>(source);
        auto* pTarget = Create<UMDRscTexture>(target);
        auto* pCopy = Create<UMDRscTexture>(copy);
        const Bytes expected = Landed(copy.Memory(0), copy.m_Surfaces[0].SysMemPitch,
            Kept(MemoryOf(source, 0, row.BytesPerPixel), row.Format), 61 * row.BytesPerPixel,
            PitchOf(pCopy->GetSurface(0, 0)));
        EXPECT_EQ(Blt(pSource, whole, pTarget, whole), S_OK);
        EXPECT_EQ(Blt(pTarget, whole, pCopy, whole), S_OK);
        EXPECT_EQ(copy.Memory(0), expected);
        DestroyAll();
    }
}

TEST_F(ResourceRealPixels, Cube_WriteToDelegatedAndTexBlt_EveryFaceAndLevelReachesVideoMemory)
{
    struct Row
    {
        UINT Edge;
        UINT Levels;
    };
    for (const Row& size : {Row{256, 9}, Row{37, 6}, Row{7, 1}})
    {
        for (const FormatRow& row : kFormats)
        {
            SCOPED_TRACE(NameOf(row) + " edge " + std::to_string(size.Edge));
            const UINT flags = kFlagTexture | kFlagCubeMap;
            CreateRequest source(flags, kSystem, row.Format, size.Edge, size.Edge, size.Levels);
            source.WithMemory(row.BytesPerPixel, row.Padding);
            CreateRequest destination(flags, kVideo, row.Format, size.Edge, size.Edge, size.Levels);
            auto* pSource = Create<UMDRscCubeTexture>(source);
            auto* pDestination = Create<UMDRscCubeTexture>(destination);
            for (UINT index = 0; index < 6 * size.Levels; index++)
                EXPECT_EQ(pSource->WriteToDelegated(index, nullptr), S_OK);
            EXPECT_EQ(TexBlt(pSource, pDestination, {1, 1, 2, 2}, {3, 3}), S_OK);
            for (UINT index = 0; index < 6 * size.Levels; index++)
            {
                const UINT face = index / size.Levels;
                const UINT level = index % size.Levels;
                const Bytes memory = MemoryOf(source, index, row.BytesPerPixel);
                EXPECT_EQ(PixelsOf(pSource->GetSurface(face, level), row.BytesPerPixel), memory)
                    << "face " << face << " level " << level;
                EXPECT_EQ(PixelsOf(pDestination->GetSurface(face, level), row.BytesPerPixel), Kept(memory, row.Format))
                    << "face " << face << " level " << level;
            }
            DestroyAll();
        }
    }
}

TEST_F(ResourceRealPixels, Cube_WriteFromDelegated_RefreshesThatFaceAndLevel)
{
    constexpr UINT kEdge = 37, kCubeLevels = 6;
    for (const FormatRow& row : kFormats)
    {
        SCOPED_TRACE(NameOf(row));
        CreateRequest request(kFlagTexture | kFlagCubeMap, kSystem, row.Format, kEdge, kEdge, kCubeLevels);
        request.WithMemory(row.BytesPerPixel, row.Padding);
        auto* pCube = Create<UMDRscCubeTexture>(request);
        std::vector<Bytes> expected;
        for (UINT index = 0; index < 6 * kCubeLevels; index++)
        {
            const D3DDDI_SURFACEINFO& surface = request.m_Surfaces[index];
            IDirect3DSurface9* pSurface = pCube->GetSurface(index / kCubeLevels, index % kCubeLevels);
            const Bytes pixels = Scribble(pSurface, row.BytesPerPixel, static_cast<BYTE>(index * 13 + 1));
            expected.push_back(Landed(request.Memory(index), surface.SysMemPitch, pixels,
                surface.Width * row.BytesPerPixel, PitchOf(pSurface)));
        }
        for (UINT index = 0; index < 6 * kCubeLevels; index++)
            EXPECT_EQ(pCube->WriteFromDelegated(index), S_OK);
        for (UINT index = 0; index < 6 * kCubeLevels; index++)
            EXPECT_EQ(request.Memory(index), expected[index]) << "sub-resource " << index;
        DestroyAll();
    }
}

TEST_F(ResourceRealPixels, Surface_WriteToDelegatedAndBlt_RectangleReachesVideoMemory)
{
    for (const FormatRow& row : kFormats)
    {
        for (const RECT& rect : kRects)
        {
            SCOPED_TRACE(NameOf(row) + " right " + std::to_string(rect.right));
            CreateRequest first(0, kSystem, row.Format, kWidth, kHeight);
            first.WithMemory(row.BytesPerPixel, row.Padding);
            CreateRequest second(0, kSystem, row.Format, kWidth, kHeight);
            second.WithMemory(row.BytesPerPixel, row.Padding);
            std::ranges::reverse(second.Memory(0));
            CreateRequest target(kFlagRenderTarget, kVideo, row.Format, kWidth + 2, kHeight + 1);
            const RECT whole = {0, 0, kWidth, kHeight};
            const RECT moved = {rect.left + 2, rect.top + 1, rect.right + 2, rect.bottom + 1};
            auto* pFirst = Create<UMDRscSurface>(first);
            auto* pSecond = Create<UMDRscSurface>(second);
            auto* pTarget = Create<UMDRscSurface>(target);
            EXPECT_EQ(Blt(pFirst, whole, pTarget, whole), S_OK);
            const Bytes below = PixelsOf(pTarget->GetSurface(0, 0), row.BytesPerPixel);
            const Bytes before = Scribble(pSecond->GetSurface(0, 0), row.BytesPerPixel, 5);
            EXPECT_EQ(Blt(pSecond, rect, pTarget, moved), S_OK);
            const Bytes above = MemoryOf(second, 0, row.BytesPerPixel);
            EXPECT_EQ(PixelsOf(pSecond->GetSurface(0, 0), row.BytesPerPixel),
                Overlaid(before, kWidth, {rect.left, rect.top}, above, kWidth, rect, row.BytesPerPixel));
            EXPECT_EQ(PixelsOf(pTarget->GetSurface(0, 0), row.BytesPerPixel),
                Kept(Overlaid(below, kWidth + 2, {moved.left, moved.top}, above, kWidth, rect, row.BytesPerPixel),
                    row.Format));
            DestroyAll();
        }
    }
}

TEST_F(ResourceRealPixels, Surface_WriteToDelegated_FormatsOfNoTextureToo)
{
    // Counted bytes, which of the packed YUV formats are fewer than a row has: the rest of a row stays.
    const FormatRow rows[] = {
        {D3DDDIFMT_R8G8B8, 3, 2},
        {D3DDDIFMT_R8G8B8, 3, 7},
        {UMDFourCC("UYVY"), 2, 6},
        {UMDFourCC("YUY2"), 1, 64},
        {UMDFourCC("NV12"), 1, 3},
    };
    constexpr UINT kEvenWidth = 62, kEvenHeight = 36;
    const RECT rects[] = {{0, 0, 1, 1}, {4, 2, 10, 9}, {60, 35, 62, 36}, {0, 0, 62, 36}};
    for (const FormatRow& row : rows)
    {
        for (const RECT& rect : rects)
        {
            SCOPED_TRACE(NameOf(row) + " right " + std::to_string(rect.right));
            CreateRequest request(0, kSystem, row.Format, kEvenWidth, kEvenHeight);
            request.WithMemory(row.BytesPerPixel, row.Padding);
            auto* pSurface = Create<UMDRscSurface>(request);
            const Bytes before = Scribble(pSurface->GetSurface(0, 0), row.BytesPerPixel, 9);
            EXPECT_EQ(pSurface->WriteToDelegated(0, &rect), S_OK);
            EXPECT_EQ(PixelsOf(pSurface->GetSurface(0, 0), row.BytesPerPixel),
                Overlaid(before, kEvenWidth, {rect.left, rect.top}, MemoryOf(request, 0, row.BytesPerPixel), kEvenWidth,
                    rect, row.BytesPerPixel));
            DestroyAll();
        }
    }
}

TEST_F(ResourceRealPixels, Create_FormatThatTheDeviceHasNotForTheKind_IsRefusedAndNothingIsLeft)
{
    struct Row
    {
        UINT Flags;
        std::vector<D3DDDIFORMAT> Formats;
        std::string Error;
    };
    const std::vector<D3DDDIFORMAT> noTexture = {
        D3DDDIFMT_R8G8B8, UMDFourCC("UYVY"), UMDFourCC("YUY2"), UMDFourCC("NV12")};
    const Row rows[] = {
        {kFlagTexture, noTexture, "UMDRscTexture::Create CreateTexture failed! 0x8876086c\n"},
        {kFlagTexture | kFlagCubeMap, noTexture, "UMDRscCubeTexture::Create CreateCubeTexture failed! 0x8876086c\n"},
        {kFlagRenderTarget, {UMDFourCC("UYVY"), UMDFourCC("YUY2"), UMDFourCC("NV12"), UMDFourCC("DXT1")},
            "UMDRscSurface::Create CreateRenderTarget failed! 0x8876086c\n"},
    };
    const TraceMask mask(UMDTRACE_ERROR);
    for (const Row& row : rows)
    {
        for (D3DDDIFORMAT format : row.Formats)
        {
            CreateRequest request(row.Flags, kVideo, format, 16, 16);
            const TraceCapture trace;
            EXPECT_EQ(UMDDdiCreateResource(m_pDevice.get(), &request.m_Arg), E_FAIL);
            EXPECT_EQ(trace.LinesOfThisThread(), std::vector<std::string>{row.Error}) << "format " << format;
            EXPECT_EQ(m_Kernel.AllocationCount(), 0U);
        }
    }
}
