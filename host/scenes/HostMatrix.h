// The little of linear algebra that the turning scene needs. Column vectors: a point p becomes M * p.
#pragma once

/// Rows, as a vertex shader's m4x4 wants them in four registers.
struct HostMatrix
{
    float m[4][4];

    static HostMatrix Identity();
    static HostMatrix Translation(float x, float y, float z);
    static HostMatrix Scaling(float factor);
    /// Turns about the axis x (0), y (1) or z (2), by radians.
    static HostMatrix Rotation(int axis, float angle);
    /// Looks along +z; depths from `nearest` to `farthest` become 0 to 1. `angle` is the height of the view, in
    /// radians.
    static HostMatrix Perspective(float angle, float aspect, float nearest, float farthest);

    HostMatrix operator*(const HostMatrix& right) const;
};
