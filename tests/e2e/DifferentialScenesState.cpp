// Viewport, scissor, clip planes, transforms, blending, depth, stencil, fog, textures and how their stages mix.
#include "DifferentialCanvas.h"
#include "DifferentialScenes.h"

#include <bit>

namespace
{

constexpr RECT kLeft = {4, 8, 56, 56};
constexpr RECT kRight = {32, 16, 92, 60};

constexpr D3DMATRIX kIdentity = {{{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}}};

DWORD Bits(float value)
{
    return std::bit_cast<DWORD>(value);
}

void SetIdentity(Painter& painter)
{
    for (D3DTRANSFORMSTATETYPE type : {D3DTS_WORLD, D3DTS_VIEW, D3DTS_PROJECTION})
        painter.SetTransform(type, kIdentity);
}

void Viewport(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    canvas.UseSpaceVertices();
    SetIdentity(painter);
    painter.SetViewport(10, 6, 40, 50);
    canvas.SpaceQuad(-0.5f, 0.5f, 2, -2, 0.5f, 0xFF40C080);
    painter.SetViewport(60, 20, 30, 20);
    painter.Clear(D3DCLEAR_TARGET, 0xFF800000, 0, 0);
    canvas.SpaceQuad(-1, 1, 0.25f, 0, 0.5f, 0xFFC0C040);
    canvas.Frame();
}

void Scissor(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    painter.SetScissor({20, 12, 70, 40});
    canvas.Quad(kLeft, 0, 0xFF4080C0);
    canvas.Frame();
    painter.SetRenderState(D3DRS_SCISSORTESTENABLE, TRUE);
    canvas.Quad(DifferentialCanvas::kAll, 0, 0xFFC08040, 0xFF40FF40);
    canvas.Frame();
    painter.SetScissor({50, 30, 96, 64});
    painter.Clear(D3DCLEAR_TARGET, 0xFF00FFFF, 0, 0);
    canvas.Frame();
}

void ClipPlanes(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    canvas.UseSpaceVertices();
    SetIdentity(painter);
    const float slanted[4] = {1, 0.5f, 0, 0.25f};
    const float low[4] = {0, 1, 0, 0.6f};
    painter.SetClipPlane(0, slanted);
    painter.SetClipPlane(1, low);
    for (DWORD enabled : {0, 1, 2, 3})
    {
        canvas.Clear();
        painter.SetRenderState(D3DRS_CLIPPLANEENABLE, enabled);
        canvas.SpaceQuad(-0.9f, 0.9f, 0.9f, -0.9f, 0.5f, 0xFF80FF20);
        canvas.Frame();
    }
}

void Transforms(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    canvas.UseSpaceVertices();
    SetIdentity(painter);
    D3DMATRIX turn = {{{0.8f, 0.6f, 0, 0, -0.6f, 0.8f, 0, 0, 0, 0, 1, 0, 0.1f, 0.2f, 0, 1}}};
    D3DMATRIX away = {{{0.5f, 0, 0, 0, 0, 0.5f, 0, 0, 0, 0, 1, 0, -0.3f, 0, 0.5f, 1}}};
    // A perspective whose nearest depth is 0.5 and farthest 2.
    D3DMATRIX perspective = {{{1, 0, 0, 0, 0, 1.5f, 0, 0, 0, 0, 4 / 3.f, 1, 0, 0, -2 / 3.f, 0}}};
    painter.SetTransform(D3DTS_WORLD, turn);
    canvas.SpaceQuad(-0.5f, 0.5f, 0.5f, -0.5f, 0.5f, 0xFFFF80FF);
    canvas.Frame();
    painter.SetTransform(D3DTS_VIEW, away);
    canvas.SpaceQuad(-0.5f, 0.5f, 0.5f, -0.5f, 0.5f, 0xFF80FFFF);
    canvas.Frame();
    painter.SetTransform(D3DTS_PROJECTION, perspective);
    canvas.SpaceQuad(-0.9f, 0.5f, 0.9f, -0.5f, 0.5f, 0xFFFFFF80);
    canvas.Frame();
}

void Blend(Painter& painter)
{
    static constexpr DWORD kFactors[][3] = {{D3DBLEND_SRCALPHA, D3DBLEND_INVSRCALPHA, D3DBLENDOP_ADD},
        {D3DBLEND_ONE, D3DBLEND_ONE, D3DBLENDOP_ADD}, {D3DBLEND_DESTCOLOR, D3DBLEND_ZERO, D3DBLENDOP_ADD},
        {D3DBLEND_ONE, D3DBLEND_ONE, D3DBLENDOP_REVSUBTRACT}};
    DifferentialCanvas canvas(painter);
    painter.SetRenderState(D3DRS_ALPHABLENDENABLE, TRUE);
    for (const auto& [source, destination, operation] : kFactors)
    {
        canvas.Clear();
        painter.SetRenderState(D3DRS_SRCBLEND, source);
        painter.SetRenderState(D3DRS_DESTBLEND, destination);
        painter.SetRenderState(D3DRS_BLENDOP, operation);
        canvas.Quad(kLeft, 0, 0xC0F02080, 0x2040F080);
        canvas.Quad(kRight, 0, 0x80208040);
        canvas.Frame();
    }
}

void AlphaTest(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    painter.SetRenderState(D3DRS_ALPHATESTENABLE, TRUE);
    painter.SetRenderState(D3DRS_ALPHAREF, 0x80);
    for (D3DCMPFUNC function : {D3DCMP_GREATER, D3DCMP_LESSEQUAL})
    {
        painter.SetRenderState(D3DRS_ALPHAFUNC, function);
        canvas.Clear();
        canvas.Quad(kLeft, 0, 0x10FF4020, 0xF020FF40);
        canvas.Frame();
    }
}

void WriteMask(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    painter.SetRenderState(D3DRS_COLORWRITEENABLE, D3DCOLORWRITEENABLE_RED | D3DCOLORWRITEENABLE_ALPHA);
    canvas.Quad(kLeft, 0, 0x80FFFFFF);
    painter.SetRenderState(D3DRS_COLORWRITEENABLE, D3DCOLORWRITEENABLE_GREEN);
    canvas.Quad(kRight, 0, 0x00FFFFFF);
    canvas.Frame();
}

void CullAndFill(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    painter.SetRenderState(D3DRS_SHADEMODE, D3DSHADE_FLAT);
    for (D3DCULL cull : {D3DCULL_CW, D3DCULL_CCW})
    {
        painter.SetRenderState(D3DRS_CULLMODE, cull);
        canvas.Quad(kLeft, 0, 0xFFFF0000, 0xFF00FF00);
        canvas.Quad({92, 60, 60, 4}, 0, 0xFF0000FF, 0xFFFFFFFF);
        // Mirrored: the other way round.
        canvas.Quad({90, 30, 10, 50}, 0, 0xFF808000, 0xFF008080);
        canvas.Frame();
    }
    painter.SetRenderState(D3DRS_CULLMODE, D3DCULL_NONE);
    painter.SetRenderState(D3DRS_FILLMODE, D3DFILL_WIREFRAME);
    canvas.Quad(kRight, 0, 0xFFFF00FF, 0xFFFFFF00);
    canvas.Frame();
}

void Depth(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    canvas.AddDepth();
    painter.SetRenderState(D3DRS_ZENABLE, D3DZB_TRUE);
    for (D3DCMPFUNC function : {D3DCMP_LESSEQUAL, D3DCMP_GREATER, D3DCMP_ALWAYS})
    {
        painter.Clear(D3DCLEAR_TARGET | D3DCLEAR_ZBUFFER, DifferentialCanvas::kBackground, 0.5f, 0);
        painter.SetRenderState(D3DRS_ZFUNC, function);
        canvas.Quad(kLeft, 0.3f, 0xFFFF2020);
        canvas.Quad(kRight, 0.4f, 0xFF20FF20);
        canvas.Quad({0, 40, 96, 50}, 0.7f, 0xFF2020FF);
        canvas.Frame();
    }
}

void Stencil(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    canvas.AddDepth();
    painter.SetRenderState(D3DRS_STENCILENABLE, TRUE);
    painter.SetRenderState(D3DRS_STENCILFUNC, D3DCMP_ALWAYS);
    painter.SetRenderState(D3DRS_STENCILPASS, D3DSTENCILOP_INCR);
    canvas.Quad(kLeft, 0, 0xFF303030);
    canvas.Quad(kRight, 0, 0xFF606060);
    painter.SetRenderState(D3DRS_STENCILPASS, D3DSTENCILOP_KEEP);
    painter.SetRenderState(D3DRS_STENCILFUNC, D3DCMP_EQUAL);
    for (DWORD reference : {0, 1, 2})
    {
        painter.SetRenderState(D3DRS_STENCILREF, reference);
        canvas.Quad(DifferentialCanvas::kAll, 0, 0xFF400000 << reference | 0xFF000000, 0xFFFFFF00);
        canvas.Frame();
    }
}

void Fog(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    canvas.UseSpaceVertices();
    SetIdentity(painter);
    painter.SetRenderState(D3DRS_FOGENABLE, TRUE);
    painter.SetRenderState(D3DRS_FOGCOLOR, 0xFFE0E0C0);
    painter.SetRenderState(D3DRS_FOGVERTEXMODE, D3DFOG_LINEAR);
    painter.SetRenderState(D3DRS_FOGSTART, Bits(0.1f));
    painter.SetRenderState(D3DRS_FOGEND, Bits(0.9f));
    canvas.SpaceQuad(-0.9f, 0.9f, 0, -0.9f, 0.2f, 0xFF202080);
    canvas.SpaceQuad(0, 0.9f, 0.9f, -0.9f, 0.7f, 0xFF202080);
    canvas.Frame();
    painter.SetRenderState(D3DRS_FOGVERTEXMODE, D3DFOG_NONE);
    painter.SetRenderState(D3DRS_FOGTABLEMODE, D3DFOG_EXP);
    painter.SetRenderState(D3DRS_FOGDENSITY, Bits(1.5f));
    canvas.SpaceQuad(-0.5f, 0.5f, 0.5f, -0.5f, 0.6f, 0xFF802020);
    canvas.Frame();
}

void StageStates(Painter& painter)
{
    static constexpr DWORD kOperations[] = {D3DTOP_SELECTARG1, D3DTOP_SELECTARG2, D3DTOP_MODULATE, D3DTOP_MODULATE2X,
        D3DTOP_ADD, D3DTOP_SUBTRACT, D3DTOP_BLENDDIFFUSEALPHA, D3DTOP_BLENDFACTORALPHA};
    DifferentialCanvas canvas(painter);
    const DifferentialPicture pattern = DifferentialPattern(16, 16, D3DFMT_A8R8G8B8);
    const PainterHandle pMemory = painter.CreateMemoryTexture({&pattern, 1});
    const PainterHandle pTexture = painter.CreateSurface(PainterSurface::Texture, 16, 16, D3DFMT_A8R8G8B8);
    painter.TexBlt(*pMemory, {0, 0, 16, 16}, *pTexture, {0, 0});
    painter.SetTexture(0, pTexture.get());
    painter.SetRenderState(D3DRS_TEXTUREFACTOR, 0x60408020);
    painter.SetTextureStageState(0, D3DTSS_COLORARG1, D3DTA_TEXTURE);
    painter.SetTextureStageState(0, D3DTSS_COLORARG2, D3DTA_DIFFUSE);
    for (DWORD operation : kOperations)
    {
        canvas.Clear();
        painter.SetTextureStageState(0, D3DTSS_COLOROP, operation);
        canvas.Quad(kLeft, 0, 0x8040FF80, 0xFFFF4020);
        canvas.Frame();
    }
    painter.SetTextureStageState(0, D3DTSS_COLOROP, D3DTOP_MODULATE);
    painter.SetTextureStageState(1, D3DTSS_COLOROP, D3DTOP_ADD);
    painter.SetTextureStageState(1, D3DTSS_COLORARG1, D3DTA_CURRENT);
    painter.SetTextureStageState(1, D3DTSS_COLORARG2, D3DTA_TFACTOR);
    canvas.Quad(kRight, 0, 0xFFFFFFFF);
    canvas.Frame();
    painter.SetTexture(0, nullptr);
    canvas.Quad(kLeft, 0, 0xFF8080FF);
    canvas.Frame();
}

void TargetTextureAsTexture(Painter& painter)
{
    DifferentialCanvas picture(painter, PainterSurface::TargetTexture);
    picture.Quad(kLeft, 0, 0xFFFF0000, 0xFF00FF00);
    picture.Frame();
    DifferentialCanvas canvas(painter);
    painter.SetTexture(0, &picture.Target());
    canvas.Quad({10, 4, 90, 40}, 0, 0xFFFFFFFF);
    canvas.Frame();
    painter.SetTexture(0, nullptr);
}

void SceneBrackets(Painter& painter)
{
    DifferentialCanvas canvas(painter);
    for (D3DCOLOR color : {0xFF80C0FF, 0xFFFFC080})
    {
        painter.BeginScene();
        canvas.Quad(kRight, 0, color, 0xFF000000);
        painter.EndScene();
        canvas.Frame();
    }
}

void SixteenBits(Painter& painter)
{
    DifferentialCanvas canvas(painter, PainterSurface::Target, D3DFMT_R5G6B5);
    painter.SetRenderState(D3DRS_DITHERENABLE, FALSE);
    canvas.Quad(kLeft, 0, 0xFFF83C10, 0xFF08A0F8);
    canvas.Frame();
}

}  // namespace

std::vector<DifferentialScene> DifferentialStateScenes()
{
    return {{"Viewport", Viewport}, {"Scissor", Scissor}, {"ClipPlanes", ClipPlanes}, {"Transforms", Transforms},
        {"Blend", Blend}, {"AlphaTest", AlphaTest}, {"WriteMask", WriteMask}, {"CullAndFill", CullAndFill},
        {"Depth", Depth}, {"Stencil", Stencil}, {"Fog", Fog}, {"StageStates", StageStates},
        {"TargetTextureAsTexture", TargetTextureAsTexture}, {"SceneBrackets", SceneBrackets},
        {"SixteenBits", SixteenBits}};
}
