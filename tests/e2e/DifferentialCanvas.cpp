#include "DifferentialCanvas.h"

namespace
{

constexpr D3DVERTEXELEMENT9 kScreenElements[] = {
    {0, 0, D3DDECLTYPE_FLOAT4, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_POSITIONT, 0},
    {0, 16, D3DDECLTYPE_D3DCOLOR, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_COLOR, 0},
    {0, 20, D3DDECLTYPE_FLOAT2, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_TEXCOORD, 0},
};

constexpr D3DVERTEXELEMENT9 kSpaceElements[] = {
    {0, 0, D3DDECLTYPE_FLOAT3, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_POSITION, 0},
    {0, 12, D3DDECLTYPE_D3DCOLOR, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_COLOR, 0},
    {0, 16, D3DDECLTYPE_FLOAT2, D3DDECLMETHOD_DEFAULT, D3DDECLUSAGE_TEXCOORD, 0},
};

constexpr UINT kScreenStride = sizeof(ScreenVertex);
constexpr UINT kSpaceStride = sizeof(SpaceVertex);
static_assert(kScreenStride == 28 && kSpaceStride == 24);

}  // namespace

DifferentialCanvas::DifferentialCanvas(Painter& painter, PainterSurface kind, D3DFORMAT format)
    : m_Painter(painter), m_pTarget(painter.CreateSurface(kind, kWidth, kHeight, format)),
      m_pScreenDeclaration(painter.CreateDeclaration(kScreenElements)),
      m_pSpaceDeclaration(painter.CreateDeclaration(kSpaceElements))
{
    painter.SetTarget(*m_pTarget);
    painter.SetDepth(nullptr);
    painter.SetViewport(0, 0, kWidth, kHeight);
    painter.SetRenderState(D3DRS_LIGHTING, FALSE);
    painter.SetRenderState(D3DRS_CULLMODE, D3DCULL_NONE);
    painter.SetRenderState(D3DRS_ZENABLE, D3DZB_FALSE);
    UseScreenVertices();
    Clear();
}

void DifferentialCanvas::AddDepth()
{
    m_pDepth = m_Painter.CreateDepth(kWidth, kHeight, D3DFMT_D24S8);
    m_Painter.SetDepth(m_pDepth.get());
    m_Painter.Clear(D3DCLEAR_ZBUFFER | D3DCLEAR_STENCIL, 0, 1, 0);
}

void DifferentialCanvas::Quad(const RECT& rect, float z, D3DCOLOR left, D3DCOLOR right)
{
    const float l = static_cast<float>(rect.left), t = static_cast<float>(rect.top);
    const float r = static_cast<float>(rect.right), b = static_cast<float>(rect.bottom);
    const ScreenVertex corners[] = {
        {l, t, z, 1, left, 0, 0}, {r, t, z, 1, right, 1, 0}, {l, b, z, 1, left, 0, 1}, {r, b, z, 1, right, 1, 1}};
    m_Painter.SetStreamMemory(corners, kScreenStride);
    m_Painter.Draw(D3DPT_TRIANGLESTRIP, 0, 2);
}

void DifferentialCanvas::SpaceQuad(float left, float top, float right, float bottom, float z, D3DCOLOR color)
{
    const SpaceVertex corners[] = {{left, top, z, color, 0, 0}, {right, top, z, color, 1, 0},
        {left, bottom, z, color, 0, 1}, {right, bottom, z, color, 1, 1}};
    m_Painter.SetStreamMemory(corners, kSpaceStride);
    m_Painter.Draw(D3DPT_TRIANGLESTRIP, 0, 2);
}
