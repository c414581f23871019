#include "BenchTurningScene.h"

#include "host/scenes/HostShaderCode.h"

#include <algorithm>
#include <bit>

namespace
{
constexpr UINT kCanvasSize = 480;
constexpr UINT kPatternSize = 64;
constexpr size_t kWays = 6;
constexpr UINT kStride = sizeof(HostVertex);
constexpr float kPi = 3.14159265f;

template <typename Element>
std::span<const BYTE> Bytes(const std::vector<Element>& elements)
{
    return {reinterpret_cast<const BYTE*>(elements.data()), elements.size() * sizeof(Element)};
}

RECT Square(UINT size)
{
    return {0, 0, static_cast<LONG>(size), static_cast<LONG>(size)};
}
}  // namespace

BenchTurningScene::Mesh::Mesh(Painter& painter, const HostGeometry& geometry)
    : m_Geometry(geometry), m_Spread(geometry.Spread()),
      m_pSystemCorners(painter.CreateVertexBuffer(PainterMemory::System, Bytes(m_Geometry.m_Corners))),
      m_pSystemSpread(painter.CreateVertexBuffer(PainterMemory::System, Bytes(m_Spread))),
      m_pVideoCorners(painter.CreateVertexBuffer(PainterMemory::Video, Bytes(m_Geometry.m_Corners))),
      m_pVideoSpread(painter.CreateVertexBuffer(PainterMemory::Video, Bytes(m_Spread))),
      m_pVideoIndices(painter.CreateIndexBuffer(D3DFMT_INDEX16, Bytes(m_Geometry.m_Indices)))
{
}

BenchTurningScene::BenchTurningScene(Painter& painter, UINT width, UINT height)
    : m_Painter(painter), m_Width(width), m_Height(height), m_Cube(painter, HostGeometry::Cube()),
      m_Square(painter, HostGeometry::Square()), m_pVertexShader(painter.CreateVertexShader(kHostVertexShader)),
      m_pPixelShader(painter.CreatePixelShader(kHostPixelShader)),
      m_pDeclaration(painter.CreateDeclaration(std::bit_cast<std::array<D3DVERTEXELEMENT9, 3>>(kHostElements))),
      m_pPattern(painter.CreateSurface(PainterSurface::Texture, kPatternSize, kPatternSize, D3DFMT_X8R8G8B8)),
      m_pCanvas(painter.CreateSurface(PainterSurface::TargetTexture, kCanvasSize, kCanvasSize, D3DFMT_X8R8G8B8)),
      m_pTile(painter.CreateSurface(PainterSurface::Target, kCanvasSize, kCanvasSize, D3DFMT_X8R8G8B8)),
      m_pDepth(painter.CreateDepth(kCanvasSize, kCanvasSize, D3DFMT_D24S8))
{
    const DifferentialPicture picture = DifferentialPattern(kPatternSize, kPatternSize, D3DFMT_X8R8G8B8);
    const PainterHandle pMemory = painter.CreateMemoryTexture({&picture, 1});
    painter.TexBlt(*pMemory, Square(kPatternSize), *m_pPattern, {0, 0});
}

void BenchTurningScene::Draw(PainterObject& target, UINT frame)
{
    DrawCubes(frame);
    m_Painter.SetDepth(nullptr);
    m_Painter.SetTarget(target);
    m_Painter.SetViewport(0, 0, m_Width, m_Height);
    m_Painter.Clear(D3DCLEAR_TARGET, 0x303848, 0, 0);
    DrawTiles(target);
    DrawSquare(frame);
}

void BenchTurningScene::Bind()
{
    m_Painter.SetDeclaration(*m_pDeclaration);
    m_Painter.SetVertexShader(*m_pVertexShader);
    m_Painter.SetPixelShader(*m_pPixelShader);
    m_Painter.SetRenderState(D3DRS_ZENABLE, D3DZB_TRUE);
    m_Painter.SetRenderState(D3DRS_ZWRITEENABLE, TRUE);
    m_Painter.SetRenderState(D3DRS_ZFUNC, D3DCMP_LESSEQUAL);
    m_Painter.SetRenderState(D3DRS_CULLMODE, D3DCULL_NONE);
    m_Painter.SetRenderState(D3DRS_ALPHABLENDENABLE, FALSE);
}

