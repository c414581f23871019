#include "host/scenes/HostMatrix.h"

#include <cmath>

HostMatrix HostMatrix::Identity()
{
    return {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
}

HostMatrix HostMatrix::Translation(float x, float y, float z)
{
    return {{{1, 0, 0, x}, {0, 1, 0, y}, {0, 0, 1, z}, {0, 0, 0, 1}}};
}

HostMatrix HostMatrix::Scaling(float factor)
{
    return {{{factor, 0, 0, 0}, {0, factor, 0, 0}, {0, 0, factor, 0}, {0, 0, 0, 1}}};
}

HostMatrix HostMatrix::Rotation(int axis, float angle)
{
    const int a = (axis + 1) % 3;
    const int b = (axis + 2) % 3;
    HostMatrix result = Identity();
    result.m[a][a] = result.m[b][b] = std::cos(angle);
    result.m[b][a] = std::sin(angle);
    result.m[a][b] = -result.m[b][a];
    return result;
}

HostMatrix HostMatrix::Perspective(float angle, float aspect, float nearest, float farthest)
{
    const float scale = 1 / std::tan(angle / 2);
    const float depth = farthest / (farthest - nearest);
    return {{{scale / aspect, 0, 0, 0}, {0, scale, 0, 0}, {0, 0, depth, -nearest * depth}, {0, 0, 1, 0}}};
}

HostMatrix HostMatrix::operator*(const HostMatrix& right) const
{
    HostMatrix result{};
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            for (int i = 0; i < 4; ++i)
                result.m[row][column] += m[row][i] * right.m[i][column];
    return result;
}
