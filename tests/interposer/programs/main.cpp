// A program that knows nothing of the driver: draws the scenes of the given names, or all of the given groups.
#include "ProgramScene.h"
#include "host/runtime/HostError.h"

#include <algorithm>
#include <cstdio>

namespace
{

std::map<std::string, std::vector<ProgramScene>> AllScenes()
{
    std::map<std::string, std::vector<ProgramScene>> groups = ProgramDifferentialScenes();
    groups["devices"] = ProgramDeviceScenes();
    groups["frames"] = ProgramFrameScenes();
    groups["limits"] = ProgramLimitScenes();
    groups["long"] = ProgramLongDrawScenes();
    groups["pixels"] = ProgramPixelScenes();
    groups["rude"] = ProgramRudeScenes();
    groups["textures"] = ProgramTextureScenes();
    return groups;
}

bool Draw(const ProgramScene& scene)
{
    try
    {
        scene.m_Draw();
        return true;
    }
    catch (const HostError& error)
    {
        std::fprintf(stderr, "%s: %s\n", scene.m_Name.c_str(), error.what());
        return false;
    }
}

}  // namespace

int main(int argc, char** ppArguments)
{
    const auto isAsked = [&](const std::string& name) {
        return std::find(ppArguments + 1, ppArguments + argc, name) != ppArguments + argc;
    };
    int failed = 0;
    for (const auto& [group, scenes] : AllScenes())
        for (const ProgramScene& scene : scenes)
            if (isAsked(group) || isAsked(scene.m_Name))
                failed += !Draw(scene);
    return failed;
}
