// Where the driver shows something else than a plain device would, on purpose: each test has the plain picture that the
// driver's equals, and the one that it does not.
#include "DifferentialCanvas.h"
#include "tools/painters/DifferentialDriverPainter.h"
#include "tools/painters/DifferentialPlainPainter.h"

#include <gtest/gtest.h>

namespace
{

constexpr RECT kAll = DifferentialCanvas::kAll;
constexpr UINT kStride = sizeof(ScreenVertex);

/// Two triangles: the left one first.
constexpr std::array<ScreenVertex, 6> kTriangles = {
    {{4, 4, 0, 1, 0xFFFF4040, 0, 0}, {40, 8, 0, 1, 0xFFFFFF40, 0, 0}, {10, 60, 0, 1, 0xFF40FF40, 0, 0},
        {50, 4, 0, 1, 0xFF4040FF, 0, 0}, {92, 8, 0, 1, 0xFF40FFFF, 0, 0}, {60, 60, 0, 1, 0xFFFF40FF, 0, 0}}};

// The painters never live at once, and the driver's comes last: Wine does not stand a device of one thread behind a
// device of another that has gone.
template <typename AnyPainter, typename Drawing>
DifferentialPicture PictureOf(Drawing drawing, PainterSurface kind = PainterSurface::Target)
{
    AnyPainter painter;
    DifferentialCanvas canvas(painter, kind);
    drawing(painter, canvas);
    return painter.ReadBack(canvas.Target());
}

template <typename Drawing>
DifferentialPicture Plain(Drawing drawing)
{
    return PictureOf<DifferentialPlainPainter>(drawing);
}

template <typename Drawing>
DifferentialPicture Driver(Drawing drawing)
{
    return PictureOf<DifferentialDriverPainter>(drawing);
}

void ExpectFirstNotSecond(const char* pName, const DifferentialPicture& driver, const DifferentialPicture& equal,
    const DifferentialPicture& other)
{
    EXPECT_EQ(DifferentialCompare(pName, driver, equal), "");
    EXPECT_FALSE(equal == other) << "the two plain pictures must differ";
}

}  // namespace

TEST(DifferentialContract, SetZRange_AnyRange_ViewportKeepsZeroToOne)
{
    const auto quadBehindRange = [](Painter& painter, DifferentialCanvas& canvas) {
        canvas.AddDepth();
        canvas.UseSpaceVertices();
        painter.SetRenderState(D3DRS_ZENABLE, D3DZB_TRUE);
        painter.SetRenderState(D3DRS_ZFUNC, D3DCMP_LESS);
        painter.Clear(D3DCLEAR_ZBUFFER, 0, 0.4f, 0);
        canvas.SpaceQuad(-0.5f, 0.5f, 0.5f, -0.5f, 0.2f, 0xFFFFFFFF);
    };
    const auto equal = Plain(quadBehindRange);
    const auto other = Plain([&](DifferentialPlainPainter& painter, DifferentialCanvas& canvas) {
        const D3DVIEWPORT9 viewport = {0, 0, DifferentialCanvas::kWidth, DifferentialCanvas::kHeight, 0.5f, 1};
        painter.Device()->SetViewport(&viewport);
        quadBehindRange(painter, canvas);
    });
    const auto driver = Driver([&](DifferentialDriverPainter& painter, DifferentialCanvas& canvas) {
        const D3DDDIARG_ZRANGE range = {0.5f, 1};
        EXPECT_EQ(painter.Functions().pfnSetZRange(painter.Device(), &range), S_OK);
        painter.SetViewport(0, 0, DifferentialCanvas::kWidth, DifferentialCanvas::kHeight);
        quadBehindRange(painter, canvas);
    });
    ExpectFirstNotSecond("ZRange", driver, equal, other);
}

