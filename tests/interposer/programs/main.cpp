// A program that knows nothing of the driver: draws the scenes of the given names, or all, one after the other.
#include "ProgramScene.h"
#include "host/runtime/HostError.h"

#include <algorithm>
#include <cstdio>

namespace
{

std::vector<ProgramScene> AllScenes()
{
    std::vector<ProgramScene> scenes = ProgramDifferentialScenes();
    std::ranges::move(ProgramFrameScenes(), std::back_inserter(scenes));
    return scenes;
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
    int failed = 0;
    for (const ProgramScene& scene : AllScenes())
        if (argc == 1 || std::find(ppArguments + 1, ppArguments + argc, scene.m_Name) != ppArguments + argc)
            failed += !Draw(scene);
    return failed;
}
