// Clears of colour, depth and stencil, whole and by rectangles, and fills.
#include "DifferentialCanvas.h"
#include "DifferentialScenes.h"

namespace
{

constexpr RECT kRects[] = {{2, 2, 30, 20}, {25, 15, 60, 40}, {70, 0, 96, 64}};

void ClearRects(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    painter.Clear(D3DCLEAR_TARGET, 0x80FF8000, 0, 0, kRects);
    canvas.Frame();
    painter.SetViewport(20, 10, 50, 40);
    painter.Clear(D3DCLEAR_TARGET, 0xFF00FF80, 0, 0, std::span(kRects).first(2));
    canvas.Frame();
    painter.Clear(D3DCLEAR_TARGET, 0xFFFFFFFF, 0, 0);
    canvas.Frame();
}

void ClearDepth(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    canvas.AddDepth();
    painter.SetRenderState(D3DRS_ZENABLE, D3DZB_TRUE);
    painter.SetRenderState(D3DRS_ZFUNC, D3DCMP_LESS);
    painter.Clear(D3DCLEAR_ZBUFFER, 0, 0.25f, 0, std::span(kRects).first(1));
    painter.Clear(D3DCLEAR_ZBUFFER, 0, 0.75f, 0, std::span(kRects).last(1));
    canvas.Quad(DifferentialCanvas::kAll, 0.5f, 0xFFFF0000, 0xFF00FF00);
    canvas.Frame();
    // A depth without its flag is not cleared.
    painter.Clear(D3DCLEAR_TARGET, 0xFF000000, 0.1f, 0);
    canvas.Quad(DifferentialCanvas::kAll, 0.6f, 0xFF0000FF, 0xFF80FF80);
    canvas.Quad({40, 20, 50, 30}, 0.4f, 0xFFFFFFFF);
    canvas.Frame();
}

void ClearStencil(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    canvas.AddDepth();
    painter.Clear(D3DCLEAR_STENCIL, 0, 1, 5, kRects);
    painter.Clear(D3DCLEAR_STENCIL | D3DCLEAR_TARGET, 0xFF004000, 1, 9, std::span(kRects).subspan(1, 1));
    painter.SetRenderState(D3DRS_STENCILENABLE, TRUE);
    painter.SetRenderState(D3DRS_STENCILFUNC, D3DCMP_EQUAL);
    for (DWORD reference : {5, 9})
    {
        painter.SetRenderState(D3DRS_STENCILREF, reference);
        canvas.Quad(DifferentialCanvas::kAll, 0, 0xFFC00000 | reference * 0x1100);
        canvas.Frame();
    }
}

void FillTarget(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    for (const RECT& rect : kRects)
        painter.ColorFill(canvas.Target(), rect, 0x40FF20C0 + static_cast<D3DCOLOR>(rect.left));
    canvas.Frame();
}

void FillTargetTexture(Painter& painter)
{
    DifferentialCanvas canvas(painter, PainterSurface::TargetTexture);
    painter.ColorFill(canvas.Target(), kRects[1], 0xFF10C0F0);
    canvas.Frame();
}

void FillPlain(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    const PainterHandle pPlain = painter.CreateSurface(
        PainterSurface::Plain, DifferentialCanvas::kWidth, DifferentialCanvas::kHeight, D3DFMT_A8R8G8B8);
    painter.ColorFill(*pPlain, DifferentialCanvas::kAll, 0xFF203040);
    painter.ColorFill(*pPlain, kRects[1], 0xFFF0E0D0);
    painter.Blt(*pPlain, DifferentialCanvas::kAll, canvas.Target(), DifferentialCanvas::kAll);
    canvas.Frame();
}

void Fill16(Painter& painter)
{
    DifferentialCanvas canvas(painter, PainterSurface::Target, D3DFMT_R5G6B5);
    painter.ColorFill(canvas.Target(), kRects[0], 0xFFFF8040);
    painter.Clear(D3DCLEAR_TARGET, 0xFF123456, 0, 0, std::span(kRects).last(1));
    canvas.Frame();
}

}  // namespace

std::vector<DifferentialScene> DifferentialFillScenes()
{
    return {{"ClearRects", ClearRects}, {"ClearDepth", ClearDepth}, {"ClearStencil", ClearStencil},
        {"FillTarget", FillTarget}, {"FillTargetTexture", FillTargetTexture}, {"FillPlain", FillPlain},
        {"Fill16", Fill16}};
}