TEST(DifferentialContract, Draw_AfterIndexedDrawOfASystemBuffer_ReadsItsMemoryFromTheStart)
{
    constexpr UINT16 indices[] = {0, 1, 2};
    const auto equal = Plain([](Painter& painter, DifferentialCanvas&) {
        painter.SetStreamMemory(kTriangles.data(), kStride);
        painter.Draw(D3DPT_TRIANGLELIST, 0, 1);
    });
    const auto other = Plain([](Painter& painter, DifferentialCanvas&) {
        painter.SetStreamMemory(kTriangles.data(), kStride);
        painter.Draw(D3DPT_TRIANGLELIST, 3, 1);
    });
    const auto driver = Driver([&](Painter& painter, DifferentialCanvas& canvas) {
        const PainterHandle pBuffer = painter.CreateVertexBuffer(PainterMemory::System, BytesOf(kTriangles));
        painter.SetStreamBuffer(*pBuffer, 3 * kStride, kStride);
        painter.DrawIndexedFromMemory(D3DPT_TRIANGLELIST, 0, 0, 3, 1, indices, 2);
        canvas.Clear();
        painter.Draw(D3DPT_TRIANGLELIST, 0, 1);
    });
    ExpectFirstNotSecond("CachedStream", driver, equal, other);
}

TEST(DifferentialContract, DrawFromByte_UserMemory_OffsetIsNotApplied)
{
    const auto drawing = [](UINT firstByte) {
        return [firstByte](Painter& painter, DifferentialCanvas&) {
            painter.SetStreamMemory(kTriangles.data(), kStride);
            painter.DrawFromByte(D3DPT_TRIANGLELIST, firstByte, 1);
        };
    };
    const auto equal = Plain(drawing(0));
    const auto other = Plain(drawing(3 * kStride));
    ExpectFirstNotSecond("ByteOffset", Driver(drawing(3 * kStride)), equal, other);
}

TEST(DifferentialContract, DrawIndexedFromMemory_StartIndexOffset_IsNotApplied)
{
    constexpr UINT16 indices[] = {0, 1, 2, 3, 4, 5};
    const auto drawing = [&](UINT first) {
        return [&indices, first](Painter& painter, DifferentialCanvas&) {
            painter.SetStreamMemory(kTriangles.data(), kStride);
            painter.DrawIndexedFromMemory(D3DPT_TRIANGLELIST, 0, 0, 6, 1, indices + first, 2);
        };
    };
    const auto equal = Plain(drawing(0));
    const auto other = Plain(drawing(3));
    const auto driver = Driver([&](DifferentialDriverPainter& painter, DifferentialCanvas&) {
        painter.SetStreamMemory(kTriangles.data(), kStride);
        const D3DDDIARG_DRAWINDEXEDPRIMITIVE2 arg = {D3DPT_TRIANGLELIST, 0, 0, 6, 3 * sizeof(UINT16), 1};
        EXPECT_EQ(
            painter.Functions().pfnDrawIndexedPrimitive2(painter.Device(), &arg, sizeof(UINT16), indices, nullptr),
            S_OK);
    });
    ExpectFirstNotSecond("StartIndexOffset", driver, equal, other);
}

TEST(DifferentialContract, SetPixelShader_NullHandle_ShaderStaysBound)
{
    constexpr UINT code[] = {
        0xFFFF0200,                                                              // ps_2_0
        0x05000051, 0xA00F0000, 0x3F800000, 0x00000000, 0x3F000000, 0x3F800000,  // def c0, 1, 0, 0.5, 1
        0x02000001, 0x800F0800, 0xA0E40000,                                      // mov oC0, c0
        0x0000FFFF,                                                              // end
    };
    const auto draw = [](DifferentialCanvas& canvas) { canvas.Quad({10, 10, 80, 50}, 0, 0xFF00FF00); };
    const auto equal = Plain([&](Painter& painter, DifferentialCanvas& canvas) {
        const PainterHandle pShader = painter.CreatePixelShader(code);
        painter.SetPixelShader(*pShader);
        draw(canvas);
    });
    const auto other = Plain([&](Painter&, DifferentialCanvas& canvas) { draw(canvas); });
    const auto driver = Driver([&](DifferentialDriverPainter& painter, DifferentialCanvas& canvas) {
        const PainterHandle pShader = painter.CreatePixelShader(code);
        painter.SetPixelShader(*pShader);
        EXPECT_EQ(painter.Functions().pfnSetPixelShader(painter.Device(), nullptr), S_OK);
        draw(canvas);
    });
    ExpectFirstNotSecond("NullShader", driver, equal, other);
}

