// The demo's turning scene for either painter: the same shapes, shaders and ways to draw, so that a driver's frame and
// a plain device's are the same work.
#pragma once

#include "host/scenes/HostGeometry.h"
#include "host/scenes/HostMatrix.h"
#include "tools/painters/DifferentialPainter.h"

class BenchTurningScene
{
public:
    /// @param width, height pixels of the target.
    BenchTurningScene(Painter& painter, UINT width, UINT height);

    void Draw(PainterObject& target, UINT frame);

private:
    /// A shape, kept in every way that it is drawn in.
    struct Mesh
    {
        Mesh(Painter& painter, const HostGeometry& geometry);

        HostGeometry m_Geometry;
        std::vector<HostVertex> m_Spread;
        PainterHandle m_pSystemCorners;
        PainterHandle m_pSystemSpread;
        PainterHandle m_pVideoCorners;
        PainterHandle m_pVideoSpread;
        PainterHandle m_pVideoIndices;
    };

    void Bind();
    void DrawCubes(UINT frame);
    void DrawTiles(PainterObject& target);
    void DrawSquare(UINT frame);
    void DrawMesh(Mesh& mesh, size_t way);
    void SetPlace(const HostMatrix& projection, const HostMatrix& turn, float tint);

    Painter& m_Painter;
    UINT m_Width;
    UINT m_Height;
    Mesh m_Cube;
    Mesh m_Square;
    PainterHandle m_pVertexShader;
    PainterHandle m_pPixelShader;
    PainterHandle m_pDeclaration;
    PainterHandle m_pPattern;
    PainterHandle m_pCanvas;
    PainterHandle m_pTile;
    PainterHandle m_pDepth;
};
