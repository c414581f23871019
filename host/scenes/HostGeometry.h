// Shapes of textured triangles.
#pragma once

#include <windows.h>

#include <vector>

struct HostVertex
{
    float m_Position[3];
    float m_Normal[3];
    float m_Texture[2];
};

struct HostGeometry
{
    std::vector<HostVertex> m_Corners;  ///< each once
    std::vector<UINT16> m_Indices;      ///< three a triangle, into the corners

    /// A cube of edge 2 about the origin; every side shows the whole texture.
    static HostGeometry Cube();
    /// A square of edge 2 at z = 0, facing -z, the texture's top at +y.
    static HostGeometry Square();

    /// Three vertices a triangle, for draws without indices.
    std::vector<HostVertex> Spread() const;
};
