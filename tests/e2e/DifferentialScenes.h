// The scenes that both painters draw.
#pragma once

#include "tools/painters/DifferentialPainter.h"

#include <functional>
#include <ostream>
#include <string>
#include <vector>

struct DifferentialScene
{
    std::string m_Name;
    std::function<void(Painter&)> m_Draw;
};

/// How a failing test names its scene.
inline void PrintTo(const DifferentialScene& scene, std::ostream* pStream)
{
    *pStream << scene.m_Name;
}

std::vector<DifferentialScene> DifferentialDrawScenes();
std::vector<DifferentialScene> DifferentialStateScenes();
std::vector<DifferentialScene> DifferentialShaderScenes();
std::vector<DifferentialScene> DifferentialBlitScenes();
std::vector<DifferentialScene> DifferentialFillScenes();