TEST(DifferentialContract, Blt_BetweenTexturesInVideoMemory_RectanglesAreIgnored)
{
    const auto drawing = [](const RECT& from, const RECT& to) {
        return [from, to](Painter& painter, DifferentialCanvas& canvas) {
            const DifferentialPicture pattern = DifferentialPattern(32, 16, D3DFMT_A8R8G8B8);
            const PainterHandle pMemory = painter.CreateMemoryTexture({&pattern, 1});
            const PainterHandle pTexture = painter.CreateSurface(PainterSurface::Texture, 32, 16, D3DFMT_A8R8G8B8);
            painter.TexBlt(*pMemory, {0, 0, 32, 16}, *pTexture, {0, 0});
            painter.Blt(*pTexture, from, canvas.Target(), to);
        };
    };
    const RECT from = {4, 4, 12, 12}, to = {10, 10, 30, 30};
    const auto equal = Plain(drawing({0, 0, 32, 16}, kAll));
    const auto other = Plain(drawing(from, to));
    ExpectFirstNotSecond("TextureRects", Driver(drawing(from, to)), equal, other);
}

TEST(DifferentialContract, Blt_SystemMemoryOfAnotherFormat_IsDroppedWithSuccess)
{
    const auto nothing = Plain([](Painter&, DifferentialCanvas&) {});
    const auto driver = Driver([](Painter& painter, DifferentialCanvas& canvas) {
        const PainterHandle pMemory = painter.CreateMemorySurface(DifferentialPattern(32, 16, D3DFMT_X8R8G8B8));
        painter.Blt(*pMemory, {0, 0, 32, 16}, canvas.Target(), {0, 0, 32, 16});
    });
    EXPECT_EQ(DifferentialCompare("OtherFormat", driver, nothing), "");
}

TEST(DifferentialContract, Blt_PackedOddRowsOf16Bits_LandUpright)
{
    // The source's rows are packed; the device pads its own to four bytes.
    DifferentialDriverPainter painter;
    const PainterHandle pTarget = painter.CreateSurface(PainterSurface::Target, 5, 4, D3DFMT_R5G6B5);
    const DifferentialPicture pattern = DifferentialPattern(5, 4, D3DFMT_R5G6B5);
    const PainterHandle pMemory = painter.CreateMemorySurface(pattern);
    const RECT all = {0, 0, 5, 4};
    painter.Blt(*pMemory, all, *pTarget, all);
    const DifferentialPicture shown = painter.ReadBack(*pTarget);
    for (UINT y = 0; y < 4; ++y)
        for (UINT x = 0; x < 5; ++x)
            EXPECT_EQ(shown.At(x, y), pattern.At(x, y)) << x << "," << y;
}

TEST(DifferentialContract, SetTextureStageState_SamplerStates_DoNotReachTheSampler)
{
    const auto tiled = [](Painter& painter, DifferentialCanvas& canvas, auto setClamp) {
        const DifferentialPicture pattern = DifferentialPattern(8, 8, D3DFMT_A8R8G8B8);
        const PainterHandle pMemory = painter.CreateMemoryTexture({&pattern, 1});
        const PainterHandle pTexture = painter.CreateSurface(PainterSurface::Texture, 8, 8, D3DFMT_A8R8G8B8);
        painter.TexBlt(*pMemory, {0, 0, 8, 8}, *pTexture, {0, 0});
        painter.SetTexture(0, pTexture.get());
        setClamp();
        const ScreenVertex corners[] = {
            {0, 0, 0, 1, ~0u, 0, 0}, {96, 0, 0, 1, ~0u, 3, 0}, {0, 64, 0, 1, ~0u, 0, 2}, {96, 64, 0, 1, ~0u, 3, 2}};
        painter.SetStreamMemory(corners, kStride);
        painter.Draw(D3DPT_TRIANGLESTRIP, 0, 2);
        painter.SetTexture(0, nullptr);
        (void)canvas;
    };
    const auto equal = Plain([&](Painter& painter, DifferentialCanvas& canvas) { tiled(painter, canvas, [] {}); });
    const auto other = Plain([&](DifferentialPlainPainter& painter, DifferentialCanvas& canvas) {
        tiled(painter, canvas, [&] { painter.Device()->SetSamplerState(0, D3DSAMP_ADDRESSU, D3DTADDRESS_CLAMP); });
    });
    const auto driver = Driver([&](Painter& painter, DifferentialCanvas& canvas) {
        // 13 is the horizontal addressing among the stage states of the driver interface.
        tiled(painter, canvas,
            [&] { painter.SetTextureStageState(0, static_cast<D3DTEXTURESTAGESTATETYPE>(13), D3DTADDRESS_CLAMP); });
    });
    ExpectFirstNotSecond("SamplerStates", driver, equal, other);
}
