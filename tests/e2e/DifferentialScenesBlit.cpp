// Every pair of surfaces and textures between which the driver blits, and the uploads of textures.
#include "DifferentialCanvas.h"
#include "DifferentialScenes.h"

namespace
{

constexpr D3DFORMAT kFormat = D3DFMT_A8R8G8B8;
constexpr RECT kAll = DifferentialCanvas::kAll;

// A surface with the pattern on it. Only a plain one and a texture take it straight from memory.
PainterHandle Filled(Painter& painter, PainterSurface kind, UINT width, UINT height)
{
    const RECT all = {0, 0, static_cast<LONG>(width), static_cast<LONG>(height)};
    const DifferentialPicture pattern = DifferentialPattern(width, height, kFormat);
    const PainterHandle pMemory = kind == PainterSurface::Texture ? painter.CreateMemoryTexture({&pattern, 1})
                                                                  : painter.CreateMemorySurface(pattern);
    PainterHandle pSurface = painter.CreateSurface(kind, width, height, kFormat);
    painter.Blt(*pMemory, all, *pSurface, all);
    return pSurface;
}

void SurfaceToSurface(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    const PainterHandle pSource = Filled(painter, PainterSurface::Target, 40, 30);
    painter.Blt(*pSource, {0, 0, 40, 30}, canvas.Target(), {3, 5, 43, 35});
    canvas.Frame();
    painter.Blt(*pSource, {10, 10, 30, 20}, canvas.Target(), {50, 8, 90, 60});
    canvas.Frame();
    painter.Blt(*pSource, {0, 0, 40, 30}, canvas.Target(), {20, 40, 31, 49});
    canvas.Frame();
}

void SurfaceToPlain(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    const PainterHandle pSource = Filled(painter, PainterSurface::Target, DifferentialCanvas::kWidth, 64);
    const PainterHandle pPlain = painter.CreateSurface(PainterSurface::Plain, DifferentialCanvas::kWidth, 64, kFormat);
    painter.Blt(*pSource, kAll, *pPlain, kAll);
    painter.Blt(*pPlain, kAll, canvas.Target(), kAll);
    canvas.Frame();
}

void PlainToSurface(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    const PainterHandle pPlain = Filled(painter, PainterSurface::Plain, 32, 32);
    painter.Blt(*pPlain, {4, 4, 28, 20}, canvas.Target(), {10, 10, 58, 58});
    painter.Blt(*pPlain, {0, 0, 32, 32}, canvas.Target(), {60, 2, 92, 34});
    canvas.Frame();
}

void MemoryToSurface(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    const PainterHandle pMemory = painter.CreateMemorySurface(DifferentialPattern(50, 40, kFormat));
    painter.Blt(*pMemory, {0, 0, 50, 40}, canvas.Target(), {0, 0, 50, 40});
    canvas.Frame();
    painter.Blt(*pMemory, {7, 9, 31, 33}, canvas.Target(), {60, 30, 84, 54});
    canvas.Frame();
}

void MemoryToSurface16(Painter& painter)
{
    DifferentialCanvas canvas(painter, PainterSurface::Target, D3DFMT_R5G6B5);
    const PainterHandle pMemory = painter.CreateMemorySurface(DifferentialPattern(38, 21, D3DFMT_R5G6B5));
    painter.Blt(*pMemory, {0, 0, 38, 21}, canvas.Target(), {5, 6, 43, 27});
    painter.Blt(*pMemory, {3, 1, 20, 15}, canvas.Target(), {50, 40, 67, 54});
    canvas.Frame();
}

void SurfaceToMemory(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    canvas.Quad({10, 10, 80, 50}, 0, 0xFFFF0000, 0x8000FF00);
    const PainterHandle pSame = painter.CreateMemorySurface({DifferentialCanvas::kWidth, 64, kFormat});
    painter.Blt(canvas.Target(), kAll, *pSame, kAll);
    painter.Frame(*pSame);
    const PainterHandle pSmaller = painter.CreateMemorySurface({48, 40, kFormat});
    painter.Blt(canvas.Target(), {8, 8, 88, 56}, *pSmaller, {0, 0, 48, 40});
    painter.Frame(*pSmaller);
}

void TextureToSurface(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    const PainterHandle pTexture = Filled(painter, PainterSurface::Texture, 32, 16);
    painter.Blt(*pTexture, {0, 0, 32, 16}, canvas.Target(), kAll);
    canvas.Frame();
}

void TargetTextureToTargetTexture(Painter& painter)
{
    DifferentialCanvas source(painter, PainterSurface::TargetTexture);
    source.Quad({5, 5, 60, 50}, 0, 0xFF00FFFF, 0xFFFF00FF);
    const PainterHandle pTarget = painter.CreateSurface(PainterSurface::TargetTexture, 64, 64, kFormat);
    painter.Blt(source.Target(), kAll, *pTarget, {0, 0, 64, 64});
    painter.Frame(*pTarget);
}

void TargetTextureToMemory(Painter& painter)
{
    DifferentialCanvas source(painter, PainterSurface::TargetTexture);
    source.Quad({5, 5, 90, 50}, 0, 0xFF00FF00, 0xFF0000FF);
    const PainterHandle pSurface = painter.CreateMemorySurface({DifferentialCanvas::kWidth, 64, kFormat});
    painter.Blt(source.Target(), kAll, *pSurface, kAll);
    painter.Frame(*pSurface);
    source.Quad({50, 20, 70, 64}, 0, 0xFFC0C0C0);
    // The runtime's own pixels follow only with a texture.
    const DifferentialPicture empty(DifferentialCanvas::kWidth, 64, kFormat);
    const PainterHandle pTexture = painter.CreateMemoryTexture({&empty, 1});
    painter.Blt(source.Target(), kAll, *pTexture, kAll);
    painter.Frame(*pTexture);
}

void TargetTextureToSmallerMemory(Painter& painter)
{
    DifferentialCanvas source(painter, PainterSurface::TargetTexture);
    source.Quad({5, 5, 90, 50}, 0, 0xFFFFFF00, 0xFF8000FF);
    const DifferentialPicture empty(40, 32, kFormat);
    const PainterHandle pSurface = painter.CreateMemorySurface(empty);
    painter.Blt(source.Target(), {10, 4, 90, 60}, *pSurface, {0, 0, 40, 32});
    painter.Frame(*pSurface);
    const PainterHandle pTexture = painter.CreateMemoryTexture({&empty, 1});
    painter.Blt(source.Target(), kAll, *pTexture, {0, 0, 40, 32});
    painter.Frame(*pTexture);
}

// Shows a texture on the canvas, two pixels a texel.
void Show(DifferentialCanvas& canvas, Painter& painter, PainterObject& texture)
{
    painter.SetTexture(0, &texture);
    canvas.Quad({0, 0, 64, 32}, 0, 0xFFFFFFFF);
    canvas.Frame();
    painter.SetTexture(0, nullptr);
}

void TextureUpload(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    const PainterHandle pTexture = Filled(painter, PainterSurface::Texture, 32, 16);
    Show(canvas, painter, *pTexture);
    const DifferentialPicture other = DifferentialPattern(64, 16, kFormat);
    const PainterHandle pMemory = painter.CreateMemoryTexture({&other, 1});
    painter.TexBlt(*pMemory, {40, 3, 50, 12}, *pTexture, {5, 1});
    Show(canvas, painter, *pTexture);
    painter.Blt(*pMemory, {50, 0, 58, 8}, *pTexture, {20, 7, 28, 15});
    Show(canvas, painter, *pTexture);
}

void TextureUploadLevels(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    const DifferentialPicture levels[] = {DifferentialPattern(16, 16, kFormat), DifferentialPattern(8, 8, kFormat),
        DifferentialPattern(4, 4, kFormat), DifferentialPattern(2, 2, kFormat), DifferentialPattern(1, 1, kFormat)};
    const PainterHandle pMemory = painter.CreateMemoryTexture(levels);
    const PainterHandle pTexture = painter.CreateSurface(PainterSurface::Texture, 16, 16, kFormat, 5);
    painter.TexBlt(*pMemory, {0, 0, 16, 16}, *pTexture, {0, 0});
    Show(canvas, painter, *pTexture);
    // As levels of detail are asked for by a sampler, which the driver has no way to set, level 0 is shown.
}

}  // namespace

std::vector<DifferentialScene> DifferentialBlitScenes()
{
    return {{"SurfaceToSurface", SurfaceToSurface}, {"SurfaceToPlain", SurfaceToPlain},
        {"PlainToSurface", PlainToSurface}, {"MemoryToSurface", MemoryToSurface},
        {"MemoryToSurface16", MemoryToSurface16}, {"SurfaceToMemory", SurfaceToMemory},
        {"TextureToSurface", TextureToSurface}, {"TargetTextureToTargetTexture", TargetTextureToTargetTexture},
        {"TargetTextureToMemory", TargetTextureToMemory},
        {"TargetTextureToSmallerMemory", TargetTextureToSmallerMemory}, {"TextureUpload", TextureUpload},
        {"TextureUploadLevels", TextureUploadLevels}};
}
