#include "interposer/dll/Platform.h"

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID)
{
    if (reason != DLL_PROCESS_ATTACH)
        return TRUE;
    if (!PlatformLoad())
        return FALSE;
    ExportsBind();
    return TRUE;
}
