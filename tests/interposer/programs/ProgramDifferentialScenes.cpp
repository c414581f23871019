#include "ProgramScene.h"
#include "ProgramWindow.h"
#include "e2e/DifferentialScenes.h"
#include "tools/painters/DifferentialPlainPainter.h"

namespace
{

void Draw(const DifferentialScene& scene)
{
    DifferentialPlainPainter painter;
    scene.m_Draw(painter);
    PROGRAM_CALL(painter.Device(), Present, nullptr, nullptr, nullptr, nullptr);
}

}  // namespace

std::vector<ProgramScene> ProgramDifferentialScenes()
{
    std::vector<ProgramScene> scenes;
    for (const auto& pScenes : {DifferentialDrawScenes, DifferentialStateScenes, DifferentialShaderScenes,
             DifferentialBlitScenes, DifferentialFillScenes})
        for (const DifferentialScene& scene : pScenes())
            scenes.push_back({scene.m_Name, [scene] { Draw(scene); }});
    return scenes;
}
