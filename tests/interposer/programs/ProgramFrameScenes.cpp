#include "ProgramScene.h"
#include "ProgramWindow.h"

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

}  // namespace

std::vector<ProgramScene> ProgramFrameScenes()
{
    return {{"Clears", Clears}};
}
