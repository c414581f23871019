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

std::map<std::string, std::vector<ProgramScene>> ProgramDifferentialScenes()
{
    std::map<std::string, std::vector<ProgramScene>> groups;
    const auto add = [&](const std::string& group, const std::vector<DifferentialScene>& scenes) {
        for (const DifferentialScene& scene : scenes)
            groups[group].push_back({scene.m_Name, [scene] { Draw(scene); }});
    };
    add("draws", DifferentialDrawScenes());
    add("states", DifferentialStateScenes());
    add("shaders", DifferentialShaderScenes());
    add("blits", DifferentialBlitScenes());
    add("fills", DifferentialFillScenes());
    return groups;
}
