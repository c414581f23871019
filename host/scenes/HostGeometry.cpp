#include "host/scenes/HostGeometry.h"

namespace
{

// The side of the cube whose normal is `axis` times `sign`. Its corners go around it.
void AddSide(HostGeometry& geometry, int axis, float sign)
{
    static constexpr float kAround[4][2] = {{-1, 1}, {1, 1}, {1, -1}, {-1, -1}};
    const UINT16 first = static_cast<UINT16>(geometry.m_Corners.size());
    for (const auto& [across, up] : kAround)
    {
        HostVertex corner{};
        corner.m_Position[axis] = corner.m_Normal[axis] = sign;
        corner.m_Position[(axis + 1) % 3] = across;
        corner.m_Position[(axis + 2) % 3] = up;
        corner.m_Texture[0] = (across + 1) / 2;
        corner.m_Texture[1] = (1 - up) / 2;
        geometry.m_Corners.push_back(corner);
    }
    for (int offset : {0, 1, 2, 0, 2, 3})
        geometry.m_Indices.push_back(static_cast<UINT16>(first + offset));
}

}  // namespace

HostGeometry HostGeometry::Cube()
{
    HostGeometry geometry;
    for (int axis = 0; axis < 3; ++axis)
        for (float sign : {-1.f, 1.f})
            AddSide(geometry, axis, sign);
    return geometry;
}

HostGeometry HostGeometry::Square()
{
    HostGeometry geometry;
    AddSide(geometry, 2, -1);
    for (HostVertex& corner : geometry.m_Corners)
        corner.m_Position[2] = 0;
    return geometry;
}

std::vector<HostVertex> HostGeometry::Spread() const
{
    std::vector<HostVertex> spread;
    for (UINT16 index : m_Indices)
        spread.push_back(m_Corners[index]);
    return spread;
}
