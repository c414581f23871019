// A program of strangers' habits: draws the scene of the given name and ends.
#include "ProgramWindow.h"

#include <cstdio>
#include <functional>
#include <map>
#include <string>

namespace
{

void Clears()
{
    ProgramWindow window(160, 120);
    IDirect3DDevice9* pDevice = window.CreateDevice();
    const D3DRECT part = {20, 30, 90, 100};
    for (D3DCOLOR color : {0xFF204060, 0xFF802010, 0xFF10F040})
    {
        PROGRAM_CALL(pDevice, Clear, 0, nullptr, D3DCLEAR_TARGET, color, 1, 0);
        PROGRAM_CALL(pDevice, Clear, 1, &part, D3DCLEAR_TARGET, ~color, 1, 0);
        window.Present();
    }
}

const std::map<std::string, std::function<void()>> kScenes = {{"Clears", Clears}};

}  // namespace

int main(int argc, char** ppArguments)
{
    const auto scene = kScenes.find(argc > 1 ? ppArguments[1] : "");
    if (scene == kScenes.end())
        return 2;
    try
    {
        scene->second();
        return 0;
    }
    catch (const HostError& error)
    {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