// One cube for each way to draw, in a ring about a seventh that they cut into.
void BenchTurningScene::DrawCubes(UINT frame)
{
    const float step = static_cast<float>(frame) * kPi / 90;
    const HostMatrix projection = HostMatrix::Perspective(kPi / 3, 1, 1, 20) * HostMatrix::Translation(0, 0, 7);
    m_Painter.SetTarget(*m_pCanvas);
    m_Painter.SetViewport(0, 0, kCanvasSize, kCanvasSize);
    m_Painter.SetDepth(m_pDepth.get());
    m_Painter.Clear(D3DCLEAR_TARGET | D3DCLEAR_ZBUFFER, 0x182030, 1, 0);
    Bind();
    m_Painter.SetVertexConstants(kHostRegisterLamp, kHostLamp);
    m_Painter.SetTexture(0, m_pPattern.get());
    SetPlace(projection, HostMatrix::Rotation(1, step) * HostMatrix::Rotation(0, step / 2), 1);
    DrawMesh(m_Cube, 0);
    for (size_t way = 0; way < kWays; ++way)
    {
        const HostMatrix turn = HostMatrix::Rotation(2, static_cast<float>(way) * kPi / 3 + step / 2) *
                                HostMatrix::Translation(2, 0, 0) * HostMatrix::Rotation(1, step * 2) *
                                HostMatrix::Scaling(0.7f);
        SetPlace(projection, turn, 0.4f + 0.1f * static_cast<float>(way));
        DrawMesh(m_Cube, way);
    }
}

void BenchTurningScene::DrawTiles(PainterObject& target)
{
    const RECT canvas = Square(kCanvasSize);
    const LONG width = static_cast<LONG>(m_Width), height = static_cast<LONG>(m_Height);
    const LONG size = std::min(width, height) / 3;
    m_Painter.Blt(*m_pCanvas, canvas, *m_pTile, canvas);
    for (LONG row = 0; row < 3; ++row)
    {
        m_Painter.Blt(*m_pTile, canvas, target, {0, row * size, size, (row + 1) * size});
        m_Painter.Blt(*m_pTile, canvas, target, {width - size, row * size, width, (row + 1) * size});
    }
    const LONG quarter = kCanvasSize / 4;
    m_Painter.Blt(
        *m_pTile, {quarter, quarter, 3 * quarter, 3 * quarter}, target, {size, 2 * size, width - size, height});
}

void BenchTurningScene::DrawSquare(UINT frame)
{
    const float aspect = static_cast<float>(m_Width) / static_cast<float>(m_Height);
    m_Painter.SetVertexConstants(kHostRegisterLamp, kHostFullLight);
    m_Painter.SetTexture(0, m_pCanvas.get());
    SetPlace(HostMatrix::Perspective(kPi / 4, aspect, 1, 20) * HostMatrix::Translation(0, 0.8f, 5),
        HostMatrix::Rotation(1, static_cast<float>(frame) * kPi / 120), 1);
    DrawMesh(m_Square, kWays - 1);
    m_Painter.SetTexture(0, nullptr);
}

void BenchTurningScene::DrawMesh(Mesh& mesh, size_t way)
{
    const UINT triangles = static_cast<UINT>(mesh.m_Geometry.m_Indices.size() / 3);
    const UINT corners = static_cast<UINT>(mesh.m_Geometry.m_Corners.size());
    const UINT16* pIndices = mesh.m_Geometry.m_Indices.data();
    switch (way)
    {
    case 0:
        m_Painter.SetStreamMemory(mesh.m_Spread.data(), kStride);
        return m_Painter.Draw(D3DPT_TRIANGLELIST, 0, triangles);
    case 1:
        m_Painter.SetStreamMemory(mesh.m_Geometry.m_Corners.data(), kStride);
        return m_Painter.DrawIndexedFromMemory(D3DPT_TRIANGLELIST, 0, 0, corners, triangles, pIndices, sizeof(UINT16));
    case 2:
        m_Painter.SetStreamBuffer(*mesh.m_pSystemSpread, 0, kStride);
        return m_Painter.DrawFromByte(D3DPT_TRIANGLELIST, 0, triangles);
    case 3:
        m_Painter.SetStreamBuffer(*mesh.m_pSystemCorners, 0, kStride);
        return m_Painter.DrawIndexedFromMemory(D3DPT_TRIANGLELIST, 0, 0, corners, triangles, pIndices, sizeof(UINT16));
    case 4:
        m_Painter.SetStreamBuffer(*mesh.m_pVideoSpread, 0, kStride);
        return m_Painter.Draw(D3DPT_TRIANGLELIST, 0, triangles);
    default:
        m_Painter.SetStreamBuffer(*mesh.m_pVideoCorners, 0, kStride);
        m_Painter.SetIndices(*mesh.m_pVideoIndices);
        return m_Painter.DrawIndexed(D3DPT_TRIANGLELIST, 0, 0, corners, 0, triangles);
    }
}

void BenchTurningScene::SetPlace(const HostMatrix& projection, const HostMatrix& turn, float tint)
{
    const HostMatrix place = projection * turn;
    m_Painter.SetVertexConstants(kHostRegisterPlace, {place.m[0], 16});
    m_Painter.SetVertexConstants(kHostRegisterTurn, {turn.m[0], 12});
    const float color[4] = {tint, tint, 1, 1};
    m_Painter.SetPixelConstants(0, color);
}
